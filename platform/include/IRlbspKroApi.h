#pragma once

#include "IInterface.h"
#include "PlatformApi.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/// Channel for BPM commands between the radio link and the node; registered as "IRlbspKroApi".
class PLATFORM_API IRlbspKroApi : public IInterface {
public:
    static std::string interfaceName() { return "IRlbspKroApi"; }

    /// Takes the commands that are meant for the node. Called on a platform thread.
    class PLATFORM_API BpmCallback {
    public:
        virtual ~BpmCallback() = default;

        /// @return 0 when the command is on its way, 1 when it is refused
        virtual int rawMsgCallback(const std::vector<unsigned char>& command) = 0;

    protected:
        BpmCallback() = default;
        BpmCallback(const BpmCallback&) = default;
        BpmCallback& operator=(const BpmCallback&) = default;
    };

    /// @param callback called from now on for every command; null withdraws the one before and returns when no call of it
    ///                 is in flight
    virtual void registerBpmCallback(BpmCallback* callback) = 0;

    /// Starts the exchange of commands; called when the node has said that it takes them.
    virtual void initialize() = 0;

    /// Delivers the node's answer to a command; the bytes are copied.
    virtual void sendBpmResponse(std::span<const std::uint8_t> response) = 0;
};
