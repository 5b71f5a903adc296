// The noise analysis by hand and by its own rules: a real stage worked out
// on paper, the integral against the contributors' squares, the band and
// the temperature, and where the amplifiers' figures come from. Its
// agreement with a simulator is analysis_noise_spice_test's.
#include "analysis/noise_design.h"
#include "analysis/noise_grid.h"
#include "circuit/circuit_builder.h"
#include "support/case_name.h"
#include "support/cli_design.h"
#include "support/compare.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <set>

namespace {

using qm::test::buildDesign;

constexpr double kR = 10e3;
constexpr double kC = 10e-9;
constexpr double kEn = 7e-9;
constexpr double kIn = 3e-12;

/// An RC pair ahead of a follower, by hand: low-pass R1 in line and C1 to
/// the ground, high-pass the other way round.
qm::FilterCircuit realStage(bool highPass)
{
    qm::StageCircuit s;
    s.name = "Real";
    s.kind = qm::StageKind::RealStage;
    s.highPass = highPass;
    s.nodeNames = {"0", "in", "a", "out"};
    s.in = {1, 0};
    s.out = {3, 0};
    const auto part = [](qm::PartKind kind, int from, int to) {
        qm::CircuitPart p;
        const bool resistor = kind == qm::PartKind::Resistor;
        p.role = resistor ? "R1" : "C1";
        p.designator = p.role + "Real";
        p.kind = kind;
        p.value = resistor ? kR : kC;
        p.from = from;
        p.to = to;
        return p;
    };
    const qm::PartKind inLine = highPass ? qm::PartKind::Capacitor : qm::PartKind::Resistor;
    const qm::PartKind shunt = highPass ? qm::PartKind::Resistor : qm::PartKind::Capacitor;
    s.parts = {part(inLine, 1, 2), part(shunt, 2, 0)};
    s.amplifier = {"U1", false, 2, 3, 3, 0};
    qm::FilterCircuit c;
    c.highPass = highPass;
    c.stages = {s};
    return c;
}

double fourKT(double celsius)
{
    return 4 * qm::kBoltzmann * (celsius + qm::kZeroCelsius);
}

const qm::NoiseContributor& named(const qm::NoiseResult& r, const std::string& name)
{
    for (const qm::NoiseContributor& k : r.contributors)
        if (k.name == name) return k;
    throw std::out_of_range("no contributor " + name);
}

struct HandCase
{
    std::string name;
    bool highPass;
    double temperatureC;
    double lowHz, highHz;
};

void PrintTo(const HandCase& c, std::ostream* os)
{
    *os << c.name;
}

// The band about the pole, below it and above it; cold and hot.
const std::vector<HandCase> kHandCases = {
    {"low_pass_about_the_pole", false, 27, 10, 100e3},
    {"low_pass_above_the_pole_hot", false, 125, 5e3, 1e6},
    {"high_pass_about_the_pole", true, 27, 10, 100e3},
    {"high_pass_below_the_pole_cold", true, -55, 1, 300},
};

class HandWorkedRealStage : public ::testing::TestWithParam<HandCase>
{
};

// With x = f/fc, fc = 1/(2πRC): the resistor's noise current 4kT/R sees
// R‖C at the follower's input, since the stage's input is held at 0 V:
// |Z|² = R²/(1 + x²) in the low-pass and the high-pass stage alike. The
// current noise into the + input sees the same; into the − input it meets
// the amplifier's output and vanishes. en reaches the output as it is.
TEST_P(HandWorkedRealStage, DensitiesAndIntegralsAsOnPaper)
{
    const HandCase& h = GetParam();
    const double fc = 1 / (2 * std::numbers::pi * kR * kC);
    const auto shape = [&](double f) { return 1 / (1 + (f / fc) * (f / fc)); };
    // ∫ shape df over the band.
    const double shapeIntegral = fc * (std::atan(h.highHz / fc) - std::atan(h.lowHz / fc));
    const std::vector<double> freqs = {h.lowHz, fc / 3, fc, 3 * fc, h.highHz};
    const qm::NoiseResult r = qm::noiseAnalysis(
        realStage(h.highPass),
        {{{}, {kEn, kIn, qm::FigureOrigin::Entered, qm::FigureOrigin::Entered}, h.temperatureC},
         freqs,
         h.lowHz,
         h.highHz});
    ASSERT_EQ(r.contributors.size(), 3u);
    const qm::NoiseContributor& resistor = named(r, "R1Real");
    const qm::NoiseContributor& en = named(r, "U1 en");
    const qm::NoiseContributor& in = named(r, "U1 in");
    EXPECT_EQ(resistor.kind, qm::NoiseSourceKind::Resistor);
    EXPECT_EQ(en.kind, qm::NoiseSourceKind::AmplifierVoltage);
    EXPECT_EQ(in.kind, qm::NoiseSourceKind::AmplifierCurrent);
    EXPECT_EQ(resistor.stage, "Real");
    for (std::size_t i = 0; i < freqs.size(); ++i) {
        const double f = freqs[i];
        EXPECT_NEAR_REL(resistor.density[i], std::sqrt(fourKT(h.temperatureC) * kR * shape(f)),
                        1e-9);
        EXPECT_NEAR_REL(en.density[i], kEn, 1e-9);
        EXPECT_NEAR_REL(in.density[i], kIn * kR * std::sqrt(shape(f)), 1e-9);
        EXPECT_NEAR_REL(r.outputDensity[i],
                        std::hypot(resistor.density[i], en.density[i], in.density[i]), 1e-12);
    }
    const double resistorPower = fourKT(h.temperatureC) * kR * shapeIntegral;
    const double enPower = kEn * kEn * (h.highHz - h.lowHz);
    const double inPower = kIn * kIn * kR * kR * shapeIntegral;
    const double total = resistorPower + enPower + inPower;
    EXPECT_NEAR_REL(resistor.rmsV, std::sqrt(resistorPower), 1e-5);
    EXPECT_NEAR_REL(en.rmsV, std::sqrt(enPower), 1e-9);
    EXPECT_NEAR_REL(in.rmsV, std::sqrt(inPower), 1e-5);
    EXPECT_NEAR_REL(r.integratedRmsV, std::sqrt(total), 1e-5);
    EXPECT_NEAR_REL(resistor.sharePercent, 100 * resistorPower / total, 1e-4);
    EXPECT_NEAR_REL(r.passbandGain, 1, 1e-12);
    EXPECT_NEAR_REL(r.inputReferredRmsV, r.integratedRmsV, 1e-12);
}

INSTANTIATE_TEST_SUITE_P(Cases, HandWorkedRealStage, ::testing::ValuesIn(kHandCases),
                         qm::test::CaseName());

TEST(HandWorkedRealStage, WholeBandOfTheLowPassIsKTOverC)
{
    // The classic: all the noise an RC low-pass lets through is kT/C.
    const double fc = 1 / (2 * std::numbers::pi * kR * kC);
    const qm::NoiseResult r =
        qm::noiseAnalysis(realStage(false), {{{}, {}, 27}, {fc}, fc * 1e-6, fc * 1e6});
    EXPECT_NEAR_REL(r.integratedRmsV, std::sqrt(fourKT(27) / 4 / kC), 1e-5);
}

struct DesignCase
{
    std::string name;
    std::string options;
    qm::AnalysisSettings settings;
};

void PrintTo(const DesignCase& c, std::ostream* os)
{
    *os << c.name;
}

qm::AnalysisSettings withNoise(double en, double in, std::optional<double> gbw = {},
                               double temperatureC = 27)
{
    qm::AnalysisSettings s;
    s.noise.enNanoVolts = en;
    s.noise.inPicoAmps = in;
    s.noise.temperatureC = temperatureC;
    s.amplifier.gbwHz = gbw;
    return s;
}

const std::vector<DesignCase> kDesigns = {
    {"mfb_low_plain", "--poles 5 --family chebychev --ripple 1", {}},
    {"mfb_high_noisy_amplifiers", "--passband high --poles 4", withNoise(12, 2)},
    {"fda_low_slow_amplifiers", "--fully-differential --poles 5", withNoise(4, 1, 200e3)},
    {"sk_gain_hot", "--circuit sallen-key --poles 6 --gain B=3", withNoise(3, 5, {}, 70)},
    {"sk_high_odd", "--circuit sallen-key --passband high --poles 3", withNoise(20, 0.1)},
};

class DesignNoise : public ::testing::TestWithParam<DesignCase>
{
};

TEST_P(DesignNoise, TotalIsTheContributorsAddedAsPowers)
{
    const auto d = buildDesign(GetParam().options);
    const qm::DesignNoise n = qm::designNoise(*d->form, GetParam().settings);
    const qm::NoiseResult& r = n.result;
    ASSERT_FALSE(r.contributors.empty());
    double power = 0, shares = 0;
    std::vector<double> densityPower(r.freqsHz.size(), 0.0);
    for (const qm::NoiseContributor& k : r.contributors) {
        power += k.rmsV * k.rmsV;
        shares += k.sharePercent;
        ASSERT_EQ(k.density.size(), r.freqsHz.size()) << k.name;
        for (std::size_t i = 0; i < densityPower.size(); ++i)
            densityPower[i] += k.density[i] * k.density[i];
    }
    EXPECT_NEAR_REL(r.integratedRmsV, std::sqrt(power), 1e-12);
    EXPECT_NEAR_REL(shares, 100, 1e-9);
    for (std::size_t i = 0; i < densityPower.size(); i += 57)
        EXPECT_NEAR_REL(r.outputDensity[i], std::sqrt(densityPower[i]), 1e-12);
    for (std::size_t i = 1; i < r.contributors.size(); ++i)
        EXPECT_GE(r.contributors[i - 1].rmsV, r.contributors[i].rmsV) << "largest first";
    EXPECT_NEAR_REL(r.inputReferredRmsV * r.passbandGain, r.integratedRmsV, 1e-12);
    EXPECT_NEAR_REL(r.passbandGain, std::pow(10, d->form->totalGainDB / 20), 1e-5);
}

TEST_P(DesignNoise, EveryResistorAndEachNoisyAmplifierOnce)
{
    const auto d = buildDesign(GetParam().options);
    const qm::DesignNoise n = qm::designNoise(*d->form, GetParam().settings);
    const qm::FilterCircuit c = qm::filterCircuitOf(*d->form);
    std::multiset<std::string> expected, found;
    const bool amplifiers = GetParam().settings.noise.enNanoVolts.has_value();
    for (const qm::StageCircuit& s : c.stages) {
        for (const qm::CircuitPart& p : s.parts)
            if (p.kind == qm::PartKind::Resistor) expected.insert(p.designator);
        if (!amplifiers) continue;
        expected.insert(s.amplifier.designator + " en");
        expected.insert(s.amplifier.designator + " in");
    }
    for (const qm::NoiseContributor& k : n.result.contributors)
        found.insert(k.name);
    EXPECT_EQ(found, expected);
}

TEST_P(DesignNoise, BandsAddUp)
{
    // Two bands side by side hold the noise of the two together: the
    // integral neither loses nor counts twice what lies at their joint.
    const auto d = buildDesign(GetParam().options);
    qm::AnalysisSettings s = GetParam().settings;
    const qm::FilterCircuit c = qm::filterCircuitOf(*d->form);
    const double low = c.sweepStartHz, mid = c.cutoffHz, high = c.sweepStopHz;
    const auto rms = [&](double a, double b) {
        s.noise.bandHz = std::pair(a, b);
        return qm::designNoise(*d->form, s).result.integratedRmsV;
    };
    EXPECT_NEAR_REL(std::hypot(rms(low, mid), rms(mid, high)), rms(low, high), 1e-4);
    s.noise.bandHz.reset();
    EXPECT_NEAR_REL(qm::designNoise(*d->form, s).result.integratedRmsV, rms(low, high), 1e-12)
        << "the default band is the chart's three decades";
}

INSTANTIATE_TEST_SUITE_P(Designs, DesignNoise, ::testing::ValuesIn(kDesigns), qm::test::CaseName());

TEST(DesignNoiseSettings, TemperatureWarmsTheResistorsAlone)
{
    const auto d = buildDesign("--circuit sallen-key --poles 4 --gain A=2");
    const auto at = [&](double celsius) {
        return qm::designNoise(*d->form, withNoise(5, 1, {}, celsius)).result;
    };
    const qm::NoiseResult cold = at(-40), room = at(27);
    EXPECT_EQ(room.temperatureC, 27);
    for (const qm::NoiseContributor& k : room.contributors) {
        const double ratio = named(cold, k.name).rmsV / k.rmsV;
        if (k.kind == qm::NoiseSourceKind::Resistor)
            EXPECT_NEAR_REL(ratio, std::sqrt(233.15 / 300.15), 1e-9) << k.name;
        else
            EXPECT_NEAR_REL(ratio, 1, 1e-12) << k.name;
    }
}

TEST(DesignNoiseSettings, ChartFrequenciesAndBand)
{
    const auto d = buildDesign("--poles 4 --cutoff 2k");
    const qm::NoiseResult r = qm::designNoise(*d->form, {}).result;
    ASSERT_EQ(r.freqsHz.size(), 570u);
    EXPECT_DOUBLE_EQ(r.freqsHz.front(), 100);
    EXPECT_DOUBLE_EQ(r.freqsHz.back(), 100e3);
    EXPECT_EQ(r.bandLowHz, 100);
    EXPECT_EQ(r.bandHighHz, 100e3);
    EXPECT_NEAR_REL(r.freqsHz[1] / r.freqsHz[0], r.freqsHz[569] / r.freqsHz[568], 1e-12);
}

TEST(DesignNoiseSettings, SignalToNoiseAndDynamicRange)
{
    const auto d = buildDesign("--poles 4 --gain A=2 --gain B=5");
    qm::AnalysisSettings s = withNoise(10, 1);
    EXPECT_FALSE(qm::designNoise(*d->form, s).signalToNoiseDb);
    EXPECT_FALSE(qm::designNoise(*d->form, s).dynamicRangeDb);
    s.amplifier.signalPeakV = 0.1;
    s.amplifier.swingPeakV = 12;
    const qm::DesignNoise n = qm::designNoise(*d->form, s);
    const double noise = n.result.integratedRmsV;
    ASSERT_TRUE(n.signalToNoiseDb && n.dynamicRangeDb);
    // 0.1 V peak at the input is near 1 V peak at the output of a gain of
    // 10, as near as the E24 resistors set it.
    const double gain = n.result.passbandGain;
    EXPECT_NEAR_REL(gain, 10, 0.01);
    EXPECT_NEAR_REL(*n.signalToNoiseDb, 20 * std::log10(0.1 * gain / std::sqrt(2) / noise), 1e-9);
    EXPECT_NEAR_REL(*n.dynamicRangeDb, 20 * std::log10(12 / std::sqrt(2) / noise), 1e-9);
}

struct FigureCase
{
    std::string name;
    qm::NoiseSettings settings;
    qm::AmplifierChoice device;
    double en, in;
    qm::FigureOrigin enOrigin, inOrigin;
};

void PrintTo(const FigureCase& c, std::ostream* os)
{
    *os << c.name;
}

qm::NoiseSettings typed(std::optional<double> en, std::optional<double> in)
{
    qm::NoiseSettings s;
    s.enNanoVolts = en;
    s.inPicoAmps = in;
    return s;
}

qm::AmplifierChoice device(const std::string& name, std::optional<double> vn,
                           std::optional<double> ib)
{
    qm::AmplifierChoice a;
    a.deviceName = name;
    a.noiseDensity = vn;
    a.biasCurrentA = ib;
    return a;
}

using O = qm::FigureOrigin;
// √(2·q·2 µA) = 0.800544 pA/√Hz.
const std::vector<FigureCase> kFigures = {
    {"nothing", {}, {}, 0, 0, O::None, O::None},
    {"typed", typed(4, 2), {}, 4e-9, 2e-12, O::Entered, O::Entered},
    {"device", {}, device("KRN1", 9e-9, 2e-6), 9e-9, 0.800544e-12, O::Catalogue, O::ShotNoiseOfIb},
    {"typed_over_device", typed(4, 2), device("KRN1", 9e-9, 2e-6), 4e-9, 2e-12, O::Entered,
     O::Entered},
    {"typed_en_device_ib", typed(4, {}), device("KRN1", 9e-9, 2e-6), 4e-9, 0.800544e-12, O::Entered,
     O::ShotNoiseOfIb},
    {"device_without_figures", {}, device("KRN1", {}, {}), 0, 0, O::None, O::None},
    {"figures_without_a_device", {}, device("", 9e-9, 2e-6), 0, 0, O::None, O::None},
};

class AmplifierFigures : public ::testing::TestWithParam<FigureCase>
{
};

TEST_P(AmplifierFigures, TypedFirstThenTheChosenDevice)
{
    const FigureCase& c = GetParam();
    const qm::AmplifierNoise a = qm::amplifierNoiseOf(c.settings, c.device);
    EXPECT_NEAR_REL(a.enVoltsPerRootHz, c.en, 1e-12);
    EXPECT_NEAR_REL(a.inAmpsPerRootHz, c.in, 1e-6);
    EXPECT_EQ(a.enOrigin, c.enOrigin);
    EXPECT_EQ(a.inOrigin, c.inOrigin);
}

INSTANTIATE_TEST_SUITE_P(Cases, AmplifierFigures, ::testing::ValuesIn(kFigures),
                         qm::test::CaseName());

TEST(AmplifierFigures, SayWhereTheyCameFrom)
{
    EXPECT_EQ(qm::originText(O::None), "none");
    EXPECT_EQ(qm::originText(O::Entered), "entered");
    EXPECT_EQ(qm::originText(O::Catalogue), "catalogue Vn");
    EXPECT_EQ(qm::originText(O::ShotNoiseOfIb), "shot noise of catalogue Ib");
}

TEST(AmplifierFigures, GainBandwidthTypedElseTheDevicesElseIdeal)
{
    qm::FilterCircuit c;
    qm::AmplifierSettings s;
    EXPECT_FALSE(qm::amplifierGbwOf(s, c));
    c.amplifierBandwidthHz = 5e6;
    EXPECT_FALSE(qm::amplifierGbwOf(s, c)) << "no device chosen";
    c.amplifierName = "KRN1";
    EXPECT_EQ(qm::amplifierGbwOf(s, c), 5e6);
    s.gbwHz = 1e6;
    EXPECT_EQ(qm::amplifierGbwOf(s, c), 1e6);
}

TEST(NoiseGrid, LogFrequenciesAndTheTrapezoid)
{
    const std::vector<double> f = qm::logFrequencies(10, 1e4, 301);
    ASSERT_EQ(f.size(), 301u);
    EXPECT_EQ(f.front(), 10);
    EXPECT_EQ(f.back(), 1e4);
    EXPECT_NEAR_REL(f[100], 100, 1e-12);
    EXPECT_EQ(qm::logFrequencies(5, 5, 1), std::vector<double>{5});
    EXPECT_THROW(qm::logFrequencies(0, 5, 3), std::invalid_argument);
    EXPECT_THROW(qm::logFrequencies(6, 5, 3), std::invalid_argument);
    // A narrow band still gets points; a wide one 400 a decade.
    EXPECT_EQ(qm::integrationFrequencies(1000, 1001).size(), 65u);
    EXPECT_EQ(qm::integrationFrequencies(1, 1e3).size(), 1201u);
    // Straight lines integrate exactly.
    std::vector<double> line;
    for (double x : f)
        line.push_back(3 * x + 2);
    EXPECT_NEAR_REL(qm::trapezoid(f, line), 1.5 * (1e8 - 100) + 2 * (1e4 - 10), 1e-12);
    line.pop_back();
    EXPECT_THROW(qm::trapezoid(f, line), std::invalid_argument);
}

TEST(NoiseAnalysis, RefusesABandThatIsNone)
{
    const qm::FilterCircuit c = realStage(false);
    for (const auto& [low, high] : {std::pair(0.0, 10.0), std::pair(10.0, 10.0),
                                    std::pair(100.0, 10.0), std::pair(-1.0, 10.0)}) {
        try {
            qm::noiseAnalysis(c, {{}, {100}, low, high});
            ADD_FAILURE() << low << " to " << high << " was taken";
        } catch (const std::invalid_argument& e) {
            EXPECT_STREQ(e.what(), "the noise band must be 0 < f1 < f2");
        }
    }
}

TEST(NoiseAnalysis, RefusesATemperatureBelowAbsoluteZero)
{
    try {
        qm::noiseAnalysis(realStage(false), {{{}, {}, -273.15}, {100}, 10, 1000});
        ADD_FAILURE() << "absolute zero was taken";
    } catch (const std::invalid_argument& e) {
        EXPECT_STREQ(e.what(), "the temperature must be above absolute zero");
    }
    const qm::NoiseResult r =
        qm::noiseAnalysis(realStage(false), {{{}, {}, -273.14}, {100}, 10, 1000});
    EXPECT_GT(r.integratedRmsV, 0) << "a hundredth of a kelvin still has noise";
}

TEST(NoiseAnalysis, NoStagesNoNoise)
{
    const qm::NoiseResult r = qm::noiseAnalysis({}, {{}, {10, 100}, 10, 100});
    EXPECT_TRUE(r.contributors.empty());
    EXPECT_EQ(r.outputDensity, (std::vector<double>{0, 0}));
    EXPECT_EQ(r.integratedRmsV, 0);
}

} // namespace
