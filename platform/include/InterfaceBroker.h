#pragma once

#include "IInterface.h"
#include "PlatformApi.h"

#include <memory>
#include <string>

/// Directory of the platform's interfaces, by name. May be asked from any thread.
class PLATFORM_API InterfaceBroker {
public:
    static InterfaceBroker& getInstance();

    /// @return the registered object, to be cast to the wanted interface; null when nothing has this name
    std::shared_ptr<IInterface> lookup(const std::string& name);

    InterfaceBroker(const InterfaceBroker&) = delete;
    InterfaceBroker& operator=(const InterfaceBroker&) = delete;

private:
    InterfaceBroker() = default;
    ~InterfaceBroker() = default;
};
