#include "MessageCatalogue.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include "FieldUnits.h"
#include "catalogue/CatalogueRows.h"

namespace {

/// The sources of the catalogue, area by area.
struct Source {
    MessageArea area;
    CatalogueRows (*rows)();
};

constexpr Source sources[] = {
    {MessageArea::alarms, alarmRows},
    {MessageArea::equipment, equipmentRows},
    {MessageArea::equipment, equipmentDetectionRows},
    {MessageArea::equipment, equipmentMaintenanceRows},
    {MessageArea::power, powerControlRows},
    {MessageArea::mib, remoteMibRows},
    {MessageArea::upgrade, softwareUpgradeRows},
    {MessageArea::traffic, trafficRows},
    {MessageArea::testcommand, testCommandRows},
    {MessageArea::protection, protectionRows},
    {MessageArea::ps, psRows},
};

std::vector<MessageDefinition> makeCatalogue()
{
    std::vector<MessageDefinition> catalogue;
    for (const Source& source : sources) {
        for (MessageDefinition& definition : source.rows()) {
            definition.area = source.area;
            catalogue.push_back(std::move(definition));
        }
    }
    std::stable_sort(catalogue.begin(), catalogue.end(), [](const MessageDefinition& a, const MessageDefinition& b) {
        return std::pair(a.area, a.id) < std::pair(b.area, b.id);
    });
    return catalogue;
}

template <class Function>
auto withIntegerOf(FieldType type, Function function)
{
    switch (type) {
    case FieldType::u8:
        return function(std::uint8_t{});
    case FieldType::i8:
        return function(std::int8_t{});
    case FieldType::u16:
        return function(std::uint16_t{});
    case FieldType::i16:
        return function(std::int16_t{});
    case FieldType::u32:
        return function(std::uint32_t{});
    case FieldType::i32:
        break;
    }
    return function(std::int32_t{});
}

struct AreaName {
    MessageArea area;
    std::string_view name;
};

constexpr AreaName areaNames[] = {
    {MessageArea::alarms, "alarms"},
    {MessageArea::equipment, "equipment"},
    {MessageArea::power, "power"},
    {MessageArea::mib, "mib"},
    {MessageArea::upgrade, "upgrade"},
    {MessageArea::traffic, "traffic"},
    {MessageArea::testcommand, "testcommand"},
    {MessageArea::protection, "protection"},
    {MessageArea::ps, "ps"},
};

} // namespace

std::string_view toString(MessageArea area)
{
    return std::find_if(std::begin(areaNames), std::end(areaNames), [area](const auto& e) { return e.area == area; })
        ->name;
}

std::optional<MessageArea> messageAreaByName(std::string_view name)
{
    const auto* const entry =
        std::find_if(std::begin(areaNames), std::end(areaNames), [name](const auto& e) { return e.name == name; });
    return entry != std::end(areaNames) ? std::optional(entry->area) : std::nullopt;
}

std::string_view toString(MessageDirection direction)
{
    switch (direction) {
    case MessageDirection::in:
        return "in";
    case MessageDirection::out:
        return "out";
    case MessageDirection::both:
        break;
    }
    return "both";
}

std::string_view toString(FieldType type)
{
    return withIntegerOf(type, [](auto integer) -> std::string_view {
        using Integer = decltype(integer);
        if constexpr (sizeof(Integer) == 1) {
            return std::is_signed_v<Integer> ? "i8" : "u8";
        } else if constexpr (sizeof(Integer) == 2) {
            return std::is_signed_v<Integer> ? "i16" : "u16";
        } else {
            return std::is_signed_v<Integer> ? "i32" : "u32";
        }
    });
}

std::size_t widthOf(FieldType type)
{
    return withIntegerOf(type, [](auto integer) { return sizeof integer; });
}

MessageField::MessageField(std::string name, FieldType type, std::size_t offset, std::optional<std::size_t> count,
                           void* data)
    : m_name(std::move(name)), m_type(type), m_offset(offset), m_count(count), m_data(data)
{
}

std::string_view MessageField::unit() const
{
    return unitOfField(m_name);
}

std::int64_t MessageField::minimum() const
{
    return withIntegerOf(
        m_type, [](auto integer) { return static_cast<std::int64_t>(std::numeric_limits<decltype(integer)>::min()); });
}

std::int64_t MessageField::maximum() const
{
    return withIntegerOf(
        m_type, [](auto integer) { return static_cast<std::int64_t>(std::numeric_limits<decltype(integer)>::max()); });
}

std::int64_t MessageField::value(std::size_t index) const
{
    return withIntegerOf(m_type, [this, index](auto integer) {
        std::memcpy(&integer, static_cast<const char*>(m_data) + index * sizeof integer, sizeof integer);
        return static_cast<std::int64_t>(integer);
    });
}

void MessageField::set(std::int64_t value, std::size_t index) const
{
    withIntegerOf(m_type, [this, value, index](auto integer) {
        integer = static_cast<decltype(integer)>(value);
        std::memcpy(static_cast<char*>(m_data) + index * sizeof integer, &integer, sizeof integer);
    });
}

const std::vector<MessageDefinition>& messageCatalogue()
{
    static const std::vector<MessageDefinition> catalogue = makeCatalogue();
    return catalogue;
}

const MessageDefinition* findMessage(std::string_view name)
{
    const auto& catalogue = messageCatalogue();
    const auto entry =
        std::find_if(catalogue.begin(), catalogue.end(), [name](const auto& e) { return e.name == name; });
    return entry != catalogue.end() ? &*entry : nullptr;
}

const MessageDefinition* findMessage(std::uint32_t id, MessageHeader header, MessageDirection direction)
{
    const auto& catalogue = messageCatalogue();
    const auto entry = std::find_if(catalogue.begin(), catalogue.end(), [=](const MessageDefinition& e) {
        return e.id == id && e.header == header && (e.direction == direction || e.direction == MessageDirection::both);
    });
    return entry != catalogue.end() ? &*entry : nullptr;
}
