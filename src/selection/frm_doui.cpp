#include "selection/frm_doui.h"

#include "app/globals.h"
#include "app/messages.h"
#include "app/system_settings.h"
#include "base/conversions.h"
#include "base/ini_file.h"
#include "dialogs/fault_text.h"
#include "dialogs/staff_search.h"
#include "report/cls_wfdprintexe.h"
#include "selection/consent_extract.h"
#include "selection/ledger_csv.h"

namespace selection {

using controls::Pointer;
using controls::BoxStyle::Critical;
using controls::BoxStyle::Information;

namespace {

const QString kConditionFailed = QStringLiteral("印刷条件の取得に失敗しました。");
const QString kLedgerForm = QStringLiteral("同意台帳_TKZK.wfd");
const QString kLedgerData = QStringLiteral("同意データ");
const QString kStaffSearchFailed = QStringLiteral("施術者の検索に失敗しました");

// The lowest listed index whose option is chosen; 0 when none is.
short chosenIndex(const std::deque<controls::OptionButton>& options, std::initializer_list<int> indexes)
{
    for (int i : indexes)
        if (options[static_cast<size_t>(i)].value()) return static_cast<short>(i);
    return 0;
}

}  // namespace

frmDoui::frmDoui(controls::Platform& platform) : ConsentSideScreen(QStringLiteral("frmDoui"), platform)
{
    setCaption(QStringLiteral("  同意書更新台帳"));
    chkEachSejyutusya.setVisible(false);
    chkIsiMatome.setVisible(false);
    chkIsiMatome.setValue(1);
    chkChushi.setVisible(false);

    add(Frame2);
    for (auto& o : opt_Sel) add(o);
    for (controls::Control* c : std::initializer_list<controls::Control*>{&laTitle0, &imD_Kigen, &laTitle2}) add(*c);
    add(optKikan[2]);
    add(optKikan[0]);
    add(optKikan[1]);
    add(laTitle1);
    for (auto& o : optKijun) add(o);
    for (controls::Control* c : std::initializer_list<controls::Control*>{&chkKijunDisp,  &chkEachSejyutusya,
                                                                          &chkIsiMatome,  &Frame1,
                                                                          &laTitle3,      &cbSejyutsu,
                                                                          &imNum_StaffNo, &btn_StaffSelect,
                                                                          &chkChushi,     &chkStaff,
                                                                          &btnPrint0,     &btnPrint1,
                                                                          &btnPrint2,     &btnPrint6,
                                                                          &mnFunc,        &mnF01,
                                                                          &mnF02,         &mnF03,
                                                                          &mnKugiri,      &mnF12,
                                                                          &mnSettei,      &mnSetteiSort,
                                                                          &mnSort[0],     &mnSort[1],
                                                                          &mnHelp,        &mnDispHelp})
        add(*c);

    btnPrint0.Click = [this] { iPrintLedger(1); };
    mnF01.Click = [this] { iPrintLedger(1); };
    btnPrint1.Click = [this] { iPrintLedger(0); };
    mnF02.Click = [this] { iPrintLedger(0); };
    mnF03.Click = [this] { runHandOver(); };
    btn_StaffSelect.Click = [this] { btn_StaffSelect_Click(); };
    imNum_StaffNo.KeyDown = [this](int& keyCode, int shift) { imNum_StaffNo_KeyDown(keyCode, shift); };
    // The list has no filter for ended staff, so filling it again changes nothing.
    chkChushi.Click = [this] { vSetCbSejyutsu(); };
}

short frmDoui::iInit(data::cT_ADODB& db, short mode)
{
    return dialogs::guardedStatus(QStringLiteral("iInitでエラー"), sErrMsg, [&]() -> short {
        initCommon(db, mode);
        if (mode == 1) {
            setCaption(QStringLiteral("　同意書更新リスト設定"));
            btnPrint0.setVisible(false);
            btnPrint1.setVisible(false);
            btnPrint2.setVisible(true);
            mnF01.setEnabled(false);
            mnF02.setEnabled(false);
            mnF03.setEnabled(true);
            chkEachSejyutusya.setVisible(true);
            chkIsiMatome.setVisible(true);
        }
        setFirstOfMonth(imD_Kigen);
        loadOffice();
        opt_Sel[0].setValue(true);
        readSortOrder();
        readSettingFlags();
        return vSetCbSejyutsu() != 0 ? -1 : 0;
    });
}

short frmDoui::vSetCbSejyutsu()
{
    const short status = reportStaffListStatus(iGetCbStaffData());
    if (status != 0) return status;
    cbSejyutsu.Clear();
    cbSejyutsu.AddItem(QStringLiteral("－ 指定なし －"));
    for (const StaffEntry& s : aStaff) cbSejyutsu.AddItem(base::Trim(s.cName), s.nIDNo);
    cbSejyutsu.setListIndex(0);
    return 0;
}

QString frmDoui::csSortIniPath() { return app::csSystemDataPath() + QStringLiteral("印刷設定.ini"); }

void frmDoui::readSortOrder()
{
    cond.iSort = 0;
    base::clsOplIniFile ini;
    if (ini.iInit(csSortIniPath()) == 0) {
        const QString value = base::csCutNull(ini.csGetProfileString(kDouiSection, kSortKey));
        if (base::IsNumeric(value)) cond.iSort = base::CInt(value);
    }
    mnSort[1].setChecked(cond.iSort != 0);
    mnSort[0].setChecked(cond.iSort == 0);
}

void frmDoui::saveSortOrder()
{
    base::clsOplIniFile ini;
    ini.iInit(csSortIniPath());
    if (ini.iWriteProfileString(kDouiSection, kSortKey, QString::number(cond.iSort)) != 1) {
        const QString why = ini.csErrorText().isEmpty() ? csSortIniPath() : ini.csErrorText();
        app::msgBox(QStringLiteral("Error:") + why, controls::BoxStyle::Plain, QString());
    }
}

short frmDoui::iGetPrintCondition()
{
    try {
        cond.iSort = mnSort[1].checked() ? 1 : 0;
        cond.iSejutsu = chosenIndex(opt_Sel, {0, 1, 2, 3, 7});
        cond.iKijun = chosenIndex(optKijun, {0, 1, 2});
        cond.iKikan = chosenIndex(optKikan, {0, 1, 2});
        cond.nKikanMonths = nKikanMonthsOf(cond.iKikan);
        if (cond.iMode == 1) {
            cond.iEachStaff = chkEachSejyutusya.value() != 0 ? 1 : 0;
            cond.iIsiMatome = chkIsiMatome.value() != 0 ? 1 : 0;
        } else {
            cond.iEachStaff = 1;
            cond.iIsiMatome = 0;
        }
        if (imD_Kigen.isNull()) throw base::VbError::typeMismatch();
        const DateRange range = consentDateRange(imD_Kigen.value(), cond.iSejutsu, cond.nKikanMonths);
        cond.tFrom = range.tFrom;
        cond.tTo = range.tTo;
        return 0;
    } catch (const base::VbError&) {
        return -1;
    }
}

qint32 frmDoui::iGetKanjaData()
{
    const qint32 staff = cbSejyutsu.ListIndex() > 0 ? cbSejyutsu.ItemData(cbSejyutsu.ListIndex()) : 0;
    return extractRows([&](data::cT_ADODB& db, ConsentRows& rows) {
        return selection::iGetKanjaData(db, cond, staff, rows, sErrMsg);
    });
}

void frmDoui::handOverRows(HandOver& h)
{
    if (cond.iMode == 1 && cond.iIsiMatome == 1)
        joinPerDoctor(aKanja, h);
    else
        appendPerRow(aKanja, h);
}

void frmDoui::saveCSVdoui()
{
    const QString path = app::csSystemTmpPath() + kLedgerCsvName;
    writeLedgerCsv(path, ledgerCsvLines(aKanja, imD_Kigen.value(), cond.iSejutsu, chkKijunDisp.value() != 0));
}

void frmDoui::iPrintLedger(short iPrint)
{
    setMousePointer(Pointer::Hourglass);
    [&] {
        if (iGetPrintCondition() != 0) {
            app::msgBox(kConditionFailed, Information, QString());
            return;
        }
        if (iGetKanjaData() != 0) {
            app::msgBox(sErrMsg, Information, QString());
            return;
        }
        if (nデータ数 == 0) {
            app::msgBox(QStringLiteral("該当する患者データがありません。"), Information, QString());
            return;
        }
        saveCSVdoui();
        // The lookup is made, but the form is always the fixed one of the system folder.
        (void)app::csFormatLookup(QStringLiteral("同意書更新"), QStringLiteral("同意書更新"));
        const QString form = app::csSystemSysPath() + kLedgerForm;
        report::cls_WfdPrintExe printer;
        if (printer.iInit(form, kLedgerData) != 0) {
            app::msgBox(QStringLiteral("帳票の印刷に失敗しました。\r[") + printer.sErrMsg + u']', Critical, QString());
        } else {
            printer.iSetDataText(1, kLedgerData, kLedgerCsvName);
            if (iPrint != 0)
                printer.iPrintDialog(0);
            else
                printer.iPreview(0);
        }
        saveSortOrder();
    }();
    setMousePointer(Pointer::Normal);
}

void frmDoui::selectStaff(qint32 nIDNo)
{
    for (int i = 0; i < cbSejyutsu.ListCount(); ++i) {
        if (cbSejyutsu.ItemData(i) != nIDNo) continue;
        cbSejyutsu.setListIndex(i);
        return;
    }
}

void frmDoui::btn_StaffSelect_Click()
{
    dialogs::cls施術者検索 search;
    const short status = search.iDspStart(chkChushi.value(), -1);
    if (status == 1) return;
    if (status == 0) {
        imNum_StaffNo.setValue(search.nSeledCD);
        selectStaff(search.nSeledCD);
        return;
    }
    app::msgBox(kStaffSearchFailed + search.CsErrStr(), Critical, QString());
}

void frmDoui::imNum_StaffNo_KeyDown(int& keyCode, int)
{
    if (keyCode != controls::Key::Return) return;
    const auto wording = [](const base::VbError& fault) {
        return QStringLiteral("施術者の検索に失敗しました！\r\n\r\n(%1)").arg(fault.number());
    };
    dialogs::guardedWith(wording, [this] {
        const qint32 n = base::CLng(imNum_StaffNo.value().value_or(0));
        if (n == 0) {
            if (cbSejyutsu.ListCount() > 0) cbSejyutsu.setListIndex(0);
            return;
        }
        dialogs::cls施術者検索 search;
        if (search.iChkStaff(n, chkChushi.value()) != 0) {
            app::msgBox(kStaffSearchFailed + search.CsErrStr(), Critical, QString());
            return;
        }
        selectStaff(n);
    });
}

void frmDoui::Form_KeyDown(int& keyCode, int)
{
    dialogs::guarded(QStringLiteral("フォームKeyDown()でエラー"), [&] {
        if (keyCode == controls::Key::F1 + 11) {
            keyCode = 0;
            Unload();
        }
    });
}

}  // namespace selection
