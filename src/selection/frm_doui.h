#pragma once
// frmDoui: the consent renewal screen. In the seal mode (1) it hands the doctors of
// the patients whose consent runs out to the seal screen; in any other mode it prints
// or previews the consent ledger and stays open.

#include "selection/side_screen.h"

namespace selection {

inline const QString kDouiSection = QStringLiteral("同意台帳");
inline const QString kSortKey = QStringLiteral("ソート順");

class frmDoui : public ConsentSideScreen {
public:
    explicit frmDoui(controls::Platform& platform);

    controls::CheckBox chkEachSejyutusya{QStringLiteral("chkEachSejyutusya"),
                                         QStringLiteral("施術師ごとにシールを作成する")};
    controls::CheckBox chkIsiMatome{QStringLiteral("chkIsiMatome"), QStringLiteral("同じ医師は１枚にする")};
    controls::Frame Frame1{QStringLiteral("Frame1"), QStringLiteral("施術者検索")};
    controls::ComboBox cbSejyutsu{QStringLiteral("cbSejyutsu")};
    controls::CheckBox chkChushi{QStringLiteral("chkChushi"), QStringLiteral("管理終了の施術者も表示する")};

    // Keeps the connection and the mode and sets the screen up: 0, or -1 when the
    // staff list could not be filled or a fault occurred (the screen opens all the same).
    short iInit(data::cT_ADODB& db, short mode);

    // Reads the conditions and the date range: 0, or -1 after a fault.
    short iGetPrintCondition() override;
    // The extraction on the screen's connection (see iGetKanjaData of consent_extract.h).
    qint32 iGetKanjaData() override;
    // Writes "同意データ.csv" from the rows of the last run.
    void saveCSVdoui();
    // Prints (not 0) or previews (0) the ledger.
    void iPrintLedger(short iPrint);

    // The settings file that keeps the sort order.
    static QString csSortIniPath();
    void readSortOrder();
    void saveSortOrder();
    // Fills cbSejyutsu from the staff list: 0, or -1 after its box.
    short vSetCbSejyutsu();

    void btn_StaffSelect_Click();
    void imNum_StaffNo_KeyDown(int& keyCode, int shift);

protected:
    void Form_KeyDown(int& keyCode, int shift) override;
    // Seal mode with "同じ医師は１枚にする": one entry a doctor; else one a row.
    void handOverRows(HandOver& h) override;

private:
    void selectStaff(qint32 nIDNo);
};

}  // namespace selection
