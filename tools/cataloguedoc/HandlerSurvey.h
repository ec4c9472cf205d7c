#pragma once

#include <map>
#include <string>

/// Where in the module a message of the node arrives.
struct ServedBy {
    std::string file;   ///< source file of the handler
    std::string method; ///< its method
};

/// Asks the module itself: delivers every message of the node to it, on the simulated platform, and looks which handler
/// traces it.
/// @return by message name; messages that nobody serves are left out
/// @throws std::runtime_error where the module cannot be loaded
std::map<std::string, ServedBy> surveyHandlers();
