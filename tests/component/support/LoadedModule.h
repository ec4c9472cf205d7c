#pragma once

#include "IVornipcAdapter.h"

#include <memory>
#include <string>

/// The module library in this process, with one module of it. Loaded anew for every test: some of its state lasts as
/// long as the library does.
class LoadedModule {
public:
    /// Loads the library and creates the module on the simulated platform.
    LoadedModule(unsigned char channels, const char* mmuAddress);
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;

    /// Destroys the module if that has not been done, waits for the driver to come out of it, and unloads the library.
    ~LoadedModule();

    void initialize();

    /// Destroys the module and leaves the library loaded.
    void destroy() { m_adapter.reset(); }

    IVornipcAdapter& operator*() const { return *m_adapter; }
    IVornipcAdapter* operator->() const { return m_adapter.get(); }

    /// Whether this process has the library mapped.
    static bool libraryIsLoaded();

private:
    struct Unload {
        void operator()(void* handle) const;
    };

    std::unique_ptr<void, Unload> m_library;
    std::unique_ptr<IVornipcAdapter> m_adapter;
};
