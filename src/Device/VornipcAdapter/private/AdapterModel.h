#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>

#include "EModulationAndCodeType.h"
#include "EReferenceSEC.h"
#include "IAcmHandler.h"
#include "IFrequencyController.h"
#include "IHardwareConfigurationHandler.h"
#include "IOutputPowerCalculator.h"
#include "ISystemPowerController.h"
#include "InterfaceLookup.h"
#include "PerChannel.h"
#include "RadioChannel.h"
#include "ResultCodes.h"
#include "RfChannelPlan.h"
#include "Trace.h"

namespace kro::device::vornipc {

/// The node's numbering of modulations and of spectrum efficiency classes.
using ACM_T = std::int32_t;
using SEC_T = std::int32_t;

/// Model of the near end's radio channel configuration. The node gives it in pieces: the frame format, and frequencies
/// as step numbers that mean something only with the radio's channel plan. The model collects the pieces of each channel
/// and, once a channel is complete, gives the radio the whole configuration in one call, if it differs from the running
/// one.
///
/// May be called from any thread after `onModuleInit`; before it has succeeded, every operation but the conversions
/// returns false.
class AdapterModel {
public:
    /// @param numberOfChannels more than 2 counts as 2
    explicit AdapterModel(int numberOfChannels);

    /// Looks up the platform's interfaces; called once, before the other operations.
    Result onModuleInit();

    /// Takes a radio's channel plan; frequencies that are already set stay as they are.
    /// @return false where the unit has no such channel
    bool onRfChannelPlanReceived(RadioChannel ct, const RfChannelPlan& plan);

    /// Sets the frame format of a channel.
    /// @param radioChannelIndex 0 or 1
    /// @return false where there is no such channel, or the radio refuses the configuration
    bool onSetFrameFormatReq(int radioChannelIndex, int radioFrameId, ACM_T minAcm, ACM_T maxAcm, SEC_T sec);

    /// Sets the frequencies of a channel by their step numbers, which are not checked against the plan's limits.
    /// @param radioChannelIndex 0 or 1
    /// @return false where there is no such channel or plan, or the radio refuses the configuration
    bool onSetFrequency(int radioChannelIndex, int txStep, int rxStep);

    /// Tells the platform how much output power the far end has for each modulation, in dB.
    bool onSetFarEndPmaxCapability(RadioChannel ct, const std::map<EModulationAndCodeType, int>& pmaxDb);

    /// Values outside the node's numbering give 4QAM.
    EModulationAndCodeType convertACM(ACM_T acm) const;

    /// Values outside the node's numbering give no class.
    EReferenceSEC convertSEC(SEC_T sec) const;

private:
    /// What is asked for of one channel, and the interfaces that tell what runs.
    struct Channel {
        bool radioFrameIdConfigured = false;
        bool frequencyConfigured = false;
        bool channelPlanReceived = false;
        EModulationAndCodeType minModulation = modulationUndefined;
        EModulationAndCodeType maxModulation = modulationUndefined;
        std::uint32_t radioFrameId = 0;
        EReferenceSEC rsec{};
        std::uint32_t txFrequency = 0; ///< this and the following in the unit of the channel plan
        std::uint32_t rxFrequency = 0;
        std::uint32_t txStepSize = 1;
        std::uint32_t rxStepSize = 1;
        std::uint32_t txBaseFrequency = 0; ///< frequency of step 0
        std::uint32_t rxBaseFrequency = 0;

        PlatformInterface<IAcmHandler> acmHandler;
        PlatformInterface<ISystemPowerController> systemPowerController;
        PlatformInterface<IFrequencyController> frequencyController;
        PlatformInterface<IOutputPowerCalculator> outputPowerCalculator;
    };

    /// Gives the radio the channel's configuration if it is complete and not the running one. Called with the mutex held
    /// and a valid index.
    bool setRadioChannelNearEnd(int radioChannelIndex);

    bool hasChannel(int radioChannelIndex) const;

    static const Trace m_trace;
    static const std::array<EModulationAndCodeType, 31> modulationTable;
    static const std::array<EReferenceSEC, 10> rsecTable;

    std::int32_t m_numberOfChannels;

    /// Guards the channels; held across the platform calls of one configuration, so a platform must not wait there for a
    /// radio callback of its own.
    std::mutex m_mutex;
    PerChannel<Channel> m_channels;

    PlatformInterface<IHardwareConfigurationHandler> m_hardwareConfigurationHandler;
    std::atomic<bool> m_initialized = false; ///< every interface has been found
};

} // namespace kro::device::vornipc
