#include "VornipcAdapter.h"

#include <array>

#include "AdapterModel.h"
#include "CModuleManager.h"
#include "EquipmentHandler.h"
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

VornipcAdapter::VornipcAdapter(unsigned char numberOfChannels, ITiDisableModulation& /*disableModulation*/,
                               const std::string& mmuAddress)
    : ModuleInterface(vornipcModuleId, vornipcModuleName, thirdRegistrationValue, fourthRegistrationValue,
                      activationPhases.data(), activationPhases.size()),
      m_numberOfChannels(numberOfChannels),
      m_messageHandler(std::make_unique<VornipcMessageHandler>(mmuAddress, nullptr)),
      m_adapterModel(std::make_unique<AdapterModel>(numberOfChannels)),
      m_equipmentHandler(std::make_unique<EquipmentHandler>(numberOfChannels, *m_messageHandler, *m_adapterModel))
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

void VornipcAdapter::resetSelfTestCheckPerformed()
{
    m_equipmentHandler->resetSelfTestCheckPerformed();
}

void VornipcAdapter::resetSpontaneousMessageSequenceNumber()
{
    m_messageHandler->resetSpontaneousMessageSequenceNumber();
}

} // namespace kro::device::vornipc
