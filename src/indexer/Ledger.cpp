#include "indexer/Ledger.h"

#include <algorithm>
#include <tuple>

namespace indexer {

namespace {

std::uint64_t joined(TextId key, TextId request)
{
    return std::uint64_t {key} << 32U | request;
}

} // namespace

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
    const Standing standing(line.isForked, time);
    const UsageRecord record {
        .usage = line.usage,
        .standing = standing,
        .session = {standing, m_names.add(line.sessionId)},
        .model = {standing, m_names.add(line.model)},
        .folder = {standing, m_names.add(line.cwd)},
        .request = hasMessage ? m_names.add(line.requestId) : 0,
        .speed = line.speed,
        .tier = line.tier,
        .ending = line.ending,
        .isSidechain = line.isSidechain,
    };
    const TextId key = m_keys.add(m_key);
    if (key == m_heads.size()) {
        m_heads.push_back(none);
    }
    if (const std::uint32_t known = indexOf(key, record.request); known != none) {
        merge(m_records[known], record);
    } else {
        append(key, record);
    }
    return true;
}

/// The record of a key and a request, none when there is none yet. Not found by walking along the
/// key's records: a single message may have any number of them.
std::uint32_t Ledger::indexOf(TextId key, TextId request) const
{
    const std::uint32_t head = m_heads[key];
    if (head == none || m_records[head].request == request) {
        return head;
    }
    const auto found = m_later.find(joined(key, request));
    return found == m_later.end() ? none : found->second;
}

void Ledger::append(TextId key, const UsageRecord &record)
{
    const auto number = static_cast<std::uint32_t>(m_records.size());
    const std::uint32_t head = m_heads[key];
    if (head == none) {
        m_heads[key] = number;
        m_next.push_back(none);
    } else {
        m_later.emplace(joined(key, record.request), number);
        m_next.push_back(m_next[head]);
        m_next[head] = number;
    }
    m_records.push_back(record);
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
    record.standing = std::min(record.standing, other.standing);
    for (const auto field : {&UsageRecord::session, &UsageRecord::model, &UsageRecord::folder}) {
        if (precedes(other.*field, record.*field)) {
            record.*field = other.*field;
        }
    }
    record.speed = std::max(record.speed, other.speed);
    record.tier = std::max(record.tier, other.tier);
    record.ending = std::max(record.ending, other.ending);
    record.isSidechain = record.isSidechain || other.isSidechain;
}

/// What is told goes before what is not, whatever the lines weigh: the placeholders that some
/// proxies write first do not even name the model. Between lines of one weight the name decides, so
/// that their order never does.
bool Ledger::precedes(const Told &a, const Told &b) const
{
    const auto rank = [this](const Told &told) {
        return std::make_tuple(told.text == 0, told.standing, m_names.text(told.text));
    };
    return rank(a) < rank(b);
}

} // namespace indexer
