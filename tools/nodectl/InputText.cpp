#include "InputText.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <system_error>

#include "Failure.h"
#include "Suggestion.h"

namespace nodectl {

namespace {

/// Our own bound; the longest message as JSON has some 20 kB.
constexpr std::size_t longestText = std::size_t{1} << 20U;

[[noreturn]] void refuse(const std::string& what, const std::string& source, const std::string& why)
{
    throw Failure(ExitCode::wrongUsage, fmt::format("{} from {}: {}", what, source, why));
}

std::string readAll(std::FILE& file, const std::string& what, const std::string& source)
{
    std::string text;
    std::array<char, 4096> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), &file)) {
        text.append(block.data(), count);
        if (text.size() > longestText) {
            refuse(what, source, fmt::format("longer than {} bytes", longestText));
        }
    }
    if (std::ferror(&file) != 0) {
        refuse(what, source, std::system_category().message(errno));
    }
    return text;
}

} // namespace

std::string inputText(const std::string& argument, const std::string& what)
{
    if (argument == "-") {
        return readAll(*stdin, what, "standard input");
    }
    if (!argument.starts_with('@')) {
        return argument;
    }
    const std::string path = argument.substr(1);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "re"), &std::fclose);
    if (file == nullptr) {
        refuse(what, inQuotes(path), std::system_category().message(errno));
    }
    return readAll(*file, what, inQuotes(path));
}

} // namespace nodectl
