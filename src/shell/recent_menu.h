#pragma once
// File > Open Recent: the recent designs, newest first, numbered for the
// keyboard. A design that is no longer there is greyed until "Remove
// missing files" takes it out; "Clear list" empties the list.
#include <QMenu>

#include <functional>

namespace qm {

class RecentFiles;

class RecentMenu : public QMenu
{
  public:
    RecentMenu(RecentFiles& files, std::function<void(const QString&)> open, QWidget* parent);

    /// Makes the entries again from the list as it now stands; the menu
    /// does so each time it opens.
    void refresh();
    /// The menu can be opened while the list holds a design.
    void syncEnabled();

  private:
    RecentFiles& files_;
    std::function<void(const QString&)> open_;
};

/// How an entry names a design: its path, the home folder as "~", with the
/// number that is its key.
QString recentEntryText(int number, const QString& path);

} // namespace qm
