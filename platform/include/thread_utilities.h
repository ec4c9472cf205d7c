#pragma once

#include "PlatformApi.h"

#include <string>
#include <thread>

namespace os_extension::thread_utilities {

/// @param policy   the operating system's number, 2 for round-robin real-time
/// @param priority 1 to 99 for the real-time policies. Where the system refuses, the thread keeps its scheduling and a
///                 trace line says so
PLATFORM_API void setScheduling(std::thread& thread, int policy, int priority);

/// Names a running thread for debuggers and trace; the system keeps the first 15 characters.
PLATFORM_API void setName(std::thread& thread, const std::string& name);

} // namespace os_extension::thread_utilities
