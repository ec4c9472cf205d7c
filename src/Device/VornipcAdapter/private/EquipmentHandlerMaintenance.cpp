#include <algorithm>

#include "Answering.h"
#include "EquipmentHandler.h"
#include "SetResult.h"
#include "TrfMlm.h"

namespace kro::device::vornipc {

namespace {

/// Results of requests, fixed by the node protocol.
constexpr std::uint32_t selftestDone = 1;
constexpr std::uint32_t selftestDoneExchangeAgain = 2;
constexpr std::uint32_t restartAccepted = 1;
constexpr std::uint32_t restartRefused = 2;
constexpr std::uint32_t acmEngineDisabled = 1;
constexpr std::uint32_t acmEngineEnabled = 2;

/// The one restart command that is acted upon.
constexpr std::uint32_t restartCommand = 1;

/// Bit of the protection codes that says that traffic is to be quiesced before a restart.
constexpr std::uint32_t quiesceBeforeRestart = 0x1;

} // namespace

void EquipmentHandler::onSelftestReq(ADSSelftestReqIPC* request)
{
    traceRequest(m_trace, *request);
    m_messageHandler.setSlotNumber(static_cast<std::uint8_t>(request->slot));
    auto response = responseTo<ADSSelftestResIPC>(*request);
    const bool exchangeAgainNextTime = request->eSelftestType == 0;

    bool exchange = false;
    bool bpmCapable = false;
    {
        const std::scoped_lock lock(m_stateMutex);
        handleQesMode_(request->tCompatibilityCodes);
        exchange = !m_ansCapabilities.capabilitiesReceived;
        if (exchange) {
            extractAnsCapabilities_(request->tCompatibilityCodes);
        }
        m_ansCapabilities.capabilitiesReceived = !exchangeAgainNextTime;
        bpmCapable = m_ansCapabilities.bpmCommandCapable;
    }
    if (exchange) {
        CompatibilityCodes_T& codes = response.tCompatibilityCodes;
        codes.capabilityTF = 3;
        codes.capabilityPR = getKROCompatibiltyCodesPR();
        codes.capabilityEH = getKROCompatibiltyCodesEH();
        codes.capabilitySU = 1;
        codes.capabilityATPC = getKROCompatibiltyCodesATPC();
        m_trace.at(TraceLevel::Call) << "TODO: SAL_EQH_InitFrameFormatList (ANSCompatibilityCodes)";
    }
    m_trace.at(TraceLevel::Call) << "TODO: SAL_EnablePCIChannel() for outgoing messages";

    if (exchangeAgainNextTime) {
        response.eSelftestResult = selftestDoneExchangeAgain;
    } else {
        response.eSelftestResult = selftestDone;
        m_trace.at(TraceLevel::Call) << "TODO: RLBSP_bcm_avsInit(); replace with dspApi() call ?";
        if (bpmCapable && available(m_trace, m_rlbspApi)) {
            m_rlbspApi->initialize();
        }
    }
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::resetSelfTestCheckPerformed()
{
    const std::scoped_lock lock(m_stateMutex);
    m_ansCapabilities.capabilitiesReceived = false;
}

void EquipmentHandler::onSwStatusReq(ADSSwStatusReqIPC* request)
{
    traceRequest(m_trace, *request);
    auto response = responseTo<ADSSwStatusResIPC>(*request);
    respond(m_messageHandler, m_trace, response);
    m_trace.at(TraceLevel::Call) << "ADSSwStatusResIPC response sent";
}

void EquipmentHandler::onRauStatusReq(RAUStatusReqIPC* request)
{
    traceRequest(m_trace, *request);
    auto response = responseTo<RAUStatusResIPC>(*request);
    const RadioChannel ct = channelOf(*request);
    if (!isChannel(ct)) {
        m_trace.at(TraceLevel::Error) << "Incorrect ct number " << request->ct << " ()";
    } else if (available(m_trace, m_channels[ct].radio, ct) && radioIsUp(ct)) {
        std::int8_t temperature = 0;
        m_channels[ct].radio->getTemperature(temperature);
        response.iRAUTemperature = temperature;
    }
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::onRAURestartReq(RAURestartReqIPC* request)
{
    traceRequest(m_trace, *request);
    m_trace.at(TraceLevel::Call) << "----- Stubbed RAURestartResIPC response";
    auto response = responseTo<RAURestartResIPC>(*request);
    response.eRestartResult = restartRefused;
    const RadioChannel ct = channelOf(*request);
    if (!isChannel(ct)) {
        traceIncorrectChannel(m_trace, request->ct);
    } else if (available(m_trace, m_channels[ct].radio, ct)) {
        if (radioIsUp(ct) && request->eModuleRestartCommand == restartCommand) {
            response.eRestartResult = restartAccepted;
        } else {
            m_trace.at(TraceLevel::Error) << " invalid restart request for ct " << ct;
        }
    }
    respond(m_messageHandler, m_trace, response);
    if (response.eRestartResult == restartAccepted) {
        restartRadio(ct); // the node has its answer by now
    }
}

void EquipmentHandler::restartRadio(RadioChannel ct, const CallSite& site)
{
    if ((getKROCompatibiltyCodesPR() & quiesceBeforeRestart) != 0 && available(m_trace, m_trafficHandler, site) &&
        m_trafficHandler->quiesceChannel(ct, true) != 0) {
        m_trace.at(TraceLevel::Error, site) << " TRAF returned with error for ct " << ct;
    }
    if (available(m_trace, m_alarmHandler, site)) {
        m_alarmHandler->notifyRauRestart(ct);
    }
    m_channels[ct].radio->restart(0);
}

void EquipmentHandler::onSetRAUDefaultConfigReq(SetRAUDefaultConfigReqIPC* request)
{
    traceRequest(m_trace, *request);
    auto response = responseTo<SetRAUDefaultConfigResIPC>(*request);
    response.eSetRes = setFailed;
    const RadioChannel ct = channelOf(*request);
    if (!isChannel(ct)) {
        traceIncorrectChannel(m_trace, request->ct);
    } else if (available(m_trace, m_channels[ct].radio, ct)) {
        if (!radioIsUp(ct)) {
            m_trace.at(TraceLevel::Error) << " Radio is down for ct " << ct;
        } else if (isFailure(m_channels[ct].radio->setDefaultConfiguration())) {
            m_trace.at(TraceLevel::Error) << " Failed to set default configuration for ct " << ct;
        } else {
            response.eSetRes = setDone;
        }
    }
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::onSetBerAlarmThresholdReq(SetBerAlarmThresholdReqIPC* request)
{
    traceRequest(m_trace, *request);
    m_trace.at(TraceLevel::Event) << "Set new ber alarm threshold to " << request->eBerAlarmThreshold;
    auto response = responseTo<SetBerAlarmThresholdResIPC>(*request);
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::onSetTxMaxAcmLimitReq(SetTxMaxAcmLimitReqIPC* message)
{
    traceRequest(m_trace, *message);
    const RadioChannel ct = channelOf(*message);
    if (!isChannel(ct)) {
        traceIncorrectChannel(m_trace, message->ct);
        return;
    }
    m_trace.at(TraceLevel::Action) << "Set Tx Max Acm capacity limit for ct " << ct << " to " << message->setTxMaxCap;
    TrfMlm_setTxMaxAcmLimit(ct - 1, message->setTxMaxCap);
}

void EquipmentHandler::onGetShiftStatusReq(GetShiftStatusReqIPC* request)
{
    traceRequest(m_trace, *request);
    auto response = responseTo<GetShiftStatusResIPC>(*request);
    const RadioChannel ct = channelOf(*request);
    if (!isChannel(ct)) {
        traceIncorrectChannel(m_trace, request->ct);
    } else if (available(m_trace, m_channels[ct].acmHandler, ct)) {
        bool enabled = false;
        if (isFailure(m_channels[ct].acmHandler->isAcmEngineEnabled(&enabled))) {
            m_trace.at(TraceLevel::Error) << " Failed to check if ACM is enabled for " << ct;
        } else {
            response.currentACMShiftStatus = enabled ? acmEngineEnabled : acmEngineDisabled;
        }
    }
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::onBpmCommandRes(BpmCommandResIPC* message)
{
    traceCalled<BpmCommandResIPC>(m_trace);
    if (available(m_trace, m_rlbspApi)) {
        m_rlbspApi->sendBpmResponse(message->aBpmCommandRes.bpmCommandResArray);
    }
    traceReceived(m_trace, *message);
}

int EquipmentHandler::rawMsgCallback(const std::vector<unsigned char>& command)
{
    constexpr int sent = 0;
    constexpr int refused = 1;

    AnsCapabilities capabilities;
    getAnsCapabilities(capabilities);
    if (!capabilities.bpmCommandCapable) {
        m_trace.at(TraceLevel::Error) << " ANS is not BPM command capable";
        return refused;
    }
    BpmCommandReqIPC message;
    if (command.size() > message.bpmCommandReqArray.size()) {
        m_trace.at(TraceLevel::Error) << "rawMsgCallback(): length " << command.size() << " is above the capacity "
                                      << message.bpmCommandReqArray.size();
        return refused;
    }
    message = spontaneous<BpmCommandReqIPC>(m_messageHandler, RadioChannel{0});
    std::copy(command.begin(), command.end(), message.bpmCommandReqArray.begin());
    m_messageHandler.send(message, VornipcDeviceId::ads);
    return sent;
}

} // namespace kro::device::vornipc
