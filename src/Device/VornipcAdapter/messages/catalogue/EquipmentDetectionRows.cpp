#include "EquipmentDetectionMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows equipmentDetectionRows()
{
    using enum MessageDirection;
    return {
        request<GetRAUCapabilityReqIPC, GetRAUCapabilityResIPC>(),
        message<GetRAUCapabilityResIPC>(out),
        request<GetRAUIndexCapabilitiesReqIPC, GetRAUIndexCapabilitiesResIPC>(),
        message<GetRAUIndexCapabilitiesResIPC>(out),
        request<SetRAUIndexCapabilitiesReqIPC, SetRAUIndexCapabilitiesResIPC>(),
        message<SetRAUIndexCapabilitiesResIPC>(out),
        message<RauDetected1IPC>(out),
    };
}
