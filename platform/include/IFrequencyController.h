#pragma once

#include "IInterface.h"
#include "PlatformApi.h"

#include <cstdint>
#include <string>

/// Frequencies that one channel runs on, in the unit of its radio's channel plan; registered as
/// "IFrequencyController_1" and "IFrequencyController_2".
class PLATFORM_API IFrequencyController : public IInterface {
public:
    static std::string interfaceName(int index) { return IInterface::interfaceName("IFrequencyController", index); }

    virtual std::uint32_t getTxFrequency() = 0;
    virtual std::uint32_t getRxFrequency() = 0;
};
