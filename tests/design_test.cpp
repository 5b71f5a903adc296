// The recalculation cycle and the section plan, on the form without a window.
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <gtest/gtest.h>

namespace {

TEST(SectionPlan, StartUpBuildsThreePoleDesign)
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm form(platform.services());
    qm::Form_Initialize(form);
    EXPECT_EQ(form.n, 3);
    EXPECT_EQ(form.sectionRows, 2);
    EXPECT_EQ(form.realPoleCount, 1);
}

} // namespace
