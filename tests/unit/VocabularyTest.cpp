#include "EModulationAndCodeType.h"
#include "EReferenceSEC.h"
#include "IAcmHandler.h"
#include "IAlarmHandler.h"
#include "IDspApi.h"
#include "IHardwareConfigurationHandler.h"
#include "IIfLoopDriver.h"
#include "IRadio.h"
#include "IRadioCapability.h"
#include "IRlbspKroApi.h"
#include "ITrafHandler.h"
#include "RadioChannel.h"
#include "TopApiResponse.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

template <class T>
std::string printed(const T& value)
{
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

TEST(Vocabulary, NamesModulations)
{
    const std::pair<int, std::string> cases[] = {
        {10, "HALF_BPSK_STRONG"}, {11, "HALF_BPSK"},     {22, "BPSK_LIGHT"},     {31, "4QAM"},
        {71, "128QAM"},           {90, "512QAM_STRONG"}, {122, "4096QAM_LIGHT"}, {142, "16384QAM_LIGHT"},
        {143, "UNDEFINED"},       {13, "UNDEFINED"},     {-1, "UNDEFINED"},      {0, "UNDEFINED"}};
    for (const auto& [value, name] : cases) {
        EXPECT_EQ(printed(EModulationAndCodeType{value}), name) << value;
    }
}

TEST(Vocabulary, ListsModulationsInAscendingOrder)
{
    const auto list = getModulationAndCodeVector();
    ASSERT_EQ(list.size(), 43U);
    for (std::size_t i = 1; i < list.size(); ++i) {
        EXPECT_LT(list[i - 1].value, list[i].value);
    }
    struct Case {
        std::size_t position;
        int value;
        int size;
        int marker;
        int strength;
    };
    for (const Case& c : {Case{0, 10, 2, 2, 0}, Case{5, 22, 2, 0, 2}, Case{7, 31, 4, 0, 1}, Case{41, 142, 16384, 0, 2},
                          Case{42, 143, 16385, 5, 3}}) {
        const ModulationAndCode& entry = list[c.position];
        EXPECT_EQ(entry.value, c.value);
        EXPECT_EQ(entry.constellationSize, c.size) << entry.name;
        EXPECT_EQ(entry.familyMarker, c.marker) << entry.name;
        EXPECT_EQ(entry.codeStrength, c.strength) << entry.name;
    }
}

TEST(Vocabulary, NamesReferenceClasses)
{
    const std::pair<int, std::string> cases[] = {
        {0, "2"},   {1, "4L"},  {2, "4H"}, {3, "5B"},         {4, "6B"},         {5, "5LB"},         {6, "5HB"},
        {7, "6LB"}, {8, "6HB"}, {9, "7B"}, {10, "UNDEFINED"}, {-1, "UNDEFINED"}, {1000, "UNDEFINED"}};
    for (const auto& [value, name] : cases) {
        EXPECT_EQ(printed(EReferenceSEC{value}), name) << value;
    }
}

TEST(Vocabulary, PutsTheCodesTextBehindTheDescription)
{
    const std::pair<std::uint32_t, std::string> cases[] = {{0x0, "eTI_S_OK"},
                                                           {0x7, "Unknown"},
                                                           {0x840, "eTI_DEBUG3"},
                                                           {0x1004, "eTI_W_ALREADY_INITIALIZED"},
                                                           {0x8008, "eTI_E_FAILED_TO_GET_EXTERNAL_INTERFACE"},
                                                           {0xA200, "eTI_E_METHOD_UNKNOWN"},
                                                           {0xFFFFFFFF, "Unknown"}};
    for (const auto& [code, text] : cases) {
        kro_top_api::StandardResponse response;
        response.m_resultCode = code;
        response.m_description = "x";
        EXPECT_EQ(response.getErrorString(), "x, (" + text + ")");
    }
    const kro_top_api::StandardResponse standard;
    const kro_top_api::BaseResponse base;
    const kro_top_api::BaseResponse& overridden = standard;
    EXPECT_EQ(base.printResponse(), "Sent\n");
    EXPECT_EQ(overridden.printResponse(), "StandardResponse Sent\n");
}

TEST(Vocabulary, BuildsInterfaceNames)
{
    const RadioChannel none{0};
    const RadioChannel two{2};
    EXPECT_EQ(IInterface::interfaceName("IRadio", 0), "IRadio");
    EXPECT_EQ(IRadio::interfaceName(2), "IRadio_2");
    EXPECT_EQ(IAcmHandler::interfaceName(0), "IAcmHandler");
    EXPECT_EQ(IRadioCapability::interfaceName(none), "IRadioCapability_0");
    EXPECT_EQ(IIfLoopDriver::interfaceName(none), "IIfLoopDriver_0");
    EXPECT_EQ(DspApiInterfaceName(two), "IDspApi_2");
    EXPECT_EQ(IAlarmHandler::interfaceName(), "IAlarmHandler");
    EXPECT_EQ(IRlbspKroApi::interfaceName(), "IRlbspKroApi");
    EXPECT_EQ(ITrafHandler::interfaceName(), "ITrafHandler");
    EXPECT_EQ(IHardwareConfigurationHandler::interfaceName(), "IHardwareConfigurationHandler");
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
