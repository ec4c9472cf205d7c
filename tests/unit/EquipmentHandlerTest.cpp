#include "EquipmentHandler.h"
#include "support/SimulatedPlatformFixture.h"

#include <string>
#include <vector>

namespace {

using namespace kro::device::vornipc;

class EquipmentHandlerOnPlatform : public SimulatedPlatformFixture {};

TEST_F(EquipmentHandlerOnPlatform, KeepsNoStateOfChannelsThatAreNotServed)
{
    const std::pair<unsigned, int> cases[] = {{2, 0}, {2, 3}, {2, -1}, {1, 2}, {3, 1}};
    for (const auto& [channelCount, number] : cases) {
        restart(2);
        VornipcMessageHandler messageHandler("", nullptr); // would say of each message that it has no sender
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

        const std::string channel = std::to_string(number);
        const std::string refused = "setRadioUp(): channel " + channel + " is not served (channel count " +
                                    std::to_string(channelCount) + "), its state is not kept";
        const Json trace = m_platform.traceLines(0);
        std::vector<std::string> lines;
        for (const auto& line : trace["lines"]) {
            lines.push_back(line["text"]);
        }
        EXPECT_EQ(lines, (std::vector<std::string>{"RadioUp for ct " + channel + "calling notifyRadioDetected()",
                                                   refused, refused,
                                                   "[CT" + channel +
                                                       "] radioCapabilitiesAvailable(): ANS is not "
                                                       "capable of handling RLaprintExtIPC"}));
        EXPECT_EQ(trace["lines"][1]["level"], 1);
    }
}

} // namespace
