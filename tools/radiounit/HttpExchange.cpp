#include "CommandLine.h"

#if VORNIPC_WITH_CONTROL

#include "HttpExchange.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <optional>
#include <set>

namespace radiounit {
namespace {

using simulated::Json;

HttpError bodyTooLarge()
{
    return {httpTooLarge, fmt::format("the body is larger than {} bytes", HttpExchange::bodyLimit)};
}

std::string textFor(int status)
{
    constexpr int pathTooLong = 414;
    switch (status) {
    case httpBadRequest:
        return "this is no HTTP request that can be read";
    case pathTooLong:
        return "the path is too long";
    default:
        return fmt::format("refused with HTTP status {}", status);
    }
}

/// The announced size of the body; nothing where it comes in chunks.
std::optional<std::size_t> announcedLength(const httplib::Request& request)
{
    if (request.has_header("Transfer-Encoding")) {
        return std::nullopt;
    }
    const auto text = request.get_header_value("Content-Length");
    if (!std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; })) {
        throw HttpError{httpBadRequest, fmt::format("Content-Length \"{}\" is not a number", text)};
    }
    constexpr std::size_t manyDigits = 9; // far above the limit, far below an overflow
    if (text.size() > manyDigits) {
        throw bodyTooLarge();
    }
    return text.empty() ? 0 : std::stoul(text);
}

void checkHosts(const HostCheck& hosts, const httplib::Request& request)
{
    for (std::size_t i = 0; i < request.get_header_value_count("Host"); ++i) {
        if (const auto host = request.get_header_value("Host", i); !hosts.isThisMachine(host)) {
            throw HttpError{httpMisdirected,
                            fmt::format("Host \"{}\" is not this machine; address the unit as 127.0.0.1", host)};
        }
    }
    for (std::size_t i = 0; i < request.get_header_value_count("Origin"); ++i) {
        if (const auto origin = request.get_header_value("Origin", i); !hosts.isOwnOrigin(origin)) {
            throw HttpError{httpMisdirected,
                            fmt::format("Origin \"{}\" is foreign; pages of other sites may not use the unit", origin)};
        }
    }
}

} // namespace

HttpExchange::HttpExchange(const std::vector<HttpRoute>& routes, const HostCheck& hosts)
    : m_routes{routes}, m_hosts{hosts}
{
    set_payload_max_length(bodyLimit);
    set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
        try {
            m_route = &check(request, response);
            return HandlerResponse::Unhandled;
        } catch (const HttpError& error) {
            refuse(response, error.status, error.what());
            return HandlerResponse::Handled;
        }
    });
    set_error_handler([this](const httplib::Request&, httplib::Response& response) {
        if (response.body.empty()) {
            refuse(response, response.status, textFor(response.status));
        }
    });

    const auto withoutBody = [this](const httplib::Request& request, httplib::Response& response) {
        answer(response, request, [] { return std::string{}; });
    };
    const auto withBody = [this](const httplib::Request& request, httplib::Response& response,
                                 const httplib::ContentReader& reader) {
        answer(response, request, [&] { return readBody(request, reader); });
    };
    Get(".*", withoutBody);
    Post(".*", withBody);
    Put(".*", withBody);
    Patch(".*", withBody);
}

std::function<void()> HttpExchange::run(HttpStream& stream)
{
    bool closed = false;
    const bool served = process_request(stream, true, closed, [](httplib::Request& request) {
        request.ranges.clear(); // an answer is given whole
    });
    stream.finish(!served || m_refused);
    return std::move(m_afterwards);
}

const HttpRoute& HttpExchange::check(const httplib::Request& request, httplib::Response& response) const
{
    checkHosts(m_hosts, request);
    const std::string method = request.method == "HEAD" ? "GET" : request.method;
    std::vector<std::string> allowed;
    for (const auto& route : m_routes) {
        if (route.path == request.path) {
            allowed.push_back(route.method);
        }
    }
    if (allowed.empty()) {
        std::set<std::string> paths;
        std::for_each(m_routes.begin(), m_routes.end(), [&](const auto& route) { paths.insert(route.path); });
        throw HttpError{httpNotFound,
                        fmt::format("no such path: {}; there are {}", request.path, fmt::join(paths, ", "))};
    }
    if (std::find(allowed.begin(), allowed.end(), method) == allowed.end()) {
        response.set_header("Allow", fmt::format("{}", fmt::join(allowed, ", ")));
        throw HttpError{httpWrongMethod,
                        fmt::format("{} takes {}, not {}", request.path, fmt::join(allowed, " or "), request.method)};
    }
    if (request.is_multipart_form_data()) {
        throw HttpError{httpBadRequest, "the body must be JSON, not a form"};
    }
    if (announcedLength(request).value_or(0) > bodyLimit) {
        throw bodyTooLarge();
    }
    return *std::find_if(m_routes.begin(), m_routes.end(),
                         [&](const auto& route) { return route.path == request.path && route.method == method; });
}

template <typename ReadBody>
void HttpExchange::answer(httplib::Response& response, const httplib::Request& request, const ReadBody& body)
{
    try {
        HttpCall call{request.params, body(), nullptr};
        response.set_content(simulated::toText(m_route->answer(call)), "application/json");
        m_afterwards = std::move(call.afterwards);
    } catch (const HttpError& error) {
        refuse(response, error.status, error.what());
    } catch (const WorkerPool::TooManyWaiting& error) {
        refuse(response, httpUnavailable, error.what());
    } catch (const std::exception& error) {
        refuse(response, httpInternalError, error.what());
    }
}

std::string HttpExchange::readBody(const httplib::Request& request, const httplib::ContentReader& reader)
{
    std::string body;
    if (announcedLength(request) == 0U) {
        return body; // the library would wait for the end of the connection
    }
    bool tooLarge = false;
    const bool complete = reader([&](const char* data, std::size_t length) {
        tooLarge = body.size() + length > bodyLimit;
        if (!tooLarge) {
            body.append(data, length);
        }
        return !tooLarge;
    });
    if (tooLarge) {
        throw bodyTooLarge();
    }
    if (!complete) {
        throw HttpError{httpBadRequest, "the body did not arrive whole"};
    }
    return body;
}

void HttpExchange::refuse(httplib::Response& response, int status, const std::string& text)
{
    m_refused = true;
    response.status = status;
    response.set_content(simulated::toText(Json{{"error", text}}), "application/json");
}

} // namespace radiounit

#endif
