#include "Core.h"
#include "SimulatedInterfaces.h"

#include "IAcmHandler.h"
#include "IDspApi.h"
#include "IFrequencyController.h"
#include "IIfLoopDriver.h"
#include "ITapsController.h"

namespace simulated {

namespace {

class SimulatedAcmHandler final : public IAcmHandler {
public:
    SimulatedAcmHandler(Core& core, std::int32_t channel)
        : m_operations{core.operations(IAcmHandler::interfaceName(channel), channel)}
    {
    }

    Result getMinMaxModulationAndCode(EModulationAndCodeType* min, EModulationAndCodeType* max) const override
    {
        return m_operations.run("getMinMaxModulationAndCode", {}, [&](Json& channel) {
            if (min == nullptr || max == nullptr) {
                return resultFailed;
            }
            *min = EModulationAndCodeType{channel["acm"]["min"].get<std::int32_t>()};
            *max = EModulationAndCodeType{channel["acm"]["max"].get<std::int32_t>()};
            return resultOk;
        });
    }

    Result isAcmEngineEnabled(bool* enabled) const override
    {
        return m_operations.run("isAcmEngineEnabled", {}, [&](Json& channel) {
            if (enabled == nullptr) {
                return resultFailed;
            }
            channel["acm"]["engineEnabled"].get_to(*enabled);
            return resultOk;
        });
    }

private:
    mutable Operations m_operations; ///< locks by itself
};

class SimulatedFrequencyController final : public IFrequencyController {
public:
    SimulatedFrequencyController(Core& core, std::int32_t channel)
        : m_operations{core.operations(IFrequencyController::interfaceName(channel), channel)}
    {
    }

    std::uint32_t getTxFrequency() override
    {
        return m_operations.run("getTxFrequency", {},
                                [](Json& channel) { return channel["frequency"]["tx"].get<std::uint32_t>(); });
    }

    std::uint32_t getRxFrequency() override
    {
        return m_operations.run("getRxFrequency", {},
                                [](Json& channel) { return channel["frequency"]["rx"].get<std::uint32_t>(); });
    }

private:
    Operations m_operations;
};

class SimulatedTapsController final : public ITapsController {
public:
    SimulatedTapsController(Core& core, std::int32_t channel)
        : m_operations{core.operations(ITapsController::interfaceName(channel), channel)}
    {
    }

    Result setTaps(bool on) override
    {
        return m_operations.run("setTaps", {{"on", on}}, [&](Json& channel) {
            channel["taps"] = on;
            return resultOk;
        });
    }

private:
    Operations m_operations;
};

class SimulatedIfLoopDriver final : public IIfLoopDriver {
public:
    SimulatedIfLoopDriver(Core& core, std::int32_t channel)
        : m_operations{core.operations(IIfLoopDriver::interfaceName(RadioChannel{channel}), channel)}
    {
    }

    int getIfLoopState(bool& active) override
    {
        return m_operations.run("getIfLoopState", {}, [&](Json& channel) {
            channel["ifLoop"].get_to(active);
            return 0;
        });
    }

    int setIfLoop(bool on, int channelIndex) override
    {
        return m_operations.run("setIfLoop", {{"on", on}, {"channelIndex", channelIndex}}, [&](Json& channel) {
            channel["ifLoop"] = on;
            return 0;
        });
    }

private:
    Operations m_operations;
};

class SimulatedDspApi final : public IDspApi {};

} // namespace

void addChannelSettings(InterfacesByName& interfaces, Core& core, std::int32_t channel)
{
    const RadioChannel ct{channel};
    interfaces[IAcmHandler::interfaceName(channel)] = std::make_shared<SimulatedAcmHandler>(core, channel);
    interfaces[IFrequencyController::interfaceName(channel)] =
        std::make_shared<SimulatedFrequencyController>(core, channel);
    interfaces[ITapsController::interfaceName(channel)] = std::make_shared<SimulatedTapsController>(core, channel);
    interfaces[IIfLoopDriver::interfaceName(ct)] = std::make_shared<SimulatedIfLoopDriver>(core, channel);
    interfaces[IDspApi::interfaceName(ct)] = std::make_shared<SimulatedDspApi>();
}

} // namespace simulated
