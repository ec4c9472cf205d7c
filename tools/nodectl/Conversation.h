#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include "LinkBuffer.h"
#include "MessageCatalogue.h"
#include "NodeLink.h"

namespace nodectl {

/// Messages to and from one unit. Whatever the unit sends is shown as it comes.
class Conversation {
public:
    using Show = std::function<void(const DecodedBuffer&)>;

    /// @param json whether a buffer that is no message of the protocol is shown as a JSON object
    Conversation(const UnitAddress& unit, bool json, Show show);

    /// Sends a message. One that has an answer by the protocol is waited for, known by its id and sequence number. Throws
    /// Failure (refused) where it has not come in time.
    void send(const MessageDefinition& definition, AnyMessage& message, std::chrono::milliseconds wait);

    /// Shows what comes until nothing has come for a while, but no longer than a few seconds.
    void listenUntilQuiet(std::chrono::milliseconds quiet);

    /// Shows what comes until SIGINT or SIGTERM.
    void listen();

    /// Shows what comes up to a message of this id. Throws Failure (refused) where it has not come in time.
    void listenFor(const MessageDefinition& wanted, std::chrono::milliseconds wait);

    /// Shows what a message without an answer brings about at once, and lets the unit take it in before the connection
    /// goes.
    void finish();

private:
    using Clock = NodeLink::Clock;

    /// Shows the next message; false where none has come before the deadline. Leaves the message in `m_last`, none where
    /// it is short or unknown.
    bool next(Clock::time_point deadline);
    void showUnknown(const NodeLink::Frame& frame, const char* reason) const;
    bool lastIs(const MessageDefinition& definition) const;
    bool lastAnswers(const MessageDefinition& answer, const MessageField& sequenceNumber) const;

    NodeLink m_link;
    bool m_json;
    Show m_show;
    std::optional<DecodedBuffer> m_last;
};

} // namespace nodectl
