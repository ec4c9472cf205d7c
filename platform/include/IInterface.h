#pragma once

#include "InterfaceNames.h"
#include "PlatformApi.h"

#include <string>

/// Root of everything that the interface broker hands out. The broker owns the objects; a module that keeps a plain
/// pointer borrows it until the module is destroyed.
class PLATFORM_API IInterface {
public:
    virtual ~IInterface() = default;

    /// @return the broker's key: the name alone for index 0, else name + "_" + index
    static std::string interfaceName(const std::string& name, int index) { return ::interfaceName(name, index); }

protected:
    IInterface() = default;
    IInterface(const IInterface&) = default;
    IInterface& operator=(const IInterface&) = default;
};
