#pragma once

#include <cstdint>
#include <iosfwd>

/// The platform's reference spectrum efficiency classes, 0 to 9.
enum EReferenceSEC : std::int32_t {};

/// No class known or asked for.
inline constexpr EReferenceSEC referenceSecUndefined{1000};

/// Writes the name of the class, for example "4L"; "UNDEFINED" where the value has none.
std::ostream& operator<<(std::ostream& os, EReferenceSEC sec);
