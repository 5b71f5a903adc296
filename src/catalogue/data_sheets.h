#pragma once
// Data sheets: PDF files named after the device in a folder "datasheets",
// opened with the viewer the system has for them.
#include <string>
#include <vector>

namespace qm {

class QuellmarkForm;

/// Opens a document with the system's own application. The result follows
/// the platform's old convention: above 32 when the document was opened,
/// a small error number when it wasn't.
class DocumentLauncher
{
  public:
    virtual ~DocumentLauncher() = default;
    virtual int LaunchDocument(const std::string& path) = 0;
};

/// Results of LaunchDocument.
constexpr int kLaunchFileNotFound = 2;
constexpr int kLaunchNoApplication = 31;
constexpr int kLaunchOpened = 42;
/// ShowDataSheet counts a result above this as opened.
constexpr int kLaunchOpenedAbove = 10;

/// Opens nothing: remembers every path it was asked to open and reports it
/// opened when the file is there.
class RecordingLauncher : public DocumentLauncher
{
  public:
    int LaunchDocument(const std::string& path) override;
    std::vector<std::string> launched;
};

constexpr const char* kNoDataSheet = "No datasheet found on your computer.";
/// Where the latest data sheets are; the closing message names it.
constexpr const char* kDataSheetSite = "https://datasheets.quellmark.example/";

/// The closing message after a sheet has opened.
std::string dataSheetOpenedText();

/// "krn4411.pdf" for "KRN4411 ": the name trimmed, lower case, ".pdf".
std::string dataSheetFileName(const std::string& deviceName);

/// Finds and opens `fileName` in the folders, trying the name as it is, then
/// with its seventh character lowered to "1" and to "0" for the one family
/// whose sheets cover their neighbours, and tells the user how it went.
void ShowDataSheet(QuellmarkForm& form, const std::string& fileName, DocumentLauncher& launcher,
                   const std::vector<std::string>& folders);

} // namespace qm
