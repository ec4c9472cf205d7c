#include "EModulationAndCodeType.h"

#include <algorithm>
#include <array>
#include <ostream>

namespace {

struct Family {
    const char* name;
    std::int32_t constellationSize;
    std::int32_t marker;
};

/// In the order of the family number, which starts at 1.
constexpr std::array families{
    Family{"HALF_BPSK", 2, 2},  Family{"BPSK", 2, 0},         Family{"4QAM", 4, 0},       Family{"16QAM", 16, 0},
    Family{"32QAM", 32, 0},     Family{"64QAM", 64, 0},       Family{"128QAM", 128, 0},   Family{"256QAM", 256, 0},
    Family{"512QAM", 512, 0},   Family{"1024QAM", 1024, 0},   Family{"2048QAM", 2048, 0}, Family{"4096QAM", 4096, 0},
    Family{"8192QAM", 8192, 0}, Family{"16384QAM", 16384, 0},
};

constexpr std::array codeSuffixes{"_STRONG", "", "_LIGHT"};

std::vector<ModulationAndCode> makeList()
{
    std::vector<ModulationAndCode> list;
    std::int32_t decade = 10;
    for (const Family& family : families) {
        std::int32_t strength = 0;
        for (const char* suffix : codeSuffixes) {
            list.push_back({EModulationAndCodeType{decade + strength}, std::string(family.name) + suffix,
                            family.constellationSize, family.marker, strength});
            ++strength;
        }
        decade += 10;
    }
    list.push_back({modulationUndefined, "UNDEFINED", 16385, 5, 3});
    return list;
}

const std::vector<ModulationAndCode>& sharedList()
{
    static const std::vector<ModulationAndCode> list = makeList();
    return list;
}

} // namespace

std::vector<ModulationAndCode> getModulationAndCodeVector()
{
    return sharedList();
}

std::ostream& operator<<(std::ostream& os, EModulationAndCodeType modulation)
{
    const auto& list = sharedList();
    const auto entry = std::find_if(list.begin(), list.end(),
                                    [modulation](const ModulationAndCode& e) { return e.value == modulation; });
    return entry != list.end() ? os << entry->name : os << "UNDEFINED";
}
