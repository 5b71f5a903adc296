#include "catalogue/catalogue_windows.h"

#include "catalogue/catalogue_files.h"
#include "catalogue/catalogue_layout.h"
#include "catalogue/design_marks.h"
#include "catalogue/edit_checks.h"
#include "catalogue/noise_figures.h"
#include "design/cycle.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"

#include <algorithm>

namespace qm {

namespace {

/// The sort that the browser opens with: the order "Value" names.
constexpr SortKey kOpeningKey{3, sortType::Number};

Control& browserControl(QuellmarkForm& form, const char* name)
{
    return *form.find(std::string(kBrowser) + "." + name);
}

Control& partListControl(QuellmarkForm& form, const char* name)
{
    return *form.find(std::string(kPartList) + "." + name);
}

/// A cell as the grid shows it: a number in a column with a format takes it.
std::string shownCell(std::size_t k, const std::string& text)
{
    const std::string pattern = amplifierFields()[k].format;
    if (pattern.empty()) return text;
    try {
        return formatPattern(strictNumber(text, '.'), pattern, '.');
    } catch (const std::exception&) {
        return text;
    }
}

} // namespace

CatalogueWindows::CatalogueWindows(QuellmarkForm& form, CatalogueServices services)
    : form_(form), services_(std::move(services)), sortKey_(kOpeningKey)
{
    addBrowserWindow(form_);
    addPartListWindow(form_);
    grid_ = form_.grid(std::string(kBrowser) + ".DBGrid1");
    partGrid_ = form_.grid(std::string(kPartList) + ".DBGrid1");
    fillPartGrid(form_, *partGrid_);
    registerHandlers();
}

void CatalogueWindows::registerHandlers()
{
    auto handler = [this](void (CatalogueWindows::*routine)()) {
        return [this, routine](QuellmarkForm&, int, const EventArgs&) { (this->*routine)(); };
    };
    auto browser = [](const char* name) { return std::string(kBrowser) + "." + name; };
    form_.on("CatalogueMnu", FormEvent::Click, handler(&CatalogueWindows::OpenKRNampsForm));
    form_.on("ShowPartList", FormEvent::Click, handler(&CatalogueWindows::ShowPartList_Click));
    form_.on(browser("cbSelect"), FormEvent::Click, handler(&CatalogueWindows::SelectNewKRNamps));
    form_.on(browser("cbClose"), FormEvent::Click, [this](QuellmarkForm&, int, const EventArgs&) {
        form_.find(kBrowser)->visible = false;
    });
    form_.on(browser("cbEdit"), FormEvent::Click, handler(&CatalogueWindows::cbEdit_Click));
    form_.on(browser("cbCancel"), FormEvent::Click, handler(&CatalogueWindows::cbCancel_Click));
    form_.on(browser("mnuMenuAdd"), FormEvent::Click, handler(&CatalogueWindows::mnuMenuAdd_Click));
    form_.on(browser("mnuMenuDelete"), FormEvent::Click,
             handler(&CatalogueWindows::mnuMenuDelete_Click));
    form_.on(browser("mnuImport"), FormEvent::Click, [this](QuellmarkForm&, int, const EventArgs&) {
        if (editing() || refuseWhenReadOnly()) return;
        if (importAmplifiersFromDialog(form_, *services_.store)) reload();
    });
    form_.on(browser("mnuExport"), FormEvent::Click, [this](QuellmarkForm&, int, const EventArgs&) {
        exportAmplifiersToDialog(form_, *services_.store);
    });
    form_.on(browser("txtSortBy"), FormEvent::Change, handler(&CatalogueWindows::txtSortBy_Change));
    form_.on(browser("DBGrid1"), FormEvent::HeadClick,
             [this](QuellmarkForm&, int, const EventArgs& a) { DBGrid1_HeadClick(a.column); });
    form_.on(browser("DBGrid1"), FormEvent::DblClick, handler(&CatalogueWindows::enterEditMode));
    form_.on(std::string(kPartList) + ".cmdDS", FormEvent::Click,
             handler(&CatalogueWindows::cmdDS_Click));
}

// --- The browser ------------------------------------------------------------

void CatalogueWindows::OpenKRNampsForm()
{
    // A step that fails is passed over: the window always appears.
    try {
        if (!services_.store->problem().empty()) form_.showMessage(services_.store->problem());
        records_ = services_.store->list();
    } catch (const std::exception&) {
        records_.clear();
    }
    leaveEditMode();
    sortKey_ = kOpeningKey;
    browserControl(form_, "txtSortBy").text = "Value";
    sortRecords(records_, sortKey_, tieKey(sortKey_));
    fillGrid();
    grid_->col = 0;
    grid_->row = rowOfDevice(partListControl(form_, "OpAmpSelection").text)
                     .value_or(std::max(0, grid_->rowCount() - 1));
    showCount();
    form_.find(kBrowser)->visible = true;
}

void CatalogueWindows::SelectNewKRNamps()
{
    if (grid_->row >= 0 && grid_->row < static_cast<int>(records_.size()))
        takeAmplifier(records_[static_cast<std::size_t>(grid_->row)]);
    form_.find(kBrowser)->visible = false;
    updatescreen(form_);
}

void CatalogueWindows::takeAmplifier(const AmplifierRecord& record)
{
    AmplifierChoice& a = form_.catalogue.amplifier;
    a.deviceName = trimmed(record[field::DeviceName]);
    a.supplier = record[field::Supplier];
    a.description = record[field::Description];
    a.bandwidthHz = engineeringValue(record[field::BW]);
    a.noiseDensity = voltageNoiseOf(record[field::Vn]);
    a.biasCurrentA = biasCurrentOf(record[field::Ib]);
    a.slewRateVPerUs = engineeringValue(record[field::SlewRate]);
    a.supplyMaxV = engineeringValue(record[field::MaxVcc]);
    partListControl(form_, "OpAmpSelection").text = a.deviceName;
}

void CatalogueWindows::reload()
{
    records_ = services_.store->list();
    sortRecords(records_, sortKey_, tieKey(sortKey_));
    fillGrid();
    showCount();
}

void CatalogueWindows::fillGrid()
{
    const auto& fields = amplifierFields();
    grid_->columns.clear();
    for (const FieldShape& f : fields) {
        const int alignment = f.alignment == FieldAlignment::Left     ? 0
                              : f.alignment == FieldAlignment::Centre ? 2
                                                                      : -1;
        grid_->columns.push_back({f.caption, f.widthTwips, alignment, f.format});
    }
    grid_->rows.clear();
    for (const AmplifierRecord& r : records_) {
        std::vector<std::string> cells;
        for (std::size_t k = 0; k < kAmplifierFields; ++k)
            cells.push_back(shownCell(k, r[k]));
        grid_->rows.push_back(std::move(cells));
    }
    grid_->clearMarks();
    grid_->row = std::clamp(grid_->row, 0, std::max(0, grid_->rowCount() - 1));
}

void CatalogueWindows::showCount()
{
    // An empty catalogue shows the words without a number.
    browserControl(form_, "lblNumAmps").text =
        "Qty = " + (records_.empty() ? std::string() : std::to_string(records_.size()));
}

std::optional<int> CatalogueWindows::rowOfDevice(const std::string& deviceName) const
{
    const std::string wanted = trimmed(deviceName);
    for (std::size_t k = 0; k < records_.size(); ++k)
        if (trimmed(records_[k][field::DeviceName]) == wanted) return static_cast<int>(k);
    return std::nullopt;
}

// --- Sorting ----------------------------------------------------------------

void CatalogueWindows::sortBy(const SortKey& key)
{
    if (editing()) return;
    const std::string current = grid_->row < static_cast<int>(records_.size()) && grid_->row >= 0
                                    ? records_[static_cast<std::size_t>(grid_->row)][0]
                                    : std::string();
    sortKey_ = key;
    sortRecords(records_, sortKey_, tieKey(sortKey_));
    fillGrid();
    if (const auto row = rowOfDevice(current)) grid_->row = *row;
}

void CatalogueWindows::DBGrid1_HeadClick(int column)
{
    if (column < 0 || column >= static_cast<int>(kAmplifierFields) || editing()) return;
    // The head's own field sorts, its numbers as numbers; its caption goes
    // into the sort box for the reader, without a second sort by the key
    // table (which knows none of these captions).
    const auto field = static_cast<std::size_t>(column);
    sortBy(headSortKey(field));
    browserControl(form_, "txtSortBy").text = flatCaption(field);
}

void CatalogueWindows::txtSortBy_Change()
{
    sortBy(sortKeyFor(browserControl(form_, "txtSortBy").text));
}

// --- Edit mode --------------------------------------------------------------

bool CatalogueWindows::refuseWhenReadOnly()
{
    if (services_.store->writable()) return false;
    form_.showMessage("The amplifier catalogue can't be changed: " + services_.store->problem());
    return true;
}

void CatalogueWindows::enterEditMode()
{
    if (editing() || grid_->rowCount() == 0 || refuseWhenReadOnly()) return;
    mode_ = Mode::Editing;
    editedRow_ = std::clamp(grid_->row, 0, grid_->rowCount() - 1);
    const auto row = static_cast<std::size_t>(editedRow_);
    editedDevice_ = records_[row][field::DeviceName];
    // The row is edited as stored, not as formatted for reading.
    grid_->rows[row] = std::vector<std::string>(records_[row].begin(), records_[row].end());
    browserControl(form_, "cbCancel").visible = true;
    browserControl(form_, "cbEdit").visible = true;
    browserControl(form_, "cbSelect").enabled = false;
    browserControl(form_, "cbClose").enabled = false;
    grid_->allowUpdate = true;
}

void CatalogueWindows::mnuMenuAdd_Click()
{
    // A new row is edited as any other: it is typed into and stored with
    // "Edit", so the grid takes changes and the two buttons show.
    if (editing() || refuseWhenReadOnly()) return;
    mode_ = Mode::Adding;
    editedDevice_.clear();
    grid_->rows.emplace_back(kAmplifierFields);
    grid_->clearMarks();
    grid_->row = grid_->rowCount() - 1;
    grid_->col = 0;
    editedRow_ = grid_->row;
    browserControl(form_, "cbCancel").visible = true;
    browserControl(form_, "cbEdit").visible = true;
    browserControl(form_, "cbSelect").enabled = false;
    browserControl(form_, "cbClose").enabled = false;
    grid_->allowUpdate = true;
    grid_->allowAddNew = true;
}

void CatalogueWindows::mnuMenuDelete_Click()
{
    if (editing() || grid_->rowCount() == 0 || refuseWhenReadOnly()) return;
    const std::string device = records_[static_cast<std::size_t>(grid_->row)][field::DeviceName];
    if (form_.platform.messages &&
        form_.platform.messages->showMessage("Delete " + device + " from the catalogue?",
                                             QuellmarkForm::kProgramTitle, MessageButtons::YesNo,
                                             MessageIcon::None) != MessageAnswer::Yes)
        return;
    try {
        services_.store->remove(device);
    } catch (const StoreError& e) {
        form_.showMessage(e.what());
    }
    reload();
}

void CatalogueWindows::cbEdit_Click()
{
    if (!editing()) return;
    // The row that edit mode opened is stored, wherever the current cell
    // has moved since.
    const auto row = static_cast<std::size_t>(editedRow_);
    AmplifierRecord record;
    std::copy_n(grid_->rows[row].begin(), kAmplifierFields, record.begin());
    std::vector<std::string> others;
    for (const AmplifierRecord& r : services_.store->list())
        if (mode_ == Mode::Adding || r[field::DeviceName] != editedDevice_)
            others.push_back(r[field::DeviceName]);
    // The checks are those of an amplifier, not of a capacitor: only the
    // device name must be filled, so no field is filled with "0" first;
    // numbers and T/F fields are checked where filled. A failure names the
    // field and its rule, and the edit stays open on that column.
    if (auto failure = checkRecord(record, others)) {
        grid_->row = editedRow_;
        grid_->col = static_cast<int>(failure->field);
        form_.showMessage(failure->message);
        return;
    }
    try {
        if (mode_ == Mode::Adding)
            services_.store->add(record);
        else
            services_.store->update(editedDevice_, record);
    } catch (const StoreError& e) {
        form_.showMessage(e.what());
        return;
    }
    const bool chosen = !form_.catalogue.amplifier.deviceName.empty() &&
                        lowerCase(form_.catalogue.amplifier.deviceName) == lowerCase(editedDevice_);
    leaveEditMode();
    reload();
    grid_->col = 0;
    if (const auto r = rowOfDevice(record[field::DeviceName])) grid_->row = *r;
    if (chosen) {
        takeAmplifier(record);
        updatescreen(form_);
    }
}

void CatalogueWindows::cbCancel_Click()
{
    leaveEditMode();
    reload();
    grid_->row = std::max(0, grid_->rowCount() - 1);
}

void CatalogueWindows::leaveEditMode()
{
    mode_ = Mode::Browsing;
    browserControl(form_, "cbCancel").visible = false;
    browserControl(form_, "cbEdit").visible = false;
    browserControl(form_, "cbSelect").enabled = true;
    browserControl(form_, "cbClose").enabled = true;
    grid_->allowAddNew = false;
    grid_->allowUpdate = false;
}

// --- The part list ----------------------------------------------------------

void CatalogueWindows::ShowPartList_Click()
{
    fillPartGrid(form_, *partGrid_);
    form_.find(kPartList)->visible = true;
}

void CatalogueWindows::cmdDS_Click()
{
    // Whatever fails on the way ends the look-up without a word.
    try {
        ShowDataSheet(form_, dataSheetFileName(partListControl(form_, "OpAmpSelection").text),
                      *services_.launcher, services_.dataSheetFolders);
    } catch (const std::exception&) {
        return;
    }
}

} // namespace qm
