#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "EChannelSelector.h"
#include "RadioChannel.h"
#include "SRadioFrameItem.h"

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

/// Frame of the node's test command protocol; the module hands it on as it stands.
struct VornipcTestCommandFrame {
    std::int32_t length = 0; ///< valid bytes of the data, by the sender's word
    std::int32_t slot = 0;
    std::uint32_t source = 0;
    std::int32_t dest = 0;
    std::int32_t tmt = 0;
    std::uint32_t operation = 0;
    std::uint32_t direction = 0;
    std::int32_t jobId = 0;
    std::array<std::uint8_t, 556> data{};
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

    // What other components of the radio software want the node to know. A channel other than 1 and 2 is refused with a
    // log line; otherwise the message leaves while the gate is open. The enumerations are the node's.

    virtual void notifyProtectionModeOperStatus(EChannelSelector channel, std::uint32_t protectionMode) = 0;
    virtual void notifyActiveRadioSw(EChannelSelector channel, std::uint32_t activeRadio) = 0;
    virtual void notifyWorkingRxSw(EChannelSelector channel, std::uint32_t workingRx) = 0;

    /// Relays hop data. Refused, with a log line, where the length is not 0 to 256 or the data are missing.
    /// @param length bytes
    /// @param data   may be null where the length is 0
    virtual void notifyHopRx(EChannelSelector channel, int length, const std::uint8_t* data) = 0;

    /// The same for HCC data, of which 1440 bytes fit.
    /// @param wanOffset  radio link WAN offset, handed on
    /// @param hccHandler endpoint that the data belong to, handed on
    virtual void notifyHccRx(EChannelSelector channel, int wanOffset, std::uint32_t hccHandler, int length,
                             const std::uint8_t* data) = 0;

    virtual void notifyTestCommandTx(EChannelSelector channel, const VornipcTestCommandFrame& frame) = 0;

    /// Whether faults tell the node when they were sent; on at first.
    virtual void enableTimeStamp(bool on) = 0;

    /// Sets the frame format of a channel, which is one half of its configuration; the node's frequencies are the other.
    /// @param radioChannelIndex 0 or 1, the channel number less one
    /// @param minAcm, maxAcm    the node's numbers of modulations, 1 to 30
    /// @param sec               the node's number of a spectrum efficiency class
    /// @return false where there is no such channel, or the radio refuses the configuration
    virtual bool setFrameFormat(int radioChannelIndex, int radioFrameId, std::int32_t minAcm, std::int32_t maxAcm,
                                std::int32_t sec) = 0;

    /// Reads the capacities of a frame format's modes.
    /// @param frameId    0 reads nothing
    /// @param capacities 30 entries, one for each of the node's numbers of modulations from 1 on; entries that no mode
    ///                   has stay as they are
    /// @param filter     told a frame format and the position of a mode in it; modes that it refuses are left out. Must
    ///                   not be empty
    virtual void getAcmCapacities(int frameId, int* capacities,
                                  const std::function<bool(const SRadioFrameItem&, unsigned)>& filter) = 0;

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
