#include "support/Wire.h"

#include <array>
#include <cstdio>

std::string hexOf(std::string_view bytes)
{
    std::string digits;
    for (const char byte : bytes) {
        std::array<char, 3> pair{};
        std::snprintf(pair.data(), pair.size(), "%02x", static_cast<unsigned>(static_cast<unsigned char>(byte)));
        digits += pair.data();
    }
    return digits;
}

std::string bytesOf(std::string_view hexDigits)
{
    std::string digits;
    for (const char digit : hexDigits) {
        if (digit != ' ') {
            digits += digit;
        }
    }
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

std::string word(std::int64_t value)
{
    std::array<char, 9> digits{};
    std::snprintf(digits.data(), digits.size(), "%08x", static_cast<unsigned>(value));
    return digits.data();
}

std::string text(std::string_view characters, std::size_t width)
{
    return hexOf(characters) + zeros(width - characters.size());
}

std::string repeated(std::uint8_t byte, std::size_t count)
{
    return hexOf(std::string(count, static_cast<char>(byte)));
}
