#pragma once

#include <string>

#include "Deadline.h"

struct HttpAnswer {
    int status = 0; ///< 0 where none came
    std::string head;
    std::string body;
};

/// Sends the bytes as they stand to "HOST:PORT" and reads until the connection ends.
HttpAnswer httpExchange(const std::string& address, const std::string& request);

/// A plain request with the address as its host, and further header lines, each with its line end.
std::string httpRequest(const std::string& address, const std::string& method, const std::string& path,
                        const std::string& body = "", const std::string& headers = "");
