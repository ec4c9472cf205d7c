#include "support/ModuleTest.h"

namespace {

class Protection : public ChannelTest {};

FOR_EACH_CHANNEL(Protection);

TEST_P(Protection, ThresholdsAboveTheLimitAreRefused)
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

TEST_P(Protection, SwitchOversAreTold)
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
