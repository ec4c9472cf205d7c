#pragma once

#include "PlatformApi.h"

#include <nlohmann/json.hpp>

#include <string>

namespace simulated {

/// Objects keep the order in which their keys were put in, so that state and records read as they were written.
using Json = nlohmann::ordered_json;

/// Writes JSON that may hold arbitrary bytes, as trace texts do: what is not UTF-8 becomes the replacement character.
/// @param indent blanks a level, -1 for all in one line
PLATFORM_API std::string toText(const Json& json, int indent = -1);

} // namespace simulated
