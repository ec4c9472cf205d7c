#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace nodectl {

/// The right name nearest to a mistyped one, as the end of an error text: "; did you mean 'send'?". Upper and lower case
/// count as equal. Empty where there are no right names.
std::string didYouMean(std::string_view mistyped, const std::vector<std::string>& rightNames);

/// A word of the user's for an error text: in single quotes, shortened where it is very long, and without characters that
/// a terminal would act on.
std::string inQuotes(std::string_view word);

} // namespace nodectl
