#include "support/SimulatedPlatformFixture.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using simulated::Json;
using simulated::StateError;
using testing::AllOf;
using testing::HasSubstr;

class SimulatedPlatformState : public SimulatedPlatformFixture {
protected:
    std::string refusal(const std::string& patch)
    {
        try {
            m_platform.patchState(Json::parse(patch));
        } catch (const StateError& error) {
            return error.what();
        }
        return "accepted";
    }
};

TEST_F(SimulatedPlatformState, RefusesWhatDoesNotFitAndNamesPathAndRemedy)
{
    struct Case {
        std::string patch;
        std::string path;
        std::string remedy;
    };
    const std::vector<Case> cases{
        {R"([1])", "the patch", "an object"},
        {R"({"channel": {}})", "channel", R"("channels")"},
        {R"({"channels": {"3": {}}})", "channels.3", R"("1")"},
        {R"({"channels": {"1": {"radio": {"temperture": 1}}}})", "channels.1.radio.temperture", R"("temperature")"},
        {R"({"channels": {"1": {"radio": {"temperature": 128}}}})", "channels.1.radio.temperature", "-128 to 127"},
        {R"({"channels": {"1": {"radio": {"temperature": -129}}}})", "channels.1.radio.temperature", "-128 to 127"},
        {R"({"channels": {"1": {"radio": {"temperature": 1.0}}}})", "channels.1.radio.temperature", "whole number"},
        {R"({"channels": {"1": {"radio": {"up": 1}}}})", "channels.1.radio.up", "true or false"},
        {R"({"channels": {"1": {"radio": {"inventory": {"supplyVoltage": 256}}}}})",
         "channels.1.radio.inventory.supplyVoltage", "0 to 255"},
        {R"({"channels": {"1": {"radio": {"inventory": {"hwRevision": "ääääääää1"}}}}})",
         "channels.1.radio.inventory.hwRevision", "17 bytes are too long, 16 fit"},
        {R"({"channels": {"1": {"radio": {"compatibilityCodes": [1]}}}})", "channels.1.radio.compatibilityCodes",
         "a list of 12"},
        {R"({"channels": {"1": {"radio": {"subBands": [1, -1]}}}})", "channels.1.radio.subBands[1]", "0 to 255"},
        {R"({"channels": {"1": {"outputPower": {"pairs": [[31]]}}}})", "channels.1.outputPower.pairs[0]",
         "a list of 2"},
        {R"({"channels": {"1": {"taps": {}}}})", "channels.1.taps", "true or false"},
        {R"({"channels": {"1": {"taps": null}}})", "channels.1.taps", "cannot be removed"},
        {R"({"channels": {"2": null}})", "channels.2", "cannot be removed"},
        {R"({"channels": {"1": {"frequency": {"tx": 4294967296}}}})", "channels.1.frequency.tx", "0 to 4294967295"},
        {R"({"channels": {"1": {"frequency": {"tx": 18446744073709551615}}}})", "channels.1.frequency.tx", "range"},
        {R"({"frameFormats": [{"frameId": 1}]})", "frameFormats[0].modes", "missing"},
        {R"({"interfaces": {"IRadio_3": false}})", "interfaces.IRadio_3", R"("IRadio_1")"},
        {R"({"hits": {}})", "hits", "read only"},
        {R"({"results": 1})", "results", "object"},
        {R"({"results": {"IRadio_1.setRFloop": 1}})", "results.IRadio_1.setRFloop", R"("IRadio_1.setRfLoop")"},
        {R"({"results": {"IRadio_1.setRFloop": null}})", "results.IRadio_1.setRFloop", R"("IRadio_1.setRfLoop")"},
        {R"({"results": {"IRadio_1.setActive": 0}})", "results.IRadio_1.setActive", "returns nothing"},
        {R"({"results": {"IRadio_1.isRadioUp": 2}})", "results.IRadio_1.isRadioUp", "0 to 1"},
        {R"({"results": {"IRadio_1.isRadioUp": true}})", "results.IRadio_1.isRadioUp", "whole number"},
        {R"({"results": {"IRadio_1.setRfLoop": -1}})", "results.IRadio_1.setRfLoop", "0 to 4294967295"},
        {R"({"results": {"ITrafHandler.enableTraffic": -2147483649}})", "results.ITrafHandler.enableTraffic", "range"},
        {R"({"resultTexts": {"IRadio_1.setRfLoop": "x"}})", "resultTexts.IRadio_1.setRfLoop", "no text"},
        {R"({"errorIndicators": {"ITiDisableModulation.execute": 1}})", "errorIndicators.ITiDisableModulation.execute",
         "no error indicator"},
        {R"({"delaysMs": {"IRadio_1.setRfLoop": -1}})", "delaysMs.IRadio_1.setRfLoop", "0 to 4294967295"},
    };
    const Json before = m_platform.state();
    for (const Case& each : cases) {
        EXPECT_THAT(refusal(each.patch), AllOf(testing::StartsWith(each.path + ": "), HasSubstr(each.remedy)))
            << each.patch;
    }
    EXPECT_EQ(m_platform.state(), before);
}

TEST_F(SimulatedPlatformState, AppliesNothingOfAPatchThatIsWrongAtItsEnd)
{
    const Json before = m_platform.state();
    EXPECT_NE(refusal(R"({"unit": {"productId": 5}, "results": {"IRadio_1.setRfLoop": 1}, "frameFormats": 7})"),
              "accepted");
    EXPECT_EQ(m_platform.state(), before);
}

TEST_F(SimulatedPlatformState, RefusesNestingTooDeepToBeCopied)
{
    const std::string deep = std::string(400'000, '[') + std::string(400'000, ']');
    for (const char* key : {"unit", "frameFormats", "results", "unknown"}) {
        EXPECT_NE(refusal(R"({")" + (key + (R"(": )" + deep + "}"))), "accepted") << key;
    }
    EXPECT_NE(refusal(R"({"results": {"IRadio_1.restart": )" + deep + "}}"), "accepted");
}

TEST_F(SimulatedPlatformState, TakesValuesUpToTheirLimits)
{
    struct Case {
        std::string patch;
        std::string pointer;
        Json expected;
    };
    const std::string width32(32, 'x');
    const std::vector<Case> cases{
        {R"({"channels": {"1": {"acm": {"min": -2147483648}}}})", "/channels/1/acm/min", -2147483648LL},
        {R"({"channels": {"1": {"acm": {"max": 2147483647}}}})", "/channels/1/acm/max", 2147483647},
        {R"({"channels": {"2": {"radio": {"temperature": -128}}}})", "/channels/2/radio/temperature", -128},
        {R"({"unit": {"productId": 4294967295}})", "/unit/productId", 4294967295U},
        {R"({"channels": {"1": {"radio": {"inventory": {"productName": ")" + width32 + R"("}}}}})",
         "/channels/1/radio/inventory/productName", width32},
        {R"({"frameFormats": []})", "/frameFormats", Json::array()},
        {R"({"results": {"ITrafHandler.enableTraffic": 4294967295}})", "/results/ITrafHandler.enableTraffic",
         4294967295U},
        {R"({"results": {"ITrafHandler.enableTraffic": null}})", "/results", Json::object()},
        {R"({"results": {"IRadio_1.restart": null}})", "/results", Json::object()},
        {R"({"results": {"IRadio_1.restart": 1}})", "/results/IRadio_1.restart", 1},
        {R"({"results": null})", "/results", Json::object()},
        {R"({"delaysMs": null})", "/hits/delaysMs", Json::object()},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(refusal(each.patch), "accepted") << each.patch;
        EXPECT_EQ(at(each.pointer), each.expected) << each.patch;
    }
}

TEST_F(SimulatedPlatformState, ItsOwnDefaultsAreAValidPatch)
{
    Json defaults = m_platform.state();
    defaults.erase("hits");
    EXPECT_EQ(refusal(defaults.dump()), "accepted");
}

TEST_F(SimulatedPlatformState, OneChannelUnitAcceptsChannelTwoWithoutEffect)
{
    restart(1);
    const Json before = m_platform.state();
    EXPECT_EQ(refusal(R"({"channels": {"2": {"radio": {"up": false}}}, "interfaces": {"IRadio_2": false}})"),
              "accepted");
    EXPECT_EQ(m_platform.state(), before);
    EXPECT_FALSE(before["channels"].contains("2"));
    EXPECT_EQ(InterfaceBroker::getInstance().lookup("IRadio_2"), nullptr);
}

TEST_F(SimulatedPlatformState, AnInterfaceSwitchedOffIsNotRegistered)
{
    restart(2, {{"interfaces", {{"IRadio_2", false}}}});
    m_platform.patchState({{"interfaces", {{"IRadio_1", false}}}}); // too late
    EXPECT_NE(InterfaceBroker::getInstance().lookup("IRadio_1"), nullptr);
    EXPECT_EQ(InterfaceBroker::getInstance().lookup("IRadio_2"), nullptr);
}

} // namespace
