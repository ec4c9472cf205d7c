#include "LinkBuffer.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "BigEndianWord.h"
#include "VornipcDeviceId.h"

namespace nodectl {

namespace {

/// The node's device word reaches the unit as a flag: whatever is not 0 is the PS device.
MessageHeader headerKindOf(std::uint32_t device, MessageDirection direction)
{
    const auto id = static_cast<VornipcDeviceId>(device);
    const bool isOrdinary =
        id == VornipcDeviceId::ads || (id == VornipcDeviceId::adsAlternate && direction != MessageDirection::in);
    return isOrdinary ? MessageHeader::signal : MessageHeader::ps;
}

const MessageDefinition& find(std::uint32_t id, MessageHeader header, MessageDirection direction)
{
    const bool in = direction == MessageDirection::in;
    const MessageDefinition* definition = findMessage(id, header, direction);
    if (definition == nullptr) {
        definition = findMessage(id, header, in ? MessageDirection::out : MessageDirection::in);
    }
    if (definition == nullptr) {
        throw UnknownBuffer(header == MessageHeader::ps ? fmt::format("no PS message has the group {}", id)
                                                        : fmt::format("no message has the id {:#x}", id));
    }
    return *definition;
}

DecodedBuffer read(const MessageDefinition* definition, std::unique_ptr<AnyMessage> message, std::size_t size,
                   std::string_view bytes)
{
    std::string whole(bytes.substr(0, size));
    whole.resize(size);
    message->decode(whole);
    return {definition, std::move(message), bytes.size()};
}

DecodedBuffer readPs(std::string_view buffer, MessageDirection direction)
{
    const auto& catalogue = messageCatalogue();
    const auto any = std::find_if(catalogue.begin(), catalogue.end(),
                                  [](const auto& definition) { return definition.header == MessageHeader::ps; });
    if (any == catalogue.end()) {
        throw UnknownBuffer("the catalogue has no PS message");
    }
    auto message = any->create();
    const MessageField groupId = headerField(*message, "groupId");
    if (buffer.size() < groupId.offset() + groupId.size()) {
        return read(nullptr, std::move(message), any->size, buffer);
    }
    const auto& definition = find(firstWord(buffer.substr(groupId.offset())), MessageHeader::ps, direction);
    return read(&definition, definition.create(), definition.size, buffer);
}

DecodedBuffer readOrdinary(std::string_view buffer, MessageDirection direction)
{
    if (buffer.size() < wordSize) {
        throw UnknownBuffer(
            fmt::format("the buffer ends before its message id: {} of {} bytes are there", buffer.size(), wordSize));
    }
    const auto& definition = find(firstWord(buffer), MessageHeader::signal, direction);
    return read(&definition, definition.create(), definition.size, buffer.substr(wordSize));
}

} // namespace

std::uint32_t deviceOf(const MessageDefinition& definition)
{
    return static_cast<std::uint32_t>(definition.header == MessageHeader::ps ? VornipcDeviceId::ps
                                                                             : VornipcDeviceId::ads);
}

std::string encodeBuffer(const MessageDefinition& definition, const AnyMessage& message)
{
    return (definition.header == MessageHeader::ps ? std::string() : wordBytes(definition.id)) + message.encode();
}

std::optional<MessageField> DecodedBuffer::firstMissing() const
{
    const auto fields = message->fields();
    const auto missing = std::find_if(fields.begin(), fields.end(), [this](const MessageField& field) {
        return field.offset() + field.size() > present;
    });
    return missing != fields.end() ? std::optional(*missing) : std::nullopt;
}

std::string DecodedBuffer::shortage() const
{
    const auto missing = firstMissing();
    if (!missing) {
        return {};
    }
    const std::string name = definition != nullptr ? definition->name : "the PS message";
    const std::string whole = definition != nullptr ? fmt::format(" of {}", definition->size) : "";
    return fmt::format(
        "{} is too short: of {} at offset {} only {} of {} bytes are there (header and body: {}{} bytes)", name,
        missing->name(), missing->offset(), present - std::min(present, missing->offset()), missing->size(), present,
        whole);
}

std::size_t DecodedBuffer::surplus() const
{
    const MessageField last = message->fields().back();
    const std::size_t size = last.offset() + last.size();
    return present > size ? present - size : 0;
}

DecodedBuffer decodeBuffer(std::uint32_t device, std::string_view buffer, MessageDirection direction)
{
    return headerKindOf(device, direction) == MessageHeader::ps ? readPs(buffer, direction)
                                                                : readOrdinary(buffer, direction);
}

MessageField fieldNamed(AnyMessage& message, std::string_view name)
{
    const auto fields = message.fields();
    return *std::find_if(fields.begin(), fields.end(), [name](const auto& field) { return field.name() == name; });
}

MessageField headerField(AnyMessage& message, std::string_view name)
{
    const std::string first = message.fields().front().name();
    return fieldNamed(message, first.substr(0, first.find('.') + 1).append(name));
}

} // namespace nodectl
