#include "selection/side_screen.h"

#include "app/globals.h"
#include "app/messages.h"
#include "app/system_settings.h"
#include "base/conversions.h"
#include "dialogs/online_help.h"

namespace selection {

using controls::Pointer;

namespace {

// A key of the system settings file as a number; a missing key is 0 and says nothing.
short settingFlag(const QString& key)
{
    return static_cast<short>(base::Val(app::csGetSystemSetting(key, false).value_or(QString())));
}

}  // namespace

ConsentSideScreen::ConsentSideScreen(QString name, controls::Platform& platform) : Screen(std::move(name), platform)
{
    KeyPreview = true;
    const QStringList sel{QStringLiteral("マッサージ"),
                          QStringLiteral("変形徒手矯正術"),
                          QStringLiteral("温あん法"),
                          QStringLiteral("温あん法・電気光線器具"),
                          QStringLiteral("はり"),
                          QStringLiteral("きゅう"),
                          QStringLiteral("はり・きゅう併用？？？"),
                          QStringLiteral("はり・きゅう")};
    for (int i = 0; i < sel.size(); ++i) {
        opt_Sel.emplace_back(QStringLiteral("opt_Sel(%1)").arg(i), sel[i]);
        opt_Sel.back().joinGroup(&groupSel_);
        opt_Sel.back().setVisible(i <= 1 || i == 7);
        opt_Sel.back().Click = [this, i] {
            // The kind sets its usual period; the operator may choose another after.
            if (i == 1)
                optKikan[2].setValue(true);
            else if (i == 0 || i == 7)
                optKikan[0].setValue(true);
        };
    }
    const QStringList kikan{QStringLiteral("３ヶ月"), QStringLiteral("６ヶ月"), QStringLiteral("1ヶ月")};
    for (int i = 0; i < kikan.size(); ++i) {
        optKikan.emplace_back(QStringLiteral("optKikan(%1)").arg(i), kikan[i]);
        optKikan.back().joinGroup(&groupKikan_);
    }
    optKikan[0].setValue(true);
    const QStringList kijun{QStringLiteral("同意日"), QStringLiteral("要加療期間"),
                            QStringLiteral("初療年月日(期間毎)")};
    for (int i = 0; i < kijun.size(); ++i) {
        optKijun.emplace_back(QStringLiteral("optKijun(%1)").arg(i), kijun[i]);
        optKijun.back().joinGroup(&groupKijun_);
        optKijun.back().setVisible(false);
    }
    optKijun[0].setValue(true);
    laTitle1.setVisible(false);
    chkKijunDisp.setValue(1);
    chkStaff.setVisible(false);
    btnPrint1.setTag(QStringLiteral("印刷物のプレビューを表示します。"));
    btnPrint2.setTag(QStringLiteral("同意書更新の設定を登録します。"));
    btnPrint6.setTag(QStringLiteral("処理を終了します。"));
    btnPrint2.setVisible(false);
    mnF03.setEnabled(false);
    mnSort.emplace_back(QStringLiteral("mnSort(0)"), QStringLiteral("同意期限"));
    mnSort.emplace_back(QStringLiteral("mnSort(1)"), QStringLiteral("患者ID"));
    mnSort[0].setChecked(true);

    btnPrint2.Click = [this] { runHandOver(); };
    btnPrint6.Click = [this] { Unload(); };
    mnF12.Click = [this] { Unload(); };
    mnSort[0].Click = [this] { mnSort_Click(0); };
    mnSort[1].Click = [this] { mnSort_Click(1); };
    mnDispHelp.Click = [this] { mnDispHelp_Click(); };
}

controls::Button& ConsentSideScreen::btnPrint(int index)
{
    switch (index) {
    case 0:
        return btnPrint0;
    case 1:
        return btnPrint1;
    case 2:
        return btnPrint2;
    case 6:
        return btnPrint6;
    default:
        throw base::VbError(340, QStringLiteral("コントロール配列の要素 '%1' は存在しません。").arg(index));
    }
}

void ConsentSideScreen::initCommon(data::cT_ADODB& db, short mode)
{
    db_ = &db;
    cond.iMode = mode;
}

void ConsentSideScreen::setFirstOfMonth(controls::DateInput& input)
{
    const QDate today = platform().today();
    input.setValue(QDate(today.year(), today.month(), 1));
}

void ConsentSideScreen::loadOffice()
{
    bool ok = false;
    data::loadInitCorp(corpInfo, ok);
}

void ConsentSideScreen::readSettingFlags()
{
    cond.iIsiTel = settingFlag(QStringLiteral("同意更新医師TEL出力"));
    cond.iDouiRec1 = settingFlag(QStringLiteral("同意記録1出力"));
}

short ConsentSideScreen::iGetCbStaffData()
{
    if (!db_) {
        sErrMsg = QStringLiteral("iGetCbStaffData()でエラー");
        return -1;
    }
    return selection::iGetCbStaffData(*db_, aStaff, sErrMsg);
}

short ConsentSideScreen::reportStaffListStatus(short status)
{
    if (status == 1) {
        app::msgBox(QStringLiteral("スタッフが存在しません。メイン画面に戻ります"), controls::BoxStyle::Information,
                    kStaffListTitle);
        return -1;
    }
    if (status != 0) {
        app::msgBox(QStringLiteral("スタッフデータの取得に失敗しました。"), controls::BoxStyle::Critical,
                    kStaffListTitle);
        return -1;
    }
    return 0;
}

qint32 ConsentSideScreen::extractRows(const std::function<qint32(data::cT_ADODB&, ConsentRows&)>& extract)
{
    if (!db_) {
        sErrMsg = QStringLiteral("iGetKanjaDataでエラー");
        return -1;
    }
    ConsentRows rows = aKanja;
    const qint32 status = extract(*db_, rows);
    if (status == 0) {
        aKanja = std::move(rows);
        nデータ数 = static_cast<short>(aKanja.size());
    }
    return status;
}

void ConsentSideScreen::handOverRows(HandOver& h) { appendPerRow(aKanja, h); }

short ConsentSideScreen::iSetSealData()
{
    setMousePointer(Pointer::Hourglass);
    if (iGetPrintCondition() != 0) {
        app::msgBox(QStringLiteral("印刷条件の取得に失敗しました。"), controls::BoxStyle::Information, QString());
        setMousePointer(Pointer::Normal);
        return -1;
    }
    const qint32 status = iGetKanjaData();
    if (status != 0) {
        setMousePointer(Pointer::Normal);
        return status == 2 ? 2 : -1;
    }
    HandOver h{sIshiID_SEAL, sTantouID_SEAL, sTantouName_SEAL};
    handOverRows(h);
    sIshiID_SEAL = h.sIshiID_SEAL;
    sTantouID_SEAL = h.sTantouID_SEAL;
    sTantouName_SEAL = h.sTantouName_SEAL;
    return iEndHandOver();
}

short ConsentSideScreen::iEndHandOver()
{
    if (db_->iDisConnect() != 0) {
        sErrMsg = db_->sErrMsg();
        setMousePointer(Pointer::Normal);
        return -1;
    }
    return 0;
}

void ConsentSideScreen::runHandOver()
{
    setMousePointer(Pointer::Hourglass);
    if (iSetSealData() == 0) {
        setMousePointer(Pointer::Normal);
        Unload();
        return;
    }
    setMousePointer(Pointer::Normal);
    app::msgBox(sErrMsg, controls::BoxStyle::Information, QString());
}

void ConsentSideScreen::mnDispHelp_Click()
{
    setMousePointer(Pointer::Hourglass);
    dialogs::vDispOnlineHelp(1);
    setMousePointer(Pointer::Normal);
}

void ConsentSideScreen::mnSort_Click(int index)
{
    mnSort[0].setChecked(false);
    mnSort[1].setChecked(false);
    mnSort[static_cast<size_t>(index)].setChecked(true);
    cond.iSort = static_cast<short>(index);
}

}  // namespace selection
