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

/// Reverses the two bytes of every 16-bit half. With a rotation by 16 it reverses a 32-bit word; the pair vectorises on
/// plain SSE2 and on NEON, where a byte-wise reversal does not.
constexpr std::uint32_t swapBytesInHalves(std::uint32_t word)
{
    return ((word & 0x00ff00ffU) << 8U) | ((word >> 8U) & 0x00ff00ffU);
}

constexpr std::uint32_t reversed(std::uint32_t word)
{
    return std::rotl(swapBytesInHalves(word), 16);
}

constexpr std::uint16_t reversed(std::uint16_t half)
{
    return std::rotl(half, 8);
}

/// Copies one chunk of words, each turned round. All of a chunk is loaded before anything is stored, so that source and
/// destination may be the same.
template <class Word, std::size_t Count>
inline void copyReversedChunk(char* destination, const char* source)
{
    Word words[Count]; // a plain block is what the vectoriser sees through
    std::memcpy(words, source, sizeof words);
    for (Word& word : words) {
        word = reversed(word);
    }
    std::memcpy(destination, words, sizeof words);
}

/// Copies `size` bytes made of elements of N bytes between the machine's and the wire's byte order (the same operation
/// both ways). `size` is a multiple of N. Source and destination may be the same, but may not overlap otherwise.
template <std::size_t N>
inline void copySwapped(char* destination, const char* source, std::size_t size)
{
    static_assert(N == 1 || N == 2 || N == 4, "the wire carries integers of 1, 2 and 4 bytes only");
    if constexpr (N == 1 || !is_little_endian()) {
        std::memmove(destination, source, size);
    } else {
        using Word = std::conditional_t<N == 2, std::uint16_t, std::uint32_t>;
        constexpr std::size_t chunk = 64;
        for (; size >= chunk; size -= chunk, destination += chunk, source += chunk) {
            copyReversedChunk<Word, chunk / N>(destination, source);
        }
        for (; size >= N; size -= N, destination += N, source += N) {
            copyReversedChunk<Word, 1>(destination, source);
        }
    }
}

} // namespace cereal::binary_big_endian_detail
