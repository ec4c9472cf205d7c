#include "HandlerSurvey.h"

#include <bit>
#include <dlfcn.h>
#include <memory>
#include <stdexcept>

#include "IVornipcAdapter.h"
#include "MessageCatalogue.h"
#include "ModuleInterface.h"
#include "SimulatedPlatform.h"

namespace {

constexpr unsigned channels = 2;
constexpr int everything = 6;

/// The module on a platform of its own, stopped in the right order.
class RunningModule {
public:
    RunningModule()
    {
        m_platform.configure(channels);
        m_platform.setTracePrinting(false);
        m_platform.setTraceLevel("*", everything);
        m_platform.start();
        void* const library = dlopen(MODULE_PATH, RTLD_NOW | RTLD_LOCAL);
        if (library == nullptr) {
            throw std::runtime_error(dlerror()); // NOLINT(concurrency-mt-unsafe)
        }
        const auto factory = std::bit_cast<VornipcAdapterFactory>(dlsym(library, vornipcAdapterFactoryName));
        if (factory == nullptr) {
            throw std::runtime_error(MODULE_PATH " has no factory");
        }
        m_adapter.reset(factory(channels, m_platform.disableModulation(), "127.0.0.1"));
        m_adapter->module().onModuleInit();
    }
    RunningModule(const RunningModule&) = delete;
    RunningModule& operator=(const RunningModule&) = delete;
    ~RunningModule()
    {
        m_platform.stop();
        m_adapter.reset();
    }

    /// Returns when the module has processed the buffer: the second of two empty ones waits until it has.
    void process(const std::string& buffer, unsigned device)
    {
        for (const std::string& each : {buffer, std::string{}, std::string{}}) {
            m_platform.driver().deliver(each.data(), static_cast<unsigned>(each.size()), device);
        }
    }

    simulated::Json traceLines(std::uint64_t since) const { return m_platform.traceLines(since); }

private:
    simulated::Platform& m_platform = simulated::Platform::instance();
    std::unique_ptr<IVornipcAdapter> m_adapter;
};

std::string bufferOf(const MessageDefinition& definition)
{
    std::string id;
    if (definition.header == MessageHeader::signal) {
        for (const unsigned shift : {24U, 16U, 8U, 0U}) {
            id += static_cast<char>(static_cast<unsigned char>(definition.id >> shift));
        }
    }
    return id + definition.create()->encode();
}

/// The first line of a handler; those of the link come before it.
bool isOfHandler(const simulated::Json& line)
{
    const std::string tag = line["tag"];
    return tag.starts_with("KRO.VORNIPC.") && tag != "KRO.VORNIPC.MH" &&
           tag != "KRO.VORNIPC.VornipcMessageClientOnTarget";
}

} // namespace

std::map<std::string, ServedBy> surveyHandlers()
{
    RunningModule module;
    std::map<std::string, ServedBy> found;
    std::uint64_t next = module.traceLines(0)["next"];
    for (const MessageDefinition& definition : messageCatalogue()) {
        if (definition.direction == MessageDirection::out &&
            findMessage(definition.id, definition.header, MessageDirection::in) != nullptr) {
            continue; // the module takes a message of this id for the other one
        }
        module.process(bufferOf(definition), definition.header == MessageHeader::ps ? 1 : 0);
        const simulated::Json trace = module.traceLines(next);
        trace["next"].get_to(next);
        for (const auto& line : trace["lines"]) {
            if (isOfHandler(line)) {
                found.emplace(definition.name, ServedBy{line["file"], line["method"]});
                break;
            }
        }
    }
    return found;
}
