#include "indexer/ResponseBook.h"

#include <algorithm>
#include <tuple>

namespace indexer {

ResponseBook::ResponseBook(const Lineage &lineage, const TextPool &names)
    : m_lineage(lineage)
    , m_names(names)
{
}

void ResponseBook::add(const RolloutFile &file)
{
    for (const RolloutRecord &record : file.rollout.records) {
        const TextId thread = file.threadOf(record);
        RolloutResponse told {.thread = thread,
            .settings = file.settings(record.settings),
            .told = record.time,
            .time = record.time,
            .usage = record.usage};
        const auto [known, isNew] =
            m_responses.emplace(std::make_pair(m_lineage.rootOf(thread), record.response), told);
        if (isNew) {
            continue;
        }
        RolloutResponse &held = known->second;
        told.usage.raiseTo(held.usage);
        held.usage = told.usage;
        told.time = held.time = std::min(held.time, told.time);
        if (precedes(told, held)) {
            held = told;
        }
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

} // namespace indexer
