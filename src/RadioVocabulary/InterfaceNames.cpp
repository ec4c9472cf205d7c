#include "InterfaceNames.h"

std::string interfaceName(const std::string& name, int index)
{
    return index == 0 ? name : name + "_" + std::to_string(index);
}
