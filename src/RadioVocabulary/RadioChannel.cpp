#include "RadioChannel.h"

std::vector<RadioChannel> getRadioChannelIds(unsigned int count)
{
    switch (count) {
    case 1:
        return {RadioChannel{1}};
    case 2:
        return {RadioChannel{1}, RadioChannel{2}};
    default:
        return {};
    }
}
