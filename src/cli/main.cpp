// quellmark-cli: the design screen without a window, for scripts.
#include "circuit/circuit_exports.h"
#include "cli/command_line.h"
#include "cli/control_guide.h"
#include "cli/file_options.h"
#include "cli/json_writer.h"
#include "cli/requirement_options.h"
#include "design/cycle.h"
#include "files/ini_settings.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include "program_version.h"

#include <iostream>

namespace {

constexpr int kExitFile = 1;
constexpr int kExitUsage = 2;
/// An action's text couldn't be read: the screen is printed all the same.
constexpr int kExitNotUnderstood = 3;

bool entryNotUnderstood(const qm::RecordingPlatform& platform)
{
    for (const qm::RecordedMessage& m : platform.messages)
        if (m.text == qm::QuellmarkForm::kEntryNotUnderstood) return true;
    return false;
}

std::string selectedControls(const qm::QuellmarkForm& form, const qm::CommandLine& cl,
                             const qm::RecordingPlatform& platform)
{
    std::string out;
    for (const std::string& name : cl.only) {
        const qm::Control* c = form.find(name);
        if (!c) throw qm::ActionError("no control named '" + name + "'");
        out += cl.json ? "\"" + qm::jsonEscape(c->text) + "\"\n" : c->text + "\n";
    }
    for (const qm::RecordedMessage& m : platform.messages)
        std::cerr << "message: " << m.title << ": " << m.text << "\n";
    return out;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const qm::CommandLine cl =
            qm::parseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
        if (cl.help) {
            std::cout << qm::usageText();
            return 0;
        }
        if (cl.version) {
            std::cout << "quellmark-cli " << qm::kProgramVersion << "\n";
            return 0;
        }
        qm::RecordingPlatform platform;
        qm::IniSettings iniSettings(cl.settingsFile);
        if (!cl.settingsFile.empty()) platform.settings = &iniSettings;
        platform.printAnswers.assign(cl.printAnswers.begin(), cl.printAnswers.end());
        qm::PlatformServices services = platform.services();
        services.decimalSeparator = cl.decimalSeparator;
        services.defaultDesignPath = cl.defaultDesign;
        platform.fileAnswers.assign(cl.fileAnswers.begin(), cl.fileAnswers.end());
        platform.answers.assign(cl.answers.begin(), cl.answers.end());
        qm::QuellmarkForm form(services);
        qm::addCircuitHandlers(form);
        // The report is drawn by the window program; here the entry says so.
        form.on("ExportReport", qm::FormEvent::Click,
                [](qm::QuellmarkForm& f, int, const qm::EventArgs&) {
                    f.showMessage(
                        "The report is made by the window program: quellmark --report-pdf OUT.pdf");
                });
        qm::CatalogueRun catalogue(form, cl.catalogue);
        form.runGuarded([&] { qm::Form_Initialize(form); });
        if (cl.listControls) {
            std::cout << qm::controlList(form);
            return 0;
        }
        catalogue.importFiles();
        qm::runActions(form, platform, cl);
        catalogue.exportFiles();
        std::cerr << catalogue.report();
        if (!cl.only.empty())
            std::cout << selectedControls(form, cl, platform);
        else
            std::cout << (cl.json
                              ? qm::screenAsJson(form, platform,
                                                 catalogue.jsonMembers(form) +
                                                     qm::analysisJsonMembers(form, cl.analysis) +
                                                     qm::requirementsJsonMember(form))
                              : qm::screenAsText(form, platform));
        return entryNotUnderstood(platform) ? kExitNotUnderstood : 0;
    } catch (const qm::UsageError& e) {
        std::cerr << "quellmark-cli: " << e.what() << "\n";
    } catch (const qm::ActionError& e) {
        std::cerr << "quellmark-cli: " << e.what() << "\n";
    } catch (const qm::CatalogueFileError& e) {
        std::cerr << "quellmark-cli: " << e.what() << "\n";
        return kExitFile;
    }
    return kExitUsage;
}
