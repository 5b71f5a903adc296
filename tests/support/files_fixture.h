#pragma once
// What the design file tests share: a design screen on the recording
// platform with its default design places, a fresh folder per test, and
// whole-file reads and writes.
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <tuple>

namespace qm::test {

struct FileScreen
{
    explicit FileScreen(const std::string& userDefault = "", const std::string& siteDefault = "",
                        char decSep = '.')
    {
        PlatformServices s = p.services();
        s.defaultDesignPath = userDefault;
        s.siteDefaultDesignPath = siteDefault;
        s.decimalSeparator = decSep;
        f = std::make_unique<QuellmarkForm>(s);
        Form_Initialize(*f);
    }
    /// Clicks into an entry, replaces its text and tabs away.
    void type(const std::string& entry, const std::string& text)
    {
        f->moveFocus(entry);
        f->find(entry)->text = text;
        f->moveFocus("");
    }
    void click(const char* menu) { f->raise(menu, FormEvent::Click); }
    /// Clicks a menu entry with the dialog's and the question's answers.
    void click(const char* menu, const std::string& file, MessageAnswer answer = MessageAnswer::Yes)
    {
        p.fileAnswers.push_back(file);
        p.answers.push_back(answer);
        click(menu);
        p.fileAnswers.clear();
        p.answers.clear();
    }
    const std::string& text(const std::string& name) { return f->find(name)->text; }

    RecordingPlatform p;
    std::unique_ptr<QuellmarkForm> f;
};

/// A folder of its own for the running test, removed afterwards.
class TempFolder
{
  public:
    TempFolder()
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("qm_") + info->test_suite_name() + "_" + info->name();
        for (char& c : name)
            if (c == '/') c = '_';
        // Per process too: two builds may run the same test at once.
        path_ = std::filesystem::temp_directory_path() / (name + "_" + std::to_string(::getpid()));
        std::filesystem::remove_all(path_);
        std::filesystem::create_directories(path_);
    }
    ~TempFolder()
    {
        std::error_code ec;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ec);
        std::filesystem::remove_all(path_, ec);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string file(const std::string& name) const { return (path_ / name).string(); }
    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

inline std::string readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

inline void writeFile(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

/// The name of a table row of a parameterised test.
template <typename T> std::string nameOf(const ::testing::TestParamInfo<T>& param)
{
    return param.param.name;
}

/// The overwrite question asked once when `asked`, and nothing else raised.
inline void expectOverwriteQuestion(const RecordingPlatform& p, bool asked)
{
    ASSERT_EQ(p.messages.size(), asked ? 1u : 0u);
    for (const RecordedMessage& m : p.messages)
        EXPECT_EQ(std::tuple(m.text, m.title, m.buttons, m.icon),
                  std::tuple("File already exists. Do you want to overwrite it?", "title",
                             MessageButtons::YesNo, MessageIcon::Exclamation));
}

} // namespace qm::test
