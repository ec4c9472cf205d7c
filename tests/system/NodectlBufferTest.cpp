#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/NodectlRun.h"
#include "support/Program.h"

// What the console does without a unit. Expected bytes and numbers are written by hand.

namespace {

using Json = nlohmann::ordered_json;
using testing::HasSubstr;

const std::string emptyHeader = " 00000000 00000000 00000000 00000000 00000000 00000000 ";

std::string repeated(const std::string& text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

std::vector<Json> jsonLines(const std::string& text)
{
    std::vector<Json> objects;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        objects.push_back(Json::parse(line));
    }
    return objects;
}

TEST(NodectlBuffers, EncodesAMessageAsItFollowsTheDeviceWord)
{
    const TemporaryFolder folder;
    const std::string file = folder.write("body", R"({"eModuleOperStatus": 3})");
    struct Case {
        const char* what;
        std::vector<std::string> arguments;
        std::string input;
        std::string hex;
    };
    const Case cases[] = {
        {"every header field",
         {"MMUStateIPC", "--slot", "3", "--sig", "5", "--sender", "7", "--seq", "0x80000001", "--spare", "9", "--ct",
          "1", "--body", R"({"eModuleOperStatus":2})"},
         "",
         "00200009 00000003 00000005 00000007 80000001 00000009 00000001 00000002"},
        {"body from a file", {"MMUStateIPC", "--body", "@" + file}, "", "00200009" + emptyHeader + "00000003"},
        {"body from standard input",
         {"MMUStateIPC", "--body", "-"},
         " {\n\"eModuleOperStatus\" : 4294967295 }\n",
         "00200009" + emptyHeader + "ffffffff"},
        {"negative numbers in a group",
         {"SetRfPowerReqIPC", "--ct", "2", "--body",
          R"({"setRfPower":{"RfInputPowerThreshold":-30,"RfSelectedMinOutputPower":-2147483648}})"},
         "",
         "00300025 00000000 00000000 00000000 00000000 00000000 00000002 80000000 00000000 00000000 ffffffe2"},
        {"an array as a list keeps its end at 0",
         {"RLaprintExtIPC", "--body", R"({"printCode":8,"printText":[72,105]})"},
         "",
         "00200012" + emptyHeader + "00000008 00000000 4869" + repeated("00", 158)},
        {"an array as the printed object",
         {"RLaprintExtIPC", "--body", R"({"printText":{"value159":255,"value1":1}})"},
         "",
         "00200012" + emptyHeader + "00000000 00000000 0001" + repeated("00", 157) + "ff"},
        {"a list of groups",
         {"GetRAUIndexCapabilitiesResIPC", "--body",
          R"({"rauSubBandsNum":3,"rauSubBands":[{"value":7},{},{"value":9}]})"},
         "",
         "00200124" + emptyHeader + "00000003 00000007 00000000 00000009" + repeated("00000000", 98)},
        {"the printed message; options win over its header",
         {"MMUStateIPC", "--ct", "2", "--body", "-"},
         R"({"id":2097161,"name":"MMUStateIPC","data":{"SignalHeader":{"slot":3,"ct":1},"eModuleOperStatus":1}})",
         "00200009 00000003 00000000 00000000 00000000 00000000 00000002 00000001"},
        {"a PS message has no id word, its kind and group by themselves, its header in the body",
         {"HandleContinuousWaveGroupReqIPC", "--body",
          R"({"PsSignalHeader":{"slot":1,"action":3,"seqNo":258,"oidLen":8},"ct":2,"attrib":1,"enable":7})"},
         "",
         "01 00 00 10 00 03 0102 00 00 0000 00 00 00 00 0008 0000 000020f2 00000002 00000001 00000007"},
        {"kind and group of a PS message as given",
         {"HandleXfRlWanIfEntryGroupReqIPC", "--body", R"({"PsSignalHeader":{"ps":1,"groupId":5},"data2":6})"},
         "",
         "00000001 00000000 00000000 00000000 00000000 00000005 00000000 00000006"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        std::vector<std::string> arguments{"encode"};
        arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
        const auto outcome = nodectl(arguments, test.input);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.out, packed(test.hex) + "\n");
        EXPECT_EQ(outcome.err, "");
    }
}

TEST(NodectlBuffers, DecodesABuffer)
{
    const std::string noHeader = R"("SignalHeader":{"slot":0,"sigId":0,"senderId":0,"seqNr":0,"spare1":0,"ct":0})";
    const std::string result = "00300026 00000000 00000000 00000000 00000000 00000000 00000002 00000001";
    const std::string resultJson = R"({"id":3145766,"name":"SetRfPowerResIPC","data":{)"
                                   R"("SignalHeader":{"slot":0,"sigId":0,"senderId":0,"seqNr":0,"spare1":0,"ct":2},)"
                                   R"("setRes":1}})";
    const std::string ps = "ff02051003040006 01020040 07000009 0008000c 000020f2 00000002 00000001 00000007";
    const std::string psFields =
        R"({"PsSignalHeader":{"slot":255,"psVersion":2,"psStatus":5,"ps":16,"msgType":3,"action":4,"seqNo":6,"lastPart":1,)"
        R"("noOfObjects":2,"sizeOfObjects":64,"status":7,"objType":0,"simulation":0,"spare":9,"oidLen":8,"dataLen":12,)"
        R"("groupId":8434},"ct":2,"attrib":1,"enable":7}})";
    struct Case {
        const char* what;
        std::vector<std::string> arguments;
        std::string input;
        int exitCode;
        std::string json;
        const char* note;
    };
    const Case cases[] = {
        {"an id that three answers share", {result}, "", 0, resultJson, ""},
        {"capitals and blanks, from standard input",
         {"-"},
         "00 30 00 26\n" + repeated("00 ", 20) + "\t0000000200000001\n",
         0,
         resultJson,
         ""},
        {"an id of the other direction is found too", {"--from", "node", result}, "", 0, resultJson, ""},
        {"device 10 of the unit carries ordinary messages", {"--device", "10", result}, "", 0, resultJson, ""},
        {"a group by the way it goes: to the node",
         {"--device", "1", ps},
         "",
         0,
         R"({"Id":8434,"31HandleContinuousWaveGroupResIPC":)" + psFields,
         ""},
        {"a group by the way it goes: to the unit",
         {"--device", "1", "--from", "node", ps},
         "",
         0,
         R"({"Id":8434,"31HandleContinuousWaveGroupReqIPC":)" + psFields,
         ""},
        {"bytes behind the body", {result + "010203"}, "", 0, resultJson, "3 bytes behind the body"},
        {"text bytes are numbers without a sign; negative numbers",
         {"00200089" + emptyHeader + "ffffffff 80000000 7fffffff"},
         "",
         0,
         R"({"id":2097289,"name":"GetSDCCurrentDataResIPC","data":{)" + noHeader +
             R"(,"tSDCCurrentData":{"RFCurrentInputPowerSdcMain":-1,"RFCurrentInputPowerSdcDiv":-2147483648,)"
             R"("SdcGain":2147483647}}})",
         ""},
        {"one byte short: what is there, and what is not",
         {result.substr(0, result.size() - 2)},
         "",
         1,
         R"({"id":3145766,"name":"SetRfPowerResIPC","data":{)"
         R"("SignalHeader":{"slot":0,"sigId":0,"senderId":0,"seqNr":0,"spare1":0,"ct":2}}})",
         "setRes at offset 24 only 3 of 4 bytes"},
        {"the id alone",
         {"00300026"},
         "",
         1,
         R"({"id":3145766,"name":"SetRfPowerResIPC","data":{}})",
         "SignalHeader.slot"},
        {"an array that is cut",
         {"00200012" + emptyHeader + "00000008 00000000 48"},
         "",
         1,
         R"({"id":2097170,"name":"RLaprintExtIPC","data":{)" + noHeader + R"(,"printCode":8,"printSpare":0}})",
         "printText at offset 32 only 1 of 160 bytes"},
        {"a PS buffer without its group",
         {"--device", "1", "0102"},
         "",
         1,
         R"({"PsSignalHeader":{"slot":1,"psVersion":2}})",
         "PsSignalHeader.psStatus"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.what);
        std::vector<std::string> arguments{"--json", "decode"};
        arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
        const auto outcome = nodectl(arguments, test.input);
        EXPECT_EQ(outcome.exitCode, test.exitCode);
        EXPECT_EQ(outcome.out, test.json + "\n");
        EXPECT_THAT(outcome.err, HasSubstr(test.note));
    }
}

TEST(NodectlCatalogue, ListsTheMessagesOfAnArea)
{
    const auto outcome = nodectl({"list", "--area", "ps", "--json"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.out,
              R"({"name":"HandleXfRlWanIfEntryGroupReqIPC","id":8409,"direction":"in","area":"ps","size":32})"
              "\n"
              R"({"name":"HandleContinuousWaveGroupReqIPC","id":8434,"direction":"in","area":"ps","size":36})"
              "\n"
              R"({"name":"HandleContinuousWaveGroupResIPC","id":8434,"direction":"out","area":"ps","size":36})"
              "\n");

    std::set<std::string> areas;
    for (const Json& message : jsonLines(nodectl({"list", "--json"}).out)) {
        areas.insert(message["area"]);
    }
    EXPECT_THAT(areas, testing::ElementsAre("alarms", "equipment", "mib", "power", "protection", "ps", "testcommand",
                                            "traffic", "upgrade"));
    EXPECT_THAT(nodectl({"list"}).out, HasSubstr("0x200040   ADSClosePciResIPC"));
}

TEST(NodectlCatalogue, DescribesFieldsWithOffsetAndType)
{
    const auto json = Json::parse(nodectl({"describe", "CodePacketStartIPC", "--json"}).out);
    EXPECT_EQ(json["direction"], "in");
    EXPECT_EQ(json["size"], json["fields"].back()["offset"].get<int>() + 4);
    EXPECT_EQ(json["fields"][0].dump(), R"({"name":"SignalHeader.slot","offset":0,"type":"u32"})");

    const auto text = Json::parse(nodectl({"describe", "RLaprintExtIPC", "--json"}).out);
    EXPECT_EQ(text["fields"].back().dump(), R"({"name":"printText","offset":32,"type":"u8","count":160})");

    EXPECT_THAT(nodectl({"describe", "HandleContinuousWaveGroupReqIPC"}).out,
                HasSubstr("     6  u16       PsSignalHeader.seqNo\n"));
    EXPECT_THAT(nodectl({"describe", "GetIfOperStatusResIPC"}).out,
                HasSubstr("    28  u32       eIfOperStatus, default 4\n"));
    EXPECT_THAT(nodectl({"describe", "GetRfPowerResIPC"}).out,
                HasSubstr("    28  i32       getRfPower.RfCurrentInputPower, dBm/10\n"));
}

TEST(NodectlMisuse, EndsWithAClearErrorAndNothingOnStandardOutput)
{
    const auto body = [](const std::string& json) {
        return std::vector<std::string>{"encode", "RLaprintExtIPC", "--body", json};
    };
    const TemporaryFolder folder;
    const std::string hugeFile = folder.write("huge", std::string(1100000, ' '));
    struct Case {
        std::vector<std::string> arguments;
        int exitCode;
        const char* error;
    };
    const Case cases[] = {
        {{}, 2, "a command is missing"},
        {{"sned", "MMUStateIPC"}, 2, "did you mean 'send'?"},
        {{"list", "--area", "powr"}, 2, "did you mean 'power'?"},
        {{"list", "--aera", "power"}, 2, "did you mean '--area'?"},
        {{"describe", "RauLostIPC"}, 2, "did you mean 'RAULostIPC'?"},
        {{"encode", "SetRfPowerReq"}, 2, "did you mean 'SetRfPowerReqIPC'?"},
        {{"encode"}, 2, "NAME"},
        {{"encode", "RAULostIPC", "1"}, 2, "'1' is one argument too many"},
        {{"encode", "RAULostIPC", "--ct", "-1"}, 2, "--ct: '-1'"},
        {{"encode", "RAULostIPC", "--ct", "4294967296"}, 2, "0 to 4294967295"},
        {{"encode", "RAULostIPC", "--seq", "0x"}, 2, "--seq: '0x'"},
        {{"encode", "HandleContinuousWaveGroupReqIPC", "--ct", "1"}, 2, "PsSignalHeader"},
        {{"send", "RAULostIPC", "--wait", "1s"}, 2, "--wait: '1s'"},
        {{"--unit", "localhost", "monitor"}, 2, "HOST:PORT"},
        {{"--unit", "localhost:65536", "monitor"}, 2, "HOST:PORT"},
        {{"--unit", "::1:23043", "monitor"}, 2, "HOST:PORT"},
        {body(R"({"printTxt":[1]})"), 2, "RLaprintExtIPC has no field 'printTxt'; did you mean 'printText'?"},
        {body(R"({"slot":1})"), 2, "it stands inside its group, at SignalHeader.slot"},
        {body(R"({"SignalHeader":{"slt":1}})"), 2, "SignalHeader has no field 'slt'; did you mean 'slot'?"},
        {body(R"({"printCode":-1})"), 2, "printCode is -1, outside 0 to 4294967295"},
        {body(R"({"printCode":4294967296})"), 2, "printCode is 4294967296, outside 0 to 4294967295"},
        {body(R"({"printCode":1.5})"), 2, "printCode takes an integer (u32), not 1.5"},
        {body(R"({"printCode":"1"})"), 2, "printCode takes an integer (u32), not string"},
        {body(R"({"printCode":[1]})"), 2, "printCode takes an integer (u32), not array"},
        {body(R"({"printText":[0,256]})"), 2, "printText[1] is 256, outside 0 to 255"},
        {body(R"({"printText":{"value160":1}})"), 2, "its elements are value0 to value159"},
        {body(R"({"printText":{"value01":1}})"), 2, "has no element 'value01'"},
        {body(R"({"printText":"Hi"})"), 2, "printText takes a list"},
        {body("{\"printText\":[0" + repeated(",0", 160) + "]}"), 2, "printText has 161 elements, at most 160 fit"},
        {body(R"({"SignalHeader":1})"), 2, "SignalHeader takes an object, not 1"},
        {body("[]"), 2, "RLaprintExtIPC takes an object, not array"},
        {body(""), 2, "not valid JSON"},
        {body("{\"printCode\":1"), 2, "not valid JSON, parse error at line 1"},
        {body("{\"\xff\":1}"), 2, "UTF-8"},
        {body(R"({"printCode":1e999})"), 2, "overflow"},
        {body(R"({"printCode":1,"printCode":2})"), 2, "'printCode' stands twice"},
        {body(repeated("[", 100000)), 2, "nested deeper than"},
        {body("@/no/such/file"), 2, "'/no/such/file': No such file"},
        {body("@" + hugeFile), 2, "longer than 1048576 bytes"},
        {body(R"({"id":2097161,"name":"MMUStateIPC","data":{}})"), 2, "this is not a printed RLaprintExtIPC"},
        {{"decode", "00 30 0"}, 2, "5 hexadecimal digits do not make whole bytes"},
        {{"decode", "00:30"}, 2, "':' at position 3 is not a hexadecimal digit"},
        {{"decode", "--from", "unti", "00"}, 2, "neither 'node' nor 'unit'"},
        {{"decode", "001000"}, 1, "ends before its message id: 3 of 4 bytes are there"},
        {{"decode", "00990001"}, 1, "no message has the id 0x990001"},
        {{"decode", "--device", "1", "00000000 00000000 00000000 00000000 00000000 00000005"},
         1,
         "no PS message has the group 5"},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(testing::PrintToString(test.arguments).substr(0, 120));
        const auto outcome = nodectl(test.arguments);
        EXPECT_EQ(outcome.exitCode, test.exitCode);
        EXPECT_THAT(outcome.err, HasSubstr(test.error));
        EXPECT_LT(outcome.err.size(), 400U);
        EXPECT_EQ(outcome.out, "");
    }
}

TEST(NodectlOutput, OutputThatCannotBeWrittenIsNoCrash)
{
    const std::string program = NODECTL_PATH;
    const auto exitCode = [](const std::string& command) { return WEXITSTATUS(std::system(command.c_str())); };
    EXPECT_EQ(exitCode("'" + program + "' list > /dev/full 2> /dev/null"), 1);
    EXPECT_EQ(exitCode("'" + program + "' list >&- 2>&- <&-"), 0);
    EXPECT_EQ(exitCode("bash -c \"set -o pipefail; '" + program + "' list | head -1 > /dev/null\""), 0);
}

} // namespace
