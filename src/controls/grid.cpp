#include "controls/grid.h"

namespace controls {

namespace {
const QString kEmpty;
}

Grid::Grid(QString name, int maxCols, int maxRows) : Control(std::move(name), Kind::Grid)
{
    setTabStop(true);
    setMaxCols(maxCols);
    setMaxRows(maxRows);
}

void Grid::setMaxRows(int rows)
{
    rows = std::max(rows, 0);
    if (rows == rows_) return;
    rows_ = rows;
    cells_.resize(static_cast<size_t>(rows_) * static_cast<size_t>(cols_));
    rowHidden_.resize(static_cast<size_t>(rows_) + 1, 0);
    if (activeRow_ > rows_) activeRow_ = std::max(rows_, 1);
    if (redraw_) notify({Change::Rows});
}

void Grid::setMaxCols(int cols)
{
    cols = std::max(cols, 0);
    if (cols == cols_) return;
    // Keep the cells in place when the width changes.
    std::vector<QString> cells(static_cast<size_t>(rows_) * static_cast<size_t>(cols));
    for (int r = 1; r <= rows_; ++r)
        for (int c = 1; c <= std::min(cols, cols_); ++c)
            cells[static_cast<size_t>(r - 1) * cols + (c - 1)] = std::move(cells_[index(c, r)]);
    cells_ = std::move(cells);
    cols_ = cols;
    const auto n = static_cast<size_t>(cols_) + 1;
    colHidden_.resize(n, 0);
    colLocked_.resize(n, 0);
    colCheck_.resize(n, 0);
    colWidth_.resize(n, 8.0);
    if (redraw_) notify({Change::All});
}

const QString& Grid::text(int col, int row) const { return inside(col, row) ? cells_[index(col, row)] : kEmpty; }

void Grid::setText(int col, int row, const QString& value)
{
    if (!inside(col, row)) return;
    QString& cell = cells_[index(col, row)];
    if (cell == value) return;
    cell = value;
    cellChanged(col, row);
}

void Grid::setRowTexts(int row, int firstCol, QString* texts, int count)
{
    if (row < 1 || row > rows_) return;
    for (int i = 0; i < count; ++i) {
        const int col = firstCol + i;
        if (col >= 1 && col <= cols_) cells_[index(col, row)] = std::move(texts[i]);
    }
    if (redraw_) notify({Change::Row, row, 0});
}

void Grid::clearTexts(int firstCol)
{
    const int from = std::max(firstCol, 1);
    if (from > cols_) return;
    for (int row = 1; row <= rows_; ++row)
        for (int col = from; col <= cols_; ++col) cells_[index(col, row)] = QString();
    if (redraw_) notify({Change::All});
}

void Grid::setValue(int col, int row, int v)
{
    if (!inside(col, row)) return;
    const QString s = v ? QStringLiteral("1") : QStringLiteral("0");
    if (value(col, row) == (v ? 1 : 0) && !text(col, row).isEmpty()) return;
    const bool changed = value(col, row) != (v ? 1 : 0);
    cells_[index(col, row)] = s;
    cellChanged(col, row);
    if (changed && isCheckBoxColumn(col) && ButtonClicked) ButtonClicked(col, row, v ? 1 : 0);
}

void Grid::setCheckBoxColumn(int col, bool on)
{
    if (col >= 1 && col <= cols_) colCheck_[static_cast<size_t>(col)] = on;
}

bool Grid::isCheckBoxColumn(int col) const { return col >= 1 && col <= cols_ && colCheck_[static_cast<size_t>(col)]; }

bool Grid::rowHidden(int row) const { return row >= 1 && row <= rows_ && rowHidden_[static_cast<size_t>(row)]; }

void Grid::setRowHidden(int row, bool hidden)
{
    if (row < 1 || row > rows_ || bool(rowHidden_[static_cast<size_t>(row)]) == hidden) return;
    rowHidden_[static_cast<size_t>(row)] = hidden;
    if (redraw_) notify({Change::Row, row, 0});
}

bool Grid::colHidden(int col) const { return col >= 1 && col <= cols_ && colHidden_[static_cast<size_t>(col)]; }

void Grid::setColHidden(int col, bool hidden)
{
    if (col < 1 || col > cols_) return;
    colHidden_[static_cast<size_t>(col)] = hidden;
    if (redraw_) notify({Change::All});
}

double Grid::colWidth(int col) const { return (col >= 1 && col <= cols_) ? colWidth_[static_cast<size_t>(col)] : 0.0; }

void Grid::setColWidth(int col, double width)
{
    if (col < 1 || col > cols_) return;
    colWidth_[static_cast<size_t>(col)] = width;
    if (redraw_) notify({Change::All});
}

bool Grid::colLocked(int col) const { return col >= 1 && col <= cols_ && colLocked_[static_cast<size_t>(col)]; }

void Grid::setColLocked(int col, bool locked)
{
    if (col >= 1 && col <= cols_) colLocked_[static_cast<size_t>(col)] = locked;
}

Color Grid::backColor(int col, int row) const
{
    if (auto it = back_.constFind(key(col, row)); it != back_.cend()) return *it;
    if (auto it = back_.constFind(key(-1, row)); it != back_.cend()) return *it;
    if (auto it = back_.constFind(key(col, -1)); it != back_.cend()) return *it;
    return Colors::WindowBackground;
}

void Grid::setBackColor(int col, int row, Color c)
{
    back_.insert(key(col, row), c);
    if (redraw_) notify({Change::Cell, row, col});
}

Color Grid::foreColor(int col, int row) const
{
    if (auto it = fore_.constFind(key(col, row)); it != fore_.cend()) return *it;
    if (auto it = fore_.constFind(key(-1, row)); it != fore_.cend()) return *it;
    if (auto it = fore_.constFind(key(col, -1)); it != fore_.cend()) return *it;
    return Colors::WindowText;
}

void Grid::setForeColor(int col, int row, Color c)
{
    fore_.insert(key(col, row), c);
    if (redraw_) notify({Change::Cell, row, col});
}

void Grid::SetActiveCell(int col, int row)
{
    activeCol_ = col;
    activeRow_ = row;
    notify();
}

void Grid::setReDraw(bool on)
{
    if (redraw_ == on) return;
    redraw_ = on;
    if (on) notify({Change::All});
}

int Grid::nextVisibleRow(int row) const
{
    for (int r = std::max(row, 1); r <= rows_; ++r)
        if (!rowHidden_[static_cast<size_t>(r)]) return r;
    return 0;
}

void Grid::clickCell(int col, int row)
{
    SetActiveCell(col, row);
    if (Click) Click(col, row);
}

void Grid::dblClickCell(int col, int row)
{
    SetActiveCell(col, row);
    if (DblClick) DblClick(col, row);
}

void Grid::pressButton(int col, int row, bool on)
{
    SetActiveCell(col, row);
    setValue(col, row, on ? 1 : 0);
}

void Grid::cellChanged(int col, int row)
{
    if (redraw_) notify({Change::Cell, row, col});
}

void Grid::describe(QStringList& out) const
{
    int hidden = 0;
    for (int r = 1; r <= rows_; ++r) hidden += rowHidden_[static_cast<size_t>(r)] ? 1 : 0;
    out << QStringLiteral("rows=%1").arg(rows_) << QStringLiteral("hidden=%1").arg(hidden)
        << QStringLiteral("active=%1,%2").arg(activeCol_).arg(activeRow_);
    Control::describe(out);
}

QStringList Grid::describeRows() const
{
    QStringList lines;
    for (int r = 1; r <= rows_; ++r) {
        int last = cols_;
        while (last > 0 && cells_[index(last, r)].isEmpty()) --last;
        QStringList cells;
        for (int c = 1; c <= last; ++c) cells << escapeForTranscript(cells_[index(c, r)]);
        lines << QStringLiteral("row %1%2 %3")
                     .arg(r)
                     .arg(rowHidden(r) ? QStringLiteral(" hidden") : QString(), cells.join(u'|'));
    }
    return lines;
}

}  // namespace controls
