#include "EquipmentHandler.h"

#include "Answering.h"
#include "Bsp.h"

namespace kro::device::vornipc {

namespace {

/// States of a unit as the node tells them.
constexpr std::uint32_t inService = 1;
constexpr std::uint32_t reducedService = 2;
constexpr std::uint32_t outOfService = 3;

} // namespace

const Trace EquipmentHandler::m_trace{"KRO.VORNIPC.EH"};

EquipmentHandler::EquipmentHandler(unsigned channelCount, VornipcMessageHandler& messageHandler,
                                   AdapterModel& adapterModel)
    : m_messageHandler(messageHandler), m_adapterModel(adapterModel), m_channelCount(channelCount)
{
}

EquipmentHandler::~EquipmentHandler()
{
    for (const RadioChannel ct : getRadioChannelIds(m_channelCount)) {
        if (const auto& radio = m_channels[ct].radio) {
            radio->registerCallback(ct, nullptr);
        }
    }
    if (m_rlbspApi) {
        m_rlbspApi->registerBpmCallback(nullptr);
    }
}

Result EquipmentHandler::onModuleInit()
{
    registerReceivers();
    return lookUpInterfaces() ? resultOk : resultFailed;
}

void EquipmentHandler::registerReceivers()
{
    // One method a line.
    // clang-format off
    m_messageHandler.registerReceivers(*this,
        &EquipmentHandler::onSelftestReq,
        &EquipmentHandler::onSwStatusReq,
        &EquipmentHandler::onADSNpuDown,
        &EquipmentHandler::onMMUState,
        &EquipmentHandler::onRAUState,
        &EquipmentHandler::onTermState,
        &EquipmentHandler::onVornRestarted,
        &EquipmentHandler::onRauStatusReq,
        &EquipmentHandler::onSetRAUDefaultConfigReq,
        &EquipmentHandler::onRAURestartReq,
        &EquipmentHandler::onSetBerAlarmThresholdReq,
        &EquipmentHandler::onGetRAUCapabilityReq,
        &EquipmentHandler::onResetBERCounters,
        &EquipmentHandler::onSetSDCAdminStatusReq,
        &EquipmentHandler::onGetSDCOperStatusReq,
        &EquipmentHandler::onDadeControlReq,
        &EquipmentHandler::onGetDadeStatusReq,
        &EquipmentHandler::onSetSDCPathReq,
        &EquipmentHandler::onGetSDCCurrentDataReq,
        &EquipmentHandler::onGetSDCActualPathReq,
        &EquipmentHandler::onSetTxMaxAcmLimitReq,
        &EquipmentHandler::onSetCarrierTermPreambleReq,
        &EquipmentHandler::onGetRAUIndexCapabilitiesReq,
        &EquipmentHandler::onSetRAUIndexCapabilitiesReq,
        &EquipmentHandler::onResetInsufficientPowerResourcesErrorReq,
        &EquipmentHandler::onGetShiftStatusReq,
        &EquipmentHandler::onAdsClosePciReq,
        &EquipmentHandler::onNotifyCarrierStatus,
        &EquipmentHandler::onNotifyInitRAUStateProtc,
        &EquipmentHandler::onBpmCommandRes,
        &EquipmentHandler::onRAULostFromAds);
    // clang-format on
}

bool EquipmentHandler::lookUpInterfaces()
{
    const CallSite site{__FILE__, __LINE__, "onModuleInit"};
    const bool found = InterfaceLookup(m_trace, " Error getting interface to ", site)(m_alarmHandler) &&
                       InterfaceLookup(m_trace, "failed to get interface to", site)(m_trafficHandler) &&
                       InterfaceLookup(m_trace, "Error getting interface to ", site)(m_hardwareConfigurationHandler) &&
                       InterfaceLookup(m_trace, " failed to get interface to", site)(m_rlbspApi);
    if (!found) {
        return false;
    }
    m_rlbspApi->registerBpmCallback(this);
    for (const RadioChannel ct : getRadioChannelIds(m_channelCount)) {
        if (!lookUpChannel(ct)) {
            return false;
        }
    }
    return true;
}

bool EquipmentHandler::lookUpChannel(RadioChannel ct)
{
    const CallSite site{__FILE__, __LINE__, "onModuleInit"};
    const InterfaceLookup lookup(m_trace, " Error getting interface to ", site);
    Channel& channel = m_channels[ct];
    if (!lookup(ct, channel.radio)) {
        return false;
    }
    channel.radio->registerCallback(ct, this);
    return lookup(ct, channel.radioCapability, channel.dspApi) &&
           InterfaceLookup(m_trace, "Error getting interface to ", site)(ct, channel.acmHandler);
}

bool EquipmentHandler::servesChannel(RadioChannel ct) const
{
    return m_channelCount <= maximumChannels && isChannel(ct) && static_cast<unsigned>(ct) <= m_channelCount;
}

void EquipmentHandler::onMMUState(MMUStateIPC* message)
{
    traceRequest(m_trace, *message);
    m_mmuState = message->eModuleOperStatus;
    m_trace.at(TraceLevel::Call) << "New mmu state is " << m_mmuState;

    switch (m_mmuState) {
    case inService:
        Bsp_setSlotId(message->slot);
        m_messageHandler.setSlotNumber(static_cast<std::uint8_t>(message->slot));
        m_messageHandler.setSenderID(message->senderId);
        m_messageHandler.setOutgoingIpcMessagesAllowed(true);
        m_trace.at(TraceLevel::Event) << "MMU InService, outgoing PCI messages are enabled";
        setMmuInService(true);
        for (const RadioChannel ct : getRadioChannelIds(m_channelCount)) {
            notifyRadioDetected(ct);
        }
        break;
    case reducedService:
        m_trace.at(TraceLevel::Event) << "MMUStateIPC received with reduced service";
        break;
    case outOfService:
        setMmuInService(false);
        m_messageHandler.setOutgoingIpcMessagesAllowed(false);
        m_trace.at(TraceLevel::Event) << "MMU OutOfService, outgoing PCI messages are disabled";
        break;
    default:
        m_trace.at(TraceLevel::Error) << "MMUStateIPC received with unknown service";
        break;
    }
}

void EquipmentHandler::setMmuInService(bool isInService, const CallSite& site)
{
    if (available(m_trace, m_alarmHandler, site)) {
        m_alarmHandler->setMmuInService(isInService);
    }
}

void EquipmentHandler::onRAUState(RAUStateIPC* message)
{
    traceRequest(m_trace, *message);
    const std::uint32_t state = message->eModuleOperStatus;
    m_trace.at(TraceLevel::Call) << "New rau state is " << state;
    if (state != inService && state != outOfService) {
        m_trace.at(TraceLevel::Warning) << "Unhandled rau state is " << state;
        return;
    }
    if (available(m_trace, m_alarmHandler)) {
        m_alarmHandler->setRauInService(channelOf(*message), state == inService);
    }
    m_trace.at(TraceLevel::Call) << (state == inService ? "RAU InService" : "RAU OutOfService");
}

void EquipmentHandler::onTermState(TermStateIPC* message)
{
    traceRequest(m_trace, *message);
    const std::uint32_t state = message->eModuleOperStatus;
    m_trace.at(TraceLevel::Call) << "New terminal state is " << state;
    const bool up = state == inService || state == reducedService;
    if (!up && state != outOfService) {
        m_trace.at(TraceLevel::Warning) << "Unhandled terminal state is " << state;
        return;
    }
    if (available(m_trace, m_alarmHandler)) {
        m_alarmHandler->setTerminalUp(up);
    }
}

void EquipmentHandler::onVornRestarted(VornRestartedIPC* message)
{
    traceRequest(m_trace, *message);
    if (available(m_trace, m_alarmHandler)) {
        m_alarmHandler->notifyNodeRestart();
    }
}

void EquipmentHandler::onADSNpuDown(ADSNpuDownIPC* /*message*/)
{
    m_messageHandler.setOutgoingIpcMessagesAllowed(false);
    m_trace.at(TraceLevel::Event) << "Received ADSNpuDownIPC, outgoing PCI messages disabled";
}

void EquipmentHandler::onAdsClosePciReq(ADSClosePciReqIPC* request)
{
    m_messageHandler.setOutgoingIpcMessagesAllowed(false);
    m_trace.at(TraceLevel::Event) << "Received ADSClosePciReqIPC, outgoing PCI messages disabled";
    if (m_mmuState == outOfService) {
        for (const RadioChannel ct : getRadioChannelIds(m_channelCount)) {
            if (available(m_trace, m_trafficHandler)) {
                m_trafficHandler->quiesceChannel(ct, true);
            }
            if (available(m_trace, m_channels[ct].radio, ct)) {
                m_channels[ct].radio->setActive(false);
            }
        }
    }
    auto response = responseTo<ADSClosePciResIPC>(*request);
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::onRAULostFromAds(RAULostIPC* message)
{
    traceRequest(m_trace, *message);
}

void EquipmentHandler::radioUp(RadioChannel ct)
{
    m_trace.at(TraceLevel::Event) << "RadioUp for ct " << ct << "calling notifyRadioDetected()";
    setRadioUp(ct, true);
    notifyRadioDetected(ct);
}

void EquipmentHandler::radioDown(RadioChannel ct)
{
    m_trace.at(TraceLevel::Call) << "Callback: << "
                                 << "radioDown"
                                 << "(): for ct " << ct;
    setRadioUp(ct, false);
    if (!servesChannel(ct)) {
        return;
    }
    auto message = spontaneous<RAULostIPC>(m_messageHandler, ct);
    m_trace.at(TraceLevel::Event) << "RAU lost for channel " << ct;
    m_messageHandler.send(message, VornipcDeviceId::ads);
}

bool EquipmentHandler::radioIsUp(RadioChannel ct) const
{
    return m_channels[ct].radio->isRadioUp();
}

bool EquipmentHandler::getRadioUp(RadioChannel ct) const
{
    const std::scoped_lock lock(m_stateMutex);
    return m_channels[ct].radioUp;
}

void EquipmentHandler::setRadioUp(RadioChannel ct, bool up)
{
    if (!servesChannel(ct)) {
        m_trace.at(TraceLevel::Error) << "setRadioUp(): channel " << ct << " is not served (channel count "
                                      << m_channelCount << "), its state is not kept";
        return;
    }
    const std::scoped_lock lock(m_stateMutex);
    m_channels[ct].radioUp = up;
}

} // namespace kro::device::vornipc
