#include "TestCommandMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows testCommandRows()
{
    using enum MessageDirection;
    return {
        message<TestCommandRxIPC>(in),
        message<TestCommandTxIPC>(out),
    };
}
