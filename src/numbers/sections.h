#pragma once
// Per-section arrays of the design: index j is the section, 1 to
// sectionRows; element 0 is there so that the numbering stays the screen's.
#include <array>
#include <cstdint>

namespace qm {

constexpr int kSectionSlots = 21;
using SectionFloats = std::array<float, kSectionSlots>;
using SectionFlags = std::array<std::int16_t, kSectionSlots>;

} // namespace qm
