#pragma once

#include <optional>

#include "Options.h"

namespace nodectl {

/// Reads the command line. Empty where help was asked for and has been printed. Throws Failure (wrong usage).
std::optional<Options> readCommandLine(int argc, const char* const* argv);

} // namespace nodectl
