#pragma once

#include "IInterface.h"
#include "PlatformApi.h"
#include "RadioChannel.h"
#include "ResultCodes.h"
#include "SRadioFrameItem.h"

#include <cstdint>
#include <string>
#include <vector>

/// Frame formats of the unit; registered as "IHardwareConfigurationHandler".
class PLATFORM_API IHardwareConfigurationHandler : public IInterface {
public:
    static std::string interfaceName() { return "IHardwareConfigurationHandler"; }

    /// Reads the frame format that a channel runs with.
    virtual Result getRadioFrameId(RadioChannel channel, std::uint32_t& radioFrameId) = 0;

    /// @param list  which of the unit's lists
    /// @param items replaced by the frame formats
    /// @param count their number
    virtual Result getFrameFormatList(unsigned list, std::vector<SRadioFrameItem>& items,
                                      std::uint32_t& count) const = 0;

    /// Finds one frame format. The default looks through getFrameFormatList and passes on its failure.
    /// @return resultUnknownObject when no frame format has this id
    virtual Result getFrameFormatItem(unsigned list, unsigned long frameId, SRadioFrameItem& item) const;
};
