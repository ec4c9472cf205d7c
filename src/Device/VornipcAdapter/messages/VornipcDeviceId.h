#pragma once

#include <cstdint>

/// The device of the node that a buffer comes from or goes to; one word on the wire. Fixed by the node protocol.
enum class VornipcDeviceId : std::uint32_t {
    ads = 0,          ///< the node's equipment software: ordinary messages
    ps = 1,           ///< the PS device
    adsAlternate = 10 ///< accepted on input and treated like `ads`
};
