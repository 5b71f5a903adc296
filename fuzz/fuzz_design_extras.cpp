// The reader of a design file's extra lines against any bytes, alone: no
// screen is built, so it runs a thousand times faster than the whole-file
// target. The bytes are read as a whole file (its 22 lines' fields passed
// over) or, where they end early, as the extra lines themselves. What was
// read is written and read back: the same mask and Q total, nothing damaged.
#include "files/design_extras.h"
#include "files/field_reader.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

[[noreturn]] void fault(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    std::abort();
}

/// Numbers pass through seven digits on the way: equal to a ulp of a float.
bool near(double a, double b)
{
    return std::fabs(a - b) <= 1e-6 * std::fmax(std::fabs(a), std::fabs(b));
}

bool sameMask(const qm::ResponseMask& a, const qm::ResponseMask& b)
{
    return near(a.passEdgeHz, b.passEdgeHz) && near(a.passLossDb, b.passLossDb) &&
           near(a.stopEdgeHz, b.stopEdgeHz) && near(a.stopLossDb, b.stopLossDb) &&
           near(a.delaySpreadPercent, b.delaySpreadPercent);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    qm::DesignExtras read;
    try {
        read = qm::designFileExtras(bytes);
    } catch (const qm::DesignFileError&) {
        read = qm::readDesignExtras(bytes);
    }
    if (read.mask && !(read.mask->passEdgeHz > 0 && read.mask->stopEdgeHz > 0))
        fault("a mask without its edges was taken");
    const qm::DesignExtras back = qm::readDesignExtras(qm::designExtrasText(read));
    if (back.maskDamaged) fault("a written mask reads as damaged");
    if (back.mask.has_value() != read.mask.has_value()) fault("the mask is lost or gained");
    if (back.mask && !sameMask(*back.mask, *read.mask)) fault("the mask reads back otherwise");
    if (back.qTotal != read.qTotal) fault("the Q total reads back otherwise");
    return 0;
}
