// The two side screens of the seal screen: each press opens a connection of its own,
// shows the side screen modally, and turns the numbers it hands back into ticks and
// lines of lstCheck, as if the operator had ticked the rows one by one.

#include "seal/seal_screen.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "base/ini_file.h"
#include "data/ct_adodb.h"
#include "selection/frm_doui.h"
#include "selection/frm_seal_sejutsu_keika.h"

namespace seal {

using controls::Pointer;
using controls::BoxStyle::Critical;

namespace {

constexpr int kTickCol = 1;
constexpr int kIdCol = 2;
constexpr int kNameCol = 4;
const QString kOrderGap = QStringLiteral("     ");

enum class SideScreen { Consent, Progress };

// The first row whose ID cell is the text, -1 when none is.
int searchIdColumn(const controls::Grid& grid, const QString& id)
{
    for (int row = 1; row <= grid.MaxRows(); ++row)
        if (grid.text(kIdCol, row) == id) return row;
    return -1;
}

// The mode of the progress screen for the kind on show.
short keikaMode(const std::deque<controls::OptionButton>& optMst)
{
    if (optMst[4].value()) return 1;
    if (optMst[8].value()) return 2;
    if (optMst[6].value()) return 3;
    return 0;
}

}  // namespace

void frmPrintシール::bindSideScreenHandlers()
{
    btnDouishoList.Click = [this] { btnDouishoList_Click(); };
    mnDouiSet.Click = [this] { btnDouishoList_Click(); };
    btnSejutsuKeika.Click = [this] { btnSejutsuKeika_Click(); };
}

namespace {

// What one press of either button does; which screen and how strictly a found row is
// checked are the only differences.
void runSideScreen(frmPrintシール& s, SideScreen which)
{
    const auto fail = [&s](const QString& text) {
        if (!text.isEmpty()) app::msgBox(text, Critical, app::kSealTitle);
        s.setMousePointer(Pointer::Normal);
        s.job.nCloseState = -1;
    };

    app::Handler h(app::HandlerKind::Resume, app::Report::patternA(QStringLiteral("エラーが発生しました。")),
                   {.hourglass = true});

    // A connection of this press alone.
    QString connect;
    h([&] {
        base::clsOplIniFile ini;
        if (ini.iInit(app::gsAppPath + QStringLiteral("\\adodb.ini")) != 0) {
            fail(QString());
            h.stop();
            return;
        }
        const QString key = QStringLiteral("接続情報");
        connect = base::RTrim(base::csCutNull(ini.csGetProfileString(key, key)));
    });
    data::cT_ADODB db;
    h([&] {
        if (connect.isEmpty() || db.iInit(connect) != 0) {
            fail(QStringLiteral("データベースの抽出に失敗しました。"));
            h.stop();
            return;
        }
        if (db.iConnect() != 0) {
            fail(QStringLiteral("データベースの接続に失敗しました。"));
            h.stop();
        }
    });

    QString ishiIDs;
    QString tantouIDs;
    short count = 0;
    h([&] {
        if (which == SideScreen::Consent) {
            selection::frmDoui side(s.platform());
            side.iInit(db, 1);
            s.platform().showModal(side);
            ishiIDs = side.sIshiID_SEAL;
            tantouIDs = side.sTantouID_SEAL;
            count = side.nデータ数;
        } else {
            selection::frmSeal_SejutsuKeika side(s.platform());
            side.iInit(db, keikaMode(s.optMst));
            s.platform().showModal(side);
            ishiIDs = side.sIshiID_SEAL;
            tantouIDs = side.sTantouID_SEAL;
            count = side.nデータ数;
        }
    });

    h([&] {
        if (!(s.job.bCheckOrder != kFalse && s.job.bEnterAdd != kFalse)) s.chkEnter.setValue(1);
    });
    const QStringList ids = ishiIDs.split(u',');
    // A hand-over with rows starts from an empty order list.
    h([&] {
        if (count > 0) s.btnAllKai_Click(1);
    });
    h([&] {
        QStringList& picked = s.job.asPickedIDs;
        if (s.lstCheck.ListCount() == 0) {
            if (!tantouIDs.isEmpty()) picked = tantouIDs.split(u',');
            return;
        }
        const int c = s.lstCheck.ListCount();
        picked.resize(c + count);
        if (tantouIDs.isEmpty()) return;
        const QStringList parts = tantouIDs.split(u',');
        for (qsizetype i = 0; i < parts.size() && c + i < picked.size(); ++i) picked[c + i] = parts[i];
    });
    h([&] {
        for (const QString& id : ids) {
            if (id.isEmpty()) continue;
            const int row = searchIdColumn(s.fpSpread02, id);
            if (which == SideScreen::Progress && (row < 0 || s.fpSpread02.rowHidden(row))) continue;
            // The consent screen takes the row as found, -1 included; the grid then
            // reads and writes nothing there.
            s.fpSpread02.SetActiveCell(kTickCol, row);
            if (s.fpSpread02.text(kTickCol, row) == QLatin1String("1")) {
                // A doctor named twice: printed once more through the order list.
                const QString cell = s.fpSpread02.text(kNameCol, row);
                const QString name = cell.left(cell.lastIndexOf(u' ') + 1);
                s.lstCheck.AddItem(id + kOrderGap + name, base::CLng(id));
            } else {
                s.job.bPicked = kTrue;
                s.fpSpread02.setValue(kTickCol, row, 1);
            }
        }
    });
    s.job.bPicked = kFalse;
}

}  // namespace

void frmPrintシール::btnDouishoList_Click() { runSideScreen(*this, SideScreen::Consent); }

void frmPrintシール::btnSejutsuKeika_Click() { runSideScreen(*this, SideScreen::Progress); }

}  // namespace seal
