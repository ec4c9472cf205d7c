#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

namespace cereal::binary_big_endian_detail {

/// Whether integers of this machine have to be turned round on their way to and from the wire.
constexpr bool is_little_endian()
{
    return std::endian::native == std::endian::little;
}

constexpr std::uint32_t reversed(std::uint32_t word)
{
    return __builtin_bswap32(word);
}

constexpr std::uint16_t reversed(std::uint16_t half)
{
    return __builtin_bswap16(half);
}

/// Copies one word turned round.
template <class Word>
inline void copyReversedWord(char* destination, const char* source)
{
    Word word{};
    std::memcpy(&word, source, sizeof word);
    word = reversed(word);
    std::memcpy(destination, &word, sizeof word);
}

/// Whether registers that hold several words are there; without them the compiler takes vectors to pieces.
#if defined(__SSE2__) || defined(__ARM_NEON)
inline constexpr bool hasVectorUnit = true;
#else
inline constexpr bool hasVectorUnit = false;
#endif

/// Bytes that are turned round at a time: one register. The compiler takes longer vectors through the stack.
inline constexpr std::size_t chunkSize = 16;

/// Copies one chunk of words, each turned round. Vectors say what a loop over words only hints at: the bytes of every
/// half are exchanged, then the halves, for a whole register at once, with plain SSE2 and with NEON. All of a chunk is
/// loaded before anything is stored, so that source and destination may be the same.
template <class Word>
inline void copyReversedChunk(char* destination, const char* source)
{
    using Halves [[gnu::vector_size(chunkSize)]] = std::uint16_t;
    using Words [[gnu::vector_size(chunkSize)]] = std::uint32_t;
    Halves halves;
    std::memcpy(&halves, source, sizeof halves);
    halves = (halves << 8) | (halves >> 8);
    if constexpr (sizeof(Word) == sizeof(std::uint32_t)) {
        Words words;
        std::memcpy(&words, &halves, sizeof words);
        words = (words << 16) | (words >> 16);
        std::memcpy(&halves, &words, sizeof halves);
    }
    std::memcpy(destination, &halves, sizeof halves);
}

/// Copies `size` bytes made of elements of N bytes between the machine's and the wire's byte order (the same operation
/// both ways). `size` is a multiple of N. Source and destination may be the same, but may not overlap otherwise.
template <std::size_t N>
inline void copySwapped(char* destination, const char* source, std::size_t size)
{
    static_assert(N == 1 || N == 2 || N == 4, "the wire carries integers of 1, 2 and 4 bytes only");
    if constexpr (N == 1 || !is_little_endian()) {
        if (destination != source) {
            std::memcpy(destination, source, size); // a size known to the compiler costs no call, as a move would
        }
    } else {
        using Word = std::conditional_t<N == 2, std::uint16_t, std::uint32_t>;
        for (; hasVectorUnit && size >= chunkSize; size -= chunkSize, destination += chunkSize, source += chunkSize) {
            copyReversedChunk<Word>(destination, source);
        }
        for (; size >= N; size -= N, destination += N, source += N) {
            copyReversedWord<Word>(destination, source);
        }
    }
}

} // namespace cereal::binary_big_endian_detail
