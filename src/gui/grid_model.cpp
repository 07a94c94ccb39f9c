#include "gui/grid_model.h"

#include "gui/colors.h"
#include "gui/qt_platform.h"

#include <algorithm>

namespace gui {

GridModel::GridModel(controls::Grid& grid, std::vector<Column> columns, QtPlatform& platform, QObject* parent)
        : QAbstractTableModel(parent), grid_(grid), columns_(std::move(columns)), platform_(platform)
{
    rebuildRows();
    observer_ = grid_.observe([this](const controls::Change& c) { onChange(c); });
}

GridModel::~GridModel() { grid_.unobserve(observer_); }

void GridModel::rebuildRows()
{
    rows_.clear();
    rows_.reserve(static_cast<size_t>(grid_.MaxRows()));
    for (int r = 1; r <= grid_.MaxRows(); ++r)
        if (!grid_.rowHidden(r)) rows_.push_back(r);
}

int GridModel::viewRow(int gridRow) const
{
    const auto it = std::lower_bound(rows_.begin(), rows_.end(), gridRow);
    return (it != rows_.end() && *it == gridRow) ? static_cast<int>(it - rows_.begin()) : -1;
}

std::optional<GridModel::Cell> GridModel::cellAt(const QModelIndex& index) const
{
    if (!index.isValid() || index.model() != this || index.row() >= rowCount() || index.column() >= columnCount())
        return std::nullopt;
    return Cell{gridCol(index.column()), gridRow(index.row())};
}

void GridModel::onChange(const controls::Change& change)
{
    using controls::Change;
    if (change.what == Change::Cell) {
        const int vr = viewRow(change.row);
        if (vr < 0) return;
        for (size_t c = 0; c < columns_.size(); ++c)
            if (columns_[c].col == change.col || change.col == -1) {
                const QModelIndex i = index(vr, static_cast<int>(c));
                Q_EMIT dataChanged(i, i);
            }
        return;
    }
    if (change.what == Change::State) return;
    beginResetModel();
    rebuildRows();
    endResetModel();
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) return {};
    const int row = gridRow(index.row());
    const int col = gridCol(index.column());
    const bool check = grid_.isCheckBoxColumn(col);
    switch (role) {
    case Qt::DisplayRole:
        return check ? QVariant() : QVariant(grid_.text(col, row));
    case Qt::CheckStateRole:
        return check ? QVariant(grid_.value(col, row) ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::BackgroundRole:
        return toQColor(grid_.backColor(col, row));
    case Qt::ForegroundRole:
        return toQColor(grid_.foreColor(col, row));
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Horizontal) return columns_.at(static_cast<size_t>(section)).title;
    return gridRow(section);
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const int col = gridCol(index.column());
    if (grid_.isCheckBoxColumn(col) && !grid_.colLocked(col)) f |= Qt::ItemIsUserCheckable;
    return f;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid()) return false;
    const int row = gridRow(index.row());
    const int col = gridCol(index.column());
    const bool on = value.toInt() == Qt::Checked;
    platform_.dispatch([&] { grid_.pressButton(col, row, on); });
    return true;
}

}  // namespace gui
