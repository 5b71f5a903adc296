#pragma once
// For every pole family, the least pole count up to 10 that meets a response
// mask, with the cutoff that puts the passband edge where it must be.
#include "requirements/cascade_response.h"
#include "requirements/response_mask.h"

#include <array>
#include <string>

namespace qm {

/// The families that a mask can choose among, by their list index on the
/// design screen.
constexpr int kMaskFamilies = 6;
constexpr int kButterworthFamily = 0;
constexpr int kChebychevFamily = 2;
constexpr int kMostPoles = 10;

/// One family's answer to a mask.
struct FamilyRow
{
    int family = 0;
    /// The least pole count that meets the mask; 0 when none up to 10 does.
    int poles = 0;
    /// The cutoff of that design; of the 10-pole try where none meets.
    double cutoffHz = 0;
    /// Chebychev's ripple, Ap; 0 for the other families.
    double rippleDb = 0;
    /// Attenuation beyond fs less As.
    double stopMarginDb = 0;
    double delaySpreadPercent = 0;

    bool reached() const { return poles > 0; }
};

using FamilyRows = std::array<FamilyRow, kMaskFamilies>;

/// The name of a family as the design screen lists it.
std::string familyName(int family);
/// The least pole count the design screen takes for the family.
int leastPolesOf(int family);

/// The normalised low-pass prototype of a family, from the program's own
/// pole pairs; the ripple is read by Chebychev only.
Cascade familyPrototype(int family, int poles, double rippleDb);

/// Butterworth's least order for the mask's selectivity, by the textbook
/// formula; may be above 10 or below the least the screen takes.
int butterworthOrder(const ResponseMask& m, bool highPass);
/// The same for Chebychev, whose ripple is Ap.
int chebychevOrder(const ResponseMask& m, bool highPass);
/// Butterworth's cutoff with the attenuation at fp exactly Ap.
double butterworthCutoff(const ResponseMask& m, bool highPass, int poles);

/// One family's row for a mask that maskProblem passes.
FamilyRow familyRow(const ResponseMask& m, bool highPass, int family);
/// Every family's row.
FamilyRows familyRows(const ResponseMask& m, bool highPass);

} // namespace qm
