#pragma once

#include <array>
#include <cstdint>

namespace radiounit {

inline std::uint32_t bigEndianWord(const char* bytes)
{
    std::uint32_t word = 0;
    for (unsigned i = 0; i < sizeof(word); ++i) {
        word = word << 8U | static_cast<unsigned char>(bytes[i]);
    }
    return word;
}

inline std::array<char, 4> bigEndianBytes(std::uint32_t word)
{
    return {static_cast<char>(word >> 24U), static_cast<char>(word >> 16U), static_cast<char>(word >> 8U),
            static_cast<char>(word)};
}

} // namespace radiounit
