#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// A field as wire.txt has it; an array of records is written out, one row for each member of each record.
struct WireRow {
    std::size_t offset;   ///< bytes from the header's first byte
    std::string type;     ///< "u8", "i32" and so on
    std::size_t count;    ///< elements of an array; 0 for a single value
    std::string name;     ///< "group.member"; in an array of records "records.value7.member"
    std::int64_t initial; ///< what a freshly made message holds

    std::size_t width() const; ///< bytes of one value
    std::size_t elements() const { return count == 0 ? 1 : count; }
};

/// A message as wire.txt has it. Reads and writes its bytes by the table alone.
struct WireTableMessage {
    using Values = std::map<std::string, std::int64_t>; ///< by field name; elements of an array as "name[3]"

    std::string name;
    std::uint32_t id;
    std::string direction;
    std::string header;
    std::size_t size; ///< header and body
    std::string answer;
    std::vector<WireRow> fields; ///< header first

    /// Header and body; fields that are not named are 0.
    std::string encode(const Values& values) const;

    /// All values that are not 0.
    Values decode(std::string_view bytes) const;
};

/// All messages in the table's order.
const std::vector<WireTableMessage>& wireTable();

/// @throws std::runtime_error where the table has no such message
const WireTableMessage& wireTableMessage(const std::string& name);
