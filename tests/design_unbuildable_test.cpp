// Which part values can be built. What the screen shows for a section with
// parts that can't be (the "no value" labels and the prompt that says what to
// change) is checked by the whole-screen designs "unbuildable-*".
#include "design/unbuildable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

struct PartCase
{
    double value;
    bool buildable;
};

using PartValue = ::testing::TestWithParam<PartCase>;

TEST_P(PartValue, IsBuildableWhenPositiveFiniteAndWrittenWithAScaleLetter)
{
    EXPECT_EQ(qm::buildablePart(GetParam().value), GetParam().buildable) << GetParam().value;
}

INSTANTIATE_TEST_SUITE_P(Unbuildable, PartValue,
                         ::testing::Values(PartCase{4.7e-9, true}, PartCase{1e-15, true},
                                           PartCase{999e9, true}, PartCase{1e12, false},
                                           PartCase{2.2e-17, false}, PartCase{0, false},
                                           PartCase{-1.93, false}, PartCase{-8.75e6, false},
                                           PartCase{std::numeric_limits<double>::infinity(), false},
                                           PartCase{std::nan(""), false}));

} // namespace
