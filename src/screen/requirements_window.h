#pragma once
// The requirements window: Options > "Requirements..." opens it beside the
// design screen. It takes a response mask, lists every family's least pole
// count for it, sets the design screen to the family chosen, and says whether
// the design as built meets the mask. Modeless; hidden, not destroyed.
#include "requirements/family_orders.h"
#include "requirements/response_mask.h"
#include "screen/control.h"

#include <optional>
#include <string_view>

namespace qm {

class QuellmarkForm;

constexpr const char* kRequirements = "Requirements";
constexpr const char* kRequirementsMenu = "RequirementsMnu";
constexpr const char* kFamiliesGrid = "Requirements.Families";

/// Adds the window, its controls, its menu entry and its handlers.
void addRequirementsWindow(QuellmarkForm& f);

/// The control `name` of the window ("FpEntry"); throws std::logic_error if
/// the window has no such control.
Control& requirementsControl(QuellmarkForm& f, std::string_view name);

/// Reads the mask entries into the design's mask, or says in the window why
/// there is none, and recalculates unless held.
void readMaskEntries(QuellmarkForm& f);
/// Writes a mask into the entries (none empties them) and takes them as
/// the design's mask, without a recalculation.
void setMaskEntries(QuellmarkForm& f, const std::optional<ResponseMask>& mask);

/// Sets family, pole count, ripple and cutoff of a family's row on the
/// design screen through their own handlers, then recalculates once.
/// Returns false, saying why in the window, when the row can't be used.
bool useFamilyRow(QuellmarkForm& f, int family);

/// Cycle step: the families' rows when the mask or passband has changed,
/// the verdict on the sections just realised, and the window's texts.
void checkRequirements(QuellmarkForm& f);

/// The cutoff as the design screen takes it, three digits, rounded away
/// from fp so that the passband edge still holds.
double screenCutoff(double hz, bool highPass);

} // namespace qm
