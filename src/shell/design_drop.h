#pragma once
// A design file dropped anywhere on the window opens, also over an entry,
// which would otherwise take the file's name as text.
#include <QObject>
#include <QString>

#include <functional>

class QMimeData;
class QWidget;

namespace qm {

class DesignDrop : public QObject
{
  public:
    /// Watches the application's drag events over `window`; a dropped
    /// design file goes to `open`.
    DesignDrop(QWidget* window, std::function<void(const QString&)> open);

    /// The design file that `mime` carries: one local file ending in .qmf,
    /// or an empty text.
    static QString designFileOf(const QMimeData* mime);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* window_;
    std::function<void(const QString&)> open_;
};

} // namespace qm
