#pragma once

#include <algorithm>
#include <cereal/cereal.hpp>
#include <cereal/types/array.hpp>
#include <cereal/types/common.hpp>
#include <cstring>
#include <istream>
#include <memory>
#include <streambuf>
#include <string>

#include "archives/ArchivePairs.h"
#include "archives/WireFields.h"

namespace cereal {

namespace binary_big_endian_detail {

/// Access to the get area of any stream buffer.
struct GetArea : std::streambuf {
    static const char* next(const std::streambuf& buffer) { return (buffer.*&GetArea::gptr)(); }
    static const char* end(const std::streambuf& buffer) { return (buffer.*&GetArea::egptr)(); }
    static void advance(std::streambuf& buffer, std::ptrdiff_t count)
    {
        (buffer.*&GetArea::gbump)(static_cast<int>(count));
    }
};

/// What the two input archives share. `Archive` is the archive itself and offers: `sourceName`, the word of its error
/// text; `peek(room)`, the next bytes if at least `room` are at hand in one block, else null; `skip(count)`; and
/// `take(data, size)`, which copies what is there and returns its number of bytes.
template <class Archive>
class BigEndianInputArchive : public InputArchive<Archive, AllowEmptyClassElision> {
public:
    /// Reads the fields in order. Throws `cereal::Exception` at the first that is not all there; the fields before it
    /// have their values then, those behind it keep theirs, its own is undefined.
    template <class... Fields>
    Archive& operator()(Fields&&... fields)
    {
        if constexpr (((wireRoom<Fields> != 0) && ...)) {
            constexpr std::size_t room = (wireRoom<Fields> + ... + 0);
            if (const char* const start = m_archive.peek(room); start != nullptr) {
                FieldReader reader(start);
                reader(fields...);
                m_archive.skip(reader.position() - start);
                return m_archive;
            }
        }
        InputArchive<Archive, AllowEmptyClassElision>::operator()(std::forward<Fields>(fields)...);
        return m_archive;
    }

    /// Reads `size` bytes into elements of N bytes (1, 2 or 4), each in the wire's byte order. `size` is a multiple of
    /// N. Throws `cereal::Exception` where fewer bytes are there.
    template <std::size_t N>
    void loadBinary(void* data, std::size_t size)
    {
        char* const destination = static_cast<char*>(data);
        const std::size_t taken = m_archive.take(destination, size);
        if (taken < size) {
            throw Exception("Failed to read " + std::to_string(size) + " bytes from " + Archive::sourceName +
                            "! Read " + std::to_string(taken));
        }
        copySwapped<N>(destination, destination, size);
    }

protected:
    explicit BigEndianInputArchive(Archive& archive)
        : InputArchive<Archive, AllowEmptyClassElision>(&archive), m_archive(archive)
    {
    }

private:
    Archive& m_archive;
};

} // namespace binary_big_endian_detail

/// Binary input archive of the node link over a standard stream: the counterpart of `BinaryBigEndianOutputArchive`. One
/// object serves one thread.
class BinaryBigEndianInputArchive
    : public binary_big_endian_detail::BigEndianInputArchive<BinaryBigEndianInputArchive> {
public:
    static constexpr const char* sourceName = "input stream";

    /// Reads from the stream's buffer; the stream's state is left alone.
    explicit BinaryBigEndianInputArchive(std::istream& stream) : BinaryBigEndianInputArchive(stream.rdbuf()) {}
    explicit BinaryBigEndianInputArchive(std::streambuf& buffer) : BinaryBigEndianInputArchive(&buffer) {}

    const char* peek(std::size_t room) const
    {
        using binary_big_endian_detail::GetArea;
        const char* const next = m_buffer != nullptr ? GetArea::next(*m_buffer) : nullptr;
        return next != nullptr && GetArea::end(*m_buffer) - next >= static_cast<std::ptrdiff_t>(room) ? next : nullptr;
    }
    void skip(std::ptrdiff_t count) { binary_big_endian_detail::GetArea::advance(*m_buffer, count); }
    std::size_t take(char* data, std::size_t size)
    {
        return m_buffer == nullptr
                   ? 0
                   : static_cast<std::size_t>(m_buffer->sgetn(data, static_cast<std::streamsize>(size)));
    }

private:
    explicit BinaryBigEndianInputArchive(std::streambuf* buffer) : BigEndianInputArchive(*this), m_buffer(buffer) {}

    std::streambuf* m_buffer;
};

/// The same over a byte buffer of known size, which it borrows.
class FixedSizeBigEndianInputArchive
    : public binary_big_endian_detail::BigEndianInputArchive<FixedSizeBigEndianInputArchive> {
public:
    static constexpr const char* sourceName = "buffer";

    FixedSizeBigEndianInputArchive(const char* data, std::size_t size)
        : BigEndianInputArchive(*this), m_data(data), m_size(size)
    {
    }

    /// Bytes read so far; at the buffer's end after a read that failed.
    std::size_t position() const { return m_position; }

    const char* peek(std::size_t room) const { return m_size - m_position >= room ? m_data + m_position : nullptr; }
    void skip(std::ptrdiff_t count) { m_position += static_cast<std::size_t>(count); }
    std::size_t take(char* data, std::size_t size)
    {
        const std::size_t taken = std::min(size, m_size - m_position);
        if (taken > 0) {
            std::memcpy(data, m_data + m_position, taken);
        }
        m_position += taken;
        return taken;
    }

private:
    const char* m_data;
    std::size_t m_size;
    std::size_t m_position = 0;
};

namespace binary_big_endian_detail {

template <class Archive>
concept InputArchiveOfTheLink =
    std::is_same_v<Archive, BinaryBigEndianInputArchive> || std::is_same_v<Archive, FixedSizeBigEndianInputArchive>;

} // namespace binary_big_endian_detail

template <binary_big_endian_detail::InputArchiveOfTheLink Archive, class T>
requires std::is_arithmetic_v<T>
void CEREAL_LOAD_FUNCTION_NAME(Archive& archive, T& value)
{
    if constexpr (std::is_same_v<T, bool>) {
        std::uint8_t byte = 0;
        archive.template loadBinary<1>(&byte, 1);
        value = byte != 0;
    } else {
        archive.template loadBinary<sizeof(T)>(std::addressof(value), sizeof(T));
    }
}

template <binary_big_endian_detail::InputArchiveOfTheLink Archive, class T>
void CEREAL_LOAD_FUNCTION_NAME(Archive& archive, BinaryData<T>& data)
{
    using Element = std::remove_all_extents_t<std::remove_pointer_t<std::remove_reference_t<T>>>;
    archive.template loadBinary<sizeof(Element)>(data.data, static_cast<std::size_t>(data.size));
}

template <binary_big_endian_detail::InputArchiveOfTheLink Archive, class T>
void CEREAL_LOAD_FUNCTION_NAME(Archive& archive, NameValuePair<T>& pair)
{
    archive(pair.value);
}

} // namespace cereal
