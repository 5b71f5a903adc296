#pragma once
// Behaviour of the section entries: fixed capacitors and gains per section,
// and under the custom families the Fn and Q of each section and the product
// of all Q. Like the design-level entries they are corrected in place.

namespace qm {

class QuellmarkForm;

/// Prompt keys of the section entries.
constexpr int kPromptC1Row0 = 100;
constexpr int kPromptC2Row0 = 105;
constexpr int kPromptRealCap = 110;
constexpr int kPromptGain = 403;

/// Capacitor entries of row `i` (0 is section A).
void C1Entry_Validate(QuellmarkForm& f, int i);
void C2Entry_Validate(QuellmarkForm& f, int i);
void C1RealEntry_Validate(QuellmarkForm& f);
/// Gain of row `i`; a changed gain drops the row's entered capacitors.
void GainTB_Validate(QuellmarkForm& f, int i);
/// Validates the gain of every used row; leaves entryIndex at sectionRows.
void ValidateAllGains(QuellmarkForm& f);
void FnInput_Validate(QuellmarkForm& f, int i);
void QInput_Validate(QuellmarkForm& f, int i);
void Qtotal_Validate(QuellmarkForm& f);

} // namespace qm
