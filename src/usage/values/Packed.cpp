#include "usage/values/Packed.h"

#include "usage/values/HashOf.h"

#include <array>
#include <bit>

namespace usage {

namespace {

constexpr unsigned bitsPerByte = 7;
constexpr std::uint64_t lowBits = 0x7F;
constexpr std::uint64_t moreFollows = 0x80;
constexpr unsigned widest = 64;
constexpr std::uint64_t odd = 0x9E3779B97F4A7C15; // spreads each bit to all above it

using Seal = std::array<char, 2>;

Seal sealOf(std::string_view bytes, std::uint64_t place)
{
    constexpr unsigned first = 48;
    constexpr unsigned second = 56;
    const std::uint64_t hash = (hashOf(bytes) ^ place) * odd;
    return {static_cast<char>(hash >> first), static_cast<char>(hash >> second)};
}

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

void PackedWriter::seal(std::uint64_t place)
{
    const Seal seal = sealOf(m_bytes, place);
    m_bytes.append(seal.data(), seal.size());
}

std::uint64_t sealPlace(std::initializer_list<std::uint64_t> keys)
{
    std::uint64_t place = 0;
    for (const std::uint64_t key : keys) {
        place = (place + key) * odd;
    }
    return place;
}

std::optional<std::string_view> unsealed(std::string_view bytes, std::uint64_t place)
{
    constexpr std::size_t size = Seal {}.size();
    if (bytes.size() < size) {
        return std::nullopt;
    }
    const std::string_view rest = bytes.substr(0, bytes.size() - size);
    const Seal seal = sealOf(rest, place);
    const bool isWhole = bytes.substr(rest.size()) == std::string_view(seal.data(), seal.size());
    return isWhole ? std::optional(rest) : std::nullopt;
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

} // namespace usage
