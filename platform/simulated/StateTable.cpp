#include "StateTable.h"

#include "LimitedPowerList.h"
#include "OperationTable.h"
#include "RadioInventory.h"
#include "SRadioFrameItem.h"

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

namespace simulated {

namespace {

using i8 = std::int8_t;
using i32 = std::int32_t;
using u8 = std::uint8_t;
using u32 = std::uint32_t;

/// A text as wide as its field in the inventory.
template <class Field>
StateRule inventoryText(Field RadioInventory::*field, const char* byDefault)
{
    return StateRule::text((RadioInventory{}.*field).size(), byDefault);
}

StateRule inventoryRules()
{
    return StateRule::object({
        {"productName", inventoryText(&RadioInventory::productName, "Simulated radio 18 GHz")},
        {"hwProductNumber", inventoryText(&RadioInventory::hwProductNumber, "SIM 100 18/1")},
        {"hwRevision", inventoryText(&RadioInventory::hwRevision, "R1A")},
        {"serialNumber", inventoryText(&RadioInventory::serialNumber, "")},
        {"swProductNumber", inventoryText(&RadioInventory::swProductNumber, "SIM 200 18")},
        {"swRevision", inventoryText(&RadioInventory::swRevision, "R2B03")},
        {"resetType", StateRule::number<u32>(0)},
        {"supplyVoltage", StateRule::number<u8>(1)},
    });
}

StateRule radioRules()
{
    return StateRule::object({
        {"up", StateRule::flag(true)},
        {"temperature", StateRule::number<i8>(31)},
        {"transmitterState", StateRule::number<i32>(1)},
        {"rfLoop", StateRule::number<i32>(0)},
        {"active", StateRule::flag(true)},
        {"rfPower", StateRule::object({
                        {"output", StateRule::number<i32>(20)},
                        {"input", StateRule::number<i32>(-450)},
                    })},
        {"compatibilityCodes",
         StateRule::list(12, 12, StateRule::number<u32>(0), {1, 3, 0, 1, 1, 91, 1, 3, 0, 0, 0, 0})},
        {"subBands", StateRule::list(0, 255, StateRule::number<u8>(0), {1, 2, 3})},
        {"selectedSubBand", StateRule::number<u8>(1)},
        {"inventory", inventoryRules()},
    });
}

/// The 18 GHz band in kHz: steps of 250 kHz, the two directions 1010 MHz apart.
StateRule channelPlanRules()
{
    return StateRule::object({
        {"frequencyBand", StateRule::number<u32>(18)},
        {"subBand", StateRule::number<u32>(1)},
        {"stepSize", StateRule::number<u32>(250)},
        {"rfBaseTxFrequency", StateRule::number<u32>(17'700'000)},
        {"rfBaseRxFrequency", StateRule::number<u32>(18'710'000)},
        {"rfStepLimitLowTx", StateRule::number<u32>(40)},
        {"rfStepLimitHighTx", StateRule::number<u32>(1960)},
        {"rfStepLimitLowRx", StateRule::number<u32>(40)},
        {"rfStepLimitHighRx", StateRule::number<u32>(1960)},
    });
}

StateRule systemPowerRules()
{
    return StateRule::object({
        {"referenceSec", StateRule::number<i32>(2)},
        {"transmitterOff", StateRule::flag(false)},
        {"atpcTarget", StateRule::number<i32>(-4500)},
        {"minOutputPower", StateRule::number<i32>(0)},
        {"maxOutputPower", StateRule::number<i32>(2000)},
        {"inputPowerThreshold", StateRule::number<i32>(-7500)},
    });
}

StateRule outputPowerRules()
{
    const Json powers = {{31, 2400}, {41, 2200}, {51, 2150},  {61, 2100},  {71, 2050},
                         {81, 2000}, {91, 1950}, {101, 1900}, {111, 1850}, {121, 1800}};
    return StateRule::object({
        {"highestModulationBit", StateRule::number<u32>(0x1000)},
        {"pairs", StateRule::list(0, LimitedPowerList::capacity,
                                  StateRule::list(2, 2, StateRule::number<i32>(0), Json::array()), powers)},
        {"minOutputPower", StateRule::number<i32>(-500)},
        {"highPowerReduction", StateRule::number<i32>(0)},
    });
}

StateRule channelRules()
{
    return StateRule::object({
        {"radio", radioRules()},
        {"channelPlan", channelPlanRules()},
        {"rfLoopAvailable", StateRule::flag(true)},
        {"acm", StateRule::object({
                    {"engineEnabled", StateRule::flag(true)},
                    {"min", StateRule::number<i32>(31)},
                    {"max", StateRule::number<i32>(121)},
                })},
        {"frequency", StateRule::object({
                          {"tx", StateRule::number<u32>(17'800'000)},
                          {"rx", StateRule::number<u32>(18'810'000)},
                      })},
        {"systemPower", systemPowerRules()},
        {"outputPower", outputPowerRules()},
        {"taps", StateRule::flag(false)},
        {"ifLoop", StateRule::flag(false)},
        {"trafficEnabled", StateRule::flag(true)},
        {"quiesced", StateRule::flag(false)},
        {"radioFrameId", StateRule::number<u32>(1)},
        {"txMaxAcmLimit", StateRule::number<u32>(30)},
        {"continuousWave", StateRule::flag(false)},
    });
}

/// Two frame formats of 28 MHz and 56 MHz; capacities in Mbit/s.
Json defaultFrameFormats()
{
    const auto frameFormat = [](u32 frameId, i32 capacityPerBit) {
        const char* const constellations[] = {"4QAM",   "16QAM",  "32QAM",   "64QAM",   "128QAM",
                                              "256QAM", "512QAM", "1024QAM", "2048QAM", "4096QAM"};
        const i32 bits[] = {2, 4, 5, 6, 7, 8, 9, 10, 11, 12};
        Json modes = Json::array();
        for (std::size_t i = 0; i < std::size(bits); ++i) {
            modes.push_back({{"name", constellations[i]}, {"capacity", bits[i] * capacityPerBit}});
        }
        return Json{{"frameId", frameId}, {"modes", std::move(modes)}};
    };
    return Json::array({frameFormat(1, 23), frameFormat(2, 46)});
}

StateRule frameFormatRules()
{
    const StateRule mode = StateRule::record({
        {"name", StateRule::anyText()},
        {"capacity", StateRule::number<i32>(0)},
    });
    const StateRule frameFormat = StateRule::record({
        {"frameId", StateRule::number<u32>(0)},
        {"modes", StateRule::list(0, SRadioFrameItem::capacity, mode, Json::array())},
    });
    return StateRule::list(0, std::numeric_limits<u32>::max(), frameFormat, defaultFrameFormats());
}

StateRule interfaceRules(unsigned channels)
{
    StateRule::Members members;
    for (const std::string& name : interfaceNames(channels)) {
        members.emplace_back(name, StateRule::flag(true));
    }
    return StateRule::object(std::move(members));
}

} // namespace

const StateRule& stateRules()
{
    static const StateRule rules = StateRule::object({
        {"unit", StateRule::object({
                     {"productId", StateRule::number<u32>(3)},
                     {"slotId", StateRule::number<u32>(0)},
                 })},
        {"channels", StateRule::object({{"1", channelRules()}, {"2", channelRules()}})},
        {"frameFormats", frameFormatRules()},
        {"interfaces", interfaceRules(2)},
    });
    return rules;
}

Json defaultState(unsigned channels)
{
    Json state = stateRules().byDefault();
    if (channels < 2) {
        state["channels"].erase("2");
        state["interfaces"] = interfaceRules(channels).byDefault();
    }
    for (const auto& [number, channel] : state["channels"].items()) {
        channel["radio"]["inventory"]["serialNumber"] = "SIM000000" + number;
    }
    return state;
}

} // namespace simulated
