#pragma once

#include "PlatformApi.h"

// Driver of the PCI link to the node.
extern "C" {

/// Called by the driver for each buffer that the node has sent, one at a time, on the driver's receive context.
/// @param data       valid during the call only; may be null when length is 0
/// @param deviceFlag 0 for the node's equipment software, any other value for the PS device
using ripc_receive_callback = void (*)(void* context, const char* data, unsigned length, unsigned deviceFlag);

/// Takes over the driver's receive path. A later registration replaces the earlier one; there is no way to withdraw it.
PLATFORM_API void ripc_hijack_register_receive_callback(ripc_receive_callback callback, void* context);

/// Writes one buffer to the node. The bytes are copied; callable from any thread.
/// @return the number of bytes written, -1 when nobody is connected
PLATFORM_API int ripc_sendBufferToPci(const char* data, unsigned length);

} // extern "C"
