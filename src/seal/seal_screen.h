#pragma once
// The seal screen frmPrintシール: the one working screen of the program. It owns the
// controls by their names, the state of the run (SealJob) and the rows in memory, and
// its handlers hold the behaviour: start-up and leaving, the addressee kinds, the
// search and the kana index, the saved settings, and the working grid fpSpread02.

#include "controls/buttons.h"
#include "controls/grid.h"
#include "controls/inputs.h"
#include "controls/lists.h"
#include "controls/screen.h"
#include "controls/static_controls.h"
#include "extract/addressee_data.h"
#include "extract/fill_list.h"
#include "extract/label_records.h"
#include "seal/print_settings.h"
#include "seal/seal_job.h"
#include "seal/text_combo.h"

#include <array>
#include <deque>
#include <memory>

namespace seal {

class frmPrintシール : public controls::Screen {
public:
    explicit frmPrintシール(controls::Platform& platform);

    // --- addressee kind, honorific, print mode, addresses ---------------------------
    std::deque<controls::OptionButton> optMst;  // by value; on screen 0-6, 8, 7
    std::deque<controls::OptionButton> optKeisho;
    controls::TextInput txtEtc{QStringLiteral("txtEtc"), controls::Kind::TextBox};
    std::deque<controls::OptionButton> opPMode;
    controls::Frame fraAdd{QStringLiteral("fraAdd"), QStringLiteral("印字住所")};
    std::deque<controls::OptionButton> optAdd;
    controls::Frame fraAddHokenja{QStringLiteral("fraAddHokenja"), QStringLiteral("印字住所")};
    std::deque<controls::OptionButton> optAddHokenja;
    controls::Frame fraAddKeamane{QStringLiteral("fraAddKeamane"), QStringLiteral("印字住所")};
    std::deque<controls::OptionButton> optAddKeamane;

    // --- search conditions -------------------------------------------------------
    controls::TextInput txtIDNo{QStringLiteral("txtIDNo")};
    controls::TextInput txtName{QStringLiteral("txtName")};
    controls::TextInput txtNameKana{QStringLiteral("txtNameKana")};
    controls::Frame fraAge{QStringLiteral("fraAge"), QStringLiteral("年齢")};
    std::deque<controls::NumberInput> numtAge;
    controls::Frame fraBirth{QStringLiteral("fraBirth"), QStringLiteral("誕生月")};
    controls::NumberInput numBirth{QStringLiteral("numBirth"), 0, 12};
    std::deque<controls::Button> cmdAnk;
    controls::Button btnDisp{QStringLiteral("btnDisp"), QStringLiteral("検索")};
    controls::Button btnClr{QStringLiteral("btnClr"), QStringLiteral("条件クリア")};
    controls::Frame fraJisseki{QStringLiteral("fraJisseki"), QStringLiteral("データ抽出条件")};
    controls::CheckBox chkJisseki{QStringLiteral("chkJisseki"), QStringLiteral("実績データから抽出")};
    controls::CheckBox chkEndKanja{QStringLiteral("chkEndKanja"), QStringLiteral("施術終了も表示")};
    controls::DateInput imJissekiYm{QStringLiteral("imJissekiYm"), QStringLiteral("yyyy/MM")};
    controls::Frame fraJyokenHojyo{QStringLiteral("fraJyokenHojyo"), QStringLiteral("データ抽出条件（補助）")};
    controls::Label LblJyoken{QStringLiteral("LblJyoken"), QStringLiteral("回収条件")};
    controls::ComboBox cmbKaisyu{QStringLiteral("cmbKaisyu")};

    // --- the lists ------------------------------------------------------------------
    controls::Grid fpSpread02{QStringLiteral("fpSpread02"), extract::kGridCols, 0};
    controls::ListBox lstCheck{QStringLiteral("lstCheck")};
    controls::CheckBox chkCheck{QStringLiteral("chkCheck"), QStringLiteral("チェック順で印刷")};
    controls::CheckBox chkEnter{QStringLiteral("chkEnter"), QStringLiteral("Enterキー追加モード")};
    controls::Label lblEnter{QStringLiteral("lblEnter"), QStringLiteral("※ID入力後、Enterキーでリスト追加")};
    controls::Button btnAllSel{QStringLiteral("btnAllSel"), QStringLiteral("全選択")};
    std::deque<controls::Button> btnAllKai;

    // --- sheet, envelope, start cell, copies, footnote ------------------------------
    controls::ComboBox cmbSealType{QStringLiteral("cmbSealType")};
    controls::Frame fraPosition{QStringLiteral("fraPosition"), QStringLiteral("開始印字位置")};
    controls::Grid fpSpread01{QStringLiteral("fpSpread01"), 2, 5};
    controls::Grid fpSpread_2x6{QStringLiteral("fpSpread_2x6"), 2, 6};
    controls::Grid fpSpread_3x10{QStringLiteral("fpSpread_3x10"), 3, 10};
    controls::Frame frmHutou{QStringLiteral("frmHutou"), QStringLiteral("封筒選択")};
    controls::ComboBox cmbHutou{QStringLiteral("cmbHutou")};
    std::deque<controls::Picture> picFtType;
    controls::Frame fraMaisu{QStringLiteral("fraMaisu"), QStringLiteral("連続印刷枚数")};
    controls::NumberInput numMaisu{QStringLiteral("numMaisu"), 1, 12};
    controls::Label lblMaisu{QStringLiteral("lblMaisu"), QStringLiteral("枚")};
    TextComboBox cboKyakutyuList{QStringLiteral("cboKyakutyuList")};
    controls::Button btnAddKyakutyu{QStringLiteral("btnAddKyakutyu"), QStringLiteral("脚注追加")};

    // --- commands -----------------------------------------------------------------
    std::deque<controls::Button> btnJisseki;
    controls::Button btnDouishoList{QStringLiteral("btnDouishoList"), QStringLiteral("同意書更新ﾘｽﾄからｼｰﾙ作成")};
    controls::Button btnSejutsuKeika{QStringLiteral("btnSejutsuKeika"), QStringLiteral("施術経過より抽出")};
    controls::Button cmdMenu{QStringLiteral("cmdMenu"), QStringLiteral("メインメニュー")};
    controls::Button btnExit{QStringLiteral("btnExit"), QStringLiteral("戻る")};
    controls::StatusBar Status{QStringLiteral("Status")};

    // --- menus --------------------------------------------------------------------
    controls::MenuItem mnDouiSet{QStringLiteral("mnDouiSet"), QStringLiteral("同意更新設定"), QStringLiteral("F3")};
    controls::MenuItem mnF04{QStringLiteral("mnF04"), QStringLiteral("抽出"), QStringLiteral("F4")};
    controls::MenuItem mnMenuPrint{QStringLiteral("mnMenuPrint"), QStringLiteral("印刷"), QStringLiteral("F5")};
    controls::MenuItem mnMenuPreview{QStringLiteral("mnMenuPreview"), QStringLiteral("プレビュー"),
                                     QStringLiteral("F9")};
    controls::MenuItem mnMenuReturn{QStringLiteral("mnMenuReturn"), QStringLiteral("メインメニュー"),
                                    QStringLiteral("Shift+F12")};
    controls::MenuItem mnMenuExit{QStringLiteral("mnMenuExit"), QStringLiteral("戻る"), QStringLiteral("F12")};
    std::deque<controls::MenuItem> mnCKOnOff;
    std::deque<controls::MenuItem> mnHokenjaDisp;
    controls::MenuItem mnCheckOn{QStringLiteral("mnCheckOn"), QStringLiteral("常にチェックを入れる")};
    controls::MenuItem mnEnterOn{QStringLiteral("mnEnterOn"), QStringLiteral("常にチェックを入れる")};
    controls::MenuItem mnVer{QStringLiteral("mnVer"), QStringLiteral("ﾊﾞｰｼﾞｮﾝ情報")};
    controls::MenuItem mnDispHelp{QStringLiteral("mnDispHelp"), QStringLiteral("オンラインヘルプ(&M)")};
    // The menu titles and submenus that hold the items above; they have no command.
    controls::MenuItem mnFunc{QStringLiteral("mnFunc"), QStringLiteral("機能(&F)")};
    controls::MenuItem mnSettei{QStringLiteral("mnSettei"), QStringLiteral("設定(&E)")};
    controls::MenuItem mnSetteiCK{QStringLiteral("mnSetteiCK"), QStringLiteral("CK(印刷対象チェック)")};
    controls::MenuItem mnSetteiHokenja{QStringLiteral("mnSetteiHokenja"), QStringLiteral("種類：保険者データ")};
    controls::MenuItem mnSetteiCheck{QStringLiteral("mnSetteiCheck"), QStringLiteral("チェック順で印刷")};
    controls::MenuItem mnSetteiEnter{QStringLiteral("mnSetteiEnter"), QStringLiteral("Enterキー")};
    controls::MenuItem mnHelp{QStringLiteral("mnHelp"), QStringLiteral("ヘルプ(&H)")};

    // The state of the run and the rows held in memory.
    SealJob job;
    extract::AddresseeData rows;

    // --- handlers -----------------------------------------------------------------
    void optMst_Click(short K);
    void optKeisho_Click();
    void opPMode_Click(int index);
    void cmbSealType_Click();
    void cmbHutou_Click();
    void cmbKaisyu_Click();
    void chkJisseki_Click();
    // The end of an entry in imJissekiYm, and Enter in it.
    void imJissekiYm_EntryEnd();
    void mnCKOnOff_Click(int index);
    void mnHokenjaDisp_Click(int index);
    void mnCheckOn_Click();
    void mnEnterOn_Click();
    void mnF04_Click();
    void mnMenuReturn_Click();
    void mnMenuExit_Click();
    void btnDisp_Click();
    void btnClr_Click();
    void cmdAnk_Click(int index);
    void btnAddKyakutyu_Click();
    void chkCheck_Click();
    void chkEnter_Click();
    void btnAllSel_Click();
    void btnAllKai_Click(int index);
    void clearTicks();
    // The tick of a row of fpSpread02, kept in step with lstCheck while the order counts.
    void fpSpread02_ButtonClicked(int col, int row, int buttonDown);
    // Enter in txtIDNo while adding by Enter: tick the addressee with that number.
    void Add_Enter(QString& sID);
    // Enter in fpSpread02: tick the active row and move to the next visible one.
    void addChk_forSPSeat();
    void getNextRow(int row, int& nextRow);

    // --- routines -----------------------------------------------------------------
    // The search: bounds from the controls, patients, the kind's rows, the fill.
    void vDispData();
    // The patient extraction: -1, or 0 when nothing was extracted.
    short RiyoushaMemorySet();
    // The rows of the current kind, read once per run; -1, or 0 when a read failed in
    // a way that closes the screen.
    short getMstData_SEAL();
    // The office's own row for the sender block of the labels.
    short getCorpData_SEAL();
    // Writes the rows of the current kind into fpSpread02: 0, or -1 after a fault.
    short fillList();
    void loadPrintSettings();
    void savePrintSettings();
    void loadFootnotes();

    // The settings file "印刷設定.ini" in the data folder.
    QString csPrintSettingsPath() const;
    // The start cell of a start cell picture: (row - 1) x columns + column of its
    // active cell.
    static short nStartPosOf(const controls::Grid& grid);

    // --- start cell, order list and printing (seal_screen_ticks.cpp, seal_screen_print.cpp)
    void fpSpread01_Click(int col, int row);
    void fpSpread_2x6_Click(int col, int row);
    void fpSpread_3x10_Click(int col, int row);
    // A line of lstCheck: a click finds its row; a double click takes it off the list.
    void lstCheck_Click();
    void lstCheck_DblClick();
    // The check before print: 0 when something is ticked, 1 refused (after its box).
    short iCheckPrintData();
    void mnMenuPrint_Click();
    void mnMenuPreview_Click();
    // Print (0) or preview (1), then the print settings are saved.
    void btnJisseki_Click(int index);
    // The print step: the choices re-read from the controls, the label CSV, then the
    // engine. nMode 0 prints, 1 previews; status 1 until the run ended normally.
    void makeSealData(short& nMode, short& status);
    // Chooses the form and hands the CSV to the engine; status 0 once it was called.
    void printSeal(short& nMode, short& status);
    // The choices the label step reads, taken from the controls and the job now.
    extract::LabelChoices labelChoices();
    std::vector<extract::OrderLine> orderLines() const;
    void bindPrintHandlers();
    // --- end of start cell, order list and printing

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_Unload(int& cancel) override;
    void Form_KeyPress(int& keyAscii) override;

private:
    void buildControls();
    void bindHandlers();
    // The marker files of particular installations, in the program's folder.
    bool markerExists(const QString& fileName) const;
    void applyMgnt();
    void applyFras();
    void applySgrb();
    // The kind tables of a change of kind.
    void applyKindControls(short K);
    void onEnter();
    extract::FillConditions fillConditions() const;
    PrintSettingControls settingControls();
    controls::Grid& startCellGrid(int sheetIndex);
    void markStartCell(controls::Grid& grid, int col, int row);

    // One group per option button array.
    std::array<std::vector<controls::OptionButton*>, 6> groups_;
    // True while code sets imJissekiYm, whose change then is not the operator's entry.
    bool settingJissekiYm_ = false;

    // --- the side screens (seal_screen_handover.cpp) --------------------------------
public:
    // btnDouishoList and mnDouiSet: the doctors of the consents that run out.
    void btnDouishoList_Click();
    // btnSejutsuKeika: the addressees of progress reports.
    void btnSejutsuKeika_Click();

    // mnVer: the version screen, with this program's number and title.
    void mnVer_Click();
    // mnDispHelp: the suite's online help.
    void mnDispHelp_Click();

private:
    void bindSideScreenHandlers();
    void bindHelpHandlers();
};

// The factory the process start uses.
std::unique_ptr<controls::Screen> makeSealScreen(controls::Platform& platform);

}  // namespace seal
