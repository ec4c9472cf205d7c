#pragma once

#include <httplib.h>
#include <vector>

#include "HostCheck.h"
#include "HttpRoute.h"
#include "HttpStream.h"

namespace radiounit {

/// One request and its answer. Checks before a route sees anything: host and origin, path, method, size of the body.
/// The HTTP library does the reading and writing; its own listening is not used.
class HttpExchange : private httplib::Server {
public:
    /// Largest body of a request, in bytes.
    static constexpr std::size_t bodyLimit = 1U << 20U;

    HttpExchange(const std::vector<HttpRoute>& routes, const HostCheck& hosts);

    /// @return what the route wants done now that its answer is on its way
    std::function<void()> run(HttpStream& stream);

private:
    const HttpRoute& check(const httplib::Request& request, httplib::Response& response) const;
    template <typename ReadBody>
    void answer(httplib::Response& response, const httplib::Request& request, const ReadBody& body);
    void refuse(httplib::Response& response, int status, const std::string& text);
    static std::string readBody(const httplib::Request& request, const httplib::ContentReader& reader);

    const std::vector<HttpRoute>& m_routes;
    const HostCheck& m_hosts;
    const HttpRoute* m_route = nullptr;
    std::function<void()> m_afterwards;
    bool m_refused = false;
};

} // namespace radiounit
