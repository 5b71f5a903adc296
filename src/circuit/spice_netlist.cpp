#include "circuit/spice_netlist.h"

#include <cstdio>
#include <sstream>

namespace qm {

namespace {

/// With no amplifier chosen, this many times the largest required GBP.
constexpr double kGbwMargin = 100;
/// Points per decade of the AC sweep.
constexpr int kPointsPerDecade = 100;

std::string number(double x, int digits = 10)
{
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.*g", digits, x);
    return buf;
}

/// Part values are 32-bit numbers of the design: seven digits hold them.
constexpr int kValueDigits = 7;

/// A name of letters, digits and underscores only.
std::string spiceName(const std::string& s)
{
    std::string out;
    for (char ch : s) {
        const bool plain = (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z') ||
                           (ch >= '0' && ch <= '9') || ch == '_';
        out += plain ? ch : '_';
    }
    return out;
}

/// A comment line: no line break may end the comment early.
std::string comment(const std::string& text)
{
    std::string out = "* ";
    for (char ch : text)
        out += ch == '\n' || ch == '\r' ? ' ' : ch;
    return out + "\n";
}

std::string subcircuitName(const StageCircuit& s)
{
    return "SEC_" + spiceName(s.name);
}

void singleEndedAmplifier(std::ostringstream& o)
{
    o << "* Operational amplifier: A(s) = A0 / (1 + s*A0/(2*pi*GBW)), output referred\n"
         "* to the ground.\n"
         ".subckt QM_OPAMP inp inn out\n"
         "E_GAIN g 0 inp inn {A0}\n"
         "R_POLE g p 1\n"
         "C_POLE p 0 {A0/(6.283185307179586*GBW)}\n"
         "E_OUT out 0 p 0 1\n"
         ".ends QM_OPAMP\n";
}

void differentialAmplifier(std::ostringstream& o)
{
    o << "* Fully differential amplifier: outp - outn = A(s)*(inp - inn), with\n"
         "* A(s) = A0 / (1 + s*A0/(2*pi*GBW)); the outputs' common mode at the ground.\n"
         ".subckt QM_FDA inp inn outp outn\n"
         "E_GAIN g 0 inp inn {A0}\n"
         "R_POLE g p 1\n"
         "C_POLE p 0 {A0/(6.283185307179586*GBW)}\n"
         "E_OUTP outp 0 p 0 0.5\n"
         "E_OUTN outn 0 p 0 -0.5\n"
         ".ends QM_FDA\n";
}

std::string nodeName(const StageCircuit& s, int node)
{
    return node == kGround ? "0" : s.nodeNames.at(static_cast<std::size_t>(node));
}

void stageSubcircuit(std::ostringstream& o, const StageCircuit& s)
{
    const bool diff = s.differential();
    o << "\n* Section " << s.name << "\n.subckt " << subcircuitName(s);
    if (diff)
        o << " inp inn outp outn\n";
    else
        o << " in out\n";
    for (const CircuitPart& p : s.parts)
        o << spiceName(p.designator) << ' ' << nodeName(s, p.from) << ' ' << nodeName(s, p.to)
          << ' ' << number(p.value, kValueDigits) << '\n';
    const StageAmplifier& a = s.amplifier;
    o << 'X' << spiceName(a.designator) << ' ' << nodeName(s, a.plus) << ' ' << nodeName(s, a.minus)
      << ' ' << nodeName(s, a.out);
    if (diff) o << ' ' << nodeName(s, a.outMinus);
    o << (diff ? " QM_FDA\n" : " QM_OPAMP\n") << ".ends " << subcircuitName(s) << '\n';
}

/// The cascade: the source, then each stage from the node the last left.
void topLevel(std::ostringstream& o, const FilterCircuit& c)
{
    o << "\n* The filter, driven by 1 V";
    if (c.differential) {
        o << " between inp and inn; its output is V(outp, outn)\n"
             "V_INP inp 0 DC 0 AC 0.5\n"
             "V_INN inn 0 DC 0 AC 0.5 180\n";
    } else {
        o << " at in; its output is V(out)\n"
             "V_IN in 0 DC 0 AC 1\n";
    }
    for (std::size_t i = 0; i < c.stages.size(); ++i) {
        const StageCircuit& s = c.stages[i];
        const bool last = i + 1 == c.stages.size();
        const std::string from = i == 0 ? "in" : "n" + std::to_string(i);
        const std::string to = last ? "out" : "n" + std::to_string(i + 1);
        o << 'X' << spiceName(s.name) << ' ';
        if (c.differential)
            o << from << "p " << from << "n " << to << "p " << to << "n ";
        else
            o << from << ' ' << to << ' ';
        o << subcircuitName(s) << '\n';
    }
}

} // namespace

double defaultNetlistGBW(const FilterCircuit& circuit)
{
    if (circuit.amplifierBandwidthHz && *circuit.amplifierBandwidthHz > 0)
        return *circuit.amplifierBandwidthHz;
    const double largest = circuit.largestRequiredGBP();
    return largest > 0 ? kGbwMargin * largest : 1e6;
}

std::string spiceNetlist(const FilterCircuit& c, const NetlistHeading& h)
{
    std::ostringstream o;
    o << "Quellmark filter:" << (c.description.empty() ? " (no sections)" : c.description) << "\n";
    o << comment("Description:" + c.description);
    o << comment("Written by Quellmark " + h.version + " on " + h.date + ".");
    o << comment("Values as the schematics show them; both halves of a fully differential");
    o << comment("section are drawn, the lower half's parts named with _N.");
    const double gbw = h.gbwHz > 0 ? h.gbwHz : defaultNetlistGBW(c);
    o << comment("GBW is the amplifiers' gain-bandwidth product in hertz, A0 their gain at DC.");
    o << ".param GBW=" << number(gbw) << "\n";
    o << ".param A0=" << number(h.openLoopGain) << "\n\n";
    if (c.differential)
        differentialAmplifier(o);
    else
        singleEndedAmplifier(o);
    for (const StageCircuit& s : c.stages)
        stageSubcircuit(o, s);
    if (!c.stages.empty()) {
        topLevel(o, c);
        o << "\n.ac dec " << kPointsPerDecade << ' ' << number(c.sweepStartHz) << ' '
          << number(c.sweepStopHz) << "\n";
    }
    o << ".end\n";
    return o.str();
}

} // namespace qm
