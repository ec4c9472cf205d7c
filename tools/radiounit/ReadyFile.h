#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace radiounit {

/// The file that tells a starting script where the unit can be reached.
class ReadyFile {
public:
    /// Takes away what an earlier unit left, so that nobody reads its addresses.
    /// @throws Failure
    explicit ReadyFile(std::filesystem::path file);

    /// Appears at once and complete.
    /// @throws Failure
    void write(const std::optional<std::string>& link, const std::optional<std::string>& control) const;

private:
    std::filesystem::path m_file;
};

} // namespace radiounit
