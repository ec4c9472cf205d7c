#include "VornipcWhiteList.h"

#include <map>

namespace kro::device::vornipc {

namespace {

/// Messages that a node in QES mode exchanges with the radio: software upgrade and equipment, as the node's software
/// knows them. An area's name stands for a message that this radio neither sends nor receives.
constexpr std::uint32_t whiteListIds[] = {

    0x600001, // GetSwBoardReqIPC
    0x600002, // CodePacketStartIPC
    0x600003, // CodePacketIPC
    0x600004, // GetSwBoardResIPC
    0x600005, // software upgrade area
    0x600006, // software upgrade area
    0x600007, // TestPassiveBankIPC
    0x600008, // CheckRestartTypeIPC
    0x600009, // DWLTestNotOkIPC
    0x600010, // SetActiveBankIPC
    0x600011, // software upgrade area
    0x600012, // software upgrade area
    0x600013, // software upgrade area
    0x600014, // ResetTestPassiveBankIPC
    0x600015, // software upgrade area
    0x600016, // CodePacketStartExtIPC
    0x600017, // software upgrade area
    0x200002, // RAULostIPC
    0x200003, // equipment area
    0x200004, // ADSSelftestReqIPC
    0x200005, // ADSSelftestResIPC
    0x200006, // ADSSwStatusReqIPC
    0x200007, // ADSSwStatusResIPC
    0x200008, // ADSNpuDownIPC
    0x200009, // MMUStateIPC
    0x200010, // RAUStateIPC
    0x200011, // TermStateIPC
    0x200012, // RLaprintExtIPC
    0x200017, // RAURestartReqIPC
    0x200018, // RAURestartResIPC
    0x200019, // VornRestartedIPC
    0x200020, // RAUStatusReqIPC
    0x200021, // RAUStatusResIPC
    0x200022, // SetRAUDefaultConfigReqIPC
    0x200023, // SetRAUDefaultConfigResIPC
    0x200039, // ADSClosePciReqIPC
    0x200040, // ADSClosePciResIPC
    0x200048, // SetBerAlarmThresholdReqIPC
    0x200049, // SetBerAlarmThresholdResIPC
    0x200056, // GetRAUCapabilityReqIPC
    0x200057, // GetRAUCapabilityResIPC
    0x200069, // ResetBERCountersIPC
    0x200078, // SetSDCAdminStatusReqIPC
    0x200079, // SetSDCAdminStatusResIPC
    0x200080, // GetSDCOperStatusReqIPC
    0x200081, // GetSDCOperStatusResIPC
    0x200082, // DadeControlReqIPC
    0x200083, // DadeControlResIPC
    0x200084, // GetDadeStatusReqIPC
    0x200085, // GetDadeStatusResIPC
    0x200086, // SetSDCPathReqIPC
    0x200087, // SetSDCPathResIPC
    0x200088, // GetSDCCurrentDataReqIPC
    0x200089, // GetSDCCurrentDataResIPC
    0x200090, // GetSDCActualPathReqIPC
    0x200091, // GetSDCActualPathResIPC
    0x200108, // equipment area
    0x200121, // SetCarrierTermPreambleReqIPC
    0x200122, // SetCarrierTermPreambleResIPC
    0x200123, // GetRAUIndexCapabilitiesReqIPC
    0x200124, // GetRAUIndexCapabilitiesResIPC
    0x200125, // SetRAUIndexCapabilitiesReqIPC
    0x200126, // SetRAUIndexCapabilitiesResIPC
    0x200127, // ResetInsufficientPowerResourcesErrorReqIPC
    0x200128, // ResetInsufficientPowerResourcesErrorResIPC
    0x200129, // GetShiftStatusReqIPC
    0x200130, // GetShiftStatusResIPC
    0x200131, // RauDetected1IPC
    0x200132, // NotifyCarrierStatusIPC
    0x200133, // NotifyInitRAUStateProtcIPC
    0x200134, // BpmCommandReqIPC
    0x200135, // BpmCommandResIPC
};

std::map<std::uint32_t, VornipcWhiteList> makeWhiteList()
{
    std::map<std::uint32_t, VornipcWhiteList> list;
    std::uint32_t position = 0;
    for (const std::uint32_t id : whiteListIds) {
        list.emplace(id, VornipcWhiteList{position++});
    }
    return list;
}

const std::map<std::uint32_t, VornipcWhiteList> whiteList = makeWhiteList();

} // namespace

bool isInVornipcWhiteList(std::uint32_t messageId)
{
    return whiteList.contains(messageId);
}

} // namespace kro::device::vornipc
