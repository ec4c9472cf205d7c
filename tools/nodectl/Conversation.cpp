#include "Conversation.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>
#include <utility>

#include "Failure.h"
#include "HexText.h"
#include "Output.h"

namespace nodectl {

namespace {

/// A unit that takes a message in at once has it long before; one that is busy gets no longer than this.
constexpr std::chrono::milliseconds takeInTime{500};

/// How long a unit stays silent when a message without an answer has brought about nothing more.
constexpr std::chrono::milliseconds quietAfterSending{100};

/// Longest that a unit which never falls quiet is listened to.
constexpr std::chrono::seconds longestListening{3};

MessageField sequenceNumberOf(const MessageDefinition& definition, AnyMessage& message)
{
    return headerField(message, definition.header == MessageHeader::ps ? "seqNo" : "seqNr");
}

} // namespace

Conversation::Conversation(const UnitAddress& unit, bool json, Show show)
    : m_link(unit), m_json(json), m_show(std::move(show))
{
}

void Conversation::send(const MessageDefinition& definition, AnyMessage& message, std::chrono::milliseconds wait)
{
    const auto deadline = Clock::now() + wait;
    m_link.send(deviceOf(definition), encodeBuffer(definition, message), std::max(deadline, Clock::now() + takeInTime));
    const MessageDefinition* answer = definition.answer.empty() ? nullptr : findMessage(definition.answer);
    if (answer == nullptr) {
        return;
    }
    const MessageField sequenceNumber = sequenceNumberOf(definition, message);
    while (next(deadline)) {
        if (lastAnswers(*answer, sequenceNumber)) {
            return;
        }
    }
    throw Failure(ExitCode::refused,
                  fmt::format("no {} with sequence number {} within {} ms; the unit drops most answers until 'nodectl "
                              "bringup' has put it into service",
                              answer->name, sequenceNumber.value(), wait.count()));
}

void Conversation::listenUntilQuiet(std::chrono::milliseconds quiet)
{
    const auto end = Clock::now() + longestListening;
    while (next(std::min(end, Clock::now() + quiet))) {
    }
}

void Conversation::listen()
{
    m_link.catchStopSignals();
    while (next(Clock::time_point::max())) {
    }
}

void Conversation::listenFor(const MessageDefinition& wanted, std::chrono::milliseconds wait)
{
    m_link.catchStopSignals();
    const auto deadline = Clock::now() + wait;
    while (next(deadline)) {
        if (lastIs(wanted)) {
            return;
        }
    }
    throw Failure(ExitCode::refused, fmt::format("no {} has come within {} ms", wanted.name, wait.count()));
}

void Conversation::finish()
{
    try {
        listenUntilQuiet(quietAfterSending);
        m_link.endSending();
        const auto deadline = Clock::now() + takeInTime;
        while (next(deadline)) {
        }
    } catch (const Failure&) {
        if (!m_link.closedByUnit()) {
            throw;
        }
    }
}

bool Conversation::next(Clock::time_point deadline)
{
    m_last.reset();
    const auto frame = m_link.receive(deadline);
    if (!frame) {
        return false;
    }
    try {
        DecodedBuffer decoded = decodeBuffer(frame->device, frame->buffer, MessageDirection::out);
        m_show(decoded);
        if (const std::string shortage = decoded.shortage(); shortage.empty()) {
            m_last = std::move(decoded);
        } else {
            note(shortage);
        }
    } catch (const UnknownBuffer& unknown) {
        showUnknown(*frame, unknown.what());
    }
    return true;
}

void Conversation::showUnknown(const NodeLink::Frame& frame, const char* reason) const
{
    const std::string hex = toHex(frame.buffer);
    print(m_json ? nlohmann::ordered_json{{"device", frame.device}, {"hex", hex}, {"note", reason}}.dump()
                 : fmt::format("device {}, {}: {}", frame.device, hex.empty() ? "an empty buffer" : hex, reason));
}

bool Conversation::lastIs(const MessageDefinition& definition) const
{
    return m_last && m_last->definition != nullptr && m_last->definition->id == definition.id &&
           m_last->definition->header == definition.header;
}

bool Conversation::lastAnswers(const MessageDefinition& answer, const MessageField& sequenceNumber) const
{
    return lastIs(answer) && sequenceNumberOf(answer, *m_last->message).value() == sequenceNumber.value();
}

} // namespace nodectl
