#pragma once

#include <string>
#include <string_view>

namespace nodectl {

/// Lower-case hexadecimal digits without blanks.
std::string toHex(std::string_view bytes);

/// The bytes that a hexadecimal text stands for. White space may stand anywhere; the case of the digits does not matter.
/// Throws Failure (wrong usage) that names the first character which is no digit, or the odd number of digits.
std::string fromHex(std::string_view text);

} // namespace nodectl
