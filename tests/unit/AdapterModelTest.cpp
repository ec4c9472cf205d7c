#include "AdapterModel.h"
#include "support/SimulatedPlatformFixture.h"

#include <limits>
#include <optional>
#include <vector>

namespace {

using namespace kro::device::vornipc;
using Texts = std::vector<std::string>;

/// The model of a two-channel unit. What the simulated radio runs by default is frame format 1 with 4QAM to 4096QAM and
/// class "4H" on 17.8 and 18.81 GHz, which is step 400 in both directions.
class AdapterModelOnPlatform : public SimulatedPlatformFixture {
protected:
    static constexpr RadioChannel channel1{1};
    static constexpr RadioChannel channel2{2};

    AdapterModelOnPlatform() { renew(); }

    void renew(int channels = 2, const Json& patch = Json::object())
    {
        restart(2, patch);
        m_model.emplace(channels);
        m_platform.setTraceLevel("KRO.VORNIPC.AdapterModel", 6);
        m_initialised = m_model->onModuleInit();
        calls();
    }

    AdapterModel& model() { return *m_model; }

    static RfChannelPlan plan(std::uint32_t step, std::uint32_t tx, std::uint32_t rx)
    {
        RfChannelPlan plan;
        plan.stepSize = step;
        plan.rfBaseTxFrequency = tx;
        plan.rfBaseRxFrequency = rx;
        return plan;
    }

    bool receivePlan(RadioChannel ct = channel1)
    {
        return model().onRfChannelPlanReceived(ct, plan(250, 17'700'000, 18'710'000));
    }

    /// Brings channel 1 to where it asks for just what the radio runs.
    void configureAsItRuns()
    {
        EXPECT_TRUE(receivePlan());
        EXPECT_TRUE(model().onSetFrequency(0, 400, 400));
        EXPECT_TRUE(model().onSetFrameFormatReq(0, 1, 2, 29, 4));
    }

    /// @return new platform calls as "IRadio_1.setRfLoop(true)"
    Texts calls()
    {
        Texts texts;
        for (const Json& call : newCalls()) {
            std::string arguments;
            for (const Json& value : call["args"]) {
                arguments += (arguments.empty() ? "" : ", ") + value.dump();
            }
            texts.push_back(call["interface"].get<std::string>() + "." + call["operation"].get<std::string>() + "(" +
                            arguments + ")");
        }
        return texts;
    }

    /// @return the model's new trace lines as "1 method: text", with names and blanks as they are
    Texts traceLines()
    {
        const Json answer = m_platform.traceLines(m_seenLines);
        answer["next"].get_to(m_seenLines);
        Texts texts;
        for (const Json& line : answer["lines"]) {
            texts.push_back(std::to_string(line["level"].get<int>()) + " " + line["method"].get<std::string>() + ": " +
                            line["text"].get<std::string>());
        }
        return texts;
    }

    std::optional<Result> m_initialised;

private:
    std::optional<AdapterModel> m_model;
    std::uint64_t m_seenLines = 0;
};

const Texts queries{"IHardwareConfigurationHandler.getRadioFrameId(1)", "IAcmHandler_1.getMinMaxModulationAndCode()",
                    "ISystemPowerController_1.getReferenceSec()", "IFrequencyController_1.getTxFrequency()",
                    "IFrequencyController_1.getRxFrequency()"};

Texts queriesAnd(const std::string& call)
{
    Texts all = queries;
    all.push_back(call);
    return all;
}

const std::string nearEnd = "1 setRadioChannelNearEnd: setRadioChannelNearEnd(): ";
const std::string failedCall = "1 onSetFrequency: onSetFrequency():  Failed during cal to setRadioChannelNearEnd";

TEST_F(AdapterModelOnPlatform, ConvertsTheNodesNumbering)
{
    const int modulations[] = {143, 30, 31, 32, 40, 41, 42,  50,  51,  52,  60,  61,  62,  70,  71, 72,
                               80,  81, 82, 90, 91, 92, 100, 101, 102, 110, 111, 112, 120, 121, 122};
    int acm = 0;
    for (const int modulation : modulations) {
        EXPECT_EQ(model().convertACM(acm++), modulation);
    }
    const int classes[] = {1000, 1000, 0, 1, 2, 5, 6, 7, 8, 9};
    int sec = 0;
    for (const int referenceSec : classes) {
        EXPECT_EQ(model().convertSEC(sec++), referenceSec);
    }
    for (const int outside : {31, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_EQ(model().convertACM(outside), 31);
        EXPECT_EQ(model().convertSEC(outside), 1000);
    }
    EXPECT_EQ(model().convertSEC(10), 1000);
}

TEST_F(AdapterModelOnPlatform, RefusesChannelsThatItDoesNotHave)
{
    EXPECT_FALSE(receivePlan(RadioChannel{0}));
    EXPECT_FALSE(receivePlan(RadioChannel{3}));
    EXPECT_FALSE(model().onSetFrameFormatReq(-1, 1, 2, 29, 4));
    EXPECT_FALSE(model().onSetFrameFormatReq(2, 1, 2, 29, 4));
    EXPECT_EQ(traceLines(), Texts{});
    for (const int index : {-1, 2}) {
        EXPECT_FALSE(model().onSetFrequency(index, 1, 1));
        EXPECT_EQ(traceLines(),
                  Texts{"1 onSetFrequency: onSetFrequency():  Incorrect radioChannelIndex = " + std::to_string(index)});
    }
    renew(1);
    EXPECT_FALSE(receivePlan(channel2)) << "a unit of one channel";
    renew(255);
    EXPECT_TRUE(receivePlan(channel2)) << "more than two channels count as two";
    EXPECT_FALSE(receivePlan(RadioChannel{3}));
    EXPECT_EQ(calls(), Texts{});
}

TEST_F(AdapterModelOnPlatform, RefusesEverythingWithoutItsInterfaces)
{
    renew(2, {{"interfaces", {{"IOutputPowerCalculator_2", false}}}});
    EXPECT_EQ(m_initialised, 0x8000U);
    traceLines();
    EXPECT_FALSE(receivePlan());
    EXPECT_FALSE(model().onSetFrequency(0, 1, 1));
    EXPECT_FALSE(model().onSetFrameFormatReq(0, 1, 2, 29, 4));
    EXPECT_FALSE(model().onSetFarEndPmaxCapability(channel1, {}));
    EXPECT_EQ(traceLines(), Texts{});
    EXPECT_EQ(calls(), Texts{});
}

TEST_F(AdapterModelOnPlatform, WaitsUntilAChannelIsComplete)
{
    EXPECT_FALSE(model().onSetFrequency(0, 400, 400));
    EXPECT_EQ(traceLines(), Texts{"1 onSetFrequency: onSetFrequency():  Can't set frequency since no channel plan is "
                                  "available"});
    const auto incomplete = [](const std::string& frequency, const std::string& frame) {
        return Texts{"6 setRadioChannelNearEnd: setRadioChannelNearEnd(): ENTER "
                     "setRadioChannelNearEnd(radioChannelIndex=0)",
                     "5 setRadioChannelNearEnd: setRadioChannelNearEnd(): Not completely configured yet, just return. "
                     "Frequency configured: " +
                         frequency + ", Radio frame ID configured:" + frame};
    };
    EXPECT_TRUE(model().onSetFrameFormatReq(0, 1, 2, 29, 4));
    EXPECT_EQ(traceLines(), incomplete("no", "yes")) << "the refused frequency has not been kept";
    renew();
    EXPECT_TRUE(receivePlan());
    traceLines();
    EXPECT_TRUE(model().onSetFrequency(0, 400, 400));
    EXPECT_EQ(traceLines(), incomplete("yes", "no"));
    EXPECT_EQ(calls(), Texts{});
}

TEST_F(AdapterModelOnPlatform, ConfiguresOnlyWhatDiffers)
{
    configureAsItRuns();
    EXPECT_EQ(calls(), queries) << "nothing differs";

    const struct {
        const char* path;
        Json running;
    } differences[] = {{"/channels/1/radioFrameId", 7},
                       {"/channels/1/acm/min", 30},
                       {"/channels/1/acm/max", 122},
                       {"/channels/1/systemPower/referenceSec", 1000},
                       {"/channels/1/frequency/tx", 17'800'001},
                       {"/channels/1/frequency/rx", 4'294'967'295}};
    for (const auto& [path, running] : differences) {
        SCOPED_TRACE(path);
        m_platform.patchState(Json{{path, running}}.unflatten());
        EXPECT_TRUE(model().onSetFrequency(0, 400, 400));
        EXPECT_EQ(calls(), queriesAnd("kro_top_api.criSetRadioChannelNearEnd(1, 1, 31, 121, 2, 17800000, 18810000, "
                                      "true)"));
        EXPECT_TRUE(model().onSetFrequency(0, 400, 400));
        EXPECT_EQ(calls(), queries) << "now it runs";
    }
}

TEST_F(AdapterModelOnPlatform, TracesTheComparison)
{
    configureAsItRuns();
    traceLines();
    EXPECT_TRUE(model().onSetFrameFormatReq(0, 1, 2, 30, 5));
    const std::string at5 = "5 setRadioChannelNearEnd: setRadioChannelNearEnd(): ";
    EXPECT_EQ(
        traceLines(),
        (Texts{"6 setRadioChannelNearEnd: setRadioChannelNearEnd(): ENTER setRadioChannelNearEnd(radioChannelIndex=0)",
               at5 + "Requested radio frame id: 1, Current radio frame id: 1, doConfiguration = 0",
               at5 + "Requested min modulation: 4QAM, Current min modulation: 4QAM, doConfiguration = 0",
               at5 + " Requested max modulation: 4096QAM_LIGHT, Current max modulation: 4096QAM, doConfiguration = 1",
               at5 + "Requested rsec: 5LB, Current rsec: 4H, doConfiguration = 1",
               at5 + "Requested tx frequency: 17800000, Current tx frequency: 17800000, doConfiguration = 1",
               at5 + "Requested rx frequency: 18810000, Current rx frequency: 18810000, doConfiguration = 1",
               "4 setRadioChannelNearEnd: setRadioChannelNearEnd(): Time to call criSetRadioChannelNearEnd"}));
}

TEST_F(AdapterModelOnPlatform, CountsFrequenciesInStepsOf32Bits)
{
    const struct {
        int txStep;
        int rxStep;
        std::string frequencies;
    } cases[] = {{4, 6, "200, 350"}, {0, 0, "100, 200"}, {-4, -9, "0, 4294967271"}, {2147483647, 1, "2147483723, 225"}};
    EXPECT_TRUE(model().onRfChannelPlanReceived(channel2, plan(25, 100, 200)));
    EXPECT_TRUE(model().onSetFrameFormatReq(1, -1, 0, 31, 0));
    for (const auto& [txStep, rxStep, frequencies] : cases) {
        EXPECT_TRUE(model().onSetFrequency(1, txStep, rxStep));
        EXPECT_EQ(calls().back(),
                  "kro_top_api.criSetRadioChannelNearEnd(2, 4294967295, 143, 31, 1000, " + frequencies + ", true)");
    }
    EXPECT_TRUE(model().onRfChannelPlanReceived(channel2, plan(1, 0, 0)));
    EXPECT_EQ(calls(), Texts{}) << "a new plan alone changes nothing";
}

TEST_F(AdapterModelOnPlatform, AFailureStopsTheConfigurationUntilTheNextRequest)
{
    configureAsItRuns();
    m_platform.patchState(Json{{"/channels/1/frequency/rx", 1}}.unflatten());
    const std::string configure = "kro_top_api.criSetRadioChannelNearEnd(1, 1, 31, 121, 2, 17800000, 18810000, true)";
    const struct {
        std::string operation;
        std::size_t calls;
        std::string text;
    } cases[] = {
        {"IHardwareConfigurationHandler.getRadioFrameId", 1, " Failed to get current radio frame id"},
        {"IAcmHandler_1.getMinMaxModulationAndCode", 2, " Failed to get current min/max modulation"},
        {"ISystemPowerController_1.getReferenceSec", 3, " Failed to get current rsec"},
        {"kro_top_api.criSetRadioChannelNearEnd", 6, "failed: out of band, (eTI_E_FAILED_TO_GET_EXTERNAL_INTERFACE)"},
    };
    m_platform.setTraceLevel("KRO.VORNIPC.AdapterModel", 1);
    m_platform.patchState({{"resultTexts", {{"kro_top_api.criSetRadioChannelNearEnd", "out of band"}}}});
    for (const auto& [operation, expectedCalls, text] : cases) {
        SCOPED_TRACE(operation);
        calls();
        traceLines();
        m_platform.patchState({{"results", {{operation, 0x8008}}}});
        EXPECT_FALSE(model().onSetFrequency(0, 400, 400));
        Texts expected = queriesAnd(configure);
        expected.resize(expectedCalls);
        EXPECT_EQ(calls(), expected);
        EXPECT_EQ(traceLines(), (Texts{nearEnd + text, failedCall}));
        EXPECT_FALSE(model().onSetFrameFormatReq(0, 1, 2, 29, 4));
        EXPECT_EQ(traceLines(), Texts{nearEnd + text});
        m_platform.patchState({{"results", {{operation, nullptr}}}});
    }
    m_platform.patchState({{"errorIndicators", {{"kro_top_api.criSetRadioChannelNearEnd", 0}}}});
    EXPECT_TRUE(model().onSetFrequency(0, 400, 400)) << "an indicator of 0 is no failure";
    EXPECT_EQ(calls().back(), configure);
}

TEST_F(AdapterModelOnPlatform, TellsTheFarEndsLimitsInHundredthsOfADb)
{
    traceLines();
    EXPECT_TRUE(model().onSetFarEndPmaxCapability(
        channel2, {{EModulationAndCodeType{41}, -5}, {EModulationAndCodeType{30}, 24}, {modulationUndefined, 0}}));
    EXPECT_EQ(calls(), Texts{"kro_top_api.criSetFarEndPmaxCapability(2, [[30,2400],[41,-500],[143,0]])"});
    const std::string at5 = "5 onSetFarEndPmaxCapability: onSetFarEndPmaxCapability(): set Pmax ";
    const std::string setting = "4 onSetFarEndPmaxCapability: onSetFarEndPmaxCapability():  Setting Far End Pmax "
                                "capabilities";
    EXPECT_EQ(traceLines(), (Texts{at5 + "24dB for 4QAM_STRONGQAM", at5 + "-5dB for 16QAMQAM",
                                   at5 + "0dB for UNDEFINEDQAM", setting}));

    EXPECT_TRUE(model().onSetFarEndPmaxCapability(channel1, {}));
    EXPECT_EQ(calls(), Texts{"kro_top_api.criSetFarEndPmaxCapability(1, [])"});
    traceLines();
    EXPECT_FALSE(model().onSetFarEndPmaxCapability(RadioChannel{3}, {})) << "the platform's to refuse";
    EXPECT_EQ(calls(), Texts{"kro_top_api.criSetFarEndPmaxCapability(3, [])"});
    EXPECT_EQ(traceLines(), (Texts{setting, "1 onSetFarEndPmaxCapability: onSetFarEndPmaxCapability(): failed: , "
                                            "(eTI_E_UNKNOWN_OBJECT)"}));
}

} // namespace
