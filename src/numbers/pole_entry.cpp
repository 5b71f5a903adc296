#include "numbers/pole_entry.h"

#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace qm {

namespace {

constexpr const char* kFnUnits = "Hz";
// Below this Q the two poles of a pair lie on the real axis.
constexpr double kRealPairQ = 0.5;

/// The number in an entry or label: its engineering text, read as far as it
/// forms a number; text without one is 0.
double numberIn(std::string_view text, char decSep)
{
    std::string entry(text);
    return leadingNumber(EngEntry(entry, decSep), decSep);
}

/// An Fn or Q as a row may take it: positive, finite, within the limits.
double settleRowValue(double v)
{
    if (std::isnan(v)) return kPoleRowMin;
    return std::clamp(std::fabs(v), kPoleRowMin, kPoleRowMax);
}

/// A Q from a ratio. A zero denominator means a pole on the imaginary axis
/// (or none at all): the Q has no bound, so it takes the highest a row holds.
double qRatio(double num, double den)
{
    return den == 0 ? kPoleRowMax : num / den;
}

std::string rowText(double v, std::string_view units, char decSep)
{
    return Engsuffix(f32(settleRowValue(v)), kPoleEntryDigits, units, decSep);
}

/// A field value, kept within what a 32-bit value can hold.
std::string fieldText(double v, char decSep)
{
    if (std::isnan(v)) v = 0;
    return Engsuffix(f32(std::clamp(v, -d64(FLT_MAX), d64(FLT_MAX))), kPoleEntryDigits, "", decSep);
}

/// Fn/fc; a cutoff of 0 never reaches here, but would give the highest Fn.
double normalised(double fn, float fc)
{
    return fc > 0 ? fn / d64(fc) : kPoleRowMax;
}

/// The complex form of a pair: -a ± jß, or two real poles below a Q of 0.5.
PoleFields complexTerms(double w, double q, char decSep)
{
    if (q >= kRealPairQ) {
        PoleFields f = poleFieldNames(PoleFormat::ComplexTerms);
        f.text1 = fieldText(w / 2 / q, decSep);
        // Imaginary part of the pole: w·sqrt(1 - 1/(4Q²)).
        f.text2 = fieldText(w * std::sqrt(1 - 0.25 / (q * q)), decSep);
        return f;
    }
    PoleFields f = poleFieldNames(PoleFormat::ComplexTerms, true);
    // Roots of s² + (w/Q)s + w²: the far one directly, the near one through
    // their product w², which keeps its digits at small Q.
    const double far = w / (2 * q) + w * std::sqrt(0.25 / (q * q) - 1);
    f.text1 = fieldText(w * w / far, decSep);
    f.text2 = fieldText(far, decSep);
    return f;
}

} // namespace

PoleFields poleFieldNames(PoleFormat format, bool realPair)
{
    PoleFields f;
    switch (format) {
    case PoleFormat::ComplexTerms:
        f.name1 = realPair ? "-p1" : "-a";
        f.name2 = realPair ? "-p2" : "±jß";
        f.realPair = realPair;
        break;
    case PoleFormat::PoleLocations:
        f.name1 = "b0";
        f.name2 = "b1";
        break;
    case PoleFormat::FnAndQ:
        f.name1 = "Fn";
        f.name2 = "Q";
        break;
    }
    return f;
}

PoleFields poleFields(PoleFormat format, const PoleSection& present, float fc, char decSep)
{
    if (format == PoleFormat::FnAndQ) {
        PoleFields f = poleFieldNames(format);
        f.text1 = present.fnText;
        if (!present.realPole) f.text2 = present.qText;
        return f;
    }
    const double w = normalised(settleRowValue(numberIn(present.fnText, decSep)), fc);
    if (present.realPole) {
        // Both forms give a real pole by its b0 = (Fn/fc)².
        PoleFields f = poleFieldNames(format);
        f.text1 = fieldText(w * w, decSep);
        return f;
    }
    const double q = settleRowValue(numberIn(present.qText, decSep));
    if (format == PoleFormat::ComplexTerms) return complexTerms(w, q, decSep);
    PoleFields f = poleFieldNames(format);
    f.text1 = fieldText(w * w, decSep);
    f.text2 = fieldText(w / q, decSep);
    return f;
}

PoleSection poleFromFields(PoleFormat format, const PoleFields& fields, bool realPole, float fc,
                           char decSep)
{
    const double x = numberIn(fields.text1, decSep);
    const double y = realPole ? 0.0 : numberIn(fields.text2, decSep);
    const double fcHz = d64(fc);
    PoleSection s;
    s.realPole = realPole;
    if (format == PoleFormat::FnAndQ) {
        // A real pole's Fn goes on as it was typed when the design can read it.
        s.fnText = realPole && isRowFnText(fields.text1, decSep) ? fields.text1
                                                                 : rowText(x, kFnUnits, decSep);
        if (!realPole) s.qText = rowText(y, "", decSep);
        return s;
    }
    if (realPole) {
        // b0 = (Fn/fc)².
        s.fnText = rowText(std::sqrt(std::fabs(x)) * fcHz, kFnUnits, decSep);
        return s;
    }
    double w = 0;
    double q = 0;
    if (format == PoleFormat::PoleLocations) {
        // s² + b1·s + b0 = s² + (w/Q)·s + w².
        w = std::sqrt(std::fabs(x));
        q = qRatio(w, y);
    } else if (fields.realPair) {
        // (s + p1)(s + p2): w² = p1·p2, w/Q = p1 + p2.
        w = std::sqrt(std::fabs(x) * std::fabs(y));
        q = qRatio(w, std::fabs(x) + std::fabs(y));
    } else {
        // |pole| = w, and the real part a = w/(2Q).
        w = std::hypot(x, y);
        q = qRatio(w, 2 * x);
    }
    s.fnText = rowText(w * fcHz, kFnUnits, decSep);
    s.qText = rowText(q, "", decSep);
    return s;
}

bool isRowFnText(std::string_view text, char decSep)
{
    std::string entry(text);
    std::string work = EngEntry(entry, decSep);
    if (work.size() >= 2 && work.ends_with(kFnUnits)) work.resize(work.size() - 2);
    try {
        const double fn = strictNumber(work, decSep);
        return fn >= kPoleRowMin && fn <= kPoleRowMax;
    } catch (const CalcFailure&) {
        return false;
    }
}

} // namespace qm
