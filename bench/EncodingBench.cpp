#include "EquipmentDetectionMessages.h"
#include "PowerControlMessages.h"
#include "SoftwareUpgradeMessages.h"
#include "archives/BigEndianInputArchives.h"
#include "archives/BinaryBigEndianOutputArchive.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstring>
#include <streambuf>

// Encoding and decoding, next to what the same bytes cost when they are copied and turned round by hand. Compare the rows
// of one message within one run; the hand-written row is the limit.

namespace {

/// A message in its buffer, device word and id in front as `send` writes them.
template <class Message>
constexpr std::size_t bufferSize = 8 + sizeof(Message);

template <std::size_t Size>
struct FixedBuffer : std::streambuf {
    // NOLINTNEXTLINE(*-member-init): as where messages are sent, the bytes are written before they are read
    FixedBuffer() { setp(bytes.data(), bytes.data() + bytes.size()); }
    std::array<char, Size> bytes;
};

struct ReadBuffer : std::streambuf {
    ReadBuffer(char* data, std::size_t size) { setg(data, data, data + size); }
};

/// By hand: the words of a message that consists of words alone, from `begin` to `end` (in bytes), the rest as it stands.
struct WordRange {
    std::size_t begin;
    std::size_t end;
};

void copySwappedByHand(char* destination, const char* source, std::size_t size)
{
    for (std::size_t i = 0; i + 4 <= size; i += 4) {
        std::uint32_t word = 0;
        std::memcpy(&word, source + i, sizeof word);
        word = __builtin_bswap32(word);
        std::memcpy(destination + i, &word, sizeof word);
    }
}

template <std::size_t Ranges>
void copyByHand(char* destination, const char* source, std::size_t size, const std::array<WordRange, Ranges>& words)
{
    std::size_t position = 0;
    for (const WordRange& range : words) {
        std::memcpy(destination + position, source + position, range.begin - position);
        copySwappedByHand(destination + range.begin, source + range.begin, range.end - range.begin);
        position = range.end;
    }
    std::memcpy(destination + position, source + position, size - position);
}

/// Where the words of each measured message lie; bytes lie everywhere else.
template <class Message>
constexpr auto wordsOf = std::array{WordRange{0, sizeof(Message)}};
template <>
constexpr auto wordsOf<RauDetected1IPC> = std::array{WordRange{0, 24}, WordRange{164, 216}};
template <>
constexpr auto wordsOf<CodePacketStartIPC> = std::array{WordRange{0, 1064}, WordRange{1072, 1520}};

template <class Message>
void encodeByHand(benchmark::State& state)
{
    Message message;
    std::array<char, bufferSize<Message>> buffer; // NOLINT(*-member-init): written before it is read
    for (auto _ : state) {
        benchmark::DoNotOptimize(message);
        const std::array<std::uint32_t, 2> envelope{0, Message::messageId};
        copySwappedByHand(buffer.data(), reinterpret_cast<const char*>(envelope.data()), sizeof envelope);
        copyByHand(buffer.data() + sizeof envelope, reinterpret_cast<const char*>(&message), sizeof message,
                   wordsOf<Message>);
        benchmark::DoNotOptimize(buffer);
    }
}

template <class Message>
void encodeAsSent(benchmark::State& state)
{
    Message message;
    for (auto _ : state) {
        benchmark::DoNotOptimize(message);
        FixedBuffer<bufferSize<Message>> buffer;
        cereal::BinaryBigEndianOutputArchive::write(buffer, std::uint32_t{0}, Message::messageId);
        cereal::BinaryBigEndianOutputArchive::write(buffer, message);
        benchmark::DoNotOptimize(buffer.bytes);
    }
}

template <class Message>
void decodeByHand(benchmark::State& state)
{
    std::array<char, sizeof(Message)> wire{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(wire);
        Message message;
        copyByHand(reinterpret_cast<char*>(&message), wire.data(), wire.size(), wordsOf<Message>);
        benchmark::DoNotOptimize(message);
    }
}

template <class Message>
void decodeWithArchive(benchmark::State& state)
{
    std::array<char, sizeof(Message)> wire{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(wire);
        ReadBuffer buffer(wire.data(), wire.size());
        cereal::BinaryBigEndianInputArchive archive(buffer);
        Message message;
        archive(message);
        benchmark::DoNotOptimize(message);
    }
}

} // namespace

// 36 bytes with the envelope, 224 and 1528.
#define BENCHMARK_MESSAGE(message)                                                                                     \
    BENCHMARK_TEMPLATE(encodeByHand, message);                                                                         \
    BENCHMARK_TEMPLATE(encodeAsSent, message);                                                                         \
    BENCHMARK_TEMPLATE(decodeByHand, message);                                                                         \
    BENCHMARK_TEMPLATE(decodeWithArchive, message)

BENCHMARK_MESSAGE(SetRfPowerResIPC);
BENCHMARK_MESSAGE(RauDetected1IPC);
BENCHMARK_MESSAGE(CodePacketStartIPC);
