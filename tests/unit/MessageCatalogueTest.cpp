#include "MessageCatalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cereal/cereal.hpp>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "AlarmMessages.h"
#include "FieldUnits.h"

namespace {

using enum MessageArea;
using enum MessageDirection;

struct ProtocolRow {
    std::uint32_t id;
    std::size_t size; ///< header and body
    MessageDirection direction;
    const char* name;
    const char* answer;
};

// clang-format off
/// Every message by area and id. Sizes are added up by hand from the widths of the fields.
const ProtocolRow protocol[] = {
    {0x100002,    40, both, "SetFaultIPC", ""},

    {0x200002,    24, both, "RAULostIPC", ""},
    {0x200004,    76, in,   "ADSSelftestReqIPC", "ADSSelftestResIPC"},
    {0x200005,    76, out,  "ADSSelftestResIPC", ""},
    {0x200006,    24, in,   "ADSSwStatusReqIPC", "ADSSwStatusResIPC"},
    {0x200007,    24, out,  "ADSSwStatusResIPC", ""},
    {0x200008,    24, in,   "ADSNpuDownIPC", ""},
    {0x200009,    28, in,   "MMUStateIPC", ""},
    {0x200010,    28, in,   "RAUStateIPC", ""},
    {0x200011,    28, in,   "TermStateIPC", ""},
    {0x200012,   192, out,  "RLaprintExtIPC", ""},
    {0x200017,    28, in,   "RAURestartReqIPC", "RAURestartResIPC"},
    {0x200018,    28, out,  "RAURestartResIPC", ""},
    {0x200019,    24, in,   "VornRestartedIPC", ""},
    {0x200020,    24, in,   "RAUStatusReqIPC", "RAUStatusResIPC"},
    {0x200021,    28, out,  "RAUStatusResIPC", ""},
    {0x200022,    24, in,   "SetRAUDefaultConfigReqIPC", "SetRAUDefaultConfigResIPC"},
    {0x200023,    28, out,  "SetRAUDefaultConfigResIPC", ""},
    {0x200039,    24, in,   "ADSClosePciReqIPC", "ADSClosePciResIPC"},
    {0x200040,    28, out,  "ADSClosePciResIPC", ""},
    {0x200048,    28, in,   "SetBerAlarmThresholdReqIPC", "SetBerAlarmThresholdResIPC"},
    {0x200049,    28, out,  "SetBerAlarmThresholdResIPC", ""},
    {0x200056,    72, in,   "GetRAUCapabilityReqIPC", "GetRAUCapabilityResIPC"},
    {0x200057,    72, out,  "GetRAUCapabilityResIPC", ""},
    {0x200069,    24, in,   "ResetBERCountersIPC", ""},
    {0x200078,    28, in,   "SetSDCAdminStatusReqIPC", "SetSDCAdminStatusResIPC"},
    {0x200079,    28, out,  "SetSDCAdminStatusResIPC", ""},
    {0x200080,    24, in,   "GetSDCOperStatusReqIPC", "GetSDCOperStatusResIPC"},
    {0x200081,    28, out,  "GetSDCOperStatusResIPC", ""},
    {0x200082,    28, in,   "DadeControlReqIPC", "DadeControlResIPC"},
    {0x200083,    28, out,  "DadeControlResIPC", ""},
    {0x200084,    24, in,   "GetDadeStatusReqIPC", "GetDadeStatusResIPC"},
    {0x200085,    28, out,  "GetDadeStatusResIPC", ""},
    {0x200086,    28, in,   "SetSDCPathReqIPC", "SetSDCPathResIPC"},
    {0x200087,    28, out,  "SetSDCPathResIPC", ""},
    {0x200088,    24, in,   "GetSDCCurrentDataReqIPC", "GetSDCCurrentDataResIPC"},
    {0x200089,    36, out,  "GetSDCCurrentDataResIPC", ""},
    {0x200090,    24, in,   "GetSDCActualPathReqIPC", "GetSDCActualPathResIPC"},
    {0x200091,    28, out,  "GetSDCActualPathResIPC", ""},
    {0x200116,    28, in,   "SetTxMaxAcmLimitReqIPC", ""},
    {0x200121,    28, in,   "SetCarrierTermPreambleReqIPC", "SetCarrierTermPreambleResIPC"},
    {0x200122,    28, out,  "SetCarrierTermPreambleResIPC", ""},
    {0x200123,    24, in,   "GetRAUIndexCapabilitiesReqIPC", "GetRAUIndexCapabilitiesResIPC"},
    {0x200124,   432, out,  "GetRAUIndexCapabilitiesResIPC", ""},
    {0x200125,    28, in,   "SetRAUIndexCapabilitiesReqIPC", "SetRAUIndexCapabilitiesResIPC"},
    {0x200126,    28, out,  "SetRAUIndexCapabilitiesResIPC", ""},
    {0x200127,    28, in,   "ResetInsufficientPowerResourcesErrorReqIPC", "ResetInsufficientPowerResourcesErrorResIPC"},
    {0x200128,    28, out,  "ResetInsufficientPowerResourcesErrorResIPC", ""},
    {0x200129,    24, in,   "GetShiftStatusReqIPC", "GetShiftStatusResIPC"},
    {0x200130,    28, out,  "GetShiftStatusResIPC", ""},
    {0x200131,   216, out,  "RauDetected1IPC", ""},
    {0x200132,    44, in,   "NotifyCarrierStatusIPC", ""},
    {0x200133,    28, in,   "NotifyInitRAUStateProtcIPC", ""},
    {0x200134,   144, out,  "BpmCommandReqIPC", ""},
    {0x200135,   264, in,   "BpmCommandResIPC", ""},

    {0x300017,    32, in,   "ConfigureAtpcFallbackReqIPC", "ConfigureAtpcFallbackResIPC"},
    {0x300018,    28, out,  "ConfigureAtpcFallbackResIPC", ""},
    {0x300019,    28, in,   "ActivateAtpcFallbackReqIPC", "ActivateAtpcFallbackResIPC"},
    {0x300020,    28, out,  "ActivateAtpcFallbackResIPC", ""},
    {0x300021,    24, in,   "GetRauPowerInventoryReqIPC", "GetRauPowerInventoryResIPC"},
    {0x300022,    88, out,  "GetRauPowerInventoryResIPC", ""},
    {0x300023,    24, in,   "GetRfPowerReqIPC", "GetRfPowerResIPC"},
    {0x300024,    32, out,  "GetRfPowerResIPC", ""},
    {0x300025,    40, in,   "SetRfPowerReqIPC", "SetRfPowerResIPC"},
    {0x300026,    28, out,  "SetRfPowerResIPC", ""},
    {0x300026,    28, out,  "SetRfPowerV2ResIPC", ""},
    {0x300026,    28, out,  "SetRfPowerV3ResIPC", ""},
    {0x300028,    64, in,   "FEPowerLimitationReqIPC", "FEPowerLimitationResIPC"},
    {0x300029,    28, out,  "FEPowerLimitationResIPC", ""},
    {0x300030,    44, in,   "SetRfPowerV2ReqIPC", "SetRfPowerV2ResIPC"},
    {0x300031,    48, in,   "SetRfPowerV3ReqIPC", "SetRfPowerV3ResIPC"},

    {0x500001,  1476, out,  "HccRxIPC", ""},
    {0x500002,  1476, in,   "HccTxIPC", ""},
    {0x500101,   284, out,  "HopRxIPC", ""},
    {0x500102,   284, in,   "HopTxIPC", ""},

    {0x600001,    28, in,   "GetSwBoardReqIPC", ""},
    {0x600002,  1520, in,   "CodePacketStartIPC", ""},
    {0x600003,  1072, in,   "CodePacketIPC", ""},
    {0x600004,   160, out,  "GetSwBoardResIPC", ""},
    {0x600007,    28, in,   "TestPassiveBankIPC", ""},
    {0x600008,    28, in,   "CheckRestartTypeIPC", ""},
    {0x600009,    28, in,   "DWLTestNotOkIPC", ""},
    {0x600010,    28, in,   "SetActiveBankIPC", ""},
    {0x600014,    28, in,   "ResetTestPassiveBankIPC", ""},
    {0x600016,  1440, in,   "CodePacketStartExtIPC", ""},

    {0x700001,    28, in,   "GetIfOperStatusReqIPC", "GetIfOperStatusResIPC"},
    {0x700002,    32, out,  "GetIfOperStatusResIPC", ""},
    {0x700003,    32, in,   "SetIfAdminStatusIPC", ""},
    {0x700007,    28, in,   "SetIfLoopStatusReqIPC", "SetIfLoopStatusResIPC"},
    {0x700022,    28, out,  "SetXfRFIfStatusResIPC", ""},
    {0x700026,    28, out,  "SetIfLoopStatusResIPC", ""},
    {0x700027,    24, in,   "GetRFTxOperStatusReqIPC", "GetRFTxOperStatusResIPC"},
    {0x700028,    28, out,  "GetRFTxOperStatusResIPC", ""},
    {0x700066,    40, in,   "SetXfRFIfStatusReqIPC", "SetXfRFIfStatusResIPC"},
    {0x700067,    28, out,  "SetMLMResIPC", ""},
    {0x700068,    28, in,   "SetMLMReqIPC", "SetMLMResIPC"},

    {0x800001,   612, in,   "TestCommandRxIPC", ""},
    {0x800002,   612, out,  "TestCommandTxIPC", ""},

    {0x1000001,   28, in,   "SetSwitchModeReqIPC", "SetSwitchModeResIPC"},
    {0x1000002,   28, out,  "SetSwitchModeResIPC", ""},
    {0x1000003,   28, in,   "SetActiveUnitReqIPC", "SetActiveUnitResIPC"},
    {0x1000004,   28, out,  "SetActiveUnitResIPC", ""},
    {0x1000005,   28, in,   "SetRevertiveTxReqIPC", "SetRevertiveTxResIPC"},
    {0x1000006,   28, out,  "SetRevertiveTxResIPC", ""},
    {0x1000007,   28, in,   "SetRevertiveRxReqIPC", "SetRevertiveRxResIPC"},
    {0x1000008,   28, out,  "SetRevertiveRxResIPC", ""},
    {0x1000009,   24, in,   "GetActiveRadioReqIPC", "GetActiveRadioResIPC"},
    {0x1000010,   28, out,  "GetActiveRadioResIPC", ""},
    {0x1000011,   24, in,   "GetWorkingRxReqIPC", "GetWorkingRxResIPC"},
    {0x1000012,   28, out,  "GetWorkingRxResIPC", ""},
    {0x1000013,   28, in,   "SetTaSwitchReqIPC", "SetTaSwitchResIPC"},
    {0x1000014,   28, out,  "SetTaSwitchResIPC", ""},
    {0x1000015,   28, in,   "SetActiveRadioReqIPC", "SetActiveRadioResIPC"},
    {0x1000016,   28, out,  "SetActiveRadioResIPC", ""},
    {0x1000017,   28, in,   "SetWorkingRxReqIPC", "SetWorkingRxResIPC"},
    {0x1000018,   28, out,  "SetWorkingRxResIPC", ""},
    {0x1000019,   28, out,  "NotifyActiveRadioSwIPC", ""},
    {0x1000020,   28, out,  "NotifyWorkingRxSwIPC", ""},
    {0x1000021,   28, in,   "SetSpontSwNotReqIPC", ""},
    {0x1000022,   24, in,   "ResetTxSwOverErrReqIPC", "ResetTxSwOverErrResIPC"},
    {0x1000023,   28, out,  "ResetTxSwOverErrResIPC", ""},
    {0x1000024,   28, in,   "ProtectionModeReqIPC", "ProtectionModeResIPC"},
    {0x1000025,   28, out,  "ProtectionModeResIPC", ""},
    {0x1000026,   28, in,   "SetRFInputPowerThresholdReqIPC", "SetRFInputPowerThresholdResIPC"},
    {0x1000027,   28, out,  "SetRFInputPowerThresholdResIPC", ""},
    {0x1000028,   28, in,   "CompanionMMUStatusIPC", ""},
    {0x1000029,   24, in,   "GetActiveUnitReqIPC", "GetActiveUnitResIPC"},
    {0x1000030,   28, out,  "GetActiveUnitResIPC", ""},
    {0x1000031,   28, in,   "SetActiveRadioRemoteReqIPC", "SetActiveRadioRemoteResIPC"},
    {0x1000032,   28, out,  "SetActiveRadioRemoteResIPC", ""},
    {0x1000036,   24, in,   "GetTaSwitchReqIPC", "GetTaSwitchResIPC"},
    {0x1000037,   28, out,  "GetTaSwitchResIPC", ""},
    {0x1000039,   28, in,   "TxSwitchOverConfigurationReqIPC", "TxSwitchOverConfigurationResIPC"},
    {0x1000040,   28, out,  "TxSwitchOverConfigurationResIPC", ""},
    {0x1000043,   28, out,  "NotifyProtectionModeOperStatusIPC", ""},
    {0x1000044,   24, in,   "GetProtectionModeOperStatusReqIPC", ""},

    {8409,        32, in,   "HandleXfRlWanIfEntryGroupReqIPC", ""},
    {8434,        36, in,   "HandleContinuousWaveGroupReqIPC", "HandleContinuousWaveGroupResIPC"},
    {8434,        36, out,  "HandleContinuousWaveGroupResIPC", ""},
};
// clang-format on

struct AreaRow {
    std::uint32_t upperHalf;
    MessageArea area;
    const char* name;
};

/// The upper half of an id names the area; the groups of the PS device have small numbers.
const AreaRow areasById[] = {
    {0x00, ps, "ps"},
    {0x10, alarms, "alarms"},
    {0x20, equipment, "equipment"},
    {0x30, power, "power"},
    {0x50, mib, "mib"},
    {0x60, upgrade, "upgrade"},
    {0x70, traffic, "traffic"},
    {0x80, testcommand, "testcommand"},
    {0x100, protection, "protection"},
};

const AreaRow& areaRowOf(std::uint32_t id)
{
    return *std::find_if(std::begin(areasById), std::end(areasById),
                         [id](const AreaRow& row) { return row.upperHalf == id >> 16U; });
}

const MessageDefinition& definitionOf(const std::string& name)
{
    const MessageDefinition* const definition = findMessage(name);
    if (definition == nullptr) {
        throw std::runtime_error("no message " + name + " in the catalogue");
    }
    return *definition;
}

const MessageField& fieldOf(const std::vector<MessageField>& fields, const std::string& name)
{
    const auto field = std::find_if(fields.begin(), fields.end(), [&](const auto& f) { return f.name() == name; });
    if (field == fields.end()) {
        throw std::runtime_error("no field " + name);
    }
    return *field;
}

/// Any value that fits the field, both ends of its range included.
std::int64_t randomValue(std::mt19937& engine, const MessageField& field)
{
    const auto values = static_cast<std::uint64_t>(field.maximum() - field.minimum()) + 1;
    return field.minimum() + static_cast<std::int64_t>(engine() % values);
}

void fillRandomly(std::mt19937& engine, const std::vector<MessageField>& fields)
{
    for (const MessageField& field : fields) {
        for (std::size_t i = 0; i < field.elements(); ++i) {
            field.set(randomValue(engine, field), i);
        }
    }
}

/// The bytes that the protocol wants: each value big-endian at its offset.
std::string expectedBytes(const std::vector<MessageField>& fields, std::size_t size)
{
    std::string bytes(size, '\x55');
    for (const MessageField& field : fields) {
        const std::size_t width = widthOf(field.type());
        for (std::size_t i = 0; i < field.elements(); ++i) {
            for (std::size_t byte = 0; byte < width; ++byte) {
                bytes.at(field.offset() + i * width + byte) =
                    static_cast<char>(field.value(i) >> (8 * (width - 1 - byte)));
            }
        }
    }
    return bytes;
}

/// The object of a printed message that holds its fields.
nlohmann::ordered_json printedFields(const AnyMessage& message, const MessageDefinition& definition)
{
    const auto printed = nlohmann::ordered_json::parse(message.print());
    if (definition.header == MessageHeader::ps) {
        EXPECT_EQ(printed.at("Id"), definition.id);
        return printed.at(std::to_string(definition.name.size()) + definition.name);
    }
    EXPECT_EQ(printed.at("id"), definition.id);
    EXPECT_EQ(printed.at("name"), definition.name);
    return printed.at("data");
}

/// A value in the print, by the field's name and its place in an array.
std::int64_t printedValue(const nlohmann::ordered_json& printed, const MessageField& field, std::size_t index)
{
    std::string path = "/" + field.name();
    std::replace(path.begin(), path.end(), '.', '/');
    if (field.count()) {
        path += "/value" + std::to_string(index);
    }
    return printed.at(nlohmann::ordered_json::json_pointer(path)).get<std::int64_t>();
}

} // namespace

TEST(MessageCatalogue, HoldsEveryMessageOfTheProtocolByAreaAndId)
{
    const auto& catalogue = messageCatalogue();
    ASSERT_EQ(catalogue.size(), std::size(protocol));
    for (std::size_t i = 0; i < catalogue.size(); ++i) {
        const MessageDefinition& definition = catalogue[i];
        const ProtocolRow& row = protocol[i];
        SCOPED_TRACE(row.name);
        EXPECT_EQ(definition.name, row.name);
        EXPECT_EQ(definition.id, row.id);
        EXPECT_EQ(definition.size, row.size);
        EXPECT_EQ(definition.direction, row.direction);
        EXPECT_EQ(definition.area, areaRowOf(row.id).area);
        EXPECT_EQ(definition.header, areaRowOf(row.id).area == ps ? MessageHeader::ps : MessageHeader::signal);
        EXPECT_EQ(definition.answer, row.answer);
    }
}

TEST(MessageCatalogue, AnswersAreMessagesOfTheRadioInTheSameArea)
{
    for (const MessageDefinition& request : messageCatalogue()) {
        if (!request.answer.empty()) {
            const MessageDefinition& answer = definitionOf(request.answer);
            EXPECT_EQ(answer.direction, out) << request.name;
            EXPECT_EQ(answer.area, request.area) << request.name;
        }
    }
}

TEST(MessageCatalogue, OnlyTheAnswersToTheSetPowerRequestsShareAnId)
{
    std::map<std::pair<std::uint32_t, MessageDirection>, std::vector<std::string>> names;
    for (const MessageDefinition& definition : messageCatalogue()) {
        for (const MessageDirection direction : {in, out}) {
            if (definition.direction == direction || definition.direction == both) {
                auto& sharing = names[{definition.id, direction}];
                sharing.push_back(definition.name);
                EXPECT_EQ(findMessage(definition.id, definition.header, direction)->name, sharing.front());
            }
        }
    }
    for (const auto& [key, sharing] : names) {
        if (key.first == 0x300026) {
            EXPECT_EQ(sharing,
                      (std::vector<std::string>{"SetRfPowerResIPC", "SetRfPowerV2ResIPC", "SetRfPowerV3ResIPC"}));
        } else {
            EXPECT_EQ(sharing.size(), 1U) << sharing.front();
        }
    }
}

TEST(MessageCatalogue, FindsNothingForUnknownNamesAndIds)
{
    EXPECT_EQ(findMessage("SetFaultIpc"), nullptr);
    EXPECT_EQ(findMessage(""), nullptr);
    EXPECT_EQ(findMessage(0x200002, MessageHeader::ps, in), nullptr);
    EXPECT_EQ(findMessage(8434, MessageHeader::signal, in), nullptr);
    EXPECT_EQ(findMessage(0x300025, MessageHeader::signal, out), nullptr) << "a request";
    EXPECT_EQ(messageAreaByName("Power"), std::nullopt);
    for (const AreaRow& row : areasById) {
        EXPECT_EQ(toString(row.area), row.name);
        EXPECT_EQ(messageAreaByName(row.name), row.area);
    }
}

TEST(MessageCatalogue, EveryMessageTravelsAndPrintsWithRandomBodies)
{
    std::mt19937 engine(20250117);
    for (const MessageDefinition& definition : messageCatalogue()) {
        SCOPED_TRACE(definition.name);
        const auto sent = definition.create();
        const auto fields = sent->fields();
        fillRandomly(engine, fields);

        std::size_t end = 0;
        for (const MessageField& field : fields) {
            EXPECT_EQ(field.offset(), end) << field.name();
            end += field.size();
        }
        ASSERT_EQ(end, definition.size);

        const std::string bytes = sent->encode();
        EXPECT_EQ(bytes, expectedBytes(fields, definition.size));

        const auto received = definition.create();
        received->decode(bytes + "more");
        EXPECT_EQ(received->encode(), bytes);
        EXPECT_THROW(definition.create()->decode(std::string_view(bytes).substr(0, bytes.size() - 1)),
                     cereal::Exception);

        const auto printed = printedFields(*received, definition);
        for (const MessageField& field : fields) {
            for (std::size_t i = 0; i < field.elements(); ++i) {
                ASSERT_EQ(printedValue(printed, field, i), field.value(i)) << field.name() << " " << i;
            }
        }
    }
}

TEST(MessageCatalogue, FreshMessagesAreZeroButForAFewFields)
{
    const std::map<std::string, std::map<std::string, std::int64_t>> presets = {
        {"GetIfOperStatusResIPC", {{"eIfOperStatus", 4}}},
        {"GetSwBoardResIPC", {{"tBoardSwRevisionData.passiveValidity", 1}}},
        {"HandleContinuousWaveGroupReqIPC", {{"PsSignalHeader.ps", 0x10}, {"PsSignalHeader.groupId", 8434}}},
        {"HandleContinuousWaveGroupResIPC", {{"PsSignalHeader.ps", 0x10}, {"PsSignalHeader.groupId", 8434}}},
        {"HandleXfRlWanIfEntryGroupReqIPC", {{"PsSignalHeader.ps", 0x10}, {"PsSignalHeader.groupId", 8409}}},
    };
    for (const MessageDefinition& definition : messageCatalogue()) {
        const auto message = definition.create();
        std::map<std::string, std::int64_t> notZero;
        for (const MessageField& field : message->fields()) {
            for (std::size_t i = 0; i < field.elements(); ++i) {
                if (field.value(i) != 0) {
                    notZero[field.name()] = field.value(i);
                }
            }
        }
        const auto preset = presets.find(definition.name);
        EXPECT_EQ(notZero, preset != presets.end() ? preset->second : decltype(notZero)()) << definition.name;
    }
}

TEST(MessageCatalogue, FieldsLieAtTheirOffsets)
{
    using enum FieldType;
    struct {
        const char* message;
        const char* field;
        std::size_t bodyOffset;
        FieldType type;
        std::size_t count; ///< 0: no array
    } const cases[] = {
        {"RauDetected1IPC", "productName", 0, u8, 32},
        {"RauDetected1IPC", "hwProductNumber", 32, u8, 22},
        {"RauDetected1IPC", "hwRevision", 54, u8, 16},
        {"RauDetected1IPC", "serialNumber", 70, u8, 32},
        {"RauDetected1IPC", "swProductNumber", 102, u8, 22},
        {"RauDetected1IPC", "swRevision", 124, u8, 16},
        {"RauDetected1IPC", "frequencyBand", 140, u32, 0},
        {"RauDetected1IPC", "rfBaseRxFrequency", 152, u32, 0},
        {"RauDetected1IPC", "rfStepSizeTx", 164, u32, 0},
        {"RauDetected1IPC", "rfStepLimitLowRx", 168, u32, 0},
        {"RauDetected1IPC", "supplyVoltage", 188, u32, 0},
        {"GetRAUIndexCapabilitiesResIPC", "rauSubBands.value100.value", 404, u32, 0},
        {"GetRauPowerInventoryResIPC", "getRauPowerInventory.rfMinOutputPower", 8, i32, 0},
        {"GetRauPowerInventoryResIPC", "getRauPowerInventory.rfMaxOutputPower4096QAM", 48, i32, 0},
        {"GetRauPowerInventoryResIPC", "getRauPowerInventory.txOnPossible", 60, u32, 0},
        {"SetRfPowerV3ReqIPC", "setRfPower.RfInputPowerThreshold", 12, i32, 0},
        {"SetRfPowerV3ReqIPC", "HpMaxOutputPowerReduced", 16, u32, 0},
        {"SetRfPowerV3ReqIPC", "RfTaps", 20, u32, 0},
        {"SetXfRFIfStatusReqIPC", "tSetXfRFIFParametersExt.RFCurrStepNumRX", 12, i32, 0},
        {"BpmCommandResIPC", "aBpmCommandRes.bpmCommandResArray", 120, u8, 120},
        {"HccTxIPC", "iHCCHandler", 4, u32, 0},
        {"HccTxIPC", "aHCCDataArr", 12, u8, 1440},
        {"TestCommandRxIPC", "tTestCommandFrame.jobId", 28, i32, 0},
        {"TestCommandRxIPC", "tTestCommandFrame.commandDataArr.data", 32, u8, 556},
        {"GetSwBoardResIPC", "tBoardSwRevisionData.passiveBoardRevision.data", 68, u8, 64},
        {"CodePacketIPC", "iBlockID", 1044, i32, 0},
        {"CodePacketStartIPC", "tCodePacket.data", 12, i32, 256},
        {"CodePacketStartIPC", "tLoadSwRev.pad", 1045, u8, 3},
        {"CodePacketStartIPC", "tUpgHeaderInfo.timeUntilCancel", 1104, i32, 0},
        {"CodePacketStartIPC", "tUpgBlockInfo.data.value31.blockStartAddress", 1488, i32, 0},
        {"CodePacketStartIPC", "eUpgradeSpeed", 1492, i32, 0},
        {"CodePacketStartExtIPC", "tUpgBlockElementInfo.numSubComponents", 1120, i32, 0},
        {"CodePacketStartExtIPC", "tUpgBlockElementInfo.subComponent.data.value7.subSwName", 1376, u8, 16},
        {"CodePacketStartExtIPC", "tUpgBlockElementInfo.subComponent.data.value7.subSwVersion.pad", 1403, u8, 1},
        {"CodePacketStartExtIPC", "tUpgBlockElementInfo.subComponent.data.value7.numBytesInSub", 1408, i32, 0},
        {"HandleContinuousWaveGroupReqIPC", "enable", 8, u32, 0},
    };
    for (const auto& [message, field, bodyOffset, type, count] : cases) {
        SCOPED_TRACE(std::string(message) + " " + field);
        const auto object = definitionOf(message).create();
        const auto fields = object->fields();
        const MessageField& found = fieldOf(fields, field);
        EXPECT_EQ(found.offset(), 24 + bodyOffset);
        EXPECT_EQ(found.type(), type);
        EXPECT_EQ(found.count().value_or(0), count);
    }
}

TEST(MessageCatalogue, UnitsBelongToFieldsThatThereAre)
{
    std::set<std::string> names;
    for (const MessageDefinition& definition : messageCatalogue()) {
        for (const MessageField& field : definition.create()->fields()) {
            names.insert(field.name().substr(field.name().rfind('.') + 1));
        }
    }
    for (const FieldUnit& row : fieldUnits()) {
        EXPECT_TRUE(names.contains(std::string(row.field))) << row.field;
    }
}

TEST(MessageCatalogue, PrintsEveryElementOfArraysOfRecords)
{
    const auto subBands = printedFields(*definitionOf("GetRAUIndexCapabilitiesResIPC").create(),
                                        definitionOf("GetRAUIndexCapabilitiesResIPC"))
                              .at("rauSubBands");
    EXPECT_EQ(subBands.size(), 101U);
    EXPECT_EQ(subBands.at("value100").dump(), R"({"value":0})");

    const auto start = definitionOf("CodePacketStartIPC").create();
    std::string bytes(1520, '\0');
    bytes.replace(24 + 1108, 12, std::string("\x00\x00\x00\x07\xff\xff\xff\xfe\x00\x01\x00\x00", 12));
    start->decode(bytes);
    const auto blocks = printedFields(*start, definitionOf("CodePacketStartIPC")).at("tUpgBlockInfo").at("data");
    EXPECT_EQ(blocks.size(), 32U);
    EXPECT_EQ(blocks.at("value0").dump(), R"({"blockCheckSum":7,"numBytesInBlock":-2,"blockStartAddress":65536})");
    EXPECT_EQ(blocks.at("value31").dump(), R"({"blockCheckSum":0,"numBytesInBlock":0,"blockStartAddress":0})");
}

TEST(FaultIds, AreNumberedAsTheNodeNumbersThem)
{
    const std::pair<FaultId_T, std::uint32_t> cases[] = {
        {fiUnKnownC, 0},
        {fiRadioCommChC, 1},
        {fiLossOfLockC, 10},
        {fiAcm15C, 20},
        {fiInsufficientPowerResourcesC, 28},
        {fiRunningConfigNotAcceptedC, 30},
        {fiMmuLoadModuleProgrammingFailureC, 40},
        {fiUnableToProtectC, 50},
        {fiSdcRfInputLevelDivC, 60},
        {fiRLTS224hC, 70},
        {fiTLTM24hC, 73},
    };
    for (const auto& [fault, number] : cases) {
        EXPECT_EQ(fault, number);
    }
}
