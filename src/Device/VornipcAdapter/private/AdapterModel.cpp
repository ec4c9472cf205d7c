#include "AdapterModel.h"

#include <algorithm>

#include "Hundredths.h"
#include "kro_top_api.h"

namespace kro::device::vornipc {

namespace {

constexpr const char* yesOrNo(bool value)
{
    return value ? "yes" : "no";
}

constexpr RadioChannel channelOfIndex(int radioChannelIndex)
{
    return RadioChannel{radioChannelIndex + 1};
}

/// Frequency of a step number, in 32-bit arithmetic as the radio counts.
constexpr std::uint32_t frequencyOfStep(std::uint32_t base, std::uint32_t stepSize, int step)
{
    return base + stepSize * static_cast<std::uint32_t>(step);
}

} // namespace

const Trace AdapterModel::m_trace{"KRO.VORNIPC.AdapterModel"};

/// Index is ACM_T: 0 none, then the strong, normal and light code of 4QAM, 16QAM and so on up to 4096QAM.
const std::array<EModulationAndCodeType, 31> AdapterModel::modulationTable = [] {
    std::array<EModulationAndCodeType, 31> table{};
    table[0] = modulationUndefined;
    for (int acm = 1; acm <= 30; ++acm) {
        const int family = (acm - 1) / 3;
        const int codeStrength = (acm - 1) % 3;
        table.at(static_cast<std::size_t>(acm)) = EModulationAndCodeType{30 + 10 * family + codeStrength};
    }
    return table;
}();

/// Index is SEC_T.
const std::array<EReferenceSEC, 10> AdapterModel::rsecTable{
    referenceSecUndefined, referenceSecUndefined, EReferenceSEC{0}, EReferenceSEC{1}, EReferenceSEC{2},
    EReferenceSEC{5},      EReferenceSEC{6},      EReferenceSEC{7}, EReferenceSEC{8}, EReferenceSEC{9}};

AdapterModel::AdapterModel(int numberOfChannels)
    : m_numberOfChannels(std::min(numberOfChannels, static_cast<int>(maximumChannels)))
{
}

Result AdapterModel::onModuleInit()
{
    const InterfaceLookup lookup{m_trace, "onModuleInit():  Error getting interface to "};
    const InterfaceLookup lookupAcmHandler{m_trace, "onModuleInit(): Error getting interface to "};
    if (!lookup(m_hardwareConfigurationHandler)) {
        return resultFailed;
    }
    for (const RadioChannel ct : getRadioChannelIds(static_cast<unsigned>(m_numberOfChannels))) {
        Channel& channel = m_channels[ct];
        if (!lookupAcmHandler(ct, channel.acmHandler) ||
            !lookup(ct, channel.systemPowerController, channel.frequencyController, channel.outputPowerCalculator)) {
            return resultFailed;
        }
    }
    m_initialized = true;
    return resultOk;
}

bool AdapterModel::hasChannel(int radioChannelIndex) const
{
    return radioChannelIndex >= 0 && radioChannelIndex < m_numberOfChannels;
}

bool AdapterModel::onRfChannelPlanReceived(RadioChannel ct, const RfChannelPlan& plan)
{
    const std::scoped_lock lock(m_mutex);
    if (!m_initialized || ct < 1 || ct > m_numberOfChannels) {
        return false;
    }
    Channel& channel = m_channels[ct];
    channel.txStepSize = plan.stepSize;
    channel.rxStepSize = plan.stepSize;
    channel.txBaseFrequency = plan.rfBaseTxFrequency;
    channel.rxBaseFrequency = plan.rfBaseRxFrequency;
    channel.channelPlanReceived = true;
    return true;
}

bool AdapterModel::onSetFrameFormatReq(int radioChannelIndex, int radioFrameId, ACM_T minAcm, ACM_T maxAcm, SEC_T sec)
{
    const std::scoped_lock lock(m_mutex);
    if (!m_initialized || !hasChannel(radioChannelIndex)) {
        return false;
    }
    Channel& channel = m_channels[channelOfIndex(radioChannelIndex)];
    channel.minModulation = convertACM(minAcm);
    channel.maxModulation = convertACM(maxAcm);
    channel.radioFrameId = static_cast<std::uint32_t>(radioFrameId);
    channel.rsec = convertSEC(sec);
    channel.radioFrameIdConfigured = true;
    return setRadioChannelNearEnd(radioChannelIndex);
}

bool AdapterModel::onSetFrequency(int radioChannelIndex, int txStep, int rxStep)
{
    const std::scoped_lock lock(m_mutex);
    if (!m_initialized) {
        return false;
    }
    if (!hasChannel(radioChannelIndex)) {
        m_trace.at(TraceLevel::Error) << "onSetFrequency(): "
                                      << " Incorrect radioChannelIndex = " << radioChannelIndex;
        return false;
    }
    Channel& channel = m_channels[channelOfIndex(radioChannelIndex)];
    if (!channel.channelPlanReceived) {
        m_trace.at(TraceLevel::Error) << "onSetFrequency(): "
                                      << " Can't set frequency since no channel plan is available";
        return false;
    }
    channel.txFrequency = frequencyOfStep(channel.txBaseFrequency, channel.txStepSize, txStep);
    channel.rxFrequency = frequencyOfStep(channel.rxBaseFrequency, channel.rxStepSize, rxStep);
    channel.frequencyConfigured = true;
    const bool done = setRadioChannelNearEnd(radioChannelIndex);
    if (!done) {
        m_trace.at(TraceLevel::Error) << "onSetFrequency(): "
                                      << " Failed during cal to setRadioChannelNearEnd";
    }
    return done;
}

bool AdapterModel::setRadioChannelNearEnd(int radioChannelIndex)
{
    const RadioChannel ct = channelOfIndex(radioChannelIndex);
    const Channel& channel = m_channels[ct];
    m_trace.at(TraceLevel::Dump) << "setRadioChannelNearEnd(): "
                                 << "ENTER "
                                 << "setRadioChannelNearEnd"
                                 << "("
                                 << "radioChannelIndex=" << radioChannelIndex << ")";
    if (!channel.frequencyConfigured || !channel.radioFrameIdConfigured) {
        m_trace.at(TraceLevel::Call) << "setRadioChannelNearEnd(): "
                                     << "Not completely configured yet, just return. Frequency configured: "
                                     << yesOrNo(channel.frequencyConfigured)
                                     << ", Radio frame ID configured:" << yesOrNo(channel.radioFrameIdConfigured);
        return true;
    }

    bool doConfiguration = false;
    const auto compare = [&](const auto& requested, const auto& current, const char* requestedText,
                             const char* currentText, const CallSite& site = CallSite::here()) {
        doConfiguration = doConfiguration || requested != current;
        m_trace.at(TraceLevel::Call, {site.file, site.line, "setRadioChannelNearEnd"})
            << "setRadioChannelNearEnd(): " << requestedText << requested << currentText << current
            << ", doConfiguration = " << doConfiguration;
    };

    std::uint32_t currentFrameId = 0;
    if (isFailure(m_hardwareConfigurationHandler->getRadioFrameId(ct, currentFrameId))) {
        m_trace.at(TraceLevel::Error) << "setRadioChannelNearEnd(): "
                                      << " Failed to get current radio frame id";
        return false;
    }
    compare(channel.radioFrameId, currentFrameId, "Requested radio frame id: ", ", Current radio frame id: ");

    EModulationAndCodeType currentMin = modulationUndefined;
    EModulationAndCodeType currentMax = modulationUndefined;
    if (isFailure(channel.acmHandler->getMinMaxModulationAndCode(&currentMin, &currentMax))) {
        m_trace.at(TraceLevel::Error) << "setRadioChannelNearEnd(): "
                                      << " Failed to get current min/max modulation";
        return false;
    }
    compare(channel.minModulation, currentMin, "Requested min modulation: ", ", Current min modulation: ");
    compare(channel.maxModulation, currentMax, " Requested max modulation: ", ", Current max modulation: ");

    EReferenceSEC currentSec = referenceSecUndefined;
    if (isFailure(channel.systemPowerController->getReferenceSec(currentSec))) {
        m_trace.at(TraceLevel::Error) << "setRadioChannelNearEnd(): "
                                      << " Failed to get current rsec";
        return false;
    }
    compare(channel.rsec, currentSec, "Requested rsec: ", ", Current rsec: ");
    compare(channel.txFrequency, channel.frequencyController->getTxFrequency(),
            "Requested tx frequency: ", ", Current tx frequency: ");
    compare(channel.rxFrequency, channel.frequencyController->getRxFrequency(),
            "Requested rx frequency: ", ", Current rx frequency: ");
    if (!doConfiguration) {
        return true;
    }

    kro_top_api::CriSetRadioChannelNearEnd::Command command;
    command.radioChannel = ct;
    command.radioFrameId = channel.radioFrameId;
    command.minModulation = channel.minModulation;
    command.maxModulation = channel.maxModulation;
    command.referenceSec = channel.rsec;
    command.txFrequency = channel.txFrequency;
    command.rxFrequency = channel.rxFrequency;
    m_trace.at(TraceLevel::Action) << "setRadioChannelNearEnd(): "
                                   << "Time to call criSetRadioChannelNearEnd";
    const auto response = kro_top_api::criSetRadioChannelNearEnd(command);
    if (response.m_errorIndicator > 0) {
        m_trace.at(TraceLevel::Error) << "setRadioChannelNearEnd(): "
                                      << "failed: " << response.getErrorString();
        return false;
    }
    return true;
}

bool AdapterModel::onSetFarEndPmaxCapability(RadioChannel ct, const std::map<EModulationAndCodeType, int>& pmaxDb)
{
    const std::scoped_lock lock(m_mutex);
    if (!m_initialized) {
        return false;
    }
    kro_top_api::CriSetFarEndPmaxCapability::Command command;
    command.radioChannel = ct;
    for (const auto& [modulation, db] : pmaxDb) {
        command.pmax.push_back({modulation, toHundredths(db)});
        m_trace.at(TraceLevel::Call) << "onSetFarEndPmaxCapability(): "
                                     << "set Pmax " << db << "dB for " << modulation << "QAM";
    }
    m_trace.at(TraceLevel::Action) << "onSetFarEndPmaxCapability(): "
                                   << " Setting Far End Pmax capabilities";
    const auto response = kro_top_api::criSetFarEndPmaxCapability(command);
    if (response.m_errorIndicator > 0) {
        m_trace.at(TraceLevel::Error) << "onSetFarEndPmaxCapability(): "
                                      << "failed: " << response.getErrorString();
        return false;
    }
    return true;
}

EModulationAndCodeType AdapterModel::convertACM(ACM_T acm) const
{
    constexpr EModulationAndCodeType modulation4Qam{31};
    const auto index = static_cast<std::size_t>(static_cast<std::uint32_t>(acm));
    return index < modulationTable.size() ? modulationTable.at(index) : modulation4Qam;
}

EReferenceSEC AdapterModel::convertSEC(SEC_T sec) const
{
    const auto index = static_cast<std::size_t>(static_cast<std::uint32_t>(sec));
    return index < rsecTable.size() ? rsecTable.at(index) : referenceSecUndefined;
}

} // namespace kro::device::vornipc
