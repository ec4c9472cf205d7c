#pragma once

#include "ResultCodes.h"
#include "SoftwareUpgradeMessages.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

/// The software upgrade area. Another component of the radio unit downloads software; the messages are traced here and
/// dropped, and none is answered.
///
/// Threads: the methods for messages run on the reader thread, `onModuleInit` on the framework's.
class SoftwareUpgradeHandler {
public:
    explicit SoftwareUpgradeHandler(VornipcMessageHandler& messageHandler);

    /// Registers the receivers.
    Result onModuleInit();

    void onGetSwBoardReqIPC(GetSwBoardReqIPC* message);
    void onCodePacketStartIPC(CodePacketStartIPC* message);
    void onCodePacketIPC(CodePacketIPC* message);
    void debugGetSwBoardResIPC(GetSwBoardResIPC* message);
    void onTestPassiveBankIPC(TestPassiveBankIPC* message);
    void onCheckRestartTypeIPC(CheckRestartTypeIPC* message);
    void onDWLTestNotOkIPC(DWLTestNotOkIPC* message);
    void onSetActiveBankIPC(SetActiveBankIPC* message);
    void onResetTestPassiveBankIPC(ResetTestPassiveBankIPC* message);
    void onCodePacketStartExtIPC(CodePacketStartExtIPC* message);

private:
    static const Trace m_trace;

    VornipcMessageHandler& m_messageHandler;
};

} // namespace kro::device::vornipc
