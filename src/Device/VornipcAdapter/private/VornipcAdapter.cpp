#include "VornipcAdapter.h"

#include <array>

#include "AdapterModel.h"
#include "AlarmSignalHandler.h"
#include "CModuleManager.h"
#include "DevPsRlpsHandler.h"
#include "EquipmentHandler.h"
#include "PowerControlHandler.h"
#include "ProtectionHandler.h"
#include "RemoteMibHandler.h"
#include "SoftwareUpgradeHandler.h"
#include "TestCommandHandler.h"
#include "TrafficHandler.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

namespace {

/// How the module registers with the framework. The meaning of the two values and of the phase is the framework's.
constexpr unsigned vornipcModuleId = 113000;
constexpr const char* vornipcModuleName = "VornipcAdapter";
constexpr unsigned thirdRegistrationValue = 100;
constexpr unsigned fourthRegistrationValue = 0;
constexpr std::array activationPhases{11UL};

} // namespace

VornipcAdapter::VornipcAdapter(unsigned char numberOfChannels, ITiDisableModulation& disableModulation,
                               const std::string& mmuAddress)
    : ModuleInterface(vornipcModuleId, vornipcModuleName, thirdRegistrationValue, fourthRegistrationValue,
                      activationPhases.data(), activationPhases.size()),
      m_numberOfChannels(numberOfChannels),
      m_messageHandler(std::make_unique<VornipcMessageHandler>(mmuAddress, nullptr)),
      m_adapterModel(std::make_unique<AdapterModel>(numberOfChannels)),
      m_equipmentHandler(std::make_unique<EquipmentHandler>(numberOfChannels, *m_messageHandler, *m_adapterModel)),
      m_remoteMibHandler(std::make_unique<RemoteMibHandler>(*m_messageHandler)),
      m_softwareUpgradeHandler(std::make_unique<SoftwareUpgradeHandler>(*m_messageHandler)),
      m_testCommandHandler(std::make_unique<TestCommandHandler>(*m_messageHandler)),
      m_trafficHandler(std::make_unique<TrafficHandler>(numberOfChannels, *m_messageHandler, *m_adapterModel)),
      m_protectionHandler(std::make_unique<ProtectionHandler>(*m_messageHandler)),
      m_powerControlHandler(
          std::make_unique<PowerControlHandler>(numberOfChannels, *m_messageHandler, *m_adapterModel)),
      m_alarmSignalHandler(std::make_unique<AlarmSignalHandler>(numberOfChannels, *m_messageHandler)),
      m_devPsRlpsHandler(std::make_unique<DevPsRlpsHandler>(numberOfChannels, *m_messageHandler, disableModulation))
{
    CModuleManager::GetInstance().RegisterModule(this);
}

VornipcAdapter::~VornipcAdapter()
{
    m_messageHandler->stopDispatching();
}

int VornipcAdapter::onModuleInit()
{
    m_adapterModel->onModuleInit();
    m_equipmentHandler->onModuleInit();
    m_remoteMibHandler->onModuleInit();
    m_softwareUpgradeHandler->onModuleInit();
    m_testCommandHandler->onModuleInit();
    m_trafficHandler->onModuleInit();
    m_protectionHandler->onModuleInit();
    m_powerControlHandler->onModuleInit();
    m_alarmSignalHandler->onModuleInit();
    m_devPsRlpsHandler->onModuleInit();
    m_messageHandler->connect(VornipcMessageClient::Type{0});
    return 0;
}

VornipcLinkFacts VornipcAdapter::linkFacts() const
{
    const ReaderState state = m_messageHandler->readerState();
    VornipcLinkFacts facts;
    facts.outgoingIpcMessagesAllowed = m_messageHandler->outgoingIpcMessagesAllowed();
    facts.vornipcWhiteListActive = m_messageHandler->vornipcWhiteListActive();
    facts.slotNumber = m_messageHandler->getSlotNumber();
    facts.senderId = m_messageHandler->getSenderID();
    facts.channels = m_numberOfChannels;
    facts.reader = state.reader;
    facts.reason = state.reason;
    facts.lastMessage = state.lastMessage;
    return facts;
}

void VornipcAdapter::sendToNpuSyslog(const std::string& text)
{
    m_messageHandler->sendToNpuSyslog(text);
}

void VornipcAdapter::sendToNpuSyslog(const std::string& text, RadioChannel ct)
{
    m_messageHandler->sendToNpuSyslog(text, ct);
}

void VornipcAdapter::setOutgoingIpcMessagesAllowed(bool allowed)
{
    m_messageHandler->setOutgoingIpcMessagesAllowed(allowed);
}

void VornipcAdapter::notifyProtectionModeOperStatus(EChannelSelector channel, std::uint32_t protectionMode)
{
    m_protectionHandler->notifyProtectionModeOperStatus(channel, ProtectionMode_T{protectionMode});
}

void VornipcAdapter::notifyActiveRadioSw(EChannelSelector channel, std::uint32_t activeRadio)
{
    m_protectionHandler->notifyActiveRadioSw(channel, ActTxRadio_T{activeRadio});
}

void VornipcAdapter::notifyWorkingRxSw(EChannelSelector channel, std::uint32_t workingRx)
{
    m_protectionHandler->notifyWorkingRxSw(channel, WorkingRx_T{workingRx});
}

void VornipcAdapter::notifyHopRx(EChannelSelector channel, int length, const std::uint8_t* data)
{
    m_remoteMibHandler->notifyHopRx(channel, length, data);
}

void VornipcAdapter::notifyHccRx(EChannelSelector channel, int wanOffset, std::uint32_t hccHandler, int length,
                                 const std::uint8_t* data)
{
    m_remoteMibHandler->notifyHccRx(channel, wanOffset, HCCHandler_T{hccHandler}, length, data);
}

void VornipcAdapter::notifyTestCommandTx(EChannelSelector channel, const VornipcTestCommandFrame& frame)
{
    m_testCommandHandler->notifyTestCommandTx(channel, {frame.length,
                                                        frame.slot,
                                                        frame.source,
                                                        frame.dest,
                                                        frame.tmt,
                                                        frame.operation,
                                                        frame.direction,
                                                        frame.jobId,
                                                        {frame.data}});
}

void VornipcAdapter::enableTimeStamp(bool on)
{
    m_alarmSignalHandler->enableTimeStamp(on);
}

bool VornipcAdapter::setFrameFormat(int radioChannelIndex, int radioFrameId, std::int32_t minAcm, std::int32_t maxAcm,
                                    std::int32_t sec)
{
    return m_adapterModel->onSetFrameFormatReq(radioChannelIndex, radioFrameId, minAcm, maxAcm, sec);
}

void VornipcAdapter::getAcmCapacities(int frameId, int* capacities,
                                      const std::function<bool(const SRadioFrameItem&, unsigned)>& filter)
{
    m_equipmentHandler->getAcmCapacities(frameId, capacities, filter);
}

void VornipcAdapter::resetSelfTestCheckPerformed()
{
    m_equipmentHandler->resetSelfTestCheckPerformed();
}

void VornipcAdapter::resetSpontaneousMessageSequenceNumber()
{
    m_messageHandler->resetSpontaneousMessageSequenceNumber();
}

} // namespace kro::device::vornipc
