#include "support/ModuleTest.h"

namespace {

class EquipmentStates : public ModuleTest {};

class EquipmentStatesOfChannel : public ChannelTest {};

FOR_EACH_CHANNEL(EquipmentStatesOfChannel);

std::string called(const std::string& method, const std::string& id)
{
    return "5 " + method + ": called (id: 0x" + id + ")";
}

std::string received(const std::string& method, const std::string& message)
{
    return "6 " + method + ": Received: " + message;
}

const std::string statusRequest = "00200020" + head(1);
const std::string statusAnswer = toNode("00200021") + head(1) + words(31);
const std::string statusRefused = "1 send: Send is not allowed since MMU state is not in service or PCI has been "
                                  "disabled, Id:2097185";
const std::vector<std::string> statusCalls{"IRadio_1.isRadioUp()", "IRadio_1.getTemperature()"};

const std::string closePci = "00200039" + head(2);
const std::string closePciAnswer = toNode("00200040") + head(2) + words(0);
const std::string closePciTrace = "3 onAdsClosePciReq: Received ADSClosePciReqIPC, outgoing PCI messages disabled";

TEST_F(EquipmentStates, StatesOfTheModemUnitMoveTheGate)
{
    start();
    const std::string inService = "3 onMMUState: MMU InService, outgoing PCI messages are enabled";
    const Exchange cases[] = {
        {"closed at first",
         statusRequest,
         {statusCalls, called("onRauStatusReq", "200020"), received("onRauStatusReq", "RAUStatusReqIPC"),
          "6 onRauStatusReq: Respond with: RAUStatusResIPC", statusRefused}},
        {"in service opens it and takes slot and sender",
         "00200009" + words(0x1C3, 0, 7, 1, 0, 0) + words(1),
         {"Bsp.setSlotId(451)", "IAlarmHandler.setMmuInService(true)", called("onMMUState", "200009"),
          received("onMMUState", "MMUStateIPC"), "5 onMMUState: New mmu state is 1", inService}},
        {"now answers leave", statusRequest, {statusAnswer, statusCalls}},
        {"reduced service changes nothing",
         mmuState(2),
         {"5 onMMUState: New mmu state is 2", "3 onMMUState: MMUStateIPC received with reduced service"}},
        {"an unknown state changes nothing",
         mmuState(5),
         {"5 onMMUState: New mmu state is 5", "1 onMMUState: MMUStateIPC received with unknown service"}},
        {"so does 0", mmuState(0), {"1 onMMUState: MMUStateIPC received with unknown service"}},
        {"still open", statusRequest, {statusAnswer, statusCalls}},
        {"a restarted node leaves it open",
         "00200019" + head(0),
         {"IAlarmHandler.notifyNodeRestart()", called("onVornRestarted", "200019"),
          received("onVornRestarted", "VornRestartedIPC")}},
        {"answers still leave", statusRequest, {statusAnswer, statusCalls}},
        {"out of service closes it",
         mmuState(3),
         {"IAlarmHandler.setMmuInService(false)",
          "3 onMMUState: MMU OutOfService, outgoing PCI messages are disabled"}},
        {"closed again", statusRequest, {statusCalls, statusRefused}},
        {"opened once more", mmuState(1), {"Bsp.setSlotId(3)", "IAlarmHandler.setMmuInService(true)", inService}},
        {"a node that goes down closes it",
         "00200008" + head(0),
         {"3 onADSNpuDown: Received ADSNpuDownIPC, outgoing PCI messages disabled"}},
        {"closed by the node", statusRequest, {statusCalls, statusRefused}},
        {"a radio that the node lost is only traced",
         "00200002" + head(1),
         {called("onRAULostFromAds", "200002"), received("onRAULostFromAds", "RAULostIPC")}},
    };
    runAll(cases);
    const VornipcLinkFacts facts = module()->linkFacts();
    EXPECT_EQ(facts.slotNumber, 3);
    EXPECT_EQ(facts.senderId, 7U);
    EXPECT_FALSE(facts.outgoingIpcMessagesAllowed);
}

TEST_P(EquipmentStatesOfChannel, StatesOfTheRadioReachTheAlarmHandler)
{
    start();
    const auto rau = [this](std::int64_t state) { return "00200010" + head(ct) + words(state); };
    const Exchange cases[] = {
        {"in service",
         rau(1),
         {"IAlarmHandler.setRauInService($, true)", called("onRAUState", "200010"),
          received("onRAUState", "RAUStateIPC"), "5 onRAUState: New rau state is 1", "5 onRAUState: RAU InService"}},
        {"out of service",
         rau(3),
         {"IAlarmHandler.setRauInService($, false)", "5 onRAUState: New rau state is 3",
          "5 onRAUState: RAU OutOfService"}},
        {"in reduced service", rau(2), {"2 onRAUState: Unhandled rau state is 2"}},
        {"in an unknown state", rau(4294967295), {"2 onRAUState: Unhandled rau state is 4294967295"}},
    };
    runAll(cases);
}

TEST_F(EquipmentStates, StatesOfTheTerminalReachTheAlarmHandler)
{
    start();
    const auto terminal = [](std::int64_t state) { return "00200011" + head(0) + words(state); };
    const Exchange cases[] = {
        {"up",
         terminal(1),
         {"IAlarmHandler.setTerminalUp(true)", called("onTermState", "200011"), received("onTermState", "TermStateIPC"),
          "5 onTermState: New terminal state is 1"}},
        {"reduced counts as up", terminal(2), {"IAlarmHandler.setTerminalUp(true)"}},
        {"down", terminal(3), {"IAlarmHandler.setTerminalUp(false)"}},
        {"0", terminal(0), {"2 onTermState: Unhandled terminal state is 0"}},
        {"4", terminal(4), {"2 onTermState: Unhandled terminal state is 4"}},
    };
    runAll(cases);
}

TEST_F(EquipmentStates, ClosePciQuiescesOnlyAUnitOutOfService)
{
    start();
    const std::vector<std::string> quiesced{"ITrafHandler.quiesceChannel(1, true)", "IRadio_1.setActive(false)",
                                            "ITrafHandler.quiesceChannel(2, true)", "IRadio_2.setActive(false)"};
    const Exchange cases[] = {
        {"no state yet", closePci, {closePciAnswer, closePciTrace}},
        {"in service",
         mmuState(1),
         {"Bsp.setSlotId(3)", "IAlarmHandler.setMmuInService(true)",
          "3 onMMUState: MMU InService, outgoing PCI messages are enabled"}},
        {"close while in service", closePci, {closePciAnswer, closePciTrace}},
        {"which closes the gate", statusRequest, {statusCalls, statusRefused}},
        {"out of service",
         mmuState(3),
         {"IAlarmHandler.setMmuInService(false)",
          "3 onMMUState: MMU OutOfService, outgoing PCI messages are disabled"}},
        {"close while out of service", closePci, {closePciAnswer, quiesced, closePciTrace}},
        {"a platform that fails does not hold it up",
         closePci,
         {closePciAnswer, quiesced, closePciTrace},
         R"({"results":{"ITrafHandler.quiesceChannel":-1}})"},
        {"an unknown state is remembered, too",
         mmuState(9),
         {"1 onMMUState: MMUStateIPC received with unknown service"}},
        {"so nothing is quiesced", closePci, {closePciAnswer, closePciTrace}},
    };
    runAll(cases);
    newCalls();
    deliver(mmuState(3));
    deliverAndSettle(closePci);
    const auto calls = newCalls(true);
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.back(), "ripc.sendBufferToPci(36)") << "the answer comes after the last channel";
}

TEST_F(EquipmentStates, ClosePciQuiescesTheChannelsThatTheUnitHas)
{
    const struct {
        unsigned char channels;
        std::vector<std::string> calls;
    } cases[] = {
        {0, {}},
        {1, {"ITrafHandler.quiesceChannel(1, true)", "IRadio_1.setActive(false)"}},
        {3, {}},
    };
    for (const auto& [channels, calls] : cases) {
        start({.moduleChannels = channels});
        deliverAndSettle(mmuState(3));
        expectOutcome(std::to_string(channels) + " channels", [&] { deliverAndSettle(closePci); },
                      {closePciAnswer, calls, closePciTrace});
    }
}

TEST_P(EquipmentStatesOfChannel, TellsTheNodeOfALostRadio)
{
    startInService();
    const auto radioDown = [this] { EXPECT_TRUE(platform.radioDown(ct)); };
    const auto lost = [this](std::int64_t number) { return toNode("00200002") + spontaneousHead(number, ct); };
    const std::vector<std::string> down{"5 radioDown: Callback: << radioDown(): for ct $",
                                        "3 radioDown: RAU lost for channel $"};
    expectOutcome("gate open", radioDown, {lost(0), down});
    deliverAndSettle(mmuState(3));
    expectOutcome("gate closed", radioDown,
                  {down, "1 send: Send is not allowed since MMU state is not in service or PCI has been disabled, "
                         "Id:2097154"});
    deliverAndSettle(mmuState(1));
    expectOutcome("the dropped one has used a number", radioDown, {lost(2), down});
    module()->resetSpontaneousMessageSequenceNumber();
    expectOutcome("numbers begin again", radioDown, {lost(0), down});
}

TEST_F(EquipmentStates, AnUnitWithoutItsAlarmHandlerOnlyRefusesTheNotification)
{
    start({.state = R"({"interfaces":{"IAlarmHandler":false}})"});
    const Exchange cases[] = {
        {"in service",
         mmuState(1),
         {"Bsp.setSlotId(3)", "3 onMMUState: MMU InService, outgoing PCI messages are enabled",
          missing("onMMUState", "IAlarmHandler")}},
        {"RAU", "00200010" + head(1) + words(1), {missing("onRAUState", "IAlarmHandler")}},
        {"terminal", "00200011" + head(0) + words(3), {missing("onTermState", "IAlarmHandler")}},
        {"node restart", "00200019" + head(0), {missing("onVornRestarted", "IAlarmHandler")}},
        {"out of service",
         mmuState(3),
         {missing("onMMUState", "IAlarmHandler"),
          "3 onMMUState: MMU OutOfService, outgoing PCI messages are disabled"}},
    };
    runAll(cases);
    EXPECT_EQ(module()->linkFacts().slotNumber, 3);
}

} // namespace
