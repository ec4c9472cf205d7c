#include "EReferenceSEC.h"

#include <array>
#include <ostream>

std::ostream& operator<<(std::ostream& os, EReferenceSEC sec)
{
    constexpr std::array names{"2", "4L", "4H", "5B", "6B", "5LB", "5HB", "6LB", "6HB", "7B"};
    const auto index = static_cast<std::size_t>(static_cast<std::uint32_t>(sec));
    return os << (index < names.size() ? names[index] : "UNDEFINED");
}
