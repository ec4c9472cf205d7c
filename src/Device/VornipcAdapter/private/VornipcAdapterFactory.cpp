#include <exception>
#include <memory>

#include "IVornipcAdapter.h"
#include "Trace.h"
#include "VornipcAdapter.h"

/// The one symbol that the library exports.
extern "C" __attribute__((visibility("default"))) IVornipcAdapter*
createVornipcAdapter(unsigned char numberOfChannels, ITiDisableModulation& disableModulation, const char* mmuAddress)
{
    using namespace kro::device::vornipc;
    try {
        const std::string address = mmuAddress != nullptr ? mmuAddress : "";
        return std::make_unique<VornipcAdapter>(numberOfChannels, disableModulation, address).release();
    } catch (const std::exception& exception) {
        const Trace trace{"KRO.VORNIPC"};
        trace.at(TraceLevel::Error) << "createVornipcAdapter(): the module cannot be created: " << exception.what();
    } catch (...) {
        const Trace trace{"KRO.VORNIPC"};
        trace.at(TraceLevel::Error) << "createVornipcAdapter(): the module cannot be created";
    }
    return nullptr;
}
