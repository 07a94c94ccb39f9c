// The start cell pictures of the three sheets, and the lines of the print-order list
// lstCheck: a click shows a line's row, a double click takes the line off.

#include "seal/seal_screen.h"

#include "app/messages.h"

namespace seal {

using namespace controls;

namespace {

constexpr int kTickCol = 1;
constexpr int kNumberCol = 2;

bool insideGrid(const Grid& g, int col, int row)
{
    return col >= 1 && col <= g.MaxCols() && row >= 1 && row <= g.MaxRows();
}

// The picture's mark: every cell white, then the clicked one black. A click beside
// the cells leaves them all white.
void markCell(Grid& g, int col, int row)
{
    for (int r = 1; r <= g.MaxRows(); ++r)
        for (int c = 1; c <= g.MaxCols(); ++c) g.setBackColor(c, r, Colors::White);
    if (insideGrid(g, col, row)) g.setBackColor(col, row, Colors::Black);
}

// The first row whose number cell holds text, 0 if none.
int findNumberRow(const Grid& g, const QString& text)
{
    for (int row = 1; row <= g.MaxRows(); ++row)
        if (g.text(kNumberCol, row) == text) return row;
    return 0;
}

const QString kStartCellFailed = QStringLiteral("「開始印字位置」選択時にエラーが発生しました。");
// The 30-cell picture shares the 2x6 picture's sentence, "（2x6）" and all.
const QString kStartCellFailed2x6 = QStringLiteral("（2x6）「開始印字位置」選択時にエラーが発生しました。");

}  // namespace

void frmPrintシール::fpSpread01_Click(int col, int row)
{
    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(kStartCellFailed));
    h([&] { markCell(fpSpread01, col, row); });
    // Each cell has its number; a click beside them keeps the one chosen before.
    h([&] {
        if (insideGrid(fpSpread01, col, row)) job.nStartPos = static_cast<short>((row - 1) * 2 + col);
    });
}

void frmPrintシール::fpSpread_2x6_Click(int col, int row)
{
    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(kStartCellFailed2x6));
    h([&] { markCell(fpSpread_2x6, col, row); });
    h([&] {
        if (insideGrid(fpSpread_2x6, col, row)) job.nStartPos = static_cast<short>((row - 1) * 2 + col);
    });
}

void frmPrintシール::fpSpread_3x10_Click(int col, int row)
{
    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(kStartCellFailed2x6));
    h([&] { markCell(fpSpread_3x10, col, row); });
    // This picture counts from its active cell; a click beside the cells keeps the
    // number chosen before.
    h([&] {
        if (insideGrid(fpSpread_3x10, col, row)) job.nStartPos = nStartPosOf(fpSpread_3x10);
    });
}

void frmPrintシール::lstCheck_Click()
{
    const int index = lstCheck.ListIndex();
    if (index < 0) return;
    // A look-up only: the row of the line becomes the active one.
    const int row = findNumberRow(fpSpread02, QString::number(lstCheck.ItemData(index)));
    if (row > 0) fpSpread02.SetActiveCell(kTickCol, row);
}

void frmPrintシール::lstCheck_DblClick()
{
    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(QStringLiteral("エラーが発生しました。")));
    h([&] {
        const int index = lstCheck.ListIndex();
        if (index < 0) return;
        const qint32 number = lstCheck.ItemData(index);
        // Insurers are looked up on column 2 here too: a number written with leading
        // zeros finds no row, and its line simply goes.
        const int row = findNumberRow(fpSpread02, QString::number(number));
        const bool doctor = job.nMst == static_cast<short>(AddresseeKind::Doctor);
        if (doctor && index < job.asPickedIDs.size()) job.asPickedIDs.removeAt(index);
        if (row == 0) {
            lstCheck.RemoveItem(index);
            return;
        }
        bool again = false;
        if (doctor) {
            for (int i = 0; i < lstCheck.ListCount() && !again; ++i)
                again = i != index && lstCheck.ItemData(i) == number;
        }
        // A doctor on the list for several patients keeps his tick until his last line.
        if (again)
            lstCheck.RemoveItem(index);
        else
            fpSpread02.setValue(kTickCol, row, 0);
        fpSpread02.SetActiveCell(kTickCol, row);
    });
}

}  // namespace seal
