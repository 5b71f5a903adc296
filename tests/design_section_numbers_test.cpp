// The sections of a finished design as numbers: the parts, by the names of
// the circuit drawn, must realise the Fn, Q and gain the design reports, by
// the textbook formulas of each circuit; mapping a high-pass part, halving a
// shared capacitor or naming a part wrongly breaks that.
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"
#include "support/case_name.h"
#include "support/compare.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace {

using qm::ActionKind;
using qm::SectionResult;

constexpr double kTwoPi = 2 * 3.14159265358979;

struct Design
{
    const char* name;
    const char* circuit; ///< "MFBtype" or "SallenKey"
    bool differential;
    bool highPass;
    const char* gain; ///< for every section, empty for none
    int poles;
};

std::ostream& operator<<(std::ostream& os, const Design& d)
{
    return os << d.name;
}

/// Denominator s² + b1·s + b0 of a section, or s + b0 of a real stage, and
/// its passband gain, from the parts as they are drawn.
struct Realised
{
    double b0 = 0, b1 = 0, gain = 1;
};

using Parts = std::map<std::string, double>;

Realised multipleFeedback(const Parts& p, bool highPass, bool differential)
{
    // One part between the two halves of a differential section stands for
    // a part to ground on each side: twice the capacitor, half the resistor.
    if (!highPass) {
        const double r1 = p.at("R1"), r2 = p.at("R2"), r3 = p.at("R3"), c1 = p.at("C1");
        const double c2 = differential ? 2 * p.at("C2") : p.at("C2");
        return {1 / (r2 * r3 * c1 * c2), (1 / r1 + 1 / r2 + 1 / r3) / c2, r2 / r1};
    }
    // Input C1 to the node, R2 from it to ground, C3 on to the inverting
    // input, C2 back from the output; R1 from the output to the input.
    const double c1 = p.at("C1"), c2 = p.at("C2"), c3 = p.at("C3"), r1 = p.at("R1");
    const double r2 = differential ? p.at("R2") / 2 : p.at("R2");
    return {1 / (r1 * r2 * c2 * c3), (c1 + c2 + c3) / (c2 * c3 * r1), c1 / c2};
}

Realised sallenKey(const Parts& p, bool highPass)
{
    const double k = p.count("R3") ? 1 + p.at("R4") / p.at("R3") : 1;
    if (!highPass) {
        // R1, R2 in series to the input, C1 from there to ground, C2 back
        // from the output to the node between the resistors.
        const double r1 = p.at("R1"), r2 = p.at("R2"), c1 = p.at("C1"), c2 = p.at("C2");
        return {1 / (r1 * r2 * c1 * c2), 1 / (r1 * c2) + 1 / (r2 * c2) + (1 - k) / (r2 * c1), k};
    }
    // C1, C2 in series to the input, R1 from there to ground, R2 back from
    // the output to the node between the capacitors.
    const double c1 = p.at("C1"), c2 = p.at("C2"), r1 = p.at("R1"), r2 = p.at("R2");
    return {1 / (r1 * r2 * c1 * c2), (1 - k) / (r2 * c1) + 1 / (r1 * c2) + 1 / (r1 * c1), k};
}

Realised realStage(const Parts& p, bool highPass, bool differential)
{
    if (!differential) return {1 / (p.at("R1") * p.at("C1")), 0, 1};
    // The differential stage's pole sits in its feedback pair: R1' with C1
    // in low-pass, R1 with C1' in high-pass, where C1 is the input part.
    if (!highPass) return {1 / (p.at("R1'") * p.at("C1")), 0, p.at("R1'") / p.at("R1")};
    return {1 / (p.at("R1") * p.at("C1'")), 0, p.at("C1") / p.at("C1'")};
}

/// Fn in the design's passband: a high-pass section's denominator is that of
/// the same circuit read as high-pass, so its Fn is the root of b0 as it is.
double fnOf(const Realised& r, bool real)
{
    return (real ? r.b0 : std::sqrt(r.b0)) / kTwoPi;
}

class SectionNumbers : public ::testing::TestWithParam<Design>
{
  protected:
    void SetUp() override
    {
        const Design& d = GetParam();
        form.runGuarded([this] { qm::Form_Initialize(form); });
        act(ActionKind::Enter, "Text18", std::to_string(d.poles));
        act(ActionKind::Click, d.circuit);
        if (d.differential) act(ActionKind::Check, "FDAcircuit");
        if (d.highPass) act(ActionKind::Click, "High");
        for (int row = 0; *d.gain && row < d.poles / 2; ++row)
            act(ActionKind::Enter, "GainTB(" + std::to_string(row) + ")", d.gain);
        ASSERT_TRUE(platform.messages.empty());
    }

    void act(ActionKind kind, const std::string& control, const std::string& text = {})
    {
        qm::applyAction(form, {kind, control, text});
    }

    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};
};

TEST_P(SectionNumbers, PartsRealiseWhatIsReported)
{
    const Design& d = GetParam();
    int used = 0;
    for (const SectionResult& s : form.sectionResults) {
        if (!s.inUse) continue;
        ++used;
        SCOPED_TRACE(s.name);
        Parts parts;
        for (const auto& p : s.parts)
            EXPECT_TRUE(parts.emplace(p.name, p.value).second) << "two parts named " << p.name;
        Realised r;
        if (s.realStage)
            r = realStage(parts, d.highPass, d.differential);
        else if (std::string(d.circuit) == "SallenKey")
            r = sallenKey(parts, d.highPass);
        else
            r = multipleFeedback(parts, d.highPass, d.differential);
        EXPECT_NEAR_REL(s.realisedFn, fnOf(r, s.realStage), 1e-5);
        if (!s.realStage) {
            EXPECT_NEAR_REL(s.realisedQ, std::sqrt(r.b0) / r.b1, 1e-5);
        }
        EXPECT_NEAR_REL(s.gain, r.gain, 1e-3);
        // Standard parts keep the section within a few percent of its aim.
        EXPECT_NEAR_REL(s.realisedFn, s.targetFn, 0.1);
        EXPECT_EQ(s.sensitivities.size(), s.parts.size() - (d.differential && s.realStage));
    }
    EXPECT_EQ(used, (d.poles + 1) / 2);
}

const Design kDesigns[] = {
    {"MfbLowPass", "MFBtype", false, false, "", 5},
    {"MfbHighPass", "MFBtype", false, true, "", 5},
    {"MfbGain3LowPass", "MFBtype", false, false, "3", 4},
    {"DifferentialLowPass", "MFBtype", true, false, "", 5},
    {"DifferentialHighPass", "MFBtype", true, true, "2", 5},
    {"SallenKeyFollowerLowPass", "SallenKey", false, false, "", 5},
    {"SallenKeyFollowerHighPass", "SallenKey", false, true, "", 5},
    {"SallenKeyGain2LowPass", "SallenKey", false, false, "2", 6},
    {"SallenKeyGain2HighPass", "SallenKey", false, true, "2", 5},
};

INSTANTIATE_TEST_SUITE_P(Circuits, SectionNumbers, ::testing::ValuesIn(kDesigns),
                         qm::test::CaseName());

/// Names as the results table gives them, in the order of the chain.
TEST(SectionNames, FollowTheResultsTable)
{
    struct Case
    {
        int poles;
        std::vector<std::string> names;
    };
    // Bessel, which takes a single pole.
    const Case kCases[] = {
        {1, {"Real"}}, {2, {"A"}}, {5, {"Real", "A", "B"}}, {10, {"A", "B", "C", "D", "E"}}};
    for (const Case& c : kCases) {
        qm::RecordingPlatform platform;
        qm::QuellmarkForm form{platform.services()};
        form.runGuarded([&] { qm::Form_Initialize(form); });
        qm::applyAction(form, {ActionKind::Select, "TypeFilter", "1"});
        qm::applyAction(form, {ActionKind::Enter, "Text18", std::to_string(c.poles)});
        std::vector<std::string> names;
        for (const SectionResult& s : form.sectionResults)
            if (s.inUse) names.push_back(s.name);
        EXPECT_EQ(names, c.names) << c.poles << " poles";
    }
}

} // namespace
