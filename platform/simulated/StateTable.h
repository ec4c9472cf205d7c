#pragma once

#include "Json.h"
#include "StateRule.h"

namespace simulated {

/// Everything in the state that has a fixed place. The injections are apart: their keys are the operations.
const StateRule& stateRules();

/// @return a believable unit with this many radios, all up
Json defaultState(unsigned channels);

} // namespace simulated
