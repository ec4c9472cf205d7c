#include "SimulatedPlatform.h"
#include "VornipcMessageClientOnTarget.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <stdexcept>

namespace {

using namespace kro::device::vornipc;
using namespace std::chrono_literals;

std::vector<std::string> traceTexts()
{
    std::vector<std::string> texts;
    const auto trace = simulated::Platform::instance().traceLines(0);
    for (const auto& line : trace["lines"]) {
        texts.push_back(std::to_string(line["level"].get<int>()) + " " + line["method"].get<std::string>() + ": " +
                        line["text"].get<std::string>());
    }
    return texts;
}

bool traced(const std::string& line)
{
    const auto texts = traceTexts();
    return std::find(texts.begin(), texts.end(), line) != texts.end();
}

struct FakeCallback : IVornipcRxCallback {
    void onMessageReceived(const char* data, unsigned length, VornipcDeviceId device) override
    {
        const std::scoped_lock lock(mutex);
        received.emplace_back(std::string(data, length), device);
        arrived.notify_all();
        if (length == 1) {
            throw std::runtime_error("one byte");
        }
    }

    bool waitFor(std::size_t count)
    {
        std::unique_lock lock(mutex);
        return arrived.wait_for(lock, 20s, [&] { return received.size() >= count; });
    }

    std::mutex mutex;
    std::condition_variable arrived;
    std::vector<std::pair<std::string, VornipcDeviceId>> received;
};

/// Gives the client a socket, which no driver does on the target.
struct SocketClient : VornipcMessageClient {
    SocketClient() : VornipcMessageClient(nullptr) {}
    void use(int socket) { m_socket = socket; }
};

class MessageClient : public testing::Test {
protected:
    MessageClient()
    {
        auto& platform = simulated::Platform::instance();
        platform.configure(2);
        platform.setTracePrinting(false);
        platform.setTraceLevel("*", 6);
        platform.start();
    }
    ~MessageClient() override { simulated::Platform::instance().stop(); }
};

TEST_F(MessageClient, CarriesBuffersToTheReaderUntilOneThrowsAndLeavesTheNextClientStopped)
{
    FakeCallback callback;
    {
        VornipcMessageClient client(&callback);
        client.startReadThread();
        client.startReadThread(); // once is enough
        const std::string hello = "hello";
        receive_vornipc_callback_func(&client, hello.data(), 5, 7);
        receive_vornipc_callback_func(&client, nullptr, 0, 0);
        ASSERT_TRUE(callback.waitFor(2));
        EXPECT_EQ(callback.received[0], std::pair(hello, VornipcDeviceId::ps));
        EXPECT_EQ(callback.received[1], std::pair(std::string(), VornipcDeviceId::ads));
        EXPECT_TRUE(traced("6 receive: receivemessage put into mail box"));
        EXPECT_TRUE(traced("6 fetchMail: fetchMail(): message fetched from mailbox:1"));
        EXPECT_EQ(client.readerState().reader, VornipcLinkFacts::Reader::running);

        receive_vornipc_callback_func(&client, "x", 1, 0);
        while (client.readerState().reader == VornipcLinkFacts::Reader::running) {
            std::this_thread::yield();
        }
        const ReaderState state = client.readerState();
        EXPECT_EQ(state.reason, "one byte");
        ASSERT_TRUE(state.lastMessage);
        EXPECT_EQ(state.lastMessage->id, std::nullopt);
        EXPECT_EQ(state.lastMessage->length, 1U);
        EXPECT_TRUE(traced("1 readThread: Exception: one byte, in: readThread()"));
    }
    EXPECT_TRUE(traced("3 ~VornipcMessageClient: Shutting down VORNIPC thread (T)"));

    VornipcMessageClient second(&callback);
    second.startReadThread();
    while (second.readerState().reader == VornipcLinkFacts::Reader::running) {
        std::this_thread::yield();
    }
    EXPECT_TRUE(traced("3 readThread: Shutting down VORNIPC thread"));
    EXPECT_EQ(second.readerState().reason, "the module has been stopped");
}

TEST_F(MessageClient, RefusesCallsOfTheDriverThatFindNoClient)
{
    receive_vornipc_callback_func(nullptr, "abcd", 4, 0);
    EXPECT_TRUE(traced("1 receive_vornipc_callback_func: thisPointer is NULL. Ended in bad state."));
    {
        const VornipcMessageClient client(nullptr);
        EXPECT_TRUE(traced("1 VornipcMessageClient: VORNIPC client initialized with invalid (null) message handler."));
    }
    int gone = 0; // stands where a client once was
    receive_vornipc_callback_func(&gone, "abcd", 4, 0);
    EXPECT_TRUE(traced("1 receive_vornipc_callback_func: receive_vornipc_callback_func(): the link is stopped, "
                       "dropped a buffer of 4 bytes"));
}

TEST_F(MessageClient, DumpsAtMost1666Bytes)
{
    const std::string three = bytes("01abff");
    VornipcMessageClient::hexdump(three.data(), 3);
    EXPECT_TRUE(traced("6 hexdump: Hexdump 3 bytes 0x01, 0xab, 0xff, "));

    const std::string many(2000, '\x11');
    VornipcMessageClient::hexdump2error(many.data(), 2000);
    std::string expected = "1 hexdump2error: Hexdump 2000 bytes ";
    for (int i = 0; i < 1666; ++i) {
        expected += "0x11, ";
    }
    EXPECT_TRUE(traced(expected));
}

TEST_F(MessageClient, ReadsWholeBlocksFromItsSocket)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    SocketClient client;
    std::array<char, 6> buffer{};
    EXPECT_TRUE(client.readSocket(buffer.data(), 0));
    EXPECT_FALSE(client.readSocket(buffer.data(), 1)); // no descriptor yet
    EXPECT_TRUE(traced("1 readSocket: VORNIPC socket read() returned -1, Bad file descriptor"));

    client.use(ends[0]);
    ASSERT_EQ(write(ends[1], "abc", 3), 3);
    std::thread later([&] { EXPECT_EQ(write(ends[1], "def", 3), 3); });
    EXPECT_TRUE(client.readSocket(buffer.data(), 6));
    later.join();
    EXPECT_EQ(std::string(buffer.data(), 6), "abcdef");

    close(ends[1]);
    EXPECT_FALSE(client.readSocket(buffer.data(), 1));
    EXPECT_TRUE(traced("1 readSocket: VORNIPC socket read() returned 0, socket is likely closed"));
    close(ends[0]);
}

} // namespace
