#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

/// Bytes written as hexadecimal digits; blanks are for the reader.
inline std::string bytes(std::string_view hexText)
{
    std::string digits;
    for (const char character : hexText) {
        if (character != ' ') {
            digits += character;
        }
    }
    std::string result;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        result += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return result;
}

/// The other way round, so that a failing comparison can be read.
inline std::string hexOf(std::string_view data)
{
    std::string text;
    for (const char character : data) {
        char digits[4];
        std::snprintf(digits, sizeof digits, "%02x ", static_cast<unsigned>(static_cast<unsigned char>(character)));
        text += digits;
    }
    return text;
}
