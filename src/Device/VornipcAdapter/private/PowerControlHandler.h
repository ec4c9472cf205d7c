#pragma once

#include <cstdint>

#include "AdapterModel.h"
#include "IOutputPowerCalculator.h"
#include "IRadio.h"
#include "ISystemPowerController.h"
#include "ITapsController.h"
#include "InterfaceLookup.h"
#include "PerChannel.h"
#include "PowerControlMessages.h"
#include "RadioChannel.h"
#include "ResultCodes.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

/// Whether a power request sets the high-power reduction, and the RF taps.
enum class UseHp : std::uint8_t { no = 0, yes = 1 };
enum class UseTaps : std::uint8_t { no = 0, yes = 1 };

/// The power area: output power and ATPC settings, power readings, what the unit can deliver and the far end allows.
/// Keeps nothing between requests. A request for a channel other than 1 and 2 is not answered, but for the two of the
/// ATPC fallback, which need none.
///
/// Threads: the methods for messages run on the reader thread, `onModuleInit` on the framework's.
class PowerControlHandler {
public:
    /// @param numberOfChannels more than 2 is logged and counts as 2
    PowerControlHandler(std::uint8_t numberOfChannels, VornipcMessageHandler& messageHandler,
                        AdapterModel& adapterModel);

    /// Registers the receivers, then looks up the platform's interfaces.
    Result onModuleInit();

    void onConfigureAtpcFallbackReq(ConfigureAtpcFallbackReqIPC* request);
    void onActivateAtpcFallbackReq(ActivateAtpcFallbackReqIPC* request);
    void onGetRauPowerInventoryReq(GetRauPowerInventoryReqIPC* request);
    void onGetRfPowerReq(GetRfPowerReqIPC* request);
    void onSetRfPowerReq(SetRfPowerReqIPC* request);
    void onFEPowerLimitationReq(FEPowerLimitationReqIPC* request);
    void onSetRfPowerV2Req(SetRfPowerV2ReqIPC* request);
    void onSetRfPowerV3Req(SetRfPowerV3ReqIPC* request);

    /// Gives the radio of channel `ct` its power settings. Nothing is applied where the threshold is too high or an
    /// interface is missing.
    /// @param settings  whole dBm; but for the threshold not checked here
    /// @param hpReduced looked at with `UseHp::yes` only
    /// @param taps      looked at with `UseTaps::yes` only
    /// @return 0 done, 1 failed
    std::uint32_t setRfPower(RadioChannel ct, const RfPowerSettings& settings, UseHp useHp, TruthValue_T hpReduced,
                             UseTaps useTaps, RfTaps_T taps) const;

private:
    /// What the platform offers for one radio channel; looked up once, borrowed.
    struct Channel {
        PlatformInterface<IRadio> radio;
        PlatformInterface<ISystemPowerController> systemPowerController;
        PlatformInterface<IOutputPowerCalculator> outputPowerCalculator;
        PlatformInterface<ITapsController> tapsController;
    };

    template <class Response, class Request>
    void answerSetRfPower(const Request& request, UseHp useHp, TruthValue_T hpReduced, UseTaps useTaps, RfTaps_T taps,
                          const CallSite& site = CallSite::here());
    static bool namesChannel(const SignalHeader& message, const CallSite& site = CallSite::here());
    static void readLimitedPower(IOutputPowerCalculator& calculator, RauPowerInventory& inventory,
                                 const CallSite& site = CallSite::here());
    static void tracePowerInventory(const RauPowerInventory& inventory, const CallSite& site = CallSite::here());

    static const Trace m_trace;

    std::uint8_t m_numberOfChannels;
    VornipcMessageHandler& m_messageHandler;
    AdapterModel& m_adapterModel;
    PerChannel<Channel> m_channels;
};

} // namespace kro::device::vornipc
