#pragma once
// One widget kind per kind of control of the design screen. Each widget knows
// the name of its control and sends what the user does to a ControlEvents;
// it changes no design state itself. Setting a widget from the model goes
// through plain setters that send nothing.
#include "screen/quellmark_form.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>

#include <string>
#include <vector>

class QPainter;

namespace qm {

/// Where the widgets send the user's actions, by control name.
class ControlEvents
{
  public:
    virtual ~ControlEvents() = default;
    /// The text of an entry changed under the user's hands.
    virtual void entryEdited(const std::string& control, const QString& text) = 0;
    /// Any other event of the named control.
    virtual void userEvent(const std::string& control, FormEvent event,
                           const EventArgs& args = {}) = 0;
    /// The user chose an item of a list.
    virtual void listChosen(const std::string& control, int index) = 0;
    /// The user clicked an option button or a check box.
    virtual void choiceClicked(const std::string& control) = 0;
};

/// Qt delivers a double click as press, release, press, double click,
/// release; the design screen expects Click, DblClick and no click of the
/// second release. A widget keeps that apart with one of these.
class ClickSequence
{
  public:
    /// Whether this release is a click of its own.
    bool releaseClicks(const QWidget& w, const QMouseEvent& e);
    void doubleClicked() { swallowRelease_ = true; }

  private:
    bool swallowRelease_ = false;
};

/// A text entry. Enter raises KeyDown with key code 13; a click raises Click.
class EntryBox : public QLineEdit
{
  public:
    EntryBox(std::string control, ControlEvents& events, QWidget* parent);

    /// The font the entry is set in when its text fits.
    void setBaseFont(const QFont& font);
    /// Shows a text that the model set: narrower where it wouldn't fit.
    void showText(const QString& text);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    /// A closed entry is drawn flat and grey in every style, so that it
    /// can't be taken for one that is open.
    void paintEvent(QPaintEvent* event) override;

  private:
    std::string control_;
    ControlEvents& events_;
    ClickSequence clicks_;
    QFont baseFont_;
};

/// A list of fixed items, shown as a drop-down list. The chosen item is set
/// narrower where it wouldn't fit, never cut; the open list is as wide as
/// its longest item.
class ListChoice : public QComboBox
{
  public:
    ListChoice(std::string control, ControlEvents& events, QWidget* parent);
    /// The font the chosen item is shown in.
    QFont shownFont() const;
    /// Where the chosen item's text stands.
    QRect textRect() const;
    void showPopup() override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    std::string control_;
};

/// An option button or a check box whose state is the model's: a click only
/// reports, the next synchronisation shows the result. The caption breaks
/// into lines where the control is tall enough, else it is set narrower.
class ChoiceButton : public QAbstractButton
{
  public:
    enum class Style { Option, Check };
    ChoiceButton(std::string control, Style style, ControlEvents& events, QWidget* parent);

    void setOn(bool on);
    bool isOn() const { return on_; }
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool hitButton(const QPoint& pos) const override;

  private:
    QRect indicatorRect() const;
    Style style_;
    bool on_ = false;
};

/// A caption or a result: text in a fixed box, never cut while a narrower or
/// smaller font can show it. It may carry a ground colour, a border, and a
/// halo that keeps lines of a drawing away from the text.
class TextLabel : public QWidget
{
  public:
    TextLabel(std::string control, ControlEvents& events, QWidget* parent);

    void setText(const QString& text);
    QString text() const { return text_; }
    void setAlignment(Qt::Alignment alignment);
    void setWrap(bool wrap);
    void setColors(const QColor& text, const QColor& ground);
    void setBorder(bool border);
    void setHalo(const QColor& halo);
    void setMargin(int px);
    /// Shows the text as a line of a table: its pieces, which runs of two
    /// or more blanks part, stand at these left edges in pixels.
    void setColumns(std::vector<int> lefts);
    /// The font the text is shown in, after fitting it to the box.
    QFont shownFont() const;
    /// Where the text stands in the widget; empty for no text.
    QRectF shownTextRect() const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QRectF textArea() const;
    QString shownText() const;
    int textFlags() const;
    void paintColumns(QPainter& p, const QString& text) const;
    std::string control_;
    ControlEvents& events_;
    ClickSequence clicks_;
    QString text_;
    Qt::Alignment alignment_ = Qt::AlignLeft | Qt::AlignVCenter;
    bool wrap_ = false;
    QColor textColor_;
    QColor ground_;
    QColor halo_;
    bool border_ = false;
    int margin_ = 0;
    std::vector<int> columns_;
    mutable QFont fitted_;
    mutable bool fitValid_ = false;
};

/// Where a control's text stands in its box: a tall text of several lines
/// from the top, any other centred in height.
Qt::Alignment controlAlignment(const Control& c);

/// Paints a label's text as the screen shows it: set in `font` within `area`
/// by `flags` (alignment, wrapping), over a halo of `halo` where that is a
/// colour, so that lines of a drawing behind the text stop short of it.
void paintLabelText(QPainter& p, const QRectF& area, const QString& text, const QFont& font,
                    int flags, const QColor& ink, const QColor& halo = {});

/// A frame with a caption; a click on it is an event of the frame.
class FrameBox : public QGroupBox
{
  public:
    FrameBox(std::string control, ControlEvents& events, QWidget* parent);

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    std::string control_;
    ControlEvents& events_;
    ClickSequence clicks_;
};

class CommandButton : public QPushButton
{
  public:
    CommandButton(std::string control, ControlEvents& events, QWidget* parent);
};

} // namespace qm
