#pragma once
// The File menu's circuit exports: the SPICE netlist and the bill of
// materials, each through the shared save dialog.
#include <string>

namespace qm {

class QuellmarkForm;

/// Registers the handlers of ExportSpice and ExportBom on the form.
void addCircuitHandlers(QuellmarkForm& f);

/// The program's version, as the netlist and the report name it.
std::string programVersion();
/// Today's date, "2026-11-25".
std::string todaysDate();

} // namespace qm
