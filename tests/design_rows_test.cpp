// The Fn and Q rows of every family at every pole count it allows, reached as
// a person reaches them (choose the family, type the pole count), against the
// families' own definitions.
#include "design/cycle.h"
#include "numbers/eng_text.h"
#include "numbers/number_text.h"
#include "numbers/pole_tables.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"
#include "support/case_name.h"
#include "support/compare.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace {

constexpr double kCutoffHz = 2500.0;
/// Five significant digits are shown: half a unit of the fifth digit.
constexpr double kShownDigits = 1.0e-4;

struct Section
{
    double fnHz;
    double q; ///< 0 for the real stage
};

/// Sections in the order of the table rows on the screen: real stage first,
/// then section A (the highest index k) down to the last.
using Rows = std::vector<Section>;

Rows butterworth(int n)
{
    Rows rows;
    const int m = (n + 1) / 2;
    for (int k = m; k >= 1; --k) {
        const double theta = (2 * k - 1) * std::numbers::pi / 2 / n;
        const bool real = n % 2 == 1 && k == m;
        rows.push_back({kCutoffHz, real ? 0.0 : 1.0 / (2 * std::sin(theta))});
    }
    return rows;
}

Rows chebychev(int n, double rippleDb)
{
    const double v = 1 / std::sqrt(std::pow(10, rippleDb / 10) - 1);
    const double a = std::asinh(v) / n;
    Rows rows;
    const int m = (n + 1) / 2;
    for (int k = m; k >= 1; --k) {
        const double theta = (2 * k - 1) * std::numbers::pi / 2 / n;
        const double re = -std::sin(theta) * std::sinh(a);
        const double im = std::cos(theta) * std::cosh(a);
        if (n % 2 == 1 && k == m) {
            // The real pole's row shows sqrt(b0)·fc with b0 the pole itself.
            rows.push_back({std::sqrt(std::fabs(re)) * kCutoffHz, 0.0});
        } else {
            const double b0 = re * re + im * im;
            rows.push_back({std::sqrt(b0) * kCutoffHz, std::sqrt(b0) / (-2 * re)});
        }
    }
    return rows;
}

Rows tabulated(int family, int n)
{
    Rows rows;
    const auto table = qm::tabulatedPoles(static_cast<std::int16_t>(family), n);
    for (auto it = table.rbegin(); it != table.rend(); ++it) {
        const double root = std::sqrt(static_cast<double>(it->b0));
        rows.push_back({root * kCutoffHz, it->b1 == 0 ? 0.0 : root / static_cast<double>(it->b1)});
    }
    return rows;
}

double shownNumber(std::string text)
{
    if (text.size() >= 2 && text.compare(text.size() - 2, 2, "Hz") == 0)
        text.resize(text.size() - 2);
    return qm::engValue(text, '.');
}

struct FamilyCase
{
    int family;
    int minPoles;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const FamilyCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "family", c.family, "minPoles", c.minPoles);
}

using FnQRowsOfEveryFamily = ::testing::TestWithParam<FamilyCase>;

TEST_P(FnQRowsOfEveryFamily, MatchTheFamilyToTheDigitsShown)
{
    const FamilyCase& c = GetParam();
    for (int n = c.minPoles; n <= 10; ++n) {
        SCOPED_TRACE("family " + std::to_string(c.family) + ", n = " + std::to_string(n));
        qm::RecordingPlatform platform;
        platform.answers.clear();
        qm::PlatformServices services = platform.services();
        services.decimalSeparator = '.';
        qm::QuellmarkForm form(services);
        qm::Form_Initialize(form);
        qm::applyAction(form, {qm::ActionKind::Select, "TypeFilter", std::to_string(c.family)});
        qm::applyAction(form, {qm::ActionKind::Enter, "Text34", "2.5k"});
        qm::applyAction(form, {qm::ActionKind::Enter, "Text18", std::to_string(n)});
        ASSERT_TRUE(platform.messages.empty()) << platform.messages.front().text;

        const Rows expected = c.family == 0   ? butterworth(n)
                              : c.family == 2 ? chebychev(n, 1.0)
                                              : tabulated(c.family, n);
        ASSERT_EQ(static_cast<int>(expected.size()), form.sectionRows);
        for (std::size_t q = 0; q < expected.size(); ++q) {
            SCOPED_TRACE("row " + std::to_string(q));
            EXPECT_NEAR_REL(shownNumber(form.FSFreq[q].text), expected[q].fnHz, kShownDigits);
            if (expected[q].q == 0)
                EXPECT_EQ(form.Qdisp[q].text, "");
            else
                EXPECT_NEAR_REL(shownNumber(form.Qdisp[q].text), expected[q].q, kShownDigits);
        }
        for (std::size_t q = expected.size(); q < 5; ++q)
            EXPECT_EQ(form.FSFreq[q].text, "");
    }
}

INSTANTIATE_TEST_SUITE_P(SixFamilies, FnQRowsOfEveryFamily,
                         ::testing::Values(FamilyCase{0, 2}, FamilyCase{1, 1}, FamilyCase{2, 2},
                                           FamilyCase{3, 2}, FamilyCase{4, 2}, FamilyCase{5, 3}));

} // namespace
