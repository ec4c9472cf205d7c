#include "Suggestion.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <numeric>

namespace nodectl {

namespace {

constexpr std::size_t longestWord = 80;

char lower(char character)
{
    return static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
}

/// How much has to be changed to make the right name of the mistyped one. A missing letter costs less than a wrong one,
/// so that an abbreviation finds its name.
std::size_t distance(std::string_view mistyped, std::string_view right)
{
    constexpr std::size_t missing = 1;
    constexpr std::size_t surplus = 2;
    constexpr std::size_t wrong = 2;

    std::vector<std::size_t> row(right.size() + 1);
    std::iota(row.begin(), row.end(), 0);
    for (const char typed : mistyped) {
        std::size_t diagonal = row[0];
        row[0] += surplus;
        for (std::size_t i = 0; i < right.size(); ++i) {
            const bool equal = lower(typed) == lower(right[i]);
            const std::size_t replaced = diagonal + (equal ? 0 : wrong);
            diagonal = row[i + 1];
            row[i + 1] = std::min({replaced, row[i + 1] + surplus, row[i] + missing});
        }
    }
    return row.back();
}

} // namespace

std::string didYouMean(std::string_view mistyped, const std::vector<std::string>& rightNames)
{
    const std::string_view word = mistyped.substr(0, longestWord);
    const auto nearest =
        std::min_element(rightNames.begin(), rightNames.end(), [word](const auto& left, const auto& right) {
            return distance(word, left) < distance(word, right);
        });
    return nearest != rightNames.end() ? fmt::format("; did you mean '{}'?", *nearest) : std::string();
}

std::string inQuotes(std::string_view word)
{
    std::string text = "'";
    for (const char character : word.substr(0, longestWord)) {
        const auto byte = static_cast<unsigned char>(character);
        text += std::isprint(byte) != 0 ? std::string(1, character) : fmt::format("\\x{:02x}", byte);
    }
    return text + (word.size() > longestWord ? "...'" : "'");
}

} // namespace nodectl
