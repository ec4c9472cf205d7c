#include "ModuleLibrary.h"

#include <bit>
#include <dlfcn.h>
#include <fmt/format.h>

#include "Errors.h"

namespace radiounit {
namespace {

std::string lastLoaderError()
{
    const char* text = dlerror();
    return text != nullptr ? text : "no reason given";
}

/// The absolute path, since a bare file name would send the loader through its search path.
std::filesystem::path existingFile(const std::filesystem::path& file)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        throw Failure{
            fmt::format("module {}: no such file; build it, or name the library with --module", file.string())};
    }
    return std::filesystem::absolute(file);
}

} // namespace

ModuleLibrary::ModuleLibrary(const std::filesystem::path& file)
    : m_file{existingFile(file)}, m_handle{dlopen(m_file.c_str(), RTLD_NOW | RTLD_LOCAL)}
{
    if (m_handle == nullptr) {
        throw Failure{fmt::format("module {} cannot be loaded: {}; name a module library of this machine with --module",
                                  m_file.string(), lastLoaderError())};
    }
    m_factory = std::bit_cast<VornipcAdapterFactory>(dlsym(m_handle, vornipcAdapterFactoryName));
    if (m_factory == nullptr) {
        dlclose(m_handle);
        throw Failure{fmt::format("{} is no module: it has no symbol {}; name the module's library with --module",
                                  m_file.string(), vornipcAdapterFactoryName)};
    }
}

ModuleLibrary::~ModuleLibrary()
{
    if (dlclose(m_handle) != 0) {
        report(fmt::format("module {} cannot be unloaded: {}", m_file.string(), lastLoaderError()));
    } else if (dlopen(m_file.c_str(), RTLD_NOW | RTLD_NOLOAD) != nullptr) {
        report(fmt::format("module {} is still loaded after dlclose: something holds on to it", m_file.string()));
    }
}

std::unique_ptr<IVornipcAdapter> ModuleLibrary::create(unsigned char channels, ITiDisableModulation& disableModulation,
                                                       const std::string& mmuAddress) const
{
    std::unique_ptr<IVornipcAdapter> module;
    try {
        module.reset(m_factory(channels, disableModulation, mmuAddress.c_str()));
    } catch (const std::exception& error) {
        throw Failure{fmt::format("module {}: its creation failed: {}", m_file.string(), error.what())};
    }
    if (module == nullptr) {
        throw Failure{fmt::format("module {}: its factory returned nothing", m_file.string())};
    }
    return module;
}

} // namespace radiounit
