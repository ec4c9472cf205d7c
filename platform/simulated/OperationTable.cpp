#include "OperationTable.h"

#include <functional>
#include <map>

namespace simulated {

namespace {

struct Operation {
    const char* name;
    ResultKind kind = ResultKind::code;
};

/// Where an interface is found, and under which names.
enum class Home {
    channel, ///< in the broker, once a channel, with the channel number behind its name
    unit,    ///< in the broker, once
    outside, ///< not in the broker: plain functions, singletons, what the framework hands over
};

struct Interface {
    const char* name;
    Home home;
    std::vector<Operation> operations;
};

/// Every interface and every operation, in the order in which the broker's names are listed.
const std::vector<Interface>& interfaces()
{
    using enum ResultKind;
    static const std::vector<Interface> table{
        {"IRadio",
         Home::channel,
         {{"registerCallback", none},
          {"isRadioUp", flag},
          {"getInventory"},
          {"getCompatibilityCodes"},
          {"getSupportedSubBands"},
          {"selectSubBand"},
          {"getTemperature"},
          {"setDefaultConfiguration"},
          {"restart"},
          {"getCurrentRfPower"},
          {"getTransmitterState", number},
          {"getRfLoopState", number},
          {"setRfLoop"},
          {"setActive", none}}},
        {"IRadioCapability", Home::channel, {{"getRfChannelPlan"}, {"getRfLoopCapability"}}},
        {"IAcmHandler", Home::channel, {{"getMinMaxModulationAndCode"}, {"isAcmEngineEnabled"}}},
        {"IFrequencyController", Home::channel, {{"getTxFrequency"}, {"getRxFrequency"}}},
        {"IOutputPowerCalculator", Home::channel, {{"getLimitedPower"}, {"setHighPowerReduction"}}},
        {"ISystemPowerController",
         Home::channel,
         {{"getReferenceSec"},
          {"setInputPowerThreshold"},
          {"getTransmitterOff"},
          {"setTransmitterOff"},
          {"getRequestedAtpcTarget"},
          {"getRequestedMinOutputPower"},
          {"getRequestedMaxOutputPower"},
          {"notifyRequestedPowerSettings"}}},
        {"ITapsController", Home::channel, {{"setTaps"}}},
        {"IDspApi", Home::channel, {}},
        {"IIfLoopDriver", Home::channel, {{"getIfLoopState", number}, {"setIfLoop", number}}},
        {"IHardwareConfigurationHandler", Home::unit, {{"getRadioFrameId"}, {"getFrameFormatList"}}},
        {"IAlarmHandler",
         Home::unit,
         {{"setMmuInService", none},
          {"setRauInService", none},
          {"setTerminalUp", none},
          {"notifyNodeRestart", none},
          {"notifyRauRestart", none},
          {"registerFaultCallback", none}}},
        {"ITrafHandler", Home::unit, {{"enableTraffic", number}, {"quiesceChannel", number}}},
        {"IRlbspKroApi", Home::unit, {{"registerBpmCallback", none}, {"initialize", none}, {"sendBpmResponse", none}}},
        {"ITiDisableModulation", Home::outside, {{"execute", codeAndText}}},
        {"kro_top_api",
         Home::outside,
         {{"criSetRadioChannelNearEnd", topApiResponse}, {"criSetFarEndPmaxCapability", topApiResponse}}},
        {"TrfMlm", Home::outside, {{"setTxMaxAcmLimit", none}}},
        {"Bsp", Home::outside, {{"setSlotId", none}, {"getProductId"}}},
        {"thread_utilities", Home::outside, {{"setScheduling", none}, {"setName", none}}},
        {"ripc", Home::outside, {{"hijack_register_receive_callback", none}, {"sendBufferToPci", number}}},
        {"InterfaceBroker", Home::outside, {{"lookup", flag}}},
        {"CModuleManager", Home::outside, {{"RegisterModule", none}}},
    };
    return table;
}

constexpr unsigned mostChannels = 2;

std::vector<std::string> namesOf(const Interface& interface, unsigned channels)
{
    if (interface.home != Home::channel) {
        return {interface.name};
    }
    std::vector<std::string> names;
    for (unsigned channel = 1; channel <= channels; ++channel) {
        names.push_back(interface.name + ("_" + std::to_string(channel)));
    }
    return names;
}

using KindByName = std::map<std::string, ResultKind, std::less<>>;

KindByName buildKinds()
{
    KindByName kinds;
    for (const Interface& interface : interfaces()) {
        for (const std::string& name : namesOf(interface, mostChannels)) {
            for (const Operation& operation : interface.operations) {
                kinds.emplace(name + "." + operation.name, operation.kind);
            }
        }
    }
    return kinds;
}

const KindByName& kindsByName()
{
    static const KindByName kinds = buildKinds();
    return kinds;
}

} // namespace

const ResultKind* findOperation(std::string_view name)
{
    const auto found = kindsByName().find(name);
    return found == kindsByName().end() ? nullptr : &found->second;
}

const std::vector<std::string>& operationNames()
{
    static const std::vector<std::string> names = [] {
        std::vector<std::string> list;
        for (const auto& [name, kind] : kindsByName()) {
            list.push_back(name);
        }
        return list;
    }();
    return names;
}

std::vector<std::string> interfaceNames(unsigned channels)
{
    std::vector<std::string> names;
    for (const Interface& interface : interfaces()) {
        if (interface.home != Home::outside) {
            const std::vector<std::string> own = namesOf(interface, channels);
            names.insert(names.end(), own.begin(), own.end());
        }
    }
    return names;
}

} // namespace simulated
