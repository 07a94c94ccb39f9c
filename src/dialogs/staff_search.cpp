#include "dialogs/staff_search.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "data/adodb_ini.h"
#include "dialogs/fault_text.h"
#include "dialogs/online_help.h"

#include <memory>

namespace dialogs {

using controls::Pointer;
using controls::BoxStyle::Critical;
using controls::BoxStyle::Information;
using controls::BoxStyle::Warning;

namespace {

const QString kNoStaff = QStringLiteral("該当する施術者データがありません。");

QString office() { return QString::number(app::iKyotenCd); }
QString branch() { return QString::number(app::iKyotenEb); }

// Releases the lock however the guarded work ends.
class LockScope {
public:
    explicit LockScope(BusyLock& lock) : lock_(lock) {}
    ~LockScope() { lock_.release(); }
    LockScope(const LockScope&) = delete;
    LockScope& operator=(const LockScope&) = delete;

private:
    BusyLock& lock_;
};

std::unique_ptr<data::ado::Recordset> newRecordset()
{
    auto rs = std::make_unique<data::ado::Recordset>();
    rs->setCursorLocation(data::ado::adUseClient);
    return rs;
}

}  // namespace

short iOpenStaffDb(data::cT_ADODB& db, QString& sErr)
{
    QString connect;
    if (data::iGetConnectString(connect, sErr) != 0) return -1;
    if (db.iInit(connect) != 0 || db.iConnect() != 0) {
        sErr = db.sErrMsg();
        return -1;
    }
    return 0;
}

QString sqlStaffMast()
{
    return QStringLiteral("SELECT nIDNo, cName, cNameRyaku ") + QStringLiteral(" FROM STAFF ") +
           QStringLiteral(" WHERE nIDNo >= 0 ") + QStringLiteral(" AND iKyotenCd = ") + office() +
           QStringLiteral(" AND iKyotenEb = ") + branch() + QStringLiteral(" ORDER BY nIDNo ");
}

QString sqlStaffList(const StaffFilter& f)
{
    QString s;
    for (const char* piece :
         {" select", "      *", " from", "      (", "         select", "              nIDNo", "             ,iKyotenCd",
          "             ,iKyotenEb", "             ,cName", "             ,cNameRyaku ", "             ,cNameKana ",
          "         from", "              STAFF"})
        s += QLatin1String(piece);

    bool first = true;
    const auto condition = [&](const QString& text) {
        s += first ? QStringLiteral(" where") : QStringLiteral(" and");
        s += text;
        first = false;
    };
    if (!f.sSiboriName.isEmpty()) condition(QStringLiteral(" cName LIKE '%") + f.sSiboriName + QStringLiteral("%'"));
    if (!f.sSiboriKana.isEmpty())
        condition(QStringLiteral(" cNameKana LIKE '%") + f.sSiboriKana + QStringLiteral("%'"));
    if (f.iEndStaff == 0) condition(QStringLiteral(" (iChusiFlg = 0 OR iChusiFlg IS NULL)"));
    if (f.nSiboriID > 0) condition(QStringLiteral(" nIDNo = ") + QString::number(f.nSiboriID));
    condition(QStringLiteral(" iKyotenCd = ") + office() + QStringLiteral(" and iKyotenEb = ") + branch());

    s += QStringLiteral("      )staff");
    if (f.nSoudanID != -1) {
        for (const char* piece :
             {"      left join", "      (", "         select", "              nIDNo as SoudanID",
              "             ,iStaffKyotenCd", "             ,iStaffKyotenEb ", "             ,nStaffIDNo ",
              "         from", "              SOUDAN_TANTOU", "         where"})
            s += QLatin1String(piece);
        s += QStringLiteral("              iStaffKyotenCd = ") + office();
        s += QStringLiteral("         and  iStaffKyotenEb = ") + branch();
        for (const char* piece : {"      )soudan", "      on", "          staff.nIDNo = soudan.nStaffIDNo",
                                  "      and staff.iKyotenCd = soudan.iStaffKyotenCd",
                                  "      and staff.iKyotenEb = soudan.iStaffKyotenEb", " where"})
            s += QLatin1String(piece);
        s += QStringLiteral("      soudan.SoudanID = ") + QString::number(f.nSoudanID);
    }
    s += QStringLiteral(" order by") + QStringLiteral("     nIDNo") + QStringLiteral("    ,cName ");
    return s;
}

QString sqlChkStaff(qint32 nID)
{
    return QStringLiteral("SELECT cName, iChusiFlg FROM STAFF  WHERE nIDNo = ") + QString::number(nID) +
           QStringLiteral(" AND iKyotenCd = ") + office() + QStringLiteral(" AND iKyotenEb = ") + branch();
}

// --- frm施術者検索 -------------------------------------------------------------------

const QStringList& frm施術者検索::columnTitles()
{
    static const QStringList titles{QStringLiteral("IDNo."), QStringLiteral("施術者名"), QStringLiteral("フリガナ")};
    return titles;
}

frm施術者検索::frm施術者検索(controls::Platform& platform) : Screen(QStringLiteral("frm施術者検索"), platform)
{
    setCaption(QStringLiteral("施術者検索"));
    KeyPreview = true;
    but_Act.emplace_back(QStringLiteral("but_Act(0)"), QStringLiteral("確 定"));
    but_Act.emplace_back(QStringLiteral("but_Act(1)"), QStringLiteral("戻る"));
    but_Read.setTag(QStringLiteral("施術者データを検索します"));
    but_Act[0].setTag(QStringLiteral("施術者データを決定します"));
    but_Act[1].setTag(QStringLiteral("処理を終了します"));
    spr_1ran.setColLocked(1, true);
    spr_1ran.setColLocked(2, true);
    spr_1ran.setColLocked(3, true);

    for (controls::Control* c : std::initializer_list<controls::Control*>{
             &lbl_a4, &txt_SiboriName, &lbl_a0, &txt_SiboriKana, &lbl_a2, &in_SiboriID, &chkEndSejutsuha, &chkEndKanja,
             &but_Read, &spr_1ran, &but_Act[0], &but_Act[1], &mnF04, &mnF05, &mnF12, &mnDispHelp})
        add(*c);

    but_Read.Click = [this] { but_Read_Click(); };
    mnF04.Click = [this] { guarded(QStringLiteral("mnF04_Click()でエラー"), [this] { vSearch(); }); };
    but_Act[0].Click = [this] { but_Act_Click(0); };
    but_Act[1].Click = [this] { but_Act_Click(1); };
    mnF05.Click = [this] { guarded(QStringLiteral("mnF05_Click()でエラー"), [this] { but_Act_Click(0); }); };
    mnF12.Click = [this] { guarded(QStringLiteral("mnF12_Click()でエラー"), [this] { but_Act_Click(1); }); };
    mnDispHelp.Click = [] { vDispOnlineHelp(1); };
    spr_1ran.DblClick = [this](int col, int row) { spr_1ran_DblClick(col, row); };
}

void frm施術者検索::iInit(qint32 nSeled, short endStaff, qint32 soudanID)
{
    nSeledCD = nSeled;
    nSoudanID = soudanID;
    sSiboriName.clear();
    sSiboriKana.clear();
    nSiboriID = 0;
    iEndStaff = endStaff;
}

void frm施術者検索::vGetSeledInf(qint32& nCD, QString& name) const
{
    nCD = nSeledCD;
    name = csSeledName;
}

void frm施術者検索::Form_Load()
{
    nResult = 0;
    bFirst = true;
    setMousePointer(Pointer::Hourglass);
}

void frm施術者検索::Form_Activate()
{
    if (!bFirst) return;
    bFirst = false;
    lock.reset();
    if (iMastDataLoad() != 0) {
        setMousePointer(Pointer::Normal);
        Unload();
        return;
    }
    spr_1ran.setMaxRows(0);
    but_Act[0].setEnabled(false);
    writeFilters();
    chkEndSejutsuha.setValue(iEndStaff != 0 ? 1 : 0);
    SetFocus(in_SiboriID);
    vSearch();
}

void frm施術者検索::Form_QueryUnload(int& cancel, controls::UnloadMode mode)
{
    if (mode == controls::UnloadMode::ControlMenu && lock.held()) cancel = 1;
}

void frm施術者検索::Form_KeyDown(int& keyCode, int)
{
    guarded(QStringLiteral("フォームKeyDown()でエラー"), [&] {
        if (lock.held()) {
            keyCode = 0;
            return;
        }
        if (keyCode != controls::Key::Return) return;
        keyCode = 0;
        controls::Control* focus = ActiveControl();
        if (!focus) return;
        switch (focus->kind()) {
        case controls::Kind::TextBox:
        case controls::Kind::ImText:
        case controls::Kind::ImNumber:
        case controls::Kind::OptionButton:
        case controls::Kind::CheckBox:
        case controls::Kind::ComboBox:
            platform().sendKey(QStringLiteral("{TAB}"));
            break;
        default:
            break;
        }
    });
}

void frm施術者検索::readFilters()
{
    sSiboriName = txt_SiboriName.text();
    sSiboriKana = txt_SiboriKana.text();
    iEndStaff = chkEndSejutsuha.value() != 0 ? 1 : 0;
    nSiboriID = base::CLng(in_SiboriID.value().value_or(0));
}

void frm施術者検索::writeFilters()
{
    txt_SiboriName.setText(sSiboriName);
    txt_SiboriKana.setText(sSiboriKana);
    if (nSiboriID > 0)
        in_SiboriID.setValue(nSiboriID);
    else
        in_SiboriID.setText(QString());
}

void frm施術者検索::but_Read_Click()
{
    guarded(QStringLiteral("mnF04_Click()でエラー"), [this] { vSearch(); });
}

void frm施術者検索::vSearch()
{
    if (!lock.take()) return;
    LockScope release(lock);
    readFilters();
    setMousePointer(Pointer::Hourglass);
    spr_1ran.setReDraw(false);
    const short status = iDsp1ranSub();
    setMousePointer(Pointer::Normal);
    spr_1ran.setReDraw(true);
    if (status == -1) {
        for (int i = 0; i < 3; ++i) platform().beep();
        app::msgBox(QStringLiteral("システムエラーが発生しました！\r\n\r\n") + CsErrStr, Critical, QString());
    }
}

short frm施術者検索::iMastDataLoad()
{
    const QString routine = QStringLiteral("iMastDataLoad() でエラー");
    data::cT_ADODB db;
    QString sErr;
    if (iOpenStaffDb(db, sErr) != 0) {
        app::msgBox(sErr + QStringLiteral("\r\n") + routine, Critical, QString());
        return -1;
    }
    auto rs = newRecordset();
    if (db.iOpenRecSet(rs, sqlStaffMast(), 0, 1, 1) != 0) {
        app::msgBox(db.sErrMsg() + QStringLiteral("\r\n") + routine, Critical, QString());
        return -1;
    }
    aMast.clear();
    if (rs->Eof()) {
        db.iCloseRecSet(rs);
        app::msgBox(QStringLiteral("該当する患者データがありません。"), Information, QString());
        return 1;
    }
    aMast.reserve(static_cast<size_t>(rs->RecordCount()));
    while (!rs->Eof()) {
        aMast.push_back({base::nNull2Long(rs->Fields(QStringLiteral("nIDNo")).Value()),
                         base::csRTrimNull(rs->Fields(QStringLiteral("cName")).Value())});
        rs->MoveNext();
    }
    db.iCloseRecSet(rs);
    db.iDisConnect();
    return 0;
}

short frm施術者検索::iDsp1ranSub()
{
    const QString routine = QStringLiteral("iDsp1ranSub() でエラー");
    const QString sql = sqlStaffList({sSiboriName, sSiboriKana, iEndStaff, nSiboriID, nSoudanID});
    writeFilters();
    spr_1ran.setMaxRows(0);
    but_Act[0].setEnabled(false);

    data::cT_ADODB db;
    QString sErr;
    if (iOpenStaffDb(db, sErr) != 0) {
        CsErrStr = sErr + QStringLiteral("\r\n") + routine;
        return -1;
    }
    auto rs = newRecordset();
    if (db.iOpenRecSet(rs, sql, 0, 1, 1) != 0) {
        CsErrStr = db.sErrMsg() + QStringLiteral("\r\n") + routine;
        return -1;
    }
    if (rs->Eof()) {
        db.iCloseRecSet(rs);
        app::msgBox(kNoStaff, Information, QString());
        return 0;
    }
    const data::ado::Field fID = rs->Fields(QStringLiteral("nIDNo"));
    const data::ado::Field fName = rs->Fields(QStringLiteral("cName"));
    const data::ado::Field fKana = rs->Fields(QStringLiteral("cNameKana"));
    int row = 0;
    while (!rs->Eof()) {
        ++row;
        if (row > spr_1ran.MaxRows()) spr_1ran.setMaxRows(row);
        spr_1ran.setText(1, row, base::csRTrimNull(fID.Value()));
        spr_1ran.setText(2, row, base::csRTrimNull(fName.Value()));
        spr_1ran.setText(3, row, base::csRTrimNull(fKana.Value()));
        rs->MoveNext();
    }
    db.iCloseRecSet(rs);
    db.iDisConnect();
    spr_1ran.setMaxRows(row);
    if (row >= 1) but_Act[0].setEnabled(true);

    if (nSeledCD > 0) {
        for (int r = 1; r <= row; ++r) {
            if (base::Val(spr_1ran.text(1, r)) != nSeledCD) continue;
            spr_1ran.SetActiveCell(1, r);
            break;
        }
    }
    return 0;
}

void frm施術者検索::vWhenSeledOK(int row)
{
    const int r = row > 0 ? row : spr_1ran.ActiveRow();
    if (r < 1 || r > spr_1ran.MaxRows()) {
        platform().beep();
        app::msgBox(QStringLiteral("有効な行が選択されていません！"), Warning, QString());
        return;
    }
    nSeledCD = base::CLng(base::Val(spr_1ran.text(1, r)));
    csSeledName = spr_1ran.text(2, r);
    nResult = 1;
    Unload();
}

void frm施術者検索::closeWithoutChoice()
{
    nResult = 0;
    Unload();
}

void frm施術者検索::but_Act_Click(int index)
{
    if (!lock.take()) return;
    LockScope release(lock);
    if (index == 0)
        vWhenSeledOK();
    else
        closeWithoutChoice();
}

void frm施術者検索::spr_1ran_DblClick(int, int row)
{
    if (row <= 0) return;
    if (!lock.take()) return;
    LockScope release(lock);
    vWhenSeledOK(row);
}

// --- cls施術者検索 -------------------------------------------------------------------

short cls施術者検索::iDspStart(qint32 endStaff, qint32 soudanID)
{
    return guardedStatus(QStringLiteral("iDspStart でエラー"), CsErrStr_, [&]() -> short {
        frm施術者検索 frm(app::platform());
        frm.iInit(nSeledCD, static_cast<short>(endStaff), soudanID);
        app::platform().showModal(frm);
        if (frm.nResult != 1) return 1;
        frm.vGetSeledInf(nSeledCD, csSeledName_);
        return 0;
    });
}

short cls施術者検索::iChkStaff(qint32 nID, qint32 acceptEnded)
{
    const QString routine = QStringLiteral("iChkStaff でエラー");
    data::cT_ADODB db;
    QString sErr;
    if (iOpenStaffDb(db, sErr) != 0) {
        CsErrStr_ = sErr + QStringLiteral("\r\n") + routine;
        return 1;
    }
    auto rs = newRecordset();
    if (db.iOpenRecSet(rs, sqlChkStaff(nID), 0, 1, 1) != 0) {
        CsErrStr_ = db.sErrMsg() + QStringLiteral("\r\n") + routine;
        return 1;
    }
    CsErrStr_.clear();
    short status = 0;
    if (rs->Eof()) {
        CsErrStr_ = QStringLiteral("対象の施術者が存在しません。");
        status = 1;
    } else if (base::nNull2Long(rs->Fields(QStringLiteral("iChusiFlg")).Value()) == 1 && acceptEnded == 0) {
        CsErrStr_ = QStringLiteral("管理対象から外れています。");
        status = 1;
    } else {
        csSeledName_ = base::csRTrimNull(rs->Fields(QStringLiteral("cName")).Value());
    }
    db.iCloseRecSet(rs);
    db.iDisConnect();
    return status;
}

}  // namespace dialogs
