#pragma once

#include <cstdint>

/// Result code of a platform operation. Below 0x8000: success, information or warning; 0x8000 and above: failure.
/// All codes and their texts are the platform's.
using Result = std::uint32_t;

inline constexpr Result resultOk = 0x0;
inline constexpr Result resultFailed = 0x8000;
inline constexpr Result resultNotImplemented = 0x8001;
inline constexpr Result resultUnknownObject = 0x8002;
/// The limited-power query answers this while no frame format has been set.
inline constexpr Result resultExternalInterfaceMissing = 0x8008;

constexpr bool isFailure(Result result)
{
    return result >= resultFailed;
}

/// The platform's text of a result code, for example "eTI_E_FAILED"; "Unknown" for a code that has none.
const char* resultCodeText(Result result);
