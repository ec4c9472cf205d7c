#include "MessagePrinter.h"
#include "EquipmentMessages.h"
#include "PsMessages.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

template <class Message>
std::string printed(const Message& message)
{
    std::ostringstream stream;
    stream << message;
    return stream.str();
}

TEST(MessagePrinter, PrintsAnOrdinaryMessage)
{
    RAULostIPC message;
    message.slot = 3;
    message.seqNr = 2147483648;
    EXPECT_EQ(printed(message), R"({
    "id": 2097154,
    "name": "RAULostIPC",
    "data": {
        "SignalHeader": {
            "slot": 3,
            "sigId": 0,
            "senderId": 0,
            "seqNr": 2147483648,
            "spare1": 0,
            "ct": 0
        }
    }
})");
    EXPECT_EQ(printed(message), printed(message));
}

TEST(MessagePrinter, PrintsAMessageOfThePsDeviceUnderItsMangledName)
{
    HandleXfRlWanIfEntryGroupReqIPC message;
    message.ps = PsKind::groupRequest;
    message.groupId = 8409;
    message.data2 = 7;
    EXPECT_EQ(printed(message), R"({
    "Id": 8409,
    "31HandleXfRlWanIfEntryGroupReqIPC": {
        "PsSignalHeader": {
            "slot": 0,
            "psVersion": 0,
            "psStatus": 0,
            "ps": 16,
            "msgType": 0,
            "action": 0,
            "seqNo": 0,
            "lastPart": 0,
            "noOfObjects": 0,
            "sizeOfObjects": 0,
            "status": 0,
            "objType": 0,
            "simulation": 0,
            "spare": 0,
            "oidLen": 0,
            "dataLen": 0,
            "groupId": 8409
        },
        "data1": 0,
        "data2": 7
    }
})");
}

TEST(MessagePrinter, PrintsTextAsUnsignedNumbersWithAutomaticNames)
{
    RLaprintExtIPC message;
    message.printText[0] = 'A';
    message.printText[159] = 0xff;
    const std::string text = printed(message);
    EXPECT_NE(text.find("\"printText\": {\n            \"value0\": 65,\n            \"value1\": 0,"),
              std::string::npos);
    EXPECT_NE(text.find("            \"value159\": 255\n        }\n    }\n}"), std::string::npos);
}

TEST(MessagePrinter, LeavesTheStreamReadyForMore)
{
    std::ostringstream stream;
    stream << "Received: " << RAULostIPC{} << " and " << VornRestartedIPC{} << "!";
    EXPECT_NE(stream.str().find("}\n} and {\n"), std::string::npos) << stream.str();
    EXPECT_EQ(stream.str().back(), '!');
}

} // namespace
