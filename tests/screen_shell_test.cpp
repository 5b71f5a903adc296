// The shell around the design screen: the about window and its setting over
// two starts, the version texts, and the help topics behind F1.
#include "design/cycle.h"
#include "files/ini_settings.h"
#include "screen/about_window.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/shell_menus.h"
#include "screen/user_actions.h"
#include "support/files_fixture.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iterator>
#include <memory>
#include <regex>
#include <set>
#include <sstream>

namespace {

using qm::ActionKind;

/// One start of the program on a settings store that outlives it.
struct Start
{
    explicit Start(qm::SettingsStore& store, char separator = '.')
    {
        platform.settings = &store;
        qm::PlatformServices services = platform.services();
        services.decimalSeparator = separator;
        form = std::make_unique<qm::QuellmarkForm>(services);
        form->runGuarded([this] { qm::Form_Initialize(*form); });
    }
    void act(ActionKind kind, const std::string& control)
    {
        qm::applyAction(*form, {kind, control, ""});
    }
    bool aboutShown() const { return form->find("AboutQuellmark")->visible; }
    bool boxTicked() const { return form->find("AboutQuellmark.ShowOnStartup")->checked(); }

    qm::RecordingPlatform platform;
    std::unique_ptr<qm::QuellmarkForm> form;
};

/// The same story on the two stores a run can have: memory, and a settings file.
class AboutSetting : public ::testing::TestWithParam<bool>
{
  protected:
    qm::test::TempFolder dir_;
    std::unique_ptr<qm::SettingsStore> store_ =
        GetParam() ? std::unique_ptr<qm::SettingsStore>(
                         std::make_unique<qm::IniSettings>(dir_.file("about.ini")))
                   : std::make_unique<qm::MemorySettings>();
};

TEST_P(AboutSetting, OnlyOkStoresTheBoxForTheNextStart)
{
    {
        Start closed(*store_);
        closed.act(ActionKind::Click, "AboutQuellmark.ShowOnStartup");
        qm::closeAboutWindow(*closed.form);
        EXPECT_FALSE(closed.aboutShown());
        EXPECT_EQ(store_->getSetting("Quellmark", "ShowAbout", "Value", "none"), "none")
            << "closing by the frame stores nothing";
    }
    {
        Start first(*store_);
        ASSERT_TRUE(first.aboutShown());
        EXPECT_TRUE(first.boxTicked());
        first.act(ActionKind::Click, "AboutQuellmark.ShowOnStartup");
        first.act(ActionKind::Click, "AboutQuellmark.Ok");
        EXPECT_FALSE(first.aboutShown());
    }
    EXPECT_EQ(store_->getSetting("Quellmark", "ShowAbout", "Value", ""), "False");
    Start second(*store_);
    EXPECT_FALSE(second.aboutShown());
    second.act(ActionKind::Click, "FormLoad");
    EXPECT_TRUE(second.aboutShown());
    EXPECT_FALSE(second.boxTicked());
    second.act(ActionKind::Click, "AboutQuellmark.ShowOnStartup");
    second.act(ActionKind::Click, "AboutQuellmark.Ok");
    EXPECT_TRUE(Start(*store_).aboutShown());
}

INSTANTIATE_TEST_SUITE_P(Stores, AboutSetting, ::testing::Bool(),
                         [](const auto& p) { return p.param ? "IniFile" : "Memory"; });

TEST(StoredSetting, DecidesTheWindowAtStart)
{
    const std::pair<const char*, bool> cases[] = {{"False", false}, {"false", false}, {"0", false},
                                                  {"True", true},   {"-1", true},     {"", true}};
    for (const auto& [text, shows] : cases) {
        qm::MemorySettings store;
        store.values["Quellmark/ShowAbout/Value"] = text;
        EXPECT_EQ(Start(store).aboutShown(), shows) << '"' << text << '"';
    }
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t from = 0;
    for (std::size_t at; (at = text.find("\r\n", from)) != std::string::npos; from = at + 2)
        lines.push_back(text.substr(from, at - from));
    EXPECT_EQ(from, text.size()) << "every line ends in CR LF";
    return lines;
}

std::string trimmedLeft(const std::string& s)
{
    return s.substr(s.find_first_not_of(' '));
}

TEST(VersionText, TakesTheSeparatorInAboutAndNotes)
{
    std::vector<std::string> notes = {
        "                                             Quellmark",
        "                                         Version Notes",
        "",
        "                                            Version 1.03.0003",
        "",
        "Added features:",
        "   1. High-pass filters can now be designed.",
        "   2. Group delay is a new chart trace.",
        "   3. 3 new filter types, Linear Phase 0.05 deg., Linear phase, 0.5 deg. and Gaussian "
        "12dB are now available.",
        "   4. Custom Q filter type allows designer to adjust the product of all Q to a different "
        "value.",
        "   5. Custom Fn and Q filter type allows the designer to enter any value desired and "
        "watch the resulting response.",
        "   6. Fully-differential filters can be designed.",
        "   7. Gain scaling is customizable by clicking on the top or bottom legend values.",
        "   8. When using the custom Fn and Q feature, double clicking on Fn or Q brings up a "
        "multiple entry format window.",
        "        This is useful for entering values from tables.",
        "   9. Full save and load capability is available.",
        " 10. Your design may be saved as the default design. ",
    };
    for (const auto& [separator, version] :
         {std::pair{'.', "Version 1.03.0003"}, std::pair{',', "Version 1,03,0003"}}) {
        qm::MemorySettings store;
        Start s(store, separator);
        const std::vector<std::string> about = linesOf(s.form->find("AboutQuellmark.Label1")->text);
        ASSERT_GE(about.size(), 6u);
        EXPECT_EQ(trimmedLeft(about[0]), "Halvorn Devices Quellmark");
        EXPECT_EQ(trimmedLeft(about[1]), "FILTER DESIGN PROGRAM");
        EXPECT_EQ(about[2], "");
        EXPECT_EQ(trimmedLeft(about[3]), version);
        EXPECT_EQ(about[4], "");
        // Centred by leading blanks, in the width of the widest line.
        std::size_t widest = 0;
        for (const std::string& l : about)
            widest = std::max(widest, l.size());
        for (int k : {0, 1, 3}) {
            const std::size_t blanks = about[k].size() - trimmedLeft(about[k]).size();
            EXPECT_NEAR(static_cast<double>(blanks), static_cast<double>(widest - about[k].size()),
                        2.0);
        }
        s.act(ActionKind::Click, "NewScreen");
        ASSERT_EQ(s.platform.messages.size(), 1u);
        EXPECT_EQ(s.platform.messages[0].title, "What's New?");
        EXPECT_EQ(s.platform.messages[0].buttons, qm::MessageButtons::Ok);
        notes[3] = std::string(44, ' ') + version;
        EXPECT_EQ(linesOf(s.platform.messages[0].text), notes);
    }
}

std::string readPage(const std::string& page)
{
    const char* data = std::getenv("QUELLMARK_TEST_DATA");
    return qm::test::readFile(std::string(data ? data : "tests/data") + "/../../help/" + page);
}

TEST(HelpTopics, EveryContextNumberHasAPageWithARealTopic)
{
    std::set<std::string> pages;
    for (int context : qm::helpContexts()) {
        const std::string page = qm::helpTopicPage(context);
        SCOPED_TRACE(std::to_string(context) + " " + page);
        EXPECT_TRUE(pages.insert(page).second) << "two numbers share a page";
        const std::string html = readPage(page);
        ASSERT_FALSE(html.empty()) << "missing or empty";
        EXPECT_NE(html.find("<h1>"), std::string::npos);
        // Over 150 words outside the markup: a topic, not a stub.
        const std::string text = std::regex_replace(html, std::regex("<[^>]*>"), " ");
        std::istringstream words(text);
        EXPECT_GT(std::distance(std::istream_iterator<std::string>(words),
                                std::istream_iterator<std::string>()),
                  150);
        const std::regex link("href=\"([^\"#]+)\"");
        for (auto it = std::sregex_iterator(html.begin(), html.end(), link);
             it != std::sregex_iterator(); ++it)
            EXPECT_FALSE(readPage((*it)[1]).empty()) << "broken link " << (*it)[1];
    }
}

TEST(HelpTopics, ControlsCarryTheirContextNumbers)
{
    qm::MemorySettings store;
    Start s(store);
    const std::pair<const char*, int> cases[] = {
        {"mnuFile", 10},     {"NewScreen", 10},  {"TypeFilter", 1200},    {"Text19", 1400},
        {"SallenKey", 1410}, {"Text34", 1500},   {"CapacitorList", 1510}, {"Text12", 1600},
        {"RespF", 1700},     {"SensTrue", 1800}, {"SADmnu", 1900},        {"SaveChartData", 1900},
        {"Print", 2100},     {"Text18", 0},      {"C1Entry(0)", 0},
    };
    for (const auto& [name, context] : cases)
        EXPECT_EQ(s.form->find(name)->helpContext, context) << name;
    const std::vector<int>& known = qm::helpContexts();
    for (const qm::Control* c : s.form->all())
        EXPECT_NE(std::find(known.begin(), known.end(), c->helpContext), known.end()) << c->name;
}

TEST(HelpTopics, F1AndHelpContentsOpenTheTopicOfTheFocus)
{
    qm::MemorySettings store;
    Start s(store);
    s.form->moveFocus("TypeFilter");
    s.act(ActionKind::Click, "HelpCont");
    s.act(ActionKind::HelpKey, "Text34");
    s.act(ActionKind::HelpKey, "Print");
    s.act(ActionKind::HelpKey, "Text18");
    s.act(ActionKind::Click, "HelpCont");
    EXPECT_EQ(s.platform.helpOpened, (std::vector<int>{1200, 1500, 2100, 0, 0}));
}

} // namespace
