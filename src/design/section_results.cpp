#include "design/section_results.h"

#include "design/component_pass.h"
#include "design/sensitivity_table.h"
#include "design/table_lines.h"
#include "design/value_labels.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qm {

namespace {

/// The fields that a measurement of a sensitivity writes on its way; they
/// are put back, so that keeping the results changes nothing of the run.
class ScratchFields
{
  public:
    explicit ScratchFields(QuellmarkForm& f)
        : f_(f), b0Real_(f.b0Real), b1Real_(f.b1Real), anaWn_(f.anaWn), anaQ_(f.anaQ),
          sectionGain_(f.sectionGain), sensFnValue_(f.sensFnValue), sensQValue_(f.sensQValue),
          workText_(f.workText), sensFnText_(f.sensFnText), sensQText_(f.sensQText)
    {
    }
    ~ScratchFields()
    {
        f_.b0Real = b0Real_;
        f_.b1Real = b1Real_;
        f_.anaWn = anaWn_;
        f_.anaQ = anaQ_;
        f_.sectionGain = sectionGain_;
        f_.sensFnValue = sensFnValue_;
        f_.sensQValue = sensQValue_;
        f_.workText = std::move(workText_);
        f_.sensFnText = std::move(sensFnText_);
        f_.sensQText = std::move(sensQText_);
    }
    ScratchFields(const ScratchFields&) = delete;
    ScratchFields& operator=(const ScratchFields&) = delete;

  private:
    QuellmarkForm& f_;
    float b0Real_, b1Real_, anaWn_, anaQ_, sectionGain_, sensFnValue_, sensQValue_;
    std::string workText_, sensFnText_, sensQText_;
};

/// A prototype part and the name its schematic gives it in each passband.
struct PrototypePart
{
    Part part;
    const char* lowPassName;
    const char* highPassName;
};

/// The parts a section has, in the order of the value table's columns.
std::vector<PrototypePart> partsOf(const QuellmarkForm& f, bool real)
{
    const bool sk = f.circuitType == 1;
    if (real) return {{Part::R1, "R1", "C1"}, {Part::C1, "C1", "R1"}};
    std::vector<PrototypePart> parts{{Part::R1, "R1", "C1"}, {Part::R2, "R2", "C2"}};
    if (!sk) parts.push_back({Part::R3, "R3", "C3"});
    // Sallen-Key gain resistors stay resistors in a high-pass section.
    if (sk && f.RThree > 0 && f.RFour > 0) {
        parts.push_back({Part::R3, "R3", "R3"});
        parts.push_back({Part::R4, "R4", "R4"});
    }
    parts.push_back({Part::C1, "C1", "R1"});
    parts.push_back({Part::C2, "C2", "R2"});
    return parts;
}

/// The value of a prototype part as the circuit shown uses it.
double valueOf(const QuellmarkForm& f, int j, Part p, bool highPass)
{
    const bool sk = f.circuitType == 1;
    switch (p) {
    case Part::R1:
        return highPass ? Cmap(f, j, f.ROne) : d64(f.ROne);
    case Part::R2:
        return highPass ? Cmap(f, j, f.RTwo) : d64(f.RTwo);
    case Part::R3:
        return highPass && !sk ? Cmap(f, j, f.RThree) : d64(f.RThree);
    case Part::R4:
        return d64(f.RFour);
    case Part::C1:
        return highPass ? Rmap(f, j, f.C1[j]) : d64(f.C1[j]);
    case Part::C2:
        break;
    }
    return highPass ? Rmap(f, j, shownC2(f, j)) : shownC2(f, j);
}

/// Percent changes of Fn and Q of section j when part p rises by 1%, as the
/// sensitivity texts of the screen measure them.
PartSensitivity measure(QuellmarkForm& f, int j, Part p, bool real)
{
    PartSensitivity s;
    f.sensFnValue = 0;
    f.sensQValue = 0;
    perturbNumbers(f, j, p);
    if (real) {
        // A real stage's b0 is its pole, and it has no Q.
        const double b0 = d64(f.b0[j]);
        s.fnPercent = b0 != 0 ? (d64(f.b0Real) - b0) * 100 / b0 : 0;
        s.hasQ = false;
    } else {
        s.fnPercent = d64(f.sensFnValue);
        s.qPercent = d64(f.sensQValue);
    }
    return s;
}

constexpr double kTwoPi = 2 * Pi;

/// Fn in Hz and Q of the factor s² + b1·s + b0, or of s + b0 for a real pole.
std::pair<double, double> fnAndQ(double b0, double b1, bool real)
{
    if (real) return {b0 / kTwoPi, 0.0};
    const double root = std::sqrt(std::max(b0, 0.0));
    return {root / kTwoPi, b1 != 0 ? root / b1 : 0.0};
}

/// A low-pass Fn moved into the passband of the design.
double inPassband(const QuellmarkForm& f, double fn)
{
    if (f.InvCalc.value != 1 || fn == 0) return fn;
    return d64(f.fc) * d64(f.fc) / fn;
}

} // namespace

void keepSectionResult(QuellmarkForm& f, int j)
{
    if (j == f.sectionRows)
        for (SectionResult& r : f.sectionResults)
            r = SectionResult{};
    const int q = f.sectionRows - j;
    if (q < 0 || q >= static_cast<int>(f.sectionResults.size())) return;
    SectionResult& r = f.sectionResults[static_cast<std::size_t>(q)];
    const bool real = f.n % 2 != 0 && j == f.sectionRows;
    const bool highPass = f.InvCalc.value == 1;
    r.inUse = true;
    r.realStage = real;
    r.name =
        real ? std::string("Real") : std::string(1, static_cast<char>('A' + q - f.realPoleCount));
    const auto [targetFn, targetQ] = fnAndQ(d64(f.b0Design), d64(f.b1Design), real);
    const auto [fn, Q] = fnAndQ(d64(f.b0[j]), d64(f.b1[j]), real);
    r.targetFn = inPassband(f, targetFn);
    r.targetQ = targetQ;
    r.realisedFn = inPassband(f, fn);
    r.realisedQ = Q;
    r.gain = d64(f.stageGain[static_cast<std::size_t>(j)]);
    r.requiredGBP = requiredGBPOf(f, q);
    r.responseGainDB = d64(f.gainDBAtResp[static_cast<std::size_t>(q)]);
    r.responsePhaseDeg = d64(f.phaseAtResp[static_cast<std::size_t>(q)]);
    const bool differentialReal = real && f.FDAcircuit.checked() && f.circuitType == 0;
    ScratchFields scratch(f);
    for (const PrototypePart& p : partsOf(f, real)) {
        const std::string name = highPass ? p.highPassName : p.lowPassName;
        r.parts.push_back({name, valueOf(f, j, p.part, highPass)});
        // The differential real stage's feedback twin of its input part.
        if (differentialReal && p.part == Part::R1)
            r.parts.push_back({highPass ? "C1'" : "R1'", r.parts.back().value});
        PartSensitivity s = measure(f, j, p.part, real);
        s.name = name;
        r.sensitivities.push_back(s);
    }
    // Resistors, then capacitors, as the value table's head lists them.
    auto byName = [](const auto& a, const auto& b) {
        return std::make_pair(a.name[0] != 'R', a.name) < std::make_pair(b.name[0] != 'R', b.name);
    };
    std::sort(r.parts.begin(), r.parts.end(), byName);
    std::sort(r.sensitivities.begin(), r.sensitivities.end(), byName);
}

} // namespace qm
