#pragma once
// The correction pass of a high-pass section. Its prototype resistors become
// capacitors of a coarse series when rounded, which moves Fn and Q; the pass
// pulls the section back to b0Design, b1Design by trimming C1 and C2, which
// become the real circuit's resistors, on their finer series.

namespace qm {

class QuellmarkForm;

/// Rounds of correction, always all of them unless a failure stops them.
constexpr int kAdjustRounds = 10;

/// Runs the rounds for section j; b0(j), b1(j) end as the section as built.
void adjustSection(QuellmarkForm& f, int j);

} // namespace qm
