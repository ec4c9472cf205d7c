#include "Core.h"
#include "SimulatedInterfaces.h"

namespace simulated {

namespace {

class SimulatedDisableModulation final : public ITiDisableModulation {
public:
    explicit SimulatedDisableModulation(Core& core) : m_operations{core.operations("ITiDisableModulation")} {}

    Outcome execute(const Request& request, Reply& reply) override
    {
        const Json arguments{{"channel", request.channel},
                             {"byte1", request.byte1},
                             {"disable", request.disable},
                             {"byte2", request.byte2},
                             {"replyZero", reply.word == 0 && reply.byte == 0}};
        Outcome outcome;
        outcome.code = m_operations.run("execute", arguments, [&](Json& document) {
            Json* const channel = findChannel(document, request.channel);
            if (channel == nullptr) {
                return resultUnknownObject;
            }
            (*channel)["continuousWave"] = request.disable != 0;
            return resultOk;
        });
        outcome.text = m_operations.injectedText("execute").value_or("");
        return outcome;
    }

private:
    Operations m_operations;
};

} // namespace

std::unique_ptr<ITiDisableModulation> makeDisableModulation(Core& core)
{
    return std::make_unique<SimulatedDisableModulation>(core);
}

} // namespace simulated
