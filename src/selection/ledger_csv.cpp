#include "selection/ledger_csv.h"

#include "base/dates.h"
#include "base/text_codec.h"
#include "base/text_file.h"
#include "report/work_file.h"

#include <QFile>

namespace selection {

namespace {

QString quoted(const QString& text) { return u'"' + text + u'"'; }

}  // namespace

const QStringList& ledgerTitles()
{
    static const QStringList titles{QStringLiteral("枠線描画"),
                                    QStringLiteral("何月分"),
                                    QStringLiteral("種別"),
                                    QStringLiteral("No"),
                                    QStringLiteral("患者ID"),
                                    QStringLiteral("患者名"),
                                    QStringLiteral("施術者ID"),
                                    QStringLiteral("同意日"),
                                    QStringLiteral("同意書期限"),
                                    QStringLiteral("新同意日"),
                                    QStringLiteral("経過"),
                                    QStringLiteral("担当者"),
                                    QStringLiteral("依頼日"),
                                    QStringLiteral("予備1"),
                                    QStringLiteral("予備2"),
                                    QStringLiteral("受取日"),
                                    QStringLiteral("同意医師"),
                                    QStringLiteral("同意医師機関"),
                                    QStringLiteral("同意医師TEL"),
                                    QStringLiteral("同意医師IDNo"),
                                    QStringLiteral("基準日表示"),
                                    QStringLiteral("初回フラグ"),
                                    QStringLiteral("初療日未入力フラグ")};
    return titles;
}

QString ledgerKindText(short iSejutsu)
{
    switch (iSejutsu) {
    case 0:
        return QStringLiteral("マッサージ");
    case 1:
        return QStringLiteral("変形徒手矯正術");
    case 2:
        return QStringLiteral("温あん法");
    case 7:
        return QStringLiteral("はり・きゅう");
    default:
        return QStringLiteral("温あん法・電気光線器具");
    }
}

QStringList ledgerCsvLines(const ConsentRows& rows, const QDate& kigen, short iSejutsu, bool kijunDisp)
{
    QStringList lines;
    lines.reserve(static_cast<qsizetype>(rows.size()) + 1);
    QStringList titles;
    for (const QString& t : ledgerTitles()) titles << quoted(t);
    lines << titles.join(u',');

    const QString month = base::Format(kigen, u"yyyy/mm/dd");
    const QString kind = ledgerKindText(iSejutsu);
    const QString disp = kijunDisp ? QStringLiteral("1") : QStringLiteral("0");
    qint32 previousStaff = 0;
    short number = 0;
    for (const ConsentRow& r : rows) {
        ++number;
        // Rows without a staff member never continue a run: each is numbered 1.
        if (previousStaff == 0 || previousStaff != r.nTantou) {
            number = 1;
            previousStaff = r.nTantou;
        }
        const QStringList fields{quoted(QStringLiteral("1")),
                                 quoted(month),
                                 quoted(kind),
                                 QString::number(number),
                                 QString::number(r.nIDNo),
                                 quoted(r.RiyouName),
                                 QString::number(r.nTantou),
                                 quoted(r.KijunDay),
                                 quoted(r.DouiKigen),
                                 quoted(r.ShinDouiDay),
                                 QString::number(r.nKeika),
                                 quoted(r.StaffName),
                                 quoted(r.IraiDay),
                                 quoted(QString()),
                                 quoted(QString()),
                                 quoted(QString()),
                                 quoted(r.IshiName),
                                 quoted(r.IshiKikanName),
                                 quoted(r.IshiTel),
                                 quoted(r.IshiIDno),
                                 disp,
                                 QString::number(r.ShokaiFlg),
                                 QString::number(r.EmptyFlg)};
        lines << fields.join(u',');
    }
    return lines;
}

void writeLedgerCsv(const QString& path, const QStringList& lines)
{
    const QString native = base::nativePath(path);
    if (QFile::exists(native)) QFile::remove(native);
    auto file = report::openWorkFile(path);
    report::writeWorkFile(*file, base::encodeLines(lines));
    report::closeWorkFile(*file);
}

}  // namespace selection
