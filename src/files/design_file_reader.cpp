#include "design/cycle.h"
#include "files/design_file.h"
#include "files/design_restore.h"
#include "files/field_reader.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/design_entries.h"
#include "screen/quellmark_form.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>

namespace qm {

namespace {

void setBusy(const QuellmarkForm& f, bool busy)
{
    if (f.platform.busy) f.platform.busy->setBusy(busy);
}

/// Sets a selection as a click would, with the click's reaction. The
/// reaction may recalculate a screen that is only partly loaded, and fail on
/// what isn't read yet; the whole design recalculates once it is read.
template <typename Work> void react(Work work)
{
    try {
        work();
    } catch (const CalcFailure&) {
    }
}

/// The whole file, or nothing when it is missing, no plain file, unreadable
/// or too large to be a design.
std::optional<std::string> designFileBytes(const std::string& path)
{
    std::error_code ec;
    if (!std::filesystem::is_regular_file(path, ec)) return std::nullopt;
    const std::uintmax_t size = std::filesystem::file_size(path, ec);
    if (ec || size > kMaxDesignFileBytes) return std::nullopt;
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    // One byte more than the size tells a file that has grown since.
    std::string bytes(static_cast<std::size_t>(size) + 1, '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (in.bad()) return std::nullopt;
    const auto got = static_cast<std::size_t>(in.gcount());
    if (got > size) return std::nullopt;
    bytes.resize(got);
    return bytes;
}

/// A list takes only an index of one of its items.
void setListFromFile(QuellmarkForm& f, Control& list, long index)
{
    if (index < 0 || index >= static_cast<long>(list.items.size()))
        throw DesignFileError(list.name + " has no item " + std::to_string(index));
    react([&] { f.setListIndex(list, static_cast<int>(index)); });
}

/// A check box takes 0 or 1.
int checkValue(std::int16_t v)
{
    if (v != 0 && v != 1) throw DesignFileError("not a check box value");
    return v;
}

long listIndexText(const std::string& text)
{
    return toI16(strictNumber(text, '.'));
}

/// Steps 2 to 5: the mark, line 1, and the circuit.
void readFirstLine(QuellmarkForm& f, FieldReader& in)
{
    const std::string mark = in.field();
    if (mark != "lpf" && mark != "hpf") throw DesignFileError("no design file mark");
    f.n = in.integer();
    f.fc = in.number();
    f.R1Seed = in.number();
    f.respFreq = in.number();
    f.circuitType = in.integer();
    f.Text18.text = std::to_string(f.n);
    f.Text34.text = generalText(f.fc, f.decSep);
    f.Text12.text = generalText(f.R1Seed, f.decSep);
    f.RespF.text = generalText(f.respFreq, f.decSep);
    react([&] { f.selectOption(f.circuitType != 0 ? f.SallenKey : f.MFBtype); });
}

/// Steps 6 to 10: family, series, circuit form and value display.
void readSelections(QuellmarkForm& f, FieldReader& in)
{
    setListFromFile(f, f.TypeFilter, listIndexText(in.field()));
    f.filterTypeName = in.text();
    f.baseFilterType = toI16(strictNumber(in.field(), '.'));
    setListFromFile(f, f.CapacitorList, toI16(in.number()));
    setListFromFile(f, f.ResistorList, toI16(in.number()));
    const int fullyDifferential = checkValue(in.integer());
    react([&] { f.setCheck(f.FDAcircuit, fullyDifferential); });
    const bool values = in.truth();
    react([&] {
        if (values) {
            f.selectOption(f.CompValue);
        } else {
            f.deselectOption(f.CompValue);
            f.selectOption(f.SensTrue);
        }
    });
}

/// Steps 11 to 15: the entries, the chart's start and gain scale. Returns
/// the Custom Fn&Q rows as read, which later reactions may replace.
CustomRowTexts readEntries(QuellmarkForm& f, FieldReader& in)
{
    CustomRowTexts rows;
    for (int i = 0; i < 5; ++i) {
        f.C1Entry[i].text = in.text();
        f.C2Entry[i].text = in.text();
        f.GainTB[i].text = in.text();
    }
    f.C1RealEntry.text = in.text();
    f.RespF.text = in.text();
    f.Text19.text = in.text();
    for (int i = 0; i < 5; ++i) {
        f.FnInput[i].text = rows.fn[static_cast<std::size_t>(i)] = in.text();
        f.QInput[i].text = rows.q[static_cast<std::size_t>(i)] = in.text();
    }
    f.Gfreq[0].text = in.text();
    f.TopAmp.visible = in.truth();
    f.TopAmp.text = in.text();
    f.BotAmp.visible = in.truth();
    f.BotAmp.text = in.text();
    const int highPass = checkValue(in.integer());
    react([&] { f.setCheck(f.InvCalc, highPass); });
    return rows;
}

/// Step 16: the passband last, once every entry it mirrors is in place.
void setPassband(QuellmarkForm& f)
{
    react([&] {
        if (f.InvCalc.value == 0) {
            f.selectOption(f.LowPass);
            f.deselectOption(f.High);
        } else {
            f.deselectOption(f.LowPass);
            f.selectOption(f.High);
        }
    });
}

/// Steps 18 to 22: the design read, recalculated.
void finishLoad(QuellmarkForm& f)
{
    f.lastPoles = toI16(leadingNumber(f.Text18.text, f.decSep));
    f.digits = 3;
    RevalidateRespF(f);
    f.suppressUpdate = 0;
    updatescreen(f);
    f.designLoaded = -1;
    setBusy(f, false);
}

/// Marks the form as reading a file for as long as the reader runs.
class ReadingScope
{
  public:
    explicit ReadingScope(QuellmarkForm& f) : f_(f) { f_.readingDesignFile = true; }
    ~ReadingScope() { f_.readingDesignFile = false; }
    ReadingScope(const ReadingScope&) = delete;
    ReadingScope& operator=(const ReadingScope&) = delete;

  private:
    QuellmarkForm& f_;
};

/// What was read stays on the screen. A bad default file is silent and
/// gives way to the built-in design; any other file shows the message.
void failedLoad(QuellmarkForm& f, const std::string& sfile)
{
    if (!isDefaultDesignFile(f, sfile)) {
        f.showMessage(kNotADesignFile);
    } else {
        try {
            const ReadingScope reading(f);
            // The built-in design recalculates once its entries are in
            // place: a reaction on the way, or its own recalculation before
            // it empties the ripple, would read what the file left there.
            f.suppressUpdate = -1;
            f.Text19.text.clear();
            LoadNoDefaultFile(f);
        } catch (...) {
            // The screen keeps what the built-in design got to; the next
            // entry recalculates it.
        }
    }
    setBusy(f, false);
    f.suppressUpdate = 0;
}

/// Steps 1 to 22; a failure anywhere goes on to the caller.
void readDesign(QuellmarkForm& f, const std::string& sfile)
{
    const ReadingScope reading(f);
    const std::optional<std::string> bytes = designFileBytes(sfile);
    if (!bytes) throw DesignFileError("no file to read");
    FieldReader in(*bytes);
    readFirstLine(f, in);
    readSelections(f, in);
    const CustomRowTexts rows = readEntries(f, in);
    setPassband(f);
    const DesignExtras extras = readDesignExtras(bytes->substr(in.position()));
    restoreCustomDesign(f, rows, extras);
    restoreMask(f, extras);
    finishLoad(f);
}

} // namespace

bool OpenFile(QuellmarkForm& f, const std::string& sfile)
{
    setBusy(f, true);
    try {
        readDesign(f, sfile);
        return true;
    } catch (...) {
        // Any failure, of whatever kind, anywhere in the load.
        failedLoad(f, sfile);
        return false;
    }
}

} // namespace qm
