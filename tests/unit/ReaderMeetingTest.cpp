#include "Meeting.h"
#include "SimulatedPlatform.h"
#include "VornipcMessageClientOnTarget.h"

#include <gtest/gtest.h>

namespace {

using namespace kro::device::vornipc;

struct NoCallback : IVornipcRxCallback {
    void onMessageReceived(const char* /*data*/, unsigned /*length*/, VornipcDeviceId /*device*/) override {}
};

/// Behind the other tests of the client in the program: a client's end is the end of all readers of a process.
TEST(ReaderMeeting, IsWatchedWhileItStarts)
{
    simulated::Platform::instance().setTracePrinting(false);
    NoCallback callback;
    VornipcMessageClient client(&callback);
    meet({[&client] { client.startReadThread(); }, often([&client](int) { client.readerState(); })});
    EXPECT_NE(client.readerState().reader, VornipcLinkFacts::Reader::none);
}

} // namespace
