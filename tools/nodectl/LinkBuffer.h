#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Failure.h"
#include "MessageCatalogue.h"

namespace nodectl {

/// A buffer that is no message of the protocol: no message has its id, or it ends before the id.
class UnknownBuffer : public Failure {
public:
    explicit UnknownBuffer(const std::string& text) : Failure(ExitCode::refused, text) {}
};

/// The device word in front of a message's buffer.
std::uint32_t deviceOf(const MessageDefinition& definition);

/// The buffer of a message, as it follows the device word on the link: message id (none for the PS device), header, body.
std::string encodeBuffer(const MessageDefinition& definition, const AnyMessage& message);

/// A buffer read as the message that it says it is.
struct DecodedBuffer {
    const MessageDefinition* definition; ///< null where a PS buffer ends before its group: only header fields are known
    std::unique_ptr<AnyMessage> message; ///< fields that the buffer does not reach are 0
    std::size_t present;                 ///< bytes of header and body that are there

    /// The first field that the buffer does not hold whole; empty where it holds all.
    std::optional<MessageField> firstMissing() const;

    /// Where a short buffer ends, for an error text; empty for a whole one.
    std::string shortage() const;

    /// Bytes behind the body.
    std::size_t surplus() const;
};

/// Reads a buffer that travels in the given direction (`in` or `out`); an id that only the other direction knows is found
/// too. Throws UnknownBuffer.
DecodedBuffer decodeBuffer(std::uint32_t device, std::string_view buffer, MessageDirection direction);

/// A field that the message has, by its full name: the bare one for a field of the body, "group.member" inside a group.
MessageField fieldNamed(AnyMessage& message, std::string_view name);

/// A header field by its bare name, as "seqNr".
MessageField headerField(AnyMessage& message, std::string_view name);

} // namespace nodectl
