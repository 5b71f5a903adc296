#pragma once
// The controls of the catalogue windows: kinds, captions and places.
namespace qm {

class QuellmarkForm;

constexpr const char* kBrowser = "frmKRNamps";
constexpr const char* kPartList = "PartList";

/// Adds frmKRNamps and its controls to the form.
void addBrowserWindow(QuellmarkForm& form);
/// Adds PartList and its controls to the form.
void addPartListWindow(QuellmarkForm& form);

} // namespace qm
