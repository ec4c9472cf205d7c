#include "SoftwareUpgradeMessages.h"

#include "catalogue/CatalogueRows.h"

CatalogueRows softwareUpgradeRows()
{
    using enum MessageDirection;
    return {
        message<GetSwBoardReqIPC>(in),      message<CodePacketStartIPC>(in), message<CodePacketIPC>(in),
        message<GetSwBoardResIPC>(out),     message<TestPassiveBankIPC>(in), message<CheckRestartTypeIPC>(in),
        message<DWLTestNotOkIPC>(in),       message<SetActiveBankIPC>(in),   message<ResetTestPassiveBankIPC>(in),
        message<CodePacketStartExtIPC>(in),
    };
}
