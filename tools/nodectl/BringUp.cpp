#include <fmt/chrono.h>
#include <fmt/format.h>

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "Commands.h"
#include "Composer.h"
#include "Conversation.h"
#include "MessageText.h"
#include "Output.h"

namespace nodectl {

namespace {

/// How long after its last message the unit counts as having said everything.
constexpr std::chrono::milliseconds quietTime{300};

constexpr std::uint32_t normalSelfTest = 1;
constexpr std::uint32_t inService = 1;

/// What goes over the link, told to people: a line a message, with the fields that matter.
class Story {
public:
    explicit Story(bool verbose) : m_verbose(verbose), m_colour(outputHasColour()) {}

    void toUnit(const DecodedBuffer& decoded) const { tell("->", "\033[36m", decoded); }
    void fromUnit(const DecodedBuffer& decoded) const { tell("<-", "\033[32m", decoded); }

private:
    void tell(const char* arrow, const char* colour, const DecodedBuffer& decoded) const
    {
        const std::string name = decoded.definition != nullptr ? decoded.definition->name : "PS message";
        const std::string fields = summary(*decoded.message);
        print(fmt::format("{}  {}{} {}{}{}", timeOfDay(), m_colour ? colour : "", arrow, name,
                          m_colour ? "\033[0m" : "", fields.empty() ? "" : ": " + fields));
        if (m_verbose) {
            print(messageText(decoded, false));
        }
    }

    /// UTC, as in the unit's trace.
    static std::string timeOfDay()
    {
        using namespace std::chrono;
        const auto now = system_clock::now();
        const auto millisecond = duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
        return fmt::format("{:%H:%M:%S}.{:03}Z", fmt::gmtime(system_clock::to_time_t(now)), millisecond);
    }

    bool m_verbose;
    bool m_colour;
};

/// One of the node's messages: its name and the body fields that are not 0.
struct Step {
    const char* messageName;
    std::vector<std::pair<const char*, std::uint32_t>> body;
};

} // namespace

void bringUp(const Options& options)
{
    const Story story(options.verbose);
    Conversation conversation(options.unit, options.json, [&](const DecodedBuffer& decoded) {
        options.json ? print(messageText(decoded, true)) : story.fromUnit(decoded);
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
            story.toUnit(request);
        }
        conversation.send(definition, *request.message, options.wait);
    }
    conversation.listenUntilQuiet(quietTime);
}

} // namespace nodectl
