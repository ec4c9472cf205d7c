#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "Commands.h"
#include "Composer.h"
#include "Conversation.h"
#include "MessageText.h"
#include "Output.h"
#include "Story.h"

namespace nodectl {

namespace {

/// How long after its last message the unit counts as having said everything.
constexpr std::chrono::milliseconds quietTime{300};

constexpr std::uint32_t normalSelfTest = 1;
constexpr std::uint32_t inService = 1;

/// One of the node's messages: its name and the body fields that are not 0.
struct Step {
    const char* messageName;
    std::vector<std::pair<const char*, std::uint32_t>> body;
};

} // namespace

void bringUp(const Options& options)
{
    const Story story;
    const auto tell = [&](void (Story::*direction)(const DecodedBuffer&) const, const DecodedBuffer& decoded) {
        (story.*direction)(decoded);
        if (options.verbose) {
            print(messageText(decoded, false));
        }
    };
    Conversation conversation(options.unit, options.json, [&](const DecodedBuffer& decoded) {
        options.json ? print(messageText(decoded, true)) : tell(&Story::fromUnit, decoded);
    });

    const Step steps[] = {
        {"ADSSelftestReqIPC",
         {{"eSelftestType", normalSelfTest}, {"tCompatibilityCodes.capabilityEH", options.capabilityEH}}},
        {"ADSSwStatusReqIPC", {}},
        {"MMUStateIPC", {{"eModuleOperStatus", inService}}},
    };
    std::uint32_t sequenceNumber = 0;
    for (const auto& [messageName, body] : steps) {
        const MessageDefinition& definition = messageNamed(messageName);
        DecodedBuffer request{&definition, definition.create(), definition.size};
        headerField(*request.message, "slot").set(options.slot);
        headerField(*request.message, "senderId").set(options.sender);
        headerField(*request.message, "seqNr").set(++sequenceNumber);
        for (const auto& [field, value] : body) {
            fieldNamed(*request.message, field).set(value);
        }
        if (!options.json) {
            tell(&Story::toUnit, request);
        }
        conversation.send(definition, *request.message, options.wait);
    }
    conversation.listenUntilQuiet(quietTime);
}

} // namespace nodectl
