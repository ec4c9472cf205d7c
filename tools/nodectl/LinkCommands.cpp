#include "Commands.h"
#include "Composer.h"
#include "Conversation.h"
#include "MessageText.h"
#include "Output.h"

namespace nodectl {

namespace {

Conversation printingConversation(const Options& options)
{
    const bool json = options.json;
    return Conversation(options.unit, json,
                        [json](const DecodedBuffer& decoded) { print(messageText(decoded, json)); });
}

} // namespace

void send(const Options& options)
{
    const MessageDefinition& definition = messageNamed(options.messageName);
    const auto message = composeMessage(definition, options);
    Conversation conversation = printingConversation(options);
    conversation.send(definition, *message, options.wait);
    if (definition.answer.empty()) {
        conversation.finish();
    }
}

void monitor(const Options& options)
{
    printingConversation(options).listen();
}

} // namespace nodectl
