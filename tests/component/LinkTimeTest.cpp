#include "FakedClock.h"
#include "support/ModuleTest.h"

using namespace std::chrono_literals;

namespace {

class LinkTime : public ModuleTest {
protected:
    using Deadlines = std::vector<std::chrono::nanoseconds>;

    LinkTime() { startInService(0, {.traceLevel = 5}); }

    FakedClock clock;
};

TEST_F(LinkTime, TheReaderWaits30SecondsForABufferAgainAndAgain)
{
    const std::string timeout = "5 fetchMail: fetchMail(): Timeout, no VornipcMessage received";
    // A thread that has been woken counts as waiting until it runs: let the reader finish what came before.
    ASSERT_TRUE(comesTrue([&] {
        clock.waitUntilWaiting(1);
        clock.advance(30s);
        clock.waitUntilWaiting(1);
        return newTrace({timeout}) == std::vector{timeout};
    }));
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(clock.deadlines(), Deadlines{30s});
        clock.advance(29999ms);
        EXPECT_EQ(clock.deadlines(), Deadlines{1ms});
        EXPECT_EQ(newTrace({timeout}), std::vector<std::string>{});
        clock.advance(1ms);
        ASSERT_TRUE(clock.waitUntilWaiting(1));
        EXPECT_EQ(newTrace({timeout}), std::vector{timeout});
    }
    EXPECT_TRUE(answersSelfTest());
}

TEST_F(LinkTime, ABufferWaits5SecondsForTheSlotThenItIsDropped)
{
    std::mutex hold; // while the test has it, the reader does not get on with its answer
    std::vector<std::string> answered;
    platform.driver().setTransmitter([&](const char* data, unsigned length) {
        const std::scoped_lock lock(hold);
        answered.push_back(hexOf({data + 8, 24})); // the header
        return static_cast<int>(length);
    });
    const auto request = [this](std::int64_t ct) { EXPECT_TRUE(deliver("00200080" + head(ct))); };
    const auto requestThatWaits = [&](std::int64_t ct) {
        std::thread driver(request, ct);
        EXPECT_TRUE(clock.waitUntilWaiting(1));
        EXPECT_EQ(clock.deadlines(), Deadlines{5s});
        return driver;
    };
    newTrace();
    hold.lock();
    request(1); // in the reader's hands
    request(2); // in the slot
    std::thread inTime = requestThatWaits(3);
    clock.advance(4999ms);
    EXPECT_EQ(clock.deadlines(), Deadlines{1ms});
    hold.unlock();
    inTime.join();
    settle();
    EXPECT_EQ(newTrace(), std::vector<std::string>{});

    hold.lock();
    request(4);
    request(5);
    std::thread dropped = requestThatWaits(6);
    clock.advance(5s);
    dropped.join();
    EXPECT_EQ(newTrace(), std::vector<std::string>{"1 receive: Timeout, Failed to put vornipc message in mailbox, "
                                                   "mailbox not free"});
    std::thread next = requestThatWaits(7);
    hold.unlock();
    next.join();
    settle();
    EXPECT_EQ(answered, (std::vector{head(1), head(2), head(3), head(4), head(5), head(7)}));
    EXPECT_EQ(newTrace(), std::vector<std::string>{});
    platform.driver().setTransmitter({});
}

} // namespace
