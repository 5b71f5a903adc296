#pragma once
// Relative-tolerance comparison for design numbers.
#include <cmath>
#include <gtest/gtest.h>

namespace qm::test {

inline ::testing::AssertionResult nearRel(double actual, double expected, double relTol)
{
    const double scale = std::fabs(expected) > 0 ? std::fabs(expected) : 1.0;
    if (std::fabs(actual - expected) <= relTol * scale) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure()
           << actual << " differs from " << expected << " by more than " << relTol * 100 << "%";
}

} // namespace qm::test

#define EXPECT_NEAR_REL(actual, expected, relTol)                                                  \
    EXPECT_TRUE(::qm::test::nearRel((actual), (expected), (relTol)))
