#include "DevPsRlpsHandler.h"

#include "Answering.h"

namespace kro::device::vornipc {

namespace {

/// The continuous-wave group's only attribute, its switch. Fixed by the node protocol.
constexpr std::uint32_t continuousWaveSwitch = 1;

} // namespace

const Trace DevPsRlpsHandler::m_trace{"KRO.VORNIPC.PS.RLPS"};

DevPsRlpsHandler::DevPsRlpsHandler(std::uint8_t numberOfChannels, VornipcMessageHandler& messageHandler,
                                   ITiDisableModulation& disableModulation)
    : m_numberOfChannels(servedChannels(m_trace, numberOfChannels, CallSite::here())),
      m_messageHandler(messageHandler),
      m_disableModulation(disableModulation)
{
}

Result DevPsRlpsHandler::onModuleInit()
{
    m_messageHandler.registerReceivers(*this, &DevPsRlpsHandler::onHandleXfRlWanIfEntryGroupReq,
                                       &DevPsRlpsHandler::onHandleContinuousWaveGroupReq);
    return resultOk;
}

void DevPsRlpsHandler::onHandleXfRlWanIfEntryGroupReq(HandleXfRlWanIfEntryGroupReqIPC* message)
{
    traceMethodRequest(m_trace, *message);
}

void DevPsRlpsHandler::onHandleContinuousWaveGroupReq(HandleContinuousWaveGroupReqIPC* request)
{
    m_trace.at(TraceLevel::Call) << "onHandleContinuousWaveGroupReq() called";
    auto response = responseTo<HandleContinuousWaveGroupResIPC>(*request);
    response.attrib = continuousWaveSwitch;
    bool executed = true;
    if (isValidSet(*request)) {
        response.psStatus = PsStatus::done;
        response.status = PsStatus::done;
        response.action = PsAction::setDone;
        response.ct = request->ct;
        response.enable = request->enable;
        executed = setContinuousWave(*request);
    } else {
        response.psStatus = PsStatus::failed;
        response.status = PsStatus::failed;
        response.action = PsAction::none;
    }
    if (executed) { // what the platform refuses is answered just so, but without these lines
        traceReceived(m_trace, *request);
        m_trace.at(TraceLevel::Dump) << "Respond with: " << response;
    }
    m_messageHandler.send(response, VornipcDeviceId::ps);
}

bool DevPsRlpsHandler::isValidSet(const HandleContinuousWaveGroupReqIPC& request, const CallSite& site)
{
    if (request.action != PsAction::set) {
        m_trace.at(TraceLevel::Error, site) << "Called with Action value of " << static_cast<unsigned>(request.action);
        return false;
    }
    if (request.attrib != continuousWaveSwitch) {
        m_trace.at(TraceLevel::Error, site) << "Called with invalid attribute";
        return false;
    }
    if (!isChannel(channelOf(request))) {
        m_trace.at(TraceLevel::Error, site) << site.method << "(): Incorrect ct number " << request.ct << " ()";
        return false;
    }
    return true;
}

bool DevPsRlpsHandler::setContinuousWave(const HandleContinuousWaveGroupReqIPC& request, const CallSite& site)
{
    const bool enable = request.enable != 0;
    m_trace.at(TraceLevel::Call, site) << "Called with ActionId::Set";
    m_trace.at(TraceLevel::Call, site) << (enable ? "Enabling" : "Disabling") << " continuous-wave for ct "
                                       << request.ct << " in slot " << unsigned{request.slot};
    ITiDisableModulation::Request command;
    command.channel = request.ct;
    command.disable = enable ? 1 : 0;
    ITiDisableModulation::Reply reply;
    const ITiDisableModulation::Outcome outcome = m_disableModulation.execute(command, reply);
    if (isFailure(outcome.code)) {
        m_trace.at(TraceLevel::Error, site) << "tiDisableModulation execute failed: " << outcome.text;
        return false;
    }
    return true;
}

} // namespace kro::device::vornipc
