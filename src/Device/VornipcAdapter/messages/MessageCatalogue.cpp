#include "MessageCatalogue.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <sstream>
#include <streambuf>
#include <type_traits>
#include <utility>

#include "AlarmMessages.h"
#include "EquipmentDetectionMessages.h"
#include "EquipmentMaintenanceMessages.h"
#include "EquipmentMessages.h"
#include "FieldLister.h"
#include "FieldUnits.h"
#include "MessagePrinter.h"
#include "PowerControlMessages.h"
#include "ProtectionMessages.h"
#include "PsMessages.h"
#include "RemoteMibMessages.h"
#include "SoftwareUpgradeMessages.h"
#include "TestCommandMessages.h"
#include "TrafficMessages.h"
#include "archives/BigEndianInputArchives.h"
#include "archives/BinaryBigEndianOutputArchive.h"

namespace {

template <WireMessage Message>
class MessageObject final : public AnyMessage {
public:
    MessageObject()
    {
        if constexpr (std::derived_from<Message, PsSignalHeader>) {
            m_message.ps = PsKind::groupRequest;
            m_message.groupId = Message::messageId;
        }
    }

    std::string encode() const override
    {
        std::ostringstream stream;
        cereal::BinaryBigEndianOutputArchive archive(stream);
        archive(m_message);
        return stream.str();
    }

    void decode(std::string_view bytes) override
    {
        cereal::FixedSizeBigEndianInputArchive archive(bytes.data(), bytes.size());
        archive(m_message);
    }

    std::string print() const override
    {
        std::ostringstream stream;
        stream << m_message;
        return stream.str();
    }

    std::vector<MessageField> fields() override { return listFields(m_message); }

private:
    Message m_message;
};

template <WireMessage Message>
MessageDefinition message(MessageArea area, MessageDirection direction)
{
    return {messageName<Message>(),
            Message::messageId,
            area,
            direction,
            std::derived_from<Message, PsSignalHeader> ? MessageHeader::ps : MessageHeader::signal,
            wireSize<Message>,
            {},
            [] { return std::unique_ptr<AnyMessage>(std::make_unique<MessageObject<Message>>()); }};
}

/// A request of the node and the name of its answer, which has a line of its own.
template <WireMessage Request, WireMessage Answer>
MessageDefinition request(MessageArea area)
{
    MessageDefinition definition = message<Request>(area, MessageDirection::in);
    definition.answer = messageName<Answer>();
    return definition;
}

/// One line a message, by area and id. Everything that works with messages by name or id takes them from here.
std::vector<MessageDefinition> makeCatalogue()
{
    using enum MessageArea;
    using enum MessageDirection;
    return {
        message<SetFaultIPC>(alarms, both),

        message<RAULostIPC>(equipment, both),
        request<ADSSelftestReqIPC, ADSSelftestResIPC>(equipment),
        message<ADSSelftestResIPC>(equipment, out),
        request<ADSSwStatusReqIPC, ADSSwStatusResIPC>(equipment),
        message<ADSSwStatusResIPC>(equipment, out),
        message<ADSNpuDownIPC>(equipment, in),
        message<MMUStateIPC>(equipment, in),
        message<RAUStateIPC>(equipment, in),
        message<TermStateIPC>(equipment, in),
        message<RLaprintExtIPC>(equipment, out),
        request<RAURestartReqIPC, RAURestartResIPC>(equipment),
        message<RAURestartResIPC>(equipment, out),
        message<VornRestartedIPC>(equipment, in),
        request<RAUStatusReqIPC, RAUStatusResIPC>(equipment),
        message<RAUStatusResIPC>(equipment, out),
        request<SetRAUDefaultConfigReqIPC, SetRAUDefaultConfigResIPC>(equipment),
        message<SetRAUDefaultConfigResIPC>(equipment, out),
        request<ADSClosePciReqIPC, ADSClosePciResIPC>(equipment),
        message<ADSClosePciResIPC>(equipment, out),
        request<SetBerAlarmThresholdReqIPC, SetBerAlarmThresholdResIPC>(equipment),
        message<SetBerAlarmThresholdResIPC>(equipment, out),
        request<GetRAUCapabilityReqIPC, GetRAUCapabilityResIPC>(equipment),
        message<GetRAUCapabilityResIPC>(equipment, out),
        message<ResetBERCountersIPC>(equipment, in),
        request<SetSDCAdminStatusReqIPC, SetSDCAdminStatusResIPC>(equipment),
        message<SetSDCAdminStatusResIPC>(equipment, out),
        request<GetSDCOperStatusReqIPC, GetSDCOperStatusResIPC>(equipment),
        message<GetSDCOperStatusResIPC>(equipment, out),
        request<DadeControlReqIPC, DadeControlResIPC>(equipment),
        message<DadeControlResIPC>(equipment, out),
        request<GetDadeStatusReqIPC, GetDadeStatusResIPC>(equipment),
        message<GetDadeStatusResIPC>(equipment, out),
        request<SetSDCPathReqIPC, SetSDCPathResIPC>(equipment),
        message<SetSDCPathResIPC>(equipment, out),
        request<GetSDCCurrentDataReqIPC, GetSDCCurrentDataResIPC>(equipment),
        message<GetSDCCurrentDataResIPC>(equipment, out),
        request<GetSDCActualPathReqIPC, GetSDCActualPathResIPC>(equipment),
        message<GetSDCActualPathResIPC>(equipment, out),
        message<SetTxMaxAcmLimitReqIPC>(equipment, in),
        request<SetCarrierTermPreambleReqIPC, SetCarrierTermPreambleResIPC>(equipment),
        message<SetCarrierTermPreambleResIPC>(equipment, out),
        request<GetRAUIndexCapabilitiesReqIPC, GetRAUIndexCapabilitiesResIPC>(equipment),
        message<GetRAUIndexCapabilitiesResIPC>(equipment, out),
        request<SetRAUIndexCapabilitiesReqIPC, SetRAUIndexCapabilitiesResIPC>(equipment),
        message<SetRAUIndexCapabilitiesResIPC>(equipment, out),
        request<ResetInsufficientPowerResourcesErrorReqIPC, ResetInsufficientPowerResourcesErrorResIPC>(equipment),
        message<ResetInsufficientPowerResourcesErrorResIPC>(equipment, out),
        request<GetShiftStatusReqIPC, GetShiftStatusResIPC>(equipment),
        message<GetShiftStatusResIPC>(equipment, out),
        message<RauDetected1IPC>(equipment, out),
        message<NotifyCarrierStatusIPC>(equipment, in),
        message<NotifyInitRAUStateProtcIPC>(equipment, in),
        message<BpmCommandReqIPC>(equipment, out),
        message<BpmCommandResIPC>(equipment, in),

        request<ConfigureAtpcFallbackReqIPC, ConfigureAtpcFallbackResIPC>(power),
        message<ConfigureAtpcFallbackResIPC>(power, out),
        request<ActivateAtpcFallbackReqIPC, ActivateAtpcFallbackResIPC>(power),
        message<ActivateAtpcFallbackResIPC>(power, out),
        request<GetRauPowerInventoryReqIPC, GetRauPowerInventoryResIPC>(power),
        message<GetRauPowerInventoryResIPC>(power, out),
        request<GetRfPowerReqIPC, GetRfPowerResIPC>(power),
        message<GetRfPowerResIPC>(power, out),
        request<SetRfPowerReqIPC, SetRfPowerResIPC>(power),
        message<SetRfPowerResIPC>(power, out),
        message<SetRfPowerV2ResIPC>(power, out),
        message<SetRfPowerV3ResIPC>(power, out),
        request<FEPowerLimitationReqIPC, FEPowerLimitationResIPC>(power),
        message<FEPowerLimitationResIPC>(power, out),
        request<SetRfPowerV2ReqIPC, SetRfPowerV2ResIPC>(power),
        request<SetRfPowerV3ReqIPC, SetRfPowerV3ResIPC>(power),

        message<HccRxIPC>(mib, out),
        message<HccTxIPC>(mib, in),
        message<HopRxIPC>(mib, out),
        message<HopTxIPC>(mib, in),

        message<GetSwBoardReqIPC>(upgrade, in),
        message<CodePacketStartIPC>(upgrade, in),
        message<CodePacketIPC>(upgrade, in),
        message<GetSwBoardResIPC>(upgrade, out),
        message<TestPassiveBankIPC>(upgrade, in),
        message<CheckRestartTypeIPC>(upgrade, in),
        message<DWLTestNotOkIPC>(upgrade, in),
        message<SetActiveBankIPC>(upgrade, in),
        message<ResetTestPassiveBankIPC>(upgrade, in),
        message<CodePacketStartExtIPC>(upgrade, in),

        request<GetIfOperStatusReqIPC, GetIfOperStatusResIPC>(traffic),
        message<GetIfOperStatusResIPC>(traffic, out),
        message<SetIfAdminStatusIPC>(traffic, in),
        request<SetIfLoopStatusReqIPC, SetIfLoopStatusResIPC>(traffic),
        message<SetXfRFIfStatusResIPC>(traffic, out),
        message<SetIfLoopStatusResIPC>(traffic, out),
        request<GetRFTxOperStatusReqIPC, GetRFTxOperStatusResIPC>(traffic),
        message<GetRFTxOperStatusResIPC>(traffic, out),
        request<SetXfRFIfStatusReqIPC, SetXfRFIfStatusResIPC>(traffic),
        message<SetMLMResIPC>(traffic, out),
        request<SetMLMReqIPC, SetMLMResIPC>(traffic),

        message<TestCommandRxIPC>(testcommand, in),
        message<TestCommandTxIPC>(testcommand, out),

        request<SetSwitchModeReqIPC, SetSwitchModeResIPC>(protection),
        message<SetSwitchModeResIPC>(protection, out),
        request<SetActiveUnitReqIPC, SetActiveUnitResIPC>(protection),
        message<SetActiveUnitResIPC>(protection, out),
        request<SetRevertiveTxReqIPC, SetRevertiveTxResIPC>(protection),
        message<SetRevertiveTxResIPC>(protection, out),
        request<SetRevertiveRxReqIPC, SetRevertiveRxResIPC>(protection),
        message<SetRevertiveRxResIPC>(protection, out),
        request<GetActiveRadioReqIPC, GetActiveRadioResIPC>(protection),
        message<GetActiveRadioResIPC>(protection, out),
        request<GetWorkingRxReqIPC, GetWorkingRxResIPC>(protection),
        message<GetWorkingRxResIPC>(protection, out),
        request<SetTaSwitchReqIPC, SetTaSwitchResIPC>(protection),
        message<SetTaSwitchResIPC>(protection, out),
        request<SetActiveRadioReqIPC, SetActiveRadioResIPC>(protection),
        message<SetActiveRadioResIPC>(protection, out),
        request<SetWorkingRxReqIPC, SetWorkingRxResIPC>(protection),
        message<SetWorkingRxResIPC>(protection, out),
        message<NotifyActiveRadioSwIPC>(protection, out),
        message<NotifyWorkingRxSwIPC>(protection, out),
        message<SetSpontSwNotReqIPC>(protection, in),
        request<ResetTxSwOverErrReqIPC, ResetTxSwOverErrResIPC>(protection),
        message<ResetTxSwOverErrResIPC>(protection, out),
        request<ProtectionModeReqIPC, ProtectionModeResIPC>(protection),
        message<ProtectionModeResIPC>(protection, out),
        request<SetRFInputPowerThresholdReqIPC, SetRFInputPowerThresholdResIPC>(protection),
        message<SetRFInputPowerThresholdResIPC>(protection, out),
        message<CompanionMMUStatusIPC>(protection, in),
        request<GetActiveUnitReqIPC, GetActiveUnitResIPC>(protection),
        message<GetActiveUnitResIPC>(protection, out),
        request<SetActiveRadioRemoteReqIPC, SetActiveRadioRemoteResIPC>(protection),
        message<SetActiveRadioRemoteResIPC>(protection, out),
        request<GetTaSwitchReqIPC, GetTaSwitchResIPC>(protection),
        message<GetTaSwitchResIPC>(protection, out),
        request<TxSwitchOverConfigurationReqIPC, TxSwitchOverConfigurationResIPC>(protection),
        message<TxSwitchOverConfigurationResIPC>(protection, out),
        message<NotifyProtectionModeOperStatusIPC>(protection, out),
        message<GetProtectionModeOperStatusReqIPC>(protection, in),

        message<HandleXfRlWanIfEntryGroupReqIPC>(ps, in),
        request<HandleContinuousWaveGroupReqIPC, HandleContinuousWaveGroupResIPC>(ps),
        message<HandleContinuousWaveGroupResIPC>(ps, out),
    };
}

template <class Function>
auto withIntegerOf(FieldType type, Function function)
{
    switch (type) {
    case FieldType::u8:
        return function(std::uint8_t{});
    case FieldType::i8:
        return function(std::int8_t{});
    case FieldType::u16:
        return function(std::uint16_t{});
    case FieldType::i16:
        return function(std::int16_t{});
    case FieldType::u32:
        return function(std::uint32_t{});
    case FieldType::i32:
        break;
    }
    return function(std::int32_t{});
}

struct AreaName {
    MessageArea area;
    std::string_view name;
};

constexpr AreaName areaNames[] = {
    {MessageArea::alarms, "alarms"},
    {MessageArea::equipment, "equipment"},
    {MessageArea::power, "power"},
    {MessageArea::mib, "mib"},
    {MessageArea::upgrade, "upgrade"},
    {MessageArea::traffic, "traffic"},
    {MessageArea::testcommand, "testcommand"},
    {MessageArea::protection, "protection"},
    {MessageArea::ps, "ps"},
};

} // namespace

std::string_view toString(MessageArea area)
{
    return std::find_if(std::begin(areaNames), std::end(areaNames), [area](const auto& e) { return e.area == area; })
        ->name;
}

std::optional<MessageArea> messageAreaByName(std::string_view name)
{
    const auto* const entry =
        std::find_if(std::begin(areaNames), std::end(areaNames), [name](const auto& e) { return e.name == name; });
    return entry != std::end(areaNames) ? std::optional(entry->area) : std::nullopt;
}

std::string_view toString(MessageDirection direction)
{
    switch (direction) {
    case MessageDirection::in:
        return "in";
    case MessageDirection::out:
        return "out";
    case MessageDirection::both:
        break;
    }
    return "both";
}

std::string_view toString(FieldType type)
{
    return withIntegerOf(type, [](auto integer) -> std::string_view {
        using Integer = decltype(integer);
        if constexpr (sizeof(Integer) == 1) {
            return std::is_signed_v<Integer> ? "i8" : "u8";
        } else if constexpr (sizeof(Integer) == 2) {
            return std::is_signed_v<Integer> ? "i16" : "u16";
        } else {
            return std::is_signed_v<Integer> ? "i32" : "u32";
        }
    });
}

std::size_t widthOf(FieldType type)
{
    return withIntegerOf(type, [](auto integer) { return sizeof integer; });
}

MessageField::MessageField(std::string name, FieldType type, std::size_t offset, std::optional<std::size_t> count,
                           void* data)
    : m_name(std::move(name)), m_type(type), m_offset(offset), m_count(count), m_data(data)
{
}

std::string_view MessageField::unit() const
{
    return unitOfField(m_name);
}

std::int64_t MessageField::minimum() const
{
    return withIntegerOf(
        m_type, [](auto integer) { return static_cast<std::int64_t>(std::numeric_limits<decltype(integer)>::min()); });
}

std::int64_t MessageField::maximum() const
{
    return withIntegerOf(
        m_type, [](auto integer) { return static_cast<std::int64_t>(std::numeric_limits<decltype(integer)>::max()); });
}

std::int64_t MessageField::value(std::size_t index) const
{
    return withIntegerOf(m_type, [this, index](auto integer) {
        std::memcpy(&integer, static_cast<const char*>(m_data) + index * sizeof integer, sizeof integer);
        return static_cast<std::int64_t>(integer);
    });
}

void MessageField::set(std::int64_t value, std::size_t index) const
{
    withIntegerOf(m_type, [this, value, index](auto integer) {
        integer = static_cast<decltype(integer)>(value);
        std::memcpy(static_cast<char*>(m_data) + index * sizeof integer, &integer, sizeof integer);
    });
}

const std::vector<MessageDefinition>& messageCatalogue()
{
    static const std::vector<MessageDefinition> catalogue = makeCatalogue();
    return catalogue;
}

const MessageDefinition* findMessage(std::string_view name)
{
    const auto& catalogue = messageCatalogue();
    const auto entry =
        std::find_if(catalogue.begin(), catalogue.end(), [name](const auto& e) { return e.name == name; });
    return entry != catalogue.end() ? &*entry : nullptr;
}

const MessageDefinition* findMessage(std::uint32_t id, MessageHeader header, MessageDirection direction)
{
    const auto& catalogue = messageCatalogue();
    const auto entry = std::find_if(catalogue.begin(), catalogue.end(), [=](const MessageDefinition& e) {
        return e.id == id && e.header == header && (e.direction == direction || e.direction == MessageDirection::both);
    });
    return entry != catalogue.end() ? &*entry : nullptr;
}
