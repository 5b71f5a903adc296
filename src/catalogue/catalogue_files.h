#pragma once
// The browser's spreadsheet import and export: a file dialog, the file read
// or written whole, and a message that says what happened.
namespace qm {

class QuellmarkForm;
class AmplifierStore;

/// Asks for a CSV file and adds its rows to the store; the message names the
/// rows taken and those refused, with their reasons. Returns true when any
/// row was taken.
bool importAmplifiersFromDialog(QuellmarkForm& form, AmplifierStore& store);

/// Asks for a file name and writes the whole catalogue there as CSV.
void exportAmplifiersToDialog(QuellmarkForm& form, const AmplifierStore& store);

} // namespace qm
