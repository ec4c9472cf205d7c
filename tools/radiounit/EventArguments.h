#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Json.h"

namespace radiounit {

/// Most bytes that an event hands to the module. Our own choice.
inline constexpr std::size_t longestEventData = 65536;

/// One argument of an event, for checking it before anything happens.
struct EventArgument {
    enum class Kind {
        i32,
        word, ///< 32 bits, as a signed or an unsigned number
        u8,
        flag,
        text,
        bytes,  ///< hexadecimal text
        object, ///< arguments of their own
    };

    std::string_view name;
    Kind kind;
    bool optional = false;
    std::vector<EventArgument> members{};        ///< of an object
    std::size_t longestBytes = longestEventData; ///< most bytes that are accepted
};

/// An event's arguments, checked: all that are needed are there, nothing else is, and each has its kind and range.
class EventArguments {
public:
    /// @param object the event with its name in "event"
    /// @throws EventError naming the argument
    EventArguments(const simulated::Json& object, const std::vector<EventArgument>& known);

    bool has(std::string_view name) const { return m_object.contains(name); }
    bool flag(std::string_view name) const { return m_object.at(std::string{name}).get<bool>(); }
    std::int32_t i32(std::string_view name) const { return m_object.at(std::string{name}).get<std::int32_t>(); }
    std::uint32_t word(std::string_view name) const;
    std::uint8_t u8(std::string_view name) const { return m_object.at(std::string{name}).get<std::uint8_t>(); }
    std::string text(std::string_view name) const { return m_object.at(std::string{name}).get<std::string>(); }
    std::vector<unsigned char> bytes(std::string_view name) const;
    EventArguments object(std::string_view name) const { return EventArguments{m_object.at(std::string{name})}; }

private:
    explicit EventArguments(const simulated::Json& checked) : m_object{checked} {}

    const simulated::Json& m_object;
};

} // namespace radiounit
