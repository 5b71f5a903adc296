#include "screen/prompts.h"

#include "design/unbuildable.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <initializer_list>
#include <string>

namespace qm {

namespace {

constexpr const char* kCrLf = "\r\n";

struct FixedPrompt
{
    int key;
    const char* text;
};

// The texts that don't depend on the design or the locale.
constexpr FixedPrompt kFixedPrompts[] = {
    {1, "                 WELCOME\r\n"
        "This program can be used to design Multiple-Feedback (MFB) and Sallen-Key active filters. "
        " The default type is MFB.  Press the radio button to change the circuit type.\r\n"
        "\r\n"
        "  See Halvorn Devices Application Bulletin\r\n"
        "  KRNB417 for details.\r\n"
        "Quellmark is written and looked after by the filter team of Halvorn Devices."},
    {2, "Butterworth filters have the flattest possible passband response and a smooth transition "
        "into the stopband.\r\n"
        "\r\n"
        "They have moderate pulse-response overshoot which increases with increasing number of "
        "poles."},
    {3, "Chebyshev filters have a steep cutoff in the transition from pass-band to stopband.  The "
        "penalty is amplitude variation or RIPPLE in the passband.  The ripple magnitude can be "
        "specified causing more ripple for steeper rolloff.\r\n"
        "\r\n"
        "Cutoff frequency of a Chebyshev is the frequency at which the response leaves the desired "
        "ripple band."},
    {4, "  Enter ripple in dB...\r\n"
        "      greater than zero\r\n"
        "      up to 10dB\r\n"
        "   ** CHEBYSHEV FILTERS ONLY **\r\n"
        "Ripple is the peak-to-peak amplitude variation in the passband.  There is a trade-off "
        "between rate of rolloff and ripple.  For a given number of poles, you can achieve faster "
        "rolloff by allowing more passband ripple."},
    {5, "The Bessel (or Thomson) filter has maximum phase flatness through the passband.  Its "
        "magnitude response is not as flat as the Butterworth, 'sagging' smoothly through the "
        "passband.  Attenuation into the stopband is not as steep as the Butterworth for a given "
        "number of poles.\r\n"
        "\r\n"
        "The Bessel filter has very little pulse response overshoot because of its linear group "
        "delay through the passband."},
    {6, "Enter number of poles—\r\n"
        "   1, 2, 3... to 10\r\n"
        "\r\n"
        "The number of poles affects the rolloff rate of the filter.  The greater the number of "
        "poles, the better the filter approximates an ideal brick-wall response.  Complexity "
        "increases proportionally."},
    {7, "Enter cutoff frequency in Hz\r\n"
        "    e.g.       1000\r\n"
        "          or   1k\r\n"
        "          or   1e3\r\n"
        "For Butterworth and Bessel, this is the -3dB frequency.\r\n"
        "\r\n"
        "For a Chebyshev filter it is the frequency at which the response leaves the ripple band."},
    {8, "   Enter a frequency in Hz\r\n"
        "       e.g.       2000\r\n"
        "             or   2k\r\n"
        "             or   2e3\r\n"
        "Displays the filter's gain and phase response at the desired frequency. The response of "
        "each section is shown individually in the Response fields to facilitate testing.\r\n"
        "\r\n"},
    {9, "Enter resistor value in ohms—\r\n"
        "     e.g.     20000\r\n"
        "        or    20k\r\n"
        "        or    2e4\r\n"
        "This entry allows you to scale the network impedance to match the application.  The 10k "
        "ohm default value is good for many applications."},
    {12,
     "E48, E96, and E192 resistor values are purchased with 48, 96, or 192 values per decade "
     "respectively.E48 are usually 2%, E96 are usually 1% and E192 are usually .5% tolerances."},
    {17, "Quellmark can be used to design filters for both single output (traditional) op amps and "
         "FDA (fully differential amplifiers) devices. When the FDA checkbox is checked the "
         "schematics are changed to show the FDA configuration.  Only the MFB circuit type is "
         "available for FDA filters."},
    {18, "Quellmark approximates the recommended GBP (gain bandwidth product) for each amplifier. "
         "This value is generally adequate but may not be sufficient for all applications."},
    {19, "Clicking the graph moves the location for the blue response cursor to the location that "
         "is clicked. "},
    {20, "Enter a custom value for the bottom of the graph."},
    {21, "Enter a custom value for the top of the graph."},
    {22,
     "Custom Q is an option that allows for a Q value to be entered in the total Q field.  The "
     "resulting filter will use the same natural frequency values but with scaled Q values as the "
     "design previously selected.  It can be useful when a slope is desired in the passband."},
    {23, "Custom Fn&Q is an option that allows for entered values to be used in the Fn and Q "
         "fields.  This is useful for calculating component values when Fn and Q are known."},
    {24,
     "The Linear Phase with equaripple error of 0.05 degree filter has phase flatness within 0.05 "
     "degree significantly beyond the passband with multiple stages.  Its magnitude response is "
     "not as flat as the Butterworth, 'sagging' smoothly through the passband.  Attenuation into "
     "the stopband is nearly as steep as the Butterworth for a given number of poles.\r\n"
     "\r\n"
     "This filter has very little pulse response overshoot because of its linear group delay "
     "through the passband."},
    {25,
     "The Linear Phase with equaripple error of 0.5 degree filter has phase flatness within 0.5 "
     "degree significantly beyond the passband with multiple stages.  Its magnitude response is "
     "not as flat as the Butterworth, 'sagging' smoothly through the passband.  Attenuation into "
     "the stopband is nearly as steep as the Butterworth for a given number of poles.\r\n"
     "\r\n"
     "This filter may have a little pulse response overshoot because of its linear group delay "
     "error through the passband."},
    {26, "The Transitional Gaussian filter is a compromise between a Gaussian filter, similar to "
         "Bessel, and a Chebychev filter. It has the steep rolloff charactaristics of a Chebychev "
         "filter while having not nearly as much pulse response overshoot. When the gain response "
         "has dropped to -12 dB then the gain response drops sharply."},
    {27,
     "The high-pass filter is a low-pass filter design transposed around the cutoff frequence. If "
     "an MFB circuit is used the filter does not roll off at the frequency limit of the amplifier. "
     "Instead, the amplifier is not predictable at those frequencies.  If the Sallen-Key circuit "
     "is used the response rolls off at the frequency limit of the amplifier. The high-pass filter "
     "can be cascaded (followed) with a low-pass filter to form a wide band-pass filter. "},
    {28, "The low-pass filter is presently selected.  If a high-Pass filter is desired then click "
         "on the High-Pass check box."},
    {203, "Displays component values required to construct the desired filter.\r\n"
          "\r\n"},
    {303, "The Multiple Feedback (MFB) or Infinite Gain topology places two feedback paths around "
          "an op amp.  This filter type is less sensitive to component values than the Sallen-Key "
          "topology.\r\n"
          "\r\n"},
    {304, "The Sallen-Key topology uses an op amp in a noninverting gain— often as a G=1 buffer.  "
          "With an op amp used as a G=1 buffer, this filter type provides excellent passband gain "
          "accuracy. Sallen-Key filters can be relatively sensitive to component values in "
          "high-gain, high-Q sections."},
};

/// Joins text pieces with the locale's separator between them: the texts
/// that quote decimal numbers read as the rest of the screen does.
std::string joinWithSep(std::initializer_list<const char*> pieces, char decSep)
{
    std::string text;
    bool first = true;
    for (const char* piece : pieces) {
        if (!first) text += decSep;
        text += piece;
        first = false;
    }
    return text;
}

std::string capacitorSeriesPrompt(char decSep)
{
    // The long opening piece is named so that the list below reads as the
    // E6 values broken at their separators.
    constexpr const char* kSeriesLead =
        "E6, E12, and E24 capacitor values are those with 6, 12, or 24 values per decade "
        "respectively.  E6 are usually 20%, E12 are usually 10% and E24 are usually 5% "
        "tolerances.  The E6 values include 1, 1";
    return joinWithSep({kSeriesLead, "5, 2", "2, 3", "3, 4", "7, and 6",
                        "8.   Actual capacitor values are multiples (times 10^n) of these values"},
                       decSep);
}

std::string sensitivityPrompt(char decSep)
{
    return joinWithSep(
        {"Displays sensitivities of filter section parameters with variation in component values.  "
         "A 1% increment is made in each component value.  The resulting percentage change in fn "
         "and Q is shown.  e.g.  -0",
         "5; 1", "0 indicates that a +1% increase in the value of that component produces a 0",
         "5% lower natural frequency and 1% higher Q.\r\n"
         "Keep in mind that capacitors generally have a wider tolerance.  For this reason, when "
         "precision is desired, buy precision capacitors or enter measured values."},
        decSep);
}

/// A section array element (sections count from 1), 0 for a row that
/// stands for no section.
float sectionValue(const SectionFloats& values, int j)
{
    return j >= 1 && j < kSectionSlots ? values[static_cast<std::size_t>(j)] : 0.0f;
}

/// The design section shown on entry row `row`.
int sectionOfRow(const QuellmarkForm& f, int row)
{
    return f.sectionRows - row - f.realPoleCount;
}

/// A fully differential C2 is two capacitors, one per side: the record holds
/// twice the value of each, the designer enters and reads one of them.
float perCapacitor(const QuellmarkForm& f, float value)
{
    return f.FDAcircuit.checked() ? f32(d64(value) / 2) : value;
}

/// The first line of a capacitor's prompt; a capacitor that the design
/// couldn't make has no value to tell.
std::string currentCapacitor(const QuellmarkForm& f, float value)
{
    if (!buildablePart(d64(value))) return std::string("This capacitor has no value yet.") + kCrLf;
    return "The current value of this capacitor is " + Engsuffix(value, f.digits, "", f.decSep) +
           "F." + kCrLf;
}

std::string c1Prompt(const QuellmarkForm& f, int row)
{
    const int j = sectionOfRow(f, row);
    std::string text = currentCapacitor(f, sectionValue(f.C1, j));
    text += std::string("You may enter a new value...") + kCrLf;
    const float limit = sectionValue(f.c1max, j);
    if (!buildablePart(d64(limit)))
        return text + "No value of C1 suits the present C2 of this section.";
    text += "A value larger than approximately ";
    text += Engsuffix(limit, f.digits, "F ", f.decSep);
    text += "will force a change in the current value of C2 in this section.";
    return text;
}

std::string c2Prompt(const QuellmarkForm& f, int row)
{
    const int j = sectionOfRow(f, row);
    std::string text = currentCapacitor(f, perCapacitor(f, sectionValue(f.C2, j)));
    text += std::string("You may enter a new value...") + kCrLf;
    const float limit = perCapacitor(f, sectionValue(f.c2min, j));
    if (!buildablePart(d64(limit)))
        return text + "No value of C2 suits the present C1 of this section.";
    text += "A value smaller than approximately ";
    text += Engsuffix(limit, f.digits, "F ", f.decSep);
    text += "will force a change in the current value of C1 in this section.";
    return text;
}

std::string realCapacitorPrompt(const QuellmarkForm& f)
{
    std::string text = "The current value of this capacitor is ";
    text += Engsuffix(sectionValue(f.C1, f.sectionRows), f.digits, "F", f.decSep);
    text += std::string(".  You may enter a new value...") + kCrLf + kCrLf;
    text += "The value you enter will change the R1 value for the Real Pole Section";
    return text;
}

std::string gainPrompt(const QuellmarkForm& f)
{
    std::string text = "Gain of this section is 1 if no entry has been made. Make an entry to "
                       "change this gain.";
    text += std::string(kCrLf) + kCrLf;
    if (f.circuitType == 1) {
        text += "Gain must be 1 or greater for the Sallen-Key circuit.";
    } else {
        text += "Although MFB circuit is inverting, gains are entered and displayed as positive "
                "numbers.";
        text += std::string(kCrLf) + kCrLf;
        text += "Although the MFB circuit will operate with a gain of less then 1, most "
                "amplifiers will not operate correctly in this region.  ";
    }
    text += "Changing the gain will clear entered values of C1 and C2.";
    return text;
}

// Key ranges of the prompts built from the design.
constexpr int kFirstC1Key = 100;
constexpr int kFirstC2Key = 105;
constexpr int kRealCapKey = 110;
constexpr int kGainKey = 403;
constexpr int kCapacitorSeriesKey = 13;
constexpr int kSensitivityKey = 205;

} // namespace

std::string promptText(const QuellmarkForm& f, int key)
{
    if (key >= kFirstC1Key && key < kFirstC2Key) return c1Prompt(f, key - kFirstC1Key);
    if (key >= kFirstC2Key && key < kRealCapKey) return c2Prompt(f, key - kFirstC2Key);
    if (key == kRealCapKey) return realCapacitorPrompt(f);
    if (key == kGainKey) return gainPrompt(f);
    if (key == kCapacitorSeriesKey) return capacitorSeriesPrompt(f.decSep);
    if (key == kSensitivityKey) return sensitivityPrompt(f.decSep);
    for (const FixedPrompt& p : kFixedPrompts)
        if (p.key == key) return p.text;
    return {};
}

void ShowPrompt(QuellmarkForm& f, int key)
{
    f.Prompt.text = promptText(f, key);
}

} // namespace qm
