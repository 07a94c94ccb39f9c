#include "selection/consent_extract.h"

#include "selection/row_extract.h"

#include "app/globals.h"
#include "base/conversions.h"
#include "base/dates.h"
#include "base/str_conv.h"
#include "dialogs/fault_text.h"

#include <memory>

namespace selection {

namespace {

const QString kDateFormat = QStringLiteral("yyyy/mm/dd");

QString joined(std::initializer_list<const char*> pieces)
{
    QString s;
    for (const char* p : pieces) s += QString::fromUtf8(p);
    return s;
}

// A database value as a 32-bit number, null as 0.
qint32 nValue(const QVariant& v) { return base::nNull2Long(v); }

// A field by a name that may differ from the column's in width and case, as the
// provider of the target systems resolves names; a name it cannot resolve is the
// runtime's fault 3265, as for any unknown field.
QVariant widthInsensitiveField(const data::ado::Recordset& rs, const QString& name)
{
    const QString wanted = base::StrConv(name, base::vbNarrow);
    for (int i = 0; i < rs.FieldCount(); ++i) {
        const data::ado::Field f = rs.Fields(i);
        if (base::StrConv(f.Name(), base::vbNarrow).compare(wanted, Qt::CaseInsensitive) == 0) return f.Value();
    }
    return rs.Fields(name).Value();
}

QDate dateOf(const QVariant& v)
{
    if (base::IsNull(v)) return {};
    const QString text = base::csRTrimNull(v);
    return base::IsDate(text) ? base::CDate(text) : QDate();
}

}  // namespace

short nKikanMonthsOf(short iKikan)
{
    switch (iKikan) {
    case 0:
        return 3;
    case 1:
        return 6;
    case 2:
        return 1;
    default:
        return 0;
    }
}

DateRange consentDateRange(const QDate& outputMonth, short iSejutsu, short nKikanMonths)
{
    const QDate first = base::CDate(base::Format(outputMonth, u"yyyy/mm/01"));
    DateRange r;
    r.tFrom = base::DateAdd(u"m", -nKikanMonths, first);
    if (iSejutsu == 1) {
        // The upper bound stays exclusive: a consent of the month's last day is left out.
        r.tTo = base::DateAdd(u"d", -1, base::DateAdd(u"m", 1, r.tFrom));
        return r;
    }
    r.tFrom = base::CDate(base::Format(r.tFrom, u"yyyy/mm/16"));
    r.tTo = base::DateAdd(u"m", 1, r.tFrom);
    return r;
}

QString sqlKanjaData(const DouiCondition& c, qint32 staffNo)
{
    QString s = joined({
        " select ",
        "      RIYOUSHA.iKyotenCd as  R_iKyotenCd, RIYOUSHA.iKyotenEb as R_iKyotenEb, RIYOUSHA.nIDNo, RIYOUSHA.cName "
        "AS  RiyouName,",
        "      RIYOUSHA.cNameKana ,RIYOUSHA_DOUI_REC.tDouiDay as  tKijunDay,0 as ShokaiFlg,0 as EmptyFlg,",
        "      RIYOUSHA.tSyosinDay as tSyosinDay ,  RIYOUSHA.tSyoryoDay as tSyoryoDay,RIYOUSHA_DOUI_REC.tDouiKaryoS as "
        " tDouiKaryoS1,RIYOUSHA_DOUI_REC.tDouiKaryoS as  tDouiKaryoS2, ",
        "      RIYOUSHA_DOUI_REC.tDouiDay as tDouiDay1,RIYOUSHA_DOUI_REC.tDouiDay as  tDouiDay2,  RIYOUSHA.iHoken,  "
        "RIYOUSHA.nTantou,STAFF.cName AS  StaffName, ",
        "      RIYOUSHA_DOUI_REC.cDouiIsiName as cDouiIsiName1,RIYOUSHA_DOUI_REC.cDouiIsiKikan as  cDouiIsiKikan1, ",
        "      RIYOUSHA_DOUI_REC.cDouiIsiName as DOUI_ISI, ",
        "      RIYOUSHA_DOUI_REC.cDouiIsiKikan as DOUI_KIKAN, ",
        "      RIYOUSHA_DOUI_REC.cDouiIsiAdd as DOUI_ISI_ADDRESS, ",
        "      RIYOUSHA_DOUI_REC.tDouiDay as BaseDate1,RIYOUSHA_DOUI_REC.tDouiDay as  BaseDate2",
        "     ,DOCTOR.cIDNo as IshiIDno",
        "     ,DOCTOR.cName as IshiName",
        "     ,DOCTOR.cKikan as IshiKikanName",
        " from RIYOUSHA_DOUI_REC, DOCTOR, RIYOUSHA ",
        " LEFT JOIN STAFF ON RIYOUSHA.nTantou = STAFF.nIDNo",
        " WHERE RIYOUSHA.nIDNo >= 0 ",
        " AND RIYOUSHA.tExpireDay Is Null",
    });
    s += QStringLiteral(" and RIYOUSHA.iKyotenCd = ") + QString::number(app::iKyotenCd);
    s += QStringLiteral(" and RIYOUSHA.iKyotenEb = ") + QString::number(app::iKyotenEb);
    if (staffNo > 0) s += QStringLiteral(" AND nTantou = ") + QString::number(staffNo) + QStringLiteral(" ");
    s += joined({" AND RIYOUSHA.nIDNo = RIYOUSHA_DOUI_REC.nIDNo ",
                 " and RIYOUSHA.iKyotenCd = RIYOUSHA_DOUI_REC.iKyotenCd",
                 " and RIYOUSHA.iKyotenEb = RIYOUSHA_DOUI_REC.iKyotenEb"});
    s += QStringLiteral(" AND RIYOUSHA_DOUI_REC.tDouiDay >= '") + base::Format(c.tFrom, kDateFormat) +
         QStringLiteral("' AND RIYOUSHA_DOUI_REC.tDouiDay < '") + base::Format(c.tTo, kDateFormat) +
         QStringLiteral("'");
    s += QStringLiteral(" AND DOCTOR.cIDNo = RIYOUSHA_DOUI_REC.cIsiCd ");
    switch (c.iSejutsu) {
    case 0:
        s += joined({" AND iSejutsuKubun = 0 ", " and (",
                     "        (RIYOUSHA_DOUI_REC.iSejutuBui1 <= 1 and RIYOUSHA_DOUI_REC.iSejutuBui2 <= 1 and "
                     "RIYOUSHA_DOUI_REC.iSejutuBui3 <= 1 and RIYOUSHA_DOUI_REC.iSejutuBui4 <= 1 and "
                     "RIYOUSHA_DOUI_REC.iSejutuBui5 <= 1)",
                     "     )"});
        break;
    case 1:
        s += joined({" AND iSejutsuKubun = 0 ", " and (",
                     "        (RIYOUSHA_DOUI_REC.iSejutuBui1 >= 2 or RIYOUSHA_DOUI_REC.iSejutuBui2 >= 2 or "
                     "RIYOUSHA_DOUI_REC.iSejutuBui3 >= 2 or RIYOUSHA_DOUI_REC.iSejutuBui4 >= 2 or "
                     "RIYOUSHA_DOUI_REC.iSejutuBui5 >= 2)",
                     "     )"});
        break;
    case 7:
        s += QStringLiteral(" AND iSejutsuKubun = 1 ");
        break;
    default:
        break;
    }
    s += QStringLiteral(" ORDER BY nTantou, EmptyFlg,");
    s += c.iSort != 0 ? QStringLiteral(" nIDNo ,tKijunDay") : QStringLiteral(" tKijunDay, nIDNo ");
    return s;
}

int monthsBetween(const QDate& from, const QDate& to)
{
    return (to.year() - from.year()) * 12 + (to.month() - from.month());
}

ConsentDates firstDatePass(const QString& baseText, short iKijun, short nKikanMonths, const QDate& syoryoDay)
{
    ConsentDates d;
    if (!base::IsDate(baseText)) return d;
    const QDate base = base::CDate(baseText);
    QDate kigen;
    switch (iKijun) {
    case 0:
        kigen = base::CDate(base::csMonthEnd(base, nKikanMonths));
        break;
    case 1:
        kigen = base;
        break;
    // A month count that nothing sets: the base date itself.
    case 2:
        kigen = base::DateAdd(u"m", 0, base);
        break;
    default:
        return d;
    }
    d.DouiKigen = base::Format(kigen, kDateFormat);
    d.ShinDouiDay = base::Format(base::DateAdd(u"d", 1, kigen), kDateFormat);
    int keika = 0;
    if (iKijun != 2) {
        if (syoryoDay.isValid()) keika = monthsBetween(syoryoDay, kigen);
    } else {
        keika = monthsBetween(base, kigen);
    }
    d.nKeika = static_cast<short>(keika < 0 ? 0 : keika);
    return d;
}

void secondDatePass(ConsentDates& dates, short iSejutsu, const QDate& kijunDay)
{
    if (iSejutsu == 1) {
        dates.DouiKigen = dates.ShinDouiDay;
        return;
    }
    if (iSejutsu != 0 && iSejutsu != 7) return;
    if (!kijunDay.isValid()) return;
    // The renewal starts on the first of the third month after a consent of the first
    // half of a month, of the fourth after one of the second half, whatever the period.
    const QDate first(kijunDay.year(), kijunDay.month(), 1);
    const QDate shin = base::DateAdd(u"m", kijunDay.day() < 16 ? 3 : 4, first);
    dates.ShinDouiDay = base::Format(shin, kDateFormat);
    dates.DouiKigen = base::Format(base::DateAdd(u"d", -1, shin), kDateFormat);
}

QString normaliseDoctorText(const QString& text)
{
    QString s = base::StrConv(base::Trim(text), base::vbWide);
    s.remove(QChar(0x3000));
    s.remove(QChar(u' '));
    return s;
}

QString csGetIsiTel(data::cT_ADODB& db, const QString& name, const QString& kikan, QString& sErrMsg)
{
    QString tel;
    auto rs = std::make_unique<data::ado::Recordset>();
    rs->setCursorLocation(data::ado::adUseClient);
    try {
        const QString wantName = normaliseDoctorText(name);
        const QString wantKikan = normaliseDoctorText(kikan);
        if (db.iOpenRecSet(rs, QStringLiteral("SELECT cName, cKikan, cTelNo FROM ") + QStringLiteral("DOCTOR"), 0, 1,
                           1) != 0) {
            sErrMsg = db.sErrMsg();
            return QString();
        }
        while (!rs->Eof()) {
            if (normaliseDoctorText(base::csNull2Str(rs->Fields(QStringLiteral("cName")).Value())) == wantName &&
                normaliseDoctorText(base::csNull2Str(rs->Fields(QStringLiteral("cKikan")).Value())) == wantKikan) {
                tel = base::csRTrimNull(rs->Fields(QStringLiteral("cTelNo")).Value());
                break;
            }
            rs->MoveNext();
        }
        if (db.iCloseRecSet(rs) != 0) {
            sErrMsg = db.sErrMsg();
            return QString();
        }
    } catch (const base::VbError& fault) {
        sErrMsg = dialogs::faultLines(QStringLiteral("csGetIsiTel()でエラー"), fault);
        return QString();
    }
    return tel;
}

qint32 iGetKanjaData(data::cT_ADODB& db, const DouiCondition& c, qint32 staffNo, ConsentRows& rows, QString& sErrMsg)
{
    const NoRows noRows = c.iMode == 1 ? NoRows{2, QStringLiteral("該当する医師データがありません。")}
                                       : NoRows{1, QStringLiteral("該当する患者データがありません。")};
    const auto read = [&](data::ado::Recordset& rs, ConsentRows& found) {
        const auto field = [&rs](const QString& name) { return rs.Fields(name).Value(); };
        qint32 previous = -1;
        while (!rs.Eof()) {
            const qint32 id = nValue(field(QStringLiteral("nIDNo")));
            // One patient yields one row per run of adjacent records.
            if (id == previous) {
                rs.MoveNext();
                continue;
            }
            previous = id;

            const QVariant base1 = field(QStringLiteral("BaseDate1"));
            const QVariant base2 = field(QStringLiteral("BaseDate2"));
            QVariant chosen;
            if (base::IsNull(base1))
                chosen = base2;
            else if (base::IsNull(base2))
                chosen = base1;
            else
                chosen = base::CStr(base1) > base::CStr(base2) ? base1 : base2;
            const QString baseText = base::csRTrimNull(chosen);

            ConsentRow row;
            row.nIDNo = id;
            row.RiyouName = base::csNull2Str(field(QStringLiteral("RiyouName")));
            row.nTantou = c.iEachStaff == 1 ? nValue(field(QStringLiteral("nTantou"))) : 0;
            row.KijunDay = baseText;

            ConsentDates dates =
                firstDatePass(baseText, c.iKijun, c.nKikanMonths, dateOf(field(QStringLiteral("tSyoryoDay"))));

            row.StaffName = base::csNull2Str(field(QStringLiteral("StaffName")));
            if (c.iDouiRec1 == 1) {
                // Spelled with a full-width first letter, unlike the select list's aliases.
                row.IshiName = base::csRTrimNull(widthInsensitiveField(rs, QStringLiteral("ｃDouiIsiName1")));
                row.IshiKikanName = base::csRTrimNull(widthInsensitiveField(rs, QStringLiteral("ｃDouiIsiKikan1")));
            } else {
                row.IshiName = base::csRTrimNull(field(QStringLiteral("DOUI_ISI")));
                row.IshiKikanName = base::csRTrimNull(field(QStringLiteral("DOUI_KIKAN")));
            }
            if (c.iIsiTel == 1) row.IshiTel = csGetIsiTel(db, row.IshiName, row.IshiKikanName, sErrMsg);

            const QVariant kijun = field(QStringLiteral("tKijunDay"));
            secondDatePass(dates, c.iSejutsu, dateOf(kijun));
            const qint32 shokai = nValue(field(QStringLiteral("ShokaiFlg")));
            if ((c.iSejutsu == 0 || c.iSejutsu == 7) && shokai == 1 && dateOf(kijun).isValid() &&
                base::IsDate(dates.DouiKigen)) {
                const int keika = monthsBetween(dateOf(kijun), base::CDate(dates.DouiKigen));
                dates.nKeika = static_cast<short>(keika);
            }
            row.DouiKigen = dates.DouiKigen;
            row.ShinDouiDay = dates.ShinDouiDay;
            row.nKeika = dates.nKeika;

            row.IshiIDno = base::csRTrimNull(field(QStringLiteral("IshiIDno")));
            row.IshiName = base::csRTrimNull(field(QStringLiteral("IshiName")));
            row.IshiKikanName = base::csRTrimNull(field(QStringLiteral("IshiKikanName")));
            row.KijunDay = base::csRTrimNull(kijun);
            row.ShokaiFlg = shokai;
            row.EmptyFlg = nValue(field(QStringLiteral("EmptyFlg")));
            found.push_back(std::move(row));
            rs.MoveNext();
        }
    };
    return readConsentRows(
        db, [&] { return sqlKanjaData(c, staffNo); }, noRows, read, rows, sErrMsg);
}

}  // namespace selection
