#include "EventArguments.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <limits>

#include "Events.h"

namespace radiounit {
namespace {

using simulated::Json;

/// Most bytes that an event hands to the module. Our own choice.
constexpr std::size_t longestData = 65536;

template <typename Number>
void checkNumber(std::string_view name, const Json& value)
{
    using Limits = std::numeric_limits<Number>;
    const bool inRange = value.is_number_unsigned()
                             ? value.get<std::uint64_t>() <= static_cast<std::uint64_t>(Limits::max())
                             : value.is_number_integer() && value.get<std::int64_t>() >= Limits::min();
    if (!inRange) {
        throw EventError{fmt::format("{}: expected a whole number from {} to {}, not {}", name, Limits::min(),
                                     Limits::max(), simulated::toText(value))};
    }
}

void checkBytes(std::string_view name, const Json& value)
{
    const auto text = value.get<std::string>();
    constexpr const char* digits = "0123456789abcdefABCDEF";
    if (const auto wrong = text.find_first_not_of(digits); wrong != std::string::npos) {
        throw EventError{fmt::format("{}: character {} is not a hexadecimal digit", name, wrong + 1)};
    }
    if (text.size() % 2 != 0) {
        throw EventError{fmt::format("{}: {} hexadecimal digits; a byte takes two", name, text.size())};
    }
    if (text.size() / 2 > longestData) {
        throw EventError{fmt::format("{}: {} bytes, at most {} are handed over", name, text.size() / 2, longestData)};
    }
}

void check(const EventArgument& argument, const Json& value)
{
    using Kind = EventArgument::Kind;
    const bool isText = argument.kind == Kind::text || argument.kind == Kind::bytes;
    if (isText && !value.is_string()) {
        throw EventError{fmt::format("{}: expected a text, not {}", argument.name, simulated::toText(value))};
    }
    switch (argument.kind) {
    case Kind::i32:
        return checkNumber<std::int32_t>(argument.name, value);
    case Kind::u8:
        return checkNumber<std::uint8_t>(argument.name, value);
    case Kind::flag:
        if (!value.is_boolean()) {
            throw EventError{
                fmt::format("{}: expected true or false, not {}", argument.name, simulated::toText(value))};
        }
        return;
    case Kind::text:
        return;
    case Kind::bytes:
        return checkBytes(argument.name, value);
    }
}

std::string listNames(const std::vector<EventArgument>& arguments)
{
    std::string names;
    for (const auto& argument : arguments) {
        names += fmt::format("{}{}", names.empty() ? "" : ", ", argument.name);
    }
    return names.empty() ? "none" : names;
}

} // namespace

EventArguments::EventArguments(const Json& object, const std::vector<EventArgument>& known) : m_object{object}
{
    for (const auto& entry : object.items()) {
        const std::string& name = entry.key();
        const bool isKnown = std::any_of(known.begin(), known.end(), [&](const auto& one) { return one.name == name; });
        if (!isKnown && name != "event") {
            throw EventError{fmt::format("{}: no such argument; the event takes {}", name, listNames(known))};
        }
    }
    for (const auto& argument : known) {
        if (has(argument.name)) {
            check(argument, object.at(std::string{argument.name}));
        } else if (!argument.optional) {
            throw EventError{fmt::format("{}: missing", argument.name)};
        }
    }
}

std::vector<unsigned char> EventArguments::bytes(std::string_view name) const
{
    const auto digits = text(name);
    std::vector<unsigned char> result(digits.size() / 2);
    constexpr int hexadecimal = 16;
    for (std::size_t i = 0; i < result.size(); ++i) {
        std::from_chars(digits.data() + 2 * i, digits.data() + 2 * i + 2, result[i], hexadecimal);
    }
    return result;
}

} // namespace radiounit
