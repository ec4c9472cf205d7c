#include "Core.h"

#include "CModuleManager.h"
#include "InterfaceBroker.h"
#include "ModuleInterface.h"

using simulated::Json;

ModuleInterface::ModuleInterface(unsigned moduleId, const char* moduleName, unsigned third, unsigned fourth,
                                 const unsigned long* phases, std::size_t numberOfPhases)
    : m_moduleId{moduleId},
      m_moduleName{moduleName == nullptr ? "" : moduleName},
      m_third{third},
      m_fourth{fourth},
      m_phases(phases, phases + numberOfPhases)
{
}

ModuleInterface::~ModuleInterface() = default;

// clang-format off
int ModuleInterface::onPhaseActivation(unsigned long /*phase*/, ECallbackPriority /*priority*/) { return 0; }
int ModuleInterface::onModuleInit() { return 0; }
int ModuleInterface::onPhaseModuleStorageObjectsRetrieved() { return 0; }
int ModuleInterface::onPhasePostFrameformatLoad() { return 0; }
int ModuleInterface::onPhaseEndFrameformatLoad() { return 0; }
int ModuleInterface::onPhaseRestartTickScheduler() { return 0; }
int ModuleInterface::onWarmRestartWaitForHw() { return 0; }
int ModuleInterface::onWarmRestartInit() { return 0; }
int ModuleInterface::onWarmRestartWaitForSetInitCompleteRequest() { return 0; }
int ModuleInterface::onPhaseStart() { return 0; }
int ModuleInterface::onPhaseStop() { return 0; }
int ModuleInterface::onPhaseFrameformatLoad() { return 0; }
int ModuleInterface::onPhasePreFrameformatLoad() { return 0; }
int ModuleInterface::onPhaseSuppressErrors() { return 0; }
int ModuleInterface::onPhaseSetRadioChannelNearEndFinished() { return 0; }
int ModuleInterface::onPhasePreRadioRestartCold() { return 0; }
int ModuleInterface::onPhasePreRadioRestartWarm() { return 0; }
int ModuleInterface::onPhasePostRadioRestart() { return 0; }
int ModuleInterface::onPhaseDisableAlarmThread() { return 0; }
int ModuleInterface::onPhasePreDspRecovery() { return 0; }
int ModuleInterface::onPhaseDspRecoveryReloadFw() { return 0; }
int ModuleInterface::onPhaseDspRecoveryReloadFf() { return 0; }
int ModuleInterface::onPhaseDspRecoveryReconfig() { return 0; }
int ModuleInterface::onPhasePostDspRecovery() { return 0; }
int ModuleInterface::onPhaseEnableAlarmThread() { return 0; }
// clang-format on

CModuleManager& CModuleManager::GetInstance()
{
    static CModuleManager manager;
    return manager;
}

void CModuleManager::RegisterModule(ModuleInterface* module)
{
    Json arguments = Json::object();
    if (module != nullptr) {
        arguments = {{"moduleId", module->moduleId()},
                     {"name", module->moduleName()},
                     {"third", module->third()},
                     {"fourth", module->fourth()},
                     {"phases", module->phases()}};
    }
    simulated::core().operations("CModuleManager").run("RegisterModule", std::move(arguments), [] {});
}

InterfaceBroker& InterfaceBroker::getInstance()
{
    static InterfaceBroker broker;
    return broker;
}

std::shared_ptr<IInterface> InterfaceBroker::lookup(const std::string& name)
{
    simulated::Core& core = simulated::core();
    std::shared_ptr<IInterface> found = core.findInterface(name);
    const bool handedOver =
        core.operations("InterfaceBroker").run("lookup", {{"name", name}}, [&] { return found != nullptr; });
    return handedOver ? found : nullptr;
}
