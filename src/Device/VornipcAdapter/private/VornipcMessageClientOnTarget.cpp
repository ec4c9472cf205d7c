#include "VornipcMessageClientOnTarget.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <exception>
#include <shared_mutex>

#include "PsSignalHeader.h"
#include "archives/BigEndianInputArchives.h"
#include "ripc.h"
#include "thread_utilities.h"

namespace kro::device::vornipc {

namespace {

using namespace std::chrono_literals;

/// How long a buffer waits for the mailbox slot, and the reader for a buffer.
constexpr auto putTimeout = 5000ms;
constexpr auto fetchTimeout = 30000ms;

/// The reader serves the node ahead of ordinary threads.
constexpr const char* readerThreadName = "dm-vornipc-t-rx";
constexpr int roundRobinScheduling = 2;
constexpr int readerThreadPriority = 30;

/// Size of a hex dump's text; every byte takes six characters of it.
constexpr std::size_t hexdumpTextSize = 10000;
constexpr unsigned hexdumpMaximum = 1666;

/// Stops the readers of this module, once and for all: it is never cleared.
std::mutex stopMutex;
bool stopFlag = false; // guarded by stopMutex

/// The client that the driver's calls may reach. The driver cannot be told to call no more, so its calls have to find
/// out by themselves. Held shared during a call of the driver, so that nobody takes the client away meanwhile.
std::shared_mutex currentClientMutex;
VornipcMessageClient* currentClient = nullptr; // guarded by currentClientMutex

/// Message id of a buffer, the group id where it comes from the PS device; nothing where it is too short to tell.
std::optional<std::uint32_t> dispatchIdOf(const std::vector<char>& bytes, VornipcDeviceId device)
{
    cereal::FixedSizeBigEndianInputArchive archive(bytes.data(), bytes.size());
    try {
        if (device == VornipcDeviceId::ps) {
            PsSignalHeader header;
            archive(header);
            return header.groupId;
        }
        std::uint32_t messageId = 0;
        archive(messageId);
        return messageId;
    } catch (const cereal::Exception&) {
        return std::nullopt;
    }
}

} // namespace

const Trace VornipcMessageClient::m_trace{"KRO.VORNIPC.VornipcMessageClientOnTarget"};

VornipcMessageClient::VornipcMessageClient(IVornipcRxCallback* callback) : m_callback(callback)
{
    if (m_callback == nullptr) {
        m_trace.at(TraceLevel::Error) << "VORNIPC client initialized with invalid (null) message handler.";
    }
    {
        const std::unique_lock lock(currentClientMutex);
        currentClient = this;
    }
    ripc_hijack_register_receive_callback(&receive_vornipc_callback_func, this);
}

VornipcMessageClient::~VornipcMessageClient()
{
    stop();
}

void VornipcMessageClient::stop()
{
    {
        const std::scoped_lock lock(stopMutex);
        stopFlag = true;
    }
    if (m_reader.joinable()) {
        m_trace.at(TraceLevel::Event, {__FILE__, __LINE__, "~VornipcMessageClient"})
            << "Shutting down VORNIPC thread (T)";
    }
    m_mailbox.close(); // wakes the reader, and lets a waiting call of the driver go
    {
        const std::unique_lock lock(currentClientMutex);
        if (currentClient == this) {
            currentClient = nullptr;
        }
    }
    if (m_reader.joinable()) {
        m_reader.join();
    }
}

void VornipcMessageClient::startReadThread()
{
    if (m_reader.joinable()) {
        return;
    }
    try {
        {
            const std::scoped_lock lock(m_stateMutex);
            m_state.reader = VornipcLinkFacts::Reader::running;
        }
        m_reader = std::thread(&VornipcMessageClient::readThread, this);
        os_extension::thread_utilities::setScheduling(m_reader, roundRobinScheduling, readerThreadPriority);
        os_extension::thread_utilities::setName(m_reader, readerThreadName);
        m_trace.at(TraceLevel::Event) << "Created VORNIPC thread " << readerThreadName << " (T)";
    } catch (const std::exception& exception) {
        m_trace.at(TraceLevel::Error) << "Exception: " << exception.what() << ", in: "
                                      << "startReadThread"
                                      << "()";
        if (!m_reader.joinable()) {
            readerEnded(exception.what());
        }
    }
}

int VornipcMessageClient::send(const char* data, unsigned length)
{
    return ripc_sendBufferToPci(data, length);
}

void receive_vornipc_callback_func(void* context, const char* data, unsigned length, unsigned deviceFlag)
{
    const Trace& trace = VornipcMessageClient::m_trace;
    if (context == nullptr) {
        trace.at(TraceLevel::Error) << "thisPointer is NULL. Ended in bad state.";
        return;
    }
    const std::shared_lock lock(currentClientMutex);
    if (context != currentClient) {
        VornipcMessageClient::traceDropped(length);
        return;
    }
    try {
        currentClient->receive(data, length, deviceFlag);
    } catch (const std::exception& exception) { // nothing is reported to the driver
        trace.at(TraceLevel::Error) << "receive_vornipc_callback_func(): dropped a buffer of " << length
                                    << " bytes: " << exception.what();
    }
}

void VornipcMessageClient::receive(const char* data, unsigned length, unsigned deviceFlag)
{
    VornipcMessage message;
    if (length > 0) {
        message.bytes.assign(data, data + length);
    }
    message.device = deviceFlag != 0 ? VornipcDeviceId::ps : VornipcDeviceId::ads;

    if (m_mailbox.putMail(message, putTimeout)) {
        m_trace.at(TraceLevel::Dump) << "receive"
                                     << "message put into mail box";
    } else if (m_mailbox.closed()) {
        traceDropped(length);
    } else {
        m_trace.at(TraceLevel::Error) << "Timeout, Failed to put vornipc message in mailbox, mailbox not free";
    }
}

void VornipcMessageClient::traceDropped(unsigned length, const CallSite& site)
{
    m_trace.at(TraceLevel::Error, site) << site.method << "(): the link is stopped, dropped a buffer of " << length
                                        << " bytes";
}

void VornipcMessageClient::readThread()
{
    try {
        std::unique_lock lock(stopMutex);
        while (!stopFlag) {
            lock.unlock();
            fetchMail();
            lock.lock();
        }
        m_trace.at(TraceLevel::Event) << "Shutting down VORNIPC thread";
        lock.unlock();
        readerEnded("the module has been stopped");
    } catch (const std::exception& exception) {
        m_trace.at(TraceLevel::Error) << "Exception: " << exception.what() << ", in: "
                                      << "readThread"
                                      << "()";
        readerEnded(exception.what());
    } catch (...) {
        m_trace.at(TraceLevel::Error) << "Exception in: "
                                      << "readThread"
                                      << "()";
        readerEnded("an exception without a text");
    }
}

void VornipcMessageClient::fetchMail()
{
    VornipcMessage message;
    if (!m_mailbox.getMail(message, fetchTimeout)) {
        if (!m_mailbox.closed()) {
            m_trace.at(TraceLevel::Call) << "fetchMail"
                                         << "(): Timeout, no VornipcMessage received";
        }
        return;
    }
    m_trace.at(TraceLevel::Dump) << "fetchMail"
                                 << "(): message fetched from mailbox:" << static_cast<std::uint32_t>(message.device);
    if (m_callback == nullptr) {
        return;
    }
    const auto length = static_cast<unsigned>(message.bytes.size());
    try {
        m_callback->onMessageReceived(message.bytes.data(), length, message.device);
    } catch (...) {
        const std::scoped_lock lock(m_stateMutex);
        m_state.lastMessage = {dispatchIdOf(message.bytes, message.device), static_cast<std::uint32_t>(message.device),
                               length};
        throw;
    }
}

void VornipcMessageClient::readerEnded(const std::string& reason, const CallSite& site)
{
    if (const auto last = readerState().lastMessage) {
        TraceLine line = m_trace.at(TraceLevel::Error, site);
        line << site.method << "(): the reader has ended, no message is served any more. Last message: id ";
        if (last->id) {
            line << "0x" << hex(*last->id);
        } else {
            line << "unreadable";
        }
        line << ", device " << last->device << ", length " << last->length;
    }
    const std::scoped_lock lock(m_stateMutex); // only now: who sees that the reader has ended finds it in the trace
    m_state.reader = VornipcLinkFacts::Reader::ended;
    m_state.reason = reason;
}

ReaderState VornipcMessageClient::readerState() const
{
    const std::scoped_lock lock(m_stateMutex);
    return m_state;
}

int VornipcMessageClient::connect2Vornipc(const char* /*address*/, int /*port*/, Type /*type*/)
{
    return 0;
}

bool VornipcMessageClient::readSocket(char* buffer, unsigned length) const
{
    unsigned received = 0;
    while (received < length) {
        const ssize_t count = ::read(m_socket, buffer + received, length - received);
        if (count > 0) {
            received += static_cast<unsigned>(count);
        } else if (count == 0) {
            m_trace.at(TraceLevel::Error) << "VORNIPC socket read() returned 0, socket is likely closed";
            return false;
        } else if (const int error = errno; error != EINTR) {
            m_trace.at(TraceLevel::Error) << "VORNIPC socket read() returned -1, " << std::strerror(error);
            return false;
        }
    }
    return true;
}

void VornipcMessageClient::hexdump(const char* data, unsigned length)
{
    logHexdump(TraceLevel::Dump, data, length, CallSite::here());
}

void VornipcMessageClient::hexdump2error(const char* data, unsigned length)
{
    logHexdump(TraceLevel::Error, data, length, CallSite::here());
}

void VornipcMessageClient::logHexdump(TraceLevel level, const char* data, unsigned length, const CallSite& site)
{
    if (!m_trace.enabled(level)) {
        return;
    }
    std::array<char, hexdumpTextSize> text{};
    char* next = text.data();
    for (const char* byte = data; byte != data + std::min(length, hexdumpMaximum); ++byte) {
        next += std::snprintf(next, static_cast<std::size_t>(text.data() + text.size() - next), "0x%02x, ",
                              static_cast<unsigned>(static_cast<unsigned char>(*byte)));
    }
    m_trace.at(level, site) << "Hexdump " << length << " bytes " << text.data();
}

} // namespace kro::device::vornipc
