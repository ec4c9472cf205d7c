#pragma once

#include "Options.h"

namespace nodectl {

// One function a command. A command that returns has done what was asked; otherwise it throws Failure.

void list(const Options& options);
void describe(const Options& options);
void encode(const Options& options);
void decode(const Options& options);
void send(const Options& options);
void monitor(const Options& options);
void bringUp(const Options& options);

} // namespace nodectl
