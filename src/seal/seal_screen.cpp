#include "seal/seal_screen.h"

#include "app/frm_back.h"
#include "app/globals.h"
#include "app/messages.h"
#include "app/system_settings.h"
#include "base/conversions.h"
#include "base/files.h"
#include "seal/kana_index.h"

namespace seal {

using namespace controls;

namespace {

const QString kScreenName = QStringLiteral("frmPrintシール");
const QString kLoadFailed = QStringLiteral("画面起動中にエラーが発生しました。");

QString indexed(const char* name, int i) { return QString::fromLatin1(name) + u'(' + QString::number(i) + u')'; }

// Top of each addressee kind's option button, by its place on the screen.
constexpr int kKindTop0 = 240;
constexpr int kKindStep = 300;

}  // namespace

frmPrintシール::frmPrintシール(Platform& platform) : Screen(kScreenName, platform)
{
    setCaption(QStringLiteral("シール印刷"));
    KeyPreview = true;
    buildControls();
    bindHandlers();
    bindPrintHandlers();
    bindSideScreenHandlers();
    bindHelpHandlers();
}

std::unique_ptr<Screen> makeSealScreen(Platform& platform) { return std::make_unique<frmPrintシール>(platform); }

void frmPrintシール::buildControls()
{
    for (int i = 0; i < 9; ++i)
        optMst.emplace_back(indexed("optMst", i), kAddresseeKinds[static_cast<size_t>(i)].caption);
    for (int i = 0; i < 7; ++i)
        optKeisho.emplace_back(indexed("optKeisho", i), kHonorificCaptions[static_cast<size_t>(i)]);
    for (int i = 0; i < 2; ++i) opPMode.emplace_back(indexed("opPMode", i), kPrintModeCaptions[static_cast<size_t>(i)]);
    for (int i = 0; i < 6; ++i)
        optAdd.emplace_back(indexed("optAdd", i), kPatientAddresses[static_cast<size_t>(i)].caption);
    for (int i = 0; i < 2; ++i)
        optAddHokenja.emplace_back(indexed("optAddHokenja", i), kHokenjaAddressCaptions[static_cast<size_t>(i)]);
    for (int i = 0; i < 2; ++i)
        optAddKeamane.emplace_back(indexed("optAddKeamane", i), kCaremaneAddressCaptions[static_cast<size_t>(i)]);
    for (int i = 0; i < 2; ++i) numtAge.emplace_back(indexed("numtAge", i), 0, 200);
    for (int i = 0; i < 10; ++i) cmdAnk.emplace_back(indexed("cmdAnk", i), kKanaCaptions[static_cast<size_t>(i)]);
    btnAllKai.emplace_back(indexed("btnAllKai", 0), QStringLiteral("全解除"));
    btnAllKai.emplace_back(indexed("btnAllKai", 1), QStringLiteral("リストクリア"));
    for (int i = 0; i < 3; ++i) picFtType.emplace_back(indexed("picFtType", i));
    btnJisseki.emplace_back(indexed("btnJisseki", 0), QStringLiteral("印刷"));
    btnJisseki.emplace_back(indexed("btnJisseki", 1), QStringLiteral("ﾌﾟﾚﾋﾞｭｰ"));
    mnCKOnOff.emplace_back(indexed("mnCKOnOff", 0), QStringLiteral("印刷対象を変更しても残す"));
    mnCKOnOff.emplace_back(indexed("mnCKOnOff", 1), QStringLiteral("印刷対象を変更したら消す"));
    mnHokenjaDisp.emplace_back(indexed("mnHokenjaDisp", 0), QStringLiteral("患者データより抽出"));
    mnHokenjaDisp.emplace_back(indexed("mnHokenjaDisp", 1), QStringLiteral("全表示"));

    // Groups: each control array is one group of option buttons.
    for (auto& b : optMst) b.joinGroup(&groups_[0]);
    for (auto& b : optKeisho) b.joinGroup(&groups_[1]);
    for (auto& b : opPMode) b.joinGroup(&groups_[2]);
    for (auto& b : optAdd) b.joinGroup(&groups_[3]);
    for (auto& b : optAddHokenja) b.joinGroup(&groups_[4]);
    for (auto& b : optAddKeamane) b.joinGroup(&groups_[5]);

    // The state the screen is designed with.
    optMst[0].setValue(true);
    optKeisho[0].setValue(true);
    opPMode[0].setValue(true);
    optAdd[0].setValue(true);
    optAddHokenja[0].setValue(true);
    optAddKeamane[0].setValue(true);
    for (size_t pos = 0; pos < kOnScreenKindOrder.size(); ++pos)
        optMst[static_cast<size_t>(kOnScreenKindOrder[pos])].setTop(kKindTop0 + kKindStep * static_cast<int>(pos));
    opPMode[0].setTop(240);
    opPMode[1].setTop(480);
    // The application-form address is never offered: hidden, and outside its frame.
    optAdd[4].setVisible(false);
    optAdd[4].setLeft(-2000);
    txtEtc.setText(kFreeHonorificDefault);
    txtEtc.setEnabled(false);
    fraAddHokenja.setVisible(false);
    fraAddKeamane.setVisible(false);
    imJissekiYm.setEnabled(false);
    // The month control holds the current month from the start, so that the first
    // search, which runs before the load sets it again, has a month to count in.
    settingJissekiYm_ = true;
    imJissekiYm.setValue(platform().today());
    settingJissekiYm_ = false;
    fraJyokenHojyo.setEnabled(false);
    LblJyoken.setEnabled(false);
    cmbKaisyu.setEnabled(false);
    frmHutou.setVisible(false);
    fpSpread_2x6.setVisible(false);
    fpSpread_3x10.setVisible(false);
    lblEnter.setVisible(false);
    btnAllKai[1].setEnabled(false);
    btnDouishoList.setEnabled(false);
    mnDouiSet.setEnabled(false);
    btnSejutsuKeika.setEnabled(false);
    fpSpread02.setCheckBoxColumn(1);
    numMaisu.setText(QStringLiteral("1"));

    // Focus order.
    for (short v : kOnScreenKindOrder) add(optMst[static_cast<size_t>(v)]);
    for (auto& b : optKeisho) add(b);
    add(txtEtc);
    for (auto& b : opPMode) add(b);
    add(fraAdd);
    for (auto& b : optAdd) add(b);
    add(fraAddHokenja);
    for (auto& b : optAddHokenja) add(b);
    add(fraAddKeamane);
    for (auto& b : optAddKeamane) add(b);
    add(txtIDNo);
    add(txtName);
    add(txtNameKana);
    add(fraAge);
    for (auto& n : numtAge) add(n);
    add(fraBirth);
    add(numBirth);
    add(btnDisp);
    add(btnClr);
    for (auto& b : cmdAnk) add(b);
    add(fraJisseki);
    add(chkJisseki);
    add(chkEndKanja);
    add(imJissekiYm);
    add(fraJyokenHojyo);
    add(LblJyoken);
    add(cmbKaisyu);
    add(fpSpread02);
    add(lstCheck);
    add(chkCheck);
    add(chkEnter);
    add(lblEnter);
    add(btnAllSel);
    for (auto& b : btnAllKai) add(b);
    add(cmbSealType);
    add(fraPosition);
    add(fpSpread01);
    add(fpSpread_2x6);
    add(fpSpread_3x10);
    add(frmHutou);
    add(cmbHutou);
    for (auto& p : picFtType) add(p);
    add(fraMaisu);
    add(numMaisu);
    add(lblMaisu);
    add(cboKyakutyuList);
    add(btnAddKyakutyu);
    for (auto& b : btnJisseki) add(b);
    add(btnDouishoList);
    add(btnSejutsuKeika);
    add(cmdMenu);
    add(btnExit);
    add(Status);
    for (MenuItem* m : {&mnDouiSet, &mnF04, &mnMenuPrint, &mnMenuPreview, &mnMenuReturn, &mnMenuExit}) add(*m);
    for (auto& m : mnCKOnOff) add(m);
    for (auto& m : mnHokenjaDisp) add(m);
    for (MenuItem* m : {&mnCheckOn, &mnEnterOn, &mnVer, &mnDispHelp}) add(*m);
}

void frmPrintシール::bindHandlers()
{
    for (short k = 0; k < 9; ++k) optMst[static_cast<size_t>(k)].Click = [this, k] { optMst_Click(k); };
    for (auto& b : optKeisho) b.Click = [this] { optKeisho_Click(); };
    for (int i = 0; i < 2; ++i) opPMode[static_cast<size_t>(i)].Click = [this, i] { opPMode_Click(i); };
    // A click in the free text chooses the free honorific; Enter in it applies the text.
    txtEtc.GotFocus = [this] { optKeisho[6].setValue(true); };
    txtEtc.KeyDown = [this](int& keyCode, int) {
        if (keyCode == Key::Return) optKeisho_Click();
    };
    cmbSealType.Click = [this] { cmbSealType_Click(); };
    cmbHutou.Click = [this] { cmbHutou_Click(); };
    cmbKaisyu.Click = [this] { cmbKaisyu_Click(); };
    chkJisseki.Click = [this] { chkJisseki_Click(); };
    imJissekiYm.Change = [this] {
        if (!settingJissekiYm_) imJissekiYm_EntryEnd();
    };
    for (int i = 0; i < 2; ++i) mnCKOnOff[static_cast<size_t>(i)].Click = [this, i] { mnCKOnOff_Click(i); };
    for (int i = 0; i < 2; ++i) mnHokenjaDisp[static_cast<size_t>(i)].Click = [this, i] { mnHokenjaDisp_Click(i); };
    mnCheckOn.Click = [this] { mnCheckOn_Click(); };
    mnEnterOn.Click = [this] { mnEnterOn_Click(); };
    mnF04.Click = [this] { mnF04_Click(); };
    mnMenuReturn.Click = [this] { mnMenuReturn_Click(); };
    cmdMenu.Click = [this] { mnMenuReturn_Click(); };
    mnMenuExit.Click = [this] { mnMenuExit_Click(); };
    btnExit.Click = [this] { mnMenuExit_Click(); };
    btnDisp.Click = [this] { btnDisp_Click(); };
    btnClr.Click = [this] { btnClr_Click(); };
    for (int i = 0; i < 10; ++i) cmdAnk[static_cast<size_t>(i)].Click = [this, i] { cmdAnk_Click(i); };
    btnAddKyakutyu.Click = [this] { btnAddKyakutyu_Click(); };
    chkCheck.Click = [this] { chkCheck_Click(); };
    chkEnter.Click = [this] { chkEnter_Click(); };
    btnAllSel.Click = [this] { btnAllSel_Click(); };
    for (int i = 0; i < 2; ++i) btnAllKai[static_cast<size_t>(i)].Click = [this, i] { btnAllKai_Click(i); };
    fpSpread02.ButtonClicked = [this](int col, int row, int buttonDown) {
        fpSpread02_ButtonClicked(col, row, buttonDown);
    };
}

bool frmPrintシール::markerExists(const QString& fileName) const
{
    return base::bFileExists(app::gsAppPath + QStringLiteral("\\") + fileName);
}

void frmPrintシール::applyMgnt() { btnSejutsuKeika.setVisible(markerExists(QStringLiteral("MGNT.CID"))); }

void frmPrintシール::applyFras()
{
    if (!markerExists(QStringLiteral("FRAS.CID"))) return;
    // Labels only: the envelope choice goes, and the label choice sits in the middle.
    opPMode[1].setVisible(false);
    opPMode[0].setTop(360);
}

void frmPrintシール::applySgrb()
{
    if (!markerExists(QStringLiteral("SGRB.CID"))) return;
    fraJyokenHojyo.setEnabled(true);
    cmbKaisyu.setEnabled(true);
    LblJyoken.setEnabled(true);
    for (size_t i = 0; i < kCollectionFilters.size(); ++i) cmbKaisyu.AddItem(kCollectionFilters[i].listText);
    cmbKaisyu.setListIndex(0);
}

void frmPrintシール::Form_Load()
{
    app::Handler h(app::HandlerKind::StopAndClose, app::Report::patternA(kLoadFailed),
                   {.closeState = &job.nCloseState});
    h([&] {
        setMousePointer(Pointer::Hourglass);
        job.nCloseState = 0;
        job.nCheckCount = 0;

        txtName.setText(QString());
        txtIDNo.setText(QString());
        txtNameKana.setText(QString());
        lstCheck.Clear();
        // Grey: the order list is not in use.
        lstCheck.setBackColor(Colors::ScrollBars);

        job.bCheckOrder = kFalse;
        job.bEnterAdd = kFalse;
        job.bPicked = kFalse;
        job.nMstShown = -1;

        app::gsAppPath = base::csChangeToDir(app::gsAppPath);
        app::readSiteKey();

        job.sWaType =
            base::CStr(base::Val(app::csGetSystemSetting(QStringLiteral("和タイプ"), false).value_or(QString())));
        job.sSyokaiSetting = app::csGetSystemSetting(QStringLiteral("紹介者"), false).value_or(QString());

        if (job.sSyokaiSetting == QLatin1String("0") || job.sSyokaiSetting.isEmpty()) optMst[3].setEnabled(false);

        job.nMst = 0;
        job.nKeisho = 0;
        job.sKeisho = kHonorificCaptions[0];
        optKeisho[0].setValue(true);
        numMaisu.setText(QStringLiteral("1"));
        job.nMaisu = 1;
        numtAge[0].setText(QStringLiteral("1"));
        numtAge[1].setText(QStringLiteral("150"));
        numBirth.setText(QStringLiteral("0"));

        for (Grid* g : {&fpSpread01, &fpSpread_2x6, &fpSpread_3x10}) markStartCell(*g, 1, 1);
        job.nStartPos = 1;
        fpSpread02.setMaxRows(0);

        picFtType[0].setVisible(true);
        picFtType[1].setVisible(false);
        picFtType[2].setVisible(false);

        // Only the tick can be edited.
        for (int col = 2; col <= 20; ++col) fpSpread02.setColLocked(col, true);

        for (size_t i = 0; i < kSheetTypes.size(); ++i)
            cmbSealType.AddItem(kSheetTypes[i].listText, static_cast<int>(i));
        cmbSealType.setListIndex(0);
        fpSpread01.setVisible(true);
        fpSpread_2x6.setVisible(false);

        for (int i = 0; i < kEnvelopeListRows; ++i)
            cmbHutou.AddItem(kEnvelopeTypes[static_cast<size_t>(i)].listText, i);
        cmbHutou.setListIndex(0);

        if (job.sWaType == QLatin1String("5")) {
            // No care managers here: the two below move up into the gap.
            optMst[4].setVisible(false);
            optMst[6].setTop(optMst[5].top());
            optMst[5].setTop(optMst[4].top());
        }

        applyMgnt();
        loadPrintSettings();

        btnDisp_Click();
        setMousePointer(Pointer::Normal);

        if (app::gnRunMode == 1000) {
            cmdMenu.setEnabled(false);
            mnMenuReturn.setEnabled(false);
        }

        getCorpData_SEAL();
        cmbHutou.setListIndex(0);
        loadFootnotes();

        settingJissekiYm_ = true;
        imJissekiYm.setValue(platform().today());
        settingJissekiYm_ = false;

        applyFras();
        applySgrb();
    });
}

void frmPrintシール::Form_Activate()
{
    // A failure during the load closes the screen as soon as it is shown.
    if (job.nCloseState == 1) Unload();
}

void frmPrintシール::Form_Unload(int& cancel)
{
    const QString menu = app::gsAppPath + QStringLiteral("\\") + QStringLiteral("Main.exe");
    // The return command starts the menu plainly; the end command and the close box
    // hand over with " 2"; run mode 1000 was started without the menu.
    if (job.nReturnToMenu != 0)
        platform().startProgram(menu, WindowStyle::NormalFocus);
    else if (app::gnRunMode != 1000)
        platform().startProgram(menu + QStringLiteral(" 2"), WindowStyle::NormalFocus);
    platform().endProcess(0);
}

void frmPrintシール::mnMenuReturn_Click()
{
    job.nReturnToMenu = 1;
    Unload();
}

void frmPrintシール::mnMenuExit_Click()
{
    job.nReturnToMenu = 0;
    Unload();
}

void frmPrintシール::Form_KeyPress(int& keyAscii)
{
    if (keyAscii != Key::Return) return;
    app::Handler h(app::HandlerKind::Resume,
                   app::Report::patternA(QStringLiteral("キー入力時にエラーが発生しました。")));
    h([&] { onEnter(); });
}

void frmPrintシール::onEnter()
{
    Control* focus = ActiveControl();
    if (!focus) return;
    app::Handler h(app::HandlerKind::Stop, app::Report::patternA(QStringLiteral("エラーが発生しました。")));
    h([&] {
        if (focus == &txtIDNo) {
            if (!txtIDNo.text().isEmpty()) {
                if (job.bEnterAdd) {
                    QString id = txtIDNo.text();
                    Add_Enter(id);
                }
                btnDisp_Click();
            }
        } else if (focus == &txtName || focus == &txtNameKana) {
            if (!static_cast<TextInput*>(focus)->text().isEmpty()) {
                btnDisp_Click();
                if (fpSpread02.MaxRows() >= 1) {
                    SetFocus(fpSpread02);
                    fpSpread02.SetActiveCell(1, 1);
                }
            }
        } else if (focus == &fpSpread02) {
            addChk_forSPSeat();
        } else if (focus == &imJissekiYm) {
            imJissekiYm_EntryEnd();
        }
    });
    h([&] {
        // Enter moves on like Tab in the inputs, option buttons, lists and check boxes.
        switch (focus->kind()) {
        case Kind::TextBox:
        case Kind::ImText:
        case Kind::ImNumber:
        case Kind::ImDate:
        case Kind::OptionButton:
        case Kind::ComboBox:
        case Kind::CheckBox:
            platform().sendKey(QStringLiteral("{TAB}"));
            platform().doEvents();
            break;
        default:
            break;
        }
    });
}

}  // namespace seal
