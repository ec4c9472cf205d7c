#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "RadioChannel.h"

class ITiDisableModulation;
class ModuleInterface;

/// What the module knows of its link to the node, for whoever watches the unit.
struct VornipcLinkFacts {
    /// The message that ended the reader. Where it was too short to tell, `id` is empty.
    struct Message {
        std::optional<std::uint32_t> id; ///< message id; the group id of a message to the PS device
        std::uint32_t device = 0;
        std::uint32_t length = 0; ///< bytes of the buffer as the driver delivered it
    };

    enum class Reader { none, running, ended };

    bool outgoingIpcMessagesAllowed = false;
    bool vornipcWhiteListActive = false;
    std::uint8_t slotNumber = 0;
    std::uint32_t senderId = 0;
    std::uint8_t channels = 0; ///< channel count given to the module

    Reader reader = Reader::none;       ///< none: the module was created without an MMU address
    std::string reason;                 ///< why the reader has ended
    std::optional<Message> lastMessage; ///< set when a message ended it
};

/// The module as its host sees it: the framework's module object, and the operations that other components of the radio
/// software may call. All operations may be called from any thread between the end of module initialisation and the
/// start of destruction. Deleting the object destroys the module: dispatching ends, then its parts go.
class IVornipcAdapter {
public:
    IVornipcAdapter() = default;
    IVornipcAdapter(const IVornipcAdapter&) = delete;
    IVornipcAdapter& operator=(const IVornipcAdapter&) = delete;
    virtual ~IVornipcAdapter() = default;

    /// The module object for the framework's phases. Owned by this object.
    virtual ModuleInterface& module() = 0;

    virtual VornipcLinkFacts linkFacts() const = 0;

    /// Puts a line into the system log of the node's processor board; at most 159 bytes with its prefix arrive. The node
    /// sees it only while the gate on outgoing messages is open.
    virtual void sendToNpuSyslog(const std::string& text) = 0;

    /// The same, told to concern radio channel `ct`.
    virtual void sendToNpuSyslog(const std::string& text, RadioChannel ct) = 0;

    /// Opens or closes the gate on outgoing messages, as the node does with the state of the modem unit.
    virtual void setOutgoingIpcMessagesAllowed(bool allowed) = 0;

    /// Makes the next self test exchange capability codes again.
    virtual void resetSelfTestCheckPerformed() = 0;

    /// Makes the next spontaneous message carry the number 0x80000000.
    virtual void resetSpontaneousMessageSequenceNumber() = 0;
};

/// Name of the one symbol that the module library exports.
inline constexpr const char* vornipcAdapterFactoryName = "createVornipcAdapter";

/// Creates the module. Called on the framework's thread; the module may receive messages from then on.
/// @param numberOfChannels radio channels of the unit; 1 and 2 are served
/// @param disableModulation borrowed, must outlive the module
/// @param mmuAddress address of the modem unit; empty: no link to the node
/// @return owned by the caller; null where the module could not be created, the trace says why then
extern "C" IVornipcAdapter* createVornipcAdapter(unsigned char numberOfChannels,
                                                 ITiDisableModulation& disableModulation, const char* mmuAddress);

using VornipcAdapterFactory = IVornipcAdapter* (*)(unsigned char, ITiDisableModulation&, const char*);
