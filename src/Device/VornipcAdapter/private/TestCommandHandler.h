#pragma once

#include "EChannelSelector.h"
#include "ResultCodes.h"
#include "TestCommandMessages.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

/// The test command area: relays frames of the radio software to the node. Frames from the node are traced and dropped.
///
/// Threads: `onTestCommandRx` runs on the reader thread, `onModuleInit` on the framework's; the notification may be
/// called from any thread.
class TestCommandHandler {
public:
    explicit TestCommandHandler(VornipcMessageHandler& messageHandler);

    /// Registers the receiver.
    Result onModuleInit();

    void onTestCommandRx(TestCommandRxIPC* message);

    /// Sends a frame to the node as it stands, none of its fields is looked at. Refused, with a log line, for a channel
    /// other than 1 and 2.
    void notifyTestCommandTx(EChannelSelector channel, const TestCommandFrame_T& frame);

private:
    static const Trace m_trace;

    VornipcMessageHandler& m_messageHandler;
};

} // namespace kro::device::vornipc
