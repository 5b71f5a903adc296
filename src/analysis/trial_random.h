#pragma once
// Random numbers for the tolerance trials that come out the same on every
// run, machine and library: the 64-bit Mersenne Twister, whose sequence the
// language fixes, turned into uniform and normal numbers by our own
// arithmetic (the library's distributions differ from one library to the
// next, and so may its logarithm in the last bit).
#include <cstdint>
#include <random>

namespace qm {

class TrialRandom
{
  public:
    explicit TrialRandom(std::uint64_t seed) : engine_(seed) {}

    /// Uniform in [0, 1): the top 53 bits of a draw as a binary fraction.
    double uniform();
    /// Uniform in [-1, 1).
    double symmetric() { return 2 * uniform() - 1; }
    /// Standard normal, by the polar method; every accepted pair of draws
    /// gives two numbers, the second kept for the next call.
    double normal();

  private:
    std::mt19937_64 engine_;
    double spare_ = 0;
    bool hasSpare_ = false;
};

/// The natural logarithm of a finite x > 0 from additions, multiplications
/// and divisions only, so that it rounds alike wherever doubles are IEEE.
/// Within a few units of the last place of std::log.
double portableLog(double x);

/// A seed for stream `index` of a run seeded with `seed`: the SplitMix64
/// finaliser, so that neighbouring streams start far apart.
std::uint64_t streamSeed(std::uint64_t seed, std::uint64_t index);

} // namespace qm
