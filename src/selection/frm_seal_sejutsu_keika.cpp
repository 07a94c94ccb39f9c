#include "selection/frm_seal_sejutsu_keika.h"

#include "app/messages.h"
#include "base/conversions.h"
#include "base/dates.h"
#include "dialogs/fault_text.h"
#include "dialogs/staff_search.h"
#include "selection/staff_list.h"

namespace selection {

using controls::Pointer;
using controls::BoxStyle::Critical;
using controls::BoxStyle::Information;

frmSeal_SejutsuKeika::frmSeal_SejutsuKeika(controls::Platform& platform)
        : ConsentSideScreen(QStringLiteral("frmSeal_SejutsuKeika"), platform)
{
    setCaption(QStringLiteral("抽出条件設定"));
    Frame2.setVisible(false);
    for (auto& o : opt_Sel) o.setVisible(false);
    for (auto& o : optKikan) o.setVisible(false);
    laTitle2.setVisible(false);
    chkKijunDisp.setVisible(false);
    opt_Sel[0].setValue(true);

    add(Frame2);
    for (auto& o : opt_Sel) add(o);
    for (controls::Control* c :
         std::initializer_list<controls::Control*>{&laTitle0, &imD_Kigen, &laTitle4, &imD_Kigen_To, &laTitle2})
        add(*c);
    for (auto& o : optKikan) add(o);
    add(laTitle1);
    for (auto& o : optKijun) add(o);
    for (controls::Control* c : std::initializer_list<controls::Control*>{
             &chkKijunDisp, &chkStaff,  &fraStaff,  &imNum_StaffNo, &btn_StaffSelect, &laTitle3,
             &txtStaffName, &btnPrint0, &btnPrint1, &btnPrint2,     &btnPrint6,       &mnFunc,
             &mnF01,        &mnF02,     &mnF03,     &mnKugiri,      &mnF12,           &mnSettei,
             &mnSetteiSort, &mnSort[0], &mnSort[1], &mnHelp,        &mnDispHelp})
        add(*c);

    btn_StaffSelect.Click = [this] { btn_StaffSelect_Click(); };
    imNum_StaffNo.Change = [this] { imNum_StaffNo_Change(); };
}

short frmSeal_SejutsuKeika::iInit(data::cT_ADODB& db, short mode)
{
    return dialogs::guardedStatus(QStringLiteral("iInitでエラー"), sErrMsg, [&]() -> short {
        initCommon(db, mode);
        keika.iKeikaMode = mode;
        fraStaff.setVisible(true);
        btnPrint0.setVisible(false);
        btnPrint1.setVisible(false);
        btnPrint2.setVisible(true);
        mnF01.setEnabled(false);
        mnF02.setEnabled(false);
        setFirstOfMonth(imD_Kigen);
        setFirstOfMonth(imD_Kigen_To);
        loadOffice();
        readSettingFlags();
        // Only a check: the list itself has no use here.
        return reportStaffListStatus(iGetCbStaffData());
    });
}

short frmSeal_SejutsuKeika::iGetPrintCondition()
{
    try {
        if (imD_Kigen.isNull() || imD_Kigen_To.isNull()) throw base::VbError::typeMismatch();
        keika.sFromMonth = base::Format(imD_Kigen.value(), u"yyyy/mm");
        keika.sToMonth = base::Format(imD_Kigen_To.value(), u"yyyy/mm");
        keika.nStaffNo = base::CLng(imNum_StaffNo.value().value_or(0));
        const QDate from = imD_Kigen.value();
        const QDate to = imD_Kigen_To.value();
        keika.tFrom = QDate(from.year(), from.month(), 1);
        keika.tTo = base::DateAdd(u"d", -1, base::DateAdd(u"m", 1, QDate(to.year(), to.month(), 1)));
        return 0;
    } catch (const base::VbError&) {
        return -1;
    }
}

qint32 frmSeal_SejutsuKeika::iGetKanjaData()
{
    return extractRows([&](data::cT_ADODB& db, ConsentRows& rows) { return iGetKeikaData(db, keika, rows, sErrMsg); });
}

void frmSeal_SejutsuKeika::btn_StaffSelect_Click()
{
    dialogs::cls施術者検索 search;
    const short status = search.iDspStart(0, -1);
    if (status == 1) return;
    if (status == 0) {
        imNum_StaffNo.setValue(search.nSeledCD);
        txtStaffName.setText(search.csSeledName());
        return;
    }
    app::msgBox(QStringLiteral("施術者の検索に失敗しました") + search.CsErrStr(), Critical, QString());
}

void frmSeal_SejutsuKeika::imNum_StaffNo_Change()
{
    const double n = imNum_StaffNo.value().value_or(0);
    if (n <= 0 || !db_) return;
    QString name = txtStaffName.text();
    if (iGetStaffData(*db_, base::CLng(n), name, sErrMsg) != 0) {
        app::msgBox(sErrMsg, Information, QString());
        return;
    }
    txtStaffName.setText(name);
}

void frmSeal_SejutsuKeika::Form_KeyDown(int& keyCode, int)
{
    dialogs::guarded(QStringLiteral("フォームKeyDown()でエラー"), [&] {
        if (keyCode != controls::Key::Return) return;
        keyCode = 0;
        controls::Control* focus = ActiveControl();
        if (!focus) return;
        switch (focus->kind()) {
        case controls::Kind::TextBox:
        case controls::Kind::ImText:
        case controls::Kind::ImDate:
        case controls::Kind::ImNumber:
        case controls::Kind::ComboBox:
        case controls::Kind::CheckBox:
            platform().sendKey(QStringLiteral("{TAB}"));
            break;
        default:
            break;
        }
    });
}

}  // namespace selection
