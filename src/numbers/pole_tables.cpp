#include "numbers/pole_tables.h"

#include <array>

namespace qm {

namespace {

// Rows of one n stand together, k = 1 first. The decimal digits define the
// stored 32-bit values; they are taken as stored, never rescaled.
struct TableRow
{
    int n;
    PoleRow row;
};

// Bessel, 3 dB point at 1 rad/s, n = 1 to 10.
constexpr TableRow kBessel[] = {
    {1, {0.0f, 1.0f}},
    {2, {2.2032f, 1.61803f}},
    {3, {2.09482f, 2.0956f}},
    {3, {0.0f, 1.327f}},
    {4, {1.99042f, 2.57078f}},
    {4, {2.74014f, 2.04539f}},
    {5, {1.91535f, 3.08135f}},
    {5, {2.76175f, 2.42222f}},
    {5, {0.0f, 1.5069f}},
    {6, {1.86131f, 3.6279f}},
    {6, {2.76372f, 2.85329f}},
    {6, {3.14298f, 2.57256f}},
    {7, {1.81974f, 4.2004f}},
    {7, {2.75781f, 3.3212f}},
    {7, {3.224f, 2.94588f}},
    {7, {0.0f, 1.6853f}},
    {8, {1.78574f, 4.7905f}},
    {8, {2.74768f, 3.815f}},
    {8, {3.2739f, 3.3566f}},
    {8, {3.5148f, 3.16294f}},
    {9, {1.7568f, 5.393238f}},
    {9, {2.735179f, 4.328094f}},
    {9, {3.304795f, 3.794186f}},
    {9, {3.614346f, 3.528409f}},
    {9, {0.0f, 1.8575f}},
    {10, {1.731518f, 6.005607f}},
    {10, {3.323631f, 4.252724f}},
    // The lowest-Q factor of the tenth-order Bessel polynomial, in the scale of
    // the other four rows; derived by tests/data/bessel10_row3.py.
    {10, {3.85525f, 3.774121f}},
    {10, {3.684402f, 3.922613f}},
    {10, {2.721392f, 4.856544f}},
};

// Linear phase, equiripple phase error of 0.05 degree, n = 2 to 10.
constexpr TableRow kLinearPhase005[] = {
    {2, {2.0174f, 1.4637f}},  {3, {1.7082f, 1.8797f}},  {3, {0.0f, 1.0459f}},
    {4, {1.4896f, 2.517f}},   {4, {1.9296f, 1.1563f}},  {5, {1.3462f, 3.372f}},
    {5, {1.783f, 1.5574f}},   {5, {0.0f, 0.943f}},      {6, {1.2304f, 4.3028f}},
    {6, {1.6466f, 2.1611f}},  {6, {1.7808f, 0.9618f}},  {7, {1.1454f, 5.3707f}},
    {7, {1.5416f, 2.9507f}},  {7, {1.685f, 1.3168f}},   {7, {0.0f, 0.8615f}},
    {8, {1.0682f, 6.4193f}},  {8, {1.4426f, 3.8087f}},  {8, {1.586f, 1.8508f}},
    {8, {1.639f, 0.8093f}},   {9, {1.012f, 7.618f}},    {9, {1.3698f, 4.818f}},
    {9, {1.511f, 2.5665f}},   {9, {1.5706f, 1.1244f}},  {9, {0.0f, 0.7938f}},
    {10, {0.9554f, 8.7126f}}, {10, {1.295f, 5.8007f}},  {10, {1.4318f, 3.347f}},
    {10, {1.4934f, 1.5969f}}, {10, {1.5184f, 0.6983f}},
};

// Linear phase, equiripple phase error of 0.5 degree, n = 2 to 10.
constexpr TableRow kLinearPhase05[] = {
    {2, {1.718f, 1.22522f}},   {3, {1.3938f, 1.76664f}}, {3, {0.0f, 0.8257f}},
    {4, {1.2074f, 2.6094f}},   {4, {1.4896f, 0.8182f}},  {5, {1.0824f, 3.62571f}},
    {5, {1.355f, 1.34279f}},   {5, {0.0f, 0.7056f}},     {6, {0.9786f, 4.64186f}},
    {6, {1.2334f, 2.06071f}},  {6, {1.3038f, 0.61629f}}, {7, {0.9196f, 5.96854f}},
    {7, {1.1632f, 3.04527f}},  {7, {1.238f, 1.07838f}},  {7, {0.0f, 0.6283f}},
    {8, {0.8368f, 6.82114f}},  {8, {1.0606f, 3.85861f}}, {8, {1.133f, 1.64457f}},
    {8, {1.1582f, 0.48412f}},  {9, {0.816f, 8.5927f}},   {9, {1.0358f, 5.2541f}},
    {9, {1.109f, 2.5843f}},    {9, {1.1376f, 0.9004f}},  {9, {0.0f, 0.5728f}},
    {10, {0.7416f, 9.10153f}}, {10, {0.9422f, 5.9102f}}, {10, {1.0102f, 3.2346f}},
    {10, {1.0386f, 1.3573f}},  {10, {1.0498f, 0.3971f}},
};

// Transitional Gaussian to 12 dB, n = 3 to 10.
constexpr TableRow kGaussian12dB[] = {
    {3, {1.872f, 2.3567f}},    {3, {0.0f, 0.963f}},      {4, {1.8384f, 1.15406f}},
    {4, {1.8556f, 3.74911f}},  {5, {1.4306f, 4.72728f}}, {5, {1.615f, 1.64666f}},
    {5, {0.0f, 0.8131f}},      {6, {0.8958f, 4.76439f}}, {6, {1.3334f, 2.1166f}},
    {6, {1.4038f, 0.67946f}},  {7, {0.581f, 4.70087f}},  {7, {1.0972f, 2.5974f}},
    {7, {1.231f, 0.9722f}},    {7, {0.0f, 0.6291f}},     {8, {0.3956f, 4.32527f}},
    {8, {0.8656f, 2.77942f}},  {8, {1.035f, 1.26022f}},  {8, {1.0882f, 0.40881f}},
    {9, {0.2978f, 4.43343f}},  {9, {0.7184f, 3.16673f}}, {9, {0.9136f, 1.68368f}},
    {9, {0.9922f, 0.62952f}},  {9, {0.0f, 0.5065f}},     {10, {0.2272f, 4.25609f}},
    {10, {0.5816f, 3.26615f}}, {10, {0.7772f, 1.9595f}}, {10, {0.8704f, 0.87647f}},
    {10, {0.907f, 0.28373f}},
};

// A family's rows as PoleRow runs, one per n, built once from the table.
struct FamilyIndex
{
    static constexpr int kMaxPoles = 10;
    std::array<std::array<PoleRow, 5>, kMaxPoles + 1> rows{};
    std::array<int, kMaxPoles + 1> count{};
};

template <std::size_t N> constexpr FamilyIndex indexFamily(const TableRow (&table)[N])
{
    FamilyIndex index;
    for (const TableRow& t : table)
        index.rows[static_cast<std::size_t>(t.n)][static_cast<std::size_t>(index.count[t.n]++)] =
            t.row;
    return index;
}

constexpr FamilyIndex kBesselIndex = indexFamily(kBessel);
constexpr FamilyIndex kLinearPhase005Index = indexFamily(kLinearPhase005);
constexpr FamilyIndex kLinearPhase05Index = indexFamily(kLinearPhase05);
constexpr FamilyIndex kGaussian12dBIndex = indexFamily(kGaussian12dB);

const FamilyIndex* familyIndex(std::int16_t filterType)
{
    switch (filterType) {
    case kBesselFamily:
        return &kBesselIndex;
    case kLinearPhase005Family:
        return &kLinearPhase005Index;
    case kLinearPhase05Family:
        return &kLinearPhase05Index;
    case kGaussian12dBFamily:
        return &kGaussian12dBIndex;
    default:
        return nullptr;
    }
}

} // namespace

std::span<const PoleRow> tabulatedPoles(std::int16_t filterType, int n)
{
    const FamilyIndex* index = familyIndex(filterType);
    if (index == nullptr || n < 1 || n > FamilyIndex::kMaxPoles) return {};
    const auto at = static_cast<std::size_t>(n);
    return {index->rows[at].data(), static_cast<std::size_t>(index->count[at])};
}

} // namespace qm
