#include "ProtectionHandler.h"

#include "Answering.h"
#include "PowerSettings.h"
#include "SetResult.h"

namespace kro::device::vornipc {

const Trace ProtectionHandler::m_trace{"KRO.VORNIPC.PR"};

ProtectionHandler::ProtectionHandler(VornipcMessageHandler& messageHandler) : m_messageHandler(messageHandler) {}

Result ProtectionHandler::onModuleInit()
{
    // One method a line.
    // clang-format off
    m_messageHandler.registerReceivers(*this,
        &ProtectionHandler::onSetSwitchModeReq,
        &ProtectionHandler::onSetActiveUnitReq,
        &ProtectionHandler::onSetRevertiveTxReq,
        &ProtectionHandler::onSetRevertiveRxReq,
        &ProtectionHandler::onGetActiveRadioReq,
        &ProtectionHandler::onGetWorkingRxReq,
        &ProtectionHandler::onSetTaSwitchReq,
        &ProtectionHandler::onSetActiveRadioReq,
        &ProtectionHandler::onSetWorkingRxReq,
        &ProtectionHandler::onSetSpontSwNotReq,
        &ProtectionHandler::onResetTxSwOverErrReq,
        &ProtectionHandler::onProtectionModeReq,
        &ProtectionHandler::onSetRFInputPowerThresholdReq,
        &ProtectionHandler::onCompanionMMUStatus,
        &ProtectionHandler::onGetActiveUnitReq,
        &ProtectionHandler::onSetActiveRadioRemoteReq,
        &ProtectionHandler::onGetTaSwitchReq,
        &ProtectionHandler::onTxSwitchOverConfigurationReq,
        &ProtectionHandler::onGetProtectionModeOperStatusReq);
    // clang-format on
    return resultOk;
}

template <class Response, class Request>
void ProtectionHandler::answer(const Request& request, const CallSite& site)
{
    traceMethodRequest(m_trace, request, site);
    answerFixed<Response>(m_messageHandler, m_trace, request, site);
}

void ProtectionHandler::onSetSwitchModeReq(SetSwitchModeReqIPC* request)
{
    answer<SetSwitchModeResIPC>(*request);
}

void ProtectionHandler::onSetActiveUnitReq(SetActiveUnitReqIPC* request)
{
    answer<SetActiveUnitResIPC>(*request);
}

void ProtectionHandler::onSetRevertiveTxReq(SetRevertiveTxReqIPC* request)
{
    answer<SetRevertiveTxResIPC>(*request);
}

void ProtectionHandler::onSetRevertiveRxReq(SetRevertiveRxReqIPC* request)
{
    answer<SetRevertiveRxResIPC>(*request);
}

void ProtectionHandler::onGetActiveRadioReq(GetActiveRadioReqIPC* request)
{
    answer<GetActiveRadioResIPC>(*request);
}

void ProtectionHandler::onGetWorkingRxReq(GetWorkingRxReqIPC* request)
{
    answer<GetWorkingRxResIPC>(*request);
}

void ProtectionHandler::onSetTaSwitchReq(SetTaSwitchReqIPC* request)
{
    answer<SetTaSwitchResIPC>(*request);
}

void ProtectionHandler::onSetActiveRadioReq(SetActiveRadioReqIPC* request)
{
    answer<SetActiveRadioResIPC>(*request);
}

void ProtectionHandler::onSetWorkingRxReq(SetWorkingRxReqIPC* request)
{
    answer<SetWorkingRxResIPC>(*request);
}

void ProtectionHandler::onResetTxSwOverErrReq(ResetTxSwOverErrReqIPC* request)
{
    answer<ResetTxSwOverErrResIPC>(*request);
}

void ProtectionHandler::onProtectionModeReq(ProtectionModeReqIPC* request)
{
    answer<ProtectionModeResIPC>(*request);
}

void ProtectionHandler::onGetActiveUnitReq(GetActiveUnitReqIPC* request)
{
    answer<GetActiveUnitResIPC>(*request);
}

void ProtectionHandler::onSetActiveRadioRemoteReq(SetActiveRadioRemoteReqIPC* request)
{
    answer<SetActiveRadioRemoteResIPC>(*request);
}

void ProtectionHandler::onGetTaSwitchReq(GetTaSwitchReqIPC* request)
{
    answer<GetTaSwitchResIPC>(*request);
}

void ProtectionHandler::onTxSwitchOverConfigurationReq(TxSwitchOverConfigurationReqIPC* request)
{
    answer<TxSwitchOverConfigurationResIPC>(*request);
}

void ProtectionHandler::onSetRFInputPowerThresholdReq(SetRFInputPowerThresholdReqIPC* request)
{
    traceMethodRequest(m_trace, *request);
    auto response = responseTo<SetRFInputPowerThresholdResIPC>(*request);
    response.eSetRes = acceptsInputPowerThreshold(m_trace, request->iRFInputPowerThreshold) ? setDone : setFailed;
    respond(m_messageHandler, m_trace, response);
}

void ProtectionHandler::onSetSpontSwNotReq(SetSpontSwNotReqIPC* message)
{
    traceMethodRequest(m_trace, *message);
    m_trace.at(TraceLevel::Dump) << "No response";
}

void ProtectionHandler::onCompanionMMUStatus(CompanionMMUStatusIPC* message)
{
    traceMethodRequest(m_trace, *message);
    m_trace.at(TraceLevel::Dump) << "No response";
}

void ProtectionHandler::onGetProtectionModeOperStatusReq(GetProtectionModeOperStatusReqIPC* message)
{
    traceMethodRequest(m_trace, *message);
    m_trace.at(TraceLevel::Dump) << "No response??";
}

template <class Message, class Shape, class Value>
void ProtectionHandler::notify(EChannelSelector channel, Value Shape::*field, Value value, const CallSite& site)
{
    m_trace.at(TraceLevel::Call, site) << site.method << "() called";
    if (!channelInRange(m_trace, channel, site)) {
        return;
    }
    auto message = spontaneousWithoutSlot<Message>(m_messageHandler, channel);
    message.*field = value;
    sendNotification(m_messageHandler, m_trace, message, site);
}

void ProtectionHandler::notifyProtectionModeOperStatus(EChannelSelector channel, ProtectionMode_T mode)
{
    notify<NotifyProtectionModeOperStatusIPC>(channel, &NotifyProtectionModeOperStatusIPC::eProtectionMode, mode);
}

void ProtectionHandler::notifyActiveRadioSw(EChannelSelector channel, ActTxRadio_T radio)
{
    notify<NotifyActiveRadioSwIPC>(channel, &NotifyActiveRadioSwIPC::eActTxRadio, radio);
}

void ProtectionHandler::notifyWorkingRxSw(EChannelSelector channel, WorkingRx_T receiver)
{
    notify<NotifyWorkingRxSwIPC>(channel, &NotifyWorkingRxSwIPC::eWorkingRx, receiver);
}

} // namespace kro::device::vornipc
