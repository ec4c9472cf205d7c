#include "PsMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows psRows()
{
    using enum MessageDirection;
    return {
        message<HandleXfRlWanIfEntryGroupReqIPC>(in),
        request<HandleContinuousWaveGroupReqIPC, HandleContinuousWaveGroupResIPC>(),
        message<HandleContinuousWaveGroupResIPC>(out),
    };
}
