#include "circuit/circuit_builder.h"

#include "chart/chart_pass.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <cmath>

namespace qm {

namespace {

/// A part of a stage's low-pass picture: its name there and its two nodes
/// by name. `setsFrequency` parts change kind in the high-pass picture.
struct Placement
{
    const char* role;
    const char* from;
    const char* to;
    bool setsFrequency = true;
    bool mirrored = true; ///< a differential stage has it on both sides
};

/// The pieces of one kind of stage, as its schematic draws them.
struct StageLayout
{
    std::vector<const char*> nodes; ///< after the ground
    std::vector<Placement> parts;
    const char* plus;
    const char* minus;
    const char* out;
    const char* outMinus; ///< nullptr for a single-ended amplifier
    std::array<const char*, 2> in, output;
};

// R1 into the node X, R2 from X to the output, R3 from X to the inverting
// input, C1 from there to the output, C2 from X to the ground.
const StageLayout kMultipleFeedback{{"in", "x", "inv", "out"},
                                    {{"R1", "in", "x"},
                                     {"R2", "x", "out"},
                                     {"R3", "x", "inv"},
                                     {"C1", "inv", "out"},
                                     {"C2", "x", "0"}},
                                    "0",
                                    "inv",
                                    "out",
                                    nullptr,
                                    {"in", nullptr},
                                    {"out", nullptr}};

// The upper half drives the inverting input and takes the positive output;
// one C2 joins the two nodes X.
const StageLayout kDifferentialMultipleFeedback{
    {"inp", "xp", "invp", "outp", "inn", "xn", "invn", "outn"},
    {{"R1", "inp", "xp"},
     {"R2", "xp", "outp"},
     {"R3", "xp", "invp"},
     {"C1", "invp", "outp"},
     {"C2", "xp", "xn", true, false}},
    "invn",
    "invp",
    "outp",
    "outn",
    {"inp", "inn"},
    {"outp", "outn"}};

// R1 and R2 in line to the non-inverting input, C1 from there to the
// ground, C2 from between R1 and R2 to the output.
const StageLayout kSallenKey{
    {"in", "a", "b", "out"},
    {{"R1", "in", "a"}, {"R2", "a", "b"}, {"C1", "b", "0"}, {"C2", "a", "out"}},
    "b",
    "out",
    "out",
    nullptr,
    {"in", nullptr},
    {"out", nullptr}};

// The gain pair: R3 from the inverting input to the ground, R4 to the output.
const StageLayout kSallenKeyWithGain{{"in", "a", "b", "out", "inv"},
                                     {{"R1", "in", "a"},
                                      {"R2", "a", "b"},
                                      {"C1", "b", "0"},
                                      {"C2", "a", "out"},
                                      {"R3", "inv", "0", false},
                                      {"R4", "inv", "out", false}},
                                     "b",
                                     "inv",
                                     "out",
                                     nullptr,
                                     {"in", nullptr},
                                     {"out", nullptr}};

// R1 and C1 ahead of a follower.
const StageLayout kRealStage{{"in", "a", "out"},
                             {{"R1", "in", "a"}, {"C1", "a", "0"}},
                             "a",
                             "out",
                             "out",
                             nullptr,
                             {"in", nullptr},
                             {"out", nullptr}};

// R1 into each input, its twin R1' and C1 across each side.
const StageLayout kDifferentialRealStage{
    {"inp", "invp", "outp", "inn", "invn", "outn"},
    {{"R1", "inp", "invp"}, {"R1'", "invp", "outp"}, {"C1", "invp", "outp"}},
    "invn",
    "invp",
    "outp",
    "outn",
    {"inp", "inn"},
    {"outp", "outn"}};

std::string listChoice(const Control& list)
{
    if (list.listIndex < 0 || list.listIndex >= static_cast<int>(list.items.size())) return {};
    return list.items[static_cast<std::size_t>(list.listIndex)];
}

/// The name a part has in the high-pass picture: resistors that set the
/// frequency become capacitors and the other way round.
std::string roleIn(const Placement& p, bool highPass)
{
    std::string role = p.role;
    if (highPass && p.setsFrequency) role[0] = role[0] == 'R' ? 'C' : 'R';
    return role;
}

/// A node of the upper half renamed for the lower one: "xp" to "xn".
std::string mirroredNode(const std::string& node)
{
    if (node.size() > 1 && node.back() == 'p') return node.substr(0, node.size() - 1) + "n";
    return node;
}

class StageBuilder
{
  public:
    StageBuilder(const QuellmarkForm& f, const SectionResult& r, const StageLayout& layout,
                 StageCircuit& stage)
        : f_(f), r_(r), layout_(layout), stage_(stage)
    {
        stage_.nodeNames.emplace_back("0");
        for (const char* n : layout.nodes)
            stage_.nodeNames.emplace_back(n);
    }

    void build(const std::string& resistorSeries, const std::string& capacitorSeries)
    {
        const bool differential = layout_.outMinus != nullptr;
        for (const Placement& p : layout_.parts) {
            if (!valueOf(roleIn(p, stage_.highPass))) continue;
            add(p, false, resistorSeries, capacitorSeries);
            if (differential && p.mirrored) add(p, true, resistorSeries, capacitorSeries);
        }
        StageAmplifier& a = stage_.amplifier;
        a.differential = differential;
        a.plus = node(layout_.plus);
        a.minus = node(layout_.minus);
        a.out = node(layout_.out);
        a.outMinus = differential ? node(layout_.outMinus) : kGround;
        stage_.in = {node(layout_.in[0]), differential ? node(layout_.in[1]) : kGround};
        stage_.out = {node(layout_.output[0]), differential ? node(layout_.output[1]) : kGround};
    }

  private:
    int node(const std::string& name) const
    {
        for (std::size_t i = 0; i < stage_.nodeNames.size(); ++i)
            if (stage_.nodeNames[i] == name) return static_cast<int>(i);
        return kGround;
    }

    /// The value the results give for a part; a twin R1' (C1' in high-pass)
    /// is its input part's equal.
    std::optional<double> valueOf(std::string role) const
    {
        if (role.back() == '\'') role.pop_back();
        for (const NamedValue& v : r_.parts)
            if (v.name == role) return v.value;
        return std::nullopt;
    }

    void add(const Placement& p, bool lower, const std::string& resistorSeries,
             const std::string& capacitorSeries)
    {
        CircuitPart part;
        part.role = roleIn(p, stage_.highPass);
        part.kind = part.role[0] == 'C' ? PartKind::Capacitor : PartKind::Resistor;
        part.value = valueOf(part.role).value_or(0);
        std::string base = part.role;
        if (base.back() == '\'') base.back() = 'p';
        part.designator = base + stage_.name + (lower ? "_N" : "");
        part.lowerHalf = lower;
        part.from = node(lower ? mirroredNode(p.from) : p.from);
        part.to = node(lower ? mirroredNode(p.to) : p.to);
        part.valueText = shownValue(part);
        part.series = part.kind == PartKind::Capacitor ? capacitorSeries : resistorSeries;
        if (part.kind == PartKind::Capacitor && entered(part.role)) part.series = "Entered";
        stage_.parts.push_back(part);
    }

    std::string shownValue(const CircuitPart& p) const
    {
        if (!std::isfinite(p.value) || std::fabs(p.value) > 3e38) return "?";
        const std::string text = Engsuffix(static_cast<float>(p.value), f_.digits,
                                           p.kind == PartKind::Capacitor ? "F" : "", f_.decSep);
        const auto end = text.find_last_not_of(' ');
        return end == std::string::npos ? text : text.substr(0, end + 1);
    }

    /// Whether the designer typed this capacitor: only low-pass designs
    /// take capacitor entries.
    bool entered(const std::string& role) const
    {
        if (stage_.highPass) return false;
        const auto filled = [](const Control& c) {
            return c.text.find_first_not_of(' ') != std::string::npos;
        };
        if (r_.realStage) return role == "C1" && filled(f_.C1RealEntry);
        const int row = r_.name.empty() ? -1 : r_.name[0] - 'A';
        if (row < 0 || row >= 5) return false;
        const auto e = static_cast<std::size_t>(row);
        if (role == "C1") return filled(f_.C1Entry[e]);
        if (role == "C2") return filled(f_.C2Entry[e]);
        return false;
    }

    const QuellmarkForm& f_;
    const SectionResult& r_;
    const StageLayout& layout_;
    StageCircuit& stage_;
};

const StageLayout& layoutOf(StageKind kind, bool gainResistors)
{
    switch (kind) {
    case StageKind::MultipleFeedback:
        break;
    case StageKind::DifferentialMultipleFeedback:
        return kDifferentialMultipleFeedback;
    case StageKind::SallenKey:
        return gainResistors ? kSallenKeyWithGain : kSallenKey;
    case StageKind::RealStage:
        return kRealStage;
    case StageKind::DifferentialRealStage:
        return kDifferentialRealStage;
    }
    return kMultipleFeedback;
}

StageKind kindOf(const QuellmarkForm& f, const SectionResult& r)
{
    const bool differential = f.circuitType == 0 && f.FDAcircuit.checked();
    if (r.realStage) return differential ? StageKind::DifferentialRealStage : StageKind::RealStage;
    if (f.circuitType == 1) return StageKind::SallenKey;
    return differential ? StageKind::DifferentialMultipleFeedback : StageKind::MultipleFeedback;
}

bool hasGainResistors(const SectionResult& r)
{
    for (const NamedValue& v : r.parts)
        if (v.name == "R4") return true;
    return false;
}

/// The chart's first power of ten: its left edge is just under it.
double decadeStart(float fc)
{
    return std::pow(10.0, std::round(std::log10(d64(sweepStart(fc)))));
}

} // namespace

FilterCircuit filterCircuitOf(const QuellmarkForm& f)
{
    FilterCircuit c;
    c.differential = f.circuitType == 0 && f.FDAcircuit.checked();
    c.highPass = f.InvCalc.value == 1;
    c.cutoffHz = d64(f.fc);
    constexpr double kThreeDecades = 1000;
    c.sweepStartHz = decadeStart(f.fc);
    c.sweepStopHz = c.sweepStartHz * kThreeDecades;
    c.description = f.Label8.text;
    c.resistorSeries = listChoice(f.ResistorList);
    c.capacitorSeries = listChoice(f.CapacitorList);
    c.amplifierName = f.catalogue.amplifier.deviceName;
    c.amplifierBandwidthHz = f.catalogue.amplifier.bandwidthHz;
    c.amplifierSlewRateVPerUs = f.catalogue.amplifier.slewRateVPerUs;
    if (const auto& supply = f.catalogue.amplifier.supplyMaxV) c.amplifierSwingV = *supply / 2;
    for (const SectionResult& r : f.sectionResults) {
        if (!r.inUse) continue;
        StageCircuit s;
        s.name = r.name;
        s.kind = kindOf(f, r);
        s.highPass = c.highPass;
        s.requiredGBP = r.requiredGBP;
        StageBuilder(f, r, layoutOf(s.kind, hasGainResistors(r)), s)
            .build(c.resistorSeries, c.capacitorSeries);
        s.amplifier.designator = "U" + std::to_string(c.stages.size() + 1);
        c.stages.push_back(std::move(s));
    }
    return c;
}

} // namespace qm
