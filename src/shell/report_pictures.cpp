#include "shell/report_pictures.h"

#include "screen/quellmark_form.h"
#include "shell/chart_view.h"
#include "shell/control_widgets.h"
#include "shell/qt_platform.h"
#include "shell/schematic_view.h"
#include "shell/text_fit.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QPaintDevice>
#include <QPainter>

#include <algorithm>

namespace qm {

namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kPointsPerInch = 72;
/// The schematics stand this many times their size on the screen: the
/// values are easy to read and three sections share a page.
constexpr double kSchematicEnlargement = 1.7;
constexpr double kValuePoints = 8;
constexpr double kNamePoints = 7.5;
constexpr double kLegendPoints = 7.5;
/// The chart takes no more of the page's height than this.
constexpr double kChartMillimetres = 95;

const QColor kValueInk(0x10, 0x10, 0x10);
const QColor kWireInk(0x30, 0x30, 0x30);
const QColor kNameInk(0x4a, 0x5f, 0x7e);

QString trimmed(const std::string& s)
{
    return QString::fromStdString(s).trimmed();
}

QRectF boxOf(const Control& c)
{
    return QRectF(c.left, c.top, c.width, c.height);
}

/// A text of the given size, in points on paper, for a painter that counts
/// twips at `scale` device units each.
QFont fontAtScale(const QFont& base, double points, double scale, const QPaintDevice& device)
{
    QFont f = base;
    const double devicePixels = points * device.logicalDpiY() / kPointsPerInch;
    f.setPixelSize(std::max(1, static_cast<int>(std::lround(devicePixels / scale))));
    return f;
}

const Control* shownPicture(std::initializer_list<const Control*> pictures)
{
    for (const Control* c : pictures)
        if (c->visible) return c;
    return nullptr;
}

/// The row of the screen's section pictures that shows the section, by
/// the caption over it.
std::optional<std::size_t> sectionRow(const QuellmarkForm& f, const std::string& stage)
{
    const QString caption = QStringLiteral("Section ") + QString::fromStdString(stage);
    for (std::size_t i = 0; i < f.SecLabel.size(); ++i)
        if (f.SecLabel[i].visible && trimmed(f.SecLabel[i].text) == caption) return i;
    return std::nullopt;
}

/// The values of a stage's parts, on the value labels the screen shows
/// them on.
std::vector<PlacedText> placedValues(const QuellmarkForm& f, const std::string& stage,
                                     const Control& picture)
{
    std::vector<PlacedText> values;
    for (int j = 1; j <= f.sectionRows && j < static_cast<int>(f.catalogue.sectionParts.size());
         ++j) {
        const auto slot = static_cast<std::size_t>(j);
        if (f.catalogue.sectionLetters[slot] != stage) continue;
        for (const SchematicPart& part : f.catalogue.sectionParts[slot]) {
            const Control* label = f.find(part.label);
            if (!label || !label->visible) continue;
            values.push_back({boxOf(*label).translated(-picture.left, -picture.top),
                              QString::fromStdString(part.value), controlAlignment(*label),
                              kValueInk});
        }
    }
    return values;
}

} // namespace

std::optional<SectionPicture> sectionPicture(const QuellmarkForm& f, const std::string& stage)
{
    const Control* picture = nullptr;
    QString title;
    if (stage == "Real") {
        picture = shownPicture({&f.RealPole, &f.RealHP, &f.FDA1p, &f.FDARealHP});
        title = trimmed(f.RealPlabel.text);
    } else if (const auto i = sectionRow(f, stage)) {
        const std::size_t k = *i;
        picture = shownPicture({&f.MFBsch[k], &f.MFBschHP[k], &f.FDAsch[k], &f.FDAschHP[k],
                                &f.SK[k], &f.SKhp[k], &f.SKg1[k], &f.SKg1HP[k]});
        title = trimmed(f.SecLabel[k].text);
    }
    if (!picture) return std::nullopt;
    const auto kind = pictureOf(picture->base);
    if (!kind) return std::nullopt;
    return SectionPicture{title, sketchOf(*kind), QSizeF(picture->width, picture->height),
                          placedValues(f, stage, *picture)};
}

// --- SectionBlock ------------------------------------------------------------

SectionBlock::SectionBlock(const ReportStyle& style, SectionPicture picture, QString facts,
                           ReportTable parts)
    : style_(style), picture_(std::move(picture)), facts_(std::move(facts)),
      parts_(std::move(parts))
{
}

double SectionBlock::drawingScale(double width) const
{
    const double atScreenSize = style_.device->logicalDpiX() / kTwipsPerInch;
    double scale = atScreenSize * kSchematicEnlargement;
    // The drawing leaves the parts list at least 40 % of the width.
    constexpr double kDrawingShare = 0.6;
    for (int pass = 0; pass < 2; ++pass)
        scale = std::min(scale, kDrawingShare * width / drawingBounds(scale).width());
    return scale;
}

QFont SectionBlock::nameFont(double scale) const
{
    QFont f = fontAtScale(style_.body, kNamePoints, scale, *style_.device);
    f.setItalic(true);
    return f;
}

QFont SectionBlock::valueFont(const PlacedText& v, double scale) const
{
    QFont base = style_.body;
    base.setPointSizeF(kValuePoints);
    return fittedFont(base, v.text, v.box.size() * scale, false);
}

std::vector<QRectF> SectionBlock::valueRects(double scale) const
{
    std::vector<QRectF> rects;
    for (const PlacedText& v : picture_.values) {
        const QFontMetricsF m(valueFont(v, scale), style_.device);
        const QRectF area(QPointF(0, 0), v.box.size() * scale);
        const QRectF used = m.boundingRect(area, static_cast<int>(v.alignment), v.text);
        rects.emplace_back(v.box.topLeft() + used.topLeft() / scale, used.size() / scale);
    }
    return rects;
}

QRectF SectionBlock::drawingBounds(double scale) const
{
    // A little room round the picture for the width of its lines.
    const double margin = style_.millimetre / scale;
    QRectF bounds = QRectF(QPointF(0, 0), picture_.size).adjusted(-margin, -margin, margin, margin);
    for (const QRectF& r : valueRects(scale))
        bounds |= r;
    for (const QRectF& r : nameRects(scale))
        bounds |= r;
    return bounds;
}

std::vector<QRectF> SectionBlock::nameRects(double scale) const
{
    const QFontMetricsF names(nameFont(scale));
    std::vector<QRectF> rects;
    for (const Part& part : picture_.sketch.parts)
        if (part.named) rects.push_back(nameRect(part, names));
    return rects;
}

double SectionBlock::listWidth(double width) const
{
    const double scale = drawingScale(width);
    return TableLayout(style_, parts_, width - drawingBounds(scale).width() * scale - style_.gap)
        .width();
}

double SectionBlock::headingHeight(double width) const
{
    return style_.textHeight(style_.bold, picture_.title + QStringLiteral("   ") + facts_, width) +
           2 * style_.millimetre;
}

double SectionBlock::height(double width) const
{
    const double scale = drawingScale(width);
    const QRectF bounds = drawingBounds(scale);
    const double listWidth = width - bounds.width() * scale - style_.gap;
    const TableLayout list(style_, parts_, listWidth);
    double listHeight = list.headHeight();
    for (std::size_t r = 0; r < parts_.rows.size(); ++r)
        listHeight += list.rowHeight(r);
    return headingHeight(width) + std::max(bounds.height() * scale, listHeight);
}

void SectionBlock::paintHeading(QPainter& p, const QRectF& box) const
{
    p.setPen(style_.ink);
    p.setFont(style_.bold);
    p.drawText(box, Qt::AlignLeft | Qt::AlignTop, picture_.title);
    p.setFont(style_.body);
    p.setPen(style_.quiet);
    const double factsLeft = style_.textWidth(style_.bold, picture_.title + QStringLiteral("   "));
    p.drawText(box.adjusted(factsLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
               facts_);
}

void SectionBlock::paint(QPainter& p, const QRectF& box) const
{
    paintHeading(p, box);
    const double width = box.width();
    const double scale = drawingScale(width);
    const QRectF bounds = drawingBounds(scale);
    const QPointF origin(box.left(), box.top() + headingHeight(width));
    p.save();
    p.translate(origin);
    p.scale(scale, scale);
    p.translate(-bounds.topLeft());
    paintSketch(p, picture_.sketch, kWireInk, kNameInk, nameFont(scale));
    p.restore();
    // The values are set at the report's size in the boxes of the screen's
    // labels, grown with the drawing.
    for (const PlacedText& v : picture_.values) {
        const QRectF area(origin + (v.box.topLeft() - bounds.topLeft()) * scale,
                          v.box.size() * scale);
        paintLabelText(p, area, v.text, valueFont(v, scale), static_cast<int>(v.alignment), v.ink,
                       Qt::white);
    }
    const double drawingWidth = bounds.width() * scale;
    const TableLayout list(style_, parts_, width - drawingWidth - style_.gap);
    list.paint(p, QPointF(box.left() + drawingWidth + style_.gap, origin.y()), 0,
               parts_.rows.size());
}

// --- ChartBlock --------------------------------------------------------------

ChartBlock::ChartBlock(const ReportStyle& style, const QuellmarkForm& f, const LineSurface& surface)
    : style_(style), form_(f), surface_(surface), graph_(boxOf(f.Graph))
{
    const QPalette palette = QApplication::palette();
    for (const Control* c : f.all()) {
        if (c->base != "Ampl" && c->base != "GroupDelay" && c->base != "Gfreq") continue;
        if (!c->visible || trimmed(c->text).isEmpty()) continue;
        legends_.push_back(
            {boxOf(*c), trimmed(c->text), controlAlignment(*c), qtColor(c->foreColor, palette)});
    }
}

QRectF ChartBlock::bounds() const
{
    QRectF b = graph_;
    for (const PlacedText& t : legends_)
        b |= t.box;
    return b;
}

double ChartBlock::scale(double width) const
{
    const QRectF b = bounds();
    return std::min(width / b.width(), kChartMillimetres * style_.millimetre / b.height());
}

QString ChartBlock::caption() const
{
    QString text = QStringLiteral("Gain in dB on the left scale; phase and group delay on the "
                                  "right, each scale in the colour of its line.");
    if (form_.Cursor.visible)
        text += QStringLiteral(" The vertical line marks the response frequency.");
    return text;
}

double ChartBlock::height(double width) const
{
    return bounds().height() * scale(width) + style_.millimetre +
           style_.textHeight(style_.small, caption(), width);
}

void ChartBlock::paint(QPainter& p, const QRectF& box) const
{
    const double k = scale(box.width());
    const QRectF b = bounds();
    // Centred in the width it is given.
    const QPointF origin(box.left() + (box.width() - b.width() * k) / 2, box.top());
    const QPalette palette = QApplication::palette();
    p.save();
    p.translate(origin);
    p.scale(k, k);
    p.translate(-b.topLeft());
    p.fillRect(graph_, qtColor(form_.Graph.backColor, palette));
    // Lines that leave the chart end at its edge, as on the screen.
    p.setClipRect(graph_, Qt::IntersectClip);
    p.translate(graph_.topLeft());
    paintChartLines(p, surface_, form_.Cursor, palette);
    p.restore();
    QFont legend = style_.body;
    legend.setPointSizeF(kLegendPoints);
    for (const PlacedText& t : legends_) {
        const QRectF area(origin + (t.box.topLeft() - b.topLeft()) * k, t.box.size() * k);
        paintLabelText(p, area, t.text, fittedFont(legend, t.text, area.size(), false),
                       static_cast<int>(t.alignment), t.ink);
    }
    p.setFont(style_.small);
    p.setPen(style_.quiet);
    const QRectF captionArea(box.left(), origin.y() + b.height() * k + style_.millimetre,
                             box.width(), box.height());
    p.drawText(captionArea, Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, caption());
}

} // namespace qm
