#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace nodectl {

inline constexpr std::size_t wordSize = 4;

/// The u32 that the bytes begin with; there are at least four.
inline std::uint32_t firstWord(std::string_view bytes)
{
    std::uint32_t word = 0;
    for (const char byte : bytes.substr(0, wordSize)) {
        word = word << 8U | static_cast<unsigned char>(byte);
    }
    return word;
}

inline std::string wordBytes(std::uint32_t word)
{
    std::string bytes(wordSize, '\0');
    for (std::size_t i = wordSize; i-- > 0; word >>= 8U) {
        bytes[i] = static_cast<char>(word & 0xffU);
    }
    return bytes;
}

} // namespace nodectl
