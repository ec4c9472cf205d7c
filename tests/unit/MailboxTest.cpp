#include "gcl/Mailbox.h"
#include "FakedClock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using vrel::kro::framework::gcl::Mailbox;

/// A mail that can only be moved, so that a copy on its way would not compile.
using Mail = std::unique_ptr<int>;

using Deadlines = std::vector<std::chrono::nanoseconds>;

TEST(Mailbox, HoldsOneMailAndKeepsTheOneThatItRefuses)
{
    Mailbox<Mail> box;
    Mail first = std::make_unique<int>(1);
    Mail second = std::make_unique<int>(2);
    EXPECT_TRUE(box.putMail(first, 0ms));
    EXPECT_EQ(first, nullptr);
    EXPECT_FALSE(box.putMail(second, 0ms));
    ASSERT_NE(second, nullptr);

    Mail taken;
    EXPECT_TRUE(box.getMail(taken, 0ms));
    EXPECT_EQ(*taken, 1);
    EXPECT_TRUE(box.putMail(second, 0ms));
}

TEST(Mailbox, WaitsForTheWholeTimeOutAndNoLonger)
{
    for (const bool getting : {true, false}) {
        FakedClock clock;
        Mailbox<Mail> box;
        Mail lying = std::make_unique<int>(1);
        ASSERT_TRUE(getting || box.putMail(lying, 0ms));
        Mail mail = std::make_unique<int>(7);
        std::atomic<bool> done = false;
        std::thread waiter([&] {
            EXPECT_FALSE(getting ? box.getMail(mail, 4000ms) : box.putMail(mail, 4000ms));
            done = true;
        });
        EXPECT_TRUE(clock.waitUntilWaiting(1));
        EXPECT_EQ(clock.deadlines(), Deadlines{4000ms});
        clock.advance(3999ms);
        EXPECT_EQ(clock.deadlines(), Deadlines{1ms});
        EXPECT_FALSE(done);
        clock.advance(1ms);
        waiter.join();
        ASSERT_NE(mail, nullptr);
        EXPECT_EQ(*mail, 7);
    }
}

} // namespace
