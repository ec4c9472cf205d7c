#include "AlarmMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows alarmRows()
{
    using enum MessageDirection;
    return {
        message<SetFaultIPC>(both),
    };
}
