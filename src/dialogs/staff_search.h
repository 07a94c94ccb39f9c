#pragma once
// The staff search: cls施術者検索 is what the side screens call, frm施術者検索 the
// modal list it shows. Every search and every check opens a connection of its own and
// closes it again, whatever connection the caller holds.

#include "controls/buttons.h"
#include "controls/grid.h"
#include "controls/inputs.h"
#include "controls/screen.h"
#include "controls/static_controls.h"
#include "data/ct_adodb.h"

#include <deque>
#include <vector>

namespace dialogs {

// Opens db on the connection text of "adodb.ini": 0, or -1 with the reason in sErr
// (the profile reader's text, the empty connection text, or the wrapper's sErrMsg).
short iOpenStaffDb(data::cT_ADODB& db, QString& sErr);

// The filters of one search.
struct StaffFilter {
    QString sSiboriName;
    QString sSiboriKana;
    short iEndStaff = 0;    // 1: staff whose management has ended are listed too
    qint32 nSiboriID = 0;   // 0: no number filter
    qint32 nSoudanID = -1;  // -1: no consultation
};

// The statements, with this office's SiteKey.
QString sqlStaffMast();
QString sqlStaffList(const StaffFilter& f);
QString sqlChkStaff(qint32 nID);

// Guards the search against a second start while the message loop runs inside one.
class BusyLock {
public:
    // False when already held.
    bool take()
    {
        if (busy_) return false;
        busy_ = true;
        return true;
    }
    void release() { busy_ = false; }
    void reset() { busy_ = false; }
    bool held() const { return busy_; }

private:
    bool busy_ = false;
};

class frm施術者検索 : public controls::Screen {
public:
    explicit frm施術者検索(controls::Platform& platform);

    // --- filters --------------------------------------------------------------------
    controls::Label lbl_a4{QStringLiteral("lbl_a(4)"), QStringLiteral("名称")};
    controls::Label lbl_a0{QStringLiteral("lbl_a(0)"), QStringLiteral("カナ")};
    controls::Label lbl_a2{QStringLiteral("lbl_a(2)"), QStringLiteral("ＩＤ")};
    controls::TextInput txt_SiboriName{QStringLiteral("txt_SiboriName")};
    controls::TextInput txt_SiboriKana{QStringLiteral("txt_SiboriKana")};
    controls::NumberInput in_SiboriID{QStringLiteral("in_SiboriID"), 0, 99999999};
    controls::CheckBox chkEndSejutsuha{QStringLiteral("chkEndSejutsuha"),
                                       QStringLiteral("管理を終了した施術者も表示する")};
    controls::CheckBox chkEndKanja{QStringLiteral("chkEndKanja"), QStringLiteral("施術の終了した患者も表示する。")};
    controls::Button but_Read{QStringLiteral("but_Read"), QStringLiteral("抽出")};

    // --- the list and the commands --------------------------------------------------
    controls::Grid spr_1ran{QStringLiteral("spr_1ran"), 3, 0};
    std::deque<controls::Button> but_Act;  // 0 "確 定", 1 "戻る"
    controls::MenuItem mnF04{QStringLiteral("mnF04"), QStringLiteral("抽出"), QStringLiteral("F4")};
    controls::MenuItem mnF05{QStringLiteral("mnF05"), QStringLiteral("確定"), QStringLiteral("F5")};
    controls::MenuItem mnF12{QStringLiteral("mnF12"), QStringLiteral("戻る"), QStringLiteral("F12")};
    controls::MenuItem mnDispHelp{QStringLiteral("mnDispHelp"), QStringLiteral("オンラインヘルプ(&M)")};
    // The menu titles that hold the items above; they have no command.
    controls::MenuItem mnFunc{QStringLiteral("mnFunc"), QStringLiteral("機能(&F)")};
    controls::MenuItem mnHelp{QStringLiteral("mnHelp"), QStringLiteral("ヘルプ(&H)")};

    // Captions of the list's columns.
    static const QStringList& columnTitles();

    // --- state ----------------------------------------------------------------------
    short nResult = 0;
    qint32 nSeledCD = 0;
    QString csSeledName;
    QString CsErrStr;
    bool bFirst = true;
    qint32 nSoudanID = -1;
    QString sSiboriName;
    QString sSiboriKana;
    short iEndStaff = 0;
    qint32 nSiboriID = 0;
    BusyLock lock;

    // The staff master as loaded at first display: number and name.
    struct MastRow {
        qint32 nIDNo = 0;
        QString cName;
    };
    std::vector<MastRow> aMast;

    // --- operations -----------------------------------------------------------------
    void iInit(qint32 nSeled, short endStaff, qint32 soudanID);
    void vGetSeledInf(qint32& nCD, QString& name) const;
    // Takes row (0: the list's active row) as the choice and closes.
    void vWhenSeledOK(int row = 0);
    // Loads the staff master: 0, 1 when it has no rows (after the box), -1 on failure.
    short iMastDataLoad();
    // Fills the list from the filters: 0, or -1 with the text in CsErrStr.
    short iDsp1ranSub();
    // The search of but_Read, mnF04 and the first display.
    void vSearch();

    void but_Read_Click();
    void but_Act_Click(int index);
    void spr_1ran_DblClick(int col, int row);

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_QueryUnload(int& cancel, controls::UnloadMode mode) override;
    void Form_KeyDown(int& keyCode, int shift) override;

private:
    void readFilters();
    void writeFilters();
    void closeWithoutChoice();
};

class cls施術者検索 {
public:
    qint32 nSeledCD = 0;
    const QString& csSeledName() const { return csSeledName_; }
    const QString& CsErrStr() const { return CsErrStr_; }

    // Shows the search: 0 when a row was chosen (nSeledCD and csSeledName hold it), 1
    // when the operator closed without one, -1 on failure with the text in CsErrStr.
    short iDspStart(qint32 endStaff, qint32 soudanID);
    // Checks one number without a dialog: 0 when usable, with csSeledName set; 1
    // otherwise, with the reason in CsErrStr. Ended staff (iChusiFlg 1) pass only with
    // acceptEnded not 0.
    short iChkStaff(qint32 nID, qint32 acceptEnded);

private:
    QString csSeledName_;
    QString CsErrStr_;
};

}  // namespace dialogs
