#pragma once

#include <functional>

#include "HttpServer.h"
#include "ModuleSlot.h"
#include "SimulatedPlatform.h"

namespace radiounit {

/// The unit's control interface: what each path answers.
class ControlInterface {
public:
    /// What it knows of the unit; all of it outlives the interface.
    struct Unit {
        simulated::Platform& platform;
        ModuleSlot& module;
        std::function<std::size_t()> nodes; ///< connected to the link
        std::function<void()> requestStop;
    };

    ControlInterface(asio::ip::tcp::acceptor acceptor, Unit unit);

    asio::ip::tcp::endpoint endpoint() const { return m_server.endpoint(); }
    void accept() { m_server.accept(); }
    void stop() { m_server.stop(); }
    void close() { m_server.close(); }

private:
    std::vector<HttpRoute> routes();
    simulated::Json module();
    simulated::Json patchState(const HttpCall& call);
    simulated::Json raise(const HttpCall& call);
    simulated::Json setTraceLevel(const HttpCall& call);
    simulated::Json shutDown(HttpCall& call) const;
    ModuleSlot::Initialised awaitModule();

    Unit m_unit;
    HttpServer m_server;
};

} // namespace radiounit
