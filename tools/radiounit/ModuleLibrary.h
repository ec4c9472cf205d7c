#pragma once

#include <filesystem>
#include <memory>

#include "IVornipcAdapter.h"

namespace radiounit {

/// The module's library, loaded for as long as this object lives.
class ModuleLibrary {
public:
    /// @throws Failure telling which file, what is wrong with it and what to do
    explicit ModuleLibrary(const std::filesystem::path& file);
    ModuleLibrary(const ModuleLibrary&) = delete;
    ModuleLibrary& operator=(const ModuleLibrary&) = delete;

    /// Unloads the library, and says on stderr where something keeps it loaded. The module must be gone by then, and
    /// so must every thread that could be inside its code.
    ~ModuleLibrary();

    /// @throws Failure where the factory throws or returns nothing
    std::unique_ptr<IVornipcAdapter> create(unsigned char channels, ITiDisableModulation& disableModulation,
                                            const std::string& mmuAddress) const;

private:
    std::filesystem::path m_file;
    void* m_handle;
    VornipcAdapterFactory m_factory;
};

} // namespace radiounit
