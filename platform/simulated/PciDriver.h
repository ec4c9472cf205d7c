#pragma once

#include "PlatformApi.h"
#include "ripc.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <shared_mutex>

namespace simulated {

/// Driver of the PCI link as its two sides see it: the module through the functions of ripc.h, the host's link here.
/// All operations may be called from any thread.
class PLATFORM_API PciDriver {
public:
    /// Writes one buffer to every connected node, possibly from several threads at once.
    /// @return the bytes written, -1 when nobody is connected
    using Transmitter = std::function<int(const char* data, unsigned length)>;

    /// Hands one buffer from the node to the registered callback and returns when the callback has: one buffer at a
    /// time, so that a slow module holds back the caller.
    /// @return false, and nothing is called, when nobody has registered or the driver is stopped
    bool deliver(const char* data, unsigned length, unsigned deviceFlag);

    /// Says where outgoing buffers go; an empty one disconnects. Returns when no call of the one before is in flight.
    void setTransmitter(Transmitter transmitter);

    /// From now on no delivery begins. One in flight goes on: it may be waiting for the module's mailbox, which the
    /// module's destruction lets go. Follow that with waitUntilIdle() before the module is unloaded.
    void stop();

    void waitUntilIdle();

    /// Forgets callback and transmitter and lets deliveries begin again. Only while no module is alive.
    void reset();

    // The module's side.
    void registerCallback(ripc_receive_callback callback, void* context);
    int transmit(const char* data, unsigned length);

private:
    std::mutex m_serial; ///< held for a whole delivery: one buffer at a time

    std::mutex m_mutex; ///< guards the following; never held while the callback runs
    std::condition_variable m_idle;
    ripc_receive_callback m_callback = nullptr;
    void* m_context = nullptr;
    bool m_stopped = false;
    bool m_delivering = false;

    std::shared_mutex m_transmitterMutex; ///< shared while transmitting, alone to exchange the transmitter
    Transmitter m_transmitter;
};

} // namespace simulated
