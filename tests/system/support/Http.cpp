#include "Http.h"

#include <cstdlib>
#include <limits>

#include "Node.h"

HttpAnswer httpExchange(const std::string& address, const std::string& request)
{
    const Socket socket{address};
    (void)socket.sendWithin(request, patience); // a refusing server may stop reading, its answer counts
    const std::string all = socket.receive(std::numeric_limits<std::size_t>::max());
    const auto headEnd = all.find("\r\n\r\n");
    if (headEnd == std::string::npos) {
        return {};
    }
    return {std::atoi(all.c_str() + all.find(' ')), all.substr(0, headEnd), all.substr(headEnd + 4)};
}

std::string httpRequest(const std::string& address, const std::string& method, const std::string& path,
                        const std::string& body, const std::string& headers)
{
    const std::string length = body.empty() ? "" : "Content-Length: " + std::to_string(body.size()) + "\r\n";
    return method + " " + path + " HTTP/1.1\r\nHost: " + address + "\r\n" + headers + length + "\r\n" + body;
}
