#include "MessageText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string_view>
#include <vector>

#include "HexText.h"

namespace nodectl {

namespace {

using Json = nlohmann::ordered_json;

/// Takes a field out, and the groups that are empty without it.
void erase(Json& group, std::string_view path)
{
    const std::size_t dot = path.find('.');
    const std::string name(path.substr(0, dot));
    if (dot == std::string_view::npos) {
        group.erase(name);
        return;
    }
    erase(group[name], path.substr(dot + 1));
    if (group[name].empty()) {
        group.erase(name);
    }
}

/// The values of an array without the zeros at its end.
std::vector<std::int64_t> usedValues(const MessageField& field)
{
    std::vector<std::int64_t> values;
    for (std::size_t index = 0; index < field.elements(); ++index) {
        values.push_back(field.value(index));
    }
    const auto last = std::find_if(values.rbegin(), values.rend(), [](std::int64_t value) { return value != 0; });
    values.erase(last.base(), values.end());
    return values;
}

/// The name as it is said: without the groups around it, except inside a list, where it would not tell which element.
std::string shortName(const std::string& name)
{
    return name.find(".value") == std::string::npos ? name.substr(name.rfind('.') + 1) : name;
}

std::string valueText(const MessageField& field, const std::vector<std::int64_t>& values)
{
    constexpr std::size_t longestList = 12;
    const auto printable = [](std::int64_t value) { return value < 128 && std::isprint(static_cast<int>(value)) != 0; };

    if (!field.count()) {
        return std::to_string(field.value());
    }
    if (field.type() == FieldType::u8 && std::all_of(values.begin(), values.end(), printable)) {
        return fmt::format("\"{}\"", std::string(values.begin(), values.end()));
    }
    const auto shown = static_cast<std::ptrdiff_t>(std::min(longestList, values.size()));
    return fmt::format("[{}{}]", fmt::join(values.begin(), values.begin() + shown, " "),
                       values.size() > longestList ? " ..." : "");
}

Json printedForm(const DecodedBuffer& decoded)
{
    Json frame = Json::parse(decoded.message->print());
    Json& fields = *std::prev(frame.end());
    if (decoded.firstMissing()) {
        for (const MessageField& field : decoded.message->fields()) {
            if (field.offset() + field.size() > decoded.present) {
                erase(fields, field.name());
            }
        }
    }
    return decoded.definition != nullptr ? frame : fields;
}

} // namespace

std::string messageText(const DecodedBuffer& decoded, bool oneLine)
{
    constexpr int traceIndent = 4;
    return printedForm(decoded).dump(oneLine ? -1 : traceIndent);
}

std::string summary(AnyMessage& message)
{
    std::vector<std::string> parts;
    const auto fields = message.fields();
    const std::string header = fields.front().name().substr(0, fields.front().name().find('.') + 1);
    bool firstOfBody = true;
    for (const MessageField& field : fields) {
        const auto values = usedValues(field);
        const std::string& name = field.name();
        if (name.starts_with(header)) {
            if (name == header + "ct" && !values.empty()) {
                parts.push_back("ct " + valueText(field, values));
            }
            continue;
        }
        if (!values.empty() || firstOfBody) {
            parts.push_back(shortName(name) + " " + valueText(field, values));
        }
        firstOfBody = false;
    }
    return fmt::format("{}", fmt::join(parts, ", "));
}

} // namespace nodectl
