#include "NearestName.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <limits>
#include <numeric>

namespace simulated {

namespace {

/// Longer names are cut before they are compared: a mistyped name is short, and the comparison grows with the length.
constexpr std::size_t comparedLength = 80;

bool sameLetter(char a, char b)
{
    return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
}

std::size_t editDistance(std::string_view from, std::string_view to)
{
    from = from.substr(0, comparedLength);
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < from.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (sameLetter(from[i], to[j]) ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

} // namespace

std::string nearestName(std::string_view name, const std::vector<std::string>& candidates)
{
    std::string nearest;
    std::size_t best = std::numeric_limits<std::size_t>::max();
    for (const std::string& candidate : candidates) {
        const std::size_t distance = editDistance(name, candidate);
        if (distance < best) {
            best = distance;
            nearest = candidate;
        }
    }
    return nearest;
}

} // namespace simulated
