#pragma once

#include "PlatformApi.h"
#include "ResultCodes.h"

#include <cstdint>
#include <string>

/// Test interface that switches a channel's modulation off, so that its radio sends a bare carrier. Not in the broker:
/// the framework hands it to the module when it creates it, and owns it.
class PLATFORM_API ITiDisableModulation {
public:
    struct Request {
        std::uint32_t channel = 0; ///< 1 or 2
        std::uint8_t byte1 = 1;    ///< always 1
        std::uint8_t disable = 0;  ///< 1 for a bare carrier, 0 for modulation as usual
        std::uint8_t byte2 = 1;    ///< always 1
    };

    /// Passed in zeroed.
    struct Reply {
        std::uint32_t word = 0;
        std::uint8_t byte = 0;
    };

    struct Outcome {
        Result code = resultOk; ///< a failure from 0x8000
        std::string text;
    };

    virtual ~ITiDisableModulation() = default;

    virtual Outcome execute(const Request& request, Reply& reply) = 0;

protected:
    ITiDisableModulation() = default;
    ITiDisableModulation(const ITiDisableModulation&) = default;
    ITiDisableModulation& operator=(const ITiDisableModulation&) = default;
};
