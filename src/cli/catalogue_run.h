#pragma once
// The amplifier catalogue of one command-line run: its store, the data-sheet
// launcher that opens nothing, the import before the actions and the export
// after them.
#include "catalogue/amplifier_csv.h"
#include "catalogue/catalogue_windows.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace qm {

/// A file of the catalogue that could not be read or written.
class CatalogueFileError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

struct CatalogueOptions
{
    std::string databasePath; ///< empty: a catalogue in memory
    std::vector<std::string> imports;
    std::vector<std::string> exports;
    std::vector<std::string> dataSheetFolders; ///< empty: beside the program
};

class CatalogueRun
{
  public:
    CatalogueRun(QuellmarkForm& form, const CatalogueOptions& options);

    /// Imports every file given; throws CatalogueFileError for one that
    /// can't be read.
    void importFiles();
    /// Exports to every file given; throws CatalogueFileError.
    void exportFiles();

    /// The store's problem, the import reports: what stderr gets.
    std::string report() const;
    /// ", \"grids\": ..., \"launched\": ..., \"imported\": ..." for the JSON.
    std::string jsonMembers(const QuellmarkForm& form) const;

    /// The data sheets opened, in order.
    const std::vector<std::string>& launched() const { return launcher_.launched; }

  private:
    CatalogueOptions options_;
    std::unique_ptr<AmplifierStore> store_;
    RecordingLauncher launcher_;
    std::unique_ptr<CatalogueWindows> windows_;
    std::vector<ImportReport> imported_;
};

} // namespace qm
