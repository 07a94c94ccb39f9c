// The seal screen's main choices: the addressee kind, the honorific, the print mode,
// the sheet and envelope, the collection filter and the month, and the setting menus.

#include "seal/seal_screen.h"

#include "app/messages.h"
#include "base/conversions.h"

namespace seal {

using namespace controls;

void frmPrintシール::optMst_Click(short K)
{
    app::Handler h(app::HandlerKind::Resume,
                   app::Report::patternA(QStringLiteral("「種類」選択時にエラーが発生しました。")),
                   {.hourglass = true});
    h([&] {
        fpSpread02.setReDraw(false);
        for (int row = 1; row <= fpSpread02.MaxRows(); ++row) fpSpread02.setValue(1, row, 0);
        fpSpread02.setReDraw(true);
    });
    h([&] {
        if (K == 1) job.asPickedIDs = QStringList{QString()};
    });
    h([&] { applyKindControls(K); });
    h([&] {
        fraAddHokenja.setVisible(K == 2);
        fraAddKeamane.setVisible(K == 4);
        fraAdd.setVisible(K != 2 && K != 4);
    });
    h([&] {
        job.nMst = K;
        job.bMstChanged = 1;
    });
    h([&] { getMstData_SEAL(); });
    h([&] {
        const bool consent = K == 1;
        const bool progress = K == 1 || K == 4 || K == 6 || K == 8;
        btnDouishoList.setEnabled(consent);
        mnDouiSet.setEnabled(consent);
        btnSejutsuKeika.setEnabled(progress);
    });
    h([&] { cmbKaisyu.setEnabled(optMst[0].value()); });
    h([&] { vDispData(); });
}

void frmPrintシール::applyKindControls(short K)
{
    const bool patients = K == 0;
    fraAge.setEnabled(patients);
    fraBirth.setEnabled(patients);
    for (auto& n : numtAge) n.setEnabled(patients);
    numBirth.setEnabled(patients);
    numtAge[0].setText(patients ? QStringLiteral("1") : QString());
    numtAge[1].setText(patients ? QStringLiteral("150") : QString());
    numBirth.setText(patients ? QStringLiteral("0") : QString());
    lstCheck.Clear();
    for (auto& b : optAdd) b.setEnabled(patients);
    optAdd[0].setValue(true);
    chkEndKanja.setEnabled(patients);
    chkJisseki.setEnabled(patients);
    if (!patients)
        imJissekiYm.setEnabled(false);
    else if (chkJisseki.value() == 1)
        imJissekiYm.setEnabled(true);
}

void frmPrintシール::optKeisho_Click()
{
    app::Handler h(app::HandlerKind::Resume,
                   app::Report::patternA(QStringLiteral("「敬称」選択時にエラーが発生しました。")),
                   {.hourglass = true});
    h([&] { txtEtc.setEnabled(false); });
    h([&] {
        for (short i = 0; i < 7; ++i) {
            if (!optKeisho[static_cast<size_t>(i)].value()) continue;
            job.nKeisho = i;
            if (i == static_cast<short>(Honorific::FreeText)) {
                job.sKeisho = base::Trim(txtEtc.text());
                txtEtc.setEnabled(true);
            } else {
                job.sKeisho = kHonorificCaptions[static_cast<size_t>(i)];
            }
            break;
        }
    });
    h([&] {
        fpSpread02.setReDraw(false);
        for (int row = 1; row <= fpSpread02.MaxRows(); ++row) fpSpread02.setText(15, row, job.sKeisho);
        fpSpread02.setReDraw(true);
    });
    h([&] { vDispData(); });
}

void frmPrintシール::opPMode_Click(int index)
{
    fraPosition.setVisible(index == 0);
    frmHutou.setVisible(index != 0);
}

Grid& frmPrintシール::startCellGrid(int sheetIndex)
{
    switch (sheetIndex) {
    case 1:
        return fpSpread_2x6;
    case 2:
        return fpSpread_3x10;
    default:
        return fpSpread01;
    }
}

void frmPrintシール::markStartCell(Grid& grid, int col, int row)
{
    for (int r = 1; r <= grid.MaxRows(); ++r)
        for (int c = 1; c <= grid.MaxCols(); ++c) grid.setBackColor(c, r, Colors::White);
    grid.setBackColor(col, row, Colors::Black);
}

short frmPrintシール::nStartPosOf(const Grid& grid)
{
    return static_cast<short>((grid.ActiveRow() - 1) * grid.MaxCols() + grid.ActiveCol());
}

void frmPrintシール::cmbSealType_Click()
{
    app::Handler h(app::HandlerKind::Stop,
                   app::Report::patternA(QStringLiteral("cmbSealType_Click()で、エラーが発生しました。")));
    h([&] {
        const int chosen = cmbSealType.ItemData(cmbSealType.ListIndex());
        for (int i = 0; i < 3; ++i) startCellGrid(i).setVisible(i == chosen);
        // Each picture keeps its own mark; the number follows the one on view.
        job.nStartPos = nStartPosOf(startCellGrid(chosen));
    });
}

void frmPrintシール::cmbHutou_Click()
{
    const int chosen = cmbHutou.ListIndex();
    for (int i = 0; i < 3; ++i) picFtType[static_cast<size_t>(i)].setVisible(i == chosen);
}

void frmPrintシール::cmbKaisyu_Click()
{
    vDispData();
    btnAllKai_Click(0);
    btnAllKai_Click(1);
}

void frmPrintシール::chkJisseki_Click() { imJissekiYm.setEnabled(chkJisseki.value() == 1); }

void frmPrintシール::imJissekiYm_EntryEnd()
{
    // A new month marks the patients served in it at once.
    clearTicks();
    btnAllSel_Click();
}

void frmPrintシール::mnCKOnOff_Click(int index)
{
    mnCKOnOff[static_cast<size_t>(index)].setChecked(true);
    mnCKOnOff[static_cast<size_t>(1 - index)].setChecked(false);
    savePrintSettings();
}

void frmPrintシール::mnHokenjaDisp_Click(int index)
{
    mnHokenjaDisp[static_cast<size_t>(index)].setChecked(true);
    mnHokenjaDisp[static_cast<size_t>(1 - index)].setChecked(false);
    savePrintSettings();
    // The other insurer list is read at the next change to insurers, or now if shown.
    rows.bKindRead[static_cast<size_t>(AddresseeKind::Hokenja)] = false;
    if (optMst[2].value()) optMst_Click(2);
}

void frmPrintシール::mnCheckOn_Click()
{
    mnCheckOn.setChecked(!mnCheckOn.checked());
    chkCheck.setValue(mnCheckOn.checked() ? 1 : 0);
    savePrintSettings();
}

void frmPrintシール::mnEnterOn_Click()
{
    mnEnterOn.setChecked(!mnEnterOn.checked());
    chkEnter.setValue(mnEnterOn.checked() ? 1 : 0);
    savePrintSettings();
}

void frmPrintシール::mnF04_Click()
{
    btnDisp_Click();
    if (fpSpread02.MaxRows() >= 1) {
        SetFocus(fpSpread02);
        fpSpread02.SetActiveCell(1, 1);
    }
}

}  // namespace seal
