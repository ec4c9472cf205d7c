#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <string>

#include "Commands.h"
#include "Composer.h"
#include "Output.h"

namespace nodectl {

namespace {

using Json = nlohmann::ordered_json;

Json toJson(const MessageDefinition& definition)
{
    return {{"name", definition.name},
            {"id", definition.id},
            {"direction", toString(definition.direction)},
            {"area", toString(definition.area)},
            {"size", definition.size}};
}

/// Message ids are known by their hexadecimal digits, groups of the PS device by their number.
std::string idText(const MessageDefinition& definition)
{
    return definition.header == MessageHeader::ps ? std::to_string(definition.id) : fmt::format("{:#x}", definition.id);
}

/// Whether a field that a body leaves out is something else than 0. Arrays are zeros.
bool hasDefault(const MessageField& field)
{
    return !field.count() && field.value() != 0;
}

Json toJson(const MessageField& field)
{
    Json json = {{"name", field.name()}, {"offset", field.offset()}, {"type", toString(field.type())}};
    if (field.count()) {
        json["count"] = *field.count();
    }
    if (!field.unit().empty()) {
        json["unit"] = field.unit();
    }
    if (hasDefault(field)) {
        json["default"] = field.value();
    }
    return json;
}

std::string typeText(const MessageField& field)
{
    return std::string(toString(field.type())) + (field.count() ? fmt::format("[{}]", *field.count()) : "");
}

} // namespace

void list(const Options& options)
{
    if (!options.json) {
        print(fmt::format("{:<9}  {:<43}  {:<9}  {:>4}  {}", "id", "name", "direction", "size", "area"));
    }
    for (const MessageDefinition& definition : messageCatalogue()) {
        if (options.area && definition.area != *options.area) {
            continue;
        }
        print(options.json ? toJson(definition).dump()
                           : fmt::format("{:<9}  {:<43}  {:<9}  {:>4}  {}", idText(definition), definition.name,
                                         toString(definition.direction), definition.size, toString(definition.area)));
    }
}

void describe(const Options& options)
{
    const MessageDefinition& definition = messageNamed(options.messageName);
    const auto message = definition.create();
    if (options.json) {
        Json json = toJson(definition);
        json["fields"] = Json::array();
        for (const MessageField& field : message->fields()) {
            json["fields"].push_back(toJson(field));
        }
        print(json.dump());
        return;
    }
    print(fmt::format("{}  id {}, {}, {} bytes of header and body, {}", definition.name, idText(definition),
                      toString(definition.direction), definition.size,
                      definition.answer.empty() ? "no answer" : "answered with " + definition.answer));
    print(fmt::format("{:>6}  {:<8}  {}", "offset", "type", "field, unit, default where it is not 0"));
    for (const MessageField& field : message->fields()) {
        print(fmt::format("{:>6}  {:<8}  {}{}{}", field.offset(), typeText(field), field.name(),
                          field.unit().empty() ? "" : fmt::format(", {}", field.unit()),
                          hasDefault(field) ? fmt::format(", default {}", field.value()) : ""));
    }
}

} // namespace nodectl
