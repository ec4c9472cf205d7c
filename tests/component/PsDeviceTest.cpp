#include "support/ModuleTest.h"

namespace {

class PsDevice : public ModuleTest {};

class PsDeviceOfChannel : public ChannelTest {};

FOR_EACH_CHANNEL(PsDeviceOfChannel);

Exchange continuousWave(const std::string& name, const std::string& request, const Outcome& outcome,
                        const std::string& given = "")
{
    return {name, request, outcome, given, 1};
}

/// A header in which no two fields are alike; the group is the continuous-wave group.
std::string psHead(const std::string& psStatus, const std::string& action, const std::string& status,
                   const std::string& group = "000020f2")
{
    return "11 12" + psStatus + "10 13" + action + "1415 16 17 1819" + status + "1a 1b 1c 1d1e 1f20" + group;
}

std::string withoutBlanks(std::string text)
{
    std::erase(text, ' ');
    return text;
}

std::string request(const std::string& action, std::int64_t ct, std::int64_t attrib, std::int64_t enable)
{
    return psHead("21", action, "22") + words(ct, attrib, enable);
}

/// To the PS device, without an id.
std::string answer(const std::string& psStatus, const std::string& action, std::int64_t ct, std::int64_t enable)
{
    return withoutBlanks("00000001" + psHead(psStatus, action, psStatus) + words(ct, 1, enable));
}

const std::string served = "5 onHandleContinuousWaveGroupReq: Called with ActionId::Set";

std::string execute(int disable)
{
    return "ITiDisableModulation.execute($, 1, " + std::to_string(disable) + ", 1, true)";
}

TEST_P(PsDeviceOfChannel, ContinuousWaveIsSetThroughTheClosedGate)
{
    start();
    const std::string method = " onHandleContinuousWaveGroupReq: ";
    const std::string called = "5" + method + "onHandleContinuousWaveGroupReq() called";
    const Exchange cases[] = {
        continuousWave("on, with a number of its own", request("03", ct, 1, 7),
                       {answer("00", "04", ct, 7), execute(1), called, served,
                        "5" + method + "Enabling continuous-wave for ct $ in slot 17"}),
        continuousWave("off", request("03", ct, 1, 0),
                       {answer("00", "04", ct, 0), execute(0), served,
                        "5" + method + "Disabling continuous-wave for ct $ in slot 17"}),
        continuousWave("the highest code that is no failure", request("03", ct, 1, 0x80000000),
                       {answer("00", "04", ct, 0x80000000), execute(1)},
                       R"({"results":{"ITiDisableModulation.execute":32767}})"),
        continuousWave(
            "refused by the platform, answered the same", request("03", ct, 1, 1),
            {answer("00", "04", ct, 1), execute(1), "1" + method + "tiDisableModulation execute failed: carrier busy"},
            R"({"results":{"ITiDisableModulation.execute":32768},
                           "resultTexts":{"ITiDisableModulation.execute":"carrier busy"}})"),
        continuousWave("another action", request("01", ct, 1, 1),
                       {answer("05", "00", 0, 0), called, "1" + method + "Called with Action value of 1"}),
        continuousWave("the highest action", request("ff", ct, 1, 1),
                       {answer("05", "00", 0, 0), "1" + method + "Called with Action value of 255"}),
        continuousWave("another attribute", request("03", ct, 2, 1),
                       {answer("05", "00", 0, 0), "1" + method + "Called with invalid attribute"}),
        continuousWave(
            "channel 0", request("03", 0, 1, 1),
            {answer("05", "00", 0, 0), "1" + method + "onHandleContinuousWaveGroupReq(): Incorrect ct number 0 ()"}),
        continuousWave(
            "channel 3", request("03", 3, 1, 1),
            {answer("05", "00", 0, 0), "1" + method + "onHandleContinuousWaveGroupReq(): Incorrect ct number 3 ()"}),
        continuousWave("a channel of 32 bits", request("03", 4294967295, 1, 1),
                       {answer("05", "00", 0, 0),
                        "1" + method + "onHandleContinuousWaveGroupReq(): Incorrect ct number 4294967295 ()"}),
    };
    runAll(cases);
}

TEST_P(PsDeviceOfChannel, OnlyWhatWasDoneIsShown)
{
    start();
    const auto dumps = [this](const std::string& buffer) {
        newTrace();
        const auto before = allTraceLines().size();
        deliverAndSettle(buffer, 1);
        std::vector<std::string> shown;
        const auto lines = allTraceLines();
        for (std::size_t i = before; i < lines.size(); ++i) {
            if (lines[i]["tag"] == "KRO.VORNIPC.PS.RLPS" && lines[i]["level"] == 6) {
                const std::string text = lines[i]["text"];
                shown.push_back(text.substr(0, text.find('{')));
            }
        }
        return shown;
    };
    const std::vector<std::string> both{"Received: ", "Respond with: "};
    EXPECT_EQ(dumps(request("03", ct, 1, 1)), both);
    EXPECT_EQ(dumps(request("02", ct, 1, 1)), both) << "a refusal too";
    EXPECT_EQ(dumps(psHead("21", "03", "22", "000020d9") + words(5, 6)), std::vector<std::string>{"Received: "});
    patch(R"({"results":{"ITiDisableModulation.execute":32768}})");
    EXPECT_EQ(dumps(request("03", ct, 1, 1)), std::vector<std::string>{}) << "not what the platform refused";
}

TEST_F(PsDevice, WanInterfaceEntriesAreTracedOnly)
{
    start();
    runOne({"entry",
            psHead("21", "03", "22", "000020d9") + words(5, 6),
            {"5 onHandleXfRlWanIfEntryGroupReq: onHandleXfRlWanIfEntryGroupReq() called (id: 0x20d9)"},
            "",
            1});
}

} // namespace
