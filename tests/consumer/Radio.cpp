#include "ITiDisableModulation.h"
#include "IVornipcAdapter.h"
#include "ModuleInterface.h"
#include "ripc.h"

#include <bit>
#include <dlfcn.h>
#include <iostream>
#include <memory>
#include <string>

// Loads the installed module, lets it answer a message, and unloads it.

extern ripc_receive_callback receiveCallback;
extern void* receiveContext;

namespace {

struct NoModulationSwitch : ITiDisableModulation {
    Outcome execute(const Request& /*request*/, Reply& /*reply*/) override { return {}; }
};

int fail(const std::string& why)
{
    std::cerr << "radio: " << why << '\n';
    return 1;
}

} // namespace

int main()
{
    void* const library = dlopen(MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        return fail(dlerror());
    }
    const auto create = std::bit_cast<VornipcAdapterFactory>(dlsym(library, vornipcAdapterFactoryName));
    if (create == nullptr) {
        return fail("the module has no factory");
    }
    for (const char* address : {"", "10.0.0.1"}) {
        NoModulationSwitch modulation;
        const std::unique_ptr<IVornipcAdapter> module(create(2, modulation, address));
        if (!module || module->module().onModuleInit() != 0) {
            return fail("the module does not start");
        }
        const bool hasLink = *address != '\0';
        if ((module->linkFacts().reader == VornipcLinkFacts::Reader::running) != hasLink) {
            return fail("the link is not as the address says");
        }
        if (hasLink) { // the software status is answered while everything is missing and the gate is closed
            const std::string request = std::string("\0\x20\0\x06", 4) + std::string(24, '\0');
            receiveCallback(receiveContext, request.data(), static_cast<unsigned>(request.size()), 0);
            receiveCallback(receiveContext, nullptr, 0, 0); // these two wait until it is processed
            receiveCallback(receiveContext, nullptr, 0, 0);
        }
    }
    dlclose(library);
    if (dlopen(MODULE_PATH, RTLD_NOW | RTLD_NOLOAD) != nullptr) {
        return fail("the module is still loaded");
    }
    return 0;
}
