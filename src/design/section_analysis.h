#pragma once
// What a section's finished components realise, and how much a 1% change of
// one component moves the section's Fn and Q.
#include <string>

namespace qm {

class QuellmarkForm;

/// Multiple-feedback section: b0out, b1out from R1, R2, R3, C1, C2. Sets
/// sectionGain = RTwo/ROne, anaWn and anaQ on the way.
void MFBAnalyse(QuellmarkForm& f, float ROne, float RTwo, float RThree, float cOne, float cTwo,
                float& b0out, float& b1out);

/// Sallen-Key section: b0out, b1out and the realised gain g from R1 to R4,
/// C1, C2. Sets anaWn and anaQ on the way.
void SallenAnalyse(QuellmarkForm& f, float ROne, float RTwo, float RThree, float RFour, float cOne,
                   float cTwo, float& g, float& b0out, float& b1out);

/// Percent change of Fn and Q of section sectionNum between b0, b1 (as
/// built) and b0Real, b1Real (as perturbed), as text "Fn; Q" and as numbers.
void SensText(QuellmarkForm& f, std::string& text, float& FnPercent, float& QPercent);

/// The numbers of SensText without its text; fails where SensText fails.
void SensNumbers(QuellmarkForm& f, float& FnPercent, float& QPercent);

/// The numbers of SensText without its text, for the correction pass of
/// high-pass sections, which reads only the numbers. A real stage leaves
/// them as they were.
void SensPercents(QuellmarkForm& f, float& FnPercent, float& QPercent);

/// Drops the decimal of a percentage of 100 or more.
void TrimSensitivityText(std::string& text, char decSep);

} // namespace qm
