#pragma once

#include <condition_variable>
#include <mutex>
#include <stdexcept>

#include "IVornipcAdapter.h"

namespace radiounit {

/// Where those who want the module find it once it is initialised. From any thread.
class ModuleSlot {
public:
    struct Initialised {
        IVornipcAdapter& module;
        int initResult; ///< what the module-initialisation phase returned
    };

    struct NeverCame : std::runtime_error {
        NeverCame() : std::runtime_error{"the unit stops"} {}
    };

    void put(IVornipcAdapter& module, int initResult);

    /// The module is going, or will never come. Who has it already must let go of it by other means.
    void close();

    /// Whether `await` has nothing to wait for.
    bool settled();

    /// Waits while the unit still starts.
    /// @throws NeverCame after `close`
    Initialised await();

private:
    std::mutex m_mutex; ///< guards all
    std::condition_variable m_changed;
    IVornipcAdapter* m_module = nullptr;
    int m_initResult = 0;
    bool m_closed = false;
};

} // namespace radiounit
