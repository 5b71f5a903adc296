#include "design/section_analysis.h"

#include "screen/quellmark_form.h"

namespace qm {

// Placeholders until the analysis of sections lands.
void MFBAnalyse(QuellmarkForm&, float, float, float, float, float, float&, float&) {}
void SallenAnalyse(QuellmarkForm&, float, float, float, float, float, float, float&, float&,
                   float&)
{
}
void SensText(QuellmarkForm&, std::string& text, float&, float&) { text.clear(); }
void TrimSensitivityText(std::string&, char) {}

} // namespace qm
