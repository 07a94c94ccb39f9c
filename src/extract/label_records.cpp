#include "extract/label_records.h"

#include "app/messages.h"
#include "base/conversions.h"
#include "base/str_conv.h"
#include "base/vb_error.h"
#include "controls/grid.h"
#include "extract/blank_labels.h"
#include "extract/label_csv.h"

#include <QHash>

namespace extract {

using namespace Qt::StringLiterals;

namespace {

constexpr short kDoctor = 1;
constexpr short kHokenja = 2;
constexpr short kCaremane = 4;
constexpr short kCorp = 7;
constexpr short kIryoukikan = 8;
constexpr short kFreeHonorific = 6;
constexpr int kTickCol = 1;

// One walk over the addressees: the record it fills, shared by all of them.
class LabelWalk {
public:
    LabelWalk(const controls::Grid& grid, const LabelChoices& c, const std::function<void(const LabelRecord&)>& emit)
            : grid_(grid), c_(c), emit_(emit)
    {}

    void gridRow(int row)
    {
        readNameBlock(row);
        r_.nRoomNo = roomNo(row);
        readPatientBlock(row);
        r_.nTantouID.clear();
        // Own offices on an envelope are addressed by their representative line.
        if (c_.opPMode[1] && c_.nMst == kCorp) r_.cName = cell(7, row);
        finish(row);
    }

    void listLine(int index, const OrderLine& line)
    {
        if (c_.nMst == kHokenja) {
            const qsizetype blank = line.text.indexOf(u' ');
            const QString number = base::Trim(blank < 0 ? line.text : line.text.left(blank));
            const int row = findRow(3, number);
            if (row > 0) {
                readNameBlock(row);
                if (c_.optAddHokenja[1]) {
                    r_.cName = cell(20, row);
                    r_.cYubinNo = cell(18, row);
                    r_.cAddress1 = cell(19, row);
                }
            } else {
                r_.cName = number;
            }
            // The patient fields are not read for insurers: they keep what they had.
            r_.nRoomNo.clear();
            r_.nTantouID.clear();
            finish(row);
            return;
        }
        if (line.itemData == kNotAnAddressee) return;
        const QString number = QString::number(line.itemData);
        const int row = findRow(2, number);
        if (row > 0) {
            readNameBlock(row);
            if (c_.nMst == kIryoukikan && c_.nKeisho == kFreeHonorific) {
                r_.cKikan.clear();
                r_.cDaihyo.clear();
            }
            r_.nRoomNo = roomNo(row);
            readPatientBlock(row);
        } else {
            r_.cIDno = number;
        }
        r_.nTantouID.clear();
        if (c_.nMst == kDoctor) {
            if (index >= c_.asPickedIDs.size()) throw base::VbError::subscriptOutOfRange();
            r_.nTantouID = c_.asPickedIDs.at(index);
        }
        finish(row);
    }

private:
    // A cell as read for the label, trimmed of blanks. Most cells have none, and are
    // shared rather than copied.
    QString cell(int col, int row) const
    {
        const QString& text = grid_.text(col, row);
        if (text.isEmpty() || (text.front() != u' ' && text.back() != u' ')) return text;
        return base::Trim(text);
    }

    // Columns 3 to 15; column 2 is the same number and is overwritten by column 3.
    void readNameBlock(int row)
    {
        r_.cIDno = cell(3, row);
        r_.cName = cell(4, row);
        r_.cNameKana = cell(5, row);
        r_.cKikan = cell(6, row);
        r_.cDaihyo = cell(7, row);
        r_.cYubinNo = cell(8, row);
        r_.cAddress1 = cell(9, row);
        r_.cAddress2 = cell(10, row);
        r_.cTelNo = cell(11, row);
        r_.cFaxNo = cell(12, row);
        r_.cMobNo = cell(13, row);
        r_.cMst = cell(14, row);
        r_.cKeisho = cell(15, row);
    }

    // Column 17, 21 to 28, 31 to 33.
    void readPatientBlock(int row)
    {
        r_.cAddress3 = cell(17, row);
        r_.cYubinNoSinsei = cell(21, row);
        r_.cJusyoSinsei = cell(22, row);
        r_.cYubinNoRyosyu = cell(23, row);
        r_.cJusyoRyosyu = cell(24, row);
        r_.cYubinNoRenraku = cell(25, row);
        r_.cJusyoRenraku = cell(26, row);
        r_.cYubinNo2 = cell(27, row);
        r_.cYubinNo3 = cell(28, row);
        r_.cAtenaSinsei = cell(31, row);
        r_.cAtenaRyosyu = cell(32, row);
        r_.cAtenaRenraku = cell(33, row);
    }

    // The room goes behind the second address in installations of type 5.
    QString roomNo(int row) const
    {
        if (c_.optAdd[1] && c_.sWaType == u"5"_s) return u'-' + cell(16, row);
        return {};
    }

    // The first row whose cell in col holds text exactly, 0 if none. The column is
    // indexed once per walk, so a long list does not search the grid line by line.
    int findRow(int col, const QString& text)
    {
        if (indexedCol_ != col) {
            index_.clear();
            index_.reserve(grid_.MaxRows());
            for (int row = grid_.MaxRows(); row >= 1; --row) index_.insert(grid_.text(col, row), row);
            indexedCol_ = col;
        }
        return index_.value(text, 0);
    }

    // The address choice, the kinds' rules, the month count, the envelope width.
    void finish(int row)
    {
        chooseAddress(r_, addressElement(c_.optAdd));
        if (c_.staffChosen) {
            r_.sOutAddress = r_.cAddress1;
            if (!r_.cAddress2.isEmpty()) r_.sOutAddress += u"\r\n"_s + r_.cAddress2;
        }
        if (c_.nMst == kHokenja && c_.optAddHokenja[1]) {
            if (row > 0) r_.cName = cell(20, row);
            r_.sOutAtena = r_.cName;
        }
        if (c_.nMst == kCaremane) {
            // Column 21 holds the office's name; 23 and 24 its address.
            const bool hasOffice = !r_.cYubinNoSinsei.isEmpty();
            const bool takeOffice =
                c_.optAddKeamane[1] ? hasOffice : (c_.optAddKeamane[0] && r_.cKikan.isEmpty() && hasOffice);
            if (takeOffice) {
                r_.cKikan = r_.cYubinNoSinsei;
                r_.cAddress1 = r_.cYubinNoRyosyu;
                r_.cAddress2 = r_.cJusyoRyosyu;
            }
            r_.sOutAddress = r_.cAddress1;
        }
        if (row > 0) r_.cJisseki = cell(30, row);
        if (c_.envelope()) r_.sOutAddress = envelopeAddress(r_.sOutAddress);
        emit_(r_);
    }

    const controls::Grid& grid_;
    const LabelChoices& c_;
    const std::function<void(const LabelRecord&)>& emit_;
    LabelRecord r_;
    QHash<QString, int> index_;
    int indexedCol_ = 0;
};

}  // namespace

int addressElement(const std::array<bool, 6>& optAdd)
{
    int sum = 0;
    for (int i = 0; i < 6; ++i) sum += (i + 1) * (optAdd[static_cast<size_t>(i)] ? -1 : 0);
    const int n = sum < 0 ? -sum : sum;
    return (n >= 1 && n <= 6) ? n - 1 : 0;
}

void chooseAddress(LabelRecord& r, int element)
{
    r.sOutYubin.clear();
    r.sOutAddress.clear();
    r.sOutAtena.clear();
    switch (element) {
    case 1:
        r.sOutYubin = r.cYubinNo2;
        r.sOutAddress = r.cAddress2;
        r.sOutAtena = r.cName;
        break;
    case 2:
        r.sOutYubin = r.cYubinNo3;
        r.sOutAddress = r.cAddress3;
        r.sOutAtena = r.cName;
        break;
    case 3:
        r.sOutYubin = r.cYubinNoRenraku;
        r.sOutAddress = r.cJusyoRenraku;
        r.sOutAtena = r.cAtenaRenraku;
        break;
    case 4:
        r.sOutYubin = r.cYubinNoSinsei;
        r.sOutAddress = r.cJusyoSinsei;
        r.sOutAtena = r.cAtenaSinsei;
        break;
    case 5:
        r.sOutYubin = r.cYubinNoRyosyu;
        r.sOutAddress = r.cJusyoRyosyu;
        r.sOutAtena = r.cAtenaRyosyu;
        break;
    default:
        r.sOutYubin = r.cYubinNo;
        r.sOutAddress = r.cAddress1;
        r.sOutAtena = r.cName;
        break;
    }
}

QString envelopeAddress(const QString& address)
{
    // Digits and letters stand full-width on an envelope; the hyphens of a block
    // number stay narrow.
    return base::StrConv(address, base::vbWide).replace(u"－"_s, u"-"_s);
}

QString progressText(int total, int count)
{
    return QString::number(total) + u"人中"_s + QString::number(count) + u"人目を計算中です。"_s;
}

void walkLabels(const controls::Grid& grid, const std::vector<OrderLine>& lstCheck, const LabelChoices& c,
                const std::function<void(const LabelRecord&)>& emit, const std::function<void(const QString&)>& status)
{
    LabelWalk walk(grid, c, emit);
    int count = 0;
    if (!c.followsList()) {
        for (int row = 1; row <= grid.MaxRows(); ++row) {
            // Hidden rows keep their ticks, and they are printed.
            if (grid.value(kTickCol, row) == 0) continue;
            ++count;
            if (status) status(progressText(c.nCheckCount, count));
            walk.gridRow(row);
        }
        return;
    }
    const int total = static_cast<int>(lstCheck.size());
    for (int i = 0; i < total; ++i) {
        ++count;
        if (status) status(progressText(total, count));
        walk.listLine(i, lstCheck[static_cast<size_t>(i)]);
    }
}

short makeLabelRows(const QString& csvPath, const controls::Grid& grid, const std::vector<OrderLine>& lstCheck,
                    const LabelChoices& c, const std::function<void(const QString&)>& status)
{
    // A file that could not be made has had its box: the run goes no further.
    const std::unique_ptr<SealCsvFile> csv = openSealCsv(csvPath);
    if (!csv) return 1;
    if (writeBlankRows(*csv, c.nStartPos, c.nMst, c.asPickedIDs) != 0) return 1;

    short result = 1;
    app::Handler h(app::HandlerKind::Stop,
                   app::Report::patternA(QStringLiteral("データ作成時にエラーが発生しました。")));
    h([&] {
        walkLabels(
            grid, lstCheck, c,
            [&](const LabelRecord& r) {
                const QString line = sealCsvLine(r, c.office, c.footnote);
                for (int i = 0; i < c.nMaisu; ++i) csv->writeLine(line);
            },
            status);
        csv->close();
        if (status) status(QString());
        result = 0;
    });
    return result;
}

}  // namespace extract
