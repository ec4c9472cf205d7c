#include "support/ModuleTest.h"

namespace {

class SoftwareUpgrade : public ModuleTest {
protected:
    /// The text of the last trace line at level 6 that shows a message.
    simulated::Json lastPrinted() const
    {
        simulated::Json printed;
        for (const auto& line : allTraceLines()) {
            const std::string text = line["text"];
            if (line["tag"] == "KRO.VORNIPC.SU" && line["level"] == 6) {
                printed = simulated::Json::parse(text.substr(text.find('{')));
            }
        }
        return printed;
    }
};

TEST_F(SoftwareUpgrade, MessagesAreTracedAndDropped)
{
    startInService();
    const struct {
        std::string method;
        std::string name;
        std::string id;
        std::size_t bodyBytes;
        std::string shown = "Received: ";
    } cases[] = {
        {"onGetSwBoardReqIPC", "GetSwBoardReqIPC", "00600001", 4},
        {"onCodePacketStartIPC", "CodePacketStartIPC", "00600002", 1496},
        {"onCodePacketIPC", "CodePacketIPC", "00600003", 1048},
        {"debugGetSwBoardResIPC", "GetSwBoardResIPC", "00600004", 136, "Sniff response: "},
        {"onTestPassiveBankIPC", "TestPassiveBankIPC", "00600007", 4},
        {"onCheckRestartTypeIPC", "CheckRestartTypeIPC", "00600008", 4},
        {"onDWLTestNotOkIPC", "DWLTestNotOkIPC", "00600009", 4},
        {"onSetActiveBankIPC", "SetActiveBankIPC", "00600010", 4},
        {"onResetTestPassiveBankIPC", "ResetTestPassiveBankIPC", "00600014", 4},
        {"onCodePacketStartExtIPC", "CodePacketStartExtIPC", "00600016", 1416},
    };
    for (const auto& [method, name, id, bodyBytes, shown] : cases) {
        const Exchange exchange{name,
                                id + head(1) + repeated(0x81, bodyBytes),
                                {"5 " + method + ": " + method + "(): Not used, implemented in bsp_mdw",
                                 "6 " + method + ": " + shown + name}};
        runAll({&exchange, 1});
    }
}

TEST_F(SoftwareUpgrade, LargeMessagesPrintWhole)
{
    startInService();
    const std::string packet = words(1, 2, 3) + zeroWords(255) + words(-4); // board, packets, number, data
    const std::string revision = words(1024) + "4142434445 000000";         // packet size, revision, padding
    const std::string header = words(7, 8, 1) + words(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12);
    deliver("00600002" + head(1) + packet + revision + header + words(21, 22, 23) + zeroWords(3 * 31) + words(9));
    settle();
    const auto start = lastPrinted().at("data");
    EXPECT_EQ(start["tCodePacket"]["data"].size(), 256U);
    EXPECT_EQ(start["tCodePacket"]["data"]["value255"], -4);
    EXPECT_EQ(start["tLoadSwRev"]["data"]["value4"], 0x45) << "bytes print as numbers";
    EXPECT_EQ(start["tUpgHeaderInfo"]["timeUntilCancel"], 12);
    EXPECT_EQ(start["tUpgBlockInfo"]["data"].size(), 32U) << "those that are zero too";
    EXPECT_EQ(start["tUpgBlockInfo"]["data"]["value0"]["blockStartAddress"], 23);
    EXPECT_EQ(start["eUpgradeSpeed"], 9);

    std::string components;
    for (std::uint8_t i = 1; i <= 8; ++i) {
        components += repeated(i, 16) + repeated(i, 11) + "00" + words(i, -i);
    }
    deliver("00600016" + head(1) + packet + revision + header + words(31, 32, 33, 3) + components + words(9));
    settle();
    const auto extended = lastPrinted().at("data");
    EXPECT_EQ(extended["tUpgBlockElementInfo"]["numSubComponents"], 3);
    EXPECT_EQ(extended["tUpgBlockElementInfo"]["subComponent"]["data"].size(), 8U) << "the count stops nothing";
    EXPECT_EQ(extended["tUpgBlockElementInfo"]["subComponent"]["data"]["value7"]["numBytesInSub"], -8);
    EXPECT_EQ(extended["eUpgradeSpeed"], 9);
}

TEST_F(SoftwareUpgrade, AByteTooFewEndsTheReader)
{
    startInService();
    deliver("00600016" + head(1) + zeros(1415));
    EXPECT_TRUE(comesTrue([&] { return module()->linkFacts().reader == VornipcLinkFacts::Reader::ended; }));
    EXPECT_EQ(module()->linkFacts().lastMessage->id, 0x600016U);
}

} // namespace
