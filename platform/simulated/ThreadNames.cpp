#include "ThreadNames.h"

#include "SimulatedPlatform.h"

#include <array>
#include <utility>

#include <pthread.h>

namespace simulated {

namespace {

thread_local std::string givenName;

} // namespace

void nameThisThread(std::string name)
{
    givenName = std::move(name);
}

std::string currentThreadName()
{
    if (!givenName.empty()) {
        return givenName;
    }
    std::array<char, 16> name{}; // the system's limit, terminating zero included
    if (pthread_getname_np(pthread_self(), name.data(), name.size()) != 0) {
        return {};
    }
    return name.data();
}

} // namespace simulated
