// The shell around the design screen: the about window's setting over two
// starts and the help topics behind F1. The about and notes texts are checked
// by the whole-screen designs "start-up", "about-comma" and "notes*".
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
    explicit Start(qm::SettingsStore& store)
    {
        platform.settings = &store;
        form = std::make_unique<qm::QuellmarkForm>(platform.services());
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

TEST(StoredSetting, IsReadFromAHandEditedFile)
{
    qm::test::TempFolder dir;
    qm::test::writeFile(dir.file("s.ini"), "  [ShowAbout]  \r\n Value = False \r\n");
    EXPECT_EQ(qm::IniSettings(dir.file("s.ini")).getSetting("Quellmark", "ShowAbout", "Value", ""),
              "False");
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
