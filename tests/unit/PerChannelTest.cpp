#include "PerChannel.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace kro::device::vornipc;

TEST(PerChannel, GivesNumbersThatNoUnitHasAnEntryOfTheirOwn)
{
    PerChannel<int> values;
    values[RadioChannel{1}] = 11;
    values[RadioChannel{2}] = 22;
    using Limits = std::numeric_limits<std::int32_t>;
    for (const std::int32_t wrong : {0, 3, 4, -1, -2, Limits::max(), Limits::min()}) {
        EXPECT_EQ(&values[RadioChannel{wrong}], &values[RadioChannel{0}]) << wrong;
        EXPECT_EQ(values[RadioChannel{wrong}], 0) << wrong;
    }
    EXPECT_EQ(values[RadioChannel{1}], 11);
    EXPECT_EQ(values[RadioChannel{2}], 22);
}

} // namespace
