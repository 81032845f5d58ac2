#include "indexer/Ledger.h"

#include <tuple>

namespace indexer {

Ledger::Ledger(TextPool &names)
    : m_names(names)
    , m_heads(1, none) // the empty key, which no record has
{
}

bool Ledger::add(const TranscriptLine &line, TimePoint time)
{
    const bool hasMessage = !line.messageId.empty();
    // The letter in front keeps the three kinds of ids apart.
    m_key = hasMessage ? 'm' : line.requestId.empty() ? 'u' : 'r';
    m_key += hasMessage ? line.messageId : line.requestId.empty() ? line.uuid : line.requestId;
    if (m_key.size() == 1) {
        return false;
    }
    const UsageRecord record {
        .usage = line.usage,
        .origin = {.isForked = line.isForked,
            .time = time,
            .session = m_names.add(line.sessionId),
            .model = m_names.add(line.model),
            .folder = m_names.add(line.cwd)},
        .request = hasMessage ? m_names.add(line.requestId) : 0,
        .speed = line.speed,
        .tier = line.tier,
        .isSidechain = line.isSidechain,
        .isFinished = line.isFinished,
    };
    const TextId key = m_keys.add(m_key);
    if (key == m_heads.size()) {
        m_heads.push_back(none);
    }
    for (std::uint32_t i = m_heads[key]; i != none; i = m_next[i]) {
        if (m_records[i].request == record.request) {
            merge(m_records[i], record);
            return true;
        }
    }
    m_next.push_back(m_heads[key]);
    m_heads[key] = static_cast<std::uint32_t>(m_records.size());
    m_records.push_back(record);
    return true;
}

/// Among the records of one key, that which takes over the record without request id; none when
/// there is no such record, or no other.
std::uint32_t Ledger::heirOf(std::uint32_t head) const
{
    bool hasOrphan = false;
    std::uint32_t heir = none;
    for (std::uint32_t i = head; i != none; i = m_next[i]) {
        const TextId request = m_records[i].request;
        if (request == 0) {
            hasOrphan = true;
        } else if (heir == none || m_names.text(request) < m_names.text(m_records[heir].request)) {
            heir = i;
        }
    }
    return hasOrphan ? heir : none;
}

UsageRecord Ledger::withOrphan(std::uint32_t heir, std::uint32_t head) const
{
    UsageRecord whole = m_records[heir];
    for (std::uint32_t i = head; i != none; i = m_next[i]) {
        if (m_records[i].request == 0) {
            merge(whole, m_records[i]);
        }
    }
    return whole;
}

void Ledger::merge(UsageRecord &record, const UsageRecord &other) const
{
    record.usage.raiseTo(other.usage);
    if (precedes(other.origin, record.origin)) {
        record.origin = other.origin;
    }
    record.speed = std::max(record.speed, other.speed);
    record.tier = std::max(record.tier, other.tier);
    record.isSidechain = record.isSidechain || other.isSidechain;
    record.isFinished = record.isFinished || other.isFinished;
}

/// The line that was not copied, the earliest, of the first session by name; what follows decides
/// between lines that agree in all this, so that their order never does.
bool Ledger::precedes(const Origin &a, const Origin &b) const
{
    const auto rank = [this](const Origin &origin) {
        return std::make_tuple(origin.isForked, origin.time, m_names.text(origin.session),
            origin.model == 0, m_names.text(origin.model), origin.folder == 0,
            m_names.text(origin.folder));
    };
    return rank(a) < rank(b);
}

} // namespace indexer
