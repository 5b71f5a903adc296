#include "files/design_file.h"

#include "files/design_restore.h"
#include "files/whole_file.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"

#include <algorithm>

namespace qm {

namespace {

/// Fields of one line, joined by commas; the line ends with CR LF.
class Line
{
  public:
    Line& text(std::string_view s)
    {
        // A text field has no escape for its quote: a stray quote in an
        // entry is left out rather than cut the field short.
        std::string field(s);
        field.erase(std::remove(field.begin(), field.end(), '"'), field.end());
        return add('"' + field + '"');
    }
    Line& integer(long v) { return add(std::to_string(v)); }
    /// A 32-bit value with a point as separator, whatever the locale.
    Line& number(float v) { return add(generalText(v, '.')); }
    Line& truth(bool v) { return add(v ? "#TRUE#" : "#FALSE#"); }

    std::string end() const { return fields_ + "\r\n"; }

  private:
    Line& add(const std::string& field)
    {
        if (!first_) fields_ += ',';
        first_ = false;
        fields_ += field;
        return *this;
    }
    std::string fields_;
    bool first_ = true;
};

} // namespace

std::string designFileText(const QuellmarkForm& f)
{
    std::string out;
    out += Line()
               .text("lpf")
               .integer(f.n)
               .number(f.fc)
               .number(f.R1Seed)
               .number(f.respFreq)
               .integer(f.circuitType)
               .end();
    out += Line().text(std::to_string(f.TypeFilter.listIndex)).end();
    out += Line().text(f.filterTypeName).end();
    out += Line().text(std::to_string(f.baseFilterType)).end();
    out += Line().integer(f.CapacitorList.listIndex).integer(f.ResistorList.listIndex).end();
    out += Line().integer(f.FDAcircuit.value).end();
    out += Line().truth(f.CompValue.selected()).end();
    for (int i = 0; i < 5; ++i)
        out += Line().text(f.C1Entry[i].text).text(f.C2Entry[i].text).text(f.GainTB[i].text).end();
    out += Line().text(f.C1RealEntry.text).end();
    out += Line().text(f.RespF.text).end();
    out += Line().text(f.Text19.text).end();
    for (int i = 0; i < 5; ++i)
        out += Line().text(f.FnInput[i].text).text(f.QInput[i].text).end();
    out += Line().text(f.Gfreq[0].text).end();
    out += Line()
               .truth(f.TopAmp.visible)
               .text(f.TopAmp.text)
               .truth(f.BotAmp.visible)
               .text(f.BotAmp.text)
               .integer(f.InvCalc.value)
               .end();
    // What the 22 lines have no room for follows them, where a reader of
    // the 22 lines never looks.
    out += designExtrasText(designExtrasOf(f));
    return out;
}

bool SaveSub(QuellmarkForm& f, const std::string& sfile)
{
    try {
        writeWholeFile(sfile, designFileText(f));
    } catch (const FileWriteError& e) {
        f.showMessage(e.what());
        return false;
    }
    f.currentFile = sfile;
    return true;
}

} // namespace qm
