#pragma once

#include <memory>
#include <string>

#include "MessageCatalogue.h"
#include "Options.h"

namespace nodectl {

/// The definition that a message's name stands for. Throws Failure (wrong usage) with the nearest right name.
const MessageDefinition& messageNamed(const std::string& name);

/// A message with the body and the header fields that the options give; the others keep their defaults.
std::unique_ptr<AnyMessage> composeMessage(const MessageDefinition& definition, const Options& options);

} // namespace nodectl
