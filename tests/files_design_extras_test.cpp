// The lines after the 22 of a design file: the mask and the Q total, read
// on their own and through whole files, and the custom designs that reopen
// as they were saved on whatever screen.
#include "design/cycle.h"
#include "files/design_extras.h"
#include "files/design_file.h"
#include "files/field_reader.h"
#include "screen/quellmark_form.h"
#include "screen/requirements_window.h"
#include "support/files_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace {

using qm::test::TempFolder;
using Screen = qm::test::FileScreen;

struct ExtraLines
{
    const char* name;
    std::string rest;
    bool mask;
    bool damaged;
    const char* qTotal; ///< nullptr for none
};

class ExtraLinesRead : public ::testing::TestWithParam<ExtraLines>
{
};

TEST_P(ExtraLinesRead, GiveTheMaskTheQTotalOrWhatIsDamaged)
{
    const ExtraLines& e = GetParam();
    const qm::DesignExtras x = qm::readDesignExtras(e.rest);
    EXPECT_EQ(x.mask.has_value(), e.mask);
    EXPECT_EQ(x.maskDamaged, e.damaged);
    EXPECT_EQ(x.qTotal.has_value(), e.qTotal != nullptr);
    if (e.qTotal && x.qTotal) {
        EXPECT_EQ(*x.qTotal, e.qTotal);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Lines, ExtraLinesRead,
    ::testing::Values(
        ExtraLines{"None", "", false, false, nullptr},
        ExtraLines{"Mask", "\"mask\",1000,1,3000,40,0\r\n", true, false, nullptr},
        ExtraLines{"MaskLfNoEnd", "\"mask\",1000,1,3000,40,5", true, false, nullptr},
        ExtraLines{"MaskAndQ", "\"mask\",1e3,1,3e3,40,0\r\n\"qtotal\",\"2.0000 \"\r\n", true, false,
                   "2.0000 "},
        ExtraLines{"UnknownLinesPassedOver", "1,2,3\r\n\"later\",\"x\"\r\n", false, false, nullptr},
        ExtraLines{"MaskWord", "\"mask\",1000,one,3000,40,0\r\n", false, true, nullptr},
        ExtraLines{"MaskShort", "\"mask\",1000,1,3000\r\n", false, true, nullptr},
        ExtraLines{"MaskLong", "\"mask\",1000,1,3000,40,0,7\r\n", false, true, nullptr},
        ExtraLines{"MaskNan", "\"mask\",nan,1,3000,40,0\r\n", false, true, nullptr},
        ExtraLines{"MaskNegativeEdge", "\"mask\",-1000,1,3000,40,0\r\n", false, true, nullptr},
        ExtraLines{"MaskOpenQuote", "\"mask,1000,1,3000,40,0\r\n", false, true, nullptr},
        ExtraLines{"QTotalLongerThanAnEntry",
                   "\"qtotal\",\"" + std::string(1001, '\xa2') + "\"\r\n", false, false, nullptr},
        ExtraLines{"QTotalAfterDamagedMask", "\"mask\",x\r\n\"qtotal\",\"3\"\r\n", false, true,
                   "3"}),
    [](const ::testing::TestParamInfo<ExtraLines>& i) { return std::string(i.param.name); });

TEST(DesignExtras, WrittenLinesReadBackAsTheyWere)
{
    qm::DesignExtras x;
    x.mask = qm::ResponseMask{1234.5, 0.25, 3300, 45.5, 12};
    x.qTotal = "1.5000 ";
    const std::string text = qm::designExtrasText(x);
    EXPECT_EQ(text, "\"mask\",1234.5,0.25,3300,45.5,12\r\n\"qtotal\",\"1.5000 \"\r\n");
    const qm::DesignExtras back = qm::readDesignExtras(text);
    EXPECT_EQ(back.mask, x.mask);
    EXPECT_EQ(back.qTotal, x.qTotal);
    EXPECT_TRUE(qm::designExtrasText({}).empty());
}

std::size_t lineCount(const std::string& text)
{
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

TEST(DesignExtras, AMaskFollowsTheTwentyTwoLinesThatStayAsBefore)
{
    Screen plain;
    const std::string before = qm::designFileText(*plain.f);
    EXPECT_EQ(lineCount(before), 22u);
    Screen masked;
    qm::setMaskEntries(*masked.f, qm::ResponseMask{1000, 1, 3000, 40, 0});
    const std::string with = qm::designFileText(*masked.f);
    EXPECT_EQ(lineCount(with), 23u);
    EXPECT_EQ(with.substr(0, before.size()), before);
    EXPECT_EQ(with.substr(before.size()), "\"mask\",1000,1,3000,40,0\r\n");
    EXPECT_TRUE(qm::designFileExtras(before).empty());
    EXPECT_TRUE(qm::designFileExtras(with).mask);
}

TEST(DesignExtras, AMaskOpensWithItsFileAndGoesWithAFileWithoutOne)
{
    TempFolder dir;
    Screen a;
    qm::setMaskEntries(*a.f, qm::ResponseMask{1000, 1, 3000, 40, 20});
    const std::string masked = dir.file("masked.qmf");
    ASSERT_TRUE(qm::SaveSub(*a.f, masked));
    Screen b;
    qm::OpenFile(*b.f, masked);
    EXPECT_TRUE(b.p.messages.empty());
    ASSERT_TRUE(b.f->requirements.mask);
    EXPECT_EQ(*b.f->requirements.mask, *a.f->requirements.mask);
    EXPECT_EQ(qm::requirementsControl(*b.f, "GdEntry").text, "20");
    EXPECT_EQ(qm::designFileText(*b.f), qm::designFileText(*a.f));
    const std::string plain = dir.file("plain.qmf");
    ASSERT_TRUE(qm::SaveSub(*Screen().f, plain));
    qm::OpenFile(*b.f, plain);
    EXPECT_FALSE(b.f->requirements.mask);
}

TEST(DesignExtras, ADamagedMaskLineIsLeftOutWithAMessageAndTheDesignOpens)
{
    TempFolder dir;
    Screen a;
    a.type("Text18", "6");
    const std::string path = dir.file("damaged.qmf");
    qm::test::writeFile(path, qm::designFileText(*a.f) + "\"mask\",1000,1,fast,40,0\r\n");
    Screen b;
    qm::OpenFile(*b.f, path);
    ASSERT_EQ(b.p.messages.size(), 1u);
    EXPECT_EQ(b.p.messages[0].text, qm::kMaskDamaged);
    EXPECT_EQ(b.f->designLoaded, -1);
    EXPECT_EQ(b.f->n, 6);
    EXPECT_FALSE(b.f->requirements.mask);
}

/// The texts and visibility of the rows and results a custom design shows.
std::vector<std::string> customView(const qm::QuellmarkForm& f)
{
    std::vector<std::string> out;
    for (int i = 0; i < 5; ++i)
        for (const qm::Control* c : {&f.FnInput[i], &f.QInput[i], &f.FSFreq[i], &f.Qdisp[i]})
            out.push_back(c->name + (c->visible ? " shown " : " hidden ") + c->text);
    out.push_back("Qtotal " + f.Qtotal.text);
    out.push_back("TypeFilter " + std::to_string(f.TypeFilter.listIndex));
    return out;
}

struct CustomCase
{
    const char* name;
    int baseFamily;
    int poles;
    int customFamily;
    bool savedHigh;
    bool screenHigh;
    int screenFamily;
};

class CustomReopen : public ::testing::TestWithParam<CustomCase>
{
};

TEST_P(CustomReopen, AsItWasSavedOnAnyScreen)
{
    const CustomCase& c = GetParam();
    TempFolder dir;
    Screen a;
    if (c.savedHigh) a.f->selectOption(a.f->High);
    a.f->setListIndex(a.f->TypeFilter, c.baseFamily);
    a.type("Text18", std::to_string(c.poles));
    a.f->setListIndex(a.f->TypeFilter, c.customFamily);
    if (c.customFamily == 6) a.type("Qtotal", "2");
    if (c.customFamily == 7) a.type("QInput(1)", "3");
    const std::string path = dir.file("custom.qmf");
    ASSERT_TRUE(qm::SaveSub(*a.f, path));

    Screen b;
    if (c.screenHigh) b.f->selectOption(b.f->High);
    b.f->setListIndex(b.f->TypeFilter, c.screenFamily);
    qm::OpenFile(*b.f, path);
    EXPECT_TRUE(b.p.messages.empty());
    EXPECT_EQ(customView(*b.f), customView(*a.f));
    // A change of passband on the way mirrors the response frequency about
    // the cutoff, as it always has; the rest of the file is the same.
    if (c.savedHigh == c.screenHigh) {
        EXPECT_EQ(qm::designFileText(*b.f), qm::designFileText(*a.f));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Files, CustomReopen,
    ::testing::Values(CustomCase{"CustomQBesselOnButterworth", 1, 4, 6, false, false, 0},
                      CustomCase{"CustomQChebychevOnBessel", 2, 5, 6, false, false, 1},
                      CustomCase{"CustomQHighOnLow", 3, 6, 6, true, false, 0},
                      CustomCase{"FnQHighOnHigh", 0, 4, 7, true, true, 0},
                      CustomCase{"FnQHighFiveOnHigh", 1, 5, 7, true, true, 0},
                      CustomCase{"FnQHighOnLow", 0, 4, 7, true, false, 0},
                      CustomCase{"FnQLowOnHigh", 2, 6, 7, false, true, 0},
                      CustomCase{"FnQOnCustomFnQ", 0, 4, 7, false, false, 7}),
    [](const ::testing::TestParamInfo<CustomCase>& i) { return std::string(i.param.name); });

} // namespace
