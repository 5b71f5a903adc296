#include "shell/control_widgets.h"

#include "shell/text_fit.h"

#include <QAbstractItemView>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>

namespace qm {

namespace {

bool leftClickInside(const QWidget& w, const QMouseEvent& e)
{
    return e.button() == Qt::LeftButton && w.rect().contains(e.position().toPoint());
}

} // namespace

bool ClickSequence::releaseClicks(const QWidget& w, const QMouseEvent& e)
{
    if (swallowRelease_) {
        swallowRelease_ = false;
        return false;
    }
    return leftClickInside(w, e);
}

// --- EntryBox --------------------------------------------------------------

EntryBox::EntryBox(std::string control, ControlEvents& events, QWidget* parent)
    : QLineEdit(parent), control_(std::move(control)), events_(events)
{
    connect(this, &QLineEdit::textEdited, this,
            [this](const QString& text) { events_.entryEdited(control_, text); });
}

void EntryBox::setBaseFont(const QFont& font)
{
    baseFont_ = font;
    setFont(font);
}

void EntryBox::showText(const QString& text)
{
    if (this->text() != text) setText(text);
    // Room the frame and the text's margins take in the entry.
    constexpr int kInnerMargins = 8;
    const QFont fitted =
        fittedFont(baseFont_, text, QSizeF(width() - kInnerMargins, height()), false);
    if (fitted != font()) setFont(fitted);
}

void EntryBox::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        EventArgs args;
        args.keyCode = kKeyEnter;
        events_.userEvent(control_, FormEvent::KeyDown, args);
        event->accept();
        return;
    }
    QLineEdit::keyPressEvent(event);
}

void EntryBox::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (clicks_.releaseClicks(*this, *event)) events_.userEvent(control_, FormEvent::Click);
}

void EntryBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    QLineEdit::mouseDoubleClickEvent(event);
    clicks_.doubleClicked();
    if (event->button() == Qt::LeftButton) events_.userEvent(control_, FormEvent::DblClick);
}

void EntryBox::paintEvent(QPaintEvent* event)
{
    if (isEnabled()) {
        QLineEdit::paintEvent(event);
        return;
    }
    QPainter p(this);
    const QPalette& pal = palette();
    p.fillRect(rect(), pal.color(QPalette::Disabled, QPalette::Window).darker(106));
    p.setPen(pal.color(QPalette::Disabled, QPalette::Text));
    constexpr int kTextInset = 3;
    p.drawText(rect().adjusted(kTextInset, 0, -kTextInset, 0),
               static_cast<int>(alignment() | Qt::AlignVCenter), text());
}

// --- ListChoice ------------------------------------------------------------

ListChoice::ListChoice(std::string control, ControlEvents& events, QWidget* parent)
    : QComboBox(parent), control_(std::move(control))
{
    connect(this, &QComboBox::activated, this,
            [this, &events](int index) { events.listChosen(control_, index); });
}

QRect ListChoice::textRect() const
{
    QStyleOptionComboBox opt;
    initStyleOption(&opt);
    return style()->subControlRect(QStyle::CC_ComboBox, &opt, QStyle::SC_ComboBoxEditField, this);
}

QFont ListChoice::shownFont() const
{
    return fittedFont(font(), currentText(), textRect().size(), false);
}

void ListChoice::showPopup()
{
    // Room for the longest item and the list's scroll bar.
    constexpr int kScrollRoom = 24;
    view()->setMinimumWidth(view()->sizeHintForColumn(0) + kScrollRoom);
    QComboBox::showPopup();
}

void ListChoice::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    QStyleOptionComboBox opt;
    initStyleOption(&opt);
    const QString text = opt.currentText;
    opt.currentText.clear();
    style()->drawComplexControl(QStyle::CC_ComboBox, &opt, &p, this);
    style()->drawControl(QStyle::CE_ComboBoxLabel, &opt, &p, this);
    p.setFont(shownFont());
    p.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    p.drawText(textRect(), static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), text);
}

// --- ChoiceButton ----------------------------------------------------------

ChoiceButton::ChoiceButton(std::string control, Style style, ControlEvents& events, QWidget* parent)
    : QAbstractButton(parent), style_(style)
{
    setAttribute(Qt::WA_Hover);
    connect(this, &QAbstractButton::clicked, this,
            [control = std::move(control), &events] { events.choiceClicked(control); });
}

void ChoiceButton::setOn(bool on)
{
    if (on_ == on) return;
    on_ = on;
    update();
}

QSize ChoiceButton::sizeHint() const
{
    return size();
}

bool ChoiceButton::hitButton(const QPoint& pos) const
{
    return rect().contains(pos);
}

QRect ChoiceButton::indicatorRect() const
{
    QStyleOptionButton opt;
    opt.initFrom(this);
    const bool option = style_ == Style::Option;
    const int w = style()->pixelMetric(
        option ? QStyle::PM_ExclusiveIndicatorWidth : QStyle::PM_IndicatorWidth, &opt, this);
    const int h = style()->pixelMetric(
        option ? QStyle::PM_ExclusiveIndicatorHeight : QStyle::PM_IndicatorHeight, &opt, this);
    return QRect(0, 0, w, h);
}

void ChoiceButton::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    const bool option = style_ == Style::Option;
    QStyleOptionButton opt;
    opt.initFrom(this);
    opt.state |= on_ ? QStyle::State_On : QStyle::State_Off;
    if (isDown()) opt.state |= QStyle::State_Sunken;
    const QRect indicator = indicatorRect();
    const int spacing = style()->pixelMetric(
        option ? QStyle::PM_RadioButtonLabelSpacing : QStyle::PM_CheckBoxLabelSpacing, &opt, this);
    const QRectF area(indicator.width() + spacing, 0, width() - indicator.width() - spacing,
                      height());
    const bool wrap = height() >= 2 * fontMetrics().height();
    const QFont font = fittedFont(this->font(), text(), area.size(), wrap);
    p.setFont(font);
    const QFontMetricsF m(font);
    const int flags = (wrap ? Qt::TextWordWrap : Qt::TextSingleLine) | Qt::AlignLeft;
    QRectF used = m.boundingRect(QRectF(0, 0, area.width(), 1e6), flags, text());
    used.moveTopLeft(QPointF(area.left(), (height() - used.height()) / 2));
    // The indicator stands level with the first line of the caption.
    const double firstLine = used.top() + m.height() / 2;
    opt.rect = indicator.translated(0, static_cast<int>(firstLine - indicator.height() / 2.0));
    style()->drawPrimitive(option ? QStyle::PE_IndicatorRadioButton : QStyle::PE_IndicatorCheckBox,
                           &opt, &p, this);
    p.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    p.drawText(used, flags, text());
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = used.toAlignedRect().adjusted(-1, 0, 1, 0);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &p, this);
    }
}

// --- TextLabel -------------------------------------------------------------

TextLabel::TextLabel(std::string control, ControlEvents& events, QWidget* parent)
    : QWidget(parent), control_(std::move(control)), events_(events)
{
    setFocusPolicy(Qt::NoFocus);
}

void TextLabel::setText(const QString& text)
{
    if (text == text_) return;
    text_ = text;
    fitValid_ = false;
    update();
}

void TextLabel::setAlignment(Qt::Alignment alignment)
{
    if (alignment == alignment_) return;
    alignment_ = alignment;
    update();
}

void TextLabel::setWrap(bool wrap)
{
    if (wrap == wrap_) return;
    wrap_ = wrap;
    fitValid_ = false;
    update();
}

void TextLabel::setColors(const QColor& text, const QColor& ground)
{
    if (text == textColor_ && ground == ground_) return;
    textColor_ = text;
    ground_ = ground;
    update();
}

void TextLabel::setBorder(bool border)
{
    if (border == border_) return;
    border_ = border;
    update();
}

void TextLabel::setHalo(const QColor& halo)
{
    halo_ = halo;
    update();
}

void TextLabel::setColumns(std::vector<int> lefts)
{
    columns_ = std::move(lefts);
    fitValid_ = false;
    update();
}

void TextLabel::paintColumns(QPainter& p, const QString& text) const
{
    static const QRegularExpression kGap(QStringLiteral("\\s{2,}"));
    const QStringList pieces = text.trimmed().split(kGap, Qt::SkipEmptyParts);
    const QRectF area = textArea();
    for (qsizetype k = 0; k < pieces.size(); ++k) {
        const auto column = static_cast<std::size_t>(
            std::min<qsizetype>(k, static_cast<qsizetype>(columns_.size()) - 1));
        const double left = area.left() + columns_[column];
        const double right =
            column + 1 < columns_.size() ? area.left() + columns_[column + 1] : area.right();
        p.drawText(QRectF(left, area.top(), right - left, area.height()),
                   Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, pieces[k]);
    }
}

void TextLabel::setMargin(int px)
{
    margin_ = px;
    fitValid_ = false;
    update();
}

QRectF TextLabel::textArea() const
{
    return QRectF(rect()).adjusted(margin_, margin_, -margin_, -margin_);
}

QFont TextLabel::shownFont() const
{
    if (!fitValid_) {
        // A table line's pieces have their columns: it keeps its font.
        fitted_ =
            columns_.empty() ? fittedFont(font(), shownText(), textArea().size(), wrap_) : font();
        fitValid_ = true;
    }
    return fitted_;
}

QRectF TextLabel::shownTextRect() const
{
    const QString shown = shownText();
    if (shown.isEmpty()) return {};
    const QFontMetricsF m(shownFont());
    return m.boundingRect(textArea(), static_cast<int>(alignment_) | textFlags(), shown);
}

int TextLabel::textFlags() const
{
    return wrap_ ? Qt::TextWordWrap : Qt::TextSingleLine;
}

QString TextLabel::shownText() const
{
    // Trailing blanks of a text stand for nothing on the screen; they only
    // push a right-aligned text off its edge.
    QString shown = text_;
    while (!wrap_ && shown.endsWith(QLatin1Char(' ')))
        shown.chop(1);
    return shown;
}

void TextLabel::resizeEvent(QResizeEvent* event)
{
    fitValid_ = false;
    QWidget::resizeEvent(event);
}

void TextLabel::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange) fitValid_ = false;
    QWidget::changeEvent(event);
}

void TextLabel::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    if (ground_.isValid()) {
        p.setRenderHint(QPainter::Antialiasing);
        p.setPen(border_ ? QPen(palette().color(QPalette::Mid), 1) : Qt::NoPen);
        p.setBrush(ground_);
        constexpr double kCorner = 3.0;
        p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), kCorner, kCorner);
    }
    const QString shown = shownText();
    if (shown.isEmpty()) return;
    QColor ink = textColor_.isValid() ? textColor_ : palette().color(QPalette::WindowText);
    if (!isEnabled()) ink = palette().color(QPalette::Disabled, QPalette::WindowText);
    if (columns_.empty()) {
        paintLabelText(p, textArea(), shown, shownFont(),
                       static_cast<int>(alignment_) | textFlags(), ink, halo_);
        return;
    }
    p.setFont(shownFont());
    p.setPen(ink);
    paintColumns(p, shown);
}

Qt::Alignment controlAlignment(const Control& c)
{
    constexpr int kTallText = 1000;
    const Qt::Alignment vertical =
        c.multiLine && c.height >= kTallText ? Qt::AlignTop : Qt::AlignVCenter;
    switch (c.alignment) {
    case 1:
        return Qt::AlignRight | vertical;
    case 2:
        return Qt::AlignHCenter | vertical;
    default:
        return Qt::AlignLeft | vertical;
    }
}

void paintLabelText(QPainter& p, const QRectF& area, const QString& text, const QFont& font,
                    int flags, const QColor& ink, const QColor& halo)
{
    p.setFont(font);
    if (halo.isValid()) {
        constexpr double kHaloPad = 2;
        const QRectF used = p.boundingRect(area, flags, text);
        p.fillRect(used.adjusted(-kHaloPad, 0, kHaloPad, 0), halo);
    }
    p.setPen(ink);
    p.drawText(area, flags, text);
}

void TextLabel::mouseReleaseEvent(QMouseEvent* event)
{
    if (clicks_.releaseClicks(*this, *event)) events_.userEvent(control_, FormEvent::Click);
}

void TextLabel::mouseDoubleClickEvent(QMouseEvent* event)
{
    clicks_.doubleClicked();
    if (event->button() == Qt::LeftButton) events_.userEvent(control_, FormEvent::DblClick);
}

// --- FrameBox and CommandButton --------------------------------------------

FrameBox::FrameBox(std::string control, ControlEvents& events, QWidget* parent)
    : QGroupBox(parent), control_(std::move(control)), events_(events)
{
    setFocusPolicy(Qt::NoFocus);
}

void FrameBox::mouseReleaseEvent(QMouseEvent* event)
{
    QGroupBox::mouseReleaseEvent(event);
    // A click on a frame is the frame's, not the window's behind it.
    event->accept();
    if (clicks_.releaseClicks(*this, *event)) events_.userEvent(control_, FormEvent::Click);
}

void FrameBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    clicks_.doubleClicked();
    if (event->button() == Qt::LeftButton) events_.userEvent(control_, FormEvent::DblClick);
}

CommandButton::CommandButton(std::string control, ControlEvents& events, QWidget* parent)
    : QPushButton(parent)
{
    connect(this, &QPushButton::clicked, this, [control = std::move(control), &events] {
        events.userEvent(control, FormEvent::Click);
    });
}

} // namespace qm
