#include "support/ModuleTest.h"

#include <pthread.h>

#include <algorithm>
#include <limits>

namespace {

class Link : public ModuleTest {};

/// A PS group request up to its group id; the fourth byte is its kind.
std::string psHeader(const std::string& kind, const std::string& groupId)
{
    return "01 02 03" + kind + "05 06 0007 01 02 0040 00 00 00 00 0008 000c" + groupId;
}

std::string noHandler(const std::string& id)
{
    return "5 onMessageReceived: *********** No handler found for id " + id;
}

std::string receivedOn(const std::string& device, const std::string& id)
{
    return "6 onMessageReceived: Message with id " + id + " received on device: " + device;
}

TEST_F(Link, DropsWhatNobodyServes)
{
    startInService();
    const std::string unhandledPs = "5 onMessageReceived: Message with device id PS of unhandled type received";
    const Exchange cases[] = {
        {"empty", "", {}},
        {"1 byte", "00", {}},
        {"3 bytes", "002000", {}},
        {"3 bytes for PS", "010203", {}, "", 1},
        {"4 bytes of an unknown id", "deadbeef", {receivedOn("0", "deadbeef"), noHandler("deadbeef")}},
        {"an id of the area that nobody serves", "00200003" + head(1), {noHandler("200003")}},
        {"one of the radio's own answers", "00200005" + head(1), {noHandler("200005")}},
        {"another kind of PS message",
         psHeader("11", "00200009"),
         {"6 fetchMail: fetchMail(): message fetched from mailbox:1", unhandledPs},
         "",
         1},
        {"an unknown PS group", psHeader("10", "000020d0"), {receivedOn("1", "20d0"), noHandler("20d0")}, "", 1},
        {"every other device flag is PS", psHeader("10", "000020d0"), {receivedOn("1", "20d0")}, "", 7},
        {"10 too", psHeader("00", "000020d0"), {unhandledPs}, "", 10},
        {"bytes behind a message are ignored",
         "00200011" + head(0) + words(3) + repeated(0xff, 1000),
         {"IAlarmHandler.setTerminalUp(false)"}},
    };
    runAll(cases);
    EXPECT_TRUE(answersSelfTest());
}

TEST_F(Link, AShortMessageEndsTheReaderAndSaysSo)
{
    const struct {
        std::string name;
        std::string buffer;
        unsigned device;
        std::string reason;
        std::string lastMessage;
    } cases[] = {
        {"no header", "00200009", 0, "Failed to read 4 bytes from input stream! Read 0",
         "id 0x200009, device 0, length 4"},
        {"a header cut short", "00200006" + head(1).substr(0, 42), 0,
         "Failed to read 4 bytes from input stream! Read 1", "id 0x200006, device 0, length 25"},
        {"a body cut short", "00200009" + head(1) + "0000", 0, "Failed to read 4 bytes from input stream! Read 2",
         "id 0x200009, device 0, length 30"},
        {"a text field cut short", "00200135" + head(1) + zeros(239), 0,
         "Failed to read 120 bytes from input stream! Read 119", "id 0x200135, device 0, length 267"},
        {"a PS header cut short", "01020310 05060007 0102", 1, "Failed to read 2 bytes from input stream! Read 0",
         "id unreadable, device 1, length 10"},
    };
    for (const auto& [name, buffer, device, reason, lastMessage] : cases) {
        SCOPED_TRACE(name);
        startInService();
        newTrace();
        deliver(buffer, device);
        EXPECT_TRUE(comesTrue([&] { return module()->linkFacts().reader == VornipcLinkFacts::Reader::ended; }));
        deliver(buffer, device); // stays in the mailbox
        const VornipcLinkFacts facts = module()->linkFacts();
        EXPECT_EQ(facts.reason, reason);
        ASSERT_TRUE(facts.lastMessage);
        EXPECT_EQ(facts.lastMessage->id.has_value(), device == 0);
        EXPECT_EQ(facts.lastMessage->device, device);
        EXPECT_EQ(facts.lastMessage->length, bytesOf(buffer).size());

        stop(); // the reader's last words are written by now
        EXPECT_EQ(newTrace(), (std::vector<std::string>{
                                  "1 readThread: Exception: " + reason + ", in: readThread()",
                                  "1 readThread: readThread(): the reader has ended, no message is served any more. "
                                  "Last message: " +
                                      lastMessage,
                                  "3 ~VornipcMessageClient: Shutting down VORNIPC thread (T)"}));
        EXPECT_TRUE(newlySent().size() == 1) << "nothing but the answer to the self test";
    }
}

TEST_F(Link, ExceptionsWithoutATextEndTheReaderToo)
{
    startInService();
    platform.driver().setTransmitter([](const char* /*data*/, unsigned /*length*/) -> int { throw 42; });
    newTrace();
    deliver("00200080" + head(1));
    EXPECT_TRUE(comesTrue([&] { return module()->linkFacts().reader == VornipcLinkFacts::Reader::ended; }));
    EXPECT_EQ(module()->linkFacts().reason, "an exception without a text");
    EXPECT_EQ(newTrace(),
              (std::vector<std::string>{"1 readThread: Exception in: readThread()",
                                        "1 readThread: readThread(): the reader has ended, no message is "
                                        "served any more. Last message: id 0x200080, device 0, length 28"}));
}

TEST_F(Link, AReaderThatCannotBeStartedIsTold)
{
    pthread_attr_t attributes{};
    ASSERT_EQ(pthread_getattr_default_np(&attributes), 0);
    pthread_attr_t tooLarge = attributes;
    ASSERT_EQ(pthread_attr_setstacksize(&tooLarge, std::numeric_limits<std::size_t>::max() / 8 * 7), 0);
    ASSERT_EQ(pthread_setattr_default_np(&tooLarge), 0);
    start();
    ASSERT_EQ(pthread_setattr_default_np(&attributes), 0);
    EXPECT_EQ(newTrace()[1], "1 startReadThread: Exception: Resource temporarily unavailable, in: startReadThread()");
    EXPECT_EQ(module()->linkFacts().reader, VornipcLinkFacts::Reader::ended);
    EXPECT_EQ(module()->linkFacts().reason, "Resource temporarily unavailable");
}

TEST_F(Link, TheWhiteListCutsOffTheOtherAreas)
{
    startInService(0x80);
    const auto discarded = [](const std::string& id) {
        return "1 onMessageReceived: Discarded received Vornipc message since it is not in the white list, Id: " + id;
    };
    const Exchange cases[] = {
        {"traffic", "00700001" + head(1), {discarded("700001")}},
        {"an equipment message that such a node does not know", "00200116" + head(1) + words(1), {discarded("200116")}},
        {"4 bytes are enough to tell", "deadbeef", {discarded("deadbeef")}},
        {"listed but not served", "00600017" + head(1), {noHandler("600017")}},
        {"not for PS messages", psHeader("10", "000020d0"), {receivedOn("1", "20d0"), noHandler("20d0")}, "", 1},
        {"listed and served", "00200090" + head(1), {toNode("00200091") + head(1) + words(0)}},
        {"switched off by the next self test",
         selfTest(1, 0),
         {toNode("00200005") + head(0) + words(1) + zeros(48),
          "4 enableVornipcWhiteList: Disabling Vornipc white list for ANS RL5"}},
        {"so the message passes",
         "00200116" + head(1) + words(1),
         {"TrfMlm.setTxMaxAcmLimit(0, 1)", "4 onSetTxMaxAcmLimitReq: Set Tx Max Acm capacity limit for ct 1 to 1"}},
    };
    runAll(cases);
}

TEST_F(Link, GateAndWhiteListHoldBackWhatTheRadioTellsUnasked)
{
    constexpr EChannelSelector channel{1};
    const std::uint8_t data = 1;
    const struct {
        std::string id;
        std::function<void()> tell;
        bool listed = false;
    } cases[] = {
        {"1000043", [&] { module()->notifyProtectionModeOperStatus(channel, 1); }},
        {"1000019", [&] { module()->notifyActiveRadioSw(channel, 1); }},
        {"1000020", [&] { module()->notifyWorkingRxSw(channel, 1); }},
        {"500101", [&] { module()->notifyHopRx(channel, 1, &data); }},
        {"500001", [&] { module()->notifyHccRx(channel, 0, 0, 1, &data); }},
        {"800002", [&] { module()->notifyTestCommandTx(channel, {}); }},
        {"200012", [&] { module()->sendToNpuSyslog("x"); }, true},
        {"200134", [&] { EXPECT_EQ(platform.bpmCommand({1}), 0); }, true},
    };
    for (const auto& [gateOpen, whiteList] : {std::pair(true, true), {false, true}, {false, false}, {true, false}}) {
        startInService(whiteList ? 0xA0 : 0x20);
        module()->setOutgoingIpcMessagesAllowed(gateOpen);
        for (const auto& [id, tell, listed] : cases) {
            std::vector<std::string> lines;
            if (whiteList && !listed) {
                lines.push_back("1 send: Outgoing Vornipc message discarded since the message Id is not in the white "
                                "list, Id: " +
                                id);
            }
            if (!gateOpen || !lines.empty()) {
                lines.push_back("1 send: Send is not allowed since MMU state is not in service or PCI has been "
                                "disabled, Id:" +
                                std::to_string(std::stoul(id, nullptr, 16)));
            }
            newlySent();
            newTrace();
            tell();
            EXPECT_EQ(newTrace(), lines);
            EXPECT_EQ(newlySent().size(), lines.empty() ? 1U : 0U) << id;
        }
        module()->setOutgoingIpcMessagesAllowed(true);
        expectOutcome("the dropped ones have used numbers", [&] { module()->sendToNpuSyslog("x"); },
                      {toNode("00200012") + spontaneousHead(8, 0) + words(8, 0) + text("[RL_ADS] x", 160)});
    }
}

TEST_F(Link, SystemLogLinesAreCutAt159Bytes)
{
    startInService();
    const auto line = [](std::int64_t number, std::int64_t ct, const std::string& shown) {
        return toNode("00200012") + spontaneousHead(number, ct) + words(8, 0) + text(shown, 160);
    };
    const auto log = [this](const std::string& text) { return [this, text] { module()->sendToNpuSyslog(text); }; };
    const std::string a150(150, 'a');
    expectOutcome("empty", log(""), {line(0, 0, "[RL_ADS] ")});
    expectOutcome("150 fit", log(a150), {line(1, 0, "[RL_ADS] " + a150)});
    expectOutcome("151 do not", log(a150 + "b"), {line(2, 0, "[RL_ADS] " + a150)});
    expectOutcome("200", log(a150 + std::string(50, 'b')), {line(3, 0, "[RL_ADS] " + a150)});
    expectOutcome("with a channel", [&] { module()->sendToNpuSyslog("x", RadioChannel{2}); },
                  {line(4, 2, "[RL_ADS] RAU CH: 2 - x")});
    const std::string a138(138, 'a');
    expectOutcome("138 fit behind a channel", [&] { module()->sendToNpuSyslog(a138, RadioChannel{1}); },
                  {line(5, 1, "[RL_ADS] RAU CH: 1 - " + a138)});
    expectOutcome("139 do not", [&] { module()->sendToNpuSyslog(a138 + "b", RadioChannel{1}); },
                  {line(6, 1, "[RL_ADS] RAU CH: 1 - " + a138)});
}

TEST_F(Link, ANodeThatIsAwayMissesWhatIsSentMeanwhile)
{
    startInService();
    patch(R"({"results":{"ripc.sendBufferToPci":-1}})");
    newlySent();
    deliver("00200080" + head(1));
    settle();
    EXPECT_TRUE(newlySent().empty());
    endInjections();
    EXPECT_TRUE(answersSelfTest());
}

TEST_F(Link, WithoutAnAddressThereIsNoLink)
{
    start({.mmuAddress = ""});
    EXPECT_EQ(module()->linkFacts().reader, VornipcLinkFacts::Reader::none);
    EXPECT_FALSE(deliver(selfTest(1, 0))) << "nobody has registered with the driver";
    module()->setOutgoingIpcMessagesAllowed(true);
    expectOutcome("a lost radio", [&] { EXPECT_TRUE(platform.radioDown(1)); },
                  {"3 radioDown: RAU lost for channel 1", "1 send: m_vornipcSender is null, msg not sent! Id:2097154"});
}

TEST_F(Link, PrintsMessagesAsJsonOnlyWhereSomebodyLooks)
{
    startInService();
    const auto texts = [this] {
        std::vector<std::string> found;
        for (const auto& line : allTraceLines()) {
            if (line["method"] == "onTermState" && line["level"] == 6) {
                EXPECT_EQ(line["tag"], "KRO.VORNIPC.EH");
                EXPECT_EQ(line["file"], "EquipmentHandler.cpp");
                found.push_back(line["text"]);
            }
        }
        return found;
    };
    platform.setTraceLevel("KRO.VORNIPC.EH", 5);
    deliver("00200011" + head(2) + words(4294967295));
    settle();
    EXPECT_TRUE(texts().empty());
    platform.setTraceLevel("KRO.VORNIPC.EH", 6);
    deliver("00200011" + head(2) + words(4294967295));
    settle();
    EXPECT_EQ(texts(), (std::vector<std::string>{R"(Received: {
    "id": 2097169,
    "name": "TermStateIPC",
    "data": {
        "SignalHeader": {
            "slot": 3,
            "sigId": 161,
            "senderId": 7,
            "seqNr": 85,
            "spare1": 90,
            "ct": 2
        },
        "eModuleOperStatus": 4294967295
    }
})"}));
}

} // namespace
