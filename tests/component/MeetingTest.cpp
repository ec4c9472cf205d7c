#include "support/ModuleTest.h"

#include <atomic>

namespace {

/// Threads that meet at the end of the link. ThreadSanitizer sees a lock that is missing, where nothing else orders the
/// threads: the trace is off, and they watch each other by relaxed counters alone.
class LinkMeeting : public ModuleTest {
protected:
    LinkMeeting() { start({.traceLevel = 0}); }
};

TEST_F(LinkMeeting, ClientsComeAndGoWhileTheDriverCalls)
{
    std::atomic<int> calls = 0;
    std::atomic<bool> over = false;
    std::thread driver([&] {
        while (!over.load(std::memory_order_relaxed)) {
            platform.driver().deliver("", 0, 0);
            calls.fetch_add(1, std::memory_order_relaxed);
        }
    });
    const auto afterCalls = [&calls] {
        const int before = calls.load(std::memory_order_relaxed);
        return comesTrue([&calls, before] { return calls.load(std::memory_order_relaxed) > before + 20; });
    };
    EXPECT_TRUE(afterCalls()) << "the reader takes them";
    module().destroy();
    EXPECT_TRUE(afterCalls()) << "nobody takes them";
    LoadedModule second(2, "127.0.0.1"); // in the same library, so that its reader ends at once
    over.store(true, std::memory_order_relaxed);
    second.destroy();
    driver.join();
}

TEST_F(LinkMeeting, TheReadersEndIsToldWhole)
{
    std::atomic<bool> watching = false;
    std::thread watcher([&] {
        VornipcLinkFacts facts;
        do {
            facts = module()->linkFacts();
            watching.store(true, std::memory_order_relaxed);
        } while (facts.reader == VornipcLinkFacts::Reader::running);
        EXPECT_EQ(facts.reader, VornipcLinkFacts::Reader::ended);
        EXPECT_EQ(facts.reason, "Failed to read 2 bytes from input stream! Read 0");
        EXPECT_TRUE(facts.lastMessage && facts.lastMessage->length == 10);
    });
    EXPECT_TRUE(comesTrue([&] { return watching.load(std::memory_order_relaxed); }));
    deliver("01020310 05060007 0102", 1);
    watcher.join();
}

} // namespace
