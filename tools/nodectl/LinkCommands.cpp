#include "Commands.h"
#include "Composer.h"
#include "Conversation.h"
#include "MessageText.h"
#include "Output.h"
#include "Story.h"

namespace nodectl {

namespace {

/// A conversation that prints what comes, in the form that is wanted.
Conversation printingConversation(const Options& options, const Story& story)
{
    const bool json = options.json;
    const bool brief = options.brief && !json;
    return Conversation(options.unit, json, [json, brief, &story](const DecodedBuffer& decoded) {
        brief ? story.fromUnit(decoded) : print(messageText(decoded, json));
    });
}

} // namespace

void send(const Options& options)
{
    const Story story;
    const MessageDefinition& definition = messageNamed(options.messageName);
    DecodedBuffer request{&definition, composeMessage(definition, options), definition.size};
    Conversation conversation = printingConversation(options, story);
    if (options.brief && !options.json) {
        story.toUnit(request);
    }
    conversation.send(definition, *request.message, options.wait);
    if (definition.answer.empty()) {
        conversation.finish();
    }
}

void monitor(const Options& options)
{
    const Story story;
    const MessageDefinition* const wanted = options.until.empty() ? nullptr : &messageNamed(options.until);
    Conversation conversation = printingConversation(options, story);
    if (wanted == nullptr) {
        conversation.listen();
    } else {
        conversation.listenFor(*wanted, options.wait);
    }
}

} // namespace nodectl
