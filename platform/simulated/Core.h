#pragma once

#include "CallLog.h"
#include "CallbackSlot.h"
#include "Operations.h"
#include "PciDriver.h"
#include "PlatformState.h"
#include "PlatformThreads.h"
#include "SimulatedInterfaces.h"
#include "StopSignal.h"

#include "IAlarmSignalHandlerCallback.h"
#include "IRadioCallback.h"
#include "IRlbspKroApi.h"
#include "ITiDisableModulation.h"
#include "LumTrace.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace simulated {

/// What the simulated interfaces and the host's side of the platform share.
struct Core {
    PlatformState state{2};
    CallLog calls;
    StopSignal stopping;
    PciDriver driver;
    PlatformThreads threads;

    CallbackSlot<IAlarmSignalHandlerCallback> faultCallback;
    CallbackSlot<IRlbspKroApi::BpmCallback> bpmCallback;
    std::unique_ptr<ITiDisableModulation> disableModulation;

    Core() : disableModulation{makeDisableModulation(*this)} {}

    /// Back to a fresh unit that runs. Only while no module is alive.
    void reset(unsigned channels);

    Operations operations(std::string interface, std::int32_t channel = 0)
    {
        return {state, calls, stopping, std::move(interface), channel};
    }

    /// @return the slot of a channel's radio callback, made where there is none yet; channels are whatever the module
    ///         registers for
    CallbackSlot<IRadioCallback>& radioCallback(std::int32_t channel);

    /// @return null when the module never registered for the channel
    CallbackSlot<IRadioCallback>* findRadioCallback(std::int32_t channel);

    /// Sets the channel's `radio.up`, where the unit has the channel.
    void setRadioUp(std::int32_t channel, bool up);

    /// Takes the radio down on a platform thread, and up again a second later.
    void restartRadio(std::int32_t channel);

    /// Replaces what the broker knows.
    void setInterfaces(InterfacesByName interfaces);
    std::shared_ptr<IInterface> findInterface(const std::string& name);

private:
    std::mutex m_mutex; ///< guards the following two; nothing is called under it
    std::map<std::int32_t, CallbackSlot<IRadioCallback>> m_radioCallbacks;
    InterfacesByName m_interfaces;
};

/// The one of the process.
Core& core();

/// The platform's own trace lines, tag "PLATFORM".
const LumTrace& platformTrace();

} // namespace simulated
