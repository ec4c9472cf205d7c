#pragma once

#include "LinkBuffer.h"

namespace nodectl {

/// What goes over the link, told to people on standard output: a line a message with time, direction, name and the
/// fields that matter, in colour where the terminal has it.
class Story {
public:
    Story();

    void toUnit(const DecodedBuffer& decoded) const;
    void fromUnit(const DecodedBuffer& decoded) const;

private:
    void tell(const char* arrow, const char* colour, const DecodedBuffer& decoded) const;

    bool m_colour;
};

} // namespace nodectl
