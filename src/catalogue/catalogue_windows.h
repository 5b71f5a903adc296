#pragma once
// The two windows of the amplifier catalogue beside the design screen: the
// browser frmKRNamps and the part list PartList, with their handlers, and the
// design screen's entrances to them (Options > "Amplifier catalogue" and
// "Show Part List").
#include "catalogue/amplifier_store.h"
#include "catalogue/data_sheets.h"
#include "catalogue/record_sort.h"

#include <optional>
#include <string>
#include <vector>

namespace qm {

class QuellmarkForm;
struct GridModel;

/// What the catalogue windows work with; the pointers are borrowed and must
/// outlive the windows.
struct CatalogueServices
{
    AmplifierStore* store = nullptr;
    DocumentLauncher* launcher = nullptr;
    /// The "datasheets" folders, in the order they are searched: the
    /// program's own (share/quellmark/datasheets beside its bin folder),
    /// then the one in the user's data folder.
    std::vector<std::string> dataSheetFolders;
};

class CatalogueWindows
{
  public:
    /// Adds both windows to `form` and registers their handlers.
    CatalogueWindows(QuellmarkForm& form, CatalogueServices services);
    CatalogueWindows(const CatalogueWindows&) = delete;
    CatalogueWindows& operator=(const CatalogueWindows&) = delete;

    /// Sorts the records, finds the present device and shows the browser.
    void OpenKRNampsForm();
    /// The device of the current row becomes the design's amplifier.
    void SelectNewKRNamps();
    void ShowPartList_Click();
    void cmdDS_Click();

    /// Reads the store again into the browser's grid, sorted as it is.
    void reload();
    /// The records in the order the grid shows them.
    const std::vector<AmplifierRecord>& records() const { return records_; }
    bool editing() const { return mode_ != Mode::Browsing; }

  private:
    enum class Mode { Browsing, Editing, Adding };

    void addBrowserControls();
    void addPartListControls();
    void registerHandlers();

    void sortBy(const SortKey& key);
    void fillGrid();
    void showCount();
    std::optional<int> rowOfDevice(const std::string& deviceName) const;

    void DBGrid1_HeadClick(int column);
    void txtSortBy_Change();
    void enterEditMode();
    void mnuMenuAdd_Click();
    void mnuMenuDelete_Click();
    void cbEdit_Click();
    void cbCancel_Click();
    void leaveEditMode();
    bool refuseWhenReadOnly();
    void takeAmplifier(const AmplifierRecord& record);

    QuellmarkForm& form_;
    CatalogueServices services_;
    GridModel* grid_ = nullptr;     ///< frmKRNamps.DBGrid1
    GridModel* partGrid_ = nullptr; ///< PartList.DBGrid1
    std::vector<AmplifierRecord> records_;
    SortKey sortKey_;
    Mode mode_ = Mode::Browsing;
    std::string editedDevice_; ///< the device name of the row being edited
    int editedRow_ = 0;        ///< the grid row being edited
};

} // namespace qm
