#pragma once

#include "Options.h"

namespace nodectl {

/// Prints the script that makes a shell complete nodectl's command line. The script asks `nodectl complete WORD...` what
/// may stand in place of the last word, so it knows every message without being told.
void completion(const Options& options);

} // namespace nodectl
