#include "MessageCatalogue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cereal/cereal.hpp>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "AlarmMessages.h"
#include "TableFile.h"
#include "WireTable.h"

namespace {

using enum MessageArea;
using enum MessageDirection;

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

std::string shapeOf(const std::string& type, std::size_t count)
{
    return type + (count == 0 ? "" : " x " + std::to_string(count));
}

/// A message in which no two values are alike, as far as their widths allow.
WireTableMessage::Values allDifferent(const WireTableMessage& message)
{
    WireTableMessage::Values values;
    std::int64_t next = 0x11223344;
    for (const WireRow& row : message.fields) {
        for (std::size_t i = 0; i < row.elements(); ++i) {
            next += 0x01010107;
            const std::int64_t bits = next & ((std::int64_t{1} << (8 * row.width())) - 1);
            const std::int64_t sign = std::int64_t{1} << (8 * row.width() - 1);
            const std::int64_t negative = row.type.front() == 'i' && (bits & sign) != 0 ? 2 * sign : 0;
            values[row.count == 0 ? row.name : row.name + "[" + std::to_string(i) + "]"] = bits - negative;
        }
    }
    return values;
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

TEST(MessageCatalogue, HoldsEveryMessageOfTheWireTable)
{
    const auto& catalogue = messageCatalogue();
    const auto& table = wireTable();
    ASSERT_EQ(catalogue.size(), table.size()) << "a message needs its rows in tests/protocol/wire.txt";
    for (std::size_t i = 0; i < catalogue.size(); ++i) {
        const MessageDefinition& definition = catalogue[i];
        const WireTableMessage& message = table[i];
        SCOPED_TRACE(message.name);
        ASSERT_EQ(definition.name, message.name) << "a message needs its rows in tests/protocol/wire.txt";
        EXPECT_EQ(definition.id, message.id);
        EXPECT_EQ(definition.size, message.size);
        EXPECT_EQ(toString(definition.direction), message.direction);
        EXPECT_EQ(definition.answer, message.answer);
        EXPECT_EQ(definition.area, areaRowOf(message.id).area);
        EXPECT_EQ(definition.header == MessageHeader::ps ? "PsSignalHeader" : "SignalHeader", message.header);
    }
}

TEST(MessageCatalogue, FieldsLieAsTheWireTableSays)
{
    for (const WireTableMessage& message : wireTable()) {
        SCOPED_TRACE(message.name);
        const auto fresh = definitionOf(message.name).create();
        const auto fields = fresh->fields();
        ASSERT_EQ(fields.size(), message.fields.size());
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const WireRow& row = message.fields[i];
            EXPECT_EQ(fields[i].name(), row.name);
            EXPECT_EQ(fields[i].offset(), row.offset) << row.name;
            EXPECT_EQ(shapeOf(std::string(toString(fields[i].type())), fields[i].count().value_or(0)),
                      shapeOf(row.type, row.count))
                << row.name;
            for (std::size_t element = 0; element < row.elements(); ++element) {
                EXPECT_EQ(fields[i].value(element), row.initial) << row.name << " of a fresh message";
            }
        }
    }
}

TEST(MessageCatalogue, EveryMessageTravelsAndPrintsAsTheWireTableSays)
{
    for (const WireTableMessage& message : wireTable()) {
        SCOPED_TRACE(message.name);
        const auto values = allDifferent(message);
        const std::string bytes = message.encode(values);
        const auto sent = definitionOf(message.name).create();
        const auto fields = sent->fields();
        for (const MessageField& field : fields) {
            for (std::size_t i = 0; i < field.elements(); ++i) {
                const std::string index = field.count() ? "[" + std::to_string(i) + "]" : "";
                field.set(values.at(field.name() + index), i);
            }
        }
        EXPECT_EQ(sent->encode(), bytes);

        const auto received = definitionOf(message.name).create();
        received->decode(bytes + "more");
        EXPECT_EQ(received->encode(), bytes);
        EXPECT_THROW(definitionOf(message.name).create()->decode(bytes.substr(0, bytes.size() - 1)), cereal::Exception);

        const auto printed = printedFields(*received, definitionOf(message.name));
        for (const MessageField& field : fields) {
            for (std::size_t i = 0; i < field.elements(); ++i) {
                ASSERT_EQ(printedValue(printed, field, i), field.value(i)) << field.name() << " " << i;
            }
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

TEST(MessageCatalogue, TheFieldsWithAUnitHaveIt)
{
    std::map<std::string, std::string> units;
    for (const TableLine& line : linesOfSection("words.txt", "units")) {
        units[line.words().at(0)] = line.words().at(1);
    }
    for (const MessageDefinition& definition : messageCatalogue()) {
        for (const MessageField& field : definition.create()->fields()) {
            const auto row = units.extract(definition.name + "." + field.name());
            EXPECT_EQ(field.unit(), row.empty() ? "" : row.mapped()) << definition.name << " " << field.name();
        }
    }
    EXPECT_TRUE(units.empty()) << units.begin()->first << " is no field";
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

TEST(FaultIds, HaveTheNumbersOfTheirNames)
{
#define FAULT(name) std::pair(name, #name)
    // clang-format off
    const std::pair<FaultId_T, std::string> faults[] = {
        FAULT(fiUnKnownC), FAULT(fiRadioCommChC), FAULT(fiTxIfInputC), FAULT(fiTxFrequencyC),
        FAULT(fiRfOutputLevelC), FAULT(fiRfOutputLevelAtpcC), FAULT(fiRfInputLevelC), FAULT(fiRfInputThresholdC),
        FAULT(fiRxFrequencyC), FAULT(fiRxIfInputC), FAULT(fiLossOfLockC), FAULT(fiBerC), FAULT(fiRauHardwareErrorC),
        FAULT(fiUnavailablePeriodC), FAULT(fiBbe15mC), FAULT(fiBbe24hC), FAULT(fiEs15mC), FAULT(fiEs24hC),
        FAULT(fiSes15mC), FAULT(fiSes24hC), FAULT(fiAcm15C), FAULT(fiAcm24C), FAULT(fiHccDC),
        FAULT(fiAtpcVersionMismatchMmuRauC), FAULT(fiAtpcVersionMismatchFarEndC), FAULT(fiCarrierTermConfMismatchC),
        FAULT(fiUnsupportedUnitTypeRauC), FAULT(fiInsufficientResourcesRauC), FAULT(fiInsufficientPowerResourcesC),
        FAULT(fiReservedPositionRauC), FAULT(fiRunningConfigNotAcceptedC), FAULT(fiWrongSoftwareC),
        FAULT(fiInsufficientResourceRauXpicC), FAULT(fiMmuCompliantSwRunC), FAULT(fiSpontaneousRestartC),
        FAULT(fiMmuNonCompliantSblC), FAULT(fiMmuMinSwRevC), FAULT(fiRauMinSwRevC), FAULT(fiMmuLoadModuleNotInSblC),
        FAULT(fiRauLoadModuleNotInSblC), FAULT(fiMmuLoadModuleProgrammingFailureC),
        FAULT(fiRauLoadModuleProgrammingFailureC), FAULT(fiMmuHotSwapIncompleteEventC),
        FAULT(fiRauHotSwapIncompleteEventC), FAULT(fiXpicLosC), FAULT(fiMimoLosC), FAULT(fiXpicCableDiscC),
        FAULT(fiMimoCableDiscC), FAULT(fiXpicRecoveryC), FAULT(fiMimoRecoveryC), FAULT(fiUnableToProtectC),
        FAULT(fiUnableToProtectFadeC), FAULT(fiPhaseFadeC), FAULT(fiRemoteTxSwitchOverC), FAULT(fiRfTxSwitchOverC),
        FAULT(fiDpDpComC), FAULT(fiRfInputThresholdProtectionC), FAULT(fiProtectionSwitchEventC),
        FAULT(fiDiversitySwitchEventC), FAULT(fiSdcRfInputLevelMainC), FAULT(fiSdcRfInputLevelDivC),
        FAULT(fiSdcHwErrorMainC), FAULT(fiSdcHwErrorDivC), FAULT(fiSdcDadeCalMismatchC), FAULT(fiRLTS115mC),
        FAULT(fiRLTS215mC), FAULT(fiTLTS115mC), FAULT(fiRLTM15mC), FAULT(fiTLTM15mC), FAULT(fiRLTS124hC),
        FAULT(fiRLTS224hC), FAULT(fiTLTS124hC), FAULT(fiRLTM24hC), FAULT(fiTLTM24hC)};
    // clang-format on
#undef FAULT
    const auto rows = linesOfSection("words.txt", "faults");
    ASSERT_EQ(std::size(faults), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(static_cast<std::int64_t>(faults[i].first), numberOf(rows[i].words().at(0))) << faults[i].second;
        EXPECT_EQ(faults[i].second, rows[i].words().at(1));
    }
}
