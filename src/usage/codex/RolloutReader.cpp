#include "usage/codex/RolloutReader.h"

#include "usage/codex/limitReading.h"
#include "usage/lines/Title.h"
#include "usage/values/HashOf.h"

#include <algorithm>

namespace usage {

namespace {

/// Records come soon after their turn began.
constexpr std::size_t mostTurns = 64;
/// A thread's own first prompt is looked for among so many that may be copies.
constexpr std::size_t mostPrompts = 64;

bool isStandard(std::string_view tier)
{
    return tier.empty() || tier == "default" || tier == "auto" || tier == "standard";
}

std::uint64_t turnId(std::string_view turn)
{
    return turn.empty() ? 0 : hashOf(turn);
}

std::uint64_t keyOf(const RolloutRecord &record)
{
    constexpr std::uint64_t spread = 0x9E37'79B9'7F4A'7C15;
    return record.response + record.thread * spread;
}

} // namespace

RolloutReader::RolloutReader(Rollout &rollout)
    : m_rollout(rollout)
    , m_totals(rollout)
{
    for (const RolloutRecord &record : rollout.records) {
        m_records.emplace(keyOf(record), static_cast<std::uint32_t>(m_records.size()));
    }
    for (const RolloutSettings &settings : rollout.settings) {
        m_settings.emplace(settings, static_cast<std::uint32_t>(m_settings.size()));
    }
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
        rememberTurn();
        break;
    default:
        break;
    }
    if (time) {
        addTimed(line, *time);
    }
}

/// The file's name tells the thread, or else the first front does.
void RolloutReader::addMeta(const RolloutLine &line, std::optional<TimePoint> time)
{
    const TextId thread = m_rollout.texts.add(line.id);
    if (thread == 0) {
        return;
    }
    m_rollout.thread = m_rollout.isNamed ? m_rollout.thread : thread;
    m_rollout.isNamed = true;
    const bool isOwn = thread == m_rollout.thread;
    RolloutMeta &meta = metaOf(thread);
    if (meta.isRead) {
        return;
    }
    const std::string_view parent = line.forkedFrom.empty() ? line.parent : line.forkedFrom;
    if (!parent.empty()) {
        meta.parent = m_rollout.texts.add(parent);
        meta.isCopy = !isOwn;
    }
    const auto created = TimeStamp::parse(line.createdAt);
    meta.created = created ? created : time;
    meta.isSubagent = line.isSubagent || !line.parent.empty();
    meta.isRead = true;
    if (isOwn) {
        m_rollout.current.folder = m_rollout.texts.add(line.cwd);
    }
}

/// The thread's own front comes first, also one that cannot be read. Those of others are copies
/// from the threads it comes from, the nearest first.
RolloutMeta &RolloutReader::metaOf(TextId thread)
{
    std::vector<RolloutMeta> &metas = m_rollout.metas;
    if (metas.empty()) {
        metas.push_back({.thread = m_rollout.thread, .isRead = false});
    }
    const auto known = std::find_if(metas.begin(), metas.end(),
        [thread](const RolloutMeta &each) { return each.thread == thread; });
    if (known != metas.end()) {
        return *known;
    }
    if (metas.back().parent == 0) {
        metas.back().parent = thread;
        metas.back().isCopy = true;
    }
    return metas.emplace_back(RolloutMeta {.thread = thread, .isCopy = true, .isRead = false});
}

void RolloutReader::addTurn(const RolloutLine &line)
{
    m_rollout.turn = turnId(line.turn);
    change(line);
    rememberTurn();
}

/// What a line does not tell stays as it is. That the tier is null tells that it is the standard
/// one: a line that applies settings states all of them.
void RolloutReader::change(const RolloutLine &line)
{
    RolloutSettings &current = m_rollout.current;
    if (!line.model.empty()) {
        current.model = m_rollout.texts.add(line.model);
    }
    if (!line.cwd.empty()) {
        current.folder = m_rollout.texts.add(line.cwd);
    }
    if (line.kind == RolloutKind::SettingsApplied && line.tellsServiceTier) {
        const std::string_view tier = line.serviceTier;
        const bool isFast = tier == "fast" || tier == "priority";
        const bool isCheap = tier == "flex" || tier == "batch";
        current.speed = isFast ? Speed::Fast : Speed::Standard;
        current.tier = isCheap           ? ServiceTier::Batch
            : isFast || isStandard(tier) ? ServiceTier::Standard
                                         : ServiceTier::Other;
    }
}

void RolloutReader::rememberTurn()
{
    std::vector<RolloutTurn> &turns = m_rollout.turns;
    const std::uint64_t turn = m_rollout.turn;
    turns.erase(std::remove_if(turns.begin(), turns.end(),
                    [turn](const RolloutTurn &each) { return each.id == turn; }),
        turns.end());
    if (turns.size() == mostTurns) {
        turns.erase(turns.begin());
    }
    turns.push_back({turn, numberOf(m_rollout.current)});
}

std::uint32_t RolloutReader::settingsOf(std::string_view turn)
{
    const std::vector<RolloutTurn> &turns = m_rollout.turns;
    const auto found = turn.empty()
        ? turns.end()
        : std::find_if(turns.begin(), turns.end(),
            [id = turnId(turn)](const RolloutTurn &each) { return each.id == id; });
    return found == turns.end() ? numberOf(m_rollout.current) : found->settings;
}

std::uint32_t RolloutReader::numberOf(const RolloutSettings &settings)
{
    std::vector<RolloutSettings> &all = m_rollout.settings;
    const auto [known, isNew] =
        m_settings.emplace(settings, static_cast<std::uint32_t>(all.size()));
    if (isNew) {
        all.push_back(settings);
    }
    return known->second;
}

void RolloutReader::addTimed(const RolloutLine &line, TimePoint time)
{
    m_rollout.end = std::max(m_rollout.end, time);
    switch (line.kind) {
    case RolloutKind::UsageRecord:
        addRecord(line, time);
        break;
    case RolloutKind::TokenCount:
        addCounter(line, time);
        addLimits(line.limits, time);
        break;
    case RolloutKind::NameUpdated:
        addName(line, time);
        break;
    case RolloutKind::Prompt:
        addPrompt(line, time);
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
    const TextId thread = m_rollout.texts.add(line.thread);
    const bool isOwn = thread == 0 || thread == m_rollout.thread;
    RolloutUsage usage = line.usage;
    usage.reasoning = usage.total = 0; // what is no total need not be told from others
    const bool isFirst = m_rollout.records.empty();
    RolloutRecord &record = recordOf({.thread = isOwn ? 0 : thread,
        .response = hashOf(line.response),
        .usage = {},
        .time = time,
        .settings = settingsOf(line.turn)});
    m_totals.addRecord(usage.beyond(record.usage), record.thread, isFirst);
    record.usage.raiseTo(usage);
    if (!isOwn) {
        m_rollout.laterPrompts.clear();
        m_rollout.hasCopiedPrompts = true;
    }
}

/// The record already there of the same response, or the new one. The earliest line tells the
/// settings.
RolloutRecord &RolloutReader::recordOf(const RolloutRecord &record)
{
    std::vector<RolloutRecord> &records = m_rollout.records;
    const auto [known, isNew] =
        m_records.emplace(keyOf(record), static_cast<std::uint32_t>(records.size()));
    if (isNew) {
        if (records.size() == records.capacity()) {
            records.reserve(records.size() + records.size() / 4 + 16); // doubling takes the memory
        }
        return records.emplace_back(record);
    }
    RolloutRecord &held = records[known->second];
    if (record.time < held.time) {
        held.time = record.time;
        held.settings = record.settings;
    }
    return held;
}

void RolloutReader::addCounter(const RolloutLine &line, TimePoint time)
{
    const std::vector<RolloutCounter> &counters = m_rollout.counters;
    const bool isRepeated = !counters.empty() && counters.back().total == line.usage;
    if (line.hasUsage && line.usage.input != 0 && !isRepeated) {
        m_totals.addCounter(
            {.total = line.usage, .time = time, .settings = numberOf(m_rollout.current)},
            line.last);
    }
}

/// Copied history tells of others' names, at times that are not theirs.
void RolloutReader::addName(const RolloutLine &line, TimePoint time)
{
    const bool isOwn = line.thread.empty() || line.thread == m_rollout.texts.text(m_rollout.thread);
    if (isOwn && time >= m_rollout.name.time) {
        m_rollout.name = {line.title.empty() ? std::string() : tidyTitle(line.title), time};
    }
}

/// One prompt is enough, unless it may be a copy.
void RolloutReader::addPrompt(const RolloutLine &line, TimePoint time)
{
    const std::vector<RolloutMeta> &metas = m_rollout.metas;
    std::vector<RolloutPrompt> &later = m_rollout.laterPrompts;
    const bool comesFromOther = !metas.empty() && metas.front().parent != 0;
    const bool isEnough = m_rollout.prompt
        && (!comesFromOther || later.size() == mostPrompts
            || (m_rollout.countersBeforeOwn && !later.empty()
                && later.back().counters >= *m_rollout.countersBeforeOwn));
    if (line.prompt.empty() || isEnough) {
        return;
    }
    RolloutPrompt prompt {tidyTitle(line.prompt), time, m_rollout.counters.size()};
    if (prompt.text.empty()) {
        return;
    }
    if (!m_rollout.prompt) {
        m_rollout.prompt = prompt;
    }
    if (comesFromOther && metas.front().created && time < *metas.front().created) {
        m_rollout.hasCopiedPrompts = true;
        return;
    }
    // Two kinds of lines tell of each.
    const bool isToldAgain = !later.empty() && later.back().text == prompt.text
        && later.back().counters == prompt.counters;
    if (comesFromOther && !isToldAgain) {
        later.push_back(std::move(prompt));
    }
}

void RolloutReader::addLimits(const RolloutLimits &limits, TimePoint time)
{
    if (auto reading = limitReading(limits, time)) {
        m_rollout.limits = {std::move(*reading), m_rollout.counters.size(),
            m_rollout.countersBeforeOwn.has_value()};
    }
}

} // namespace usage
