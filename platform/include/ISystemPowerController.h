#pragma once

#include "EReferenceSEC.h"
#include "IInterface.h"
#include "PlatformApi.h"
#include "ResultCodes.h"

#include <cstdint>
#include <string>

/// Output power regulation of one channel, powers in hundredths of a dBm; registered as "ISystemPowerController_1" and
/// "ISystemPowerController_2".
class PLATFORM_API ISystemPowerController : public IInterface {
public:
    static std::string interfaceName(int index) { return IInterface::interfaceName("ISystemPowerController", index); }

    /// Reads the spectrum efficiency class that the power limits are worked out for.
    virtual Result getReferenceSec(EReferenceSEC& referenceSec) = 0;

    /// @param threshold input power below which an alarm is due
    virtual Result setInputPowerThreshold(std::int32_t threshold) = 0;

    virtual Result getTransmitterOff(bool& off) = 0;

    /// @param reason may be null; not interpreted
    virtual Result setTransmitterOff(bool off, const void* reason) = 0;

    // The three settings as they were last requested, in the order in which notifyRequestedPowerSettings takes them.
    virtual Result getRequestedAtpcTarget(std::int32_t& atpcTarget) = 0;
    virtual Result getRequestedMinOutputPower(std::int32_t& minOutputPower) = 0;
    virtual Result getRequestedMaxOutputPower(std::int32_t& maxOutputPower) = 0;

    /// Puts a whole set of power settings into effect.
    /// @param atpcTarget input power that the far end is to have
    virtual Result notifyRequestedPowerSettings(bool off, std::int32_t atpcTarget, std::int32_t minOutputPower,
                                                std::int32_t maxOutputPower, std::int32_t spare0,
                                                std::int32_t spare1) = 0;
};
