#include "indexer/RolloutReader.h"

#include <algorithm>

namespace indexer {

namespace {

constexpr std::size_t idLength = 36;

bool isStandard(std::string_view tier)
{
    return tier == "default" || tier == "auto" || tier == "standard";
}

std::optional<TimePoint> resetOf(const RolloutWindow &window, TimePoint time)
{
    constexpr double latest = 253'402'300'799; // the last second of the year 9999
    constexpr double thousand = 1000;
    if (window.resetsAt && *window.resetsAt >= 0 && *window.resetsAt <= latest) {
        return TimePoint(
            TimePoint::duration(static_cast<std::int64_t>(*window.resetsAt * thousand)));
    }
    if (window.resetsIn && *window.resetsIn >= 0 && *window.resetsIn <= latest) {
        return time + TimePoint::duration(static_cast<std::int64_t>(*window.resetsIn * thousand));
    }
    return std::nullopt;
}

} // namespace

RolloutReader::RolloutReader(RolloutBook &book, TextPool &names)
    : m_book(book)
    , m_names(names)
{
}

void RolloutReader::begin(std::string_view stem)
{
    m_rollout = {};
    m_rollout.thread =
        m_names.add(stem.size() > idLength ? stem.substr(stem.size() - idLength) : stem);
    m_told.clear();
    m_turns.clear();
    m_settings = {};
    m_orphan = m_turn = 0;
    m_hasOwnRecord = m_hasPrompt = false;
}

void RolloutReader::add(const RolloutLine &line, std::optional<TimePoint> time)
{
    switch (line.kind) {
    case RolloutKind::SessionMeta:
        addMeta(line, time);
        break;
    case RolloutKind::TurnContext:
        addTurn(line);
        break;
    case RolloutKind::SettingsApplied:
        change(line);
        m_turns[m_turn] = m_settings;
        break;
    default:
        break;
    }
    if (time) {
        addTimed(line, *time);
    }
}

void RolloutReader::end()
{
    m_book.addRollout(std::move(m_rollout));
}

/// The first one names the thread. Those behind it are copies from the threads it comes from, the
/// nearest first.
void RolloutReader::addMeta(const RolloutLine &line, std::optional<TimePoint> time)
{
    const TextId thread = m_names.add(line.id);
    if (thread == 0 || !m_told.insert(thread).second) {
        return;
    }
    const bool isCopy = m_told.size() > 1;
    if (!isCopy) {
        m_rollout.thread = thread;
        m_settings.folder = m_names.add(line.cwd);
    }
    if (m_orphan != 0) {
        m_book.lineage().addParent(m_orphan, thread, m_isOrphanSubagent, true);
    }
    if (const auto created = parseMoment(line.createdAt); created || time) {
        m_book.lineage().addThread(thread, created.value_or(time.value_or(TimePoint {})));
    }
    const bool isSubagent = line.isSubagent || !line.parent.empty();
    const TextId parent = m_names.add(line.forkedFrom.empty() ? line.parent : line.forkedFrom);
    m_book.lineage().addParent(thread, parent, isSubagent, isCopy);
    m_orphan = parent == 0 ? thread : 0;
    m_isOrphanSubagent = isSubagent;
}

void RolloutReader::addTurn(const RolloutLine &line)
{
    m_turn = m_names.add(line.turn);
    change(line);
    m_turns[m_turn] = m_settings;
}

void RolloutReader::change(const RolloutLine &line)
{
    if (!line.model.empty()) {
        m_settings.model = m_names.add(line.model);
    }
    if (!line.cwd.empty()) {
        m_settings.folder = m_names.add(line.cwd);
    }
    if (line.kind == RolloutKind::SettingsApplied) {
        const std::string_view tier = line.serviceTier;
        const bool isFast = tier == "fast" || tier == "priority";
        const bool isCheap = tier == "flex" || tier == "batch";
        const bool isKnown = tier.empty() || isFast || isCheap || isStandard(tier);
        m_settings.speed = isFast ? Speed::Fast : Speed::Standard;
        m_settings.tier = isCheap ? ServiceTier::Batch
            : isKnown             ? ServiceTier::Standard
                                  : ServiceTier::Other;
    }
}

void RolloutReader::addTimed(const RolloutLine &line, TimePoint time)
{
    m_book.threads().addLine(m_rollout.thread, time);
    switch (line.kind) {
    case RolloutKind::UsageRecord:
        addRecord(line, time);
        break;
    case RolloutKind::TokenCount:
        addCounter(line, time);
        addLimits(line.limits, time);
        break;
    case RolloutKind::NameUpdated:
        // Copied history tells of others' names, at times that are not theirs.
        if (line.thread.empty() || m_names.add(line.thread) == m_rollout.thread) {
            m_book.threads().addName(m_rollout.thread, time, line.title);
        }
        break;
    case RolloutKind::Prompt:
        // The first in the file: the times of copied lines may all be the same.
        if (!line.prompt.empty() && !m_hasPrompt) {
            m_hasPrompt = true;
            m_book.threads().addPrompt(m_rollout.thread, time, line.prompt);
        }
        break;
    default:
        break;
    }
}

/// A record without the id of its response could not be told from its copies; the counters tell of
/// that response as well.
void RolloutReader::addRecord(const RolloutLine &line, TimePoint time)
{
    if (line.response.empty() || !line.hasUsage) {
        return;
    }
    if (!m_rollout.countersBeforeRecords) {
        m_rollout.countersBeforeRecords = m_rollout.counters.size();
    }
    const auto turn = line.turn.empty() ? m_turns.end() : m_turns.find(m_names.add(line.turn));
    const TextId thread = line.thread.empty() ? m_rollout.thread : m_names.add(line.thread);
    m_hasOwnRecord = m_hasOwnRecord || thread == m_rollout.thread;
    m_book.addRecord({.thread = thread,
        .response = m_names.add(line.response),
        .usage = line.usage,
        .settings = turn == m_turns.end() ? m_settings : turn->second,
        .time = time});
}

void RolloutReader::addCounter(const RolloutLine &line, TimePoint time)
{
    const bool isRepeated =
        !m_rollout.counters.empty() && m_rollout.counters.back().total == line.usage;
    if (line.hasUsage && line.usage.input > 0 && !isRepeated) {
        m_rollout.counters.push_back({line.usage, line.last, m_settings, time});
    }
}

/// Other families of limits are written to the same place.
void RolloutReader::addLimits(const RolloutLimits &limits, TimePoint time)
{
    if (!limits.id.empty() && limits.id != "codex") {
        return;
    }
    LimitReading reading {.time = time, .windows = {}, .plan = std::string(limits.plan)};
    for (const RolloutWindow &window : limits.windows) {
        if (window.percent && *window.percent >= 0 && window.minutes && *window.minutes > 0) {
            reading.windows.push_back({*window.percent, *window.minutes, resetOf(window, time)});
        }
    }
    if (reading.windows.empty()) {
        return;
    }
    std::stable_sort(reading.windows.begin(), reading.windows.end(),
        [](const LimitWindow &a, const LimitWindow &b) { return a.minutes < b.minutes; });
    m_rollout.limits = std::move(reading);
    m_rollout.countersAtLimits = m_rollout.counters.size();
    m_rollout.hasOwnRecordAtLimits = m_hasOwnRecord;
}

} // namespace indexer
