#pragma once

#include <asio/executor_work_guard.hpp>
#include <asio/io_context.hpp>
#include <future>
#include <memory>
#include <optional>

#include "CommandLine.h"
#include "LinkServer.h"
#include "ModuleLibrary.h"
#include "ModuleSlot.h"
#include "ReadyFile.h"
#include "SimulatedPlatform.h"
#include "StopRequest.h"

#if VORNIPC_WITH_CONTROL
#include "ControlInterface.h"
#endif

namespace radiounit {

/// The application framework's stand-in: brings platform, module, link and control interface up, and takes them down in
/// an order in which nobody calls what has gone. One life a process, on the main thread.
class RadioUnit {
public:
    /// Takes the addresses, the state and the module's library; nothing runs yet.
    /// @throws UsageError or Failure
    RadioUnit(const Options& options, StopRequest& stop);

    /// Runs until the stop is requested, which may be at any moment.
    void run();

private:
    void openAddresses();
    void start();
    void runIo();
    void bringRadiosUp();
    void writeReadyFile() const;
    void shutDown();

    const Options m_options;
    StopRequest& m_stop;
    simulated::Platform& m_platform;
    std::optional<ReadyFile> m_readyFile;

    asio::io_context m_io;
    std::optional<LinkServer> m_link;
    ModuleSlot m_moduleSlot;
#if VORNIPC_WITH_CONTROL
    std::optional<ControlInterface> m_control;
#endif
    std::optional<ModuleLibrary> m_library;
    std::unique_ptr<IVornipcAdapter> m_module;
    std::optional<asio::executor_work_guard<asio::io_context::executor_type>> m_keepIo;
    std::future<void> m_ioThread;
};

} // namespace radiounit
