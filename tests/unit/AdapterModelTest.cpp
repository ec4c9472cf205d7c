#include "AdapterModel.h"
#include "support/SimulatedPlatformFixture.h"

#include <array>
#include <limits>
#include <optional>
#include <vector>

namespace {

using namespace kro::device::vornipc;
using Texts = std::vector<std::string>;

/// A channel's configuration, as the model is asked for it and as the platform is told.
struct Configuration {
    int ct;
    std::array<std::uint32_t, 3> plan; ///< step size, base frequencies
    std::array<int, 2> steps;
    std::array<int, 4> frameFormat; ///< frame id, lowest and highest modulation, class
    std::string told;
};

/// The first is what the radio of channel 1 runs by default; nothing of the second is the same.
const Configuration configuration1{
    1, {250, 17'700'000, 18'710'000}, {400, 400}, {1, 2, 29, 4}, "1, 1, 31, 121, 2, 17800000, 18810000"};
const Configuration configuration2{
    2, {500, 21'200'000, 22'432'000}, {200, 202}, {7, 4, 27, 5}, "2, 7, 40, 112, 5, 21300000, 22533000"};

/// The model of a two-channel unit.
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

    bool receivePlan(int ct, const std::array<std::uint32_t, 3>& values)
    {
        const auto [stepSize, baseTx, baseRx] = values;
        return model().onRfChannelPlanReceived(
            RadioChannel{ct}, {.stepSize = stepSize, .rfBaseTxFrequency = baseTx, .rfBaseRxFrequency = baseRx});
    }

    bool setFrequency(const Configuration& to) { return model().onSetFrequency(to.ct - 1, to.steps[0], to.steps[1]); }

    bool setFrameFormat(const Configuration& to)
    {
        const auto [frameId, min, max, sec] = to.frameFormat;
        return model().onSetFrameFormatReq(to.ct - 1, frameId, min, max, sec);
    }

    /// Brings a channel to where its radio runs just what it is asked for.
    void configure(const Configuration& to)
    {
        EXPECT_TRUE(receivePlan(to.ct, to.plan) && setFrequency(to) && setFrameFormat(to));
        calls();
        traceLines();
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

/// The same for either channel, while the other one is configured and runs.
class AdapterModelOfChannel : public AdapterModelOnPlatform, public testing::WithParamInterface<int> {
protected:
    AdapterModelOfChannel() { configure(GetParam() == 1 ? configuration2 : configuration1); }

    const Configuration& own = GetParam() == 1 ? configuration1 : configuration2;
    const std::string ct = std::to_string(own.ct);
    const std::string told = "kro_top_api.criSetRadioChannelNearEnd(" + own.told + ", true)";
    const Texts queries{
        "IHardwareConfigurationHandler.getRadioFrameId(" + ct + ")",
        "IAcmHandler_" + ct + ".getMinMaxModulationAndCode()", "ISystemPowerController_" + ct + ".getReferenceSec()",
        "IFrequencyController_" + ct + ".getTxFrequency()", "IFrequencyController_" + ct + ".getRxFrequency()"};
    const Texts queriesAndConfiguration{queries[0], queries[1], queries[2], queries[3], queries[4], told};
};

INSTANTIATE_TEST_SUITE_P(OnChannel, AdapterModelOfChannel, testing::Values(1, 2), testing::PrintToStringParamName());

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
    EXPECT_FALSE(receivePlan(0, configuration1.plan));
    EXPECT_FALSE(receivePlan(3, configuration1.plan));
    EXPECT_FALSE(model().onSetFrameFormatReq(-1, 1, 2, 29, 4));
    EXPECT_FALSE(model().onSetFrameFormatReq(2, 1, 2, 29, 4));
    EXPECT_EQ(traceLines(), Texts{});
    for (const int index : {-1, 2}) {
        EXPECT_FALSE(model().onSetFrequency(index, 1, 1));
        EXPECT_EQ(traceLines(),
                  Texts{"1 onSetFrequency: onSetFrequency():  Incorrect radioChannelIndex = " + std::to_string(index)});
    }
    renew(1);
    EXPECT_FALSE(receivePlan(2, configuration1.plan)) << "a unit of one channel";
    renew(255);
    EXPECT_TRUE(receivePlan(2, configuration1.plan)) << "more than two channels count as two";
    EXPECT_FALSE(receivePlan(3, configuration1.plan));
    EXPECT_EQ(calls(), Texts{});
}

TEST_F(AdapterModelOnPlatform, RefusesEverythingWithoutItsInterfaces)
{
    renew(2, {{"interfaces", {{"IOutputPowerCalculator_2", false}}}});
    EXPECT_EQ(m_initialised, 0x8000U);
    traceLines();
    EXPECT_FALSE(receivePlan(1, configuration1.plan));
    EXPECT_FALSE(setFrequency(configuration1));
    EXPECT_FALSE(setFrameFormat(configuration1));
    EXPECT_FALSE(model().onSetFarEndPmaxCapability(channel1, {}));
    EXPECT_EQ(traceLines(), Texts{});
    EXPECT_EQ(calls(), Texts{});
}

TEST_P(AdapterModelOfChannel, WaitsUntilAChannelIsComplete)
{
    EXPECT_FALSE(setFrequency(own));
    EXPECT_EQ(traceLines(), Texts{"1 onSetFrequency: onSetFrequency():  Can't set frequency since no channel plan is "
                                  "available"});
    const auto incomplete = [this](const std::string& frequency, const std::string& frame) {
        return Texts{"6 setRadioChannelNearEnd: setRadioChannelNearEnd(): ENTER "
                     "setRadioChannelNearEnd(radioChannelIndex=" +
                         std::to_string(own.ct - 1) + ")",
                     "5 setRadioChannelNearEnd: setRadioChannelNearEnd(): Not completely configured yet, just return. "
                     "Frequency configured: " +
                         frequency + ", Radio frame ID configured:" + frame};
    };
    EXPECT_TRUE(setFrameFormat(own));
    EXPECT_EQ(traceLines(), incomplete("no", "yes")) << "the refused frequency has not been kept";
    renew();
    EXPECT_TRUE(receivePlan(own.ct, own.plan));
    traceLines();
    EXPECT_TRUE(setFrequency(own));
    EXPECT_EQ(traceLines(), incomplete("yes", "no"));
    EXPECT_EQ(calls(), Texts{});
}

TEST_P(AdapterModelOfChannel, ConfiguresOnlyWhatDiffers)
{
    configure(own);
    EXPECT_TRUE(setFrequency(own) && setFrameFormat(own));
    EXPECT_EQ(calls().size(), 2 * queries.size()) << "nothing differs";

    const struct {
        const char* path;
        Json value;
    } differences[] = {{"/radioFrameId", 8},
                       {"/acm/min", 30},
                       {"/acm/max", 122},
                       {"/systemPower/referenceSec", 1000},
                       {"/frequency/tx", 17'800'001},
                       {"/frequency/rx", 4'294'967'295}};
    for (const auto& [path, value] : differences) {
        SCOPED_TRACE(path);
        m_platform.patchState(Json{{"/channels/" + ct + path, value}}.unflatten());
        EXPECT_TRUE(setFrequency(own));
        EXPECT_EQ(calls(), queriesAndConfiguration);
        EXPECT_TRUE(setFrequency(own));
        EXPECT_EQ(calls(), queries) << "now it runs";
    }
}

TEST_F(AdapterModelOnPlatform, TracesTheComparison)
{
    configure(configuration1);
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
    EXPECT_TRUE(receivePlan(2, {25, 100, 200}));
    EXPECT_TRUE(model().onSetFrameFormatReq(1, -1, 0, 31, 0));
    for (const auto& [txStep, rxStep, frequencies] : cases) {
        EXPECT_TRUE(model().onSetFrequency(1, txStep, rxStep));
        const Texts made = calls();
        ASSERT_FALSE(made.empty());
        EXPECT_EQ(made.back(),
                  "kro_top_api.criSetRadioChannelNearEnd(2, 4294967295, 143, 31, 1000, " + frequencies + ", true)");
    }
    EXPECT_TRUE(receivePlan(2, {1, 0, 0}));
    EXPECT_EQ(calls(), Texts{}) << "a new plan alone changes nothing";
}

TEST_P(AdapterModelOfChannel, AFailureStopsTheConfigurationUntilTheNextRequest)
{
    configure(own);
    m_platform.patchState(Json{{"/channels/" + ct + "/frequency/rx", 1}}.unflatten());
    const struct {
        std::string operation;
        std::size_t calls;
        std::string text;
    } cases[] = {
        {"IHardwareConfigurationHandler.getRadioFrameId", 1, " Failed to get current radio frame id"},
        {"IAcmHandler_" + ct + ".getMinMaxModulationAndCode", 2, " Failed to get current min/max modulation"},
        {"ISystemPowerController_" + ct + ".getReferenceSec", 3, " Failed to get current rsec"},
        {"kro_top_api.criSetRadioChannelNearEnd", 6, "failed: out of band, (eTI_E_FAILED_TO_GET_EXTERNAL_INTERFACE)"},
    };
    m_platform.setTraceLevel("KRO.VORNIPC.AdapterModel", 1);
    m_platform.patchState({{"resultTexts", {{"kro_top_api.criSetRadioChannelNearEnd", "out of band"}}}});
    for (const auto& [operation, expectedCalls, text] : cases) {
        SCOPED_TRACE(operation);
        calls();
        traceLines();
        m_platform.patchState({{"results", {{operation, 0x8008}}}});
        EXPECT_FALSE(setFrequency(own));
        Texts expected = queriesAndConfiguration;
        expected.resize(expectedCalls);
        EXPECT_EQ(calls(), expected);
        EXPECT_EQ(traceLines(), (Texts{nearEnd + text, failedCall}));
        EXPECT_FALSE(setFrameFormat(own));
        EXPECT_EQ(traceLines(), Texts{nearEnd + text});
        m_platform.patchState({{"results", {{operation, nullptr}}}});
    }
    m_platform.patchState({{"errorIndicators", {{"kro_top_api.criSetRadioChannelNearEnd", 0}}}});
    calls();
    EXPECT_TRUE(setFrequency(own)) << "an indicator of 0 is no failure";
    EXPECT_EQ(calls(), queriesAndConfiguration);
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
