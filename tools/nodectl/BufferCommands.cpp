#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string>

#include "Commands.h"
#include "Composer.h"
#include "Failure.h"
#include "HexText.h"
#include "InputText.h"
#include "LinkBuffer.h"
#include "MessageText.h"
#include "Output.h"

namespace nodectl {

void encode(const Options& options)
{
    const MessageDefinition& definition = messageNamed(options.messageName);
    const auto message = composeMessage(definition, options);
    const std::string hex = toHex(encodeBuffer(definition, *message));
    if (options.json) {
        auto json = nlohmann::ordered_json::parse(message->print());
        json["hex"] = hex;
        print(json.dump());
    } else {
        print(hex);
    }
}

void decode(const Options& options)
{
    const std::string text = options.hex == "-" ? inputText(options.hex, "buffer") : options.hex;
    const DecodedBuffer decoded = decodeBuffer(options.device, fromHex(text), options.from);
    print(messageText(decoded, options.json));
    if (const std::string shortage = decoded.shortage(); !shortage.empty()) {
        throw Failure(ExitCode::refused, shortage);
    }
    if (const std::size_t surplus = decoded.surplus(); surplus > 0) {
        note(fmt::format("{} bytes behind the body are ignored", surplus));
    }
}

} // namespace nodectl
