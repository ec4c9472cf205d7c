#pragma once

#include "EModulationAndCodeType.h"
#include "IInterface.h"
#include "PlatformApi.h"
#include "ResultCodes.h"

#include <string>

/// Adaptive coding and modulation of one channel; registered as "IAcmHandler_1" and "IAcmHandler_2".
class PLATFORM_API IAcmHandler : public IInterface {
public:
    static std::string interfaceName(int index) { return IInterface::interfaceName("IAcmHandler", index); }

    /// Reads the range of modulations that the channel runs with. A handler that does not offer this answers "not
    /// implemented".
    virtual Result getMinMaxModulationAndCode(EModulationAndCodeType* /*min*/, EModulationAndCodeType* /*max*/) const
    {
        return resultNotImplemented;
    }

    virtual Result isAcmEngineEnabled(bool* enabled) const = 0;
};
