// Placeholder until the standard component values land.
namespace qm {
} // namespace qm
