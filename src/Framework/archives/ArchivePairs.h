#pragma once

#include <cereal/cereal.hpp>

namespace cereal {

class BinaryBigEndianOutputArchive;
class BinaryBigEndianInputArchive;
class FixedSizeBigEndianInputArchive;

namespace traits::detail {

/// Tells cereal which archives belong together; the two input archives share the output archive.
template <>
struct get_output_from_input<BinaryBigEndianInputArchive> {
    using type = BinaryBigEndianOutputArchive;
};
template <>
struct get_output_from_input<FixedSizeBigEndianInputArchive> {
    using type = BinaryBigEndianOutputArchive;
};
template <>
struct get_input_from_output<BinaryBigEndianOutputArchive> {
    using type = BinaryBigEndianInputArchive;
};

} // namespace traits::detail

} // namespace cereal
