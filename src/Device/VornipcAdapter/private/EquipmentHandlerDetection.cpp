#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <string_view>

#include "Answering.h"
#include "Bsp.h"
#include "EquipmentHandler.h"
#include "SetResult.h"

namespace kro::device::vornipc {

namespace {

/// Bits of the node's equipment capability word. Fixed by the node protocol.
constexpr std::uint32_t rauDetected1Bit = 0x02;
constexpr std::uint32_t rlaprintExtBit = 0x04;
constexpr std::uint32_t spareBit = 0x08;
constexpr std::uint32_t bpmCommandBit = 0x20;
constexpr std::uint32_t qesModeBit = 0x80;

/// This radio's own capability words. Fixed by the node protocol.
constexpr std::uint32_t capabilitiesEH = 0x5b;
constexpr std::uint32_t capabilitiesPR = 0;
constexpr std::uint32_t capabilitiesATPC = 3;
constexpr std::uint32_t capabilitiesATPCReduced = 1;
constexpr std::uint32_t productWithReducedATPC = 5;

constexpr std::uint32_t rfLoopIsAvailable = 2;
constexpr std::uint32_t rfLoopIsNotAvailable = 3;

/// The node's numbers of the supply voltages that the radio numbers 1 to 4; 0 for all others.
std::uint32_t decodeRauSupplyVoltage(RadioInventory::SupplyVoltages voltage)
{
    constexpr std::array<std::uint32_t, 5> nodeNumbers{0, 2, 3, 4, 1};
    return voltage < nodeNumbers.size() ? nodeNumbers[voltage] : 0;
}

/// Copies a platform text up to its terminating zero, or up to the field's width where it has none.
template <std::size_t Width>
void copyText(const std::array<char, Width>& text, std::array<std::uint8_t, Width>& field)
{
    std::copy(text.begin(), std::find(text.begin(), text.end(), '\0'), field.begin());
}

template <std::size_t Width>
std::string_view textOf(const std::array<char, Width>& text)
{
    return {text.data(), static_cast<std::size_t>(std::find(text.begin(), text.end(), '\0') - text.begin())};
}

/// The node's numbers (ACM_T, 1 to 30) of the modulations as frame formats name them.
const std::map<std::string, int, std::less<>> acmByModulation = [] {
    std::map<std::string, int, std::less<>> map;
    int acm = 0;
    for (const char* modulation :
         {"4QAM", "16QAM", "32QAM", "64QAM", "128QAM", "256QAM", "512QAM", "1024QAM", "2048QAM", "4096QAM"}) {
        for (const char* code : {"_STRONG", "", "_LIGHT"}) {
            map.emplace(std::string(modulation) + code, ++acm);
        }
    }
    return map;
}();

/// Modes of a frame format that the node can be told of, and entries of its list of capacities.
constexpr unsigned maximumModes = 16;
constexpr int numberOfAcms = 30;

/// The frame format list that the node's frame ids refer to.
constexpr unsigned frameFormatList = 1;

void describeRadio(RauDetected1IPC& message, const RadioInventory& inventory, const RfChannelPlan& plan,
                   const RfLoopCapability& loop)
{
    copyText(inventory.productName, message.productName);
    copyText(inventory.hwProductNumber, message.hwProductNumber);
    copyText(inventory.hwRevision, message.hwRevision);
    copyText(inventory.serialNumber, message.serialNumber);
    copyText(inventory.swProductNumber, message.swProductNumber);
    copyText(inventory.swRevision, message.swRevision);
    message.frequencyBand = plan.frequencyBand;
    message.subBand = plan.subBand;
    message.rfBaseTxFrequency = plan.rfBaseTxFrequency;
    message.rfBaseRxFrequency = plan.rfBaseRxFrequency;
    message.rfStepLimitLowTx = plan.rfStepLimitLowTx;
    message.rfStepLimitHighTx = plan.rfStepLimitHighTx;
    message.rfStepSizeTx = plan.stepSize;
    message.rfStepLimitLowRx = plan.rfStepLimitLowRx;
    message.rfStepLimitHighRx = plan.rfStepLimitHighRx;
    message.rfStepSizeRx = plan.stepSize;
    message.rfLoopAvailable = loop.rfLoopAvailable ? rfLoopIsAvailable : rfLoopIsNotAvailable;
    message.resetType = inventory.resetType;
    message.supplyVoltage = decodeRauSupplyVoltage(inventory.supplyVoltage);
}

} // namespace

void EquipmentHandler::notifyRadioDetected(RadioChannel ct)
{
    m_trace.at(TraceLevel::Dump) << "ENTER "
                                 << "notifyRadioDetected"
                                 << "("
                                 << "radioChannelId=" << ct << ")";
    const std::scoped_lock lock(m_detectionMutex);
    if (!getRadioUp(ct)) {
        return;
    }
    AnsCapabilities capabilities;
    getAnsCapabilities(capabilities);

    const Channel& channel = m_channels[ct];
    if (!available(m_trace, channel.radio, ct) || !available(m_trace, channel.radioCapability, ct)) {
        return;
    }
    RadioInventory inventory{};
    RfChannelPlan plan{};
    RfLoopCapability loop{};
    channel.radio->getInventory(inventory);
    channel.radioCapability->getRfChannelPlan(plan);
    channel.radioCapability->getRfLoopCapability(loop);
    if (!m_adapterModel.onRfChannelPlanReceived(ct, plan)) {
        m_trace.at(TraceLevel::Error) << " Error in call to onRfChannelPlanReceived() for ct " << ct;
        return;
    }
    if (!capabilities.capabilitiesReceived) {
        m_trace.at(TraceLevel::Call) << "ANS capabilities not received yet for ct " << ct;
        return;
    }
    if (!capabilities.rauDetected1Capable) {
        m_trace.at(TraceLevel::Error) << " ANS is not capable of handling RauDetected1IPC for ct " << ct;
        return;
    }
    if (!m_messageHandler.outgoingIpcMessagesAllowed()) {
        m_trace.at(TraceLevel::Action) << "RauDetected1IPC for ct " << ct
                                       << " will not be sent to ANS since the MMU is not yet in service";
        return;
    }

    auto message = spontaneous<RauDetected1IPC>(m_messageHandler, ct);
    describeRadio(message, inventory, plan, loop);
    traceDetectedRadio(message, inventory, loop.rfLoopAvailable);
    m_trace.at(TraceLevel::Event) << "RAU detected for channel " << ct;
    m_messageHandler.send(message, VornipcDeviceId::ads);
    if (capabilities.rlaprintExtCapable) {
        m_messageHandler.sendToNpuSyslog("Radio Up", ct);
    }
}

void EquipmentHandler::traceDetectedRadio(const RauDetected1IPC& message, const RadioInventory& inventory,
                                          bool rfLoopAvailable, const CallSite& site)
{
    const auto line = [&site](const char* text, const auto& value) {
        m_trace.at(TraceLevel::Dump, site) << text << value;
    };
    line("*********", "notifyRadioDetected() DATA BEGIN *********");
    line("productName = ", textOf(inventory.productName));
    line("hwProductNumber = ", textOf(inventory.hwProductNumber));
    line("hwRevision = ", textOf(inventory.hwRevision));
    line("serialNumber = ", textOf(inventory.serialNumber));
    line("swProductNumber = ", textOf(inventory.swProductNumber));
    line("swRevision = ", textOf(inventory.swRevision));
    line("frequencyBand = ", message.frequencyBand);
    line("subBand = ", message.subBand);
    line("rfBaseTxFrequency = ", message.rfBaseTxFrequency);
    line("rfBaseRxFrequency = ", message.rfBaseRxFrequency);
    line("rfStepLimitLowTx = ", message.rfStepLimitLowTx);
    line("rfStepLimitHighTx = ", message.rfStepLimitHighTx);
    line("rfStepSizeTx = ", message.rfStepSizeTx);
    line("rfStepLimitLowRx = ", message.rfStepLimitLowRx);
    line("rfStepLimitHighRx = ", message.rfStepLimitHighRx);
    line("rfStepSizeRx = ", message.rfStepSizeRx);
    line("rfLoopAvailable = ", rfLoopAvailable);
    line("resetType = ", message.resetType);
    line("supplyVoltage = ", message.supplyVoltage);
    line("*********", "notifyRadioDetected() DATA END *********");
}

void EquipmentHandler::radioCapabilitiesAvailable(RadioChannel ct)
{
    constexpr const char* text = "Got inventory from the radio";
    m_trace.at(TraceLevel::Action) << "[CT" << ct << "] "
                                   << "radioCapabilitiesAvailable"
                                   << "(): " << text;
    AnsCapabilities capabilities;
    getAnsCapabilities(capabilities);
    if (!capabilities.capabilitiesReceived) {
        m_trace.at(TraceLevel::Call) << "ANS capabilities not received yet for ct " << ct;
    } else if (capabilities.rlaprintExtCapable) {
        m_messageHandler.sendToNpuSyslog(text);
    } else {
        m_trace.at(TraceLevel::Event) << "[CT" << ct << "] "
                                      << "radioCapabilitiesAvailable"
                                      << "(): ANS is not capable of handling RLaprintExtIPC";
    }
}

void EquipmentHandler::onGetRAUCapabilityReq(GetRAUCapabilityReqIPC* request)
{
    traceRequest(m_trace, *request);
    auto response = responseTo<GetRAUCapabilityResIPC>(*request);
    const RadioChannel ct = channelOf(*request);
    if (!isChannel(ct)) {
        traceIncorrectChannel(m_trace, request->ct);
        m_messageHandler.send(response, VornipcDeviceId::ads);
        return;
    }
    if (available(m_trace, m_channels[ct].radio, ct)) {
        IRadio::CompatibilityCodes codes{};
        m_channels[ct].radio->getCompatibilityCodes(codes);
        auto& words = response.rauCompatibilityCodes;
        words = {codes[0], codes[1], codes[2], codes[3], codes[4],  codes[5],
                 codes[6], codes[7], codes[8], codes[9], codes[10], codes[11]};
    }
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::onGetRAUIndexCapabilitiesReq(GetRAUIndexCapabilitiesReqIPC* request)
{
    traceRequest(m_trace, *request);
    auto response = responseTo<GetRAUIndexCapabilitiesResIPC>(*request);
    const RadioChannel ct = channelOf(*request);
    if (!isChannel(ct)) {
        m_trace.at(TraceLevel::Error) << "Incorrect ct number " << request->ct << " ()";
        m_messageHandler.send(response, VornipcDeviceId::ads);
        return;
    }
    if (available(m_trace, m_channels[ct].radio, ct)) {
        std::vector<std::uint8_t> subBands;
        m_channels[ct].radio->getSupportedSubBands(subBands);
        const std::size_t count = std::min(subBands.size(), response.rauSubBands.size());
        std::transform(subBands.begin(), subBands.begin() + static_cast<std::ptrdiff_t>(count),
                       response.rauSubBands.begin(), [](std::uint8_t subBand) { return RauSubBand{subBand}; });
        response.rauSubBandsNum = static_cast<std::uint32_t>(count);
    }
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::onSetRAUIndexCapabilitiesReq(SetRAUIndexCapabilitiesReqIPC* request)
{
    traceRequest(m_trace, *request);
    auto response = responseTo<SetRAUIndexCapabilitiesResIPC>(*request);
    const RadioChannel ct = channelOf(*request);
    if (!isChannel(ct)) {
        traceIncorrectChannel(m_trace, request->ct);
    } else {
        if (!available(m_trace, m_channels[ct].radio, ct) ||
            isFailure(m_channels[ct].radio->selectSubBand(static_cast<std::uint8_t>(request->rauSubBand)))) {
            response.eSetRes = setFailed;
        }
        m_trace.at(TraceLevel::Call) << "RAU subband request is: " << request->rauSubBand;
    }
    respond(m_messageHandler, m_trace, response);
}

void EquipmentHandler::getAcmCapacities(int frameId, int* capacities,
                                        const std::function<bool(const SRadioFrameItem&, unsigned)>& filter)
{
    if (frameId == 0) {
        m_trace.at(TraceLevel::Call) << " acm capabilities will not be fetched for frameId = 0";
        return;
    }
    SRadioFrameItem item;
    if (!available(m_trace, m_hardwareConfigurationHandler) ||
        isFailure(m_hardwareConfigurationHandler->getFrameFormatItem(frameFormatList,
                                                                     static_cast<std::uint32_t>(frameId), item))) {
        m_trace.at(TraceLevel::Error) << "failed to get capacities for frameId=" << frameId;
        return;
    }
    for (unsigned index = 0; index < maximumModes; ++index) {
        const SRadioFrameMode& mode = item.modes.at(index);
        if (mode.capacity == 0) {
            return;
        }
        const auto entry = acmByModulation.find(mode.name);
        if (entry == acmByModulation.end()) {
            m_trace.at(TraceLevel::Error) << " failed to find a mapping for modulation " << mode.name;
        } else if (const int acm = entry->second; acm > numberOfAcms) {
            m_trace.at(TraceLevel::Error) << " index " << acm << " out of bound";
        } else if (filter(item, index)) {
            capacities[acm - 1] = mode.capacity;
        }
    }
}

void EquipmentHandler::extractAnsCapabilities_(const CompatibilityCodes_T& codes)
{
    m_ansCapabilities.rauDetected1Capable = (codes.capabilityEH & rauDetected1Bit) != 0;
    m_ansCapabilities.spareCapability = (codes.capabilityEH & spareBit) != 0;
    m_ansCapabilities.rlaprintExtCapable = (codes.capabilityEH & rlaprintExtBit) != 0;
    m_ansCapabilities.bpmCommandCapable = (codes.capabilityEH & bpmCommandBit) != 0;
    handleQesMode_(codes);
}

void EquipmentHandler::handleQesMode_(const CompatibilityCodes_T& codes)
{
    m_ansCapabilities.qesMode = (codes.capabilityEH & qesModeBit) != 0;
    m_messageHandler.enableVornipcWhiteList(m_ansCapabilities.qesMode);
}

void EquipmentHandler::getAnsCapabilities(AnsCapabilities& capabilities) const
{
    const std::scoped_lock lock(m_stateMutex);
    capabilities = m_ansCapabilities;
}

void EquipmentHandler::setAnsCapabilities(const AnsCapabilities& capabilities)
{
    const std::scoped_lock lock(m_stateMutex);
    m_ansCapabilities = capabilities;
}

std::uint32_t EquipmentHandler::getKROCompatibiltyCodesEH()
{
    return capabilitiesEH;
}

std::uint32_t EquipmentHandler::getKROCompatibiltyCodesATPC()
{
    return Bsp_getProductId() == productWithReducedATPC ? capabilitiesATPCReduced : capabilitiesATPC;
}

std::uint32_t EquipmentHandler::getKROCompatibiltyCodesPR()
{
    return capabilitiesPR;
}

} // namespace kro::device::vornipc
