#include "ReadyFile.h"

#include <cerrno>
#include <fmt/format.h>
#include <fstream>
#include <nlohmann/json.hpp>
#include <unistd.h>

#include "Errors.h"

namespace radiounit {

ReadyFile::ReadyFile(std::filesystem::path file) : m_file{std::move(file)}
{
    if (unlink(m_file.c_str()) != 0 && errno != ENOENT) {
        const std::error_code error{errno, std::generic_category()};
        throw Failure{fmt::format("ready file {}: {}; name a file that can be written with --ready-file",
                                  m_file.string(), error.message())};
    }
}

void ReadyFile::write(const std::optional<std::string>& link, const std::optional<std::string>& control) const
{
    nlohmann::ordered_json content{{"link", nullptr}, {"control", nullptr}, {"pid", getpid()}};
    if (link) {
        content["link"] = *link;
    }
    if (control) {
        content["control"] = *control;
    }
    const std::filesystem::path half{fmt::format("{}.{}", m_file.string(), getpid())};
    std::ofstream out{half};
    out << content.dump() << '\n';
    out.close();
    std::error_code error;
    if (out) {
        std::filesystem::rename(half, m_file, error);
    }
    if (!out || error) {
        std::error_code ignored;
        std::filesystem::remove(half, ignored);
        throw Failure{fmt::format("ready file {} cannot be written{}{}; name a file in a folder that exists",
                                  m_file.string(), error ? ": " : "", error ? error.message() : "")};
    }
}

} // namespace radiounit
