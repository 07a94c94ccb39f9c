// The target list fpSpread02 and the print-order list lstCheck: the two order modes,
// the commands for all rows, a single tick, and adding by number.

#include "seal/seal_screen.h"

#include "app/messages.h"
#include "base/conversions.h"

namespace seal {

using namespace controls;

namespace {

constexpr int kTickCol = 1;
constexpr int kCountCol = 30;
const QString kOrderGap = QStringLiteral("     ");

}  // namespace

void frmPrintシール::chkCheck_Click()
{
    app::Handler h(app::HandlerKind::Resume,
                   app::Report::patternA(QStringLiteral("チェック順で印刷する押下時にエラーが発生しました。")));
    if (chkCheck.value() == 1) {
        h([&] { lstCheck.Clear(); });
        h([&] { lstCheck.setBackColor(Colors::WindowBackground); });
        h([&] {
            for (int row = 1; row <= fpSpread02.MaxRows(); ++row) fpSpread02.setValue(kTickCol, row, 0);
        });
        h([&] { btnAllKai[1].setEnabled(true); });
        h([&] { job.bCheckOrder = kTrue; });
    } else {
        h([&] { job.bCheckOrder = kFalse; });
        h([&] { lstCheck.Clear(); });
        h([&] {
            if (chkEnter.value() != 1) {
                lstCheck.setBackColor(Colors::ScrollBars);
                btnAllKai[1].setEnabled(false);
            }
        });
        h([&] {
            for (int row = 1; row <= fpSpread02.MaxRows(); ++row) fpSpread02.setValue(kTickCol, row, 0);
        });
    }
}

void frmPrintシール::chkEnter_Click()
{
    // Ticking leaves the list's colour and btnAllKai(1) as they were, on purpose.
    if (chkEnter.value() == 1) {
        lblEnter.setVisible(true);
        job.bEnterAdd = kTrue;
        return;
    }
    job.bEnterAdd = kFalse;
    lblEnter.setVisible(false);
    if (chkCheck.value() != 1) {
        lstCheck.setBackColor(Colors::ScrollBars);
        btnAllKai[1].setEnabled(false);
        lstCheck.Clear();
    }
}

void frmPrintシール::btnAllSel_Click()
{
    app::Handler h(app::HandlerKind::Resume,
                   app::Report::patternA(QStringLiteral("全選択ボタン押下時にエラーが発生しました。")),
                   {.hourglass = true});
    // A list already begun keeps its order; the new ticks join its end.
    h([&] {
        if (lstCheck.ListCount() == 0) lstCheck.Clear();
    });
    h([&] {
        const bool served = chkJisseki.value() == 1;
        for (int row = 1; row <= fpSpread02.MaxRows(); ++row) {
            if (fpSpread02.rowHidden(row) || fpSpread02.value(kTickCol, row) != 0) continue;
            if (served && !(base::Val(fpSpread02.text(kCountCol, row)) > 0)) continue;
            fpSpread02.setValue(kTickCol, row, 1);
        }
    });
}

void frmPrintシール::btnAllKai_Click(int index)
{
    app::Handler h(app::HandlerKind::Resume,
                   app::Report::patternA(QStringLiteral("全解除ボタン押下時にエラーが発生しました。")),
                   {.hourglass = true});
    h([&] {
        for (int row = 1; row <= fpSpread02.MaxRows(); ++row) {
            if (fpSpread02.value(kTickCol, row) == 0) continue;
            // "全解除" leaves the hidden rows ticked; "リストクリア" clears them all.
            if (index == 0 && fpSpread02.rowHidden(row)) continue;
            fpSpread02.setValue(kTickCol, row, 0);
        }
    });
    if (index == 1) h([&] { lstCheck.Clear(); });
}

void frmPrintシール::clearTicks()
{
    lstCheck.Clear();
    fpSpread02.setReDraw(false);
    // One block operation on the tick column: no tick event per row.
    for (int row = 1; row <= fpSpread02.MaxRows(); ++row) fpSpread02.setText(kTickCol, row, QStringLiteral("0"));
    fpSpread02.setReDraw(true);
}

void frmPrintシール::fpSpread02_ButtonClicked(int col, int row, int buttonDown)
{
    if (job.bFilling == 1 || (job.bCheckOrder == kFalse && job.bEnterAdd == kFalse)) return;
    app::Handler h(app::HandlerKind::Resume,
                   app::Report::patternA(QStringLiteral("fpSpread02_ButtonClicked()エラー。")));
    const bool hokenja = job.nMst == static_cast<short>(AddresseeKind::Hokenja);
    QString name;
    QString number;
    bool removed = false;
    bool added = false;
    h([&] { fpSpread02.setReDraw(false); });
    h([&] {
        // The name up to and including its last blank: the honorific is cut off.
        const QString cell = fpSpread02.text(4, row);
        name = cell.left(cell.lastIndexOf(u' ') + 1);
    });
    h([&] { number = fpSpread02.text(hokenja ? 3 : 2, row); });
    h([&] {
        for (int i = 0; i < lstCheck.ListCount(); ++i) {
            const bool same =
                hokenja ? QString::number(lstCheck.ItemData(i)) == number : lstCheck.ItemData(i) == base::Val(number);
            if (same) {
                lstCheck.RemoveItem(i);
                removed = true;
                break;
            }
        }
    });
    h([&] {
        if (!removed && buttonDown != 0) {
            lstCheck.AddItem(number + kOrderGap + name, base::CLng(number));
            added = true;
        }
    });
    h([&] {
        if (added && job.nMst == static_cast<short>(AddresseeKind::Doctor) && job.bPicked == kFalse) {
            while (job.asPickedIDs.size() < lstCheck.ListCount()) job.asPickedIDs.append(QString());
            job.asPickedIDs.resize(lstCheck.ListCount());
            job.asPickedIDs.last() = QString();
        }
    });
    // Insurers leave redraw off until the next fill, as the program always has.
    h([&] {
        if (!hokenja) fpSpread02.setReDraw(true);
    });
}

void frmPrintシール::Add_Enter(QString& sID)
{
    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(QStringLiteral("Add_Enter()でエラー。")));
    h([&] {
        const int col = job.nMst == static_cast<short>(AddresseeKind::Hokenja) ? 3 : 2;
        int found = 0;
        for (int row = 1; row <= fpSpread02.MaxRows() && found == 0; ++row)
            if (fpSpread02.text(col, row) == sID) found = row;
        if (found == 0) return;
        if (fpSpread02.value(kTickCol, found) == 0) {
            fpSpread02.setValue(kTickCol, found, 1);
            fpSpread02.SetActiveCell(kTickCol, found);
            return;
        }
        // Already ticked: the line goes, the tick stays.
        for (int i = 0; i < lstCheck.ListCount(); ++i) {
            if (QString::number(lstCheck.ItemData(i)) != sID) continue;
            if (job.nMst == static_cast<short>(AddresseeKind::Doctor)) {
                job.asPickedIDs.resize(lstCheck.ListCount());
                if (!job.asPickedIDs.isEmpty()) job.asPickedIDs.last() = QString();
            }
            lstCheck.RemoveItem(i);
            break;
        }
    });
}

void frmPrintシール::addChk_forSPSeat()
{
    app::Handler h(app::HandlerKind::Stop, app::Report::patternB(QStringLiteral("addChk_forSPSeat")));
    h([&] {
        if (fpSpread02.MaxRows() == 0) {
            h.stop();
            return;
        }
        const int row = fpSpread02.ActiveRow();
        const int col = fpSpread02.ActiveCol();
        fpSpread02.SetActiveCell(col, row);
        if (fpSpread02.value(kTickCol, row) == 0) fpSpread02.setValue(kTickCol, row, 1);
        int next = -1;
        getNextRow(row, next);
        if (next < 0) return;
        fpSpread02.SetActiveCell(col, next);
    });
}

void frmPrintシール::getNextRow(int row, int& nextRow)
{
    app::Handler h(app::HandlerKind::Stop, app::Report::patternB(QStringLiteral("getNextRow")));
    h([&] {
        nextRow = -1;
        for (int r = row + 1; r <= fpSpread02.MaxRows(); ++r) {
            if (!fpSpread02.rowHidden(r)) {
                nextRow = r;
                return;
            }
        }
    });
}

}  // namespace seal
