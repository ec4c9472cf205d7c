#pragma once

#include <string>
#include <string_view>

namespace nodectl {

/// Keeps the numbers of the three standard streams taken, so that no connection ever gets one of them.
void holdStandardStreams();

/// Thrown when nobody reads standard output any more, as behind `| head`: the run ends quietly.
struct OutputClosed {};

/// Writes a line to standard output at once. Throws OutputClosed, or Failure where the line cannot be written.
void print(std::string_view line);

/// Writes a line about the run to standard error.
void note(std::string_view line);

/// Whether people look at standard output in colour: it is a terminal, and NO_COLOR is not set.
bool outputHasColour();

} // namespace nodectl
