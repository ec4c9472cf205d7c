#include "IHardwareConfigurationHandler.h"

#include <algorithm>

Result IHardwareConfigurationHandler::getFrameFormatItem(unsigned list, unsigned long frameId,
                                                         SRadioFrameItem& item) const
{
    std::vector<SRadioFrameItem> items;
    std::uint32_t count = 0;
    const Result result = getFrameFormatList(list, items, count);
    if (isFailure(result)) {
        return result;
    }
    items.resize(std::min<std::size_t>(items.size(), count));
    const auto wanted = static_cast<std::uint32_t>(frameId); // one word, however wide a long is
    const auto found =
        std::find_if(items.begin(), items.end(), [&](const SRadioFrameItem& each) { return each.frameId == wanted; });
    if (found == items.end()) {
        return resultUnknownObject;
    }
    item = *found;
    return resultOk;
}
