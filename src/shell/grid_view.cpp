#include "shell/grid_view.h"

#include "shell/chart_view.h"
#include "shell/twips.h"

#include <QHeaderView>
#include <QSignalBlocker>

namespace qm {

namespace {

Qt::Alignment cellAlignment(int alignment)
{
    switch (alignment) {
    case 1:
        return Qt::AlignRight | Qt::AlignVCenter;
    case 2:
        return Qt::AlignHCenter | Qt::AlignVCenter;
    default:
        return Qt::AlignLeft | Qt::AlignVCenter;
    }
}

} // namespace

GridView::GridView(std::string control, GridModel& model, ControlEvents& events, QWidget* parent)
    : QTableWidget(parent), control_(std::move(control)), model_(model), events_(events)
{
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    horizontalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, [this](int column) {
        EventArgs args;
        args.column = column;
        events_.userEvent(control_, FormEvent::HeadClick, args);
    });
    connect(this, &QTableWidget::currentCellChanged, this,
            [this](int row, int column, int, int) { cellMoved(row, column); });
    connect(this, &QTableWidget::cellDoubleClicked, this, [this](int row, int column) {
        cellMoved(row, column);
        if (!model_.allowUpdate) events_.userEvent(control_, FormEvent::DblClick);
    });
    connect(this, &QTableWidget::cellChanged, this,
            [this](int row, int column) { cellEdited(row, column); });
}

void GridView::cellMoved(int row, int column)
{
    if (syncing_ || row < 0 || column < 0) return;
    if (row == model_.row && column == model_.col) return;
    model_.row = row;
    model_.col = column;
    events_.userEvent(control_, FormEvent::RowColChange);
}

void GridView::cellEdited(int row, int column)
{
    if (syncing_ || row < 0 || row >= model_.rowCount()) return;
    auto& cells = model_.rows[static_cast<std::size_t>(row)];
    if (column < 0 || column >= static_cast<int>(cells.size())) return;
    cells[static_cast<std::size_t>(column)] = item(row, column)->text().toStdString();
}

void GridView::syncFromModel()
{
    syncing_ = true;
    const QSignalBlocker block(this);
    setColumnCount(static_cast<int>(model_.columns.size()));
    setRowCount(model_.rowCount());
    for (int k = 0; k < columnCount(); ++k) {
        const GridColumn& c = model_.columns[static_cast<std::size_t>(k)];
        setHorizontalHeaderItem(k, new QTableWidgetItem(screenText(c.caption).replace('\r', '\n')));
        if (c.width > 0) setColumnWidth(k, twipsToPxRounded(c.width));
    }
    const auto flags = model_.allowUpdate
                           ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable
                           : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    for (int r = 0; r < rowCount(); ++r) {
        const auto& cells = model_.rows[static_cast<std::size_t>(r)];
        const auto rr = static_cast<std::size_t>(r);
        for (int k = 0; k < columnCount(); ++k) {
            const auto kk = static_cast<std::size_t>(k);
            auto* it = new QTableWidgetItem(
                QString::fromStdString(kk < cells.size() ? cells[kk] : std::string()));
            it->setFlags(flags);
            const int alignment = model_.columns[kk].alignment;
            it->setTextAlignment(cellAlignment(alignment < 0 ? 1 : alignment));
            if (rr < model_.rowColors.size() && model_.rowColors[rr] != kWindowColor)
                it->setBackground(qtColor(model_.rowColors[rr], palette()));
            if (rr < model_.rowTips.size())
                it->setToolTip(QString::fromStdString(model_.rowTips[rr]));
            setItem(r, k, it);
        }
    }
    if (model_.row < rowCount() && model_.col < columnCount())
        setCurrentCell(model_.row, model_.col);
    syncing_ = false;
}

} // namespace qm
