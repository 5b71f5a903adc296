#pragma once
// Wires the handlers of every subsystem to the events of the design screen.

namespace qm {

class QuellmarkForm;

/// Registers every handler the design screen has.
void registerFormHandlers(QuellmarkForm& form);

/// Handlers of the value display and the value table (design cycle).
void registerViewHandlers(QuellmarkForm& form);

/// Design-level entries, family, circuit, passband and series selections,
/// frames and the form itself.
void registerDesignEntryHandlers(QuellmarkForm& form);

/// Capacitor, gain, Fn, Q and total Q entries of the sections.
void registerSectionEntryHandlers(QuellmarkForm& form);

/// The chart's mouse, gain limits, trace entries and chart-data export.
void registerChartHandlers(QuellmarkForm& form);

} // namespace qm
