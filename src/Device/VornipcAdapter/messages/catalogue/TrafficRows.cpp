#include "TrafficMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows trafficRows()
{
    using enum MessageDirection;
    return {
        request<GetIfOperStatusReqIPC, GetIfOperStatusResIPC>(),
        message<GetIfOperStatusResIPC>(out),
        message<SetIfAdminStatusIPC>(in),
        request<SetIfLoopStatusReqIPC, SetIfLoopStatusResIPC>(),
        message<SetXfRFIfStatusResIPC>(out),
        message<SetIfLoopStatusResIPC>(out),
        request<GetRFTxOperStatusReqIPC, GetRFTxOperStatusResIPC>(),
        message<GetRFTxOperStatusResIPC>(out),
        request<SetXfRFIfStatusReqIPC, SetXfRFIfStatusResIPC>(),
        message<SetMLMResIPC>(out),
        request<SetMLMReqIPC, SetMLMResIPC>(),
    };
}
