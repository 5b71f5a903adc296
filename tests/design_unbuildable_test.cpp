// Which part values can be built. What the screen shows for a section with
// parts that can't be (the "no value" labels and the prompt that says what to
// change) is checked by the whole-screen designs "unbuildable-*".
#include "design/unbuildable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

TEST(PartValue, IsBuildableWhenPositiveFiniteAndWrittenWithAScaleLetter)
{
    const std::pair<double, bool> cases[] = {
        {4.7e-9, true},       {1e-15, true},    {999e9, true},
        {1e12, false},        {2.2e-17, false}, {0, false},
        {-1.93, false},       {-8.75e6, false}, {std::numeric_limits<double>::infinity(), false},
        {std::nan(""), false}};
    for (const auto& [value, buildable] : cases)
        EXPECT_EQ(qm::buildablePart(value), buildable) << value;
}

} // namespace
