#include "NodeLink.h"

#include <fmt/format.h>

#include <csignal>
#include <utility>

#include "BigEndianWord.h"
#include "Failure.h"

namespace nodectl {

namespace {

constexpr std::chrono::seconds connectTimeOut{3};

/// Longest frame of the link behind its length word; the device word is the shortest.
constexpr std::uint32_t longestFrame = 65536;

} // namespace

NodeLink::NodeLink(const UnitAddress& unit) : m_unit(unit)
{
    const auto noConnection = [&](const std::string& reason) {
        fail(fmt::format("no connection to {}: {}; is a radiounit running there? --unit HOST:PORT names another one",
                         toString(m_unit), reason));
    };

    asio::error_code error;
    const auto endpoints = asio::ip::tcp::resolver(m_io).resolve(unit.host, unit.port, error);
    if (error) {
        noConnection(error.message());
    }
    std::optional<asio::error_code> connected;
    asio::async_connect(m_socket, endpoints,
                        [&connected](const asio::error_code& result, const auto&) { connected = result; });
    if (!runUntil(Clock::now() + connectTimeOut, [&] { return connected.has_value(); })) {
        m_socket.close(error);
        m_io.run(); // lets the handler go, which refers to this call's variables
        noConnection(fmt::format("no answer within {} seconds", connectTimeOut.count()));
    }
    if (*connected) {
        noConnection(connected->message());
    }
    m_socket.set_option(asio::ip::tcp::no_delay(true), error);
}

void NodeLink::send(std::uint32_t device, std::string_view buffer, Clock::time_point deadline)
{
    const std::string frame =
        wordBytes(static_cast<std::uint32_t>(wordSize + buffer.size())).append(wordBytes(device)).append(buffer);
    std::optional<asio::error_code> sent;
    asio::async_write(m_socket, asio::buffer(frame),
                      [&sent](const asio::error_code& result, std::size_t) { sent = result; });
    if (!runUntil(deadline, [&] { return sent.has_value(); })) {
        asio::error_code ignored;
        m_socket.close(ignored);
        runUntil(Clock::time_point::max(), [&] { return sent.has_value(); });
        throw Failure(ExitCode::refused, fmt::format("the unit at {} does not take the message in", toString(m_unit)));
    }
    if (*sent) {
        fail(fmt::format("the connection to {} is gone: {}", toString(m_unit), sent->message()));
    }
}

std::optional<NodeLink::Frame> NodeLink::receive(Clock::time_point deadline)
{
    if (!m_reading && !m_frame) {
        startReading();
    }
    runUntil(deadline, [this] { return m_stopped || !m_reading; });
    if (m_stopped || m_reading) {
        return std::nullopt;
    }
    if (!m_badFrame.empty()) {
        fail(m_badFrame);
    }
    if (m_readError == asio::error::eof) {
        fail(fmt::format("the unit at {} closed the connection{}", toString(m_unit),
                         m_bytes.empty() ? "" : " in the middle of a message"));
    }
    if (m_readError) {
        fail(fmt::format("the connection to {} broke: {}", toString(m_unit), m_readError.message()));
    }
    return std::exchange(m_frame, std::nullopt);
}

void NodeLink::catchStopSignals()
{
    m_signals.add(SIGINT);
    m_signals.add(SIGTERM);
    m_signals.async_wait([this](const asio::error_code& error, int) { m_stopped = m_stopped || !error; });
}

void NodeLink::endSending()
{
    asio::error_code ignored;
    m_socket.shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
}

/// Serves the connection until the condition holds; false where the deadline comes first.
template <class Condition>
bool NodeLink::runUntil(Clock::time_point deadline, Condition condition)
{
    m_io.restart();
    while (!condition()) {
        if (m_io.run_one_until(deadline) == 0) {
            return condition();
        }
    }
    return true;
}

void NodeLink::startReading()
{
    m_reading = true;
    m_bytes.clear();
    asio::async_read(m_socket, asio::dynamic_buffer(m_bytes), asio::transfer_exactly(wordSize),
                     [this](const asio::error_code& error, std::size_t) {
                         if (error) {
                             m_readError = error;
                             m_reading = false;
                             return;
                         }
                         readBuffer(firstWord(m_bytes));
                     });
}

void NodeLink::readBuffer(std::uint32_t length)
{
    if (length < wordSize || length > longestFrame) {
        m_badFrame = fmt::format("{} is no radio unit: it announced a frame of {} bytes, {} to {} are possible",
                                 toString(m_unit), length, wordSize, longestFrame);
        m_reading = false;
        return;
    }
    asio::async_read(m_socket, asio::dynamic_buffer(m_bytes), asio::transfer_exactly(length),
                     [this](const asio::error_code& error, std::size_t) {
                         m_reading = false;
                         m_readError = error;
                         if (!error) {
                             const std::string_view frame = std::string_view(m_bytes).substr(wordSize);
                             m_frame = Frame{firstWord(frame), std::string(frame.substr(wordSize))};
                         }
                     });
}

void NodeLink::fail(const std::string& text) const
{
    throw Failure(ExitCode::noConnection, text);
}

} // namespace nodectl
