#include "design/result_texts.h"

#include "catalogue/section_parts.h"
#include "chart/response.h"
#include "design/sensitivity_table.h"
#include "design/table_lines.h"
#include "design/value_labels.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"

#include <array>
#include <cmath>

namespace qm {

namespace {

constexpr const char* kGainPattern = "0.0##";
constexpr const char* kDbPattern = "0.00";
constexpr const char* kPhasePattern = "0.0";
constexpr const char* kDbUnit = " dB";
constexpr const char* kPhaseUnit = "\xC2\xBA"; // º

/// Plain text of a result, the form in which the cycle hands numbers on to
/// the displays. A result that isn't a finite number is a failed
/// calculation and never becomes text.
template <typename Number> std::string numericText(Number x, char decSep)
{
    if (!std::isfinite(x)) throw CalcFailure("the result is not a finite number");
    if (x == 0) x = 0; // no "-0" on the screen
    // A stored 32-bit result reads with at most seven significant digits, a
    // wider formula result with fifteen: the text is the number that goes on.
    return generalText(x, decSep);
}

std::string gainDbText(double dB, char decSep)
{
    return formatPattern(dB, kDbPattern, decSep) + kDbUnit;
}

std::string phaseText(double degrees, char decSep)
{
    return formatPattern(degrees, kPhasePattern, decSep) + kPhaseUnit;
}

void readResponseFrequency(QuellmarkForm& f)
{
    std::string entry = f.RespF.text;
    const std::string number = EngEntry(entry, f.decSep);
    if (!number.empty()) f.respFreq = f32(strictNumber(number, f.decSep));
    f.Label35.text = "Response at " + Engsuffix(f.respFreq, f.digits, "", f.decSep) + " Hz.";
}

/// Letters of the result rows; a row shows while its section's schematic
/// does. With a real stage, that stage takes the first row.
void writeRowLetters(QuellmarkForm& f)
{
    const std::array<Control*, 5> rows{&f.Label2, &f.Label3, &f.Label4, &f.Label5, &f.Label6};
    const bool odd = f.n % 2 != 0;
    static const std::array<const char*, 5> oddNames{"Real ", "A ", "B ", "C ", "D "};
    static const std::array<const char*, 5> evenNames{"A ", "B ", "C ", "D ", "E "};
    for (std::size_t i = 0; i < rows.size(); ++i) {
        rows[i]->text = odd ? oddNames[i] : evenNames[i];
        if (odd)
            rows[i]->visible = i == 0 || f.SecLabel[i - 1].visible;
        else
            rows[i]->visible = f.SecLabel[i].visible;
    }
}

/// Gain and phase of section j at the response frequency, into its row.
void writeSectionResponse(QuellmarkForm& f, int j)
{
    const bool highPass = f.InvCalc.value == 1;
    if (f.respFreq == 0) f.respFreq = 1000.0f;
    // A high-pass section is evaluated as its low-pass prototype at fc²/f.
    const double fc = d64(f.fc);
    f.respFreqMapped = highPass ? f32(checkedDiv(fc * fc, d64(f.respFreq))) : f.respFreq;
    Response(f.b0[static_cast<std::size_t>(j)], f.b1[static_cast<std::size_t>(j)], f.respFreqMapped,
             f.respMag, f.respPhase);
    const std::size_t q = static_cast<std::size_t>(f.sectionRows - j);

    // The response is normalised to 0 dB; the stage's gain comes on top.
    const double gain = d64(f.stageGain[static_cast<std::size_t>(j)]);
    f.numText = numericText(d64(f.respMag) + 20 * checkedLog10(gain), f.decSep);
    const double dB = strictNumber(f.numText, f.decSep);
    f.gainDBAtResp[q] = f32(dB);
    f.GainF[q].text = gainDbText(dB, f.decSep);

    // The prototype's phase runs the other way in high-pass; inverting
    // stages are not corrected (the note under the table says so).
    f.numText = numericText(highPass ? -f.respPhase : f.respPhase, f.decSep);
    const double degrees = strictNumber(f.numText, f.decSep);
    f.phaseAtResp[q] = f32(degrees);
    f.PhaseF[q].text = phaseText(degrees, f.decSep);
}

std::string circuitText(const QuellmarkForm& f)
{
    if (f.circuitType == 1) return " Sallen-Key,";
    return f.FDAcircuit.checked() ? " MFB, Fully-Differential," : " MFB,";
}

std::string familyText(const QuellmarkForm& f)
{
    switch (f.TypeFilter.listIndex) {
    case 0:
    case 1:
    case 3:
    case 4:
    case 5:
        return f.filterTypeName + ": ";
    case 2:
        return f.filterTypeName + ", " + generalText(f.ripple, f.decSep) + "dB Ripple" + ": ";
    case 6:
        return f.filterTypeName + " with Custom Q" + ": ";
    case 7:
        return f.filterTypeName + " with Custom Fn and Q" + ": ";
    default:
        return "";
    }
}

/// Sum of the five section rows of a response column, rounded to 32 bits
/// at each step as the column is added up.
float rowSum(const SectionFloats& column)
{
    float sum = 0;
    for (std::size_t i = 0; i <= 4; ++i)
        sum = f32(d64(sum) + d64(column[i]));
    return sum;
}

} // namespace

void responseRow(QuellmarkForm& f, int j)
{
    readResponseFrequency(f);
    writeRowLetters(f);
    writeSectionResponse(f, j);
}

void sensitivitiesAndTableLine(QuellmarkForm& f, int j)
{
    f.sectionName = sectionNameOf(f, j);
    f.Label40.text = columnHeader(f.circuitType == 1, f.InvCalc.value == 1);
    // The values are worked out once, for the parts list and for the labels;
    // measuring the sensitivities in between leaves them as they are.
    const ValueLabelTexts values = valueLabelTexts(f, j);
    noteSectionParts(f, j, values);
    if (f.viewMode == 0) {
        f.tableLine = measureForTable(f, j);
        tableBox(f, j).text = f.tableLine;
        showValueLabels(values);
    } else {
        measureForSchematic(f, j);
        writeSensitivityLabels(f, j);
        f.tableLine = valueLine(f, j);
        tableBox(f, j).text = f.tableLine;
    }
}

void totalsAndDescription(QuellmarkForm& f)
{
    f.totalGain = 1.0f;
    for (std::size_t i = 0; i <= 4; ++i)
        if (!f.DCgain[i].text.empty())
            f.totalGain = f32(d64(f.totalGain) * strictNumber(f.DCgain[i].text, f.decSep));
    f.DCgain[5].text = formatPattern(f.totalGain, kGainPattern, f.decSep);
    f.descText = circuitText(f);
    f.descText += generalText(static_cast<double>(f.n), f.decSep);
    f.descText += f.InvCalc.value == 1 ? "-Pole High-Pass " : "-Pole Low-Pass ";
    f.descText += familyText(f);
    f.descText += f.Text34.text + "Hz Cutoff," + " Passband Gain of " + f.DCgain[5].text;
    f.Label8.text = f.descText;
    // The description stands before the gain in dB can fail, so that it
    // always names the design on the screen.
    if (f.totalGain == 0) f.totalGain = 1.0f;
    f.totalGainDB = f32(20 * checkedLog10(d64(f.totalGain)));
}

void totalsRow(QuellmarkForm& f)
{
    f.phaseAtResp[5] = rowSum(f.phaseAtResp);
    f.PhaseF[5].text = phaseText(d64(f.phaseAtResp[5]), f.decSep);
    f.gainDBAtResp[5] = rowSum(f.gainDBAtResp);
    f.numText = numericText(f.gainDBAtResp[5], f.decSep);
    f.GainF[5].text = gainDbText(strictNumber(f.numText, f.decSep), f.decSep);
}

} // namespace qm
