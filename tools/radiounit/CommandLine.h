#pragma once

#include <filesystem>
#include <optional>

#include "HostPort.h"

// Builds without the HTTP library leave the control interface out.
#ifndef VORNIPC_WITH_CONTROL
#define VORNIPC_WITH_CONTROL 1
#endif

namespace radiounit {

/// What the user asked for, checked.
struct Options {
    unsigned channels = 2;
    unsigned char moduleChannels = 2; ///< the channel count given to the module, which may lie
    std::optional<HostPort> link;
    std::optional<HostPort> control;
    bool allowRemote = false;
    std::filesystem::path module;
    std::optional<std::filesystem::path> state;
    std::optional<std::filesystem::path> readyFile;
    int traceLevel = 3;
};

/// @return nothing where the help text was asked for and has been printed
/// @throws UsageError
std::optional<Options> parseCommandLine(int argc, const char* const* argv);

} // namespace radiounit
