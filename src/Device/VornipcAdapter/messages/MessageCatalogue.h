#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The protocol as a table: every message once, with what tools need to work with it by name or by id. Built on first
/// use and read-only from then on; may be used from any thread.

enum class MessageArea { alarms, equipment, power, mib, upgrade, traffic, testcommand, protection, ps };

/// Seen from the radio.
enum class MessageDirection { in, out, both };

enum class MessageHeader { signal, ps };

enum class FieldType { u8, i8, u16, i16, u32, i32 };

std::string_view toString(MessageArea area);
std::string_view toString(MessageDirection direction);
std::string_view toString(FieldType type);
std::optional<MessageArea> messageAreaByName(std::string_view name);

/// Bytes of one value on the wire.
std::size_t widthOf(FieldType type);

/// One field of a message object. Values are reached through the field, in the machine's byte order.
class MessageField {
public:
    MessageField(std::string name, FieldType type, std::size_t offset, std::optional<std::size_t> count, void* data);

    const std::string& name() const { return m_name; } ///< members of a group as "group.member"
    FieldType type() const { return m_type; }
    std::size_t offset() const { return m_offset; }              ///< bytes from the header's first byte
    std::optional<std::size_t> count() const { return m_count; } ///< elements of an array; empty for a single value
    std::size_t elements() const { return m_count.value_or(1); }
    std::string_view unit() const;                                    ///< "dBm" and the like; empty for none
    std::size_t size() const { return elements() * widthOf(m_type); } ///< bytes on the wire

    std::int64_t minimum() const;
    std::int64_t maximum() const;
    std::int64_t value(std::size_t index = 0) const;

    /// `value` lies between minimum and maximum, `index` below `elements`.
    void set(std::int64_t value, std::size_t index = 0) const;

private:
    std::string m_name;
    FieldType m_type;
    std::size_t m_offset;
    std::optional<std::size_t> m_count;
    void* m_data; ///< in the message object
};

/// A message object of any type.
class AnyMessage {
public:
    AnyMessage() = default;
    AnyMessage(const AnyMessage&) = delete;
    AnyMessage& operator=(const AnyMessage&) = delete;
    virtual ~AnyMessage() = default;

    /// Header and body as they stand on the wire, without the envelope.
    virtual std::string encode() const = 0;

    /// Takes header and body from wire bytes; bytes behind the body are ignored. Throws `cereal::Exception` where there
    /// are too few; the fields before the missing one have their values then.
    virtual void decode(std::string_view bytes) = 0;

    /// The text of the unit's trace.
    virtual std::string print() const = 0;

    /// All fields in wire order, header first. They refer to this object.
    virtual std::vector<MessageField> fields() = 0;
};

/// What the protocol says of one message.
struct MessageDefinition {
    std::string name;
    std::uint32_t id; ///< message id, or the group id for the PS device
    MessageArea area;
    MessageDirection direction;
    MessageHeader header;
    std::size_t size;                        ///< bytes of header and body
    std::string answer;                      ///< name of the message that answers this one; empty where none does
    std::unique_ptr<AnyMessage> (*create)(); ///< a fresh message with every field at its default
};

/// All messages, by area and id.
const std::vector<MessageDefinition>& messageCatalogue();

/// Null where no message has this name.
const MessageDefinition* findMessage(std::string_view name);

/// The message of this id and header kind that may travel in the given direction (`in` or `out`); where several share
/// the id, the first of the catalogue. Null where there is none.
const MessageDefinition* findMessage(std::uint32_t id, MessageHeader header, MessageDirection direction);
