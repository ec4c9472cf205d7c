#include "EquipmentHandler.h"
#include "support/SimulatedPlatformFixture.h"

#include <string>
#include <vector>

namespace {

using namespace kro::device::vornipc;

class EquipmentHandlerOnPlatform : public SimulatedPlatformFixture {};

TEST_F(EquipmentHandlerOnPlatform, KeepsNoStateOfChannelsThatAreNotServed)
{
    const struct {
        unsigned channelCount;
        int ct;
    } cases[] = {{2, 0}, {2, 3}, {2, -1}, {1, 2}, {3, 1}};
    for (const auto& [channelCount, number] : cases) {
        const std::string channel = std::to_string(number);
        SCOPED_TRACE(std::to_string(channelCount) + " channels, channel " + channel);
        restart(2);
        VornipcMessageHandler messageHandler("", nullptr);
        messageHandler.setOutgoingIpcMessagesAllowed(true);
        AdapterModel model(2);
        EquipmentHandler handler(channelCount, messageHandler, model);
        handler.onModuleInit();
        handler.setAnsCapabilities({.rauDetected1Capable = true, .capabilitiesReceived = true});
        newCalls();
        const RadioChannel ct{number};
        handler.radioUp(ct);
        EXPECT_FALSE(handler.getRadioUp(ct));
        handler.radioDown(ct);
        handler.radioCapabilitiesAvailable(ct);
        EXPECT_EQ(newCalls(), Json::array());
        EXPECT_EQ(messageHandler.getSpontaneousMessageSequenceNumber(), 0x80000000U) << "nothing has been built";

        const std::string refused = "1 setRadioUp(): channel " + channel + " is not served (channel count " +
                                    std::to_string(channelCount) + "), its state is not kept";
        std::vector<std::string> lines;
        const Json trace = m_platform.traceLines(0);
        for (const auto& line : trace["lines"]) {
            lines.push_back(std::to_string(line["level"].get<int>()) + " " + line["text"].get<std::string>());
        }
        EXPECT_EQ(lines, (std::vector<std::string>{
                             "3 RadioUp for ct " + channel + "calling notifyRadioDetected()", refused, refused,
                             "3 [CT" + channel +
                                 "] radioCapabilitiesAvailable(): ANS is not capable of handling RLaprintExtIPC"}));
    }
}

} // namespace
