#include "JsonInput.h"

#include <fmt/format.h>

namespace radiounit {

using simulated::Json;

namespace {

/// Levels of lists and objects. Our own choice, several times what the platform state needs.
constexpr int depthLimit = 32;

} // namespace

Json parseJson(const std::string& text)
{
    try {
        return Json::parse(text, [](int depth, Json::parse_event_t, const Json&) {
            if (depth > depthLimit) {
                throw JsonError{fmt::format("the JSON is nested more than {} levels deep", depthLimit)};
            }
            return true;
        });
    } catch (const Json::exception& error) {
        throw JsonError{fmt::format("this is not JSON: {}", error.what())};
    }
}

Json parseJsonObject(const std::string& text)
{
    Json json = parseJson(text);
    if (!json.is_object()) {
        throw JsonError{fmt::format("a JSON object is expected, not {}", text.empty() ? "nothing" : json.type_name())};
    }
    return json;
}

} // namespace radiounit
