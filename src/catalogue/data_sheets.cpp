#include "catalogue/data_sheets.h"

#include "catalogue/amplifier_fields.h"
#include "screen/quellmark_form.h"

#include <filesystem>

namespace qm {

namespace {

constexpr std::size_t kFamilyLength = 3;
constexpr std::size_t kVariantPosition = 6; ///< the seventh character
constexpr const char* kNeighbourFamily = "krn";

bool launchIn(const std::vector<std::string>& folders, const std::string& name,
              DocumentLauncher& launcher)
{
    for (const std::string& folder : folders) {
        const std::string path = (std::filesystem::path(folder) / name).string();
        if (launcher.LaunchDocument(path) > kLaunchOpenedAbove) return true;
    }
    return false;
}

} // namespace

int RecordingLauncher::LaunchDocument(const std::string& path)
{
    launched.push_back(path);
    std::error_code ec;
    return std::filesystem::is_regular_file(path, ec) ? kLaunchOpened : kLaunchFileNotFound;
}

std::string dataSheetOpenedText()
{
    return std::string("Datasheet is the latest available at software release.\r") +
           " For the latest version, check at " + kDataSheetSite + ".";
}

std::string dataSheetFileName(const std::string& deviceName)
{
    return lowerCase(trimmed(deviceName)) + ".pdf";
}

void ShowDataSheet(QuellmarkForm& form, const std::string& fileName, DocumentLauncher& launcher,
                   const std::vector<std::string>& folders)
{
    std::string name = fileName;
    for (;;) {
        if (launchIn(folders, name, launcher)) {
            form.showMessage(dataSheetOpenedText());
            return;
        }
        // A sheet of this family covers its lower variants: a missing one is
        // looked for under the name with a lower seventh character.
        if (name.size() <= kVariantPosition) return;
        const char c = name[kVariantPosition];
        if (c < '0' || c > '9') return;
        const bool family = lowerCase(name.substr(0, kFamilyLength)) == kNeighbourFamily;
        if (family && c == '1') {
            name[kVariantPosition] = '0';
        } else if (family && c > '1') {
            name[kVariantPosition] = '1';
        } else {
            form.showMessage(kNoDataSheet);
            return;
        }
    }
}

} // namespace qm
