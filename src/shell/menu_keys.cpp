#include "shell/menu_keys.h"

#include "screen/form_controls.h"

#include <QSet>

#include <optional>

namespace qm {

namespace {

struct StandardEntry
{
    Control FormControls::*entry;
    QKeySequence::StandardKey key;
    const char* fallback; ///< the common desktops' key
};

const StandardEntry kStandardEntries[] = {
    {&FormControls::mnuFileNew, QKeySequence::New, "Ctrl+N"},
    {&FormControls::mnuFileOpen, QKeySequence::Open, "Ctrl+O"},
    {&FormControls::mnuFileSave, QKeySequence::Save, "Ctrl+S"},
    {&FormControls::mnuFileSaveAs, QKeySequence::SaveAs, "Ctrl+Shift+S"},
    {&FormControls::Print, QKeySequence::Print, "Ctrl+P"},
    {&FormControls::Exitmnu, QKeySequence::Quit, "Ctrl+Q"},
    {&FormControls::HelpCont, QKeySequence::HelpContents, "F1"},
};

/// The place of the caption's mnemonic letter, or nothing.
std::optional<qsizetype> mnemonicAt(const QString& caption)
{
    for (qsizetype i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != QLatin1Char('&')) continue;
        if (caption[i + 1] != QLatin1Char('&')) return i + 1;
        ++i; // "&&": an ampersand itself
    }
    return std::nullopt;
}

enum class Round { FirstLetter, WordStart, AnyLetter };

/// Where the caption can take a mnemonic in this round: a letter or digit
/// not taken yet, or -1.
qsizetype freeLetterAt(const QString& caption, Round round, const QSet<QChar>& taken)
{
    bool first = true;
    for (qsizetype i = 0; i < caption.size(); ++i) {
        const QChar c = caption[i];
        if (c == QLatin1Char('&')) {
            ++i; // "&&" stands for one ampersand, which takes no key
            continue;
        }
        const bool wordStart = i == 0 || !caption[i - 1].isLetterOrNumber();
        const bool fits = round == Round::AnyLetter || (round == Round::WordStart && wordStart) ||
                          (round == Round::FirstLetter && first);
        if (c.isLetterOrNumber()) {
            if (fits && !taken.contains(c.toLower())) return i;
            first = false;
        }
    }
    return -1;
}

} // namespace

QList<QKeySequence> menuShortcuts(const FormControls& f, const Control& entry)
{
    for (const StandardEntry& s : kStandardEntries) {
        if (&(f.*s.entry) != &entry) continue;
        const QList<QKeySequence> keys = QKeySequence::keyBindings(s.key);
        return keys.isEmpty() ? QList<QKeySequence>{QKeySequence(QLatin1String(s.fallback))} : keys;
    }
    if (entry.accelerator.empty()) return {};
    return {QKeySequence(QString::fromStdString(entry.accelerator))};
}

bool isApplicationWide(const FormControls& f, const Control& entry)
{
    // F1 is about the control in focus, in whichever window it stands.
    return &entry == &f.HelpCont;
}

QStringList withMnemonics(const QStringList& captions)
{
    QStringList out = captions;
    QSet<QChar> taken;
    std::vector<bool> done(static_cast<std::size_t>(captions.size()), false);
    for (qsizetype k = 0; k < captions.size(); ++k)
        if (const auto at = mnemonicAt(captions[k])) {
            taken.insert(captions[k][*at].toLower());
            done[static_cast<std::size_t>(k)] = true;
        }
    for (Round round : {Round::FirstLetter, Round::WordStart, Round::AnyLetter})
        for (qsizetype k = 0; k < captions.size(); ++k) {
            if (done[static_cast<std::size_t>(k)]) continue;
            const qsizetype at = freeLetterAt(captions[k], round, taken);
            if (at < 0) continue;
            taken.insert(captions[k][at].toLower());
            out[k].insert(at, QLatin1Char('&'));
            done[static_cast<std::size_t>(k)] = true;
        }
    return out;
}

} // namespace qm
