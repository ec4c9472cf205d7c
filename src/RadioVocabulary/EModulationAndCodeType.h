#pragma once

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

/// The platform's modulation-and-code types: 10 x family + code strength (0 strong, 1 normal, 2 light), for example 31
/// for "4QAM". Families run from 1 (half BPSK) to 14 (16384QAM).
enum EModulationAndCodeType : std::int32_t {};

/// No modulation known or asked for.
inline constexpr EModulationAndCodeType modulationUndefined{143};

/// One entry of the platform's list of modulation-and-code types.
struct ModulationAndCode {
    EModulationAndCodeType value;
    std::string name;
    std::int32_t constellationSize; ///< points of the constellation; 16385 for "UNDEFINED"
    std::int32_t familyMarker;      ///< 2 for half BPSK, 0 for the others, 5 for "UNDEFINED"
    std::int32_t codeStrength;      ///< 0 strong, 1 normal, 2 light; 3 for "UNDEFINED"
};

/// The 43 defined types in ascending order of their values.
std::vector<ModulationAndCode> getModulationAndCodeVector();

/// Writes the name of the type, "UNDEFINED" where the value has none.
std::ostream& operator<<(std::ostream& os, EModulationAndCodeType modulation);
