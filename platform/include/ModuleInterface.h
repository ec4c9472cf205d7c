#pragma once

#include "PlatformApi.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

/// Order in which the framework calls the modules of one phase; the value is the framework's.
enum ECallbackPriority : std::int32_t {};

/// Base of every module that the application framework runs. The framework calls the phase handlers on its own thread,
/// one at a time; a module overrides those that it has work in. Every default does nothing and returns 0.
class PLATFORM_API ModuleInterface {
public:
    /// @param phases copied; the phases in which the framework is to call onPhaseActivation
    ModuleInterface(unsigned moduleId, const char* moduleName, unsigned third, unsigned fourth,
                    const unsigned long* phases, std::size_t numberOfPhases);

    virtual ~ModuleInterface();

    virtual int onPhaseActivation(unsigned long phase, ECallbackPriority priority);
    /// Called once, after all modules exist and the platform's interfaces are registered.
    virtual int onModuleInit();
    virtual int onPhaseModuleStorageObjectsRetrieved();
    virtual int onPhasePostFrameformatLoad();
    virtual int onPhaseEndFrameformatLoad();
    virtual int onPhaseRestartTickScheduler();
    virtual int onWarmRestartWaitForHw();
    virtual int onWarmRestartInit();
    virtual int onWarmRestartWaitForSetInitCompleteRequest();
    virtual int onPhaseStart();
    virtual int onPhaseStop();
    virtual int onPhaseFrameformatLoad();
    virtual int onPhasePreFrameformatLoad();
    virtual int onPhaseSuppressErrors();
    virtual int onPhaseSetRadioChannelNearEndFinished();
    virtual int onPhasePreRadioRestartCold();
    virtual int onPhasePreRadioRestartWarm();
    virtual int onPhasePostRadioRestart();
    virtual int onPhaseDisableAlarmThread();
    virtual int onPhasePreDspRecovery();
    virtual int onPhaseDspRecoveryReloadFw();
    virtual int onPhaseDspRecoveryReloadFf();
    virtual int onPhaseDspRecoveryReconfig();
    virtual int onPhasePostDspRecovery();
    virtual int onPhaseEnableAlarmThread();

    unsigned moduleId() const { return m_moduleId; }
    const std::string& moduleName() const { return m_moduleName; }
    unsigned third() const { return m_third; }
    unsigned fourth() const { return m_fourth; }
    const std::vector<unsigned long>& phases() const { return m_phases; }

    ModuleInterface(const ModuleInterface&) = delete;
    ModuleInterface& operator=(const ModuleInterface&) = delete;

private:
    unsigned m_moduleId;
    std::string m_moduleName;
    unsigned m_third;
    unsigned m_fourth;
    std::vector<unsigned long> m_phases;
};
