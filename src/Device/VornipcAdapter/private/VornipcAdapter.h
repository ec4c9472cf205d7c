#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "IVornipcAdapter.h"
#include "ModuleInterface.h"

class ITiDisableModulation;

namespace kro::device::vornipc {

class AdapterModel;
class AlarmSignalHandler;
class DevPsRlpsHandler;
class EquipmentHandler;
class PowerControlHandler;
class ProtectionHandler;
class RemoteMibHandler;
class SoftwareUpgradeHandler;
class TestCommandHandler;
class TrafficHandler;
class VornipcMessageHandler;

/// The module: owns the link to the node, the model of the radio channels and the nine handlers of the areas, and takes part
/// in the framework's module initialisation. Created, initialised and destroyed on the framework's thread.
class VornipcAdapter : public ModuleInterface, public IVornipcAdapter {
public:
    /// Creates everything and registers with the module manager. With an MMU address messages may arrive from the middle
    /// of construction on; those that find no receiver yet are logged and dropped.
    /// @param numberOfChannels radio channels of the unit; 1 and 2 are served
    /// @param disableModulation borrowed
    /// @param mmuAddress empty: no link to the node
    VornipcAdapter(unsigned char numberOfChannels, ITiDisableModulation& disableModulation,
                   const std::string& mmuAddress);
    VornipcAdapter(const VornipcAdapter&) = delete;
    VornipcAdapter& operator=(const VornipcAdapter&) = delete;

    /// Ends dispatching, then the handlers in reverse order of their creation, the model, the link.
    ~VornipcAdapter() override;

    /// Lets every part register its receivers and look up its interfaces. A part that misses an interface logs it and
    /// refuses what needs it from then on.
    /// @return 0
    int onModuleInit() override;

    ModuleInterface& module() override { return *this; }
    VornipcLinkFacts linkFacts() const override;
    void sendToNpuSyslog(const std::string& text) override;
    void sendToNpuSyslog(const std::string& text, RadioChannel ct) override;
    void setOutgoingIpcMessagesAllowed(bool allowed) override;
    void notifyProtectionModeOperStatus(EChannelSelector channel, std::uint32_t protectionMode) override;
    void notifyActiveRadioSw(EChannelSelector channel, std::uint32_t activeRadio) override;
    void notifyWorkingRxSw(EChannelSelector channel, std::uint32_t workingRx) override;
    void notifyHopRx(EChannelSelector channel, int length, const std::uint8_t* data) override;
    void notifyHccRx(EChannelSelector channel, int wanOffset, std::uint32_t hccHandler, int length,
                     const std::uint8_t* data) override;
    void notifyTestCommandTx(EChannelSelector channel, const VornipcTestCommandFrame& frame) override;
    void enableTimeStamp(bool on) override;
    bool setFrameFormat(int radioChannelIndex, int radioFrameId, std::int32_t minAcm, std::int32_t maxAcm,
                        std::int32_t sec) override;
    void getAcmCapacities(int frameId, int* capacities,
                          const std::function<bool(const SRadioFrameItem&, unsigned)>& filter) override;
    void resetSelfTestCheckPerformed() override;
    void resetSpontaneousMessageSequenceNumber() override;

private:
    const std::uint8_t m_numberOfChannels;

    // In the order of creation; destroyed in reverse.
    std::unique_ptr<VornipcMessageHandler> m_messageHandler;
    std::unique_ptr<AdapterModel> m_adapterModel;
    std::unique_ptr<EquipmentHandler> m_equipmentHandler;
    std::unique_ptr<RemoteMibHandler> m_remoteMibHandler;
    std::unique_ptr<SoftwareUpgradeHandler> m_softwareUpgradeHandler;
    std::unique_ptr<TestCommandHandler> m_testCommandHandler;
    std::unique_ptr<TrafficHandler> m_trafficHandler;
    std::unique_ptr<ProtectionHandler> m_protectionHandler;
    std::unique_ptr<PowerControlHandler> m_powerControlHandler;
    std::unique_ptr<AlarmSignalHandler> m_alarmSignalHandler;
    std::unique_ptr<DevPsRlpsHandler> m_devPsRlpsHandler;
};

} // namespace kro::device::vornipc
