#pragma once

#include "PlatformApi.h"

#include <cstddef>
#include <ios>
#include <streambuf>

/// Read-only stream buffer over bytes that somebody else owns; nothing is copied. The bytes must outlive the buffer.
class PLATFORM_API ConstCharArrayBuffer : public std::streambuf {
public:
    ConstCharArrayBuffer(const char* data, std::size_t length);
    ~ConstCharArrayBuffer() override;

    ConstCharArrayBuffer(const ConstCharArrayBuffer&) = delete;
    ConstCharArrayBuffer& operator=(const ConstCharArrayBuffer&) = delete;

protected:
    pos_type seekoff(off_type offset, std::ios_base::seekdir direction, std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;
};
