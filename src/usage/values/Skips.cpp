#include "usage/values/Skips.h"

#include "usage/values/Packed.h"

#include <algorithm>
#include <fmt/format.h>
#include <functional>
#include <numeric>

namespace usage {

namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(LineSkip::Count)> lineReasons {
    "longer than 8 MiB", "not JSON", "with impossible numbers", "without a possible time",
    "without identity"};
constexpr std::array<std::string_view, static_cast<std::size_t>(FileSkip::Count)> fileReasons {
    "not a regular file", "in a loop of links", "unreadable"};

/// "3 lines (1 longer than 8 MiB, 2 not JSON)", empty when there is nothing to tell.
template <std::size_t N>
std::string part(const std::array<std::size_t, N> &counts,
    const std::array<std::string_view, N> &reasons, std::string_view one, std::string_view many)
{
    std::string details;
    for (std::size_t i = 0; i < N; ++i) {
        if (counts[i] > 0) {
            details += fmt::format("{}{} {}", details.empty() ? "" : ", ", counts[i], reasons[i]);
        }
    }
    if (details.empty()) {
        return {};
    }
    const auto all = std::accumulate(counts.begin(), counts.end(), std::size_t {0});
    return fmt::format("{} {} ({})", all, all == 1 ? one : many, details);
}

} // namespace

std::string Skips::sentence() const
{
    const std::string lines = part(m_lines, lineReasons, "line", "lines");
    const std::string files = part(m_files, fileReasons, "file or folder", "files or folders");
    if (lines.empty() && files.empty()) {
        return {};
    }
    return fmt::format(
        "skipped {}{}{}", lines, lines.empty() || files.empty() ? "" : " and ", files);
}

std::size_t Skips::count(LineSkip reason) const
{
    return m_lines.at(static_cast<std::size_t>(reason));
}

std::size_t Skips::count(FileSkip reason) const
{
    return m_files.at(static_cast<std::size_t>(reason));
}

void Skips::add(LineSkip reason, std::size_t lines)
{
    m_lines.at(static_cast<std::size_t>(reason)) += lines;
}

void Skips::add(FileSkip reason, std::size_t files)
{
    m_files.at(static_cast<std::size_t>(reason)) += files;
}

void Skips::add(const Skips &other)
{
    std::ranges::transform(m_lines, other.m_lines, m_lines.begin(), std::plus {});
    std::ranges::transform(m_files, other.m_files, m_files.begin(), std::plus {});
}

std::string Skips::packed() const
{
    PackedWriter writer;
    std::ranges::for_each(m_lines, [&](std::size_t count) { writer.number(count); });
    std::ranges::for_each(m_files, [&](std::size_t count) { writer.number(count); });
    return writer.bytes();
}

Skips Skips::unpacked(std::string_view bytes)
{
    Skips skips;
    PackedReader reader(bytes);
    std::ranges::generate(skips.m_lines, [&] { return reader.number(); });
    std::ranges::generate(skips.m_files, [&] { return reader.number(); });
    return skips;
}

} // namespace usage
