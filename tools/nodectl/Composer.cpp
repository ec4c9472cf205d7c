#include "Composer.h"

#include <fmt/format.h>

#include <vector>

#include "BodyReader.h"
#include "Failure.h"
#include "InputText.h"
#include "LinkBuffer.h"
#include "Suggestion.h"

namespace nodectl {

const MessageDefinition& messageNamed(const std::string& name)
{
    if (const MessageDefinition* definition = findMessage(name)) {
        return *definition;
    }
    std::vector<std::string> names;
    for (const MessageDefinition& definition : messageCatalogue()) {
        names.push_back(definition.name);
    }
    throw Failure(ExitCode::wrongUsage, fmt::format("no message is named {}{} ('nodectl list' shows all)",
                                                    inQuotes(name), didYouMean(name, names)));
}

std::unique_ptr<AnyMessage> composeMessage(const MessageDefinition& definition, const Options& options)
{
    auto message = definition.create();
    if (options.body) {
        readBody(inputText(*options.body, "body"), definition, *message);
    }
    if (!options.header.empty() && definition.header == MessageHeader::ps) {
        throw Failure(ExitCode::wrongUsage, fmt::format("{} is a PS message: give its header in the body, as --body "
                                                        "'{{\"PsSignalHeader\":{{\"slot\":1}}}}'",
                                                        definition.name));
    }
    for (const auto& [name, value] : options.header) {
        headerField(*message, name).set(value);
    }
    return message;
}

} // namespace nodectl
