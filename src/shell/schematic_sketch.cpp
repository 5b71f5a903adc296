#include "shell/schematic_sketch.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>

namespace qm {

QPointF Amplifier::upperOutput() const
{
    // On the upper slanted side, 35% of the height down.
    constexpr double kDown = 0.35;
    return {topLeft.x() + width * kDown * 2, topLeft.y() + height * kDown};
}

QPointF Amplifier::lowerOutput() const
{
    constexpr double kUp = 0.35;
    return {topLeft.x() + width * kUp * 2, topLeft.y() + height * (1 - kUp)};
}

const Part* Sketch::part(const QString& name) const
{
    auto it =
        std::find_if(parts.begin(), parts.end(), [&](const Part& p) { return p.name == name; });
    return it == parts.end() ? nullptr : &*it;
}

std::optional<PictureKind> pictureOf(std::string_view base)
{
    using C = Circuit;
    struct Entry
    {
        const char* base;
        PictureKind kind;
    };
    static constexpr Entry kPictures[] = {
        {"MFBsch", {C::MultipleFeedback, false}},
        {"MFBschHP", {C::MultipleFeedback, true}},
        {"FDAsch", {C::DifferentialMultipleFeedback, false}},
        {"FDAschHP", {C::DifferentialMultipleFeedback, true}},
        {"SK", {C::SallenKey, false}},
        {"SKhp", {C::SallenKey, true}},
        {"SKg1", {C::SallenKeyUnity, false}},
        {"SKg1HP", {C::SallenKeyUnity, true}},
        {"RealPole", {C::RealStage, false}},
        {"RealHP", {C::RealStage, true}},
        {"FDA1p", {C::DifferentialRealStage, false}},
        {"FDARealHP", {C::DifferentialRealStage, true}},
    };
    for (const Entry& e : kPictures)
        if (base == e.base) return e.kind;
    return std::nullopt;
}

namespace {

constexpr double S = kSignalY;
constexpr double S2 = kDifferentialSignalY;

class Builder
{
  public:
    void wire(std::initializer_list<QPointF> points) { s.wires.emplace_back(points); }
    Part& part(PartKind kind, QPointF centre, bool vertical, const char* name, Side side)
    {
        s.parts.push_back({kind, centre, vertical, QString::fromLatin1(name), side});
        return s.parts.back();
    }
    Part& resistor(QPointF c, bool vertical, const char* name, Side side)
    {
        return part(PartKind::Resistor, c, vertical, name, side);
    }
    Part& capacitor(QPointF c, bool vertical, const char* name, Side side)
    {
        return part(PartKind::Capacitor, c, vertical, name, side);
    }
    void ground(QPointF p) { s.grounds.push_back(p); }
    void dot(QPointF p) { s.dots.push_back(p); }
    const Amplifier& amplifier(QPointF topLeft, double w, double h, bool differential,
                               bool invertingOnTop)
    {
        s.amplifiers.push_back({topLeft, w, h, differential, invertingOnTop});
        return s.amplifiers.back();
    }

    Sketch s;
};

/// Where the outputs of a section gather: in a multiple-feedback section
/// clear of the value label of C1 beside them, with the junctions' dots
/// inside the picture.
constexpr double kBusX = 2125;

/// The input resistor, the node X, and R3 towards the amplifier: the signal
/// line of a multiple-feedback section at height y. The mirrored lower half
/// of a differential section (`upper` false) carries no names.
void multipleFeedbackInput(Builder& b, double y, bool upper)
{
    b.wire({{0, y}, {60, y}});
    b.resistor({240, y}, false, "R1", Side::Below).named = upper;
    b.wire({{420, y}, {560, y}});
    b.dot({500, y});
    b.resistor({740, y}, false, "R3", Side::Below).named = upper;
    b.dot({1250, y});
}

/// The two feedback paths, C1 from the inverting input and R2 from the node
/// X, to the output bus. `c1Y`, `r2Y` are the heights of the paths.
void multipleFeedbackPaths(Builder& b, double y, double c1Y, double r2Y, bool upper)
{
    b.wire({{1250, y}, {1250, c1Y}, {1420, c1Y}});
    b.capacitor({1600, c1Y}, false, "C1", Side::Above).named = upper;
    b.wire({{1780, c1Y}, {kBusX, c1Y}});
    b.dot({kBusX, c1Y});
    b.wire({{500, y}, {500, r2Y}, {1000, r2Y}});
    b.resistor({1180, r2Y}, false, "R2", Side::Below).named = upper;
    b.wire({{1360, r2Y}, {kBusX, r2Y}});
}

Sketch multipleFeedback()
{
    Builder b;
    multipleFeedbackInput(b, S, true);
    multipleFeedbackPaths(b, S, 420, 150, true);
    const Amplifier& a = b.amplifier({1300, 780}, 450, 480, false, true);
    b.wire({{920, S}, {1250, S}, {1250, a.upperInput().y()}, a.upperInput()});
    b.wire({a.lowerInput(), {1200, a.lowerInput().y()}, {1200, 1200}});
    b.ground({1200, 1200});
    b.wire({{kBusX, 150}, {kBusX, a.output().y()}, a.output()});
    b.wire({{500, S}, {500, 850}});
    b.capacitor({500, 1030}, true, "C2", Side::Left);
    b.ground({500, 1210});
    b.wire({{kBusX, S}, {2150, S}});
    b.dot({kBusX, S});
    return b.s;
}

/// Two multiple-feedback halves round one differential amplifier; the lower
/// half is drawn closer than a mirror would, so that two lines of these fit
/// on the screen.
Sketch differentialMultipleFeedback()
{
    Builder b;
    multipleFeedbackInput(b, S, true);
    multipleFeedbackInput(b, S2, false);
    multipleFeedbackPaths(b, S, 420, 150, true);
    constexpr double kLowerC1 = S2 + 195;
    constexpr double kLowerR2 = S2 + 330;
    multipleFeedbackPaths(b, S2, kLowerC1, kLowerR2, false);
    const Amplifier& a = b.amplifier({1300, 700}, 500, 640, true, true);
    b.wire({{920, S}, {1250, S}, {1250, a.upperInput().y()}, a.upperInput()});
    b.wire({{920, S2}, {1250, S2}, {1250, a.lowerInput().y()}, a.lowerInput()});
    b.wire({{kBusX, 150}, {kBusX, a.upperOutput().y()}, a.upperOutput()});
    b.wire({{kBusX, kLowerR2}, {kBusX, a.lowerOutput().y()}, a.lowerOutput()});
    // One capacitor between the two nodes X stands for a capacitor to
    // ground on each side.
    b.wire({{500, S}, {500, 840}});
    b.capacitor({500, 1020}, true, "C2", Side::Left);
    b.wire({{500, 1200}, {500, S2}});
    // The outputs reach over the gap to the next section.
    constexpr double kRightEdge = 2270;
    b.wire({{kBusX, S}, {kRightEdge, S}});
    b.wire({{kBusX, S2}, {kRightEdge, S2}});
    b.dot({kBusX, S});
    b.dot({kBusX, S2});
    return b.s;
}

/// R1, R2, C1 and C2 round the non-inverting input; `unity` ties the
/// inverting input to the output, else R3 and R4 set the gain. R1 and R2
/// stand in line on the input line, R1's value label over R1 alone.
Sketch sallenKey(bool unity)
{
    Builder b;
    constexpr double kY = S;
    b.wire({{0, S}, {60, S}});
    b.resistor({240, S}, false, "R1", Side::Below);
    // The node between R1 and R2 stands clear of R1's value label.
    b.wire({{420, S}, {470, S}, {470, 150}, {1420, 150}});
    b.dot({470, kY});
    b.resistor({650, kY}, false, "R2", Side::Below);
    const Amplifier& a = b.amplifier({1260, kY - 120}, 450, 480, false, false);
    // Node Y past the end of R2: C1 to ground, clear of C1's value label
    // on its left, and the non-inverting input.
    constexpr double kNodeY = 855;
    b.wire({{830, kY}, a.upperInput()});
    b.dot({kNodeY, kY});
    b.wire({{kNodeY, kY}, {kNodeY, 820}});
    b.capacitor({kNodeY, 1000}, true, "C1", Side::Right);
    b.ground({kNodeY, 1180});
    b.capacitor({1600, 150}, false, "C2", Side::Below);
    b.wire({{1780, 150}, {kBusX, 150}, {kBusX, a.output().y()}, a.output()});
    // The inverting input's line comes down right of C1's name.
    const QPointF minus = a.lowerInput();
    constexpr double kMinusX = 1200;
    if (unity) {
        b.wire(
            {minus, {kMinusX, minus.y()}, {kMinusX, 1300}, {kBusX, 1300}, {kBusX, a.output().y()}});
    } else {
        b.wire({minus, {kMinusX, minus.y()}, {kMinusX, 1400}});
        b.wire({{1140, 1400}, {1320, 1400}});
        b.dot({kMinusX, 1400});
        b.resistor({960, 1400}, false, "R3", Side::Below).setsFrequency = false;
        b.ground({780, 1400});
        b.resistor({1500, 1400}, false, "R4", Side::Below).setsFrequency = false;
        b.wire({{1680, 1400}, {kBusX, 1400}, {kBusX, a.output().y()}});
    }
    b.dot({kBusX, a.output().y()});
    b.wire({{kBusX, S}, {2150, S}});
    b.dot({kBusX, S});
    return b.s;
}

// The real stage's own lines: its input where its value labels stand, its
// outputs where the sections' inputs are.
constexpr double kRealOut = S + kRealStageRaise;
constexpr double kRealOut2 = S2 + kRealStageRaise;
constexpr double kRealWidth = 1850;

/// R1 and C1 ahead of a follower, whose feedback runs over the amplifier:
/// below it stands the value label of C1.
Sketch realStage()
{
    Builder b;
    constexpr double kIn = 750;
    constexpr double kOut = 1500;
    b.wire({{0, kIn}, {60, kIn}});
    b.resistor({240, kIn}, false, "R1", Side::Below);
    const Amplifier& a = b.amplifier({900, kIn - 360}, 450, 480, false, true);
    b.wire({{420, kIn}, a.lowerInput()});
    b.dot({480, kIn});
    b.wire({{480, kIn}, {480, 930}});
    b.capacitor({480, 1110}, true, "C1", Side::Left);
    b.ground({480, 1290});
    const QPointF minus = a.upperInput();
    constexpr double kOver = 300;
    b.wire({minus, {850, minus.y()}, {850, kOver}, {kOut, kOver}, {kOut, kRealOut}});
    b.wire({a.output(), {kOut, a.output().y()}});
    b.dot({kOut, a.output().y()});
    b.wire({{kOut, kRealOut}, {kRealWidth, kRealOut}});
    return b.s;
}

/// One half of the differential real stage: R1 into the amplifier, its twin
/// R1' and C1 in parallel across it from the output. `dir` is -1 for the upper half,
/// whose feedback stands above its input line, 1 for the lower.
void differentialRealHalf(Builder& b, double in, double pin, QPointF out, double tap, double dir,
                          bool upper)
{
    // The resistor stands outside the capacitor, each with room for the value
    // label that the screen puts by the pair.
    const double rY = in + dir * 315;
    const double cY = in + dir * 175;
    b.wire({{0, in}, {60, in}});
    b.resistor({240, in}, false, "R1", upper ? Side::Below : Side::Above).named = upper;
    b.wire({{420, in}, {800, in}, {800, pin}, {950, pin}});
    b.dot({800, in});
    b.wire({{800, in}, {800, rY}, {970, rY}});
    b.dot({800, cY});
    b.wire({{800, cY}, {970, cY}});
    // The pair's names stand beyond the output line, level with their parts.
    constexpr double kNamesX = 1590;
    // The feedback resistor is the input one's equal twin, R1': gain 1, the
    // pole at 1/(R1'·C1).
    Part& r = b.resistor({1150, rY}, false, "R1'", Side::Right);
    r.named = upper;
    r.nameX = kNamesX;
    Part& c = b.capacitor({1150, cY}, false, "C1", Side::Right);
    c.named = upper;
    c.nameX = kNamesX;
    constexpr double kBus = 1560;
    b.wire({{1330, rY}, {kBus, rY}});
    b.wire({{1330, cY}, {kBus, cY}});
    b.wire({out, {kBus, out.y()}});
    b.wire({{kBus, std::min(rY, out.y())}, {kBus, std::max(rY, tap)}});
    b.wire({{kBus, tap}, {kRealWidth, tap}});
    for (double y : {cY, out.y(), tap})
        if (y != std::min(rY, out.y()) && y != std::max(rY, tap)) b.dot({kBus, y});
}

/// R1 into each input of a differential amplifier, R1' (equal to R1) and C1
/// in parallel across each side: a pole at 1/(R1' C1) and a gain of 1.
Sketch differentialRealStage()
{
    Builder b;
    const Amplifier amp = b.amplifier({950, 720}, 450, 640, true, true);
    differentialRealHalf(b, 560, amp.upperInput().y(), amp.upperOutput(), kRealOut, -1, true);
    differentialRealHalf(b, kRealOut2, amp.lowerInput().y(), amp.lowerOutput(), kRealOut2, 1,
                         false);
    return b.s;
}

/// A high-pass section is its low-pass prototype with each resistor that
/// sets the frequency turned into a capacitor and each capacitor into a
/// resistor; the names go with the parts' new kinds.
void exchangeForHighPass(Sketch& s)
{
    for (Part& p : s.parts) {
        if (!p.setsFrequency) continue;
        const bool wasResistor = p.kind == PartKind::Resistor;
        p.kind = wasResistor ? PartKind::Capacitor : PartKind::Resistor;
        p.name[0] = QLatin1Char(wasResistor ? 'C' : 'R');
    }
}

/// In the differential real stage the parallel pair of each side swaps
/// places in the high-pass picture: the value label of its resistor stands
/// above the pair, that of the capacitor below it.
void raiseFeedbackResistors(Sketch& s)
{
    constexpr double kPairX = 1150;
    for (Part& r : s.parts) {
        if (r.kind != PartKind::Resistor || r.centre.x() != kPairX) continue;
        for (Part& c : s.parts)
            if (c.kind == PartKind::Capacitor && c.centre.x() == kPairX &&
                std::abs(c.centre.y() - r.centre.y()) < 200) {
                std::swap(c.centre, r.centre);
                break;
            }
    }
}

} // namespace

Sketch sketchOf(PictureKind kind)
{
    Sketch s;
    switch (kind.circuit) {
    case Circuit::MultipleFeedback:
        s = multipleFeedback();
        break;
    case Circuit::DifferentialMultipleFeedback:
        s = differentialMultipleFeedback();
        break;
    case Circuit::SallenKey:
        s = sallenKey(false);
        break;
    case Circuit::SallenKeyUnity:
        s = sallenKey(true);
        break;
    case Circuit::RealStage:
        s = realStage();
        break;
    case Circuit::DifferentialRealStage:
        s = differentialRealStage();
        break;
    }
    if (kind.highPass) {
        exchangeForHighPass(s);
        if (kind.circuit == Circuit::DifferentialRealStage) raiseFeedbackResistors(s);
    }
    return s;
}

} // namespace qm
