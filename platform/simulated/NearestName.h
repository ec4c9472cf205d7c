#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulated {

/// @return the candidate that needs the fewest insertions, deletions and replacements to become the name, upper and lower
///         case being the same; the first of several, empty when there is none
std::string nearestName(std::string_view name, const std::vector<std::string>& candidates);

} // namespace simulated
