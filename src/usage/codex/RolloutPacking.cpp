#include "usage/codex/RolloutPacking.h"

#include "usage/values/HashOf.h"
#include "usage/values/Packed.h"

#include <algorithm>

namespace usage {

namespace {

/// Rises with every change of what is packed, or of what the reader makes of a line.
constexpr std::uint64_t form = 2;
/// Did not tell whose the copies are.
constexpr std::uint64_t formBefore = 1;

/// Puts values into bytes.
class Packing final {
public:
    [[nodiscard]] const std::string &bytes() const { return m_writer.bytes(); }

    template <typename Number> void difference(Number value, Number from)
    {
        m_writer.signedNumber(static_cast<std::int64_t>(
            static_cast<std::uint64_t>(value) - static_cast<std::uint64_t>(from)));
    }
    template <typename Number> void number(Number value)
    {
        m_writer.number(static_cast<std::uint64_t>(value));
    }
    void real(double value) { m_writer.real(value); }
    void text(const std::string &value) { m_writer.text(value); }
    void texts(const OwnTexts &table)
    {
        m_writer.number(table.size() - 1);
        for (TextId id = 1; id < table.size(); ++id) {
            m_writer.text(table.text(id));
        }
    }
    void maybe(const auto &value, auto each)
    {
        m_writer.number(value ? 1 : 0);
        if (value) {
            each(*value);
        }
    }
    void moment(TimePoint value, TimePoint from)
    {
        difference(value.time_since_epoch().count(), from.time_since_epoch().count());
    }
    void list(const auto &values, auto each)
    {
        m_writer.number(values.size());
        for (const auto &value : values) {
            each(value);
        }
    }

private:
    PackedWriter m_writer;
};

/// Takes them out again in the same order.
class Unpacking final {
public:
    explicit Unpacking(std::string_view bytes)
        : m_reader(bytes)
    {
    }

    [[nodiscard]] bool isWhole() const { return m_reader.isSound() && m_reader.isAtEnd(); }

    template <typename Number> void difference(Number &value, Number from)
    {
        value = static_cast<Number>(
            static_cast<std::uint64_t>(m_reader.signedNumber()) + static_cast<std::uint64_t>(from));
    }
    template <typename Number> void number(Number &value)
    {
        value = static_cast<Number>(m_reader.number());
    }
    void real(double &value) { value = m_reader.real(); }
    void text(std::string &value) { value = m_reader.text(); }
    void texts(OwnTexts &table)
    {
        for (std::size_t left = m_reader.count(); left > 0; --left) {
            table.add(m_reader.text());
        }
    }
    void maybe(auto &value, auto each)
    {
        if (m_reader.number() != 0) {
            each(value.emplace());
        }
    }
    void moment(TimePoint &value, TimePoint from)
    {
        TimePoint::rep count = 0;
        difference(count, from.time_since_epoch().count());
        value = TimePoint(TimePoint::duration(count));
    }
    void list(auto &values, auto each)
    {
        const std::size_t count = m_reader.count();
        // Long ones take twice the memory while they grow, and a few values mostly follow.
        values.reserve(count + count / 8);
        for (std::size_t left = count; left > 0; --left) {
            each(values.emplace_back());
        }
    }

private:
    PackedReader m_reader;
};

// Each goes both ways, so that the two cannot differ. Numbers are told by their distance to those
// before them, where that is smaller.

void exchangeUsage(auto &io, auto &usage, const RolloutUsage &from)
{
    io.difference(usage.input, from.input);
    io.difference(usage.cached, from.cached);
    io.difference(usage.cacheWrite, from.cacheWrite);
    io.difference(usage.output, from.output);
    io.difference(usage.reasoning, from.reasoning);
    io.difference(usage.total, from.total + usage.input - from.input + usage.output - from.output);
}

void exchangeSettings(auto &io, auto &settings)
{
    io.number(settings.model);
    io.number(settings.folder);
    io.number(settings.speed);
    io.number(settings.tier);
}

void exchangeMetas(auto &io, auto &metas)
{
    io.list(metas, [&io](auto &meta) {
        io.number(meta.thread);
        io.number(meta.parent);
        io.maybe(meta.created, [&io](auto &created) { io.moment(created, TimePoint {}); });
        io.number(meta.isSubagent);
        io.number(meta.isCopy);
        io.number(meta.isRead);
    });
}

void exchangeRecords(auto &io, auto &records)
{
    TimePoint time {};
    io.list(records, [&](auto &record) {
        io.number(record.thread);
        io.number(record.response);
        io.number(record.usage.input);
        io.number(record.usage.cached);
        io.number(record.usage.cacheWrite);
        io.number(record.usage.output);
        io.moment(record.time, time);
        io.number(record.settings);
        time = record.time;
    });
}

void exchangeCounters(auto &io, auto &counters)
{
    RolloutUsage total;
    TimePoint time {};
    io.list(counters, [&](auto &counter) {
        exchangeUsage(io, counter.total, total);
        io.moment(counter.time, time);
        io.number(counter.settings);
        io.number(counter.isSum);
        io.number(counter.isBeyond);
        total = counter.total;
        time = counter.time;
    });
}

void exchangePrompt(auto &io, auto &prompt)
{
    io.text(prompt.text);
    io.moment(prompt.time, TimePoint {});
    io.number(prompt.counters);
}

void exchangeLimits(auto &io, auto &limits)
{
    io.moment(limits.reading.time, TimePoint {});
    io.text(limits.reading.plan);
    io.list(limits.reading.windows, [&io](auto &window) {
        io.real(window.percent);
        io.real(window.minutes);
        io.maybe(window.resetsAt, [&io](auto &reset) { io.moment(reset, TimePoint {}); });
    });
    io.number(limits.counters);
    io.number(limits.isBehindOwn);
}

void exchangeCopies(auto &io, auto &copies, std::uint64_t version)
{
    io.number(copies.counters);
    if (version > formBefore) {
        io.number(copies.thread);
        io.number(copies.bare);
    }
}

void exchange(auto &io, auto &rollout, std::uint64_t version = form)
{
    io.texts(rollout.texts);
    io.list(rollout.settings, [&io](auto &settings) { exchangeSettings(io, settings); });
    io.number(rollout.thread);
    io.number(rollout.isNamed);
    exchangeMetas(io, rollout.metas);
    exchangeRecords(io, rollout.records);
    exchangeCounters(io, rollout.counters);
    io.maybe(rollout.countersBeforeOwn, [&io](auto &count) { io.number(count); });
    exchangeCopies(io, rollout.copies, version);
    exchangeUsage(io, rollout.covered, {});
    io.text(rollout.name.text);
    io.moment(rollout.name.time, TimePoint {});
    io.maybe(rollout.prompt, [&io](auto &prompt) { exchangePrompt(io, prompt); });
    io.list(rollout.laterPrompts, [&io](auto &prompt) { exchangePrompt(io, prompt); });
    io.number(rollout.hasCopiedPrompts);
    io.maybe(rollout.limits, [&io](auto &limits) { exchangeLimits(io, limits); });
    io.moment(rollout.end, TimePoint {});
    exchangeSettings(io, rollout.current);
    io.number(rollout.turn);
    io.list(rollout.turns, [&io](auto &turn) {
        io.number(turn.id);
        io.number(turn.settings);
    });
}

/// The total that includes another thread's last record was not among the copies.
void completeCopies(Rollout &rollout)
{
    const auto other = std::ranges::find_if(
        rollout.records, [](const RolloutRecord &record) { return record.thread != 0; });
    if (other != rollout.records.end()) {
        rollout.copies.thread = other->thread;
        rollout.copies.counters = std::min(rollout.counters.size(), rollout.copies.counters + 1);
    }
}

} // namespace

std::string packed(const Rollout &rollout)
{
    Packing io;
    exchange(io, rollout);
    PackedWriter writer;
    writer.number(form);
    writer.number(hashOf(io.bytes()));
    writer.text(io.bytes());
    return writer.bytes();
}

std::optional<Rollout> unpackedRollout(std::string_view bytes)
{
    PackedReader reader(bytes);
    const std::uint64_t version = reader.number();
    if (version != form && version != formBefore) {
        return std::nullopt;
    }
    const std::uint64_t hash = reader.number();
    const std::string_view body = reader.text();
    if (!reader.isSound() || !reader.isAtEnd() || hashOf(body) != hash) {
        return std::nullopt;
    }
    Rollout rollout;
    Unpacking io(body);
    exchange(io, rollout, version);
    if (!io.isWhole()) {
        return std::nullopt;
    }
    if (version == formBefore) {
        completeCopies(rollout);
    }
    return rollout;
}

} // namespace usage
