#include "RemoteMibMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows remoteMibRows()
{
    using enum MessageDirection;
    return {
        message<HccRxIPC>(out),
        message<HccTxIPC>(in),
        message<HopRxIPC>(out),
        message<HopTxIPC>(in),
    };
}
