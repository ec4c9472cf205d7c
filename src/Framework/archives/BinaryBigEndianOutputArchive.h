#pragma once

#include <algorithm>
#include <array>
#include <cereal/cereal.hpp>
#include <cereal/types/array.hpp>
#include <cereal/types/common.hpp>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

#include "archives/ArchivePairs.h"
#include "archives/WireFields.h"

namespace cereal {

namespace binary_big_endian_detail {

/// Access to the put area of any stream buffer.
struct PutArea : std::streambuf {
    static char* next(const std::streambuf& buffer) { return (buffer.*&PutArea::pptr)(); }
    static char* end(const std::streambuf& buffer) { return (buffer.*&PutArea::epptr)(); }
    static void advance(std::streambuf& buffer, std::ptrdiff_t count)
    {
        (buffer.*&PutArea::pbump)(static_cast<int>(count));
    }
};

} // namespace binary_big_endian_detail

/// Binary output archive of the node link: integers big-endian in their own width, enumerations as their underlying
/// type, a bool as one byte, arrays element by element without a count. One object serves one thread.
class BinaryBigEndianOutputArchive : public OutputArchive<BinaryBigEndianOutputArchive, AllowEmptyClassElision> {
public:
    /// Writes to the stream's buffer; the stream's state is left alone.
    explicit BinaryBigEndianOutputArchive(std::ostream& stream) : BinaryBigEndianOutputArchive(stream.rdbuf()) {}
    explicit BinaryBigEndianOutputArchive(std::streambuf& buffer) : BinaryBigEndianOutputArchive(&buffer) {}

    /// Writes the fields in order. Throws `cereal::Exception` at the first that does not fit.
    template <class... Fields>
    BinaryBigEndianOutputArchive& operator()(Fields&&... fields)
    {
        if (!writeToPutArea(m_buffer, fields...)) {
            OutputArchive::operator()(std::forward<Fields>(fields)...);
        }
        return *this;
    }

    /// Writes the fields as an archive over `buffer` does, but builds one only where they do not fit into its put area:
    /// the base of an archive costs more than most messages.
    template <class... Fields>
    static void write(std::streambuf& buffer, Fields&&... fields)
    {
        if (!writeToPutArea(&buffer, fields...)) {
            BinaryBigEndianOutputArchive archive(buffer);
            archive(std::forward<Fields>(fields)...);
        }
    }

    /// Writes `size` bytes made of elements of N bytes (1, 2 or 4), each element in the wire's byte order. `size` is a
    /// multiple of N. Throws `cereal::Exception` where the stream takes fewer bytes.
    template <std::size_t N>
    void saveBinary(const void* data, std::size_t size)
    {
        std::array<char, 64> chunk; // NOLINT(*-member-init): filled before it is used
        const char* source = static_cast<const char*>(data);
        std::size_t written = 0;
        while (written < size) {
            const std::size_t wanted = std::min(chunk.size(), size - written);
            binary_big_endian_detail::copySwapped<N>(chunk.data(), source + written, wanted);
            const std::size_t accepted = put(chunk.data(), wanted);
            written += accepted;
            if (accepted != wanted) {
                throw Exception("Failed to write " + std::to_string(size) + " bytes to output stream! Wrote " +
                                std::to_string(written));
            }
        }
    }

private:
    explicit BinaryBigEndianOutputArchive(std::streambuf* buffer) : OutputArchive(this), m_buffer(buffer) {}

    /// @return false, with nothing written, where the fields may need more room than there is in one block
    template <class... Fields>
    static bool writeToPutArea([[maybe_unused]] std::streambuf* buffer, [[maybe_unused]] Fields&... fields)
    {
        using namespace binary_big_endian_detail;
        if constexpr (((wireRoom<Fields> != 0) && ...)) {
            constexpr auto room = static_cast<std::ptrdiff_t>((wireRoom<Fields> + ... + 0));
            char* const start = buffer != nullptr ? PutArea::next(*buffer) : nullptr;
            if (start != nullptr && PutArea::end(*buffer) - start >= room) {
                FieldWriter writer(start);
                writer(fields...);
                PutArea::advance(*buffer, writer.position() - start);
                return true;
            }
        }
        return false;
    }

    std::size_t put(const char* data, std::size_t size)
    {
        return m_buffer == nullptr
                   ? 0
                   : static_cast<std::size_t>(m_buffer->sputn(data, static_cast<std::streamsize>(size)));
    }

    std::streambuf* m_buffer;
};

template <class T>
requires std::is_arithmetic_v<T>
void CEREAL_SAVE_FUNCTION_NAME(BinaryBigEndianOutputArchive& archive, const T& value)
{
    archive.template saveBinary<sizeof(T)>(std::addressof(value), sizeof(T));
}

template <class T>
void CEREAL_SAVE_FUNCTION_NAME(BinaryBigEndianOutputArchive& archive, const BinaryData<T>& data)
{
    using Element = std::remove_all_extents_t<std::remove_pointer_t<std::remove_reference_t<T>>>;
    archive.template saveBinary<sizeof(Element)>(data.data, static_cast<std::size_t>(data.size));
}

template <class T>
void CEREAL_SAVE_FUNCTION_NAME(BinaryBigEndianOutputArchive& archive, const NameValuePair<T>& pair)
{
    archive(pair.value);
}

} // namespace cereal
