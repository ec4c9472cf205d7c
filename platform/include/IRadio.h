#pragma once

#include "IInterface.h"
#include "IRadioCallback.h"
#include "PlatformApi.h"
#include "RadioChannel.h"
#include "RadioInventory.h"
#include "ResultCodes.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// Radio unit (RAU) of one channel; registered as "IRadio_1" and "IRadio_2". Any thread may call.
class PLATFORM_API IRadio : public IInterface {
public:
    static std::string interfaceName(int index) { return IInterface::interfaceName("IRadio", index); }

    /// Capability words that a radio exchanges with the node.
    using CompatibilityCodes = std::array<std::uint32_t, 12>;

    /// @param callback called from now on for this channel; null withdraws the one before and returns when no call of it
    ///                 is in flight
    virtual void registerCallback(RadioChannel channel, IRadioCallback* callback) = 0;

    virtual bool isRadioUp() = 0;

    virtual Result getInventory(RadioInventory& inventory) = 0;
    virtual Result getCompatibilityCodes(CompatibilityCodes& codes) = 0;

    /// @param subBands replaced by the indexes of the sub-bands that the radio supports
    virtual Result getSupportedSubBands(std::vector<std::uint8_t>& subBands) = 0;

    /// Moves the radio to another of its supported sub-bands.
    virtual Result selectSubBand(std::uint8_t subBand) = 0;

    /// @param temperature degrees Celsius
    virtual Result getTemperature(std::int8_t& temperature) = 0;

    virtual Result setDefaultConfiguration() = 0;

    /// Starts the radio anew; it goes down and comes up again after this call has returned, with the callbacks.
    /// @param mode 0 for an ordinary restart
    virtual Result restart(std::uint32_t mode) = 0;

    /// Reads output power in whole dBm and input power in tenths of a dBm.
    virtual Result getCurrentRfPower(std::int32_t& output, std::int32_t& input) = 0;

    /// @return non-zero while the transmitter is on
    virtual int getTransmitterState() = 0;

    /// @return non-zero while the RF loop is on
    virtual int getRfLoopState() = 0;

    virtual Result setRfLoop(bool on) = 0;

    /// Takes the radio into or out of use without restarting it.
    virtual void setActive(bool active) = 0;
};
