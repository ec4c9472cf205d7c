#include "HexText.h"

#include <fmt/format.h>

#include <cctype>
#include <cstddef>

#include "Failure.h"
#include "Suggestion.h"

namespace nodectl {

std::string toHex(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char character : bytes) {
        const auto byte = static_cast<unsigned char>(character);
        text += digits[byte >> 4U];
        text += digits[byte & 0x0fU];
    }
    return text;
}

std::string fromHex(std::string_view text)
{
    std::string bytes;
    unsigned pending = 0;
    std::size_t count = 0;
    for (std::size_t position = 0; position < text.size(); ++position) {
        const auto character = static_cast<unsigned char>(text[position]);
        if (std::isspace(character) != 0) {
            continue;
        }
        if (std::isxdigit(character) == 0) {
            throw Failure(ExitCode::wrongUsage, fmt::format("{} at position {} is not a hexadecimal digit",
                                                            inQuotes(text.substr(position, 1)), position + 1));
        }
        const auto digit =
            static_cast<unsigned>(std::isdigit(character) != 0 ? character - '0' : std::tolower(character) - 'a' + 10);
        if (++count % 2 == 0) {
            bytes += static_cast<char>(pending << 4U | digit);
        }
        pending = digit;
    }
    if (count % 2 != 0) {
        throw Failure(ExitCode::wrongUsage,
                      fmt::format("{} hexadecimal digits do not make whole bytes: one is missing or too many", count));
    }
    return bytes;
}

} // namespace nodectl
