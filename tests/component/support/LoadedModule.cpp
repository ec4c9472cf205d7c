#include "support/LoadedModule.h"

#include "ModuleInterface.h"
#include "SimulatedPlatform.h"

#include <dlfcn.h>

#include <bit>
#include <filesystem>
#include <fstream>
#include <stdexcept>

LoadedModule::LoadedModule(unsigned char channels, const char* mmuAddress)
    : m_library(dlopen(MODULE_PATH, RTLD_NOW | RTLD_LOCAL))
{
    if (!m_library) {
        throw std::runtime_error(dlerror()); // NOLINT(concurrency-mt-unsafe)
    }
    const auto factory = std::bit_cast<VornipcAdapterFactory>(dlsym(m_library.get(), vornipcAdapterFactoryName));
    if (factory == nullptr) {
        throw std::runtime_error("the module library has no factory");
    }
    m_adapter.reset(factory(channels, simulated::Platform::instance().disableModulation(), mmuAddress));
}

LoadedModule::~LoadedModule()
{
    auto& driver = simulated::Platform::instance().driver();
    driver.stop();
    m_adapter.reset();
    driver.waitUntilIdle();
}

void LoadedModule::initialize()
{
    m_adapter->module().onModuleInit();
}

void LoadedModule::Unload::operator()(void* handle) const
{
    dlclose(handle);
}

bool LoadedModule::libraryIsLoaded()
{
    const std::string name = std::filesystem::path(MODULE_PATH).filename();
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find(name) != std::string::npos) {
            return true;
        }
    }
    return false;
}
