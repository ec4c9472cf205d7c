#pragma once

#include <asio.hpp>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "UnitAddress.h"

namespace nodectl {

/// The node's end of the link to one unit. Everything runs on the calling thread; a wait has a deadline. A connection
/// that cannot be made, breaks or carries what is no frame throws Failure (no connection).
class NodeLink {
public:
    using Clock = std::chrono::steady_clock;

    struct Frame {
        std::uint32_t device;
        std::string buffer; ///< what follows the device word
    };

    explicit NodeLink(const UnitAddress& unit);

    /// Hands one buffer to the connection. Throws Failure (refused) where the unit takes nothing in before the deadline.
    void send(std::uint32_t device, std::string_view buffer, Clock::time_point deadline);

    /// The next frame of the unit; empty where none has come before the deadline, or a stop signal has.
    std::optional<Frame> receive(Clock::time_point deadline);

    /// From now on SIGINT and SIGTERM end a wait in `receive` instead of the program.
    void catchStopSignals();
    bool stopped() const { return m_stopped; }

    /// Says that nothing more is sent. The unit closes its side when it has taken in what was.
    void endSending();

    /// Whether the unit has closed its side in good order.
    bool closedByUnit() const { return m_readError == asio::error::eof; }

private:
    template <class Condition>
    bool runUntil(Clock::time_point deadline, Condition condition);
    void startReading();
    void readBuffer(std::uint32_t length);
    [[noreturn]] void fail(const std::string& text) const;

    UnitAddress m_unit;
    asio::io_context m_io{1};
    asio::ip::tcp::socket m_socket{m_io};
    asio::signal_set m_signals{m_io};

    bool m_reading = false;
    std::string m_bytes; ///< of the frame that is being read; its length word first, then what follows
    std::optional<Frame> m_frame;
    std::string m_badFrame; ///< why what arrived is no frame
    asio::error_code m_readError;
    bool m_stopped = false;
};

} // namespace nodectl
