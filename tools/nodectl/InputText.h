#pragma once

#include <string>

namespace nodectl {

/// Text that an argument gives: the argument itself, the contents of FILE for "@FILE", standard input for "-". Throws
/// Failure (wrong usage) where it cannot be read or is longer than 1 MiB. `what` names it in the error text.
std::string inputText(const std::string& argument, const std::string& what);

} // namespace nodectl
