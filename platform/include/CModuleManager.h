#pragma once

#include "ModuleInterface.h"
#include "PlatformApi.h"

/// The framework's list of modules.
class PLATFORM_API CModuleManager {
public:
    static CModuleManager& GetInstance();

    /// Announces a module with its id, name and phases; called once, at the end of its construction. The manager does
    /// not own the module.
    void RegisterModule(ModuleInterface* module);

    CModuleManager(const CModuleManager&) = delete;
    CModuleManager& operator=(const CModuleManager&) = delete;

private:
    CModuleManager() = default;
    ~CModuleManager() = default;
};
