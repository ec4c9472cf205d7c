#include "Answering.h"
#include "EquipmentHandler.h"

// Requests of the equipment area that have no counterpart on this radio. Those that want an answer get one with all
// result fields 0; nothing is passed to the platform.

namespace kro::device::vornipc {

template <WireMessage Response, WireMessage Request>
void EquipmentHandler::answerStubbed(const Request& request, const char* stubbed, const CallSite& site)
{
    traceRequest(m_trace, request, site);
    m_trace.at(TraceLevel::Call, site) << stubbed;
    answerFixed<Response>(m_messageHandler, m_trace, request, site);
}

void EquipmentHandler::onSetSDCAdminStatusReq(SetSDCAdminStatusReqIPC* request)
{
    answerStubbed<SetSDCAdminStatusResIPC>(*request, "----- Stubbed SetSDCAdminStatusReqIPC response");
}

void EquipmentHandler::onGetSDCOperStatusReq(GetSDCOperStatusReqIPC* request)
{
    answerStubbed<GetSDCOperStatusResIPC>(*request, "----- Stubbed GetSDCOperStatusReqIPC response");
}

void EquipmentHandler::onDadeControlReq(DadeControlReqIPC* request)
{
    answerStubbed<DadeControlResIPC>(*request, "----- Stubbed DadeControlReqIPC response");
}

void EquipmentHandler::onGetDadeStatusReq(GetDadeStatusReqIPC* request)
{
    answerStubbed<GetDadeStatusResIPC>(*request, "----- Stubbed GetDadeStatusReqIPC response");
}

void EquipmentHandler::onSetSDCPathReq(SetSDCPathReqIPC* request)
{
    answerStubbed<SetSDCPathResIPC>(*request, "----- Stubbed SetSDCPathReqIPC response");
}

void EquipmentHandler::onGetSDCCurrentDataReq(GetSDCCurrentDataReqIPC* request)
{
    answerStubbed<GetSDCCurrentDataResIPC>(*request, "----- Stubbed GetSDCCurrentDataReqIPC response");
}

void EquipmentHandler::onGetSDCActualPathReq(GetSDCActualPathReqIPC* request)
{
    answerStubbed<GetSDCActualPathResIPC>(*request, "----- Stubbed GetSDCActualPathReqIPC response");
}

void EquipmentHandler::onSetCarrierTermPreambleReq(SetCarrierTermPreambleReqIPC* request)
{
    answerStubbed<SetCarrierTermPreambleResIPC>(*request, "----- Stubbed SetCarrierTermPreambleResIPC response");
}

void EquipmentHandler::onResetInsufficientPowerResourcesErrorReq(ResetInsufficientPowerResourcesErrorReqIPC* request)
{
    traceRequest(m_trace, *request);
    m_trace.at(TraceLevel::Call) << "----- Stubbed ResetInsufficientPowerResourcesErrorResIPC response";
    m_trace.at(TraceLevel::Dump) << "Value received is: " << request->param;
    auto response = responseTo<ResetInsufficientPowerResourcesErrorResIPC>(*request);
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::onResetBERCounters(ResetBERCountersIPC* /*message*/)
{
    traceCalled<ResetBERCountersIPC>(m_trace);
    m_trace.at(TraceLevel::Call) << "----- Stubbed ResetBERCountersIPC";
}

void EquipmentHandler::onNotifyCarrierStatus(NotifyCarrierStatusIPC* message)
{
    traceRequest(m_trace, *message);
    m_trace.at(TraceLevel::Call) << "----- NotifyCarrierStatusIPC stubbed";
    const auto& status = message->carrierStatus;
    m_trace.at(TraceLevel::Call) << "carrierAction: " << status.carrierAction << ", compSlot: " << status.compSlot
                                 << ", compCt: " << status.compCt << ", spare1: " << status.spare1
                                 << ", spare2: " << status.spare2;
}

void EquipmentHandler::onNotifyInitRAUStateProtc(NotifyInitRAUStateProtcIPC* message)
{
    traceRequest(m_trace, *message);
    m_trace.at(TraceLevel::Call) << "----- NotifyInitRAUStateProtcIPC stubbed";
}

} // namespace kro::device::vornipc
