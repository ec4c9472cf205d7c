#pragma once

#include <string_view>
#include <vector>

/// Unit of the fields that have one.
struct FieldUnit {
    std::string_view field; ///< without the groups around it; a name means the same in every message
    std::string_view unit;
};

/// All fields with a unit, each once.
const std::vector<FieldUnit>& fieldUnits();

/// @param name as MessageField has it
/// @return empty where the field has no unit
std::string_view unitOfField(std::string_view name);
