#include "indexer/RolloutBook.h"

#include "indexer/RolloutPacking.h"

#include <algorithm>
#include <tuple>

namespace indexer {

namespace {

/// A thread has several files when it was moved, copied or compressed; the counters are those of
/// the file that tells the most.
bool tellsMore(const Rollout &a, const Rollout &b)
{
    const auto rank = [](const Rollout &rollout) {
        return std::make_tuple(
            rollout.counters.size(), rollout.countersBeforeOwn.has_value(), rollout.end);
    };
    return rank(a) != rank(b) ? rank(a) > rank(b) : packed(a) > packed(b);
}

} // namespace

/// What all files tell of one response.
struct RolloutBook::Response {
    TextId thread = 0; // the oldest that has it
    RolloutSettings settings;
    TimePoint told {}; // the line that tells those
    RolloutUsage usage;
    TimePoint time {}; // the earliest
};

/// A prompt that may be a session's title; the least is the best.
struct RolloutBook::Prompt {
    bool mayBeCopy = false;
    TimePoint time {};
    std::string text;

    [[nodiscard]] auto operator<=>(const Prompt &) const = default;
};

void RolloutBook::add(Rollout rollout)
{
    RolloutFile file {.rollout = std::move(rollout), .thread = 0, .texts = {}};
    const OwnTexts &texts = file.rollout.texts;
    for (TextId id = 0; id < texts.size(); ++id) {
        file.texts.push_back(m_names.add(texts.text(id)));
    }
    file.thread = file.texts[file.rollout.thread];
    for (const RolloutMeta &meta : file.rollout.metas) {
        const TextId thread = file.texts[meta.thread];
        if (meta.created) {
            m_lineage.addThread(thread, *meta.created);
        }
        m_lineage.addParent(thread, file.texts[meta.parent], meta.isSubagent, meta.isCopy);
    }
    for (const RolloutRecord &record : file.rollout.records) {
        if (record.thread == 0) {
            TimePoint &begin = m_ownRecords.emplace(file.thread, record.time).first->second;
            begin = std::min(begin, record.time);
        }
    }
    m_files.push_back(std::move(file));
}

void RolloutBook::forEach(const Visit &visit) const
{
    visitRecords(visit);
    visitCounters(visit);
}

/// Each response of a family once, as its oldest thread tells it, at its earliest time.
void RolloutBook::visitRecords(const Visit &visit) const
{
    Responses responses;
    for (const RolloutFile &file : m_files) {
        addTo(responses, file);
    }
    for (const auto &[key, response] : responses) {
        visit(usageRecord(response.thread, response.usage, response.settings, response.time));
    }
}

void RolloutBook::addTo(Responses &responses, const RolloutFile &file) const
{
    const auto rank = [this](const Response &each) {
        return std::make_tuple(m_lineage.ageOf(each.thread), each.told, each.settings.model == 0,
            m_names.text(each.settings.model), m_names.text(each.settings.folder),
            each.settings.speed, each.settings.tier);
    };
    for (const RolloutRecord &record : file.rollout.records) {
        const TextId thread = record.thread == 0 ? file.thread : file.texts[record.thread];
        Response told {.thread = thread,
            .settings = settingsOf(file, record.settings),
            .told = record.time,
            .usage = record.usage,
            .time = record.time};
        const auto [known, isNew] =
            responses.emplace(std::make_pair(m_lineage.rootOf(thread), record.response), told);
        Response &held = known->second;
        if (!isNew) {
            told.usage.raiseTo(held.usage);
            held.usage = told.usage;
            told.time = held.time = std::min(held.time, told.time);
            held = rank(told) < rank(held) ? told : held;
        }
    }
}

void RolloutBook::visitCounters(const Visit &visit) const
{
    const std::vector<OwnPart> parts = ownParts(m_files, m_lineage);
    std::unordered_map<TextId, std::size_t> best;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        const auto [held, isNew] = best.emplace(m_files[i].thread, i);
        if (!isNew && tellsMore(m_files[i].rollout, m_files[held->second].rollout)) {
            held->second = i;
        }
    }
    for (const auto &[thread, i] : best) {
        visitCounters(m_files[i], parts[i], visit);
    }
}

/// Counts by the growth beyond the highest total so far. What grew without a record where there are
/// records is not known, since a total may hold several responses: only that something is missing.
void RolloutBook::visitCounters(const RolloutFile &file, OwnPart part, const Visit &visit) const
{
    const std::size_t end = countersToCount(file, part);
    RolloutUsage highest;
    for (std::size_t i = 0; i < file.rollout.counters.size(); ++i) {
        const RolloutCounter &counter = file.rollout.counters[i];
        const RolloutUsage growth = i < end ? counter.total.beyond(highest) : RolloutUsage {};
        highest.raiseTo(counter.total);
        const bool isPartial = i >= end && counter.isBeyond;
        if (i < part.begin || (growth.disjoint() == Usage {} && !isPartial)) {
            continue;
        }
        UsageRecord record =
            usageRecord(file.thread, growth, settingsOf(file, counter.settings), counter.time);
        record.isSum = counter.isSum;
        record.isPartial = isPartial;
        visit(record);
    }
}

/// Where responses have records of their own, only the counters that came before these, and that
/// only where copies can be told.
std::size_t RolloutBook::countersToCount(const RolloutFile &file, OwnPart part) const
{
    const std::vector<RolloutCounter> &counters = file.rollout.counters;
    const auto records = m_ownRecords.find(file.thread);
    if (records == m_ownRecords.end()) {
        return counters.size();
    }
    if (!part.isKnown) {
        return 0;
    }
    // Another file may have them.
    const auto first = std::find_if(counters.begin(), counters.end(),
        [&](const RolloutCounter &counter) { return counter.time >= records->second; });
    return file.rollout.countersBeforeOwn.value_or(
        static_cast<std::size_t>(first - counters.begin()));
}

RolloutSettings RolloutBook::settingsOf(const RolloutFile &file, std::uint32_t number) const
{
    RolloutSettings settings = file.rollout.settings[number];
    settings.model = file.texts[settings.model];
    settings.folder = file.texts[settings.folder];
    return settings;
}

UsageRecord RolloutBook::usageRecord(
    TextId thread, const RolloutUsage &usage, const RolloutSettings &settings, TimePoint time) const
{
    const Standing standing(false, time);
    UsageRecord record;
    record.usage = usage.disjoint();
    record.standing = standing;
    record.session = {standing, m_lineage.sessionOf(thread)};
    record.model = {standing, settings.model};
    record.folder = {standing, settings.folder};
    record.speed = settings.speed;
    record.tier = settings.tier;
    record.provider = Provider::Codex;
    return record;
}

std::optional<LimitReading> RolloutBook::limits(TimePoint now) const
{
    const std::vector<OwnPart> parts = ownParts(m_files, m_lineage);
    std::optional<LimitReading> newest;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        const auto &told = m_files[i].rollout.limits;
        if (told && told->reading.time <= now + limitsTolerance
            && isOwn(*told, m_files[i].thread, parts[i])) {
            newest = std::max(newest, std::optional(told->reading));
        }
    }
    return newest;
}

bool RolloutBook::isOwn(const RolloutLimitReading &limits, TextId thread, OwnPart part) const
{
    return !m_lineage.hasParent(thread) || limits.isBehindOwn
        || (part.isKnown && limits.counters > part.begin);
}

std::vector<RolloutSession> RolloutBook::sessions() const
{
    std::map<TextId, RolloutSession> sessions;
    addTitles(sessions);
    std::map<TextId, std::pair<TimePoint, std::string_view>> folders;
    forEach([&](const UsageRecord &record) {
        const TextId thread = record.session.text;
        RolloutSession &session = sessions[thread];
        session.end = std::max(session.end, record.time());
        const std::pair told {record.time(), m_names.text(record.folder.text)};
        if (record.folder.text != 0 && (session.folder == 0 || told < folders[thread])) {
            folders[thread] = told;
            session.folder = record.folder.text;
        }
    });
    std::vector<RolloutSession> result;
    for (auto &[thread, session] : sessions) {
        session.thread = thread;
        result.push_back(std::move(session));
    }
    return result;
}

/// The newest name goes before the first prompt.
void RolloutBook::addTitles(std::map<TextId, RolloutSession> &sessions) const
{
    const std::vector<OwnPart> parts = ownParts(m_files, m_lineage);
    std::map<TextId, std::pair<TimePoint, std::string>> names;
    std::map<TextId, Prompt> prompts;
    for (std::size_t i = 0; i < m_files.size(); ++i) {
        const Rollout &rollout = m_files[i].rollout;
        const TextId thread = m_files[i].thread;
        if (m_lineage.sessionOf(thread) != thread) {
            continue;
        }
        TimePoint &end = sessions[thread].end;
        end = std::max(end, rollout.end);
        std::pair name {rollout.name.time, rollout.name.text};
        names[thread] = std::max(names.emplace(thread, name).first->second, name);
        if (auto prompt = promptOf(m_files[i], parts[i])) {
            prompts[thread] = std::min(prompts.emplace(thread, *prompt).first->second, *prompt);
        }
    }
    for (auto &[thread, session] : sessions) {
        session.title = names[thread].second.empty() ? prompts[thread].text : names[thread].second;
    }
}

/// The first of its own; a copied one is better than none.
std::optional<RolloutBook::Prompt> RolloutBook::promptOf(
    const RolloutFile &file, OwnPart part) const
{
    const Rollout &rollout = file.rollout;
    const bool hasParent = m_lineage.hasParent(file.thread);
    if (hasParent && (part.isKnown || rollout.hasCopiedPrompts)) {
        const auto own = std::find_if(rollout.laterPrompts.begin(), rollout.laterPrompts.end(),
            [&](const RolloutPrompt &each) { return each.counters >= part.begin; });
        if (own != rollout.laterPrompts.end()) {
            return Prompt {false, own->time, own->text};
        }
    }
    return rollout.prompt
        ? std::optional(Prompt {hasParent, rollout.prompt->time, rollout.prompt->text})
        : std::nullopt;
}

} // namespace indexer
