#pragma once

#include "IInterface.h"
#include "LimitedPowerList.h"
#include "PlatformApi.h"
#include "ResultCodes.h"

#include <cstdint>
#include <string>

/// Output power that one channel's radio can deliver; registered as "IOutputPowerCalculator_1" and
/// "IOutputPowerCalculator_2".
class PLATFORM_API IOutputPowerCalculator : public IInterface {
public:
    static std::string interfaceName(int index) { return IInterface::interfaceName("IOutputPowerCalculator", index); }

    /// Reads the highest output power for each modulation of the channel's frame format.
    /// @param calculation           counts how often the platform has worked the list out
    /// @param highestModulationBit  bit of the highest constellation allowed: 0x4 for 4QAM up to 0x1000 for 4096QAM
    /// @param powers                hundredths of a dBm
    /// @param minOutputPower        hundredths of a dBm
    /// @return resultExternalInterfaceMissing while no frame format has been set
    virtual Result getLimitedPower(std::uint32_t& calculation, std::uint32_t& highestModulationBit,
                                   LimitedPowerList& powers, std::int32_t& minOutputPower) = 0;

    /// @param reduction taken off the highest output power of a high-power radio, hundredths of a dB; 0 for none
    virtual Result setHighPowerReduction(std::int32_t reduction) = 0;
};
