#include "usage/claude/SessionFacts.h"

#include <algorithm>
#include <utility>

namespace usage {

namespace {

/// "…/0b6e….jsonl" is the own file of session "0b6e…".
bool isOwnFile(std::string_view file, std::string_view session)
{
    constexpr std::string_view suffix = ".jsonl";
    if (!file.ends_with(suffix)) {
        return false;
    }
    file.remove_suffix(suffix.size());
    if (!file.ends_with(session)) {
        return false;
    }
    file.remove_suffix(session.size());
    return file.empty() || file.back() == '/';
}

void keepLater(std::optional<TimePoint> &kept, std::optional<TimePoint> other)
{
    if (other && (!kept || *kept < *other)) {
        kept = other;
    }
}

void packText(PackedWriter &writer, const SessionFacts::Earliest &earliest)
{
    writer.number(earliest.standing ? earliest.standing->rank() + 1 : 0);
    if (earliest.standing) {
        writer.text(earliest.text);
    }
}

SessionFacts::Earliest unpackText(PackedReader &reader)
{
    SessionFacts::Earliest earliest;
    if (const std::uint64_t rank = reader.number(); rank != 0) {
        earliest.standing = Standing::ofRank(rank - 1);
        earliest.text = reader.text();
    }
    return earliest;
}

/// Times are never before 1970, so 0 is free to mean that there is none.
void packTime(PackedWriter &writer, std::optional<TimePoint> time)
{
    writer.number(time ? static_cast<std::uint64_t>(time->time_since_epoch().count()) + 1 : 0);
}

std::optional<TimePoint> unpackTime(PackedReader &reader)
{
    const std::uint64_t count = reader.number();
    return count == 0
        ? std::nullopt
        : std::optional(TimePoint(TimePoint::duration(static_cast<std::int64_t>(count - 1))));
}

} // namespace

void SessionFacts::Earliest::take(Standing other, std::string_view otherText)
{
    if (!standing
        || std::make_pair(other, otherText) < std::make_pair(*standing, std::string_view(text))) {
        standing = other;
        text = otherText;
    }
}

bool SessionFacts::hasTitle() const
{
    return std::ranges::any_of(titles, [](const std::string &title) { return !title.empty(); });
}

void SessionFacts::append(SessionFacts later)
{
    for (std::size_t i = 0; i < titles.size(); ++i) {
        if (!later.titles.at(i).empty()) {
            titles.at(i) = std::move(later.titles.at(i));
        }
    }
    for (const auto text :
        {&SessionFacts::prompt, &SessionFacts::folder, &SessionFacts::userFolder}) {
        if (const Earliest &other = later.*text; other.standing) {
            (this->*text).take(*other.standing, other.text);
        }
    }
    keepLater(end, later.end);
    keepLater(latest, later.latest);
    leaves.insert(leaves.end(), later.leaves.begin(), later.leaves.end());
    tidy();
}

void SessionFacts::tidy()
{
    if (hasTitle()) {
        leaves = {};
        prompt = {};
    }
}

void pack(PackedWriter &writer, const SessionFacts &facts, std::uint64_t place)
{
    for (const std::string &title : facts.titles) {
        writer.text(title);
    }
    packText(writer, facts.prompt);
    packText(writer, facts.folder);
    packText(writer, facts.userFolder);
    packTime(writer, facts.end);
    packTime(writer, facts.latest);
    writer.number(facts.leaves.size());
    std::int64_t before = 0;
    for (const auto &[line, time] : facts.leaves) {
        writer.number(line);
        writer.signedNumber(time.time_since_epoch().count() - before);
        before = time.time_since_epoch().count();
    }
    writer.seal(place);
}

std::optional<SessionFacts> unpackSessionFacts(std::string_view bytes, std::uint64_t place)
{
    const auto whole = unsealed(bytes, place);
    PackedReader reader(whole.value_or(std::string_view {}));
    SessionFacts facts;
    for (std::string &title : facts.titles) {
        title = reader.text();
    }
    facts.prompt = unpackText(reader);
    facts.folder = unpackText(reader);
    facts.userFolder = unpackText(reader);
    facts.end = unpackTime(reader);
    facts.latest = unpackTime(reader);
    facts.leaves.resize(reader.count());
    std::int64_t time = 0;
    for (SessionFacts::Leaf &leaf : facts.leaves) {
        leaf.line = reader.number();
        time += reader.signedNumber();
        leaf.time = TimePoint(TimePoint::duration(time));
    }
    return reader.isSound() && reader.isAtEnd() ? std::optional(std::move(facts)) : std::nullopt;
}

void SessionMerge::add(const SessionFacts &facts, std::string_view file)
{
    const bool inOwnFile = isOwnFile(file, m_session);
    for (std::size_t i = 0; i < m_titles.size(); ++i) {
        Title &held = m_titles.at(i);
        if (!facts.titles.at(i).empty()
            && (held.text.empty()
                || std::make_pair(held.inOwnFile, std::string_view(held.file))
                    <= std::make_pair(inOwnFile, file))) {
            held = {inOwnFile, std::string(file), facts.titles.at(i)};
        }
    }
    SessionFacts others = facts;
    others.titles = {};
    m_all.append(std::move(others));
}

SessionFace SessionMerge::face(const Summaries &summaries) const
{
    const SessionFacts::Earliest &folder = m_all.folder.standing ? m_all.folder : m_all.userFolder;
    return {title(summaries), folder.text, m_all.end.value_or(m_all.latest.value_or(TimePoint {}))};
}

std::string SessionMerge::title(const Summaries &summaries) const
{
    const auto found =
        std::ranges::find_if(m_titles, [](const Title &title) { return !title.text.empty(); });
    if (found != m_titles.end()) {
        return found->text;
    }
    std::string text = summary(summaries);
    return text.empty() ? m_all.prompt.text : text;
}

/// The summary of the latest line that has one; of lines at one time, that in the last file.
std::string SessionMerge::summary(const Summaries &summaries) const
{
    std::optional<std::pair<TimePoint, Summary>> best;
    for (const auto &[line, time] : m_all.leaves) {
        if (auto found = summaries(line)) {
            best = std::max(best, std::optional(std::make_pair(time, std::move(*found))));
        }
    }
    return best ? best->second.second : std::string();
}

} // namespace usage
