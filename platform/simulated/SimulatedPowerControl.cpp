#include "Core.h"
#include "SimulatedInterfaces.h"

#include "IOutputPowerCalculator.h"
#include "ISystemPowerController.h"

#include <algorithm>

namespace simulated {

namespace {

class SimulatedOutputPowerCalculator final : public IOutputPowerCalculator {
public:
    SimulatedOutputPowerCalculator(Core& core, std::int32_t channel)
        : m_operations{core.operations(IOutputPowerCalculator::interfaceName(channel), channel)}
    {
    }

    Result getLimitedPower(std::uint32_t& calculation, std::uint32_t& highestModulationBit, LimitedPowerList& powers,
                           std::int32_t& minOutputPower) override
    {
        return m_operations.run("getLimitedPower", {}, [&](Json& channel) {
            const Json& source = channel["outputPower"];
            calculation = 1;
            source["highestModulationBit"].get_to(highestModulationBit);
            source["minOutputPower"].get_to(minOutputPower);
            const Json& pairs = source["pairs"];
            powers.count = static_cast<std::uint32_t>(pairs.size());
            std::transform(pairs.begin(), pairs.end(), powers.pairs.begin(), [](const Json& pair) {
                return LimitedPower{EModulationAndCodeType{pair[0].get<std::int32_t>()}, pair[1].get<std::int32_t>()};
            });
            return resultOk;
        });
    }

    Result setHighPowerReduction(std::int32_t reduction) override
    {
        return m_operations.run("setHighPowerReduction", {{"reduction", reduction}}, [&](Json& channel) {
            channel["outputPower"]["highPowerReduction"] = reduction;
            return resultOk;
        });
    }

private:
    Operations m_operations;
};

/// Switching the transmitter off is seen at the radio, too.
void switchTransmitter(Json& channel, bool off)
{
    channel["systemPower"]["transmitterOff"] = off;
    Json& transmitterState = channel["radio"]["transmitterState"];
    const bool isOn = transmitterState.get<int>() != 0;
    if (isOn == off) {
        transmitterState = off ? 0 : 1;
    }
}

class SimulatedSystemPowerController final : public ISystemPowerController {
public:
    SimulatedSystemPowerController(Core& core, std::int32_t channel)
        : m_operations{core.operations(ISystemPowerController::interfaceName(channel), channel)}
    {
    }

    Result getReferenceSec(EReferenceSEC& referenceSec) override
    {
        return m_operations.run("getReferenceSec", {}, [&](Json& channel) {
            referenceSec = EReferenceSEC{channel["systemPower"]["referenceSec"].get<std::int32_t>()};
            return resultOk;
        });
    }

    Result setInputPowerThreshold(std::int32_t threshold) override
    {
        return m_operations.run("setInputPowerThreshold", {{"threshold", threshold}}, [&](Json& channel) {
            channel["systemPower"]["inputPowerThreshold"] = threshold;
            return resultOk;
        });
    }

    Result getTransmitterOff(bool& off) override { return get("getTransmitterOff", "transmitterOff", off); }

    Result setTransmitterOff(bool off, const void* reason) override
    {
        return m_operations.run("setTransmitterOff", {{"off", off}, {"pointerNull", reason == nullptr}},
                                [&](Json& channel) {
                                    switchTransmitter(channel, off);
                                    return resultOk;
                                });
    }

    Result getRequestedAtpcTarget(std::int32_t& atpcTarget) override
    {
        return get("getRequestedAtpcTarget", "atpcTarget", atpcTarget);
    }

    Result getRequestedMinOutputPower(std::int32_t& minOutputPower) override
    {
        return get("getRequestedMinOutputPower", "minOutputPower", minOutputPower);
    }

    Result getRequestedMaxOutputPower(std::int32_t& maxOutputPower) override
    {
        return get("getRequestedMaxOutputPower", "maxOutputPower", maxOutputPower);
    }

    Result notifyRequestedPowerSettings(bool off, std::int32_t atpcTarget, std::int32_t minOutputPower,
                                        std::int32_t maxOutputPower, std::int32_t spare0, std::int32_t spare1) override
    {
        const Json arguments{{"off", off},
                             {"atpcTarget", atpcTarget},
                             {"minOutputPower", minOutputPower},
                             {"maxOutputPower", maxOutputPower},
                             {"spare0", spare0},
                             {"spare1", spare1}};
        return m_operations.run("notifyRequestedPowerSettings", arguments, [&](Json& channel) {
            switchTransmitter(channel, off);
            Json& settings = channel["systemPower"];
            settings["atpcTarget"] = atpcTarget;
            settings["minOutputPower"] = minOutputPower;
            settings["maxOutputPower"] = maxOutputPower;
            return resultOk;
        });
    }

private:
    template <class Value>
    Result get(const char* operation, const char* setting, Value& value)
    {
        return m_operations.run(operation, {}, [&](Json& channel) {
            channel["systemPower"][setting].get_to(value);
            return resultOk;
        });
    }

    Operations m_operations;
};

} // namespace

void addPowerControl(InterfacesByName& interfaces, Core& core, std::int32_t channel)
{
    interfaces[IOutputPowerCalculator::interfaceName(channel)] =
        std::make_shared<SimulatedOutputPowerCalculator>(core, channel);
    interfaces[ISystemPowerController::interfaceName(channel)] =
        std::make_shared<SimulatedSystemPowerController>(core, channel);
}

} // namespace simulated
