#include "SoftwareUpgradeHandler.h"

#include "Answering.h"

namespace kro::device::vornipc {

namespace {

void traceNotUsed(const Trace& trace, const CallSite& site = CallSite::here())
{
    trace.at(TraceLevel::Call, site) << site.method << "(): Not used, implemented in bsp_mdw";
}

template <WireMessage Message>
void traceUnused(const Trace& trace, const Message& message, const CallSite& site = CallSite::here())
{
    traceNotUsed(trace, site);
    traceReceived(trace, message, site);
}

} // namespace

const Trace SoftwareUpgradeHandler::m_trace{"KRO.VORNIPC.SU"};

SoftwareUpgradeHandler::SoftwareUpgradeHandler(VornipcMessageHandler& messageHandler) : m_messageHandler(messageHandler)
{
}

Result SoftwareUpgradeHandler::onModuleInit()
{
    // One method a line.
    // clang-format off
    m_messageHandler.registerReceivers(*this,
        &SoftwareUpgradeHandler::onGetSwBoardReqIPC,
        &SoftwareUpgradeHandler::onCodePacketStartIPC,
        &SoftwareUpgradeHandler::onCodePacketIPC,
        &SoftwareUpgradeHandler::debugGetSwBoardResIPC,
        &SoftwareUpgradeHandler::onTestPassiveBankIPC,
        &SoftwareUpgradeHandler::onCheckRestartTypeIPC,
        &SoftwareUpgradeHandler::onDWLTestNotOkIPC,
        &SoftwareUpgradeHandler::onSetActiveBankIPC,
        &SoftwareUpgradeHandler::onResetTestPassiveBankIPC,
        &SoftwareUpgradeHandler::onCodePacketStartExtIPC);
    // clang-format on
    return resultOk;
}

void SoftwareUpgradeHandler::onGetSwBoardReqIPC(GetSwBoardReqIPC* message)
{
    traceUnused(m_trace, *message);
}

void SoftwareUpgradeHandler::onCodePacketStartIPC(CodePacketStartIPC* message)
{
    traceUnused(m_trace, *message);
}

void SoftwareUpgradeHandler::onCodePacketIPC(CodePacketIPC* message)
{
    traceUnused(m_trace, *message);
}

void SoftwareUpgradeHandler::debugGetSwBoardResIPC(GetSwBoardResIPC* message)
{
    traceNotUsed(m_trace);
    m_trace.at(TraceLevel::Dump) << "Sniff response: " << *message;
}

void SoftwareUpgradeHandler::onTestPassiveBankIPC(TestPassiveBankIPC* message)
{
    traceUnused(m_trace, *message);
}

void SoftwareUpgradeHandler::onCheckRestartTypeIPC(CheckRestartTypeIPC* message)
{
    traceUnused(m_trace, *message);
}

void SoftwareUpgradeHandler::onDWLTestNotOkIPC(DWLTestNotOkIPC* message)
{
    traceUnused(m_trace, *message);
}

void SoftwareUpgradeHandler::onSetActiveBankIPC(SetActiveBankIPC* message)
{
    traceUnused(m_trace, *message);
}

void SoftwareUpgradeHandler::onResetTestPassiveBankIPC(ResetTestPassiveBankIPC* message)
{
    traceUnused(m_trace, *message);
}

void SoftwareUpgradeHandler::onCodePacketStartExtIPC(CodePacketStartExtIPC* message)
{
    traceUnused(m_trace, *message);
}

} // namespace kro::device::vornipc
