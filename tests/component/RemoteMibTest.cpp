#include "support/ModuleTest.h"

namespace {

class RemoteMib : public ChannelTest {
protected:
    static constexpr int hopCapacity = 256;
    static constexpr int hccCapacity = 1440;

    std::function<void()> hop(EChannelSelector channel, int length, bool withData = true)
    {
        return [=, this] { module()->notifyHopRx(channel, length, withData ? m_data.data() : nullptr); };
    }

    std::function<void()> hcc(EChannelSelector channel, int length, bool withData = true)
    {
        return
            [=, this] { module()->notifyHccRx(channel, -2, 0xfffffffe, length, withData ? m_data.data() : nullptr); };
    }

    std::string hopMessage(std::int64_t number, int length) const
    {
        return toNode("00500101") + spontaneousHead(number, ct, 0) + words(length) + filled(length, hopCapacity);
    }

    std::string hccMessage(std::int64_t number, int length) const
    {
        return toNode("00500001") + spontaneousHead(number, ct, 0) + words(-2, -2, length) +
               filled(length, hccCapacity);
    }

private:
    static std::string filled(int length, int capacity)
    {
        return repeated(0xAB, static_cast<std::size_t>(length)) + zeros(static_cast<std::size_t>(capacity - length));
    }

    const std::vector<std::uint8_t> m_data = std::vector<std::uint8_t>(hccCapacity + 1, 0xAB);
};

FOR_EACH_CHANNEL(RemoteMib);

TEST_P(RemoteMib, DataAreRelayedInFull)
{
    startInService();
    expectOutcome(
        "hop", hop(channelOfTest, 3),
        {hopMessage(0, 3), "5 notifyHopRx: notifyHopRx()", "6 notifyHopRx: Sending spontaneous message: HopRxIPC"});
    expectOutcome(
        "hcc", hcc(channelOfTest, 3),
        {hccMessage(1, 3), "5 notifyHccRx: notifyHccRx()", "6 notifyHccRx: Sending spontaneous message: HccRxIPC"});
    expectOutcome("nothing, from nowhere", hop(channelOfTest, 0, false), {hopMessage(2, 0)});
    expectOutcome("nothing of hcc", hcc(channelOfTest, 0, false), {hccMessage(3, 0)});
    expectOutcome("as much as fits", hop(channelOfTest, hopCapacity), {hopMessage(4, hopCapacity)});
    expectOutcome("as much of hcc", hcc(channelOfTest, hccCapacity), {hccMessage(5, hccCapacity)});
}

TEST_P(RemoteMib, WhatCannotBeRelayedIsRefusedAndUsesNoNumber)
{
    startInService();
    const std::string hopLine = "1 notifyHopRx: notifyHopRx(): ";
    const std::string hccLine = "1 notifyHccRx: notifyHccRx(): ";
    expectOutcome("hop too long", hop(channelOfTest, 257), {hopLine + "length 257 is above the capacity 256"});
    expectOutcome("hcc too long", hcc(channelOfTest, 1441), {hccLine + "length 1441 is above the capacity 1440"});
    expectOutcome("hop far too long", hop(channelOfTest, 0x7fffffff),
                  {hopLine + "length 2147483647 is above the capacity 256"});
    expectOutcome("hop below 0", hop(channelOfTest, -1), {hopLine + "length -1 is below 0, the capacity is 256"});
    expectOutcome("hcc below 0", hcc(channelOfTest, -0x7fffffff - 1),
                  {hccLine + "length -2147483648 is below 0, the capacity is 1440"});
    expectOutcome("hop data missing", hop(channelOfTest, 1, false),
                  {hopLine + "length 1 without data, the capacity is 256"});
    expectOutcome("hcc data missing", hcc(channelOfTest, 5, false),
                  {hccLine + "length 5 without data, the capacity is 1440"});
    for (const std::uint32_t channel : {0U, 3U, 4294967295U}) {
        const std::string line = "channelId = " + std::to_string(channel) + " is out of range";
        expectOutcome("hop, wrong channel", hop(EChannelSelector{channel}, 3), {hopLine + line});
        expectOutcome("hcc, wrong channel", hcc(EChannelSelector{channel}, 3), {hccLine + line});
    }
    expectOutcome("the next that is right", hop(channelOfTest, 1), {hopMessage(0, 1)});
}

} // namespace
