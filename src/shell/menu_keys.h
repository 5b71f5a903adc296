#pragma once
// The keyboard's ways into the menus: the platform's standard shortcuts for
// the operations that have one, and a mnemonic letter for every entry.
#include <QKeySequence>
#include <QList>
#include <QStringList>

namespace qm {

struct Control;
struct FormControls;

/// The shortcuts of the menu entry `entry`: the platform's standard keys
/// for New, Open, Save, Save As, Print, Quit and Help Contents, else the
/// entry's own accelerator. A platform without a standard key for one of
/// them (the plain X11 and offscreen ones have no Save As or Quit) gets
/// the key the common desktops give it.
QList<QKeySequence> menuShortcuts(const FormControls& f, const Control& entry);

/// Whether the entry's shortcut works in every window of the program.
bool isApplicationWide(const FormControls& f, const Control& entry);

/// The captions of one menu, or of the menu bar, each with a mnemonic: one
/// that has one ('&' before a letter) keeps it; the others take a letter
/// no other entry has, the caption's first letter where it is free, else
/// the first letter of one of its words, else any. "&&" is an ampersand
/// itself. An empty caption (a separator) stays empty.
QStringList withMnemonics(const QStringList& captions);

} // namespace qm
