#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <string>

#include "Json.h"

namespace radiounit {

/// A request that is refused; `what` becomes the answer's error text.
struct HttpError : std::runtime_error {
    HttpError(int statusCode, const std::string& text) : std::runtime_error{text}, status{statusCode} {}
    int status;
};

inline constexpr int httpBadRequest = 400;
inline constexpr int httpNotFound = 404;
inline constexpr int httpWrongMethod = 405;
inline constexpr int httpConflict = 409;
inline constexpr int httpUnavailable = 503;
inline constexpr int httpTooLarge = 413;
inline constexpr int httpMisdirected = 421;
inline constexpr int httpInternalError = 500;

/// What a route sees of a request.
struct HttpCall {
    std::multimap<std::string, std::string> query;
    std::string body;
    std::function<void()> afterwards; ///< for the route to set: runs once the answer is on its way
};

struct HttpRoute {
    std::string method;
    std::string path;
    std::function<simulated::Json(HttpCall&)> answer; ///< on a worker thread; throws HttpError to refuse
};

} // namespace radiounit
