#include "thread_utilities.h"

#include "Core.h"

#include <fmt/format.h>

#include <string>
#include <system_error>

#include <pthread.h>
#include <sched.h>

namespace os_extension::thread_utilities {

namespace {

constexpr int warning = 2;
constexpr std::size_t longestName = 15; // the system's limit

void traceRefusal(const char* method, int line, const std::string& what, int error)
{
    simulated::platformTrace().write(
        warning, __FILE__, line, method,
        fmt::format("{}(): {} refused: {}; going on without it", method, what, std::generic_category().message(error)));
}

} // namespace

void setScheduling(std::thread& thread, int policy, int priority)
{
    simulated::core()
        .operations("thread_utilities")
        .run("setScheduling", {{"policy", policy}, {"priority", priority}}, [&] {
            sched_param parameters{};
            parameters.sched_priority = priority;
            const int error =
                thread.joinable() ? pthread_setschedparam(thread.native_handle(), policy, &parameters) : ESRCH;
            if (error != 0) {
                traceRefusal("setScheduling", __LINE__,
                             fmt::format("scheduling policy {} with priority {}", policy, priority), error);
            }
        });
}

void setName(std::thread& thread, const std::string& name)
{
    simulated::core().operations("thread_utilities").run("setName", {{"name", name}}, [&] {
        const std::string cut = name.substr(0, longestName);
        const int error = thread.joinable() ? pthread_setname_np(thread.native_handle(), cut.c_str()) : ESRCH;
        if (error != 0) {
            traceRefusal("setName", __LINE__, fmt::format("thread name \"{}\"", name), error);
        }
    });
}

} // namespace os_extension::thread_utilities
