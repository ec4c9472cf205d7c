#pragma once

#include "WireMessage.h"

/// The node's fault identifiers. Values without a name occur too.
enum FaultId_T : std::uint32_t {
    fiUnKnownC = 0,
    fiRadioCommChC,
    fiTxIfInputC,
    fiTxFrequencyC,
    fiRfOutputLevelC,
    fiRfOutputLevelAtpcC,
    fiRfInputLevelC,
    fiRfInputThresholdC,
    fiRxFrequencyC,
    fiRxIfInputC,
    fiLossOfLockC,
    fiBerC,
    fiRauHardwareErrorC,
    fiUnavailablePeriodC,
    fiBbe15mC,
    fiBbe24hC,
    fiEs15mC,
    fiEs24hC,
    fiSes15mC,
    fiSes24hC,
    fiAcm15C,
    fiAcm24C,
    fiHccDC,
    fiAtpcVersionMismatchMmuRauC,
    fiAtpcVersionMismatchFarEndC,
    fiCarrierTermConfMismatchC,
    fiUnsupportedUnitTypeRauC,
    fiInsufficientResourcesRauC,
    fiInsufficientPowerResourcesC,
    fiReservedPositionRauC,
    fiRunningConfigNotAcceptedC,
    fiWrongSoftwareC,
    fiInsufficientResourceRauXpicC,
    fiMmuCompliantSwRunC,
    fiSpontaneousRestartC,
    fiMmuNonCompliantSblC,
    fiMmuMinSwRevC,
    fiRauMinSwRevC,
    fiMmuLoadModuleNotInSblC,
    fiRauLoadModuleNotInSblC,
    fiMmuLoadModuleProgrammingFailureC,
    fiRauLoadModuleProgrammingFailureC,
    fiMmuHotSwapIncompleteEventC,
    fiRauHotSwapIncompleteEventC,
    fiXpicLosC,
    fiMimoLosC,
    fiXpicCableDiscC,
    fiMimoCableDiscC,
    fiXpicRecoveryC,
    fiMimoRecoveryC,
    fiUnableToProtectC,
    fiUnableToProtectFadeC,
    fiPhaseFadeC,
    fiRemoteTxSwitchOverC,
    fiRfTxSwitchOverC,
    fiDpDpComC,
    fiRfInputThresholdProtectionC,
    fiProtectionSwitchEventC,
    fiDiversitySwitchEventC,
    fiSdcRfInputLevelMainC,
    fiSdcRfInputLevelDivC,
    fiSdcHwErrorMainC,
    fiSdcHwErrorDivC,
    fiSdcDadeCalMismatchC,
    fiRLTS115mC,
    fiRLTS215mC,
    fiTLTS115mC,
    fiRLTM15mC,
    fiTLTM15mC,
    fiRLTS124hC,
    fiRLTS224hC,
    fiTLTS124hC,
    fiRLTM24hC,
    fiTLTM24hC,
};

/// State of a fault; whatever is not cleared counts as active.
enum FaultStatus_T : std::uint32_t { faultCleared = 0, faultActive = 1 };

/// Both ways, spontaneous and not answered: a fault of channel `ct` has come or gone.
struct SetFaultIPC : SignalHeader {
    static constexpr std::uint32_t messageId = 0x100002;

    FaultId_T eFaultId{};
    FaultStatus_T eFaultStatus{};
    std::uint32_t iTimeStampSeconds = 0;     ///< wall clock when the fault was sent; 0 without time stamps
    std::uint32_t iTimeStampNanoseconds = 0; ///< part of the second

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eFaultId), CEREAL_NVP(eFaultStatus), CEREAL_NVP(iTimeStampSeconds),
                         CEREAL_NVP(iTimeStampNanoseconds));
    }
};
