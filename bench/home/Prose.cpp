#include "home/Prose.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::size_t poolSize = std::size_t {12} << 20U;
constexpr std::uint64_t poolSeed = 7;

constexpr std::array<std::string_view, 16> words {"const", "auto", "the", "return", "value",
    "request", "file", "should", "{", "}", "==", "für", "test", "result", "because", "→"};
constexpr std::array<std::string_view, 6> ends {
    R"(\n)", R"(\n)", R"(\n    )", R"(;\n\t)", R"(: \"quoted\",\n)", R"(C:\\folder\\file.txt\n)"};

template <std::size_t count>
std::string_view pick(Dice &dice, const std::array<std::string_view, count> &list)
{
    return list.at(dice.whole(0, count - 1));
}

} // namespace

Prose::Prose()
{
    Dice dice(poolSeed);
    while (m_text.size() < poolSize) {
        m_rows.push_back(m_text.size());
        for (std::uint64_t word = dice.whole(0, 14); word > 0; --word) {
            m_text.append(pick(dice, words)).append(" ");
        }
        m_text.append(pick(dice, ends));
    }
    constexpr std::string_view letters =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    m_encoded.resize(poolSize);
    std::generate(m_encoded.begin(), m_encoded.end(),
        [&dice, letters] { return letters[dice.whole(0, letters.size() - 1)]; });
}

std::string_view Prose::text(Dice &dice, std::size_t bytes) const
{
    const std::size_t most = std::min(bytes, poolSize / 2);
    const std::size_t begin = startOfRowFrom(dice.whole(0, poolSize / 2 - 1));
    // Whole rows, so that neither an escape nor a letter is cut.
    return std::string_view(m_text).substr(begin, startOfRowFrom(begin + most) - begin);
}

std::string_view Prose::encoded(Dice &dice, std::size_t bytes) const
{
    const std::size_t most = std::min(bytes, poolSize / 2);
    return std::string_view(m_encoded).substr(dice.whole(0, poolSize / 2 - 1), most);
}

std::size_t Prose::startOfRowFrom(std::size_t place) const
{
    const auto row = std::lower_bound(m_rows.begin(), m_rows.end(), place);
    return row == m_rows.end() ? m_text.size() : *row;
}
