#pragma once

#include <stdexcept>

#include "IVornipcAdapter.h"
#include "Json.h"
#include "SimulatedPlatform.h"

namespace radiounit {

/// An event that cannot be understood; `what` names the argument, the value and what is right.
struct EventError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// There is nobody whom the event could reach.
struct NobodyRegistered : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Whom events reach.
struct EventTargets {
    simulated::Platform& platform;
    IVornipcAdapter& module;
};

/// Makes a platform callback, or the call of another platform component, happen on a platform thread of its own, and
/// returns what it returned; null where it returns nothing.
/// @param event {"event":NAME, ...}
simulated::Json raiseEvent(const EventTargets& targets, const simulated::Json& event);

} // namespace radiounit
