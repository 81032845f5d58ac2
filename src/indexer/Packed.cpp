#include "indexer/Packed.h"

#include <bit>

namespace indexer {

namespace {

constexpr unsigned bitsPerByte = 7;
constexpr std::uint64_t lowBits = 0x7F;
constexpr std::uint64_t moreFollows = 0x80;
constexpr unsigned widest = 64;

} // namespace

void PackedWriter::number(std::uint64_t value)
{
    while (value > lowBits) {
        m_bytes += static_cast<char>(value | moreFollows);
        value >>= bitsPerByte;
    }
    m_bytes += static_cast<char>(value);
}

void PackedWriter::signedNumber(std::int64_t value)
{
    const auto bits = static_cast<std::uint64_t>(value);
    number(bits << 1U ^ (value < 0 ? ~std::uint64_t {0} : 0));
}

void PackedWriter::real(double value)
{
    number(std::bit_cast<std::uint64_t>(value));
}

void PackedWriter::text(std::string_view value)
{
    number(value.size());
    m_bytes += value;
}

std::uint64_t PackedReader::number()
{
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < widest && !m_rest.empty(); shift += bitsPerByte) {
        const auto byte = static_cast<unsigned char>(m_rest.front());
        m_rest.remove_prefix(1);
        value |= (byte & lowBits) << shift;
        if ((byte & moreFollows) == 0) {
            return value;
        }
    }
    fail();
    return 0;
}

std::int64_t PackedReader::signedNumber()
{
    const std::uint64_t bits = number();
    return static_cast<std::int64_t>(bits >> 1U ^ ((bits & 1U) != 0 ? ~std::uint64_t {0} : 0));
}

double PackedReader::real()
{
    return std::bit_cast<double>(number());
}

std::string_view PackedReader::text()
{
    const std::uint64_t size = number();
    if (size > m_rest.size()) {
        fail();
        return {};
    }
    const std::string_view value = m_rest.substr(0, static_cast<std::size_t>(size));
    m_rest.remove_prefix(value.size());
    return value;
}

std::size_t PackedReader::count()
{
    const std::uint64_t value = number();
    if (value > m_rest.size()) {
        fail();
        return 0;
    }
    return static_cast<std::size_t>(value);
}

void PackedReader::fail()
{
    m_rest = {};
    m_isSound = false;
}

} // namespace indexer
