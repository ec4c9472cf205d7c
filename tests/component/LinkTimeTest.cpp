#include "FakedClock.h"
#include "support/ModuleTest.h"

using namespace std::chrono_literals;

namespace {

/// The module with a reader that can be held back while it answers.
class LinkTime : public ModuleTest {
protected:
    using Deadlines = std::vector<std::chrono::nanoseconds>;

    LinkTime()
    {
        startInService(0, {.traceLevel = 5});
        platform.driver().setTransmitter([this](const char* data, unsigned length) {
            {
                const std::scoped_lock lock(m_mutex);
                m_answered.push_back(hexOf({data + 8, 24})); // the header
            }
            const std::scoped_lock untilReleased(m_held);
            return static_cast<int>(length);
        });
        newTrace();
    }

    /// Brings the reader into a request, and another one into the slot.
    void holdReader()
    {
        m_held.lock();
        const auto before = answered().size();
        request(1);
        EXPECT_TRUE(comesTrue([&] { return answered().size() > before; }));
        request(2);
    }
    void releaseReader() { m_held.unlock(); }

    void request(std::int64_t ct) { EXPECT_TRUE(deliver("00200080" + head(ct))); }

    std::vector<std::string> answered()
    {
        const std::scoped_lock lock(m_mutex);
        return m_answered;
    }

    FakedClock clock;

private:
    std::mutex m_held;
    std::mutex m_mutex; ///< guards the answers
    std::vector<std::string> m_answered;
};

TEST_F(LinkTime, TheReaderWaits30SecondsForABufferAgainAndAgain)
{
    const std::string timeout = "5 fetchMail: fetchMail(): Timeout, no VornipcMessage received";
    for (int round = 0; round < 3; ++round) {
        ASSERT_TRUE(clock.waitUntilWaiting(1));
        EXPECT_EQ(clock.deadlines(), Deadlines{30s});
        clock.advance(29999ms);
        EXPECT_EQ(clock.deadlines(), Deadlines{1ms});
        EXPECT_EQ(newTrace({timeout}), std::vector<std::string>{});
        clock.advance(1ms);
        ASSERT_TRUE(clock.waitUntilWaiting(1));
        EXPECT_EQ(newTrace({timeout}), std::vector{timeout});
    }
    request(1);
    settle();
    EXPECT_EQ(answered(), std::vector{head(1)}) << "it still serves";
}

TEST_F(LinkTime, ABufferWaits5SecondsForTheSlotThenItIsDropped)
{
    holdReader();
    std::thread third([this] { request(3); });
    ASSERT_TRUE(clock.waitUntilWaiting(1));
    EXPECT_EQ(clock.deadlines(), Deadlines{5s});
    clock.advance(4999ms);
    EXPECT_EQ(clock.deadlines(), Deadlines{1ms});
    releaseReader();
    third.join();
    settle();
    EXPECT_EQ(answered(), (std::vector{head(1), head(2), head(3)})) << "the slot has become free in time";
    EXPECT_EQ(newTrace(), std::vector<std::string>{});

    holdReader();
    std::thread dropped([this] { request(4); });
    ASSERT_TRUE(clock.waitUntilWaiting(1));
    clock.advance(5s);
    dropped.join();
    EXPECT_EQ(newTrace(), std::vector<std::string>{"1 receive: Timeout, Failed to put vornipc message in mailbox, "
                                                   "mailbox not free"});
    std::thread next([this] { request(5); });
    ASSERT_TRUE(clock.waitUntilWaiting(1));
    EXPECT_EQ(clock.deadlines(), Deadlines{5s}) << "the whole time again";
    releaseReader();
    next.join();
    settle();
    EXPECT_EQ(answered(), (std::vector{head(1), head(2), head(3), head(1), head(2), head(5)}));
    EXPECT_EQ(newTrace(), std::vector<std::string>{});
    EXPECT_EQ(module()->linkFacts().reader, VornipcLinkFacts::Reader::running);
}

} // namespace
