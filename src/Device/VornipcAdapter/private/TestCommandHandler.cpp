#include "TestCommandHandler.h"

#include "Answering.h"

namespace kro::device::vornipc {

const Trace TestCommandHandler::m_trace{"KRO.VORNIPC.TC"};

TestCommandHandler::TestCommandHandler(VornipcMessageHandler& messageHandler) : m_messageHandler(messageHandler) {}

Result TestCommandHandler::onModuleInit()
{
    m_messageHandler.registerReceivers(*this, &TestCommandHandler::onTestCommandRx);
    return resultOk;
}

void TestCommandHandler::onTestCommandRx(TestCommandRxIPC* message)
{
    traceMethodRequest(m_trace, *message);
    m_trace.at(TraceLevel::Dump) << "No response";
}

void TestCommandHandler::notifyTestCommandTx(EChannelSelector channel, const TestCommandFrame_T& frame)
{
    m_trace.at(TraceLevel::Call) << "notifyTestCommandTx() called";
    if (!channelInRange(m_trace, channel)) {
        return;
    }
    auto message = spontaneousWithoutSlot<TestCommandTxIPC>(m_messageHandler, channel);
    message.tTestCommandFrame = frame;
    sendNotification(m_messageHandler, m_trace, message);
}

} // namespace kro::device::vornipc
