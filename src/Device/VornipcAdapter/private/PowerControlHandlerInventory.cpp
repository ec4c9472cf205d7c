#include <algorithm>
#include <array>
#include <cstddef>

#include "Answering.h"
#include "Hundredths.h"
#include "PowerControlHandler.h"

// The power inventory: what a radio can transmit with each modulation.

namespace kro::device::vornipc {

namespace {

/// Value of what is not known. Fixed by the node protocol.
constexpr std::int32_t powerNotKnown = 255;
constexpr std::uint32_t versionNotKnown = 2;

/// Bit of the values between the families that are no modulation; no list entry counts with it.
constexpr std::uint32_t unusedModulationBit = 0x4001;

/// Modulation bit of each family of EModulationAndCodeType, from family 1 on: half BPSK, BPSK, 4QAM, 16QAM and so on up
/// to 16384QAM. Fixed by the platform.
constexpr std::array<std::uint32_t, 14> familyBits{0x2,   0x2,   0x4,   0x10,  0x20,   0x40,   0x80,
                                                   0x100, 0x200, 0x400, 0x800, 0x1000, 0x2000, 0x4000};

/// @param modulation 10 to 143
constexpr std::uint32_t modulationBit(EModulationAndCodeType modulation)
{
    constexpr int familyWidth = 10;
    constexpr int lightCode = 2;
    const int family = modulation / familyWidth;
    return modulation % familyWidth <= lightCode ? familyBits.at(static_cast<std::size_t>(family - 1))
                                                 : unusedModulationBit;
}

struct MaximumPower {
    std::uint32_t modulationBit;
    std::int32_t RauPowerInventory::*field;
    const char* traceLabel;
};

/// The inventory's maxima; families without one are left out of it.
constexpr std::array<MaximumPower, 10> maxima{{
    {0x4, &RauPowerInventory::rfMaxOutputPower4QAM, "maxOutputPower4QAM    = "},
    {0x10, &RauPowerInventory::rfMaxOutputPower16QAM, "maxOutputPower16QAM   = "},
    {0x20, &RauPowerInventory::rfMaxOutputPower32QAM, "maxOutputPower32QAM   = "},
    {0x40, &RauPowerInventory::rfMaxOutputPower64QAM, "maxOutputPower64QAM   = "},
    {0x80, &RauPowerInventory::rfMaxOutputPower128QAM, "maxOutputPower128QAM  = "},
    {0x100, &RauPowerInventory::rfMaxOutputPower256QAM, "maxOutputPower256QAM  = "},
    {0x200, &RauPowerInventory::rfMaxOutputPower512QAM, "maxOutputPower512QAM  = "},
    {0x400, &RauPowerInventory::rfMaxOutputPower1024QAM, "maxOutputPower1024QAM = "},
    {0x800, &RauPowerInventory::rfMaxOutputPower2048QAM, "maxOutputPower2048QAM = "},
    {0x1000, &RauPowerInventory::rfMaxOutputPower4096QAM, "maxOutputPower4096QAM = "},
}};

/// An inventory of which nothing is known.
RauPowerInventory unknownInventory()
{
    RauPowerInventory inventory;
    inventory.atpcVersion = versionNotKnown;
    inventory.atpcUpdateRate = versionNotKnown;
    inventory.rfMinOutputPower = powerNotKnown;
    for (const MaximumPower& maximum : maxima) {
        inventory.*maximum.field = powerNotKnown;
    }
    inventory.rfMaxOutputPowerNotLimited = powerNotKnown;
    inventory.rfMaxOutputPowerPossible = versionNotKnown;
    inventory.txOnPossible = versionNotKnown;
    return inventory;
}

/// Takes a modulation's highest output power into the inventory if the radio may use the modulation.
void takeMaximum(RauPowerInventory& inventory, const LimitedPower& pair, std::uint32_t highestModulationBit)
{
    constexpr EModulationAndCodeType lowest{10};
    if (pair.modulation < lowest || pair.modulation > modulationUndefined) {
        return;
    }
    const std::uint32_t bit = modulationBit(pair.modulation);
    const auto* const maximum =
        std::find_if(maxima.begin(), maxima.end(), [bit](const MaximumPower& one) { return one.modulationBit == bit; });
    if (bit <= highestModulationBit && maximum != maxima.end()) {
        inventory.*maximum->field = toWhole(pair.maximumOutputPower);
    }
}

} // namespace

void PowerControlHandler::onGetRauPowerInventoryReq(GetRauPowerInventoryReqIPC* request)
{
    traceMethodCalled<GetRauPowerInventoryReqIPC>(m_trace);
    if (!namesChannel(*request)) {
        return;
    }
    const RadioChannel ct = channelOf(*request);
    const Channel& channel = m_channels[ct];
    auto response = responseTo<GetRauPowerInventoryResIPC>(*request);
    response.getRauPowerInventory = unknownInventory();
    if (available(m_trace, channel.radio, ct) && channel.radio->isRadioUp() &&
        available(m_trace, channel.outputPowerCalculator, ct)) {
        readLimitedPower(*channel.outputPowerCalculator.operator->(), response.getRauPowerInventory);
        tracePowerInventory(response.getRauPowerInventory);
    }
    respond(m_messageHandler, m_trace, *request, response);
}

void PowerControlHandler::readLimitedPower(IOutputPowerCalculator& calculator, RauPowerInventory& inventory,
                                           const CallSite& site)
{
    std::uint32_t calculation = 0;
    std::uint32_t highestModulationBit = 0;
    LimitedPowerList powers;
    std::int32_t minOutputPower = 0;
    const Result result = calculator.getLimitedPower(calculation, highestModulationBit, powers, minOutputPower);
    if (result == resultExternalInterfaceMissing) {
        m_trace.at(TraceLevel::Call, site)
            << "onGetRauPowerInventoryReq() Could not get limited power since no FF has been set";
    } else if (isFailure(result)) {
        m_trace.at(TraceLevel::Error, site) << "onGetRauPowerInventoryReq() Could not get limited power";
    } else {
        const std::size_t count = std::min<std::size_t>(powers.count, powers.pairs.size());
        for (std::size_t i = 0; i < count; ++i) {
            takeMaximum(inventory, powers.pairs.at(i), highestModulationBit);
        }
    }
    inventory.rfMinOutputPower = toWhole(minOutputPower);
}

void PowerControlHandler::tracePowerInventory(const RauPowerInventory& inventory, const CallSite& site)
{
    m_trace.at(TraceLevel::Call, site) << "*********onGetRauPowerInventoryReq() DATA BEGIN *********";
    m_trace.at(TraceLevel::Call, site) << "minOutputPower        = " << inventory.rfMinOutputPower << " dBm";
    for (const MaximumPower& maximum : maxima) {
        m_trace.at(TraceLevel::Call, site) << maximum.traceLabel << inventory.*maximum.field << " dBm";
    }
    m_trace.at(TraceLevel::Call, site) << "*********onGetRauPowerInventoryReq() DATA END *********";
}

} // namespace kro::device::vornipc
