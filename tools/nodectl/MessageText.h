#pragma once

#include <string>

#include "LinkBuffer.h"

namespace nodectl {

/// The printed form of a message: as the unit's trace has it, or on one line. Of a short buffer only what is there.
std::string messageText(const DecodedBuffer& decoded, bool oneLine);

/// The fields that matter on one line: "eSelftestResult 1, capabilityEH 91". These are the channel and the body fields
/// other than 0, the first body field in any case; text as text.
std::string summary(AnyMessage& message);

} // namespace nodectl
