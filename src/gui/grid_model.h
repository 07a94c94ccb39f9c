#pragma once
// A Qt table model over a grid control: it shows chosen columns of the rows that are
// not hidden, reads cells straight from the grid (nothing is copied), and hands the
// operator's ticks back to the grid's own event.

#include "controls/grid.h"

#include <QAbstractTableModel>
#include <optional>
#include <vector>

namespace gui {

class QtPlatform;

class GridModel : public QAbstractTableModel {
public:
    struct Column {
        int col;  // the grid's column
        QString title;
    };

    GridModel(controls::Grid& grid, std::vector<Column> columns, QtPlatform& platform, QObject* parent = nullptr);
    ~GridModel() override;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

    struct Cell {
        int col;
        int row;
    };
    // The grid's cell under a view index, or nothing for an index this model no longer
    // holds (a change of the rows since the view made it).
    std::optional<Cell> cellAt(const QModelIndex& index) const;

    // The grid's row and column of a view index, and back.
    int gridRow(int viewRow) const { return rows_.at(static_cast<size_t>(viewRow)); }
    int gridCol(int viewCol) const { return columns_.at(static_cast<size_t>(viewCol)).col; }
    int viewRow(int gridRow) const;

private:
    void rebuildRows();
    void onChange(const controls::Change& change);

    controls::Grid& grid_;
    std::vector<Column> columns_;
    QtPlatform& platform_;
    std::vector<int> rows_;  // grid rows shown, in order
    int observer_ = 0;
};

}  // namespace gui
