#include "EModulationAndCodeType.h"
#include "EReferenceSEC.h"
#include "IAcmHandler.h"
#include "IAlarmHandler.h"
#include "IDspApi.h"
#include "IFrequencyController.h"
#include "IHardwareConfigurationHandler.h"
#include "IIfLoopDriver.h"
#include "IOutputPowerCalculator.h"
#include "IRadio.h"
#include "IRadioCapability.h"
#include "IRlbspKroApi.h"
#include "ISystemPowerController.h"
#include "ITapsController.h"
#include "ITrafHandler.h"
#include "RadioChannel.h"
#include "TableFile.h"
#include "TopApiResponse.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <sstream>

namespace {

template <class T>
std::string printed(const T& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

TEST(Vocabulary, ListsAndNamesModulations)
{
    const auto list = getModulationAndCodeVector();
    const auto rows = linesOfSection("words.txt", "modulations");
    ASSERT_EQ(list.size(), rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto row = rows[i].words();
        const ModulationAndCode& entry = list[i];
        SCOPED_TRACE(rows[i].text);
        EXPECT_EQ(entry.value, numberOf(row.at(0)));
        EXPECT_EQ(entry.name, row.at(1));
        EXPECT_EQ(entry.constellationSize, numberOf(row.at(2)));
        EXPECT_EQ(entry.familyMarker, numberOf(row.at(3)));
        EXPECT_EQ(entry.codeStrength, numberOf(row.at(4)));
        EXPECT_EQ(printed(entry.value), row.at(1));
    }
    for (const int unused : {13, 19, -1, 0, 9, 144}) {
        EXPECT_EQ(printed(EModulationAndCodeType{unused}), "UNDEFINED") << unused;
    }
}

/// Compares what a section of the words tells of each key, and of keys that it does not have.
template <class Number>
void expectWords(const std::string& section, const std::function<std::string(Number)>& wordOf)
{
    std::map<Number, std::string> words;
    std::string otherwise;
    for (const TableLine& line : linesOfSection("words.txt", section)) {
        const auto row = line.words();
        if (row.at(0) == "else") {
            otherwise = row.at(1);
        } else {
            words[static_cast<Number>(numberOf(row.at(0)))] = row.at(1);
        }
    }
    for (std::int64_t key = -1; key <= 0x10000; ++key) {
        const auto number = static_cast<Number>(key);
        const auto found = words.find(number);
        ASSERT_EQ(wordOf(number), found != words.end() ? found->second : otherwise) << key;
    }
}

TEST(Vocabulary, NamesReferenceClasses)
{
    expectWords<std::int32_t>("reference SEC", [](std::int32_t value) { return printed(EReferenceSEC{value}); });
}

TEST(Vocabulary, PutsTheCodesTextBehindTheDescription)
{
    expectWords<std::uint32_t>("result codes", [](std::uint32_t code) {
        kro_top_api::StandardResponse response;
        response.m_resultCode = code;
        response.m_description = "x";
        const std::string text = response.getErrorString();
        EXPECT_TRUE(text.starts_with("x, (") && text.ends_with(")")) << text;
        return text.substr(4, text.size() - 5);
    });
    const kro_top_api::StandardResponse standard;
    const kro_top_api::BaseResponse base;
    const kro_top_api::BaseResponse& overridden = standard;
    EXPECT_EQ(base.printResponse(), "Sent\n");
    EXPECT_EQ(overridden.printResponse(), "StandardResponse Sent\n");
}

TEST(Vocabulary, BuildsInterfaceNames)
{
    const std::map<std::string, std::function<std::string(int)>> builders{
        {"IRadio", [](int index) { return IRadio::interfaceName(index); }},
        {"IAcmHandler", [](int index) { return IAcmHandler::interfaceName(index); }},
        {"IFrequencyController", [](int index) { return IFrequencyController::interfaceName(index); }},
        {"IOutputPowerCalculator", [](int index) { return IOutputPowerCalculator::interfaceName(index); }},
        {"ISystemPowerController", [](int index) { return ISystemPowerController::interfaceName(index); }},
        {"IRadioCapability", [](int index) { return IRadioCapability::interfaceName(RadioChannel{index}); }},
        {"IIfLoopDriver", [](int index) { return IIfLoopDriver::interfaceName(RadioChannel{index}); }},
        {"ITapsController", [](int index) { return ITapsController::interfaceName(index); }},
        {"IDspApi", [](int index) { return DspApiInterfaceName(RadioChannel{index}); }},
        {"IAlarmHandler", [](int /*index*/) { return IAlarmHandler::interfaceName(); }},
        {"IRlbspKroApi", [](int /*index*/) { return IRlbspKroApi::interfaceName(); }},
        {"ITrafHandler", [](int /*index*/) { return ITrafHandler::interfaceName(); }},
        {"IHardwareConfigurationHandler", [](int /*index*/) { return IHardwareConfigurationHandler::interfaceName(); }},
    };
    for (const TableLine& line : linesOfSection("words.txt", "interface names")) {
        const auto row = line.words();
        EXPECT_EQ(builders.at(row.at(0))(row.at(1) == "-" ? 0 : static_cast<int>(numberOf(row.at(1)))), row.at(2));
    }
}

TEST(Vocabulary, KnowsTheChannelsOfUnitsWithOneOrTwo)
{
    EXPECT_EQ(getRadioChannelIds(0), (std::vector<RadioChannel>{}));
    EXPECT_EQ(getRadioChannelIds(1), (std::vector{RadioChannel{1}}));
    EXPECT_EQ(getRadioChannelIds(2), (std::vector{RadioChannel{1}, RadioChannel{2}}));
    EXPECT_EQ(getRadioChannelIds(3), (std::vector<RadioChannel>{}));
    EXPECT_EQ(getRadioChannelIds(255), (std::vector<RadioChannel>{}));
}

} // namespace
