#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "IVornipcAdapter.h"
#include "IVornipcRxCallback.h"
#include "IVornipcSender.h"
#include "Trace.h"
#include "gcl/Mailbox.h"

namespace kro::device::vornipc {

/// What has become of the reader thread, for whoever watches the link.
struct ReaderState {
    VornipcLinkFacts::Reader reader = VornipcLinkFacts::Reader::none;
    std::string reason;                                   ///< why it has ended
    std::optional<VornipcLinkFacts::Message> lastMessage; ///< the message that ended it
};

/// The radio's end of the PCI link. The driver's receive context puts each buffer into a mailbox of one slot; the reader
/// thread takes it out and hands it to the receive callback. Buffers to the node are written by whoever sends.
///
/// Threads: `receive` runs in the driver's receive context, `readThread` and `fetchMail` on the reader thread, `send`
/// and `readerState` on any thread, the rest on the framework's.
class VornipcMessageClient : public IVornipcSender {
public:
    /// Connection type; not interpreted on the target.
    enum class Type : int {};

    /// One buffer as it was received.
    struct VornipcMessage {
        std::vector<char> bytes;
        VornipcDeviceId device = VornipcDeviceId::ads;
    };

    /// Registers with the driver; buffers wait in the mailbox until the reader thread runs.
    /// @param callback borrowed; without one the reader takes buffers and drops them
    explicit VornipcMessageClient(IVornipcRxCallback* callback);
    ~VornipcMessageClient() override;

    int send(const char* data, unsigned length) override;
    virtual void readThread();

    /// Starts the reader thread, once.
    void startReadThread();

    /// Ends receiving for good: wakes the reader and waits until it has finished the message in hand, then waits for a
    /// call of the driver in flight; later ones are dropped. Not to be called on the reader thread.
    void stop();

    /// A buffer from the driver. Waits up to 5 seconds for the slot, then drops the buffer.
    /// @param deviceFlag non-zero: from the PS device
    void receive(const char* data, unsigned length, unsigned deviceFlag);

    /// One round of the reader: waits up to 30 seconds for a buffer and hands it on.
    void fetchMail();

    /// The PCI driver needs no connection.
    int connect2Vornipc(const char* address, int port, Type type);
    void readThreadEntry() {}

    /// Reads exactly `length` bytes from the socket descriptor. Not used on the PCI path.
    bool readSocket(char* buffer, unsigned length) const;

    /// Log the first 1666 bytes of a buffer in hexadecimal, at level 6 and at level 1.
    static void hexdump(const char* data, unsigned length);
    static void hexdump2error(const char* data, unsigned length);

    ReaderState readerState() const;

protected:
    int m_socket = -1;

private:
    friend void receive_vornipc_callback_func(void*, const char*, unsigned, unsigned);

    void readerEnded(const std::string& reason, const CallSite& site = CallSite::here());
    static void traceDropped(unsigned length, const CallSite& site = CallSite::here());
    static void logHexdump(TraceLevel level, const char* data, unsigned length, const CallSite& site);

    static const Trace m_trace;

    IVornipcRxCallback* m_callback;
    vrel::kro::framework::gcl::Mailbox<VornipcMessage> m_mailbox;
    std::thread m_reader;

    mutable std::mutex m_stateMutex; ///< guards the state below; nothing is called under it
    ReaderState m_state;
};

/// The function that the driver calls, with the client as its context.
void receive_vornipc_callback_func(void* context, const char* data, unsigned length, unsigned deviceFlag);

} // namespace kro::device::vornipc
