#pragma once
// The schematic pictures of the design screen as drawings: resistors,
// capacitors, amplifiers, wires, grounds and junctions in twips from the
// picture's top left corner, the same units in which the cycle places the
// value labels over the picture. Each low-pass circuit is drawn once; its
// high-pass twin is the same drawing with every frequency-setting resistor
// and capacitor exchanged, which is how a high-pass section is built from
// its low-pass prototype.
#include "circuit/circuit_model.h"

#include <QPointF>
#include <QPolygonF>
#include <QString>

#include <optional>
#include <string_view>
#include <vector>

namespace qm {

enum class Circuit {
    MultipleFeedback,
    DifferentialMultipleFeedback,
    SallenKey,      ///< with the gain resistors R3 and R4
    SallenKeyUnity, ///< a follower: no gain resistors
    RealStage,
    DifferentialRealStage,
};

struct PictureKind
{
    Circuit circuit;
    bool highPass;
    bool operator==(const PictureKind&) const = default;
};

/// The drawing a picture control of the design screen shows, from its array
/// name ("MFBschHP", "RealPole"); nothing for a control that is no schematic.
std::optional<PictureKind> pictureOf(std::string_view base);

enum class Side { Above, Below, Left, Right };

/// A two-terminal part. Its terminals lie kPartLength apart on its axis.
struct Part
{
    PartKind kind;
    QPointF centre;
    bool vertical;
    QString name; ///< "R1", "C2": the names of the value table and labels
    Side nameSide;
    /// Shown without its name: the mirrored half of a differential stage
    /// carries the names once, on its upper half.
    bool named = true;
    /// Where the name starts when it stands beyond the line the part is on,
    /// level with the part; 0 puts it on `nameSide`.
    double nameX = 0;
    /// Exchanged with its dual in the high-pass picture; the gain resistors
    /// of a Sallen-Key stage are not.
    bool setsFrequency = true;
};

/// An amplifier: a triangle pointing right. A differential one has two
/// outputs on its slanted sides.
struct Amplifier
{
    QPointF topLeft;
    double width;
    double height;
    bool differential;
    bool invertingOnTop;

    QPointF upperInput() const { return {topLeft.x(), topLeft.y() + height / 4}; }
    QPointF lowerInput() const { return {topLeft.x(), topLeft.y() + 3 * height / 4}; }
    QPointF output() const { return {topLeft.x() + width, topLeft.y() + height / 2}; }
    /// Outputs of a differential amplifier, on its slanted sides.
    QPointF upperOutput() const;
    QPointF lowerOutput() const;
};

struct Sketch
{
    std::vector<QPolygonF> wires;
    std::vector<Part> parts;
    std::vector<Amplifier> amplifiers;
    std::vector<QPointF> grounds; ///< where a wire ends in a ground symbol
    std::vector<QPointF> dots;    ///< junctions

    /// The part of that name, or nullptr.
    const Part* part(const QString& name) const;
};

constexpr double kPartLength = 360;

Sketch sketchOf(PictureKind kind);

/// Where the pictures' signal lines run, below the picture's top: every
/// picture of a row takes its input and gives its output at these heights,
/// so that neighbours join.
constexpr double kSignalY = 720;
/// The second signal line of the differential pictures.
constexpr double kDifferentialSignalY = 1320;
/// The real stage's picture stands this much higher than the sections'; its
/// outputs are that much lower in its own picture.
constexpr double kRealStageRaise = 300;

} // namespace qm
