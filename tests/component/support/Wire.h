#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// Buffers of the link, written as hexadecimal digits. Blanks are for the reader.

/// @return the number as a big-endian word
std::string word(std::int64_t value);

template <class... Values>
std::string words(Values... values)
{
    return (word(values) + ...);
}

/// A header in which no two fields are alike, so that an answer that mixes them up shows.
inline std::string head(std::int64_t ct)
{
    return words(3, 0xA1, 7, 0x55, 0x5A, ct);
}

/// The header of what the radio sends unasked: its `number`th message since the start.
inline std::string spontaneousHead(std::int64_t number, std::int64_t ct, std::int64_t slot = 3)
{
    return words(slot, 0, 0, 0x80000000 + number, 0, ct);
}

/// What the radio sends to the node's equipment software begins with this device word.
inline std::string toNode(std::string_view idAndMessage)
{
    return "00000000" + std::string(idAndMessage);
}

/// A text field, filled up with zero bytes.
std::string text(std::string_view characters, std::size_t width);

/// The same byte several times.
std::string repeated(std::uint8_t byte, std::size_t count);

inline std::string zeros(std::size_t count)
{
    return repeated(0, count);
}

inline std::string zeroWords(std::size_t count)
{
    return zeros(4 * count);
}

std::string bytesOf(std::string_view hexDigits);
std::string hexOf(std::string_view bytes);
