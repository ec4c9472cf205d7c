#include "gcl/Mailbox.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <numeric>
#include <thread>
#include <vector>

namespace {

using namespace std::chrono_literals;
using vrel::kro::framework::gcl::Mailbox;

/// A mail that can only be moved, so that a copy on its way would not compile.
using Mail = std::unique_ptr<int>;

constexpr auto longEnough = 20000ms;

TEST(Mailbox, HoldsOneMailAndKeepsTheOneThatItRefuses)
{
    Mailbox<Mail> box;
    Mail first = std::make_unique<int>(1);
    Mail second = std::make_unique<int>(2);
    EXPECT_TRUE(box.putMail(first, 0ms));
    EXPECT_EQ(first, nullptr);
    EXPECT_FALSE(box.putMail(second, 20ms));
    ASSERT_NE(second, nullptr);

    Mail taken;
    EXPECT_TRUE(box.getMail(taken, 0ms));
    EXPECT_EQ(*taken, 1);
    EXPECT_TRUE(box.putMail(second, 0ms));
}

TEST(Mailbox, WaitsForTheWholeTimeOutAndNotForever)
{
    Mailbox<Mail> box;
    Mail mail = std::make_unique<int>(7);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(box.getMail(mail, 50ms));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 45ms);
    EXPECT_EQ(*mail, 7);
}

TEST(Mailbox, HandsEveryMailOverOnceAmongSeveralThreads)
{
    constexpr int putters = 3;
    constexpr int mailsEach = 2000;
    Mailbox<Mail> box;
    std::vector<int> seen(putters * mailsEach, 0);
    std::vector<std::thread> threads;
    for (int putter = 0; putter < putters; ++putter) {
        threads.emplace_back([&box, putter] {
            for (int i = 0; i < mailsEach; ++i) {
                Mail mail = std::make_unique<int>(putter * mailsEach + i);
                ASSERT_TRUE(box.putMail(mail, longEnough));
            }
        });
    }
    for (int i = 0; i < putters * mailsEach; ++i) {
        Mail mail;
        ASSERT_TRUE(box.getMail(mail, longEnough));
        ++seen.at(static_cast<std::size_t>(*mail));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(seen, std::vector<int>(seen.size(), 1));
}

TEST(Mailbox, LetsEverybodyGoWhenItIsClosed)
{
    Mailbox<Mail> full;
    Mailbox<Mail> empty;
    Mail lying = std::make_unique<int>(1);
    ASSERT_TRUE(full.putMail(lying, 0ms));

    std::atomic<int> letGo = 0;
    std::thread putter([&] {
        Mail mail = std::make_unique<int>(2);
        letGo += full.putMail(mail, longEnough) ? 0 : 1;
    });
    std::thread getter([&] {
        Mail mail;
        letGo += empty.getMail(mail, longEnough) ? 0 : 1;
    });
    const auto start = std::chrono::steady_clock::now();
    full.close();
    empty.close();
    putter.join();
    getter.join();
    EXPECT_EQ(letGo, 2);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);

    Mail later;
    EXPECT_FALSE(full.getMail(later, longEnough));
    EXPECT_FALSE(empty.putMail(later, longEnough));
}

} // namespace
