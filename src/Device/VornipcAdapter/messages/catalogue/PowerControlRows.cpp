#include "PowerControlMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows powerControlRows()
{
    using enum MessageDirection;
    return {
        request<ConfigureAtpcFallbackReqIPC, ConfigureAtpcFallbackResIPC>(),
        message<ConfigureAtpcFallbackResIPC>(out),
        request<ActivateAtpcFallbackReqIPC, ActivateAtpcFallbackResIPC>(),
        message<ActivateAtpcFallbackResIPC>(out),
        request<GetRauPowerInventoryReqIPC, GetRauPowerInventoryResIPC>(),
        message<GetRauPowerInventoryResIPC>(out),
        request<GetRfPowerReqIPC, GetRfPowerResIPC>(),
        message<GetRfPowerResIPC>(out),
        request<SetRfPowerReqIPC, SetRfPowerResIPC>(),
        message<SetRfPowerResIPC>(out),
        message<SetRfPowerV2ResIPC>(out),
        message<SetRfPowerV3ResIPC>(out),
        request<FEPowerLimitationReqIPC, FEPowerLimitationResIPC>(),
        message<FEPowerLimitationResIPC>(out),
        request<SetRfPowerV2ReqIPC, SetRfPowerV2ResIPC>(),
        request<SetRfPowerV3ReqIPC, SetRfPowerV3ResIPC>(),
    };
}
