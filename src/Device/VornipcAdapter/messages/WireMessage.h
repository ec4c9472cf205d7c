#pragma once

#include <array> // IWYU pragma: export
#include <cereal/cereal.hpp>
#include <cereal/types/array.hpp>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "PsSignalHeader.h"
#include "SignalHeader.h"

/// Header type of a message type.
template <class Message>
using HeaderOf = std::conditional_t<std::derived_from<Message, PsSignalHeader>, PsSignalHeader, SignalHeader>;

/// Serializes a message as it stands on the wire: its header, under the header's own name, then its body fields.
template <class Archive, class Message, class... Fields>
void serializeMessage(Archive& archive, Message& message, Fields&&... fields)
{
    using Header = HeaderOf<Message>;
    archive(cereal::make_nvp(Header::headerName, static_cast<Header&>(message)), std::forward<Fields>(fields)...);
}

namespace wire_message_detail {

/// Stands for any archive where only a serialize operation's type is looked at.
struct ProbeArchive {};

template <class Class>
Class declaringClass(void (Class::*)(ProbeArchive&));

/// The class that declares the `serialize` which Message uses.
template <class Message>
using SerializedBy = decltype(declaringClass(&Message::template serialize<ProbeArchive>));

template <class T>
inline constexpr bool hasOneHeader = std::derived_from<T, SignalHeader> != std::derived_from<T, PsSignalHeader>;

} // namespace wire_message_detail

/// A message of the node protocol: derived from one of the two headers, with its id, and with a `serialize` that is not
/// the header's own, which would lose the body. Fields lie in natural alignment, so a message takes as many bytes on the
/// wire as in memory.
template <class T>
concept WireMessage =
    wire_message_detail::hasOneHeader<T> && std::same_as<decltype(T::messageId), const std::uint32_t> &&
    !std::same_as<wire_message_detail::SerializedBy<T>, HeaderOf<T>>;

/// Bytes of header and body on the wire, without the envelope.
template <WireMessage Message>
inline constexpr std::size_t wireSize = sizeof(Message);

/// Shape of the messages without a body.
template <std::uint32_t Id>
struct HeaderOnlyMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this);
    }
};

/// Shape of the answers to requests that set something.
template <std::uint32_t Id>
struct SetResultMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    std::uint32_t eSetRes = 0; ///< 0 done, 1 failed

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eSetRes));
    }
};

/// Shape of the messages that tell a unit's state: 1 in service, 2 reduced service, 3 out of service.
template <std::uint32_t Id>
struct ModuleStateMessage : SignalHeader {
    static constexpr std::uint32_t messageId = Id;

    std::uint32_t eModuleOperStatus = 0;

    template <class Archive>
    void serialize(Archive& archive)
    {
        serializeMessage(archive, *this, CEREAL_NVP(eModuleOperStatus));
    }
};
