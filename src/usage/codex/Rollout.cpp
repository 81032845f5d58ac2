#include "usage/codex/Rollout.h"

#include <algorithm>

namespace usage {

namespace {

constexpr std::size_t idLength = 36;

/// Whether a text looks like "01990000-0000-7000-8000-000000000001".
bool isThreadId(std::string_view text)
{
    constexpr std::string_view form = "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx";
    return std::equal(text.begin(), text.end(), form.begin(), form.end(), [](char c, char wanted) {
        constexpr std::string_view digits = "0123456789abcdefABCDEF";
        return wanted == '-' ? c == '-' : digits.find(c) != std::string_view::npos;
    });
}

} // namespace

bool Rollout::hasRecordOf(std::size_t number) const
{
    const bool isBehindRecord = (copies.thread != 0 && number >= copies.bare)
        || (countersBeforeOwn && number >= *countersBeforeOwn);
    return isBehindRecord && !counters[number].isBeyond;
}

Rollout startRollout(std::string_view stem)
{
    const std::string_view id = stem.size() > idLength ? stem.substr(stem.size() - idLength) : stem;
    Rollout rollout;
    rollout.thread = rollout.texts.add(id);
    rollout.isNamed = isThreadId(id);
    return rollout;
}

std::vector<std::string> kinOf(const Rollout &rollout)
{
    std::vector<TextId> others;
    for (const RolloutMeta &meta : rollout.metas) {
        others.push_back(meta.thread);
        others.push_back(meta.parent);
    }
    for (const RolloutRecord &record : rollout.records) {
        if (others.empty() || others.back() != record.thread) {
            others.push_back(record.thread);
        }
    }
    std::sort(others.begin(), others.end());
    others.erase(std::unique(others.begin(), others.end()), others.end());
    std::vector<std::string> kin {std::string(rollout.texts.text(rollout.thread))};
    for (const TextId other : others) {
        if (other != 0 && other != rollout.thread) {
            kin.emplace_back(rollout.texts.text(other));
        }
    }
    return kin;
}

} // namespace usage
