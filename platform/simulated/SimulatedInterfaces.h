#pragma once

#include "IInterface.h"
#include "ITiDisableModulation.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>

namespace simulated {

struct Core;

using InterfacesByName = std::map<std::string, std::shared_ptr<IInterface>>;

/// Each puts the interfaces of one kind into the map, under their names in the broker.
void addRadio(InterfacesByName& interfaces, Core& core, std::int32_t channel);
void addChannelSettings(InterfacesByName& interfaces, Core& core, std::int32_t channel);
void addPowerControl(InterfacesByName& interfaces, Core& core, std::int32_t channel);
void addUnit(InterfacesByName& interfaces, Core& core);

std::unique_ptr<ITiDisableModulation> makeDisableModulation(Core& core);

} // namespace simulated
