#pragma once

#include <string>

/// Key under which the platform's interface broker holds an interface: the bare name for the unit-wide one (index 0),
/// else name + "_" + index, for example "IRadio_2".
std::string interfaceName(const std::string& name, int index);
