#pragma once

#include "VornipcDeviceId.h"

namespace kro::device::vornipc {

/// Who takes the buffers that arrive from the node.
class IVornipcRxCallback {
public:
    IVornipcRxCallback() = default;
    IVornipcRxCallback(const IVornipcRxCallback&) = delete;
    IVornipcRxCallback& operator=(const IVornipcRxCallback&) = delete;
    virtual ~IVornipcRxCallback() = default;

    /// Called on the reader thread, one buffer at a time. The data are valid during the call only. An exception ends the
    /// reader thread.
    virtual void onMessageReceived(const char* data, unsigned length, VornipcDeviceId device) = 0;
};

} // namespace kro::device::vornipc
