#pragma once
// The program's own files beside it: share/ next to its bin folder holds the
// help pages and the icon, in the build tree as after installing, so that
// the program runs from either, and from a package unpacked anywhere.
#include <QIcon>
#include <QString>
#include <QStringList>

namespace qm {

/// The program's icon: the pictures of share/icons beside the program, or
/// the desktop theme's when there are none.
QIcon programIcon();

/// The files the program reads beside it that are not there.
QStringList missingInstalledFiles();

/// Says on the error output which of them are missing; a run goes on
/// without them.
void reportMissingInstalledFiles();

} // namespace qm
