#pragma once
// The spreadsheet grid (fpSpread): rows and columns from 1, cells of text, check box
// columns whose change fires ButtonClicked, hidden rows and columns, locked columns,
// cell colours, the active cell, and ReDraw, which holds back change notices while a
// fill writes many cells.

#include "controls/control.h"

#include <QHash>

namespace controls {

class Grid : public Control {
public:
    explicit Grid(QString name, int maxCols = 0, int maxRows = 0);

    int MaxRows() const { return rows_; }
    void setMaxRows(int rows);
    int MaxCols() const { return cols_; }
    void setMaxCols(int cols);

    // Cell text by column and row, as the grid's own calls take them. Outside the grid
    // a read gives empty text and a write is ignored.
    const QString& text(int col, int row) const;
    void setText(int col, int row, const QString& value);
    // Writes count cells of a row from firstCol on, taking the caller's texts over
    // (their data is shared, never copied, and the caller's are left empty), without
    // comparing: the bulk write of a fill. Cells outside the grid are skipped; with
    // ReDraw on, observers hear of the row.
    void setRowTexts(int row, int firstCol, QString* texts, int count);
    // Empties every cell from firstCol on, in every row; the rows, the cells before
    // firstCol (the ticks), the colours and the hidden rows stay.
    void clearTexts(int firstCol);
    // A check box cell's value: 1 ticked, 0 not.
    int value(int col, int row) const { return text(col, row) == QLatin1String("1") ? 1 : 0; }
    // Setting a check box cell by code fires ButtonClicked when the value changes.
    void setValue(int col, int row, int v);

    void setCheckBoxColumn(int col, bool on = true);
    bool isCheckBoxColumn(int col) const;

    bool rowHidden(int row) const;
    void setRowHidden(int row, bool hidden);
    bool colHidden(int col) const;
    void setColHidden(int col, bool hidden);
    double colWidth(int col) const;
    void setColWidth(int col, double width);
    bool colLocked(int col) const;
    void setColLocked(int col, bool locked);

    // Colours of one cell; col or row -1 stands for the whole row or column.
    Color backColor(int col, int row) const;
    void setBackColor(int col, int row, Color c);
    Color foreColor(int col, int row) const;
    void setForeColor(int col, int row, Color c);

    int ActiveRow() const { return activeRow_; }
    int ActiveCol() const { return activeCol_; }
    void SetActiveCell(int col, int row);

    bool ReDraw() const { return redraw_; }
    // Switching ReDraw back on tells observers that everything may have changed.
    void setReDraw(bool on);

    // First row at or after row that is not hidden, 0 if none.
    int nextVisibleRow(int row) const;

    // The operator's acts.
    void clickCell(int col, int row);
    void dblClickCell(int col, int row);
    void pressButton(int col, int row, bool on);

    std::function<void(int col, int row, int buttonDown)> ButtonClicked;
    std::function<void(int col, int row)> Click;
    std::function<void(int col, int row)> DblClick;

    void describe(QStringList& out) const override;
    // One line per row for the scenario runner: "row N [hidden] cell|cell|...".
    QStringList describeRows() const;

private:
    bool inside(int col, int row) const { return col >= 1 && col <= cols_ && row >= 1 && row <= rows_; }
    size_t index(int col, int row) const
    {
        return static_cast<size_t>(row - 1) * static_cast<size_t>(cols_) + static_cast<size_t>(col - 1);
    }
    void cellChanged(int col, int row);
    static quint64 key(int col, int row) { return (quint64(quint32(row)) << 32) | quint32(col); }

    int cols_ = 0;
    int rows_ = 0;
    std::vector<QString> cells_;
    std::vector<char> rowHidden_;
    std::vector<char> colHidden_;
    std::vector<char> colLocked_;
    std::vector<char> colCheck_;
    std::vector<double> colWidth_;
    QHash<quint64, Color> back_;
    QHash<quint64, Color> fore_;
    int activeRow_ = 1;
    int activeCol_ = 1;
    bool redraw_ = true;
};

}  // namespace controls
