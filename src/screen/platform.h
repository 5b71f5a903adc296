#pragma once
// Services of the platform that the core calls. The window build implements
// them with the toolkit; tests and the command line use RecordingPlatform,
// which answers from a script and remembers what was asked.
#include "screen/control.h"

#include <stdexcept>
#include <string>

namespace qm {

enum class MessageButtons { Ok, YesNo };
enum class MessageIcon { None, Exclamation, Information, Critical };
enum class MessageAnswer { Ok, Yes, No };

class MessageBoxes
{
  public:
    virtual ~MessageBoxes() = default;
    virtual MessageAnswer showMessage(const std::string& text, const std::string& title,
                                      MessageButtons buttons, MessageIcon icon) = 0;
};

/// The mouse pointer: busy during a recalculation or a load.
class BusyPointer
{
  public:
    virtual ~BusyPointer() = default;
    virtual void setBusy(bool busy) = 0;
};

/// A surface the chart draws on: the chart picture, or the copy on the
/// window's background. Coordinates are twips from the surface's corner.
class DrawingSurface
{
  public:
    virtual ~DrawingSurface() = default;
    virtual void clear() = 0;
    virtual void line(float x1, float y1, float x2, float y2, Color color) = 0;
};

/// What one file dialog shows: the shared dialog keeps the last file name
/// between uses, so the caller passes it in.
struct FileDialogRequest
{
    std::string title;
    std::string filter;     ///< "Caption (*.ext)|*.*", pairs separated by '|'
    std::string defaultExt; ///< without the dot; empty for none
    std::string fileName;   ///< the name the dialog opens with
};

enum class FileDialogKind { Open, Save };

class FileDialogs
{
  public:
    virtual ~FileDialogs() = default;
    /// The chosen path, or an empty text when the dialog was cancelled.
    virtual std::string showFileDialog(FileDialogKind kind, const FileDialogRequest& request) = 0;
};

/// Asks the file system whether a file is there (a folder is not a file).
class FileTest
{
  public:
    virtual ~FileTest() = default;
    virtual bool fileExists(const std::string& path) = 0;
};

/// Why a print job stopped: Cancel in the print dialog, or the printer.
class PrintFailure : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// The printer's page orientation values.
constexpr int kPortrait = 1;
constexpr int kLandscape = 2;

/// The printer and its dialog. Every operation may throw PrintFailure.
class Printer
{
  public:
    virtual ~Printer() = default;
    /// Shows the print dialog and returns the number of copies chosen;
    /// Cancel throws PrintFailure.
    virtual int showPrintDialog() = 0;
    virtual void setOrientation(int orientation) = 0;
    /// Renders the window's client area, its controls and what is drawn on
    /// its background, as one page of the document.
    virtual void printForm() = 0;
    virtual void endDocument() = 0;
};

/// The per-user settings store: text values by application, section, key.
class SettingsStore
{
  public:
    virtual ~SettingsStore() = default;
    /// The stored text, or `fallback` when nothing is stored.
    virtual std::string getSetting(const std::string& app, const std::string& section,
                                   const std::string& key, const std::string& fallback) = 0;
    virtual void saveSetting(const std::string& app, const std::string& section,
                             const std::string& key, const std::string& value) = 0;
};

/// Opens the help on the topic of a context number; 0 is the contents.
class HelpViewer
{
  public:
    virtual ~HelpViewer() = default;
    virtual void showHelp(int context) = 0;
};

/// Hears of every design file the user opened or saved by its name, for the
/// window's list of recent designs.
class RecentDesigns
{
  public:
    virtual ~RecentDesigns() = default;
    virtual void designUsed(const std::string& path) = 0;
};

/// Everything the design screen asks of its platform. The pointers are
/// borrowed and must outlive the form.
struct PlatformServices
{
    MessageBoxes* messages = nullptr;
    BusyPointer* busy = nullptr;
    DrawingSurface* graph = nullptr;      ///< the chart picture Graph
    DrawingSurface* background = nullptr; ///< the window's own background
    FileDialogs* dialogs = nullptr;
    FileTest* files = nullptr;
    Printer* printer = nullptr;
    SettingsStore* settings = nullptr;
    HelpViewer* help = nullptr;
    RecentDesigns* recent = nullptr;
    /// The locale's decimal separator; '\0' takes it from the C++ locale.
    char decimalSeparator = '\0';
    /// Where the default design lives: the user's own file, which "Save as
    /// default" writes, and the site's, read only while the user's is absent
    /// and never written. Empty for none.
    std::string defaultDesignPath;
    std::string siteDefaultDesignPath;
};

} // namespace qm
