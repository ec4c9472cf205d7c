#include "support/ModuleTest.h"

namespace {

class Protection : public ModuleTest {};

class ProtectionOfChannel : public ChannelTest {};

FOR_EACH_CHANNEL(ProtectionOfChannel);

TEST_F(Protection, RequestsHaveFixedAnswers)
{
    startInService();
    const struct {
        std::string name;
        std::string request;
        std::size_t bodyWords;
        std::string answer;
    } cases[] = {
        {"SetSwitchMode", "01000001", 1, "01000002"},
        {"SetActiveUnit", "01000003", 1, "01000004"},
        {"SetRevertiveTx", "01000005", 1, "01000006"},
        {"SetRevertiveRx", "01000007", 1, "01000008"},
        {"GetActiveRadio", "01000009", 0, "01000010"},
        {"GetWorkingRx", "01000011", 0, "01000012"},
        {"SetTaSwitch", "01000013", 1, "01000014"},
        {"SetActiveRadio", "01000015", 1, "01000016"},
        {"SetWorkingRx", "01000017", 1, "01000018"},
        {"ResetTxSwOverErr", "01000022", 0, "01000023"},
        {"ProtectionMode", "01000024", 1, "01000025"},
        {"GetActiveUnit", "01000029", 0, "01000030"},
        {"SetActiveRadioRemote", "01000031", 1, "01000032"},
        {"GetTaSwitch", "01000036", 0, "01000037"},
        {"TxSwitchOverConfiguration", "01000039", 1, "01000040"},
    };
    for (const auto& [name, request, bodyWords, answer] : cases) {
        const std::string method = "on" + name + "Req";
        // Whatever the request wants, for whichever channel
        const Exchange exchange{name,
                                request + head(9) + repeated(0xfe, 4 * bodyWords),
                                {toNode(answer) + head(9) + words(0),
                                 "5 " + method + ": " + method + "() called (id: 0x" + request.substr(1) + ")",
                                 "6 " + method + ": Received: " + name + "ReqIPC",
                                 "6 " + method + ": Respond with: " + name + "ResIPC"}};
        runAll({&exchange, 1});
    }
}

TEST_F(Protection, SomeMessagesAreNotAnswered)
{
    startInService();
    const struct {
        std::string method;
        std::string name;
        std::string id;
        std::size_t bodyWords;
        std::string text = "No response";
    } cases[] = {
        {"onSetSpontSwNotReq", "SetSpontSwNotReqIPC", "01000021", 1},
        {"onCompanionMMUStatus", "CompanionMMUStatusIPC", "01000028", 1},
        {"onGetProtectionModeOperStatusReq", "GetProtectionModeOperStatusReqIPC", "01000044", 0, "No response??"},
    };
    for (const auto& [method, name, id, bodyWords, text] : cases) {
        const Exchange exchange{name,
                                id + head(1) + zeroWords(bodyWords),
                                {"5 " + method + ": " + method + "() called (id: 0x" + id.substr(1) + ")",
                                 "6 " + method + ": Received: " + name, "6 " + method + ": " + text}};
        runAll({&exchange, 1});
    }
}

TEST_P(ProtectionOfChannel, ThresholdsAboveTheLimitAreRefused)
{
    startInService();
    const auto request = [this](std::int64_t threshold) { return "01000026" + head(ct) + words(threshold); };
    const auto answer = [this](std::int64_t result) { return toNode("01000027") + head(ct) + words(result); };
    const std::string method = "onSetRFInputPowerThresholdReq: ";
    const auto refusal = [&](const char* threshold) {
        return "1 " + method + "onSetRFInputPowerThresholdReq(): Requested RfInputPowerThreshold = " + threshold +
               " is above the limit = -30";
    };
    const Exchange cases[] = {
        {"-30",
         request(-30),
         {answer(0), "5 " + method + "onSetRFInputPowerThresholdReq() called (id: 0x1000026)",
          "6 " + method + "Received: SetRFInputPowerThresholdReqIPC",
          "6 " + method + "Respond with: SetRFInputPowerThresholdResIPC"}},
        {"lowest", request(-0x7fffffff - 1), {answer(0)}},
        {"-29", request(-29), {answer(1), refusal("-29")}},
        {"0", request(0), {answer(1), refusal("0")}},
    };
    runAll(cases);
}

TEST_P(ProtectionOfChannel, SwitchOversAreTold)
{
    startInService();
    const auto tell = [this](auto operation, EChannelSelector channel, std::uint32_t value) {
        return [this, operation, channel, value] { ((*module()).*operation)(channel, value); };
    };
    const auto told = [](const char* operation, const char* name) {
        return std::vector<std::string>{std::string("5 ") + operation + ": " + operation + "() called",
                                        std::string("6 ") + operation + ": Sending spontaneous message: " + name};
    };
    expectOutcome("mode", tell(&IVornipcAdapter::notifyProtectionModeOperStatus, channelOfTest, 7),
                  {toNode("01000043") + spontaneousHead(0, ct, 0) + words(7),
                   told("notifyProtectionModeOperStatus", "NotifyProtectionModeOperStatusIPC")});
    expectOutcome("transmitter", tell(&IVornipcAdapter::notifyActiveRadioSw, channelOfTest, 4294967295),
                  {toNode("01000019") + spontaneousHead(1, ct, 0) + words(4294967295),
                   told("notifyActiveRadioSw", "NotifyActiveRadioSwIPC")});
    for (const auto channel : {EChannelSelector{0}, EChannelSelector{3}, EChannelSelector{4294967295}}) {
        const std::string line = "(): channelId = " + std::to_string(channel) + " is out of range";
        expectOutcome("wrong channel for the mode", tell(&IVornipcAdapter::notifyProtectionModeOperStatus, channel, 1),
                      {"1 notifyProtectionModeOperStatus: notifyProtectionModeOperStatus" + line});
        expectOutcome("for the transmitter", tell(&IVornipcAdapter::notifyActiveRadioSw, channel, 1),
                      {"1 notifyActiveRadioSw: notifyActiveRadioSw" + line});
        expectOutcome("for the receiver", tell(&IVornipcAdapter::notifyWorkingRxSw, channel, 1),
                      {"1 notifyWorkingRxSw: notifyWorkingRxSw" + line});
    }
    expectOutcome(
        "a refused one uses no number", tell(&IVornipcAdapter::notifyWorkingRxSw, channelOfTest, 2),
        {toNode("01000020") + spontaneousHead(2, ct, 0) + words(2), told("notifyWorkingRxSw", "NotifyWorkingRxSwIPC")});
}

} // namespace
