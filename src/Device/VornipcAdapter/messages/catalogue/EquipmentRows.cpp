#include "EquipmentMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows equipmentRows()
{
    using enum MessageDirection;
    return {
        message<RAULostIPC>(both),       request<ADSSelftestReqIPC, ADSSelftestResIPC>(),
        message<ADSSelftestResIPC>(out), request<ADSSwStatusReqIPC, ADSSwStatusResIPC>(),
        message<ADSSwStatusResIPC>(out), message<ADSNpuDownIPC>(in),
        message<MMUStateIPC>(in),        message<RAUStateIPC>(in),
        message<TermStateIPC>(in),       message<RLaprintExtIPC>(out),
        message<VornRestartedIPC>(in),   request<ADSClosePciReqIPC, ADSClosePciResIPC>(),
        message<ADSClosePciResIPC>(out),
    };
}
