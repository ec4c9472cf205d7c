#pragma once

#include "EChannelSelector.h"
#include "ProtectionMessages.h"
#include "ResultCodes.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

/// The protection area. This radio drives no protection peer: every request is accepted and every query answered with a
/// fixed value, but for an input power threshold above the limit. Keeps nothing between messages.
///
/// Threads: the methods for messages run on the reader thread, `onModuleInit` on the framework's; the notifications may
/// be called from any thread.
class ProtectionHandler {
public:
    explicit ProtectionHandler(VornipcMessageHandler& messageHandler);

    /// Registers the receivers.
    Result onModuleInit();

    // Answered with the answer's initial values, that is 0.
    void onSetSwitchModeReq(SetSwitchModeReqIPC* request);
    void onSetActiveUnitReq(SetActiveUnitReqIPC* request);
    void onSetRevertiveTxReq(SetRevertiveTxReqIPC* request);
    void onSetRevertiveRxReq(SetRevertiveRxReqIPC* request);
    void onGetActiveRadioReq(GetActiveRadioReqIPC* request);
    void onGetWorkingRxReq(GetWorkingRxReqIPC* request);
    void onSetTaSwitchReq(SetTaSwitchReqIPC* request);
    void onSetActiveRadioReq(SetActiveRadioReqIPC* request);
    void onSetWorkingRxReq(SetWorkingRxReqIPC* request);
    void onResetTxSwOverErrReq(ResetTxSwOverErrReqIPC* request);
    void onProtectionModeReq(ProtectionModeReqIPC* request);
    void onGetActiveUnitReq(GetActiveUnitReqIPC* request);
    void onSetActiveRadioRemoteReq(SetActiveRadioRemoteReqIPC* request);
    void onGetTaSwitchReq(GetTaSwitchReqIPC* request);
    void onTxSwitchOverConfigurationReq(TxSwitchOverConfigurationReqIPC* request);

    /// Refuses a threshold above the limit; keeps none.
    void onSetRFInputPowerThresholdReq(SetRFInputPowerThresholdReqIPC* request);

    // Not answered.
    void onSetSpontSwNotReq(SetSpontSwNotReqIPC* message);
    void onCompanionMMUStatus(CompanionMMUStatusIPC* message);
    void onGetProtectionModeOperStatusReq(GetProtectionModeOperStatusReqIPC* message);

    // Tell the node of a change on a channel; nothing is sent for a channel other than 1 and 2.
    void notifyProtectionModeOperStatus(EChannelSelector channel, ProtectionMode_T mode);
    void notifyActiveRadioSw(EChannelSelector channel, ActTxRadio_T radio);
    void notifyWorkingRxSw(EChannelSelector channel, WorkingRx_T receiver);

private:
    template <class Response, class Request>
    void answer(const Request& request, const CallSite& site = CallSite::here());

    /// Sends a message about a channel with one value in it.
    template <class Message, class Shape, class Value>
    void notify(EChannelSelector channel, Value Shape::*field, Value value, const CallSite& site = CallSite::here());

    static const Trace m_trace;

    VornipcMessageHandler& m_messageHandler;
};

} // namespace kro::device::vornipc
