#include "EventArguments.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <limits>

#include "Events.h"

namespace radiounit {
namespace {

using simulated::Json;

void checkNumber(const std::string& name, const Json& value, std::int64_t lowest, std::int64_t highest)
{
    const bool inRange = value.is_number_unsigned() ? value.get<std::uint64_t>() <= static_cast<std::uint64_t>(highest)
                                                    : value.is_number_integer() && value.get<std::int64_t>() >= lowest;
    if (!inRange) {
        throw EventError{fmt::format("{}: expected a whole number from {} to {}, not {}", name, lowest, highest,
                                     simulated::toText(value))};
    }
}

template <typename Lowest, typename Highest = Lowest>
void checkNumber(const std::string& name, const Json& value)
{
    checkNumber(name, value, std::numeric_limits<Lowest>::min(), std::numeric_limits<Highest>::max());
}

void checkBytes(const std::string& name, const Json& value, std::size_t longest)
{
    const auto text = value.get<std::string>();
    constexpr const char* digits = "0123456789abcdefABCDEF";
    if (const auto wrong = text.find_first_not_of(digits); wrong != std::string::npos) {
        throw EventError{fmt::format("{}: character {} is not a hexadecimal digit", name, wrong + 1)};
    }
    if (text.size() % 2 != 0) {
        throw EventError{fmt::format("{}: {} hexadecimal digits; a byte takes two", name, text.size())};
    }
    if (text.size() / 2 > longest) {
        throw EventError{fmt::format("{}: {} bytes, at most {} are handed over", name, text.size() / 2, longest)};
    }
}

void checkAll(const Json& object, const std::vector<EventArgument>& known, const std::string& path);

/// @param name where the argument stands, for error texts
void check(const EventArgument& argument, const std::string& name, const Json& value)
{
    using Kind = EventArgument::Kind;
    const bool isText = argument.kind == Kind::text || argument.kind == Kind::bytes;
    if (isText && !value.is_string()) {
        throw EventError{fmt::format("{}: expected a text, not {}", name, simulated::toText(value))};
    }
    switch (argument.kind) {
    case Kind::i32:
        return checkNumber<std::int32_t>(name, value);
    case Kind::word:
        return checkNumber<std::int32_t, std::uint32_t>(name, value);
    case Kind::u8:
        return checkNumber<std::uint8_t>(name, value);
    case Kind::flag:
        if (!value.is_boolean()) {
            throw EventError{fmt::format("{}: expected true or false, not {}", name, simulated::toText(value))};
        }
        return;
    case Kind::text:
        return;
    case Kind::bytes:
        return checkBytes(name, value, argument.longestBytes);
    case Kind::object:
        if (!value.is_object()) {
            throw EventError{fmt::format("{}: expected an object, not {}", name, simulated::toText(value))};
        }
        return checkAll(value, argument.members, name + ".");
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

/// @param path where the object stands, with its dot; empty for the event itself
void checkAll(const Json& object, const std::vector<EventArgument>& known, const std::string& path)
{
    for (const auto& entry : object.items()) {
        const std::string& name = entry.key();
        const bool isKnown = std::any_of(known.begin(), known.end(), [&](const auto& one) { return one.name == name; });
        if (!isKnown && !(path.empty() && name == "event")) {
            throw EventError{fmt::format("{}{}: no such argument; the event takes {}", path, name, listNames(known))};
        }
    }
    for (const auto& argument : known) {
        const auto name = fmt::format("{}{}", path, argument.name);
        if (const auto value = object.find(std::string{argument.name}); value != object.end()) {
            check(argument, name, *value);
        } else if (!argument.optional) {
            throw EventError{fmt::format("{}: missing", name)};
        }
    }
}

} // namespace

EventArguments::EventArguments(const Json& object, const std::vector<EventArgument>& known) : m_object{object}
{
    checkAll(object, known, "");
}

std::uint32_t EventArguments::word(std::string_view name) const
{
    return static_cast<std::uint32_t>(m_object.at(std::string{name}).get<std::int64_t>());
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
