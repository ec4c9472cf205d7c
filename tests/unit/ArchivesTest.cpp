#include "archives/BigEndianInputArchives.h"
#include "archives/BinaryBigEndianOutputArchive.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>

namespace {

enum class Kind : std::uint8_t { seven = 7 };
enum class Wide : std::uint32_t { large = 0x01020304 };

struct Inner {
    std::uint16_t half = 0;
    std::array<std::int32_t, 2> words{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(half), CEREAL_NVP(words));
    }
};

/// Every kind of field that messages have, in an order that leaves holes in memory but none on the wire.
struct Everything {
    static constexpr bool everyFieldOnce = true;

    std::uint8_t byte = 0;
    std::int8_t signedByte = 0;
    bool truth = false;
    std::int16_t signedHalf = 0;
    std::uint32_t word = 0;
    std::int32_t signedWord = 0;
    Kind kind{};
    Wide wide{};
    std::array<std::uint8_t, 3> text{};
    Inner inner;
    std::array<Inner, 2> list{};

    template <class Archive>
    void serialize(Archive& archive)
    {
        archive(CEREAL_NVP(byte), CEREAL_NVP(signedByte), CEREAL_NVP(truth), CEREAL_NVP(signedHalf), CEREAL_NVP(word),
                CEREAL_NVP(signedWord), CEREAL_NVP(kind), CEREAL_NVP(wide), CEREAL_NVP(text), CEREAL_NVP(inner),
                CEREAL_NVP(list));
    }
};

const std::string everythingOnTheWire = bytes("ff fe 01 ffee 00300026 ffffffd3 07 01020304 614200"
                                              "1234 00000001 fffffffe"
                                              "0001 00000002 00000003 0004 00000005 00000006");

Everything everything()
{
    Everything e;
    e.byte = 0xff;
    e.signedByte = -2;
    e.truth = true;
    e.signedHalf = -18;
    e.word = 0x00300026;
    e.signedWord = -45;
    e.kind = Kind::seven;
    e.wide = Wide::large;
    e.text = {'a', 'B', 0};
    e.inner = {0x1234, {1, -2}};
    e.list = {Inner{1, {2, 3}}, Inner{4, {5, 6}}};
    return e;
}

/// A stream buffer without a block to write to: takes `room` bytes, one call at a time.
class Trickle : public std::streambuf {
public:
    explicit Trickle(std::size_t room) : m_room(room) {}
    std::string taken;

protected:
    int_type overflow(int_type character) override
    {
        if (taken.size() == m_room) {
            return traits_type::eof();
        }
        taken += traits_type::to_char_type(character);
        return character;
    }

private:
    std::size_t m_room;
};

std::string whatIsThrown(const std::function<void()>& action)
{
    try {
        action();
    } catch (const cereal::Exception& exception) {
        return exception.what();
    }
    return "nothing";
}

TEST(OutputArchive, WritesEveryKindOfFieldWithAndWithoutABlockAtHand)
{
    Everything message = everything();

    std::ostringstream stream;
    cereal::BinaryBigEndianOutputArchive overStream(stream);
    overStream(message);
    EXPECT_EQ(hexOf(stream.str()), hexOf(everythingOnTheWire));

    Trickle trickle(1000);
    cereal::BinaryBigEndianOutputArchive overTrickle(trickle);
    overTrickle(message);
    EXPECT_EQ(hexOf(trickle.taken), hexOf(everythingOnTheWire));

    const std::string expected = everythingOnTheWire + bytes("1234");
    std::ostringstream withBlock(std::string(1000, ' '));
    cereal::BinaryBigEndianOutputArchive::write(*withBlock.rdbuf(), message, std::uint16_t{0x1234});
    EXPECT_EQ(hexOf(withBlock.str().substr(0, expected.size())), hexOf(expected));
    Trickle withoutBlock(1000);
    cereal::BinaryBigEndianOutputArchive::write(withoutBlock, message, std::uint16_t{0x1234});
    EXPECT_EQ(hexOf(withoutBlock.taken), hexOf(expected));
}

TEST(InputArchives, ReadEveryKindOfField)
{
    std::istringstream stream(everythingOnTheWire);
    cereal::BinaryBigEndianInputArchive fromStream(stream);
    cereal::FixedSizeBigEndianInputArchive fromBuffer(everythingOnTheWire.data(), everythingOnTheWire.size());
    Everything a;
    Everything b;
    fromStream(a);
    fromBuffer(b);
    EXPECT_EQ(fromBuffer.position(), everythingOnTheWire.size());
    for (const Everything& read : {a, b}) {
        EXPECT_EQ(read.byte, 0xff);
        EXPECT_EQ(read.signedByte, -2);
        EXPECT_TRUE(read.truth);
        EXPECT_EQ(read.signedHalf, -18);
        EXPECT_EQ(read.word, 0x00300026U);
        EXPECT_EQ(read.signedWord, -45);
        EXPECT_EQ(read.kind, Kind::seven);
        EXPECT_EQ(read.wide, Wide::large);
        EXPECT_EQ(read.text, (std::array<std::uint8_t, 3>{'a', 'B', 0}));
        EXPECT_EQ(read.inner.half, 0x1234);
        EXPECT_EQ(read.inner.words[1], -2);
        EXPECT_EQ(read.list[1].half, 4);
        EXPECT_EQ(read.list[1].words[1], 6);
    }
}

TEST(InputArchives, KeepAnEnumerationValueThatHasNoName)
{
    const std::string wire = bytes("fa");
    cereal::FixedSizeBigEndianInputArchive archive(wire.data(), wire.size());
    Kind kind{};
    archive(kind);
    EXPECT_EQ(static_cast<int>(kind), 0xfa);
}

TEST(InputArchives, StopAtEveryLengthAndKeepWhatTheyHaveRead)
{
    // Where each field of `Everything` ends; a message cut in between lacks the field that ends next.
    const std::size_t fieldEnds[] = {1, 2, 3, 5, 9, 13, 14, 18, 21, 23, 31, 33, 41, 43, 51};
    for (std::size_t length = 0; length < everythingOnTheWire.size(); ++length) {
        SCOPED_TRACE(length);
        const auto* const end = std::upper_bound(std::begin(fieldEnds), std::end(fieldEnds), length);
        const std::size_t begin = end == std::begin(fieldEnds) ? 0 : *(end - 1);
        const std::string numbers = std::to_string(*end - begin);
        const std::string left = std::to_string(length - begin);

        const std::string cut = everythingOnTheWire.substr(0, length);
        std::istringstream stream(cut);
        cereal::BinaryBigEndianInputArchive fromStream(stream);
        Everything read;
        EXPECT_EQ(whatIsThrown([&] { fromStream(read); }),
                  "Failed to read " + numbers + " bytes from input stream! Read " + left);
        if (length >= 5) {
            EXPECT_EQ(read.signedHalf, -18) << "before the cut";
        }
        if (length <= 47) {
            EXPECT_EQ(read.list[1].words[1], 0) << "behind the cut";
        }

        cereal::FixedSizeBigEndianInputArchive fromBuffer(cut.data(), cut.size());
        EXPECT_EQ(whatIsThrown([&] { fromBuffer(read); }),
                  "Failed to read " + numbers + " bytes from buffer! Read " + left);
        EXPECT_EQ(fromBuffer.position(), length);
    }
}

TEST(OutputArchive, SaysHowManyBytesTheStreamTook)
{
    struct Case {
        std::size_t room;
        std::string text;
    };
    const Case cases[] = {{0, "Failed to write 4 bytes to output stream! Wrote 0"},
                          {3, "Failed to write 4 bytes to output stream! Wrote 3"},
                          {4, "Failed to write 600 bytes to output stream! Wrote 0"},
                          {4 + 131, "Failed to write 600 bytes to output stream! Wrote 131"},
                          {604, "nothing"}};
    std::array<std::uint16_t, 300> halves{};
    halves.fill(0x1234);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.room);
        Trickle trickle(c.room);
        cereal::BinaryBigEndianOutputArchive archive(trickle);
        EXPECT_EQ(whatIsThrown([&] { archive(std::uint32_t{5}, halves); }), c.text);
    }

    std::ostream noBuffer(nullptr);
    cereal::BinaryBigEndianOutputArchive archive(noBuffer);
    EXPECT_EQ(whatIsThrown([&] { archive(std::uint8_t{1}); }), "Failed to write 1 bytes to output stream! Wrote 0");
}

TEST(Archives, TurnLongArraysRoundInOneBlock)
{
    // Longer than the chunks that are turned round at a time, and no multiple of them.
    std::array<std::int32_t, 41> words{};
    std::string expected;
    for (std::size_t i = 0; i < words.size(); ++i) {
        words.at(i) = static_cast<std::int32_t>(0x01020300 + i);
        expected += bytes("010203") + static_cast<char>(i);
    }
    std::ostringstream stream;
    cereal::BinaryBigEndianOutputArchive out(stream);
    out(words);
    EXPECT_EQ(hexOf(stream.str()), hexOf(expected));

    std::array<std::int32_t, 41> read{};
    cereal::FixedSizeBigEndianInputArchive in(expected.data(), expected.size());
    in(read);
    EXPECT_EQ(read, words);
}

} // namespace
