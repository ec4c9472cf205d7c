#pragma once

namespace kro::device::vornipc {

/// Where complete outgoing buffers, envelope included, leave the module.
class IVornipcSender {
public:
    IVornipcSender() = default;
    IVornipcSender(const IVornipcSender&) = delete;
    IVornipcSender& operator=(const IVornipcSender&) = delete;
    virtual ~IVornipcSender() = default;

    /// May be called from any thread. The data are used during the call only.
    /// @return what the way to the node says of it: bytes written, or below 0 for none
    virtual int send(const char* data, unsigned length) = 0;
};

} // namespace kro::device::vornipc
