#pragma once

#include <string>
#include <string_view>

#include "MessageCatalogue.h"

namespace nodectl {

/// Puts a JSON body into a message object: an object with the message's own field names, groups nested, arrays as a list
/// or as the printed object with "value0" and so on. Fields that it does not name keep their values. The header may stand
/// in it under its own name, and a whole printed message counts as its body. Throws Failure (wrong usage) that names the
/// field and the limit; the message may have been changed in part then.
void readBody(std::string_view json, const MessageDefinition& definition, AnyMessage& message);

} // namespace nodectl
