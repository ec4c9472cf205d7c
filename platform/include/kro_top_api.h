#pragma once

#include "EModulationAndCodeType.h"
#include "EReferenceSEC.h"
#include "PlatformApi.h"
#include "RadioChannel.h"
#include "TopApiResponse.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// The platform's configuration requests. Each call returns when the platform has done or refused the request; a
/// response with an error indicator above 0 is a refusal.
namespace kro_top_api {

/// Configures the near end of one radio channel as a whole: frame format, modulation range, reference class, frequencies.
struct PLATFORM_API CriSetRadioChannelNearEnd {
    /// Settings of other equipment types; a request that leaves them at their defaults does not touch them.
    struct Further {
        using MacAddress = std::array<std::uint8_t, 6>;

        bool xpicEnabled = false;
        bool mimoEnabled = false;
        bool headerCompressionEnabled = false;
        std::string nearEndName;
        std::string farEndName;
        MacAddress nearEndAddress{};
        MacAddress farEndAddress{};

        bool operator==(const Further&) const = default;
    };

    struct Command {
        RadioChannel radioChannel{};
        std::uint32_t radioFrameId = 0;
        EModulationAndCodeType minModulation{};
        EModulationAndCodeType maxModulation{};
        EReferenceSEC referenceSec{};
        std::uint32_t txFrequency = 0; ///< in the unit of the radio's channel plan
        std::uint32_t rxFrequency = 0; ///< in the unit of the radio's channel plan
        Further further{};
    };
};

struct PLATFORM_API ModulationPmaxPair {
    EModulationAndCodeType modulation{};
    std::int32_t maximumOutputPower = 0; ///< hundredths of a dB
};

/// Tells the near end how much output power the far end's radio can deliver for each modulation.
struct PLATFORM_API CriSetFarEndPmaxCapability {
    struct Command {
        RadioChannel radioChannel{};
        std::vector<ModulationPmaxPair> pmax;
    };
};

PLATFORM_API StandardResponse criSetRadioChannelNearEnd(const CriSetRadioChannelNearEnd::Command& command);
PLATFORM_API StandardResponse criSetFarEndPmaxCapability(const CriSetFarEndPmaxCapability::Command& command);

} // namespace kro_top_api
