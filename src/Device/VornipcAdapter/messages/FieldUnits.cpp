#include "FieldUnits.h"

#include <algorithm>

const std::vector<FieldUnit>& fieldUnits()
{
    static const std::vector<FieldUnit> units{
        // power, protection
        {"RfSelectedMinOutputPower", "dBm"},
        {"RfSelectedMaxOutputPower", "dBm"},
        {"RfAtpcTargetInputPowerFE", "dBm"},
        {"RfInputPowerThreshold", "dBm"},
        {"iRFInputPowerThreshold", "dBm"},
        {"RfCurrentOutputPower", "dBm"},
        {"RfCurrentInputPower", "dBm/10"},
        {"rfMinOutputPower", "dBm"},
        {"rfMaxOutputPower4QAM", "dBm"},
        {"rfMaxOutputPower16QAM", "dBm"},
        {"rfMaxOutputPower32QAM", "dBm"},
        {"rfMaxOutputPower64QAM", "dBm"},
        {"rfMaxOutputPower128QAM", "dBm"},
        {"rfMaxOutputPower256QAM", "dBm"},
        {"rfMaxOutputPower512QAM", "dBm"},
        {"rfMaxOutputPower1024QAM", "dBm"},
        {"rfMaxOutputPower2048QAM", "dBm"},
        {"rfMaxOutputPower4096QAM", "dBm"},
        {"rfMaxOutputPowerNotLimited", "dBm"},
        {"powerLimitation4QAM", "dB"},
        {"powerLimitation16QAM", "dB"},
        {"powerLimitation32QAM", "dB"},
        {"powerLimitation64QAM", "dB"},
        {"powerLimitation128QAM", "dB"},
        {"powerLimitation256QAM", "dB"},
        {"powerLimitation512QAM", "dB"},
        {"powerLimitation1024QAM", "dB"},
        {"powerLimitation2048QAM", "dB"},
        {"powerLimitation4096QAM", "dB"},
        // equipment, alarms
        {"iRAUTemperature", "deg C"},
        {"iTimeStampSeconds", "s"},
        {"iTimeStampNanoseconds", "ns"},
        // relays, upgrade, PS
        {"iHopDataLength", "bytes"},
        {"iHCCDataLength", "bytes"},
        {"sizeOfObjects", "bytes"},
    };
    return units;
}

std::string_view unitOfField(std::string_view name)
{
    const std::string_view field = name.substr(name.rfind('.') + 1); // the whole name where there is no group
    const auto& units = fieldUnits();
    const auto found = std::find_if(units.begin(), units.end(), [field](const auto& e) { return e.field == field; });
    return found != units.end() ? found->unit : std::string_view{};
}
