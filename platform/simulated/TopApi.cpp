#include "Core.h"

#include "kro_top_api.h"

namespace {

using simulated::Json;
using simulated::Operations;

/// Sets a channel's part of the state, or answers that there is no such channel.
template <class Set>
auto onChannel(RadioChannel channel, Set set)
{
    return [channel, set](Json& document) {
        Json* const found = simulated::findChannel(document, channel);
        if (found == nullptr) {
            return resultUnknownObject;
        }
        set(*found);
        return resultOk;
    };
}

template <class Effect>
kro_top_api::StandardResponse request(const char* operation, Json arguments, Effect effect)
{
    Operations operations = simulated::core().operations("kro_top_api");
    kro_top_api::StandardResponse response;
    response.m_resultCode = operations.run(operation, std::move(arguments), effect);
    response.m_errorIndicator =
        operations.injectedErrorIndicator(operation).value_or(isFailure(response.m_resultCode) ? 1 : 0);
    response.m_description = operations.injectedText(operation).value_or("");
    return response;
}

} // namespace

namespace kro_top_api {

StandardResponse criSetRadioChannelNearEnd(const CriSetRadioChannelNearEnd::Command& command)
{
    const Json arguments{{"channel", command.radioChannel},
                         {"radioFrameId", command.radioFrameId},
                         {"minModulation", command.minModulation},
                         {"maxModulation", command.maxModulation},
                         {"referenceSec", command.referenceSec},
                         {"txFrequency", command.txFrequency},
                         {"rxFrequency", command.rxFrequency},
                         {"restDefault", command.further == CriSetRadioChannelNearEnd::Further{}}};
    const auto configure = [&](Json& channel) {
        channel["radioFrameId"] = command.radioFrameId;
        channel["acm"]["min"] = command.minModulation;
        channel["acm"]["max"] = command.maxModulation;
        channel["systemPower"]["referenceSec"] = command.referenceSec;
        channel["frequency"]["tx"] = command.txFrequency;
        channel["frequency"]["rx"] = command.rxFrequency;
    };
    return request("criSetRadioChannelNearEnd", arguments, onChannel(command.radioChannel, configure));
}

StandardResponse criSetFarEndPmaxCapability(const CriSetFarEndPmaxCapability::Command& command)
{
    Json pmax = Json::array();
    for (const ModulationPmaxPair& pair : command.pmax) {
        pmax.push_back(Json::array({pair.modulation, pair.maximumOutputPower}));
    }
    return request("criSetFarEndPmaxCapability", {{"channel", command.radioChannel}, {"pmax", std::move(pmax)}},
                   onChannel(command.radioChannel, [](Json&) {}));
}

} // namespace kro_top_api
