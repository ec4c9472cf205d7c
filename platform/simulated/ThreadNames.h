#pragma once

#include <string>

namespace simulated {

/// @return the name given by nameThisThread(), else the system's name of the calling thread
std::string currentThreadName();

} // namespace simulated
