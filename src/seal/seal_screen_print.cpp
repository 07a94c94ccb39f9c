// Printing from the seal screen: the check before print, the print and preview
// commands, and the print step that re-reads the choices, makes the label CSV and
// hands it to the report engine.

#include "seal/seal_screen.h"

#include "app/messages.h"
#include "app/system_settings.h"
#include "base/conversions.h"
#include "extract/label_csv.h"
#include "extract/print_step.h"

namespace seal {

using namespace controls;

namespace {

constexpr int kTickCol = 1;
constexpr short kPrint = 0;
constexpr short kPreview = 1;

const QString kPrintButtonFailed = QStringLiteral("印刷ボタン押下時にエラーが発生しました。");

template <class Buttons, std::size_t N>
std::array<bool, N> valuesOf(const Buttons& buttons)
{
    std::array<bool, N> out{};
    for (std::size_t i = 0; i < N && i < buttons.size(); ++i) out[i] = buttons[i].value();
    return out;
}

}  // namespace

void frmPrintシール::bindPrintHandlers()
{
    fpSpread01.Click = [this](int col, int row) { fpSpread01_Click(col, row); };
    fpSpread_2x6.Click = [this](int col, int row) { fpSpread_2x6_Click(col, row); };
    fpSpread_3x10.Click = [this](int col, int row) { fpSpread_3x10_Click(col, row); };
    lstCheck.Click = [this] { lstCheck_Click(); };
    lstCheck.DblClick = [this] { lstCheck_DblClick(); };
    mnMenuPrint.Click = [this] { mnMenuPrint_Click(); };
    mnMenuPreview.Click = [this] { mnMenuPreview_Click(); };
    for (int i = 0; i < 2; ++i) btnJisseki[static_cast<size_t>(i)].Click = [this, i] { btnJisseki_Click(i); };
}

short frmPrintシール::iCheckPrintData()
{
    short result = 1;
    app::Handler h(app::HandlerKind::Stop,
                   app::Report::patternA(QStringLiteral("データチェック時にエラーが発生しました。")));
    h([&] {
        if (fpSpread02.MaxRows() == 0) {
            app::msgBox(QStringLiteral("印刷対象データが表示されていません。"), BoxStyle::Warning);
            return;
        }
        // Hidden rows count: a tick stays on a row the search has hidden.
        int ticked = 0;
        for (int row = 1; row <= fpSpread02.MaxRows(); ++row) ticked += fpSpread02.value(kTickCol, row) != 0;
        job.nCheckCount = ticked;
        if (ticked == 0) {
            app::msgBox(QStringLiteral("印刷対象データが選択されていません。"), BoxStyle::Warning);
            return;
        }
        result = 0;
    });
    return result;
}

namespace {

// The print and preview commands: the same steps, with the question before a print.
void runPrintCommand(frmPrintシール& f, short mode)
{
    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(kPrintButtonFailed));
    h([&] {
        if (f.lstCheck.ListCount() == 0 && f.job.bCheckOrder != kFalse) {
            app::msgBox(QStringLiteral("リストにデータがありません。「対象」をチェックして下さい。"),
                        BoxStyle::Warning);
            return;
        }
        if (f.iCheckPrintData() != 0) return;
        if (mode == kPrint && app::msgBox(QStringLiteral("印刷してもよろしいですか？"),
                                          BoxStyle::Question | BoxStyle::OkCancel) == BoxAnswer::Cancel)
            return;
        f.setMousePointer(Pointer::Hourglass);
        short status = 1;
        f.makeSealData(mode, status);
        // A failed run leaves the hourglass until the next handler.
        if (status == 0) f.setMousePointer(Pointer::Normal);
    });
}

}  // namespace

void frmPrintシール::mnMenuPrint_Click() { runPrintCommand(*this, kPrint); }

void frmPrintシール::mnMenuPreview_Click() { runPrintCommand(*this, kPreview); }

void frmPrintシール::btnJisseki_Click(int index)
{
    if (index == 0)
        mnMenuPrint_Click();
    else
        mnMenuPreview_Click();
    // A free honorific typed for this run is kept, whatever became of the run.
    savePrintSettings();
}

extract::LabelChoices frmPrintシール::labelChoices()
{
    extract::LabelChoices c;
    c.nMst = job.nMst;
    c.nKeisho = job.nKeisho;
    c.staffChosen = optMst[static_cast<size_t>(AddresseeKind::Staff)].value();
    c.opPMode = valuesOf<decltype(opPMode), 2>(opPMode);
    c.optAdd = valuesOf<decltype(optAdd), 6>(optAdd);
    c.optAddHokenja = valuesOf<decltype(optAddHokenja), 2>(optAddHokenja);
    c.optAddKeamane = valuesOf<decltype(optAddKeamane), 2>(optAddKeamane);
    c.sWaType = job.sWaType;
    c.bCheckOrder = job.bCheckOrder != kFalse;
    c.bEnterAdd = job.bEnterAdd != kFalse;
    c.nMaisu = job.nMaisu;
    c.nStartPos = job.nStartPos;
    c.nCheckCount = job.nCheckCount;
    c.asPickedIDs = job.asPickedIDs;
    // The sender is the office's first row; an office without one prints no sender.
    if (rows.oOwnCorpList.nデータ数() > 0) {
        const data::cD_CORP& own = rows.oOwnCorpList.clsCORP(0);
        c.office = {own.cShamei1, own.cMailDestinationZipNo, own.cMailDestination, own.cTelNo, own.cFaxNo};
    }
    c.footnote = cboKyakutyuList.text();
    return c;
}

std::vector<extract::OrderLine> frmPrintシール::orderLines() const
{
    std::vector<extract::OrderLine> lines;
    lines.reserve(static_cast<size_t>(lstCheck.ListCount()));
    for (int i = 0; i < lstCheck.ListCount(); ++i) lines.push_back({lstCheck.List(i), lstCheck.ItemData(i)});
    return lines;
}

void frmPrintシール::makeSealData(short& nMode, short& status)
{
    status = 1;
    app::Handler h(app::HandlerKind::Stop,
                   app::Report::patternA(QStringLiteral("データ作成時にエラーが発生しました。")));
    h([&] {
        txtEtc.setEnabled(false);
        // The controls are the truth: the first chosen element of each array.
        for (short k = 0; k < 9; ++k) {
            if (optMst[static_cast<size_t>(k)].value()) {
                job.nMst = k;
                break;
            }
        }
        for (short k = 0; k < 7; ++k) {
            if (!optKeisho[static_cast<size_t>(k)].value()) continue;
            job.nKeisho = k;
            if (k == static_cast<short>(Honorific::FreeText)) {
                job.sKeisho = base::Trim(txtEtc.text());
                txtEtc.setEnabled(true);
            } else {
                job.sKeisho = kHonorificCaptions[static_cast<size_t>(k)];
            }
            break;
        }
        job.nMaisu = base::CInt(numMaisu.value().value_or(0));

        const extract::LabelChoices choices = labelChoices();
        const QString csvPath = app::csSystemTmpPath() + extract::sealCsvFileName(choices.envelope());
        const short made = extract::makeLabelRows(csvPath, fpSpread02, orderLines(), choices,
                                                  [this](const QString& text) { Status.setText(text); });
        if (made != 0) {
            h.stop();
            return;
        }
        if (job.nCheckCount != 0) {
            short printed = 1;
            printSeal(nMode, printed);
        } else {
            app::msgBox(QStringLiteral("印刷するデータがありません。"), BoxStyle::Warning);
        }
        status = 0;
    });
}

void frmPrintシール::printSeal(short& nMode, short& status)
{
    status = 1;
    const bool envelope = !opPMode[0].value();
    const extract::SealForm form = extract::sealForm(envelope, cmbSealType.ListIndex(), cmbHutou.ListIndex());
    // The driver keeps its own faults; nothing is shown here.
    status = extract::printSeal(nMode, form, app::csSystemSysPath()).status;
}

}  // namespace seal
