#include "TranscriptBook.h"

using usage::TextId;

namespace {

/// As the history keeps it.
template <typename Value> std::string packed(const Value &value)
{
    usage::PackedWriter writer;
    pack(writer, value, 0);
    return writer.bytes();
}

} // namespace

void TranscriptBook::add(const usage::TranscriptPiece &piece)
{
    for (const auto &[key, told] : piece.answers) {
        usage::Answer record = told;
        record.session.text = m_names.add(piece.names.text(told.session.text));
        record.model.text = m_names.add(piece.names.text(told.model.text));
        const auto [place, isNew] = m_answers.emplace(key, record);
        if (!isNew) {
            usage::Answer before = *usage::unpackAnswer(packed(place->second), 0);
            merge(before, record, m_names);
            place->second = before;
        }
    }
    for (const auto &[session, facts] : piece.sessions) {
        const auto [place, isNew] =
            m_sessions.emplace(std::string(piece.names.text(session)), facts);
        if (!isNew) {
            usage::SessionFacts before = *usage::unpackSessionFacts(packed(place->second), 0);
            before.append(facts);
            place->second = std::move(before);
        }
    }
    for (const auto &[leaf, text] : piece.summaries) {
        m_summaries[leaf] = text;
    }
}

std::string TranscriptBook::bytes() const
{
    usage::PackedWriter writer;
    for (const auto &[key, record] : m_answers) {
        writer.number(key.message);
        writer.number(key.request);
        writer.text(m_names.text(record.session.text));
        writer.text(m_names.text(record.model.text));
        // The numbers of the texts depend on the order of arrival, nothing else does.
        usage::Answer plain = record;
        plain.session.text = plain.session.text != 0 ? 1 : 0;
        plain.model.text = plain.model.text != 0 ? 1 : 0;
        writer.text(packed(plain));
    }
    for (const auto &[session, facts] : m_sessions) {
        writer.text(session);
        writer.text(packed(facts));
    }
    for (const auto &[leaf, text] : m_summaries) {
        writer.number(leaf);
        writer.text(text);
    }
    return writer.bytes();
}
