// Pole pairs of every family, the tabulated rows, the custom types, scaling
// to the cutoff, and carrying a design over into Custom Fn&Q.
#include "numbers/float_store.h"
#include "numbers/pole_pairs.h"
#include "numbers/pole_tables.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/transfer_fn.h"
#include "support/compare.h"

#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using qm::SectionFloats;

constexpr std::int16_t kButterworth = 0;
constexpr std::int16_t kBessel = 1;
constexpr std::int16_t kChebychev = 2;
constexpr std::int16_t kLinear005 = 3;
constexpr std::int16_t kLinear05 = 4;
constexpr std::int16_t kGaussian = 5;
constexpr std::int16_t kCustomFnQ = 7;

/// Names a parameterised case after its `what` field.
template <class Case> std::string caseName(const ::testing::TestParamInfo<Case>& param)
{
    return param.param.what;
}

struct Poles
{
    SectionFloats b0{};
    SectionFloats b1{};
    float QBaseProduct = -1.0f; // a marker: only Custom Q writes it
};

qm::PolePairSettings familySettings(std::int16_t family, int n)
{
    qm::PolePairSettings s;
    s.filterType = family;
    s.typeFilterIndex = family;
    s.polesEntry = n;
    s.sectionRows = static_cast<std::int16_t>((n + 1) / 2);
    s.realPoleCount = static_cast<std::int16_t>(n % 2);
    return s;
}

Poles run(int n, qm::PolePairSettings& s, float ripple = 1.0f)
{
    Poles p;
    p.b0.fill(7.0f); // stale values from an earlier pass must go
    p.b1.fill(7.0f);
    qm::polepairs(static_cast<std::int16_t>(n), ripple, p.b0, p.b1, s, p.QBaseProduct);
    return p;
}

Poles family(std::int16_t f, int n, float ripple = 1.0f)
{
    qm::PolePairSettings s = familySettings(f, n);
    return run(n, s, ripple);
}

// --- Closed-form families and table rows ------------------------------------

struct SectionCase
{
    const char* what;
    std::int16_t family;
    int n;
    int k;
    float b1;
    float b0;
};

using PoleSection = ::testing::TestWithParam<SectionCase>;

TEST_P(PoleSection, HasItsCoefficients)
{
    const SectionCase& c = GetParam();
    const Poles p = family(c.family, c.n);
    EXPECT_FLOAT_EQ(p.b1[c.k], c.b1);
    EXPECT_FLOAT_EQ(p.b0[c.k], c.b0);
}

INSTANTIATE_TEST_SUITE_P(
    ClosedForms, PoleSection,
    ::testing::Values(SectionCase{"butterworth2", kButterworth, 2, 1, 1.41421354f, 1.0f},
                      SectionCase{"butterworth3pair", kButterworth, 3, 1, 1.0f, 1.0f},
                      SectionCase{"butterworth3real", kButterworth, 3, 2, 0.0f, 1.0f},
                      SectionCase{"butterworth4highQ", kButterworth, 4, 1, 0.76536685f, 1.0f},
                      SectionCase{"butterworth4lowQ", kButterworth, 4, 2, 1.84775901f, 1.0f},
                      SectionCase{"chebychev2", kChebychev, 2, 1, 1.0977345f, 1.1025103f},
                      SectionCase{"chebychev3pair", kChebychev, 3, 1, 0.4941706f, 0.9942045f},
                      SectionCase{"chebychev3real", kChebychev, 3, 2, 0.0f, 0.4941706f}),
    caseName<SectionCase>);

INSTANTIATE_TEST_SUITE_P(
    TableRows, PoleSection,
    ::testing::Values(SectionCase{"bessel3pair", kBessel, 3, 1, 2.09482f, 2.0956f},
                      SectionCase{"bessel3real", kBessel, 3, 2, 0.0f, 1.327f},
                      SectionCase{"bessel9real", kBessel, 9, 5, 0.0f, 1.8575f},
                      SectionCase{"bessel10k3", kBessel, 10, 3, 3.85525f, 3.774121f},
                      SectionCase{"bessel10k5", kBessel, 10, 5, 2.721392f, 4.856544f},
                      SectionCase{"linear005n10k5", kLinear005, 10, 5, 1.5184f, 0.6983f},
                      SectionCase{"linear05n7real", kLinear05, 7, 4, 0.0f, 0.6283f},
                      SectionCase{"gaussian4lowQ", kGaussian, 4, 1, 1.8384f, 1.15406f},
                      SectionCase{"gaussian4highQ", kGaussian, 4, 2, 1.8556f, 3.74911f}),
    caseName<SectionCase>);

TEST(PoleTables, RowsAreCopiedBitForBit)
{
    for (std::int16_t f : {kBessel, kLinear005, kLinear05, kGaussian})
        for (int n = 2; n <= 10; ++n) {
            const auto rows = qm::tabulatedPoles(f, n);
            const Poles p = family(f, n);
            for (std::size_t i = 0; i < rows.size(); ++i) {
                EXPECT_EQ(p.b1[i + 1], rows[i].b1) << f << " n=" << n;
                EXPECT_EQ(p.b0[i + 1], rows[i].b0) << f << " n=" << n;
            }
        }
}

TEST(PoleTables, OrderOfQFollowsTheTable)
{
    auto q = [](const Poles& p, int k) { return std::sqrt(p.b0[k]) / p.b1[k]; };
    const Poles gauss4 = family(kGaussian, 4);
    EXPECT_LT(q(gauss4, 1), q(gauss4, 2));
    const Poles bessel10 = family(kBessel, 10);
    EXPECT_GT(q(bessel10, 1), q(bessel10, 5));
    for (int k : {2, 3, 4})
        EXPECT_GT(q(bessel10, 5), q(bessel10, k)) << "k=" << k;
    for (std::int16_t f : {kLinear005, kLinear05})
        for (int n = 4; n <= 10; ++n) {
            const Poles p = family(f, n);
            for (int k = 2; k <= n / 2; ++k)
                EXPECT_GT(q(p, 1), q(p, k)) << f << " n=" << n << " k=" << k;
        }
}

TEST(PoleTables, FamiliesWithoutARowForNWriteNothing)
{
    for (const auto& [f, n] : {std::pair{kGaussian, 2}, std::pair{kLinear005, 1},
                               std::pair{kLinear05, 1}, std::pair{kGaussian, 1}})
        EXPECT_TRUE(qm::tabulatedPoles(f, n).empty());
    // Gaussian 12dB with two poles, reaching the generator anyway: all zero.
    const Poles p = family(kGaussian, 2);
    for (int k = 0; k < qm::kSectionSlots; ++k) {
        EXPECT_EQ(p.b0[k], 0.0f);
        EXPECT_EQ(p.b1[k], 0.0f);
    }
    EXPECT_EQ(p.QBaseProduct, -1.0f);
}

TEST(PolePairs, OnePoleIsARealPoleAtTheCutoffInEveryFamily)
{
    for (std::int16_t f : {kButterworth, kBessel, kChebychev, kLinear005, kLinear05, kGaussian}) {
        const Poles p = family(f, 1);
        EXPECT_EQ(p.b0[1], 1.0f) << "family " << f;
        EXPECT_EQ(p.b1[1], 0.0f) << "family " << f;
        EXPECT_EQ(p.b0[2], 0.0f) << "family " << f;
    }
}

// --- Every family at every n it allows --------------------------------------

struct FamilyRange
{
    std::int16_t family;
    int nLow;
    float ripple;
};

constexpr FamilyRange kFamilies[] = {
    {kButterworth, 1, 1.0f}, {kBessel, 1, 1.0f},    {kChebychev, 1, 0.01f}, {kChebychev, 1, 1.0f},
    {kChebychev, 1, 3.0f},   {kLinear005, 1, 1.0f}, {kLinear05, 1, 1.0f},   {kGaussian, 3, 1.0f},
};

/// |D(j·w)|² of the product of the sections, a real pole to the first power.
double denominatorPower(const Poles& p, int m, double w)
{
    std::complex<double> d = 1;
    const std::complex<double> s(0, w);
    for (int k = 1; k <= m; ++k)
        d *= p.b1[k] == 0 ? s + double(p.b0[k]) : s * s + double(p.b1[k]) * s + double(p.b0[k]);
    return std::norm(d);
}

TEST(PolePairs, EveryFamilyAndPoleCountIsWellFormedAndNormalised)
{
    // Butterworth and Bessel are 3 dB down at 1 rad/s; Chebychev ends its
    // ripple band there: down by the ripple for odd n, at the DC level for
    // even n. One pole is a real pole at the cutoff in every family. The
    // Bessel rows of n = 3 and 5 were rounded to 3.00 dB rather than half
    // power, hence the looser bound there.
    for (const FamilyRange& fam : kFamilies)
        for (int n = fam.nLow; n <= 10; ++n) {
            const Poles p = family(fam.family, n, fam.ripple);
            const int m = (n + 1) / 2;
            SCOPED_TRACE(::testing::Message()
                         << "family " << fam.family << " ripple " << fam.ripple << " n=" << n);
            for (int k = 1; k <= m; ++k) {
                EXPECT_GT(p.b0[k], 0.0f) << "k=" << k;
                if (n % 2 == 1 && k == m)
                    EXPECT_EQ(p.b1[k], 0.0f) << "the real pole";
                else
                    EXPECT_GT(p.b1[k], 0.0f) << "k=" << k;
            }
            for (int k = m + 1; k < qm::kSectionSlots; ++k)
                EXPECT_EQ(p.b0[k], 0.0f) << "nothing behind the last section, k=" << k;
            EXPECT_EQ(p.b0[0], 0.0f);
            if (fam.family != kButterworth && fam.family != kBessel && fam.family != kChebychev)
                continue;
            const double lossDb =
                10 * std::log10(denominatorPower(p, m, 1.0) / denominatorPower(p, m, 0.0));
            double expected = 10 * std::log10(2.0);
            if (fam.family == kChebychev && n > 1) expected = n % 2 == 1 ? double(fam.ripple) : 0.0;
            EXPECT_NEAR(lossDb, expected, fam.family == kBessel ? 0.015 : 1e-4);
        }
}

// --- The missing Bessel row, derived ----------------------------------------

/// Reverse Bessel polynomial of order n by its three-term recursion,
/// coefficients from s^0 up.
std::vector<double> besselPolynomial(int n)
{
    std::vector<double> prev{1}, cur{1, 1};
    for (int m = 2; m <= n; ++m) {
        std::vector<double> next(static_cast<std::size_t>(m) + 1, 0.0);
        for (std::size_t i = 0; i < cur.size(); ++i)
            next[i] += (2 * m - 1) * cur[i];
        for (std::size_t i = 0; i < prev.size(); ++i)
            next[i + 2] += prev[i];
        prev = cur;
        cur = next;
    }
    return cur;
}

std::complex<double> evaluate(const std::vector<double>& c, std::complex<double> s)
{
    std::complex<double> acc = 0;
    for (auto it = c.rbegin(); it != c.rend(); ++it)
        acc = acc * s + *it;
    return acc;
}

/// The polynomial scaled to its 3 dB point at 1 rad/s, made monic.
std::vector<double> besselAt3dB(int n)
{
    const std::vector<double> theta = besselPolynomial(n);
    double lo = 0, hi = 10;
    for (int i = 0; i < 200; ++i) {
        const double mid = (lo + hi) / 2;
        (std::norm(evaluate(theta, {0, mid})) < 2 * theta[0] * theta[0] ? lo : hi) = mid;
    }
    const double wc = (lo + hi) / 2;
    std::vector<double> scaled(theta.size());
    for (std::size_t i = 0; i < theta.size(); ++i)
        scaled[i] = theta[i] * std::pow(wc, double(i) - n) / theta.back();
    return scaled;
}

TEST(BesselTenthOrder, RowThreeIsAFactorInTheTablesOwnScale)
{
    ASSERT_DOUBLE_EQ(besselPolynomial(10)[0], 654729075.0); // (2n)!/(2^n·n!)
    const auto rows = qm::tabulatedPoles(kBessel, 10);
    ASSERT_EQ(rows.size(), 5u);
    // The table's frequency scale, fitted on its constant term, then the exact
    // polynomial in that scale.
    std::vector<double> p = besselAt3dB(10);
    double b0Product = 1;
    for (const qm::PoleRow& r : rows)
        b0Product *= double(r.b0);
    const double a = std::pow(b0Product / p[0], 0.1);
    EXPECT_NEAR(a, 1.0000027, 1e-6);
    for (std::size_t i = 0; i < p.size(); ++i)
        p[i] *= std::pow(a, 10.0 - double(i));
    // Divide by the row-3 factor; the remainder r1·s + r0 vanishes for a
    // true factor. With b1 = 3.85525 it is about 1e-8 of the polynomial's own
    // terms; one unit more or less in the last digit gives 4e-7.
    const double b1 = double(rows[2].b1), b0 = double(rows[2].b0);
    std::vector<double> rem = p;
    for (std::size_t top = rem.size() - 1; top >= 2; --top) {
        const double lead = rem[top];
        rem[top] = 0;
        rem[top - 1] -= lead * b1;
        rem[top - 2] -= lead * b0;
    }
    EXPECT_LT(std::fabs(rem[1]) / p[1], 1e-7);
    EXPECT_LT(std::fabs(rem[0]) / p[0], 1e-7);
    for (std::size_t k : {0u, 1u, 3u, 4u})
        EXPECT_GT(rows[2].b1, rows[k].b1) << "row 3 has the largest b1";
}

// --- Custom Q ---------------------------------------------------------------

struct CustomQCase
{
    const char* what;
    std::int16_t base;
    int n;
    float QScale;
};

using CustomQ = ::testing::TestWithParam<CustomQCase>;

TEST_P(CustomQ, ScalesEveryPairsQAlikeAndKeepsFrequencies)
{
    const CustomQCase& c = GetParam();
    const Poles base = family(c.base, c.n);
    qm::PolePairSettings s = familySettings(c.base, c.n);
    s.typeFilterIndex = 6;
    s.QScale = c.QScale;
    const Poles p = run(c.n, s);
    double baseProduct = 1, ratioProduct = 1, firstRatio = 0;
    for (int k = 1; k <= (c.n + 1) / 2; ++k) {
        EXPECT_NEAR_REL(p.b0[k], base.b0[k], 1e-6) << "k=" << k;
        if (base.b1[k] == 0) {
            EXPECT_EQ(p.b1[k], 0.0f) << "a real pole stays, k=" << k;
            continue;
        }
        baseProduct *= std::sqrt(double(base.b0[k])) / double(base.b1[k]);
        const double ratio = double(base.b1[k]) / double(p.b1[k]); // new Q over old
        if (firstRatio == 0) firstRatio = ratio;
        EXPECT_NEAR_REL(ratio, firstRatio, 1e-6) << "every pair alike, k=" << k;
        ratioProduct *= ratio;
    }
    EXPECT_NEAR_REL(p.QBaseProduct, baseProduct, 1e-6);
    // With no pole pair there is nothing for the scale to act on.
    EXPECT_NEAR_REL(ratioProduct, firstRatio == 0 ? 1.0 : double(c.QScale), 1e-5);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CustomQ,
    ::testing::Values(CustomQCase{"butterworth4Unchanged", kButterworth, 4, 1.0f},
                      CustomQCase{"butterworth4Doubled", kButterworth, 4, 2.0f},
                      CustomQCase{"butterworth3RealPoleStays", kButterworth, 3, 3.0f},
                      CustomQCase{"bessel7", kBessel, 7, 0.5f},
                      CustomQCase{"chebychev10", kChebychev, 10, 4.0f},
                      CustomQCase{"onePoleOnlyReal", kBessel, 1, 5.0f}),
    caseName<CustomQCase>);

TEST(CustomQ, ButterworthFourPoleProductIsOneOverRootTwo)
{
    qm::PolePairSettings s = familySettings(kButterworth, 4);
    s.typeFilterIndex = 6;
    const Poles p = run(4, s);
    EXPECT_NEAR_REL(p.QBaseProduct, 1 / std::sqrt(2.0), 1e-6);
}

// --- Custom Fn&Q ------------------------------------------------------------

struct Row
{
    const char* fn;
    const char* q; // nullptr: the Q entry is hidden
};

qm::PolePairSettings customRows(int n, std::vector<Row> rows, bool highPass = false)
{
    qm::PolePairSettings s = familySettings(kCustomFnQ, n);
    s.typeFilterIndex = 7;
    s.fc = 1000.0f;
    s.highPass = highPass;
    for (std::size_t r = 0; r < rows.size(); ++r) {
        s.rows[r].fnText = rows[r].fn;
        s.rows[r].fnVisible = true;
        s.rows[r].qText = rows[r].q ? rows[r].q : "";
        s.rows[r].qVisible = rows[r].q != nullptr;
    }
    return s;
}

struct FnQCase
{
    const char* what;
    int n;
    bool highPass;
    std::vector<Row> rows;
    std::vector<std::pair<float, float>> b1b0; // k = 1 up to the last section
};

using CustomFnQ = ::testing::TestWithParam<FnQCase>;

TEST_P(CustomFnQ, RowsBecomeSectionsFromTheHighestIndexDown)
{
    const FnQCase& c = GetParam();
    qm::PolePairSettings s = customRows(c.n, c.rows, c.highPass);
    const Poles p = run(c.n, s);
    for (std::size_t i = 0; i < c.b1b0.size(); ++i) {
        const int k = static_cast<int>(i) + 1;
        EXPECT_NEAR_REL(p.b1[k], c.b1b0[i].first, 1e-6) << "b1 k=" << k;
        EXPECT_NEAR_REL(p.b0[k], c.b1b0[i].second, 1e-6) << "b0 k=" << k;
    }
    EXPECT_EQ(p.b0[c.b1b0.size() + 1], 0.0f);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CustomFnQ,
    ::testing::Values(
        FnQCase{"fivePolesAllRows",
                5,
                false,
                {{"500 Hz", nullptr}, {"1.00 kHz", "0.5"}, {"2.00 kHz", "2.00"}},
                {{1.0f, 4.0f}, {2.0f, 1.0f}, {0.0f, 0.25f}}},
        FnQCase{"fourPolesSecondRowEmpty",
                4,
                false,
                {{"1.50 kHz", "1.00"}, {"", "2"}},
                {{0.0f, 0.0f}, {1.5f, 2.25f}}},
        FnQCase{"evenPolesHiddenQIsARealPole",
                4,
                false,
                {{"2.00 kHz", nullptr}, {"800 Hz", "4"}},
                {{0.2f, 0.64f}, {0.0f, 4.0f}}},
        FnQCase{
            "highPassPairMirrorsTheFrequency", 2, true, {{"2.00 kHz", "1.00"}}, {{0.5f, 0.25f}}},
        FnQCase{"highPassRealPoleMirrorsTheFrequency",
                3,
                true,
                {{"2.00 kHz", nullptr}, {"4000", "0.25"}},
                {{1.0f, 0.0625f}, {0.0f, 0.25f}}},
        FnQCase{"plainNumbersAndHzText", 2, false, {{"250Hz", "0.5"}}, {{0.5f, 0.0625f}}}),
    caseName<FnQCase>);

TEST(CustomFnQ, EmptyRowZeroQIsHiddenForTheCaller)
{
    qm::PolePairSettings s = customRows(4, {{"1.00 kHz", "1"}, {"2.00 kHz", "1"}});
    s.rows[0].qText.clear();
    const Poles p = run(4, s);
    EXPECT_FALSE(s.rows[0].qVisible);
    EXPECT_EQ(p.b1[2], 0.0f);
    EXPECT_FLOAT_EQ(p.b0[2], 1.0f);
    EXPECT_TRUE(s.rows[1].qVisible);
}

TEST(CustomFnQ, AHiddenFnRowEndsTheWalk)
{
    qm::PolePairSettings s = customRows(6, {{"1 kHz", "1"}, {"2 kHz", "1"}, {"3 kHz", "1"}});
    s.rows[1].fnVisible = false;
    const Poles p = run(6, s);
    EXPECT_FLOAT_EQ(p.b0[3], 1.0f);
    EXPECT_EQ(p.b0[2], 0.0f);
    EXPECT_EQ(p.b0[1], 0.0f);
}

TEST(CustomFnQ, TextThatIsNoNumberFails)
{
    for (const auto& rows : {std::vector<Row>{{"1 kHz", "fast"}}, std::vector<Row>{{"abc", "1"}},
                             std::vector<Row>{{"1 kHz", "0"}}}) {
        qm::PolePairSettings s = customRows(2, rows);
        EXPECT_THROW(run(2, s), qm::CalcFailure) << rows[0].fn << " / " << rows[0].q;
    }
    qm::PolePairSettings real = customRows(3, {{"x Hz", nullptr}, {"1 kHz", "1"}});
    EXPECT_THROW(run(3, real), qm::CalcFailure);
}

/// Display text with five significant digits, as the Fn and Q rows carry it.
std::string shown(double x)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.5g", x);
    return buf;
}

/// The rows a design shows, Fn (mirrored for high pass) and Q, as entries.
qm::PolePairSettings shownRows(const Poles& base, int n, bool highPass)
{
    constexpr double fc = 1000;
    qm::PolePairSettings s = customRows(n, {}, highPass);
    const int m = (n + 1) / 2;
    for (int r = 0; r < m; ++r) {
        const int k = m - r;
        const double wn = std::sqrt(double(base.b0[k]));
        qm::CustomPoleRow& row = s.rows[static_cast<std::size_t>(r)];
        row.fnText = shown(highPass ? fc / wn : wn * fc) + " Hz";
        row.fnVisible = true;
        row.qVisible = base.b1[k] != 0;
        row.qText = row.qVisible ? shown(wn / double(base.b1[k])) : "";
    }
    return s;
}

TEST(CustomFnQ, CarriesEveryFamilyOverToTheDigitsShown)
{
    // Five digits carry Fn and Q to 5e-5 each; b0 and b1 take twice that.
    for (bool highPass : {false, true})
        for (const FamilyRange& fam : kFamilies)
            for (int n = std::max(fam.nLow, 2); n <= 10; ++n) {
                const Poles base = family(fam.family, n, fam.ripple);
                qm::PolePairSettings s = shownRows(base, n, highPass);
                const Poles p = run(n, s);
                for (int k = 1; k <= (n + 1) / 2; ++k) {
                    SCOPED_TRACE(::testing::Message() << "family " << fam.family << " n=" << n
                                                      << " k=" << k << " hp=" << highPass);
                    EXPECT_NEAR_REL(p.b0[k], base.b0[k], 1.2e-4);
                    EXPECT_NEAR_REL(p.b1[k], base.b1[k], 1.2e-4);
                }
            }
}

// --- ScaleFreq --------------------------------------------------------------

TEST(ScaleFreq, ButterworthThreePolesAtOneKilohertz)
{
    Poles p = family(kButterworth, 3);
    qm::ScaleFreq(1000.0f, p.b0, p.b1);
    EXPECT_NEAR_REL(p.b0[1], 3.9478e7, 1e-4);
    EXPECT_NEAR_REL(p.b1[1], 6283.2, 1e-5);
    EXPECT_NEAR_REL(p.b0[2], 6283.2, 1e-5);
    EXPECT_EQ(p.b1[2], 0.0f);
    EXPECT_EQ(p.b0[3], 0.0f);
}

TEST(ScaleFreq, TheWalkEndsOnTheFirstEmptySection)
{
    SectionFloats b0{}, b1{};
    qm::ScaleFreq(1000.0f, b0, b1);
    for (int k = 0; k < qm::kSectionSlots; ++k)
        EXPECT_EQ(b0[k], 0.0f);
    // Custom Fn&Q with k = 1 left empty: the filled rows stay unscaled.
    b0[2] = 0.25f;
    b1[2] = 0.5f;
    qm::ScaleFreq(1000.0f, b0, b1);
    EXPECT_EQ(b0[2], 0.25f);
    EXPECT_EQ(b1[2], 0.5f);
}

// --- TransferFn -------------------------------------------------------------

struct Screen
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};
};

struct TransferCase
{
    int n;
    std::vector<bool> qCopied; // per row 0 to 4
    std::vector<bool> fnCopied;
};

using TransferFnRows = ::testing::TestWithParam<TransferCase>;

TEST_P(TransferFnRows, CopyShownFnAndQIntoTheEntries)
{
    const TransferCase& c = GetParam();
    Screen s;
    qm::QuellmarkForm& f = s.form;
    f.n = static_cast<qm::i16>(c.n);
    for (std::size_t i = 0; i < 5; ++i) {
        f.FSFreq[i].text = std::to_string(i + 1) + ".00 kHz";
        f.Qdisp[i].text = "0." + std::to_string(i + 5);
        f.FnInput[i].text = "old fn";
        f.FnInput[i].visible = false;
        f.QInput[i].text = "old q";
        f.QInput[i].visible = false;
    }
    qm::TransferFn(f);
    for (std::size_t i = 0; i < 5; ++i) {
        SCOPED_TRACE(::testing::Message() << "n=" << c.n << " row " << i);
        EXPECT_EQ(f.QInput[i].visible, c.qCopied[i]);
        EXPECT_EQ(f.QInput[i].text, c.qCopied[i] ? f.Qdisp[i].text : "old q");
        EXPECT_EQ(f.FnInput[i].visible, c.fnCopied[i]);
        EXPECT_EQ(f.FnInput[i].text, c.fnCopied[i] ? f.FSFreq[i].text : "old fn");
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, TransferFnRows,
                         ::testing::Values(TransferCase{1, {0, 0, 0, 0, 0}, {1, 0, 0, 0, 0}},
                                           TransferCase{2, {1, 0, 0, 0, 0}, {1, 0, 0, 0, 0}},
                                           TransferCase{5, {0, 1, 1, 0, 0}, {1, 1, 1, 0, 0}},
                                           TransferCase{10, {1, 1, 1, 1, 1}, {1, 1, 1, 1, 1}}));

} // namespace
