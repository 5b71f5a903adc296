#pragma once
// The amplifier catalogue in the window: the database in the user's data
// folder, data sheets opened with the desktop's viewer, and the browser and
// the part list as windows beside the design screen.
#include "adapters/sqlite_store.h"
#include "catalogue/catalogue_windows.h"
#include "shell/control_widgets.h"

#include <functional>
#include <memory>

namespace qm {

class CatalogueWindow;

/// Opens a document with the desktop's own application.
class DesktopLauncher : public DocumentLauncher
{
  public:
    int LaunchDocument(const std::string& path) override;
};

class CatalogueShell : private ControlEvents
{
  public:
    /// `afterEvent` sets the design screen from the model once an event of
    /// these windows is handled.
    CatalogueShell(QuellmarkForm& form, QWidget* owner, std::function<void()> afterEvent);
    ~CatalogueShell() override;
    CatalogueShell(const CatalogueShell&) = delete;
    CatalogueShell& operator=(const CatalogueShell&) = delete;

    /// Sets both windows from the model.
    void syncFromModel();
    CatalogueWindow* browser() const { return browser_; }
    CatalogueWindow* partList() const { return partList_; }

    /// The catalogue file and the data-sheet folders of this user.
    static std::string databasePath();
    static std::vector<std::string> dataSheetFolders();

  private:
    void entryEdited(const std::string& control, const QString& text) override;
    void userEvent(const std::string& control, FormEvent event, const EventArgs& args) override;
    void listChosen(const std::string&, int) override {}
    void choiceClicked(const std::string&) override {}

    QuellmarkForm& form_;
    std::function<void()> afterEvent_;
    SqliteStore store_;
    DesktopLauncher launcher_;
    std::unique_ptr<CatalogueWindows> windows_;
    CatalogueWindow* browser_ = nullptr;
    CatalogueWindow* partList_ = nullptr;
};

} // namespace qm
