#include "AlarmSignalHandler.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "Answering.h"

namespace kro::device::vornipc {

namespace {

// Both tables as a data sheet has them: one entry a line, by number.
// clang-format off

/// The node's fault of each of the platform's fault signals, which are the positions. 78 and 79 have no name.
constexpr std::array<FaultId_T, 40> faultMap{
    fiUnKnownC, // 0
    FaultId_T{78}, // 1
    FaultId_T{79}, // 2
    fiDpDpComC, // 3
    fiRadioCommChC, // 4
    fiTxIfInputC, // 5
    fiTxFrequencyC, // 6
    fiRfOutputLevelC, // 7
    fiRfInputLevelC, // 8
    fiRfInputThresholdC, // 9
    fiRxFrequencyC, // 10
    fiRxIfInputC, // 11
    fiLossOfLockC, // 12
    fiBerC, // 13
    fiUnKnownC, // 14
    fiRauHardwareErrorC, // 15
    fiUnavailablePeriodC, // 16
    fiBbe15mC, // 17
    fiBbe24hC, // 18
    fiEs15mC, // 19
    fiEs24hC, // 20
    fiSes15mC, // 21
    fiSes24hC, // 22
    fiAcm15C, // 23
    fiAcm24C, // 24
    fiRLTS115mC, // 25
    fiRLTS215mC, // 26
    fiRLTM15mC, // 27
    fiTLTS115mC, // 28
    fiTLTM15mC, // 29
    fiRLTS124hC, // 30
    fiRLTS224hC, // 31
    fiRLTM24hC, // 32
    fiTLTS124hC, // 33
    fiTLTM24hC, // 34
    fiRfTxSwitchOverC, // 35
    fiRemoteTxSwitchOverC, // 36
    fiUnableToProtectC, // 37
    fiRfInputThresholdProtectionC, // 38
    fiUnKnownC, // 39
};

/// Names of the node's faults, which are the positions.
constexpr std::array<const char*, 74> faultNames{
    "fiUnKnownC", // 0
    "fiRadioCommChC", // 1
    "fiTxIfInputC", // 2
    "fiTxFrequencyC", // 3
    "fiRfOutputLevelC", // 4
    "fiRfOutputLevelAtpcC", // 5
    "fiRfInputLevelC", // 6
    "fiRfInputThresholdC", // 7
    "fiRxFrequencyC", // 8
    "fiRxIfInputC", // 9
    "fiLossOfLockC", // 10
    "fiBerC", // 11
    "fiRauHardwareErrorC", // 12
    "fiUnavailablePeriodC", // 13
    "fiBbe15mC", // 14
    "fiBbe24hC", // 15
    "fiEs15mC", // 16
    "fiEs24hC", // 17
    "fiSes15mC", // 18
    "fiSes24hC", // 19
    "fiAcm15C", // 20
    "fiAcm24C", // 21
    "fiHccDC", // 22
    "fiAtpcVersionMismatchMmuRauC", // 23
    "fiAtpcVersionMismatchFarEndC", // 24
    "fiCarrierTermConfMismatchC", // 25
    "fiUnsupportedUnitTypeRauC", // 26
    "fiInsufficientResourcesRauC", // 27
    "fiInsufficientPowerResourcesC", // 28
    "fiReservedPositionRauC", // 29
    "fiRunningConfigNotAcceptedC", // 30
    "fiWrongSoftwareC", // 31
    "fiInsufficientResourceRauXpicC", // 32
    "fiMmuCompliantSwRunC", // 33
    "fiSpontaneousRestartC", // 34
    "fiMmuNonCompliantSblC", // 35
    "fiMmuMinSwRevC", // 36
    "fiRauMinSwRevC", // 37
    "fiMmuLoadModuleNotInSblC", // 38
    "fiRauLoadModuleNotInSblC", // 39
    "fiMmuLoadModuleProgrammingFailureC", // 40
    "fiRauLoadModuleProgrammingFailureC", // 41
    "fiMmuHotSwapIncompleteEventC", // 42
    "fiRauHotSwapIncompleteEventC", // 43
    "fiXpicLosC", // 44
    "fiMimoLosC", // 45
    "fiXpicCableDiscC", // 46
    "fiMimoCableDiscC", // 47
    "fiXpicRecoveryC", // 48
    "fiMimoRecoveryC", // 49
    "fiUnableToProtectC", // 50
    "fiUnableToProtectFadeC", // 51
    "fiPhaseFadeC", // 52
    "fiRemoteTxSwitchOverC", // 53
    "fiRfTxSwitchOverC", // 54
    "fiDpDpComC", // 55
    "fiRfInputThresholdProtectionC", // 56
    "fiProtectionSwitchEventC", // 57
    "fiDiversitySwitchEventC", // 58
    "fiSdcRfInputLevelMainC", // 59
    "fiSdcRfInputLevelDivC", // 60
    "fiSdcHwErrorMainC", // 61
    "fiSdcHwErrorDivC", // 62
    "fiSdcDadeCalMismatchC", // 63
    "fiRLTS115mC", // 64
    "fiRLTS215mC", // 65
    "fiTLTS115mC", // 66
    "fiRLTM15mC", // 67
    "fiTLTM15mC", // 68
    "fiRLTS124hC", // 69
    "fiRLTS224hC", // 70
    "fiTLTS124hC", // 71
    "fiRLTM24hC", // 72
    "fiTLTM24hC", // 73
};

// clang-format on

/// Signals that are of no interest to the node.
constexpr std::array<int, 3> ignoredSignals{14, 40, 42};

constexpr const char* activeOrCleared(FaultStatus_T status)
{
    return status != faultCleared ? "Active" : "Cleared";
}

void stampTime(SetFaultIPC& message)
{
    using namespace std::chrono;
    constexpr std::uint32_t nanosecondsPerMicrosecond = 1000;
    const auto now = duration_cast<microseconds>(system_clock::now().time_since_epoch());
    const auto wholeSeconds = duration_cast<seconds>(now);
    message.iTimeStampSeconds = static_cast<std::uint32_t>(wholeSeconds.count());
    message.iTimeStampNanoseconds =
        static_cast<std::uint32_t>((now - wholeSeconds).count()) * nanosecondsPerMicrosecond;
}

} // namespace

const Trace AlarmSignalHandler::m_trace{"KRO.VORNIPC.AH"};

AlarmSignalHandler::AlarmSignalHandler(std::uint8_t numberOfChannels, VornipcMessageHandler& messageHandler)
    : m_numberOfChannels(servedChannels(m_trace, numberOfChannels, CallSite::here())), m_messageHandler(messageHandler)
{
}

AlarmSignalHandler::~AlarmSignalHandler()
{
    if (m_alarmHandler) {
        m_alarmHandler->registerFaultCallback(nullptr);
    }
}

Result AlarmSignalHandler::onModuleInit()
{
    m_messageHandler.registerReceivers(*this, &AlarmSignalHandler::onFaultFromAds);
    if (!InterfaceLookup(m_trace, "onModuleInit(): Error getting interface to ")(m_alarmHandler)) {
        return resultFailed;
    }
    m_alarmHandler->registerFaultCallback(this);
    return resultOk;
}

void AlarmSignalHandler::signalFault(FaultSignal signal, int ct, bool active)
{
    if (std::find(ignoredSignals.begin(), ignoredSignals.end(), signal) != ignoredSignals.end()) {
        return;
    }
    const FaultId_T faultId = signal < faultMap.size() ? faultMap.at(signal) : fiUnKnownC;
    if (faultId == fiUnKnownC) {
        m_trace.at(TraceLevel::Warning) << "Unhandled signalId (FaultSignal): " << int{signal};
    }
    notifyFault(static_cast<unsigned>(ct), faultId, active ? faultActive : faultCleared);
}

void AlarmSignalHandler::notifyFault(unsigned ct, FaultId_T faultId, FaultStatus_T status)
{
    if (m_messageHandler.vornipcWhiteListActive()) {
        return;
    }
    auto message = spontaneous<SetFaultIPC>(m_messageHandler, RadioChannel{static_cast<std::int32_t>(ct)});
    message.eFaultId = faultId;
    message.eFaultStatus = status;
    if (m_timeStampEnabled) {
        stampTime(message);
    }
    m_trace.at(TraceLevel::Call) << "[Ch " << ct << "] Sending spontaneous fault(" << faultId << ": "
                                 << faultIdToString(faultId) << ") - " << activeOrCleared(status);
    m_messageHandler.send(message, VornipcDeviceId::ads);
}

void AlarmSignalHandler::onFaultFromAds(SetFaultIPC* message)
{
    traceMethodCalled<SetFaultIPC>(m_trace);
    m_trace.at(TraceLevel::Call) << "[Ch " << message->ct << "] Received spontaneous fault(" << message->eFaultId
                                 << ": " << faultIdToString(message->eFaultId) << ") - "
                                 << activeOrCleared(message->eFaultStatus) << " from ADS";
}

const char* AlarmSignalHandler::faultIdToString(FaultId_T faultId)
{
    return faultNames.at(faultId < faultNames.size() ? faultId : fiUnKnownC);
}

void AlarmSignalHandler::enableTimeStamp(bool on)
{
    m_timeStampEnabled = on;
}

} // namespace kro::device::vornipc
