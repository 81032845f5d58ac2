#include "usage/codex/ResponseBook.h"

#include <algorithm>
#include <tuple>

namespace usage {

ResponseBook::ResponseBook(
    const std::vector<FamilyMember> &files, const Lineage &lineage, const TextPool &names)
    : m_files(files)
    , m_lineage(lineage)
    , m_names(names)
{
    std::size_t count = 0;
    for (const FamilyMember &file : files) {
        count += file.rollout.records.size();
    }
    m_tellings.reserve(count);
    for (std::uint32_t i = 0; i < files.size(); ++i) {
        const auto &records = files[i].rollout.records;
        for (std::uint32_t k = 0; k < records.size(); ++k) {
            const TextId root = m_lineage.rootOf(files[i].threadOf(records[k]));
            m_tellings.push_back({root, records[k].response, i, k});
        }
    }
    std::ranges::sort(m_tellings);
}

RolloutResponse ResponseBook::response(const Telling &telling) const
{
    const FamilyMember &file = m_files[telling.file];
    const RolloutRecord &record = file.rollout.records[telling.record];
    return {.thread = file.threadOf(record),
        .settings = file.settings(record.settings),
        .told = record.time,
        .time = record.time,
        .usage = record.usage};
}

void ResponseBook::merge(RolloutResponse &held, RolloutResponse told) const
{
    told.usage.raiseTo(held.usage);
    held.usage = told.usage;
    told.time = held.time = std::min(held.time, told.time);
    if (precedes(told, held)) {
        held = told;
    }
}

/// By what does not depend on the order of the files.
bool ResponseBook::precedes(const RolloutResponse &a, const RolloutResponse &b) const
{
    const auto rank = [this](const RolloutResponse &each) {
        const RolloutSettings &settings = each.settings;
        return std::make_tuple(m_lineage.ageOf(each.thread), each.told, settings.model == 0,
            m_names.text(settings.model), m_names.text(settings.folder), settings.speed,
            settings.tier);
    };
    return rank(a) < rank(b);
}

} // namespace usage
