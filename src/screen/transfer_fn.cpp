#include "screen/transfer_fn.h"

#include <algorithm>
#include <cmath>

namespace qm {

void TransferFn(QuellmarkForm& f)
{
    // The last row in use: one row per section, real stage included.
    const int top = std::min(static_cast<int>(std::floor(f.n / 2.0 - 0.5)),
                             static_cast<int>(f.FnInput.size()) - 1);
    const bool realPoleRow = f.n % 2 == 1;
    for (int i = 0; i <= top; ++i) {
        if (i == 0 && realPoleRow) continue;
        const auto r = static_cast<std::size_t>(i);
        f.QInput[r].visible = true;
        // A row the last recalculation left empty keeps what its entry holds.
        if (!f.Qdisp[r].text.empty()) f.QInput[r].text = f.Qdisp[r].text;
    }
    // Text goes over as shown, scale and unit included ("1.00 kHz"); it is
    // read back through the engineering-text road when the poles are made.
    for (int i = 0; i <= top; ++i) {
        const auto r = static_cast<std::size_t>(i);
        f.FnInput[r].visible = true;
        if (!f.FSFreq[r].text.empty()) f.FnInput[r].text = f.FSFreq[r].text;
    }
}

} // namespace qm
