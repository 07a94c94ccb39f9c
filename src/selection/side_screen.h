#pragma once
// What the consent screen and the progress report screen share: the public members
// the seal screen reads after the modal call, the controls both carry, the output
// month, the office record, the two settings keys and the end of a hand-over.

#include "controls/buttons.h"
#include "controls/inputs.h"
#include "controls/lists.h"
#include "controls/screen.h"
#include "controls/static_controls.h"
#include "data/corp_info.h"
#include "data/ct_adodb.h"
#include "selection/consent_row.h"
#include "selection/handover.h"
#include "selection/staff_list.h"

#include <deque>
#include <functional>
#include <vector>

namespace selection {

// Title of the staff list's boxes.
inline const QString kStaffListTitle = QStringLiteral("同意書更新リスト印刷");

class ConsentSideScreen : public controls::Screen {
public:
    // --- the hand-over contract -------------------------------------------------------
    QString sErrMsg;
    short nデータ数 = 0;
    QString sIshiID_SEAL;
    QString sTantouID_SEAL;
    QString sTantouName_SEAL;
    QString sSEAL_Header;  // written by neither screen

    // --- controls both screens carry ------------------------------------------------
    controls::Frame Frame2{QStringLiteral("Frame2"), QStringLiteral("帳票種類")};
    std::deque<controls::OptionButton> opt_Sel;  // 0-7; 2-6 hidden
    controls::Label laTitle0{QStringLiteral("laTitle(0)"), QStringLiteral("出力対象月")};
    controls::DateInput imD_Kigen{QStringLiteral("imD_Kigen")};
    controls::Label laTitle2{QStringLiteral("laTitle(2)"), QStringLiteral("期　間")};
    std::deque<controls::OptionButton> optKikan;  // 0 three months, 1 six, 2 one
    controls::Label laTitle1{QStringLiteral("laTitle(1)"), QStringLiteral("基準日")};
    std::deque<controls::OptionButton> optKijun;
    controls::CheckBox chkKijunDisp{QStringLiteral("chkKijunDisp"), QStringLiteral("基準日を出力する")};
    controls::CheckBox chkStaff{QStringLiteral("chkStaff"), QStringLiteral("施術者別")};
    controls::Label laTitle3{QStringLiteral("laTitle(3)"), QStringLiteral("施術者名")};
    controls::NumberInput imNum_StaffNo{QStringLiteral("imNum_StaffNo"), 0, 99999999};
    controls::Button btn_StaffSelect{QStringLiteral("btn_StaffSelect"), QStringLiteral("検索")};
    controls::Button btnPrint0{QStringLiteral("btnPrint(0)"), QStringLiteral("印刷")};
    controls::Button btnPrint1{QStringLiteral("btnPrint(1)"), QStringLiteral("ﾌﾟﾚﾋﾞｭｰ")};
    controls::Button btnPrint2{QStringLiteral("btnPrint(2)"), QStringLiteral("ﾀｯｸｼｰﾙ抽出")};
    controls::Button btnPrint6{QStringLiteral("btnPrint(6)"), QStringLiteral("戻る")};
    controls::MenuItem mnFunc{QStringLiteral("mnFunc"), QStringLiteral("機能(&F)")};
    controls::MenuItem mnF01{QStringLiteral("mnF01"), QStringLiteral("印刷"), QStringLiteral("F1")};
    controls::MenuItem mnF02{QStringLiteral("mnF02"), QStringLiteral("ﾌﾟﾚﾋﾞｭｰ"), QStringLiteral("F2")};
    controls::MenuItem mnF03{QStringLiteral("mnF03"), QStringLiteral("タックシール抽出"), QStringLiteral("F3")};
    controls::MenuItem mnKugiri{QStringLiteral("mnKugiri"), QStringLiteral("-")};
    controls::MenuItem mnF12{QStringLiteral("mnF12"), QStringLiteral("戻る"), QStringLiteral("F12")};
    controls::MenuItem mnSettei{QStringLiteral("mnSettei"), QStringLiteral("設定(&E)")};
    controls::MenuItem mnSetteiSort{QStringLiteral("mnSetteiSort"), QStringLiteral("並び順")};
    std::deque<controls::MenuItem> mnSort;  // 0 "同意期限", 1 "患者ID"
    controls::MenuItem mnHelp{QStringLiteral("mnHelp"), QStringLiteral("ヘルプ(&H)")};
    controls::MenuItem mnDispHelp{QStringLiteral("mnDispHelp"), QStringLiteral("オンラインヘルプ(&M)")};

    controls::Button& btnPrint(int index);

    // The conditions of the last run, and its rows.
    DouiCondition cond;
    ConsentRows aKanja;
    // The office's own record, read when the screen is set up.
    data::CorpInfo corpInfo;
    // The staff list as last read.
    std::vector<StaffEntry> aStaff;

    // Loads the staff list from the screen's connection: 0, 1 none, -1 failure.
    short iGetCbStaffData();
    // Reads the conditions of a run from the controls: 0, or -1 after a fault.
    virtual short iGetPrintCondition() = 0;
    // The extraction of a run into aKanja: 0, 2 no rows for the kind, -1 failure.
    virtual qint32 iGetKanjaData() = 0;
    // The hand-over: 0 done, 2 no rows for the kind, -1 anything else. Conditions it
    // cannot read are shown as "印刷条件の取得に失敗しました。".
    short iSetSealData();

protected:
    ConsentSideScreen(QString name, controls::Platform& platform);

    // The steps of iInit both screens share: keep the connection and the mode, the
    // output month, the office record, the two settings keys.
    void initCommon(data::cT_ADODB& db, short mode);
    // Sets a date input to the first of the current month.
    void setFirstOfMonth(controls::DateInput& input);
    // The office record into corpInfo.
    void loadOffice();
    // The keys "同意更新医師TEL出力" and "同意記録1出力" of the system settings.
    void readSettingFlags();
    // Runs an extraction on the screen's connection. Without one (iInit has not run)
    // -1 with "iGetKanjaDataでエラー"; on 0 the rows found and their count replace
    // the last run's, on any other status the last run's stay.
    qint32 extractRows(const std::function<qint32(data::cT_ADODB&, ConsentRows&)>& extract);
    // How the rows of the run go into the seal screen's members: one entry a row.
    virtual void handOverRows(HandOver& h);
    // The last step of a hand-over: the connection is closed. 0, or -1 with the
    // wrapper's text.
    short iEndHandOver();
    // The hand-over command: status 0 closes the screen, any other shows sErrMsg.
    void runHandOver();
    void mnDispHelp_Click();
    void mnSort_Click(int index);
    // Shows a staff list status other than 0 and gives -1 for it.
    short reportStaffListStatus(short status);

    data::cT_ADODB* db_ = nullptr;

    std::vector<controls::OptionButton*> groupSel_;
    std::vector<controls::OptionButton*> groupKikan_;
    std::vector<controls::OptionButton*> groupKijun_;
};

}  // namespace selection
