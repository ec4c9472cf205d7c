#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <ostream>
#include <rapidjson/stream.h>

/// cereal's JSON archives, with RapidJSON's way to a standard stream replaced: it hands over every character on its own,
/// this one hands over blocks. The text is the same. Every use of cereal's JSON archives goes through this header, since
/// the specialisation has to be seen first.
namespace rapidjson {

template <typename StreamType>
class BasicOStreamWrapper;

template <>
class BasicOStreamWrapper<std::ostream> {
public:
    using Ch = char;

    // NOLINTNEXTLINE(*-member-init): the block is written before it is read
    explicit BasicOStreamWrapper(std::ostream& stream) : m_stream(stream) {}
    BasicOStreamWrapper(const BasicOStreamWrapper&) = delete;
    BasicOStreamWrapper& operator=(const BasicOStreamWrapper&) = delete;
    ~BasicOStreamWrapper() { handOver(); }

    void Put(Ch character)
    {
        if (m_used == m_block.size()) {
            handOver();
        }
        m_block[m_used++] = character;
    }

    /// The same character several times, as indentation takes it.
    void putRepeated(Ch character, std::size_t count)
    {
        while (count > 0) {
            if (m_used == m_block.size()) {
                handOver();
            }
            const std::size_t part = std::min(count, m_block.size() - m_used);
            std::memset(m_block.data() + m_used, character, part);
            m_used += part;
            count -= part;
        }
    }

    void Flush()
    {
        handOver();
        m_stream.flush();
    }

private:
    void handOver()
    {
        m_stream.write(m_block.data(), static_cast<std::streamsize>(m_used));
        m_used = 0;
    }

    std::ostream& m_stream;
    std::size_t m_used = 0;
    std::array<Ch, 512> m_block;
};

template <>
inline void PutN(BasicOStreamWrapper<std::ostream>& stream, char c, std::size_t n)
{
    stream.putRepeated(c, n);
}

} // namespace rapidjson

#include <cereal/archives/json.hpp> // IWYU pragma: export
