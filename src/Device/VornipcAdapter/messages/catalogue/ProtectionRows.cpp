#include "ProtectionMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows protectionRows()
{
    using enum MessageDirection;
    return {
        request<SetSwitchModeReqIPC, SetSwitchModeResIPC>(),
        message<SetSwitchModeResIPC>(out),
        request<SetActiveUnitReqIPC, SetActiveUnitResIPC>(),
        message<SetActiveUnitResIPC>(out),
        request<SetRevertiveTxReqIPC, SetRevertiveTxResIPC>(),
        message<SetRevertiveTxResIPC>(out),
        request<SetRevertiveRxReqIPC, SetRevertiveRxResIPC>(),
        message<SetRevertiveRxResIPC>(out),
        request<GetActiveRadioReqIPC, GetActiveRadioResIPC>(),
        message<GetActiveRadioResIPC>(out),
        request<GetWorkingRxReqIPC, GetWorkingRxResIPC>(),
        message<GetWorkingRxResIPC>(out),
        request<SetTaSwitchReqIPC, SetTaSwitchResIPC>(),
        message<SetTaSwitchResIPC>(out),
        request<SetActiveRadioReqIPC, SetActiveRadioResIPC>(),
        message<SetActiveRadioResIPC>(out),
        request<SetWorkingRxReqIPC, SetWorkingRxResIPC>(),
        message<SetWorkingRxResIPC>(out),
        message<NotifyActiveRadioSwIPC>(out),
        message<NotifyWorkingRxSwIPC>(out),
        message<SetSpontSwNotReqIPC>(in),
        request<ResetTxSwOverErrReqIPC, ResetTxSwOverErrResIPC>(),
        message<ResetTxSwOverErrResIPC>(out),
        request<ProtectionModeReqIPC, ProtectionModeResIPC>(),
        message<ProtectionModeResIPC>(out),
        request<SetRFInputPowerThresholdReqIPC, SetRFInputPowerThresholdResIPC>(),
        message<SetRFInputPowerThresholdResIPC>(out),
        message<CompanionMMUStatusIPC>(in),
        request<GetActiveUnitReqIPC, GetActiveUnitResIPC>(),
        message<GetActiveUnitResIPC>(out),
        request<SetActiveRadioRemoteReqIPC, SetActiveRadioRemoteResIPC>(),
        message<SetActiveRadioRemoteResIPC>(out),
        request<GetTaSwitchReqIPC, GetTaSwitchResIPC>(),
        message<GetTaSwitchResIPC>(out),
        request<TxSwitchOverConfigurationReqIPC, TxSwitchOverConfigurationResIPC>(),
        message<TxSwitchOverConfigurationResIPC>(out),
        message<NotifyProtectionModeOperStatusIPC>(out),
        message<GetProtectionModeOperStatusReqIPC>(in),
    };
}
