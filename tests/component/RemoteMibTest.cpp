#include "support/ModuleTest.h"

namespace {

class RemoteMib : public ModuleTest {
protected:
    static constexpr int hopCapacity = 256;
    static constexpr int hccCapacity = 1440;

    std::function<void()> hop(std::uint32_t channel, int length, bool withData = true)
    {
        return
            [=, this] { module()->notifyHopRx(EChannelSelector{channel}, length, withData ? m_data.data() : nullptr); };
    }

    std::function<void()> hcc(std::uint32_t channel, int length, bool withData = true)
    {
        return [=, this] {
            module()->notifyHccRx(EChannelSelector{channel}, -2, 0xfffffffe, length,
                                  withData ? m_data.data() : nullptr);
        };
    }

    static std::string hopMessage(std::int64_t number, std::int64_t channel, int length)
    {
        return toNode("00500101") + spontaneousHead(number, channel, 0) + words(length) + filled(length, hopCapacity);
    }

    static std::string hccMessage(std::int64_t number, std::int64_t channel, int length)
    {
        return toNode("00500001") + spontaneousHead(number, channel, 0) + words(-2, -2, length) +
               filled(length, hccCapacity);
    }

private:
    static std::string filled(int length, int capacity)
    {
        return repeated(0xAB, static_cast<std::size_t>(length)) + zeros(static_cast<std::size_t>(capacity - length));
    }

    const std::vector<std::uint8_t> m_data = std::vector<std::uint8_t>(hccCapacity + 1, 0xAB);
};

TEST_F(RemoteMib, DataAreRelayedInFull)
{
    startInService();
    expectOutcome(
        "hop", hop(1, 3),
        {hopMessage(0, 1, 3), "5 notifyHopRx: notifyHopRx()", "6 notifyHopRx: Sending spontaneous message: HopRxIPC"});
    expectOutcome(
        "hcc", hcc(2, 3),
        {hccMessage(1, 2, 3), "5 notifyHccRx: notifyHccRx()", "6 notifyHccRx: Sending spontaneous message: HccRxIPC"});
    expectOutcome("nothing, from nowhere", hop(2, 0, false), {hopMessage(2, 2, 0)});
    expectOutcome("nothing of hcc", hcc(1, 0, false), {hccMessage(3, 1, 0)});
    expectOutcome("as much as fits", hop(1, hopCapacity), {hopMessage(4, 1, hopCapacity)});
    expectOutcome("as much of hcc", hcc(1, hccCapacity), {hccMessage(5, 1, hccCapacity)});
}

TEST_F(RemoteMib, WhatCannotBeRelayedIsRefusedAndUsesNoNumber)
{
    startInService();
    const std::string hopLine = "1 notifyHopRx: notifyHopRx(): ";
    const std::string hccLine = "1 notifyHccRx: notifyHccRx(): ";
    expectOutcome("hop too long", hop(1, 257), {hopLine + "length 257 is above the capacity 256"});
    expectOutcome("hcc too long", hcc(1, 1441), {hccLine + "length 1441 is above the capacity 1440"});
    expectOutcome("hop far too long", hop(1, 0x7fffffff), {hopLine + "length 2147483647 is above the capacity 256"});
    expectOutcome("hop below 0", hop(1, -1), {hopLine + "length -1 is below 0, the capacity is 256"});
    expectOutcome("hcc below 0", hcc(1, -0x7fffffff - 1),
                  {hccLine + "length -2147483648 is below 0, the capacity is 1440"});
    expectOutcome("hop data missing", hop(1, 1, false), {hopLine + "length 1 without data, the capacity is 256"});
    expectOutcome("hcc data missing", hcc(1, 5, false), {hccLine + "length 5 without data, the capacity is 1440"});
    for (const std::uint32_t channel : {0U, 3U, 4294967295U}) {
        const std::string line = "channelId = " + std::to_string(channel) + " is out of range";
        expectOutcome("hop, wrong channel", hop(channel, 3), {hopLine + line});
        expectOutcome("hcc, wrong channel", hcc(channel, 3), {hccLine + line});
    }
    expectOutcome("the next that is right", hop(1, 1), {hopMessage(0, 1, 1)});
}

TEST_F(RemoteMib, TheNodesDataAreNotReceived)
{
    startInService();
    const Exchange cases[] = {
        {"hop",
         "00500102" + head(1) + words(1) + zeros(256),
         {"5 onMessageReceived: *********** No handler found for id 500102"}},
        {"hcc",
         "00500002" + head(1) + words(0, 0, 1) + zeros(1440),
         {"5 onMessageReceived: *********** No handler found for id 500002"}},
    };
    runAll(cases);
}

} // namespace
