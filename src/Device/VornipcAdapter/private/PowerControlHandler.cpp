#include "PowerControlHandler.h"

#include <algorithm>
#include <map>

#include "Answering.h"
#include "Hundredths.h"
#include "PowerSettings.h"
#include "SetResult.h"

namespace kro::device::vornipc {

namespace {

/// What is taken off the highest output power of a high-power radio that is to be reduced, hundredths of a dB. Fixed by
/// the radio.
constexpr std::int32_t highPowerReduction = 400;

constexpr const char* yesOrNo(TruthValue_T value)
{
    return value == truthValueTrue ? "Yes" : "No";
}

} // namespace

const Trace PowerControlHandler::m_trace{"KRO.VORNIPC.PC"};

PowerControlHandler::PowerControlHandler(std::uint8_t numberOfChannels, VornipcMessageHandler& messageHandler,
                                         AdapterModel& adapterModel)
    : m_numberOfChannels(servedChannels(m_trace, numberOfChannels, CallSite::here())),
      m_messageHandler(messageHandler),
      m_adapterModel(adapterModel)
{
}

Result PowerControlHandler::onModuleInit()
{
    // One method a line.
    // clang-format off
    m_messageHandler.registerReceivers(*this,
        &PowerControlHandler::onConfigureAtpcFallbackReq,
        &PowerControlHandler::onActivateAtpcFallbackReq,
        &PowerControlHandler::onGetRauPowerInventoryReq,
        &PowerControlHandler::onGetRfPowerReq,
        &PowerControlHandler::onSetRfPowerReq,
        &PowerControlHandler::onFEPowerLimitationReq,
        &PowerControlHandler::onSetRfPowerV2Req,
        &PowerControlHandler::onSetRfPowerV3Req);
    // clang-format on

    const InterfaceLookup lookup{m_trace, "onModuleInit(): Error getting interface to "};
    for (const RadioChannel ct : getRadioChannelIds(m_numberOfChannels)) {
        Channel& channel = m_channels[ct];
        if (!lookup(ct, channel.radio, channel.systemPowerController, channel.outputPowerCalculator,
                    channel.tapsController)) {
            return resultFailed;
        }
    }
    return resultOk;
}

bool PowerControlHandler::namesChannel(const SignalHeader& message, const CallSite& site)
{
    if (!isChannel(channelOf(message))) {
        m_trace.at(TraceLevel::Error, site) << site.method << "(): message->ct = " << message.ct << " is out of range";
        return false;
    }
    return true;
}

void PowerControlHandler::onConfigureAtpcFallbackReq(ConfigureAtpcFallbackReqIPC* request)
{
    traceMethodRequest(m_trace, *request);
    answerFixed<ConfigureAtpcFallbackResIPC>(m_messageHandler, m_trace, *request);
}

void PowerControlHandler::onActivateAtpcFallbackReq(ActivateAtpcFallbackReqIPC* request)
{
    traceMethodRequest(m_trace, *request);
    answerFixed<ActivateAtpcFallbackResIPC>(m_messageHandler, m_trace, *request);
}

void PowerControlHandler::onGetRfPowerReq(GetRfPowerReqIPC* request)
{
    traceMethodCalled<GetRfPowerReqIPC>(m_trace);
    if (!namesChannel(*request)) {
        return;
    }
    constexpr std::int32_t tenths = 10;
    const RadioChannel ct = channelOf(*request);
    auto response = responseTo<GetRfPowerResIPC>(*request);
    RfPowerReading& power = response.getRfPower;
    if (available(m_trace, m_channels[ct].radio, ct)) {
        m_channels[ct].radio->getCurrentRfPower(power.RfCurrentOutputPower, power.RfCurrentInputPower);
    }
    m_trace.at(TraceLevel::Dump) << "*********onGetRfPowerReq() DATA BEGIN *********";
    m_trace.at(TraceLevel::Dump) << "RfCurrentOutputPower = " << power.RfCurrentOutputPower << " dBm";
    m_trace.at(TraceLevel::Dump) << "RfCurrentInputPower  = " << power.RfCurrentInputPower / tenths << " dBm";
    m_trace.at(TraceLevel::Dump) << "*********onGetRfPowerReq() DATA END *********";
    traceReceived(m_trace, *request);
    m_trace.at(TraceLevel::Dump) << "Responde with : " << response;
    m_messageHandler.send(response, VornipcDeviceId::ads);
}

void PowerControlHandler::onSetRfPowerReq(SetRfPowerReqIPC* request)
{
    answerSetRfPower<SetRfPowerResIPC>(*request, UseHp::no, truthValueFalse, UseTaps::no, rfTapsNotUsed);
}

void PowerControlHandler::onSetRfPowerV2Req(SetRfPowerV2ReqIPC* request)
{
    answerSetRfPower<SetRfPowerV2ResIPC>(*request, UseHp::yes, request->HpMaxOutputPowerReduced, UseTaps::no,
                                         rfTapsNotUsed);
}

void PowerControlHandler::onSetRfPowerV3Req(SetRfPowerV3ReqIPC* request)
{
    answerSetRfPower<SetRfPowerV3ResIPC>(*request, UseHp::yes, request->HpMaxOutputPowerReduced, UseTaps::yes,
                                         request->RfTaps);
}

template <class Response, class Request>
void PowerControlHandler::answerSetRfPower(const Request& request, UseHp useHp, TruthValue_T hpReduced, UseTaps useTaps,
                                           RfTaps_T taps, const CallSite& site)
{
    traceMethodCalled<Request>(m_trace, site);
    if (!namesChannel(request, site)) {
        return;
    }
    auto response = responseTo<Response>(request);
    response.setRes = setRfPower(channelOf(request), request.setRfPower, useHp, hpReduced, useTaps, taps);
    respond(m_messageHandler, m_trace, request, response, site);
}

std::uint32_t PowerControlHandler::setRfPower(RadioChannel ct, const RfPowerSettings& settings, UseHp useHp,
                                              TruthValue_T hpReduced, UseTaps useTaps, RfTaps_T taps) const
{
    m_trace.at(TraceLevel::Call) << "setRfPower() called";
    if (!acceptsInputPowerThreshold(m_trace, settings.RfInputPowerThreshold)) {
        return setFailed;
    }
    const Channel& channel = m_channels[ct];
    if (!available(m_trace, channel.systemPowerController, ct) ||
        (useHp == UseHp::yes && !available(m_trace, channel.outputPowerCalculator, ct)) ||
        (useTaps == UseTaps::yes && !available(m_trace, channel.tapsController, ct))) {
        return setFailed;
    }

    m_trace.at(TraceLevel::Dump) << "*********setRfPower() DATA BEGIN *********";
    m_trace.at(TraceLevel::Dump) << "RfSelectedMinOutputPower = " << settings.RfSelectedMinOutputPower << " dBm";
    m_trace.at(TraceLevel::Dump) << "RfSelectedMaxOutputPower = " << settings.RfSelectedMaxOutputPower << " dBm";
    m_trace.at(TraceLevel::Dump) << "RfAtpcTargetInputPowerFE = " << settings.RfAtpcTargetInputPowerFE << " dBm";
    m_trace.at(TraceLevel::Dump) << "RfInputPowerThreshold    = " << settings.RfInputPowerThreshold << " dBm";
    if (useHp == UseHp::yes) {
        m_trace.at(TraceLevel::Dump) << "HpMaxOutputPowerReduced  = " << yesOrNo(hpReduced);
        channel.outputPowerCalculator->setHighPowerReduction(hpReduced == truthValueTrue ? highPowerReduction : 0);
    }
    if (useTaps == UseTaps::yes) {
        m_trace.at(TraceLevel::Dump) << "RfTaps                   = " << taps;
        if (isFailure(channel.tapsController->setTaps(taps == rfTapsOn))) {
            m_trace.at(TraceLevel::Error) << "Failed to set RfTaps to " << taps;
        }
    }
    m_trace.at(TraceLevel::Dump) << "*********setRfPower() DATA END *********";

    channel.systemPowerController->setInputPowerThreshold(toHundredths(settings.RfInputPowerThreshold));
    bool transmitterOff = false;
    channel.systemPowerController->getTransmitterOff(transmitterOff);
    if (isFailure(channel.systemPowerController->notifyRequestedPowerSettings(
            transmitterOff, toHundredths(settings.RfAtpcTargetInputPowerFE),
            toHundredths(settings.RfSelectedMinOutputPower), toHundredths(settings.RfSelectedMaxOutputPower),
            powerSettingsSpare0, powerSettingsSpare1))) {
        m_trace.at(TraceLevel::Error) << "setRfPower(): failed during call to SPC::notifyRequestedPowerSettings = ";
        return setFailed;
    }
    return setDone;
}

void PowerControlHandler::onFEPowerLimitationReq(FEPowerLimitationReqIPC* request)
{
    traceMethodCalled<FEPowerLimitationReqIPC>(m_trace);
    if (!namesChannel(*request)) {
        return;
    }
    const PowerLimitation& limitation = request->powerlimitation;
    const std::map<EModulationAndCodeType, int> pmaxDb{
        {EModulationAndCodeType{31}, limitation.powerLimitation4QAM},
        {EModulationAndCodeType{41}, limitation.powerLimitation16QAM},
        {EModulationAndCodeType{51}, limitation.powerLimitation32QAM},
        {EModulationAndCodeType{61}, limitation.powerLimitation64QAM},
        {EModulationAndCodeType{71}, limitation.powerLimitation128QAM},
        {EModulationAndCodeType{81}, limitation.powerLimitation256QAM},
        {EModulationAndCodeType{91}, limitation.powerLimitation512QAM},
        {EModulationAndCodeType{101}, limitation.powerLimitation1024QAM},
        {EModulationAndCodeType{111}, limitation.powerLimitation2048QAM},
        {EModulationAndCodeType{121}, limitation.powerLimitation4096QAM},
    };
    auto response = responseTo<FEPowerLimitationResIPC>(*request);
    response.setRes = m_adapterModel.onSetFarEndPmaxCapability(channelOf(*request), pmaxDb) ? setDone : setFailed;
    respond(m_messageHandler, m_trace, *request, response);
}

} // namespace kro::device::vornipc
