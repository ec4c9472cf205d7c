#include "PciDriver.h"

#include "Core.h"

#include <utility>

namespace simulated {

bool PciDriver::deliver(const char* data, unsigned length, unsigned deviceFlag)
{
    const std::lock_guard oneAtATime{m_serial};
    ripc_receive_callback callback = nullptr;
    void* context = nullptr;
    {
        const std::lock_guard lock{m_mutex};
        if (m_stopped || m_callback == nullptr) {
            return false;
        }
        callback = m_callback;
        context = m_context;
        m_delivering = true;
    }
    callback(context, data, length, deviceFlag);
    const std::lock_guard lock{m_mutex};
    m_delivering = false;
    m_idle.notify_all();
    return true;
}

void PciDriver::setTransmitter(Transmitter transmitter)
{
    const std::unique_lock alone{m_transmitterMutex};
    m_transmitter = std::move(transmitter);
}

void PciDriver::stop()
{
    const std::lock_guard lock{m_mutex};
    m_stopped = true;
}

void PciDriver::waitUntilIdle()
{
    std::unique_lock lock{m_mutex};
    m_idle.wait(lock, [this] { return !m_delivering; });
}

void PciDriver::reset()
{
    setTransmitter({});
    const std::lock_guard lock{m_mutex};
    m_callback = nullptr;
    m_context = nullptr;
    m_stopped = false;
}

void PciDriver::registerCallback(ripc_receive_callback callback, void* context)
{
    const std::lock_guard lock{m_mutex};
    m_callback = callback;
    m_context = context;
}

int PciDriver::transmit(const char* data, unsigned length)
{
    const std::shared_lock together{m_transmitterMutex};
    return m_transmitter ? m_transmitter(data, length) : -1;
}

} // namespace simulated

extern "C" void ripc_hijack_register_receive_callback(ripc_receive_callback callback, void* context)
{
    simulated::Core& core = simulated::core();
    core.operations("ripc").run("hijack_register_receive_callback", {},
                                [&] { core.driver.registerCallback(callback, context); });
}

extern "C" int ripc_sendBufferToPci(const char* data, unsigned length)
{
    simulated::Core& core = simulated::core();
    return core.operations("ripc").run("sendBufferToPci", {{"length", length}},
                                       [&] { return core.driver.transmit(data, length); });
}
