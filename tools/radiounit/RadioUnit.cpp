#include "RadioUnit.h"

#include <asio/post.hpp>
#include <fmt/format.h>
#include <fstream>
#include <pthread.h>

#include "Errors.h"
#include "JsonInput.h"
#include "ModuleInterface.h"

namespace radiounit {
namespace {

/// How long nodes may take to read what waits for them when the unit stops. Our own choice.
constexpr std::chrono::milliseconds leaveTaking{200};

void applyState(simulated::Platform& platform, const std::filesystem::path& file)
{
    try {
        std::ifstream in{file};
        if (!in) {
            throw UsageError{"cannot be opened; name a file that holds a JSON object"};
        }
        platform.patchState(parseJsonObject({std::istreambuf_iterator<char>{in}, {}}));
    } catch (const std::exception& error) {
        throw UsageError{fmt::format("--state {}: {}", file.string(), error.what())};
    }
}

} // namespace

RadioUnit::RadioUnit(const Options& options, StopRequest& stop)
    : m_options{options}, m_stop{stop}, m_platform{simulated::Platform::instance()}
{
    simulated::nameThisThread("main");
    m_platform.configure(m_options.channels);
    m_platform.setTraceLevel("*", m_options.traceLevel);
    if (m_options.state) {
        applyState(m_platform, *m_options.state);
    }
    if (m_options.readyFile) {
        m_readyFile.emplace(*m_options.readyFile);
    }
    openAddresses();
    m_library.emplace(m_options.module);
}

void RadioUnit::openAddresses()
{
    if (m_options.link) {
        auto& driver = m_platform.driver();
        m_link.emplace(listenOn(m_io, "--link", m_options.link->endpoint),
                       [&driver](const char* data, unsigned length, unsigned deviceFlag) {
                           driver.deliver(data, length, deviceFlag);
                       });
    }
#if VORNIPC_WITH_CONTROL
    if (m_options.control) {
        m_control.emplace(listenOn(m_io, "--control", m_options.control->endpoint),
                          ControlInterface::Unit{m_platform, m_moduleSlot,
                                                 [this] { return m_link ? m_link->nodes() : 0; },
                                                 [this] { m_stop.request(); }});
    }
#endif
}

void RadioUnit::run()
{
    try {
        start();
        m_stop.wait();
    } catch (...) {
        const bool stopped = m_stop.requested(); // then it is no wonder that the start could not go on
        shutDown();
        if (!stopped) {
            throw;
        }
        return;
    }
    shutDown();
}

void RadioUnit::start()
{
    if (m_link) {
        m_platform.driver().setTransmitter(
            [this](const char* data, unsigned length) { return m_link->send(data, length); });
        m_link->accept();
    }
#if VORNIPC_WITH_CONTROL
    if (m_control) {
        m_control->accept();
    }
#endif
    m_keepIo.emplace(m_io.get_executor());
    m_ioThread = std::async(std::launch::async, [this] {
        pthread_setname_np(pthread_self(), "radiounit-io");
        runIo();
    });

    m_platform.start();
    m_stop.onRequest([this] { m_platform.stop(); }); // a stop does not wait for the platform's delays
    if (m_stop.requested()) {
        return;
    }
    m_module = m_library->create(m_options.moduleChannels, m_platform.disableModulation(),
                                 m_options.link ? m_options.link->host : "");
    if (m_stop.requested()) {
        return;
    }
    m_moduleSlot.put(*m_module, m_module->module().onModuleInit());
    if (m_link) {
        m_link->startDelivering();
    }
    bringRadiosUp();
    if (!m_stop.requested()) {
        writeReadyFile();
    }
}

void RadioUnit::runIo()
{
    for (;;) {
        try {
            m_io.run();
            return;
        } catch (const std::exception& error) { // out of memory or threads: the one connection is lost
            report(fmt::format("a connection could not be served: {}", error.what()));
        }
    }
}

void RadioUnit::bringRadiosUp()
{
    const auto channels = m_platform.state().at("channels");
    for (std::int32_t ct = 1; ct <= static_cast<std::int32_t>(m_options.channels); ++ct) {
        if (channels.at(std::to_string(ct)).at("radio").at("up") == true) {
            m_platform.runOnPlatformThread([this, ct] { m_platform.radioUp(ct); }).get();
        }
    }
}

void RadioUnit::writeReadyFile() const
{
    if (!m_readyFile) {
        return;
    }
    std::optional<std::string> link;
    std::optional<std::string> control;
    if (m_link) {
        link = toText(m_link->endpoint());
    }
#if VORNIPC_WITH_CONTROL
    if (m_control) {
        control = toText(m_control->endpoint());
    }
#endif
    m_readyFile->write(link, control);
}

void RadioUnit::shutDown()
{
    if (m_link) {
        m_link->stopDelivering();
    }
    m_platform.stop(); // ends the driver's calls, events and delays
    m_moduleSlot.close();
#if VORNIPC_WITH_CONTROL
    if (m_control) {
        m_control->stop();
    }
#endif
    m_stop.onRequest(nullptr);

    m_module.reset(); // lets go a delivery that waits for the module
    if (m_link) {
        m_link->joinDriver();
    }
    m_platform.driver().waitUntilIdle();
    m_platform.driver().setTransmitter(nullptr);
    m_library.reset();

    if (m_link) {
        asio::post(m_io, [this] { m_link->close(); });
    }
#if VORNIPC_WITH_CONTROL
    if (m_control) {
        asio::post(m_io, [this] { m_control->close(); });
    }
#endif
    m_keepIo.reset();
    if (m_ioThread.valid() && m_ioThread.wait_for(leaveTaking) != std::future_status::ready) {
        m_io.stop();
    }
}

} // namespace radiounit
