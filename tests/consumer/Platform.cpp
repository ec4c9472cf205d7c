#include "Bsp.h"
#include "CModuleManager.h"
#include "ConstCharArrayBuffer.h"
#include "IHardwareConfigurationHandler.h"
#include "InterfaceBroker.h"
#include "LumTrace.h"
#include "ModuleInterface.h"
#include "TrfMlm.h"
#include "kro_top_api.h"
#include "ripc.h"
#include "thread_utilities.h"

#include <iostream>

// The least that a platform can be: every symbol that the module wants, and no interface at all.

ModuleInterface::ModuleInterface(unsigned moduleId, const char* moduleName, unsigned third, unsigned fourth,
                                 const unsigned long* phases, std::size_t numberOfPhases)
    : m_moduleId(moduleId),
      m_moduleName(moduleName),
      m_third(third),
      m_fourth(fourth),
      m_phases(phases, phases + numberOfPhases)
{
}
ModuleInterface::~ModuleInterface() = default;

int ModuleInterface::onPhaseActivation(unsigned long /*phase*/, ECallbackPriority /*priority*/)
{
    return 0;
}

#define PHASE(name)                                                                                                    \
    int ModuleInterface::name()                                                                                        \
    {                                                                                                                  \
        return 0;                                                                                                      \
    }
PHASE(onModuleInit)
PHASE(onPhaseModuleStorageObjectsRetrieved)
PHASE(onPhasePostFrameformatLoad)
PHASE(onPhaseEndFrameformatLoad)
PHASE(onPhaseRestartTickScheduler)
PHASE(onWarmRestartWaitForHw)
PHASE(onWarmRestartInit)
PHASE(onWarmRestartWaitForSetInitCompleteRequest)
PHASE(onPhaseStart)
PHASE(onPhaseStop)
PHASE(onPhaseFrameformatLoad)
PHASE(onPhasePreFrameformatLoad)
PHASE(onPhaseSuppressErrors)
PHASE(onPhaseSetRadioChannelNearEndFinished)
PHASE(onPhasePreRadioRestartCold)
PHASE(onPhasePreRadioRestartWarm)
PHASE(onPhasePostRadioRestart)
PHASE(onPhaseDisableAlarmThread)
PHASE(onPhasePreDspRecovery)
PHASE(onPhaseDspRecoveryReloadFw)
PHASE(onPhaseDspRecoveryReloadFf)
PHASE(onPhaseDspRecoveryReconfig)
PHASE(onPhasePostDspRecovery)
PHASE(onPhaseEnableAlarmThread)

CModuleManager& CModuleManager::GetInstance()
{
    static CModuleManager manager;
    return manager;
}

void CModuleManager::RegisterModule(ModuleInterface* module)
{
    std::cout << "registered " << module->moduleId() << ' ' << module->moduleName() << '\n';
}

InterfaceBroker& InterfaceBroker::getInstance()
{
    static InterfaceBroker broker;
    return broker;
}

std::shared_ptr<IInterface> InterfaceBroker::lookup(const std::string& /*name*/)
{
    return nullptr;
}

LumTrace::LumTrace(const char* tag, int level) : m_tag(tag), m_level(level) {}
LumTrace::~LumTrace() = default;

void LumTrace::write(int level, const char* /*file*/, int /*line*/, const char* /*method*/, std::string_view text) const
{
    std::cout << level << ' ' << m_tag << ' ' << text << '\n';
}

ConstCharArrayBuffer::ConstCharArrayBuffer(const char* data, std::size_t length)
{
    char* const begin = const_cast<char*>(data); // a get area is never written to
    setg(begin, begin, begin + length);
}
ConstCharArrayBuffer::~ConstCharArrayBuffer() = default;

ConstCharArrayBuffer::pos_type ConstCharArrayBuffer::seekoff(off_type /*offset*/, std::ios_base::seekdir /*direction*/,
                                                             std::ios_base::openmode /*which*/)
{
    return pos_type(off_type(-1));
}

ConstCharArrayBuffer::pos_type ConstCharArrayBuffer::seekpos(pos_type /*position*/, std::ios_base::openmode /*which*/)
{
    return pos_type(off_type(-1));
}

Result IHardwareConfigurationHandler::getFrameFormatItem(unsigned /*list*/, unsigned long /*frameId*/,
                                                         SRadioFrameItem& /*item*/) const
{
    return resultUnknownObject;
}

kro_top_api::StandardResponse
kro_top_api::criSetRadioChannelNearEnd(const CriSetRadioChannelNearEnd::Command& /*command*/)
{
    return {};
}

kro_top_api::StandardResponse
kro_top_api::criSetFarEndPmaxCapability(const CriSetFarEndPmaxCapability::Command& /*command*/)
{
    return {};
}

void os_extension::thread_utilities::setScheduling(std::thread& /*thread*/, int /*policy*/, int /*priority*/) {}
void os_extension::thread_utilities::setName(std::thread& /*thread*/, const std::string& /*name*/) {}

ripc_receive_callback receiveCallback = nullptr;
void* receiveContext = nullptr;

void ripc_hijack_register_receive_callback(ripc_receive_callback callback, void* context)
{
    receiveCallback = callback;
    receiveContext = context;
}

int ripc_sendBufferToPci(const char* data, unsigned length)
{
    std::cout << "sent " << length << " bytes of " << (data != nullptr ? "a message" : "nothing") << '\n';
    return static_cast<int>(length);
}

void Bsp_setSlotId(unsigned /*slot*/) {}

std::uint32_t Bsp_getProductId()
{
    return 0;
}

void TrfMlm_setTxMaxAcmLimit(std::int32_t /*channelIndex*/, std::uint32_t /*limit*/) {}
