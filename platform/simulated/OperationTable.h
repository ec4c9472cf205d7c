#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulated {

/// What an operation returns, and so what may be injected as its result.
enum class ResultKind {
    code,           ///< u32
    flag,           ///< bool, injected as 0 or 1
    number,         ///< int, injected as i32 or as the same bits in a u32
    none,           ///< nothing to inject
    codeAndText,    ///< u32 with a text
    topApiResponse, ///< u32 with a text and an error indicator
};

/// @return the kind of "interface.operation"; null for one that the platform does not have
const ResultKind* findOperation(std::string_view name);

/// All operations as "interface.operation", those of both channels included.
const std::vector<std::string>& operationNames();

/// @return the names in the interface broker of a unit with this many channels
std::vector<std::string> interfaceNames(unsigned channels);

constexpr bool takesText(ResultKind kind)
{
    return kind == ResultKind::codeAndText || kind == ResultKind::topApiResponse;
}

} // namespace simulated
