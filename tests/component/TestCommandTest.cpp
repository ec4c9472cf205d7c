#include "support/ModuleTest.h"

namespace {

class TestCommand : public ChannelTest {};

FOR_EACH_CHANNEL(TestCommand);

TEST_P(TestCommand, FramesOfTheRadioGoToTheNodeAsTheyStand)
{
    startInService();
    VornipcTestCommandFrame frame;
    frame.length = -4; // not compared with anything
    frame.slot = 2;
    frame.source = 0xfffffffd;
    frame.dest = 4;
    frame.tmt = 5;
    frame.operation = 6;
    frame.direction = 7;
    frame.jobId = 8;
    frame.data.fill(0xCD);
    const auto tell = [&](EChannelSelector channel) {
        return [&, channel] { module()->notifyTestCommandTx(channel, frame); };
    };
    const auto message = [this](std::int64_t number) {
        return toNode("00800002") + spontaneousHead(number, ct, 0) + words(-4, 2, -3, 4, 5, 6, 7, 8) +
               repeated(0xCD, 556);
    };
    expectOutcome("told", tell(channelOfTest),
                  {message(0), "5 notifyTestCommandTx: notifyTestCommandTx() called",
                   "6 notifyTestCommandTx: Sending spontaneous message: TestCommandTxIPC"});
    for (const std::uint32_t channel : {0U, 3U, 4294967295U}) {
        expectOutcome("wrong channel", tell(EChannelSelector{channel}),
                      {"1 notifyTestCommandTx: notifyTestCommandTx(): channelId = " + std::to_string(channel) +
                       " is out of range"});
    }
    expectOutcome("a refused one uses no number", tell(channelOfTest), {message(1)});
    frame = {};
    expectOutcome("a fresh frame", tell(channelOfTest), {toNode("00800002") + spontaneousHead(2, ct, 0) + zeros(588)});
}

} // namespace
