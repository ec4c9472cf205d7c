#pragma once

#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

#include "AdapterModel.h"
#include "EquipmentDetectionMessages.h"
#include "EquipmentMaintenanceMessages.h"
#include "EquipmentMessages.h"
#include "IAcmHandler.h"
#include "IAlarmHandler.h"
#include "IDspApi.h"
#include "IHardwareConfigurationHandler.h"
#include "IRadio.h"
#include "IRadioCallback.h"
#include "IRadioCapability.h"
#include "IRlbspKroApi.h"
#include "ITrafHandler.h"
#include "InterfaceLookup.h"
#include "PerChannel.h"
#include "RadioChannel.h"
#include "RadioInventory.h"
#include "ResultCodes.h"
#include "RfLoopCapability.h"
#include "SRadioFrameItem.h"
#include "Trace.h"
#include "VornipcMessageHandler.h"

namespace kro::device::vornipc {

/// The equipment area: states of the units, which open and close the gate on outgoing messages; detection of radios and
/// what they can do; maintenance requests.
///
/// Threads: the methods for messages run on the reader thread, `onModuleInit` on the framework's, the platform's
/// callbacks on threads of the platform. The rest may be called from any thread.
class EquipmentHandler : public IRadioCallback, public IRlbspKroApi::BpmCallback {
public:
    /// What the node's software has said in its self test that it can take.
    struct AnsCapabilities {
        bool rauDetected1Capable = false;
        bool spareCapability = false; ///< kept, and read by nobody
        bool rlaprintExtCapable = false;
        bool bpmCommandCapable = false;
        bool qesMode = false;
        bool capabilitiesReceived = false; ///< a self test has been processed
    };

    /// @param channelCount 1 or 2; with any other count no channel is set up
    EquipmentHandler(unsigned channelCount, VornipcMessageHandler& messageHandler, AdapterModel& adapterModel);
    EquipmentHandler(const EquipmentHandler&) = delete;
    EquipmentHandler& operator=(const EquipmentHandler&) = delete;

    /// Withdraws the callbacks and waits for calls of them in flight.
    ~EquipmentHandler() override;

    /// Registers the receivers, then looks up the platform's interfaces and registers the callbacks with them.
    Result onModuleInit();

    // Unit states: EquipmentHandler.cpp
    void onMMUState(MMUStateIPC* message);
    void onRAUState(RAUStateIPC* message);
    void onTermState(TermStateIPC* message);
    void onVornRestarted(VornRestartedIPC* message);
    void onADSNpuDown(ADSNpuDownIPC* message);
    void onAdsClosePciReq(ADSClosePciReqIPC* request);
    void onRAULostFromAds(RAULostIPC* message);
    void radioUp(RadioChannel ct) override;
    void radioDown(RadioChannel ct) override;
    bool getRadioUp(RadioChannel ct) const;
    void setRadioUp(RadioChannel ct, bool up);

    // Detection of radios and what they can do: EquipmentHandlerDetection.cpp
    void radioCapabilitiesAvailable(RadioChannel ct) override;
    void onGetRAUCapabilityReq(GetRAUCapabilityReqIPC* request);
    void onGetRAUIndexCapabilitiesReq(GetRAUIndexCapabilitiesReqIPC* request);
    void onSetRAUIndexCapabilitiesReq(SetRAUIndexCapabilitiesReqIPC* request);
    void getAnsCapabilities(AnsCapabilities& capabilities) const;
    void setAnsCapabilities(const AnsCapabilities& capabilities);

    /// Reads the capacities of a frame format's modes.
    /// @param frameId 0 reads nothing
    /// @param capacities 30 entries, one an ACM_T from 1 on; entries that no mode has stay as they are
    /// @param filter told a frame format and the position of a mode in it; modes that it refuses are left out. Must not
    ///               be empty
    void getAcmCapacities(int frameId, int* capacities,
                          const std::function<bool(const SRadioFrameItem&, unsigned)>& filter);

    // Maintenance requests that act: EquipmentHandlerMaintenance.cpp
    void onSelftestReq(ADSSelftestReqIPC* request);
    void resetSelfTestCheckPerformed();
    void onSwStatusReq(ADSSwStatusReqIPC* request);
    void onRauStatusReq(RAUStatusReqIPC* request);
    void onRAURestartReq(RAURestartReqIPC* request);
    void onSetRAUDefaultConfigReq(SetRAUDefaultConfigReqIPC* request);
    void onSetBerAlarmThresholdReq(SetBerAlarmThresholdReqIPC* request);
    void onSetTxMaxAcmLimitReq(SetTxMaxAcmLimitReqIPC* message);
    void onGetShiftStatusReq(GetShiftStatusReqIPC* request);
    void onBpmCommandRes(BpmCommandResIPC* message);
    int rawMsgCallback(const std::vector<unsigned char>& command) override;

    // Maintenance requests that this radio does not act upon: EquipmentHandlerFixedAnswers.cpp
    void onResetBERCounters(ResetBERCountersIPC* message);
    void onSetSDCAdminStatusReq(SetSDCAdminStatusReqIPC* request);
    void onGetSDCOperStatusReq(GetSDCOperStatusReqIPC* request);
    void onDadeControlReq(DadeControlReqIPC* request);
    void onGetDadeStatusReq(GetDadeStatusReqIPC* request);
    void onSetSDCPathReq(SetSDCPathReqIPC* request);
    void onGetSDCCurrentDataReq(GetSDCCurrentDataReqIPC* request);
    void onGetSDCActualPathReq(GetSDCActualPathReqIPC* request);
    void onSetCarrierTermPreambleReq(SetCarrierTermPreambleReqIPC* request);
    void onResetInsufficientPowerResourcesErrorReq(ResetInsufficientPowerResourcesErrorReqIPC* request);
    void onNotifyCarrierStatus(NotifyCarrierStatusIPC* message);
    void onNotifyInitRAUStateProtc(NotifyInitRAUStateProtcIPC* message);

private:
    /// What the platform offers for one radio channel; looked up once, borrowed.
    struct Channel {
        PlatformInterface<IRadio> radio;
        PlatformInterface<IRadioCapability> radioCapability;
        PlatformInterface<IDspApi> dspApi;
        PlatformInterface<IAcmHandler> acmHandler;
        bool radioUp = false; ///< between radioUp and radioDown; guarded by the state lock
    };

    void registerReceivers();
    bool lookUpInterfaces();
    bool lookUpChannel(RadioChannel ct);
    bool servesChannel(RadioChannel ct) const;
    bool radioIsUp(RadioChannel ct) const;
    void restartRadio(RadioChannel ct, const CallSite& site = CallSite::here());
    void notifyRadioDetected(RadioChannel ct);
    static void traceDetectedRadio(const RauDetected1IPC& message, const RadioInventory& inventory,
                                   bool rfLoopAvailable, const CallSite& site = CallSite::here());
    void setMmuInService(bool inService, const CallSite& site = CallSite::here());

    /// @param stubbed what the trace says of the answer
    template <WireMessage Response, WireMessage Request>
    void answerStubbed(const Request& request, const char* stubbed, const CallSite& site = CallSite::here());

    void extractAnsCapabilities_(const CompatibilityCodes_T& codes);
    void handleQesMode_(const CompatibilityCodes_T& codes);
    static std::uint32_t getKROCompatibiltyCodesEH();
    static std::uint32_t getKROCompatibiltyCodesATPC();
    static std::uint32_t getKROCompatibiltyCodesPR();

    static const Trace m_trace;

    VornipcMessageHandler& m_messageHandler;
    AdapterModel& m_adapterModel;
    unsigned m_channelCount;

    PlatformInterface<IAlarmHandler> m_alarmHandler;
    PlatformInterface<ITrafHandler> m_trafficHandler;
    PlatformInterface<IHardwareConfigurationHandler> m_hardwareConfigurationHandler;
    PlatformInterface<IRlbspKroApi> m_rlbspApi;
    PerChannel<Channel> m_channels;

    std::uint32_t m_mmuState = 0; ///< last state received; used on the reader thread only

    mutable std::mutex m_stateMutex; ///< guards the radio-up flags and the capabilities; under it at most the message
                                     ///< handler's lock and the trace
    AnsCapabilities m_ansCapabilities;

    std::mutex m_detectionMutex; ///< one detection at a time; held for the whole of it, platform calls included
};

} // namespace kro::device::vornipc
