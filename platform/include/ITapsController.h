#pragma once

#include "IInterface.h"
#include "PlatformApi.h"
#include "ResultCodes.h"

#include <string>

/// RF taps of one channel's radio; registered as "ITapsController_1" and "ITapsController_2".
class PLATFORM_API ITapsController : public IInterface {
public:
    static std::string interfaceName(int index) { return IInterface::interfaceName("ITapsController", index); }

    virtual Result setTaps(bool on) = 0;
};
