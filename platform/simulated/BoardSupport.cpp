#include "Core.h"

#include "Bsp.h"
#include "TrfMlm.h"

using simulated::Json;

extern "C" void Bsp_setSlotId(unsigned slot)
{
    simulated::core().operations("Bsp").run("setSlotId", {{"slot", slot}},
                                            [&](Json& document) { document["unit"]["slotId"] = slot; });
}

extern "C" std::uint32_t Bsp_getProductId()
{
    return simulated::core().operations("Bsp").run(
        "getProductId", {}, [](Json& document) { return document["unit"]["productId"].get<std::uint32_t>(); });
}

extern "C" void TrfMlm_setTxMaxAcmLimit(std::int32_t channelIndex, std::uint32_t limit)
{
    simulated::core().operations("TrfMlm").run(
        "setTxMaxAcmLimit", {{"channelIndex", channelIndex}, {"limit", limit}}, [&](Json& document) {
            if (Json* const channel = simulated::findChannel(document, std::int64_t{channelIndex} + 1)) {
                (*channel)["txMaxAcmLimit"] = limit;
            }
        });
}
