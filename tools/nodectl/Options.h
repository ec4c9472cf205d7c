#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "MessageCatalogue.h"
#include "UnitAddress.h"

namespace nodectl {

/// What the command line says. A command looks at its own part.
struct Options {
    void (*command)(const Options& options) = nullptr;

    UnitAddress unit;
    bool json = false;

    std::optional<MessageArea> area; ///< list
    std::string messageName;         ///< describe, send, encode

    // A message to be made.
    std::vector<std::pair<std::string, std::uint32_t>> header; ///< header fields that were given, by field name
    std::optional<std::string> body;                           ///< as given: JSON, "@FILE" or "-"

    std::chrono::milliseconds wait{2000}; ///< for one answer, or for the message that ends monitor

    bool brief = false; ///< send, monitor: a line a message, for people
    std::string until;  ///< monitor: name of the message that ends it; empty for none

    // decode
    MessageDirection from = MessageDirection::out; ///< the way the buffer travels, as the radio sees it
    std::uint32_t device = 0;
    std::string hex;

    std::string shell; ///< completion

    // bringup
    std::uint32_t slot = 1;
    std::uint32_t sender = 1;
    std::uint32_t capabilityEH = 0x26; ///< radio detected (0x02), log lines (0x04), BPM commands (0x20)
    bool verbose = false;
};

} // namespace nodectl
