#include "support/SimulatedPlatformFixture.h"

#include "ConstCharArrayBuffer.h"
#include "LumTrace.h"

#include <gmock/gmock.h>

#include <istream>
#include <memory>
#include <string>

namespace {

using simulated::Json;
using testing::EndsWith;
using testing::HasSubstr;

class SimulatedPlatformTrace : public SimulatedPlatformFixture {
protected:
    std::string printed(const LumTrace& trace, std::string_view text)
    {
        m_platform.setTracePrinting(true);
        testing::internal::CaptureStderr();
        trace.write(1, "/some/where/File.cpp", 12, "method", text);
        m_platform.setTracePrinting(false);
        return testing::internal::GetCapturedStderr();
    }
};

TEST_F(SimulatedPlatformTrace, ALineIsWrittenWhenTheObjectsLevelIsAtLeastTheLines)
{
    const LumTrace trace{"TEST.A"};
    const std::string text{"a\n\tb\0c", 6};
    for (const int level : {1, 3, 4}) {
        trace.write(level, "src/a/File.cpp", 12, "method", text);
    }
    const Json lines = m_platform.traceLines(0)["lines"];
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(lines[1]["level"], 3);
    EXPECT_EQ(lines[1]["file"], "File.cpp");
    EXPECT_EQ(lines[1]["line"], 12);
    EXPECT_EQ(lines[1]["method"], "method");
    EXPECT_EQ(lines[1]["text"], text);
    EXPECT_THAT(lines[1]["time"].get<std::string>(), testing::MatchesRegex("....-..-..T..:..:..\\.......Z"));
}

TEST_F(SimulatedPlatformTrace, LevelsReachAllObjectsOfATagAndLaterOnes)
{
    const LumTrace first{"TEST.A", 1};
    const LumTrace second{"TEST.A"};
    const LumTrace other{"TEST.B"};
    EXPECT_EQ(m_platform.setTraceLevel("TEST.A", 6), 2U);
    EXPECT_EQ(m_platform.setTraceLevel("TEST.C", 6), 0U);
    EXPECT_TRUE(first.enabled(6));
    EXPECT_FALSE(other.enabled(4));
    m_platform.setTraceLevel("*", 5);
    auto later = std::make_unique<LumTrace>("TEST.C");
    EXPECT_TRUE(later->enabled(5));
    EXPECT_FALSE(first.enabled(6));
    EXPECT_THAT(m_platform.traceTags(), testing::Contains("TEST.C"));
    later.reset();
    EXPECT_EQ(m_platform.setTraceLevel("TEST.C", 1), 0U) << "an object that has gone is forgotten";

    m_platform.configure(2);
    EXPECT_EQ(first.level(), 1);
    EXPECT_EQ(second.level(), 3);
}

TEST_F(SimulatedPlatformTrace, PrintsTheTextAsItStandsWithControlCharactersEscaped)
{
    const LumTrace trace{"TEST.A"};
    const std::string line = printed(trace, "{\n    \"a\": 1\n}");
    EXPECT_THAT(line, HasSubstr(" 1 TEST.A File.cpp:12 method ["));
    EXPECT_THAT(line, EndsWith("] {\n    \"a\": 1\n}\n"));
    const std::string nasty{"\x1b[2J\r\0\x7f\xc2\x9bÄ", 11};
    EXPECT_THAT(printed(trace, nasty), HasSubstr("\\x1b[2J\\x0d\\x00\\x7f\\u009bÄ\n"));
    EXPECT_EQ(m_platform.traceLines(0)["lines"][1]["text"], nasty) << "the record has the text itself";
}

TEST_F(SimulatedPlatformTrace, BytesThatAreNotUtf8CanBeWrittenAsJson)
{
    const LumTrace trace{"TEST.A"};
    trace.write(1, "f", 1, "m", "\xff\xfe");
    EXPECT_THAT(simulated::toText(m_platform.traceLines(0)), HasSubstr("\xEF\xBF\xBD\xEF\xBF\xBD"));
}

TEST(ConstCharArrayBuffer, ReadsAndSeeksWithinItsBytesOnly)
{
    const std::string bytes{"\0\xff"
                            "cd",
                            4};
    ConstCharArrayBuffer buffer{bytes.data(), bytes.size()};
    std::istream stream{&buffer};
    EXPECT_EQ(stream.get(), 0);
    EXPECT_EQ(stream.get(), 0xFF);
    EXPECT_EQ(stream.tellg(), 2);
    EXPECT_EQ(stream.seekg(-1, std::ios_base::end).get(), 'd');
    EXPECT_EQ(stream.peek(), EOF);
    stream.clear();
    EXPECT_TRUE(stream.seekg(5).fail());
    stream.clear();
    EXPECT_TRUE(stream.seekg(-1).fail());
    stream.clear();
    EXPECT_EQ(stream.seekg(4).peek(), EOF);
    EXPECT_EQ(buffer.sputc('x'), EOF);
}

} // namespace
