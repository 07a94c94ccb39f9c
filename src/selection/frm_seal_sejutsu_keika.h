#pragma once
// frmSeal_SejutsuKeika: the progress report screen. The operator gives a month range
// and optionally a staff member; the addressees of the reports of that range, of the
// kind the seal screen shows, are handed back to it.

#include "selection/keika_extract.h"
#include "selection/side_screen.h"

namespace selection {

class frmSeal_SejutsuKeika : public ConsentSideScreen {
public:
    explicit frmSeal_SejutsuKeika(controls::Platform& platform);

    controls::Frame fraStaff{QStringLiteral("fraStaff"), QStringLiteral("担当施術者検索")};
    controls::TextInput txtStaffName{QStringLiteral("txtStaffName")};
    controls::Label laTitle4{QStringLiteral("laTitle(4)"), QStringLiteral("～")};
    controls::DateInput imD_Kigen_To{QStringLiteral("imD_Kigen_To")};

    // The conditions of the last run.
    KeikaCondition keika;

    // Keeps the connection and the mode (0 doctors, 1 care managers, 2 medical
    // institutions, 3 facilities): 0, or -1 when the staff check failed.
    short iInit(data::cT_ADODB& db, short mode);
    // Reads the months and the staff number: 0, or -1 after a fault.
    short iGetPrintCondition() override;
    // The extraction (see iGetKeikaData).
    qint32 iGetKanjaData() override;

    void btn_StaffSelect_Click();
    // The change of imNum_StaffNo's value: the staff member's name for a number above 0.
    void imNum_StaffNo_Change();

protected:
    void Form_KeyDown(int& keyCode, int shift) override;
};

}  // namespace selection
