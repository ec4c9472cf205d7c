#include "Story.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <chrono>
#include <string>

#include "MessageText.h"
#include "Output.h"

namespace nodectl {

namespace {

/// Longest text of a message's fields that still reads as a line. The whole message is a matter of other forms.
constexpr std::size_t longestFields = 150;

/// UTC, as in the unit's trace.
std::string timeOfDay()
{
    using namespace std::chrono;
    const auto now = system_clock::now();
    const auto millisecond = duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
    return fmt::format("{:%H:%M:%S}.{:03}Z", fmt::gmtime(system_clock::to_time_t(now)), millisecond);
}

std::string fieldsThatMatter(AnyMessage& message)
{
    std::string fields = summary(message);
    if (fields.size() > longestFields) {
        const std::size_t lastWhole = fields.rfind(", ", longestFields);
        fields.resize(lastWhole != std::string::npos ? lastWhole : longestFields);
        fields += ", ...";
    }
    return fields.empty() ? fields : ": " + fields;
}

} // namespace

Story::Story() : m_colour(outputHasColour()) {}

void Story::toUnit(const DecodedBuffer& decoded) const
{
    tell("->", "\033[36m", decoded);
}

void Story::fromUnit(const DecodedBuffer& decoded) const
{
    tell("<-", "\033[32m", decoded);
}

void Story::tell(const char* arrow, const char* colour, const DecodedBuffer& decoded) const
{
    const std::string name = decoded.definition != nullptr ? decoded.definition->name : "PS message";
    print(fmt::format("{}  {}{} {}{}{}", timeOfDay(), m_colour ? colour : "", arrow, name, m_colour ? "\033[0m" : "",
                      fieldsThatMatter(*decoded.message)));
}

} // namespace nodectl
