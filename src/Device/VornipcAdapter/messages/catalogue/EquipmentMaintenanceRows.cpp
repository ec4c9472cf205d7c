#include "EquipmentMaintenanceMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows equipmentMaintenanceRows()
{
    using enum MessageDirection;
    return {
        request<RAURestartReqIPC, RAURestartResIPC>(),
        message<RAURestartResIPC>(out),
        request<RAUStatusReqIPC, RAUStatusResIPC>(),
        message<RAUStatusResIPC>(out),
        request<SetRAUDefaultConfigReqIPC, SetRAUDefaultConfigResIPC>(),
        message<SetRAUDefaultConfigResIPC>(out),
        request<SetBerAlarmThresholdReqIPC, SetBerAlarmThresholdResIPC>(),
        message<SetBerAlarmThresholdResIPC>(out),
        message<ResetBERCountersIPC>(in),
        request<SetSDCAdminStatusReqIPC, SetSDCAdminStatusResIPC>(),
        message<SetSDCAdminStatusResIPC>(out),
        request<GetSDCOperStatusReqIPC, GetSDCOperStatusResIPC>(),
        message<GetSDCOperStatusResIPC>(out),
        request<DadeControlReqIPC, DadeControlResIPC>(),
        message<DadeControlResIPC>(out),
        request<GetDadeStatusReqIPC, GetDadeStatusResIPC>(),
        message<GetDadeStatusResIPC>(out),
        request<SetSDCPathReqIPC, SetSDCPathResIPC>(),
        message<SetSDCPathResIPC>(out),
        request<GetSDCCurrentDataReqIPC, GetSDCCurrentDataResIPC>(),
        message<GetSDCCurrentDataResIPC>(out),
        request<GetSDCActualPathReqIPC, GetSDCActualPathResIPC>(),
        message<GetSDCActualPathResIPC>(out),
        message<SetTxMaxAcmLimitReqIPC>(in),
        request<SetCarrierTermPreambleReqIPC, SetCarrierTermPreambleResIPC>(),
        message<SetCarrierTermPreambleResIPC>(out),
        request<ResetInsufficientPowerResourcesErrorReqIPC, ResetInsufficientPowerResourcesErrorResIPC>(),
        message<ResetInsufficientPowerResourcesErrorResIPC>(out),
        request<GetShiftStatusReqIPC, GetShiftStatusResIPC>(),
        message<GetShiftStatusResIPC>(out),
        message<NotifyCarrierStatusIPC>(in),
        message<NotifyInitRAUStateProtcIPC>(in),
        message<BpmCommandReqIPC>(out),
        message<BpmCommandResIPC>(in),
    };
}
