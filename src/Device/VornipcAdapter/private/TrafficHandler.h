#pragma once

#include <cstdint>

#include "AdapterModel.h"
#include "IIfLoopDriver.h"
#include "IRadio.h"
#include "ISystemPowerController.h"
#include "ITrafHandler.h"
#include "InterfaceLookup.h"
#include "PerChannel.h"
#include "RadioChannel.h"
#include "ResultCodes.h"
#include "Trace.h"
#include "TrafficMessages.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

/// The traffic area: radio frequencies, transmitter and loops of each channel, and its traffic gate, which the state of
/// the node's queues and the IF loop decide together. A step of a request that fails never stops the steps after it.
///
/// Threads: the methods for messages run on the reader thread, and the two caches are touched there only; `onModuleInit`
/// on the framework's.
class TrafficHandler {
public:
    /// @param numberOfChannels more than 2 is logged and counts as 2
    TrafficHandler(std::uint8_t numberOfChannels, VornipcMessageHandler& messageHandler, AdapterModel& adapterModel);

    /// Registers the receivers, then looks up the platform's interfaces.
    Result onModuleInit();

    void onGetIfOperStatusReq(GetIfOperStatusReqIPC* request);
    void onSetIfAdminStatus(SetIfAdminStatusIPC* message);
    void onSetIfLoopStatusReq(SetIfLoopStatusReqIPC* request);
    void onGetRFTxOperStatusReq(GetRFTxOperStatusReqIPC* request);
    void onSetXfRFIfStatusReq(SetXfRFIfStatusReqIPC* request);
    void onSetMLMReq(SetMLMReqIPC* request);

    /// Traces an answer of this area that came from the node; nothing else happens.
    template <class Response>
    void printResponseMessage(Response* response);

    /// The last queue status of a channel; 1, enabled, at first.
    void updateLocalMlmQueueStatus(RadioChannel ct, MLMQueueStatus_T status);
    void getLocalMlmQueueStatus(RadioChannel ct, MLMQueueStatus_T& status) const;

    /// Opens a channel for traffic, or closes it while its IF loop is on or its queues are disabled.
    /// @return false where the loop cannot be read or the gate cannot be set
    bool handleMlmChanelStatus(RadioChannel ct) const;

private:
    /// What the platform offers for one radio channel, looked up once and borrowed, and what was last seen of it.
    struct Channel {
        PlatformInterface<IIfLoopDriver> ifLoopDriver;
        PlatformInterface<IRadio> radio;
        PlatformInterface<ISystemPowerController> systemPowerController;
        std::uint32_t rfTxOperStatus = 0; ///< as last answered
        MLMQueueStatus_T mlmQueueStatus = queueEnabledC;
    };

    bool setRadioSettings(RadioChannel ct, const RfIfParametersExt& settings, const CallSite& site = CallSite::here());
    bool setRfLoop(RadioChannel ct, std::uint32_t loop, const CallSite& site) const;
    bool setTransmitter(RadioChannel ct, std::uint32_t adminStatus, const CallSite& site) const;

    static const Trace m_trace;

    std::uint8_t m_numberOfChannels;
    VornipcMessageHandler& m_messageHandler;
    AdapterModel& m_adapterModel;
    PlatformInterface<ITrafHandler> m_trafficHandler;
    PerChannel<Channel> m_channels;
};

} // namespace kro::device::vornipc
