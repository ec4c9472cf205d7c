#include "ConstCharArrayBuffer.h"

ConstCharArrayBuffer::ConstCharArrayBuffer(const char* data, std::size_t length)
{
    // A stream buffer wants pointers to non-const, and never writes through those of its get area.
    char* const begin = const_cast<char*>(data); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    setg(begin, begin, begin + length);
}

ConstCharArrayBuffer::~ConstCharArrayBuffer() = default;

ConstCharArrayBuffer::pos_type ConstCharArrayBuffer::seekoff(off_type offset, std::ios_base::seekdir direction,
                                                             std::ios_base::openmode which)
{
    off_type base = 0;
    if (direction == std::ios_base::cur) {
        base = gptr() - eback();
    } else if (direction == std::ios_base::end) {
        base = egptr() - eback();
    }
    return seekpos(base + offset, which);
}

ConstCharArrayBuffer::pos_type ConstCharArrayBuffer::seekpos(pos_type position, std::ios_base::openmode which)
{
    const off_type offset = position;
    if ((which & std::ios_base::in) == 0 || offset < 0 || offset > egptr() - eback()) {
        return pos_type(off_type(-1));
    }
    setg(eback(), eback() + offset, egptr());
    return position;
}
