#pragma once
// The platform services of the design screen, done with Qt: message boxes,
// the busy pointer and the two drawing surfaces of the chart.
#include "screen/platform.h"

#include <QLineF>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <vector>

namespace qm {

/// One line drawn on a surface, in twips from the surface's corner.
struct SurfaceLine
{
    QLineF line;
    Color color;
};

/// A surface that keeps its lines; the widget that shows it paints them.
class LineSurface : public DrawingSurface
{
  public:
    void clear() override;
    void line(float x1, float y1, float x2, float y2, Color color) override;

    const std::vector<SurfaceLine>& lines() const { return lines_; }
    /// Counts every change, so that a view can tell whether to repaint.
    unsigned revision() const { return revision_; }

  private:
    std::vector<SurfaceLine> lines_;
    unsigned revision_ = 0;
};

class QtPlatform : public MessageBoxes, public BusyPointer, public FileDialogs, public FileTest
{
  public:
    QtPlatform() = default;
    QtPlatform(const QtPlatform&) = delete;
    QtPlatform& operator=(const QtPlatform&) = delete;
    ~QtPlatform() override;

    MessageAnswer showMessage(const std::string& text, const std::string& title,
                              MessageButtons buttons, MessageIcon icon) override;
    /// The pointer is a state, as the design screen sets it: the last call
    /// decides, however many came before.
    void setBusy(bool busy) override;
    std::string showFileDialog(FileDialogKind kind, const FileDialogRequest& request) override;
    bool fileExists(const std::string& path) override;

    /// The window that owns the message boxes.
    void setParentWidget(QWidget* parent) { parent_ = parent; }
    PlatformServices services();

    LineSurface graph;
    LineSurface background;
    bool isBusy() const { return busy_; }

  private:
    QPointer<QWidget> parent_;
    bool busy_ = false;
};

/// A dialog filter from the design screen's "Caption|*.ext|Caption|*.ext".
QString dialogFilter(const std::string& filter);

/// Screen text from the design screen's text: CR LF ends a line.
QString screenText(const std::string& text);

} // namespace qm
