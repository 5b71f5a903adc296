#include "shell/shell_style.h"

#include "shell/twips.h"

#include <QApplication>
#include <QFont>
#include <QPaintEngine>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include <cmath>

namespace qm {

namespace {

// The screen's places were laid out for an 8-point font.
constexpr double kScreenPoints = 8.0;

/// The platform's style with the parts that take room made smaller: the
/// screen's places are tight, and a list's arrow or an option's circle
/// shouldn't take the room of its text.
class CompactStyle : public QProxyStyle
{
  public:
    using QProxyStyle::QProxyStyle;

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override
    {
        switch (metric) {
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
            return scaled(kIndicator);
        case PM_RadioButtonLabelSpacing:
        case PM_CheckBoxLabelSpacing:
            return scaled(kIndicatorSpacing);
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl sub,
                         const QWidget* widget) const override
    {
        if (control == CC_ComboBox && (sub == SC_ComboBoxArrow || sub == SC_ComboBoxEditField)) {
            const QRect r = option->rect;
            const int arrow = scaled(kArrow);
            if (sub == SC_ComboBoxArrow)
                return QRect(r.right() - arrow, r.top(), arrow, r.height());
            return QRect(r.left() + 3, r.top() + 1, r.width() - arrow - 4, r.height() - 2);
        }
        return QProxyStyle::subControlRect(control, option, sub, widget);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override
    {
        // The platform style paints a list's box through a picture cache,
        // which paper would show blurred; on a printed page it is drawn as
        // lines.
        if (control == CC_ComboBox && isPrinting(painter)) {
            drawPrintedComboBox(option, painter, widget);
            return;
        }
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        // A button's face comes from the same picture cache: on paper it is
        // drawn as lines too.
        if (element == PE_PanelButtonCommand && isPrinting(painter)) {
            drawPrintedPanel(option->rect, option->palette, painter);
            return;
        }
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

  private:
    static bool isPrinting(const QPainter* painter)
    {
        return painter->paintEngine() && painter->paintEngine()->type() == QPaintEngine::Pdf;
    }

    static void drawPrintedPanel(const QRect& rect, const QPalette& palette, QPainter* painter)
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(palette.color(QPalette::Mid), 1));
        painter->setBrush(palette.color(QPalette::Button));
        painter->drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
        painter->restore();
    }

    void drawPrintedComboBox(const QStyleOptionComplex* option, QPainter* painter,
                             const QWidget* widget) const
    {
        drawPrintedPanel(option->rect, option->palette, painter);
        painter->save();
        const QRectF arrow = subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget);
        const QPointF c = arrow.center();
        constexpr double kHalf = 3.0;
        painter->setPen(Qt::NoPen);
        painter->setBrush(option->palette.color(QPalette::ButtonText));
        painter->drawPolygon(QPolygonF({QPointF(c.x() - kHalf, c.y() - kHalf / 2),
                                        QPointF(c.x() + kHalf, c.y() - kHalf / 2),
                                        QPointF(c.x(), c.y() + kHalf / 2)}));
        painter->restore();
    }

    /// The design screen is drawn at a scale; so are the parts of its widgets.
    static int scaled(int px) { return static_cast<int>(std::lround(scaledPx(px))); }
    static constexpr int kIndicator = 12;
    static constexpr int kIndicatorSpacing = 4;
    static constexpr int kArrow = 13;
};

QPalette lightPalette()
{
    QPalette p;
    p.setColor(QPalette::Window, QColor(0xee, 0xf0, 0xf3));
    p.setColor(QPalette::WindowText, QColor(0x1d, 0x23, 0x2b));
    p.setColor(QPalette::Base, Qt::white);
    p.setColor(QPalette::AlternateBase, QColor(0xf5, 0xf7, 0xfa));
    p.setColor(QPalette::Text, QColor(0x1d, 0x23, 0x2b));
    p.setColor(QPalette::Button, QColor(0xe4, 0xe7, 0xeb));
    p.setColor(QPalette::ButtonText, QColor(0x1d, 0x23, 0x2b));
    p.setColor(QPalette::Mid, QColor(0xc3, 0xc8, 0xcf));
    p.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xd6));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::ToolTipBase, QColor(0xff, 0xfd, 0xe8));
    p.setColor(QPalette::ToolTipText, QColor(0x1d, 0x23, 0x2b));
    const QColor disabled(0x8a, 0x92, 0x9c);
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, disabled);
    p.setColor(QPalette::Disabled, QPalette::Base, QColor(0xe9, 0xeb, 0xee));
    return p;
}

} // namespace

void applyShellStyle(QApplication& app)
{
    if (QStyle* fusion = QStyleFactory::create(QStringLiteral("Fusion")))
        app.setStyle(new CompactStyle(fusion));
    app.setPalette(lightPalette());
    // Frames as light rounded panels with their caption on the border.
    app.setStyleSheet(QStringLiteral(
        "QGroupBox { border: 1px solid palette(mid); border-radius: 4px; margin-top: 6px; }"
        "QGroupBox::title { subcontrol-origin: margin; left: 3px; padding: 0 1px; }"));
    QFont font = QApplication::font();
    font.setPointSizeF(kScreenPoints);
    app.setFont(font);
}

} // namespace qm
