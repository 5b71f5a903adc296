// The result texts as the whole recalculation leaves them, starting from the
// design screen as it opens and changing entries as a designer would.
#include "design/cycle.h"
#include "numbers/eng_text.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <functional>
#include <gtest/gtest.h>
#include <regex>
#include <string>
#include <vector>

namespace {

struct Screen
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm f{platform.services()};

    Screen() { qm::Form_Initialize(f); }

    /// Changes entries without their handlers' recalculation, then runs the
    /// cycle once, as a design file that fills the screen does.
    void design(const std::function<void(qm::QuellmarkForm&)>& change)
    {
        f.suppressUpdate = 1;
        change(f);
        f.suppressUpdate = 0;
        qm::updatescreen(f);
    }
};

void poles(qm::QuellmarkForm& f, const char* n)
{
    f.Text18.text = n;
}

/// One option of a pair chosen, the other cleared, as the screen shows them.
void pick(qm::Control& chosen, qm::Control& other)
{
    chosen.value = qm::kSelected;
    other.value = 0;
}

void sallenKey(qm::QuellmarkForm& f)
{
    pick(f.SallenKey, f.MFBtype);
}

void view(qm::QuellmarkForm& f, int mode)
{
    if (mode == 0)
        pick(f.CompValue, f.SensTrue);
    else
        pick(f.SensTrue, f.CompValue);
}

void highPass(qm::QuellmarkForm& f)
{
    f.InvCalc.value = 1;
}

TEST(CycleTexts, FivePolesFillTheTableFromTheBottom)
{
    Screen s;
    s.design([](qm::QuellmarkForm& f) { poles(f, "5"); });
    EXPECT_EQ(s.f.Label2.text, "Real ");
    EXPECT_EQ(s.f.Label3.text, "A ");
    EXPECT_EQ(s.f.Label4.text, "B ");
    EXPECT_TRUE(s.f.Label4.visible);
    EXPECT_FALSE(s.f.Label5.visible);
    EXPECT_EQ(s.f.Text41.text, "");
    EXPECT_EQ(s.f.Text42.text, "");
    EXPECT_EQ(s.f.Text43.text.substr(0, 9), "Real     ");
    EXPECT_EQ(s.f.Text44.text.substr(0, 10), "A         ");
    EXPECT_EQ(s.f.Text45.text.substr(0, 10), "B         ");
    EXPECT_EQ(
        s.f.Label40.text,
        "Section       R1               R2               R3               C1               C2");
}

TEST(CycleTexts, SectionGainsMultiplyIntoTotalsAndDescription)
{
    Screen s;
    s.design([](qm::QuellmarkForm& f) {
        poles(f, "4");
        f.setListIndex(f.ResistorList, 0); // exact resistors: gains exactly 2 and 3
        f.GainTB[0].text = "2";
        f.GainTB[1].text = "3";
        f.RespF.text = "10";
    });
    EXPECT_EQ(s.f.DCgain[0].text, "2.0");
    EXPECT_EQ(s.f.DCgain[1].text, "3.0");
    EXPECT_EQ(s.f.DCgain[5].text, "6.0");
    EXPECT_EQ(s.f.Label8.text, " MFB,4-Pole Low-Pass Butterworth: " + s.f.Text34.text +
                                   "Hz Cutoff, Passband Gain of 6.0");
    // Far below the cutoff each row is its stage gain in dB.
    EXPECT_EQ(s.f.GainF[0].text, "6.02 dB");
    EXPECT_EQ(s.f.GainF[1].text, "9.54 dB");
    EXPECT_EQ(s.f.GainF[5].text, "15.56 dB");
    // Phase about -w·(1/Q1 + 1/Q2) = -0.01·2.613 rad.
    EXPECT_EQ(s.f.PhaseF[5].text, "-1.5\xC2\xBA");
    EXPECT_EQ(s.f.Label35.text, "Response at 10.0  Hz.");
}

TEST(CycleTexts, ViewModesExchangeWhereTextsAndValuesStand)
{
    Screen s;
    s.design([](qm::QuellmarkForm& f) {
        poles(f, "2");
        view(f, 0);
    });
    const std::string sensLine = s.f.Text45.text;
    const std::string r1Value = s.f.R1[0].text;
    s.design([](qm::QuellmarkForm& f) { view(f, 2); });
    const qm::QuellmarkForm& f = s.f;
    EXPECT_EQ(sensLine, "A         " + f.R1[0].text + "    " + f.R2[0].text + "    " +
                            f.R3[0].text + "    " + f.C1L[0].text + "    " + f.C2L[0].text);
    // The label carries "   " behind the value, the table " ".
    ASSERT_GE(r1Value.size(), 2u);
    const std::string valueInLine = r1Value.substr(0, r1Value.size() - 2);
    EXPECT_EQ(f.Text45.text.substr(0, 11 + valueInLine.size()), "A          " + valueInLine);
}

TEST(CycleTexts, HighPassSallenKeyShowsCapacitorsWhereTheResistorsWere)
{
    Screen s;
    s.design([](qm::QuellmarkForm& f) {
        poles(f, "2");
        sallenKey(f);
        highPass(f);
    });
    const std::string r1 = s.f.R1[0].text;
    EXPECT_EQ(r1.substr(r1.size() - 3), "F  ");
    const std::string c1 = s.f.C1L[0].text;
    EXPECT_EQ(c1.substr(c1.size() - 3), "   ");
    EXPECT_EQ(c1.find('F'), std::string::npos);
    EXPECT_NE(s.f.Text45.text.find("      --; --             --; --      "), std::string::npos);
    EXPECT_EQ(s.f.Label40.text.substr(s.f.Label40.text.size() - 2), "C2");
    EXPECT_EQ(s.f.Label8.text.substr(0, 28), " Sallen-Key,2-Pole High-Pass");
}

TEST(CycleTexts, FullyDifferentialShowsHalfOfTheStoredC2)
{
    Screen s;
    s.design([](qm::QuellmarkForm& f) {
        poles(f, "2");
        f.setCheck(f.FDAcircuit, 1);
    });
    EXPECT_EQ(s.f.C2L[0].text, qm::Engsuffix(s.f.C2[1] / 2, 3, "F", '.'));
    EXPECT_EQ(s.f.Label8.text.substr(0, 31), " MFB, Fully-Differential,2-Pole");
}

TEST(CycleTexts, NoTextEverShowsAnInvalidNumber)
{
    // "nan", "inf" or "1.#INF" standing as a word, not inside one.
    const std::regex invalidNumber("(^|[^A-Za-z])(nan|inf|infinity)([^A-Za-z]|$)",
                                   std::regex::icase);
    for (const char* n : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"})
        for (int circuit = 0; circuit < 3; ++circuit)
            for (int pass = 0; pass < 2; ++pass)
                for (int mode = 0; mode < 3; mode += 2) {
                    Screen s;
                    EXPECT_NO_THROW(s.design([&](qm::QuellmarkForm& f) {
                        poles(f, n);
                        if (circuit == 1) sallenKey(f);
                        if (circuit == 2) f.setCheck(f.FDAcircuit, 1);
                        if (pass == 1) highPass(f);
                        view(f, mode);
                        f.GainTB[0].text = "2";
                    })) << n
                        << " poles, circuit " << circuit << ", high-pass " << pass;
                    for (const qm::Control* c : s.f.all())
                        EXPECT_FALSE(std::regex_search(c->text, invalidNumber))
                            << c->name << " [" << c->text << "] with " << n << " poles";
                }
}

} // namespace
