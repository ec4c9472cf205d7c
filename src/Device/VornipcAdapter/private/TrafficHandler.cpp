#include "TrafficHandler.h"

#include <algorithm>
#include <array>
#include <optional>

#include "Answering.h"
#include "PowerSettings.h"
#include "SetResult.h"

namespace kro::device::vornipc {

namespace {

/// Values of the node protocol.
constexpr std::uint32_t ifOperStatusUp = 1;
constexpr std::array<std::uint32_t, 3> knownPortTypes{1, 2, 24};
constexpr std::uint32_t loopOn = 2;
constexpr std::uint32_t loopOff = 3;
constexpr std::uint32_t adminStatusOn = 2;
constexpr std::uint32_t adminStatusOff = 3;
constexpr std::uint32_t operStatusOff = 2;
constexpr std::uint32_t operStatusOn = 3;
constexpr std::int32_t stepAbsent = 0;

/// The radio's results count as signed in this area: codes with the top bit set are no failures.
constexpr bool isSignedFailure(Result result)
{
    return static_cast<std::int32_t>(result) >= static_cast<std::int32_t>(resultFailed);
}

} // namespace

const Trace TrafficHandler::m_trace{"KRO.VORNIPC.TH"};

TrafficHandler::TrafficHandler(std::uint8_t numberOfChannels, VornipcMessageHandler& messageHandler,
                               AdapterModel& adapterModel)
    : m_numberOfChannels(servedChannels(m_trace, numberOfChannels, CallSite::here())),
      m_messageHandler(messageHandler),
      m_adapterModel(adapterModel)
{
}

Result TrafficHandler::onModuleInit()
{
    // One method a line.
    // clang-format off
    m_messageHandler.registerReceivers(*this,
        &TrafficHandler::onGetIfOperStatusReq,
        &TrafficHandler::onSetIfAdminStatus,
        &TrafficHandler::onSetIfLoopStatusReq,
        &TrafficHandler::onGetRFTxOperStatusReq,
        &TrafficHandler::onSetXfRFIfStatusReq,
        &TrafficHandler::onSetMLMReq,
        &TrafficHandler::printResponseMessage<GetIfOperStatusResIPC>,
        &TrafficHandler::printResponseMessage<SetIfLoopStatusResIPC>,
        &TrafficHandler::printResponseMessage<GetRFTxOperStatusResIPC>,
        &TrafficHandler::printResponseMessage<SetXfRFIfStatusResIPC>,
        &TrafficHandler::printResponseMessage<SetMLMResIPC>);
    // clang-format on

    const InterfaceLookup lookup{m_trace, "onModuleInit(): Error getting interface to "};
    for (const RadioChannel ct : getRadioChannelIds(m_numberOfChannels)) {
        Channel& channel = m_channels[ct];
        if (!lookup(ct, channel.ifLoopDriver, channel.radio, channel.systemPowerController)) {
            return resultFailed;
        }
    }
    const InterfaceLookup lookupOfUnit{m_trace, "onModuleInit(): failed to get interface to"};
    return lookupOfUnit(m_trafficHandler) ? resultOk : resultFailed;
}

template <class Response>
void TrafficHandler::printResponseMessage(Response* response)
{
    m_trace.at(TraceLevel::Call) << "Sniff response: " << *response;
}

void TrafficHandler::onGetIfOperStatusReq(GetIfOperStatusReqIPC* request)
{
    traceMethodCalled<GetIfOperStatusReqIPC>(m_trace);
    m_trace.at(TraceLevel::Call) << "----- Stubbed GetIfOperStatusReqIPC response";
    auto response = responseTo<GetIfOperStatusResIPC>(*request);
    response.ePortType = request->ePortType;
    if (std::find(knownPortTypes.begin(), knownPortTypes.end(), request->ePortType) != knownPortTypes.end()) {
        response.eIfOperStatus = ifOperStatusUp;
    } else {
        m_trace.at(TraceLevel::Error) << "Unknown port type: " << request->ePortType;
    }
    respond(m_messageHandler, m_trace, *request, response);
}

void TrafficHandler::onSetIfAdminStatus(SetIfAdminStatusIPC* message)
{
    traceMethodCalled<SetIfAdminStatusIPC>(m_trace);
    m_trace.at(TraceLevel::Call) << "----- SetIfAdminStatusIPC, TH terminate without action";
    traceReceived(m_trace, *message);
}

void TrafficHandler::onSetIfLoopStatusReq(SetIfLoopStatusReqIPC* request)
{
    traceMethodCalled<SetIfLoopStatusReqIPC>(m_trace);
    auto response = responseTo<SetIfLoopStatusResIPC>(*request);
    response.eSetRes = setFailed;
    const RadioChannel ct = channelOf(*request);
    if (isChannel(ct) && (request->eLoop == loopOn || request->eLoop == loopOff)) {
        const auto& driver = m_channels[ct].ifLoopDriver;
        if (available(m_trace, driver, ct) && driver->setIfLoop(request->eLoop == loopOn, ct - 1) == 0) {
            response.eSetRes = setDone;
        }
        m_trace.at(TraceLevel::Call) << "TODO: Handling due to IF loop";
        handleMlmChanelStatus(ct);
    }
    respond(m_messageHandler, m_trace, *request, response);
}

void TrafficHandler::onGetRFTxOperStatusReq(GetRFTxOperStatusReqIPC* request)
{
    traceMethodCalled<GetRFTxOperStatusReqIPC>(m_trace);
    const RadioChannel ct = channelOf(*request);
    std::optional<int> state; // none where the radio cannot be asked
    if (!isChannel(ct)) {
        traceIncorrectChannel(m_trace, request->ct);
    } else if (available(m_trace, m_channels[ct].radio, ct)) {
        state = m_channels[ct].radio->getTransmitterState();
    }
    const std::uint32_t status = state.value_or(0) != 0 ? operStatusOn : operStatusOff;
    if (state && status != m_channels[ct].rfTxOperStatus) {
        m_trace.at(TraceLevel::Action) << "[CT " << ct << "]RF Tx Oper status changed! "
                                       << (status == operStatusOn ? "ON" : "OFF");
        m_channels[ct].rfTxOperStatus = status;
    }
    auto response = responseTo<GetRFTxOperStatusResIPC>(*request);
    response.tRFTxOperStatus.RFTxOperStatus = status;
    respond(m_messageHandler, m_trace, *request, response);
    if (state) {
        m_trace.at(TraceLevel::Dump) << "GetRFTxOperStatusResIPC response sent ([ct" << ct
                                     << "]Oper status = " << *state << " )";
    }
}

void TrafficHandler::onSetXfRFIfStatusReq(SetXfRFIfStatusReqIPC* request)
{
    traceMethodCalled<SetXfRFIfStatusReqIPC>(m_trace);
    auto response = responseTo<SetXfRFIfStatusResIPC>(*request);
    const RfIfParametersExt& settings = request->tSetXfRFIFParametersExt;
    m_trace.at(TraceLevel::Call) << "Set tx frequency step " << settings.RFCurrStepNum;
    m_trace.at(TraceLevel::Call) << "Set rx frequency step " << settings.RFCurrStepNumRX;
    m_trace.at(TraceLevel::Call) << "Set admin status " << settings.RFTxAdminStatus;
    if (!isChannel(channelOf(*request))) {
        traceIncorrectChannel(m_trace, request->ct);
        response.eSetRes = setFailed;
    } else if (settings.RFCurrStepNum != stepAbsent && settings.RFCurrStepNumRX != stepAbsent) {
        response.eSetRes = setRadioSettings(channelOf(*request), settings) ? setDone : setFailed;
    }
    respond(m_messageHandler, m_trace, *request, response);
}

bool TrafficHandler::setRadioSettings(RadioChannel ct, const RfIfParametersExt& settings, const CallSite& site)
{
    const bool frequencySet = m_adapterModel.onSetFrequency(ct - 1, settings.RFCurrStepNum, settings.RFCurrStepNumRX);
    if (!frequencySet) {
        m_trace.at(TraceLevel::Error, site) << site.method << "(): failed to set frequency via m_adapterModel";
    }
    const bool rfLoopSet = setRfLoop(ct, settings.RFLoopEnable, site);
    const bool transmitterSet = setTransmitter(ct, settings.RFTxAdminStatus, site);
    return frequencySet && rfLoopSet && transmitterSet;
}

bool TrafficHandler::setRfLoop(RadioChannel ct, std::uint32_t loop, const CallSite& site) const
{
    const auto& radio = m_channels[ct].radio;
    if (!available(m_trace, radio, ct, site)) {
        return false;
    }
    const bool isOn = radio->getRfLoopState() != 0;
    if (loop != loopOn && loop != loopOff) {
        m_trace.at(TraceLevel::Error, site) << site.method << "(): Unhandled RF loop state request";
        return false;
    }
    const bool on = loop == loopOn;
    if (on != isOn && isSignedFailure(radio->setRfLoop(on))) {
        m_trace.at(TraceLevel::Error, site)
            << site.method
            << (on ? "(): failed to set RF loop ON via IRadio" : "(): failed to set RF loop OFF via IRadio");
        return false;
    }
    return true;
}

/// @return false only where the interface is missing: that the radio refuses the settings is logged, not answered
bool TrafficHandler::setTransmitter(RadioChannel ct, std::uint32_t adminStatus, const CallSite& site) const
{
    const auto& controller = m_channels[ct].systemPowerController;
    if (!available(m_trace, controller, ct, site)) {
        return false;
    }
    std::int32_t atpcTarget = 0;
    std::int32_t minOutputPower = 0;
    std::int32_t maxOutputPower = 0;
    controller->getRequestedAtpcTarget(atpcTarget);
    controller->getRequestedMinOutputPower(minOutputPower);
    controller->getRequestedMaxOutputPower(maxOutputPower);
    if (adminStatus != adminStatusOn && adminStatus != adminStatusOff) {
        return true;
    }
    const bool off = adminStatus == adminStatusOff;
    controller->setTransmitterOff(off, nullptr);
    if (isSignedFailure(controller->notifyRequestedPowerSettings(off, atpcTarget, minOutputPower, maxOutputPower,
                                                                 powerSettingsSpare0, powerSettingsSpare1))) {
        m_trace.at(TraceLevel::Error, site)
            << site.method << "(): failed during call to SPC::notifyRequestedPowerSettings = ";
    }
    return true;
}

void TrafficHandler::onSetMLMReq(SetMLMReqIPC* request)
{
    traceMethodCalled<SetMLMReqIPC>(m_trace);
    auto response = responseTo<SetMLMResIPC>(*request);
    if (request->tMLMQueueStatus_T == queueUndefinedC) {
        m_trace.at(TraceLevel::Error) << "onSetMLMReq(): Called with no action, i.e. queueUndefinedC" << request->ct;
        response.eSetRes = setFailed;
    } else {
        const RadioChannel ct = isChannel(channelOf(*request)) ? channelOf(*request) : RadioChannel{1};
        updateLocalMlmQueueStatus(ct, request->tMLMQueueStatus_T);
        if (!handleMlmChanelStatus(ct)) {
            response.eSetRes = setFailed;
        }
        if (!available(m_trace, m_trafficHandler)) {
            response.eSetRes = setFailed;
        } else if (m_trafficHandler->quiesceChannel(ct, false) != 0) {
            m_trace.at(TraceLevel::Error) << "onSetMLMReq(): TRAF returned with error for ct " << request->ct;
            response.eSetRes = setFailed;
        }
    }
    respond(m_messageHandler, m_trace, *request, response);
}

void TrafficHandler::updateLocalMlmQueueStatus(RadioChannel ct, MLMQueueStatus_T status)
{
    m_channels[ct].mlmQueueStatus = status;
}

void TrafficHandler::getLocalMlmQueueStatus(RadioChannel ct, MLMQueueStatus_T& status) const
{
    status = m_channels[ct].mlmQueueStatus;
}

bool TrafficHandler::handleMlmChanelStatus(RadioChannel ct) const
{
    const auto& driver = m_channels[ct].ifLoopDriver;
    if (!available(m_trace, driver, ct) || !available(m_trace, m_trafficHandler)) {
        return false;
    }
    MLMQueueStatus_T queueStatus = queueEnabledC;
    getLocalMlmQueueStatus(ct, queueStatus);
    bool ifLoopActive = false;
    const bool ifLoopRead = driver->getIfLoopState(ifLoopActive) == 0;
    const bool enable = !ifLoopActive && queueStatus != queueDisabledC;
    if (m_trafficHandler->enableTraffic(ct, enable) != 0) {
        m_trace.at(TraceLevel::Error) << "handleMlmChanelStatus(): TRAF returned with error for ct " << ct;
        return false;
    }
    return ifLoopRead;
}

} // namespace kro::device::vornipc
