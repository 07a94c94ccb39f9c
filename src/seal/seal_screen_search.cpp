// The seal screen's search: the bounds from the controls, the patient extraction, the
// rows of the other kinds, the fill of fpSpread02, the kana index, and the saved
// settings the screen reads and writes.

#include "seal/seal_screen.h"

#include "app/globals.h"
#include "app/messages.h"
#include "app/system_settings.h"
#include "base/conversions.h"
#include "extract/master_extract.h"
#include "seal/kana_index.h"

namespace seal {

using namespace controls;

namespace {

const QString kDispFailed = QStringLiteral("データ表示時にエラーが発生しました。");

// A bound of the search from its control: the control's number, or the default when
// the control is empty.
short boundOf(const NumberInput& input, short whenEmpty)
{
    return input.text().isEmpty() ? whenEmpty : base::CInt(input.text());
}

}  // namespace

void frmPrintシール::btnDisp_Click()
{
    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(kDispFailed), {.hourglass = true});
    h([&] { vDispData(); });
}

void frmPrintシール::btnClr_Click()
{
    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(kDispFailed), {.hourglass = true});
    h([&] {
        numtAge[0].setText(QStringLiteral("1"));
        numtAge[1].setText(QStringLiteral("150"));
        numBirth.setText(QStringLiteral("0"));
        // The copies go back to one as well, although they are no search condition.
        numMaisu.setText(QStringLiteral("1"));
        txtName.setText(QString());
        txtIDNo.setText(QString());
        txtNameKana.setText(QString());
    });
    h([&] { vDispData(); });
}

void frmPrintシール::cmdAnk_Click(int index)
{
    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(kDispFailed), {.hourglass = true});
    // No query: the rows in memory are filled again under the kana row.
    h([&] { job.sKanaRow = kKanaRows.at(static_cast<size_t>(index)); });
    h([&] { fillList(); });
}

void frmPrintシール::vDispData()
{
    job.sKanaRow.clear();
    if (job.nMst != 0) {
        job.nAgeFrom = 0;
        job.nAgeTo = 150;
        job.nBirthMonth = 0;
    } else {
        job.nAgeFrom = boundOf(numtAge[0], 0);
        job.nAgeTo = boundOf(numtAge[1], 150);
        job.nBirthMonth = boundOf(numBirth, 0);
    }
    // Patients are read at every search, whatever kind is shown: they serve the others.
    if (RiyoushaMemorySet() == -1) getMstData_SEAL();
    fillList();
}

short frmPrintシール::RiyoushaMemorySet()
{
    // The list's texts share their memory with the rows about to be replaced; let go
    // together, that memory is returned whole and the new rows are laid out in one
    // piece instead of in its gaps. The fill that follows every read writes them again.
    fpSpread02.clearTexts(2);
    extract::RiyoushaChoice choice;
    choice.jissekiTicked = chkJisseki.value() == 1;
    choice.jissekiYm = imJissekiYm.value();
    choice.kaisyuIndex = cmbKaisyu.ListIndex();
    return extract::RiyoushaMemorySet(choice, rows.aRiyousha, job.nCloseState);
}

extract::FillConditions frmPrintシール::fillConditions() const
{
    extract::FillConditions c;
    c.nMst = job.nMst;
    c.sName = txtName.text();
    c.sID = txtIDNo.text();
    c.sKana = txtNameKana.text();
    c.sKanaRow = job.sKanaRow;
    c.nAgeFrom = job.nAgeFrom.value_or(0);
    c.nAgeTo = job.nAgeTo.value_or(150);
    c.nBirthMonth = job.nBirthMonth.value_or(0);
    c.jissekiTicked = chkJisseki.value() == 1;
    c.endKanjaTicked = chkEndKanja.value() == 1;
    c.today = platform().today();
    c.sKeisho = job.sKeisho;
    c.nKeisho = job.nKeisho;
    c.clearTicks = job.bMstChanged == 1 && mnCKOnOff[1].checked();
    return c;
}

short frmPrintシール::fillList()
{
    short result = 0;
    setMousePointer(Pointer::Hourglass);
    job.bFilling = 1;
    app::Handler h(app::HandlerKind::Stop,
                   app::Report::patternA(QStringLiteral("データ表示中にエラーが発生しました。")));
    h([&] {
        extract::fillList(fpSpread02, rows, fillConditions());
        job.nMstShown = job.nMst;
        setMousePointer(Pointer::Normal);
        job.sKanaRow.clear();
        job.bFilling = 0;
        job.bMstChanged = 0;
    });
    if (h.failed()) {
        fpSpread02.setReDraw(true);
        result = -1;
    }
    return result;
}

QString frmPrintシール::csPrintSettingsPath() const { return app::csSystemDataPath() + kPrintSettingsFile; }

PrintSettingControls frmPrintシール::settingControls()
{
    return {mnCKOnOff[0], mnCKOnOff[1], chkCheck, chkEnter, mnHokenjaDisp[0], mnHokenjaDisp[1], txtEtc};
}

void frmPrintシール::loadPrintSettings() { seal::loadPrintSettings(csPrintSettingsPath(), settingControls()); }

void frmPrintシール::savePrintSettings() { seal::savePrintSettings(csPrintSettingsPath(), settingControls()); }

void frmPrintシール::loadFootnotes() { seal::loadFootnotes(csPrintSettingsPath(), cboKyakutyuList); }

void frmPrintシール::btnAddKyakutyu_Click() { addFootnote(csPrintSettingsPath(), cboKyakutyuList); }

short frmPrintシール::getMstData_SEAL()
{
    short result = -1;
    setMousePointer(Pointer::Hourglass);
    const auto K = static_cast<AddresseeKind>(job.nMst);
    if (K != AddresseeKind::Riyousha && !rows.bKindRead[static_cast<size_t>(K)]) {
        result = extract::readKind(job.nMst, mnHokenjaDisp[0].checked(),
                                   kAddresseeKinds[static_cast<size_t>(job.nMst)].failureText, rows, job.nCloseState);
    }
    setMousePointer(Pointer::Normal);
    return result;
}

short frmPrintシール::getCorpData_SEAL()
{
    extract::readOwnCorp(rows);
    return -1;
}

}  // namespace seal
