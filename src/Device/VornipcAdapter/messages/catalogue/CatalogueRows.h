#pragma once

#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "FieldLister.h"
#include "MessageCatalogue.h"
#include "MessagePrinter.h"
#include "archives/BigEndianInputArchives.h"
#include "archives/BinaryBigEndianOutputArchive.h"

/// What the catalogue's sources, one a message file, put into it: one line a message. All that tools do with messages is
/// made from these lines, which takes the compiler long; several sources it compiles side by side.
using CatalogueRows = std::vector<MessageDefinition>;

CatalogueRows alarmRows();
CatalogueRows equipmentRows();
CatalogueRows equipmentDetectionRows();
CatalogueRows equipmentMaintenanceRows();
CatalogueRows powerControlRows();
CatalogueRows remoteMibRows();
CatalogueRows softwareUpgradeRows();
CatalogueRows trafficRows();
CatalogueRows testCommandRows();
CatalogueRows protectionRows();
CatalogueRows psRows();

template <WireMessage Message>
class MessageObject final : public AnyMessage {
public:
    MessageObject()
    {
        if constexpr (std::derived_from<Message, PsSignalHeader>) {
            m_message.ps = PsKind::groupRequest;
            m_message.groupId = Message::messageId;
        }
    }

    std::string encode() const override
    {
        std::ostringstream stream;
        cereal::BinaryBigEndianOutputArchive archive(stream);
        archive(m_message);
        return stream.str();
    }

    void decode(std::string_view bytes) override
    {
        cereal::FixedSizeBigEndianInputArchive archive(bytes.data(), bytes.size());
        archive(m_message);
    }

    std::string print() const override
    {
        std::ostringstream stream;
        stream << m_message;
        return stream.str();
    }

    std::vector<MessageField> fields() override { return listFields(m_message); }

private:
    Message m_message;
};

/// A message of either direction; its area is its source's.
template <WireMessage Message>
MessageDefinition message(MessageDirection direction)
{
    return {messageName<Message>(),
            Message::messageId,
            {},
            direction,
            std::derived_from<Message, PsSignalHeader> ? MessageHeader::ps : MessageHeader::signal,
            wireSize<Message>,
            {},
            [] { return std::unique_ptr<AnyMessage>(std::make_unique<MessageObject<Message>>()); }};
}

/// A request of the node and the name of its answer, which has a line of its own.
template <WireMessage Request, WireMessage Answer>
MessageDefinition request()
{
    MessageDefinition definition = message<Request>(MessageDirection::in);
    definition.answer = messageName<Answer>();
    return definition;
}
