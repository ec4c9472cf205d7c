#include "Core.h"
#include "SimulatedInterfaces.h"

#include "IAlarmHandler.h"
#include "IHardwareConfigurationHandler.h"
#include "IRlbspKroApi.h"
#include "ITrafHandler.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace simulated {

namespace {

SRadioFrameItem frameItemOf(const Json& format)
{
    SRadioFrameItem item;
    format["frameId"].get_to(item.frameId);
    const Json& modes = format["modes"];
    std::transform(modes.begin(), modes.end(), item.modes.begin(), [](const Json& mode) {
        return SRadioFrameMode{mode["name"].get<std::string>(), mode["capacity"].get<std::int32_t>()};
    });
    return item;
}

class SimulatedHardwareConfigurationHandler final : public IHardwareConfigurationHandler {
public:
    explicit SimulatedHardwareConfigurationHandler(Core& core) : m_operations{core.operations(interfaceName())} {}

    Result getRadioFrameId(RadioChannel channel, std::uint32_t& radioFrameId) override
    {
        return m_operations.run("getRadioFrameId", {{"channel", channel}}, [&](Json& document) {
            const Json* const found = findChannel(document, channel);
            if (found == nullptr) {
                return resultUnknownObject;
            }
            found->at("radioFrameId").get_to(radioFrameId);
            return resultOk;
        });
    }

    Result getFrameFormatList(unsigned list, std::vector<SRadioFrameItem>& items, std::uint32_t& count) const override
    {
        return m_operations.run("getFrameFormatList", {{"list", list}}, [&](Json& document) {
            items.clear();
            for (const Json& format : document["frameFormats"]) {
                items.push_back(frameItemOf(format));
            }
            count = static_cast<std::uint32_t>(items.size());
            return resultOk;
        });
    }

private:
    mutable Operations m_operations; ///< locks by itself
};

class SimulatedAlarmHandler final : public IAlarmHandler {
public:
    explicit SimulatedAlarmHandler(Core& core) : m_core{core}, m_operations{core.operations(interfaceName())} {}

    void setMmuInService(bool inService) override { note("setMmuInService", {{"inService", inService}}); }

    void setRauInService(RadioChannel channel, bool inService) override
    {
        note("setRauInService", {{"channel", channel}, {"inService", inService}});
    }

    void setTerminalUp(bool up) override { note("setTerminalUp", {{"up", up}}); }

    void notifyNodeRestart() override { note("notifyNodeRestart", {}); }

    void notifyRauRestart(RadioChannel channel) override { note("notifyRauRestart", {{"channel", channel}}); }

    void registerFaultCallback(IAlarmSignalHandlerCallback* callback) override
    {
        m_operations.run("registerFaultCallback", {{"callback", callback != nullptr}},
                         [&] { m_core.faultCallback.set(callback); });
    }

private:
    void note(const char* operation, Json arguments)
    {
        m_operations.run(operation, std::move(arguments), [] {});
    }

    Core& m_core;
    Operations m_operations;
};

class SimulatedTrafHandler final : public ITrafHandler {
public:
    explicit SimulatedTrafHandler(Core& core) : m_operations{core.operations(interfaceName())} {}

    int enableTraffic(RadioChannel channel, bool enable) override
    {
        return set("enableTraffic", "enable", "trafficEnabled", channel, enable);
    }

    int quiesceChannel(RadioChannel channel, bool quiesce) override
    {
        return set("quiesceChannel", "quiesce", "quiesced", channel, quiesce);
    }

private:
    int set(const char* operation, const char* argument, const char* setting, RadioChannel channel, bool value)
    {
        return m_operations.run(operation, {{"channel", channel}, {argument, value}}, [&](Json& document) {
            Json* const found = findChannel(document, channel);
            if (found == nullptr) {
                return static_cast<int>(resultUnknownObject);
            }
            (*found)[setting] = value;
            return 0;
        });
    }

    Operations m_operations;
};

class SimulatedRlbspKroApi final : public IRlbspKroApi {
public:
    explicit SimulatedRlbspKroApi(Core& core) : m_core{core}, m_operations{core.operations(interfaceName())} {}

    void registerBpmCallback(BpmCallback* callback) override
    {
        m_operations.run("registerBpmCallback", {{"callback", callback != nullptr}},
                         [&] { m_core.bpmCallback.set(callback); });
    }

    void initialize() override
    {
        m_operations.run("initialize", {}, [] {});
    }

    void sendBpmResponse(std::span<const std::uint8_t> response) override
    {
        m_operations.run("sendBpmResponse", {{"response", fmt::format("{:02x}", fmt::join(response, ""))}}, [] {});
    }

private:
    Core& m_core;
    Operations m_operations;
};

} // namespace

void addUnit(InterfacesByName& interfaces, Core& core)
{
    interfaces[IHardwareConfigurationHandler::interfaceName()] =
        std::make_shared<SimulatedHardwareConfigurationHandler>(core);
    interfaces[IAlarmHandler::interfaceName()] = std::make_shared<SimulatedAlarmHandler>(core);
    interfaces[ITrafHandler::interfaceName()] = std::make_shared<SimulatedTrafHandler>(core);
    interfaces[IRlbspKroApi::interfaceName()] = std::make_shared<SimulatedRlbspKroApi>(core);
}

} // namespace simulated
