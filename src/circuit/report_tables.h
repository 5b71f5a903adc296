#pragma once
// The design report's words and tables, as the design on the screen gives
// them: the heading, the settings, the results table, the sensitivities, the
// gain-bandwidth each amplifier needs and the bill of materials. The shell
// sets them on paper; an analysis can hand in tables of the same kind.
#include "circuit/circuit_model.h"

#include <string>
#include <vector>

namespace qm {

class QuellmarkForm;

/// A titled table of texts. Every row has as many cells as the head.
struct ReportTable
{
    std::string title;
    std::vector<std::string> head;
    std::vector<std::vector<std::string>> rows;
    /// Columns set flush right: numbers.
    std::vector<bool> rightAligned;
    /// Rows drawn bold, such as the totals under the sections.
    std::vector<bool> boldRows;
    /// Lines of explanation under the table.
    std::vector<std::string> notes;
};

struct ReportHeading
{
    std::string title;       ///< "Filter design report"
    std::string description; ///< the design's description line, as the screen shows it
    std::string byline;      ///< "2026-11-25 · Quellmark 1.3.3 · lowpass.qmf"
};

ReportHeading reportHeading(const QuellmarkForm& f, const std::string& date,
                            const std::string& version);

/// Family, poles, ripple, cutoff, passband, circuit, series, R1 seed and the
/// response frequency, as entered.
ReportTable settingsTable(const QuellmarkForm& f);

/// The results table as the screen shows it: a row per section in use and
/// the totals.
ReportTable resultsTable(const QuellmarkForm& f);

/// How much each part moves its section's Fn and Q: a row per section, a
/// column per part name of the schematics.
ReportTable sensitivitiesTable(const QuellmarkForm& f);

/// The gain-bandwidth product each amplifier needs, and whether the
/// amplifier chosen from the catalogue has it.
ReportTable amplifiersTable(const QuellmarkForm& f, const FilterCircuit& circuit);

/// The bill of materials: one line per distinct part, then the amplifiers.
ReportTable materialsTable(const FilterCircuit& circuit);

/// The parts of one stage, upper half first: designator, name on the
/// schematic and value.
ReportTable stagePartsTable(const StageCircuit& stage);

/// The line that says how the stages follow each other, "Input → Real → A →
/// Output".
std::string cascadeLine(const FilterCircuit& circuit);

} // namespace qm
