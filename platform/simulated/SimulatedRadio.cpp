#include "Core.h"
#include "SimulatedInterfaces.h"

#include "IRadio.h"
#include "IRadioCapability.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace simulated {

namespace {

template <std::size_t width>
void fill(std::array<char, width>& field, const Json& text)
{
    const auto& bytes = text.get_ref<const std::string&>();
    field.fill('\0');
    std::copy_n(bytes.begin(), std::min(width, bytes.size()), field.begin());
}

class SimulatedRadio final : public IRadio {
public:
    SimulatedRadio(Core& core, std::int32_t channel)
        : m_core{core}, m_channel{channel}, m_operations{core.operations(IRadio::interfaceName(channel), channel)}
    {
    }

    void registerCallback(RadioChannel channel, IRadioCallback* callback) override
    {
        m_operations.run("registerCallback", {{"channel", channel}, {"callback", callback != nullptr}},
                         [&] { m_core.radioCallback(channel).set(callback); });
    }

    bool isRadioUp() override
    {
        return m_operations.run("isRadioUp", {}, [](Json& channel) { return channel["radio"]["up"].get<bool>(); });
    }

    Result getInventory(RadioInventory& inventory) override
    {
        return m_operations.run("getInventory", {}, [&](Json& channel) {
            const Json& source = channel["radio"]["inventory"];
            fill(inventory.productName, source["productName"]);
            fill(inventory.hwProductNumber, source["hwProductNumber"]);
            fill(inventory.hwRevision, source["hwRevision"]);
            fill(inventory.serialNumber, source["serialNumber"]);
            fill(inventory.swProductNumber, source["swProductNumber"]);
            fill(inventory.swRevision, source["swRevision"]);
            source["resetType"].get_to(inventory.resetType);
            inventory.supplyVoltage = RadioInventory::SupplyVoltages{source["supplyVoltage"].get<std::uint8_t>()};
            return resultOk;
        });
    }

    Result getCompatibilityCodes(CompatibilityCodes& codes) override
    {
        return m_operations.run("getCompatibilityCodes", {}, [&](Json& channel) {
            channel["radio"]["compatibilityCodes"].get_to(codes);
            return resultOk;
        });
    }

    Result getSupportedSubBands(std::vector<std::uint8_t>& subBands) override
    {
        return m_operations.run("getSupportedSubBands", {}, [&](Json& channel) {
            channel["radio"]["subBands"].get_to(subBands);
            return resultOk;
        });
    }

    Result selectSubBand(std::uint8_t subBand) override
    {
        return m_operations.run("selectSubBand", {{"subBand", subBand}}, [&](Json& channel) {
            channel["radio"]["selectedSubBand"] = subBand;
            return resultOk;
        });
    }

    Result getTemperature(std::int8_t& temperature) override
    {
        return m_operations.run("getTemperature", {}, [&](Json& channel) {
            channel["radio"]["temperature"].get_to(temperature);
            return resultOk;
        });
    }

    Result setDefaultConfiguration() override
    {
        return m_operations.run("setDefaultConfiguration", {}, [] { return resultOk; });
    }

    Result restart(std::uint32_t mode) override
    {
        bool accepted = false;
        const Result result = m_operations.run("restart", {{"mode", mode}}, [&] {
            accepted = true;
            return resultOk;
        });
        if (accepted) {
            m_core.restartRadio(m_channel);
        }
        return result;
    }

    Result getCurrentRfPower(std::int32_t& output, std::int32_t& input) override
    {
        return m_operations.run("getCurrentRfPower", {}, [&](Json& channel) {
            const Json& power = channel["radio"]["rfPower"];
            power["output"].get_to(output);
            power["input"].get_to(input);
            return resultOk;
        });
    }

    int getTransmitterState() override
    {
        return m_operations.run("getTransmitterState", {},
                                [](Json& channel) { return channel["radio"]["transmitterState"].get<int>(); });
    }

    int getRfLoopState() override
    {
        return m_operations.run("getRfLoopState", {},
                                [](Json& channel) { return channel["radio"]["rfLoop"].get<int>(); });
    }

    Result setRfLoop(bool on) override
    {
        return m_operations.run("setRfLoop", {{"on", on}}, [&](Json& channel) {
            channel["radio"]["rfLoop"] = on ? 1 : 0;
            return resultOk;
        });
    }

    void setActive(bool active) override
    {
        m_operations.run("setActive", {{"active", active}},
                         [&](Json& channel) { channel["radio"]["active"] = active; });
    }

private:
    Core& m_core;
    std::int32_t m_channel;
    Operations m_operations;
};

class SimulatedRadioCapability final : public IRadioCapability {
public:
    SimulatedRadioCapability(Core& core, std::int32_t channel)
        : m_operations{core.operations(IRadioCapability::interfaceName(RadioChannel{channel}), channel)}
    {
    }

    Result getRfChannelPlan(RfChannelPlan& plan) override
    {
        return m_operations.run("getRfChannelPlan", {}, [&](Json& channel) {
            const Json& source = channel["channelPlan"];
            source["frequencyBand"].get_to(plan.frequencyBand);
            source["subBand"].get_to(plan.subBand);
            source["stepSize"].get_to(plan.stepSize);
            source["rfBaseTxFrequency"].get_to(plan.rfBaseTxFrequency);
            source["rfBaseRxFrequency"].get_to(plan.rfBaseRxFrequency);
            source["rfStepLimitLowTx"].get_to(plan.rfStepLimitLowTx);
            source["rfStepLimitHighTx"].get_to(plan.rfStepLimitHighTx);
            source["rfStepLimitLowRx"].get_to(plan.rfStepLimitLowRx);
            source["rfStepLimitHighRx"].get_to(plan.rfStepLimitHighRx);
            return resultOk;
        });
    }

    Result getRfLoopCapability(RfLoopCapability& capability) override
    {
        return m_operations.run("getRfLoopCapability", {}, [&](Json& channel) {
            channel["rfLoopAvailable"].get_to(capability.rfLoopAvailable);
            return resultOk;
        });
    }

private:
    Operations m_operations;
};

} // namespace

void addRadio(InterfacesByName& interfaces, Core& core, std::int32_t channel)
{
    interfaces[IRadio::interfaceName(channel)] = std::make_shared<SimulatedRadio>(core, channel);
    interfaces[IRadioCapability::interfaceName(RadioChannel{channel})] =
        std::make_shared<SimulatedRadioCapability>(core, channel);
}

} // namespace simulated
