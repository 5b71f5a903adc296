// Whole design screens as data: each design of tests/data/screens/designs.txt
// is built from the start-up screen by the command line's actions, and every
// control of the design screen is compared with the design's reference file.
// tests/data/screens/make_screens.sh writes those files; review each
// difference before accepting it.
#include "cli/command_line.h"
#include "cli/file_options.h"
#include "design/cycle.h"
#include "screen/user_actions.h"
#include "support/screen_dump.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

struct Design
{
    std::string name;
    std::vector<std::string> args;
};

/// A word of designs.txt with $DATA standing for the test data folder.
std::string withDataFolder(std::string word)
{
    const std::string mark = "$DATA";
    for (std::size_t at; (at = word.find(mark)) != std::string::npos;)
        word.replace(at, mark.size(), qm::test::dataPath(""));
    return word;
}

std::vector<Design> designs()
{
    std::vector<Design> out;
    for (const std::string& line : qm::test::readLines(qm::test::dataPath("screens/designs.txt"))) {
        if (line.empty() || line[0] == '#') continue;
        const auto colon = line.find(':');
        Design d{line.substr(0, colon), {}};
        std::istringstream words(colon == std::string::npos ? "" : line.substr(colon + 1));
        for (std::string w; words >> w;)
            d.args.push_back(withDataFolder(w));
        out.push_back(d);
    }
    return out;
}

/// The design built as the command line builds it: its answers, its
/// catalogue in memory, its actions in order.
std::vector<std::string> buildScreen(const Design& d)
{
    const qm::CommandLine cl = qm::parseCommandLine(d.args);
    qm::RecordingPlatform platform;
    platform.printAnswers.assign(cl.printAnswers.begin(), cl.printAnswers.end());
    platform.fileAnswers.assign(cl.fileAnswers.begin(), cl.fileAnswers.end());
    platform.answers.assign(cl.answers.begin(), cl.answers.end());
    qm::PlatformServices services = platform.services();
    services.decimalSeparator = cl.decimalSeparator != '\0' ? cl.decimalSeparator : '.';
    qm::QuellmarkForm form(services);
    qm::CatalogueRun catalogue(form, cl.catalogue);
    form.runGuarded([&] { qm::Form_Initialize(form); });
    std::vector<std::string> after;
    try {
        catalogue.importFiles();
        qm::runActions(form, platform, cl);
    } catch (const std::exception& e) {
        after.push_back(std::string("refused: ") + e.what());
    }
    const std::string data = qm::test::dataPath("");
    for (const std::string& path : catalogue.launched())
        after.push_back("launched " + (path.rfind(data, 0) == 0 ? path.substr(data.size()) : path));
    std::vector<std::string> lines = qm::test::screenLines(form, platform);
    lines.insert(lines.end(), after.begin(), after.end());
    return lines;
}

TEST(WholeScreen, EveryDesignMatchesItsReference)
{
    const std::vector<Design> all = designs();
    ASSERT_GE(all.size(), 30u) << "designs.txt not found or cut short";
    for (const Design& d : all)
        EXPECT_TRUE(qm::test::matchesReference(buildScreen(d), "screens/" + d.name + ".screen"))
            << "design " << d.name;
}

} // namespace
