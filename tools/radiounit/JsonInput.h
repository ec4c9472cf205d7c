#pragma once

#include <stdexcept>
#include <string>

#include "Json.h"

namespace radiounit {

/// JSON from outside that cannot be used; `what` tells what is wrong with it.
struct JsonError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// @throws JsonError where it is no JSON, or nested so deeply that working on it could exhaust the stack
simulated::Json parseJson(const std::string& text);

/// The same, of an object.
simulated::Json parseJsonObject(const std::string& text);

} // namespace radiounit
