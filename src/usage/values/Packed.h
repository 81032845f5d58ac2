#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace usage {

/// Writes values one after another into bytes that mean the same on every machine: numbers seven
/// bits at a time, the low ones first; texts with their length in front.
class PackedWriter final {
public:
    [[nodiscard]] const std::string &bytes() const { return m_bytes; }

    void clear() { m_bytes.clear(); }
    void number(std::uint64_t value);
    /// Small for numbers around 0, whatever their sign.
    void signedNumber(std::int64_t value);
    void real(double value);
    void text(std::string_view value);
    /// Closes the bytes with two that `unsealed` wants to find there.
    void seal(std::uint64_t place);

private:
    std::string m_bytes;
};

/// What seals bytes to the row that they belong to.
[[nodiscard]] std::uint64_t sealPlace(std::initializer_list<std::uint64_t> keys);
/// The bytes in front of their seal; nothing if it is broken, or that of another place.
[[nodiscard]] std::optional<std::string_view> unsealed(std::string_view bytes, std::uint64_t place);

/// Reads them back in the same order. Bytes that end too early or make no sense give zeros and
/// empty texts from there on.
class PackedReader final {
public:
    explicit PackedReader(std::string_view bytes)
        : m_rest(bytes)
    {
    }

    /// Whether all that was read was there.
    [[nodiscard]] bool isSound() const { return m_isSound; }
    [[nodiscard]] bool isAtEnd() const { return m_rest.empty(); }

    [[nodiscard]] std::uint64_t number();
    [[nodiscard]] std::int64_t signedNumber();
    [[nodiscard]] double real();
    /// Lives as long as the bytes.
    [[nodiscard]] std::string_view text();
    /// How many values follow, none of which is shorter than a byte.
    [[nodiscard]] std::size_t count();

private:
    void fail();

    std::string_view m_rest;
    bool m_isSound = true;
};

} // namespace usage
