#include "selection/keika_extract.h"

#include "selection/row_extract.h"

#include "app/globals.h"
#include "base/conversions.h"
#include "base/dates.h"
#include "dialogs/fault_text.h"

#include <memory>

namespace selection {

namespace {

QString joined(std::initializer_list<const char*> pieces)
{
    QString s;
    for (const char* p : pieces) s += QString::fromUtf8(p);
    return s;
}

QString office() { return QString::number(app::iKyotenCd); }
QString branch() { return QString::number(app::iKyotenEb); }

QString reportBlock(const KeikaCondition& c)
{
    QString s = joined({" from ( ", "   select iKyotenCd, iKyotenEb, nRiyoushaIDNo ", "   from 経過報告"});
    s += QStringLiteral("   where iKyotenCd = ") + office();
    s += QStringLiteral("   and   iKyotenEb = ") + branch();
    s += QStringLiteral("   and   tServicyMonth >= '") + c.sFromMonth + QStringLiteral("'");
    s += QStringLiteral("   and   tServicyMonth <= '") + c.sToMonth + QStringLiteral("'");
    if (c.nStaffNo > 0) s += QStringLiteral("   and   nStaffIDNo = ") + QString::number(c.nStaffNo);
    s += joined({"   group by iKyotenCd, iKyotenEb, nRiyoushaIDNo ", " ) AS KEIKAHOUKOKU"});
    return s;
}

const char* const kSubBlock[] = {" left join RIYOUSHA_SUB ON",
                                 "       KEIKAHOUKOKU.iKyotenCd = RIYOUSHA_SUB.iKyotenCd ",
                                 "   AND KEIKAHOUKOKU.iKyotenEb = RIYOUSHA_SUB.iKyotenEb ",
                                 "   AND KEIKAHOUKOKU.nRiyoushaIDNo = RIYOUSHA_SUB.nIDNo "};
const char* const kPatientBlock[] = {" left join RIYOUSHA ON", "       KEIKAHOUKOKU.iKyotenCd = RIYOUSHA.iKyotenCd ",
                                     "   AND KEIKAHOUKOKU.iKyotenEb = RIYOUSHA.iKyotenEb ",
                                     "   AND KEIKAHOUKOKU.nRiyoushaIDNo = RIYOUSHA.nIDNo "};
const char* const kCaremaneBlock[] = {
    " LEFT JOIN CAREMANE ON", "       CAREMANE.nIDNo = RIYOUSHA_SUB.iCareCd", "  LEFT JOIN SISETSU AS CAREMANESISETSU ",
    "    ON  RIYOUSHA_SUB.iCareSisetsuCd = CAREMANESISETSU.nIDNo ", " where isnull(CAREMANE.nIDNo,0) > 0 "};

template <size_t N>
QString block(const char* const (&pieces)[N])
{
    QString s;
    for (const char* p : pieces) s += QString::fromUtf8(p);
    return s;
}

const char kKikanCase[] =
    "(CASE WHEN RIYOUSHA.tDouiDay2 is NULL THEN RIYOUSHA.cDouiIsiKikan1 ELSE (CASE WHEN RIYOUSHA.tDouiDay1 > "
    "RIYOUSHA.tDouiDay2 THEN RIYOUSHA.cDouiIsiKikan1 ELSE RIYOUSHA.cDouiIsiKikan2 END)END)";
const char kSisetsuCase[] =
    "(CASE WHEN RIYOUSHA.tDouiDay2 is NULL THEN DOCTOR.iSisetsuCode ELSE (CASE WHEN RIYOUSHA.tDouiDay1 > "
    "RIYOUSHA.tDouiDay2 THEN DOCTOR.iSisetsuCode ELSE DOCTOR2.iSisetsuCode END)END)";
const char kKanaCase[] =
    "(CASE WHEN RIYOUSHA.tDouiDay2 is NULL THEN DOCTOR.cKikanKana ELSE (CASE WHEN RIYOUSHA.tDouiDay1 > "
    "RIYOUSHA.tDouiDay2 THEN DOCTOR.cKikanKana ELSE DOCTOR2.cKikanKana END)END)";

QString institutionSql(const KeikaCondition& c)
{
    const QString kikan = QString::fromUtf8(kKikanCase);
    const QString sisetsu = QString::fromUtf8(kSisetsuCase);
    const QString kana = QString::fromUtf8(kKanaCase);
    const QString from = base::Format(c.tFrom, u"yyyy/mm/dd");
    const QString to = base::Format(c.tTo, u"yyyy/mm/dd");

    QString s = QStringLiteral(" select ") + kikan + QStringLiteral(" AS KIKAN");
    s += QStringLiteral("         ,'' AS NAME");
    s += QStringLiteral("         ,") + sisetsu + QStringLiteral(" AS ID ");
    s += joined({" FROM((((((((((( RIYOUSHA LEFT JOIN DOUIKIROKU ON RIYOUSHA.iKyotenCd = DOUIKIROKU.iKyotenCd AND "
                 "RIYOUSHA.iKyotenEb = DOUIKIROKU.iKyotenEb AND RIYOUSHA.nIDNo = DOUIKIROKU.nIDNo  ) ",
                 " LEFT JOIN  ", " RIYOUSHA_SUB ON  RIYOUSHA.nIDNo = RIYOUSHA_SUB.nIDNo ",
                 "              AND RIYOUSHA.iKyotenCd = RIYOUSHA_SUB.iKyotenCd ",
                 "              AND RIYOUSHA.iKyotenEb = RIYOUSHA_SUB.iKyotenEb ) ", " LEFT JOIN  ",
                 " DOCTOR ON  RIYOUSHA_SUB.iIsiCd = DOCTOR.cIDno ) ", " LEFT JOIN  ",
                 " DOCTOR as DOCTOR2 ON  RIYOUSHA_SUB.iIsiCd2 = DOCTOR2.cIDno )",
                 " LEFT JOIN SISETSU AS SISETSU1 ON SISETSU1.nIDNo = DOCTOR.iSisetsuCode", " )",
                 " LEFT JOIN SISETSU AS SISETSU2 ON SISETSU2.nIDNo = DOCTOR2.iSisetsuCode", " )"});
    s += joined({" LEFT JOIN STAFF ON RIYOUSHA.nTantou=STAFF.nIDNo", " AND RIYOUSHA.iKyotenCd = STAFF.iKyotenCd",
                 " AND RIYOUSHA.iKyotenEb = STAFF.iKyotenEb", " )"});
    for (int n = 2; n <= 5; ++n) {
        const QString alias = QStringLiteral("STAFF%1").arg(n);
        s += QStringLiteral(" LEFT JOIN STAFF as %1 ON RIYOUSHA.nTantou%2 = %1.nIDNo").arg(alias).arg(n);
        s += QStringLiteral(" AND RIYOUSHA.iKyotenCd = %1.iKyotenCd").arg(alias);
        s += QStringLiteral(" AND RIYOUSHA.iKyotenEb = %1.iKyotenEb").arg(alias);
        s += QStringLiteral(" )");
    }
    s += QStringLiteral(" WHERE RIYOUSHA.iKyotenCd =") + office();
    s += QStringLiteral(" AND RIYOUSHA.iKyotenEb =") + branch();
    // The OR below stands at the top level of the WHERE clause, as it always has.
    s += QStringLiteral(" AND ( ( ( RIYOUSHA.tDouiKaryoE1 Between '") + from + QStringLiteral("' AND '") + to +
         QStringLiteral("') ");
    s += QStringLiteral(" OR ( RIYOUSHA.tDouiKaryoE2 Between '") + from + QStringLiteral("' AND '") + to +
         QStringLiteral("' AND RIYOUSHA.tDouiKaryoE1 is NULL ) ) ");
    s += joined({" AND ( DOUIKIROKU.iDoui1CalcType = 2 ",
                 " OR DOUIKIROKU.iDoui1CalcType = 0 OR DOUIKIROKU.iDoui1CalcType is NULL ) )"});
    s += QStringLiteral(" OR ( ( ( RIYOUSHA.tDouiKaryoE2 Between '") + from + QStringLiteral("' AND '") + to +
         QStringLiteral("') ");
    s += QStringLiteral(" OR ( RIYOUSHA.tDouiKaryoE1 Between '") + from + QStringLiteral("' AND '") + to +
         QStringLiteral("' AND RIYOUSHA.tDouiKaryoE2 is NULL ) ) ");
    s += joined({" AND ( DOUIKIROKU.iDoui2CalcType = 2 ",
                 " OR DOUIKIROKU.iDoui2CalcType = 0 OR DOUIKIROKU.iDoui2CalcType is NULL ) ) "});
    s += joined({" AND RIYOUSHA.iTenki <> 1 ", " AND RIYOUSHA.iTenki <> 3 ", " AND RIYOUSHA.iTenki <> 15 "});
    s += QStringLiteral(" Group BY ") + kikan + QStringLiteral(" ");
    s += QStringLiteral("         ,") + sisetsu + QStringLiteral(" ");
    s += QStringLiteral("         ,") + kana + QStringLiteral(" ");
    s += QStringLiteral(" ORDER BY ") + kana + QStringLiteral(" ");
    return s;
}

}  // namespace

QString sqlKeikaData(const KeikaCondition& c)
{
    switch (c.iKeikaMode) {
    case 1:
        return QStringLiteral(
                   " select CAREMANE.nIDNo AS ID, CAREMANE.cName AS NAME, CAREMANESISETSU.cShamei1 AS KIKAN, "
                   "CAREMANESISETSU.cShameiKana1 AS SHAMEIKANA") +
               reportBlock(c) + block(kSubBlock) + block(kPatientBlock) + block(kCaremaneBlock) +
               QStringLiteral(" Group by CAREMANE.nIDNo, CAREMANE.cName, CAREMANESISETSU.cShamei1, "
                              "CAREMANESISETSU.cShameiKana1") +
               QStringLiteral(" ORDER BY CAREMANESISETSU.cShameiKana1, CAREMANESISETSU.cShamei1, CAREMANE.cName");
    case 2:
        return institutionSql(c);
    case 3:
        return QStringLiteral(" select RIYOUSHA_SUB.iCareSisetsuCd AS ID, CAREMANESISETSU.cShamei1 AS NAME, "
                              "CAREMANESISETSU.cShameiKana1 AS KIKAN") +
               reportBlock(c) + block(kSubBlock) + block(kPatientBlock) + block(kCaremaneBlock) +
               QStringLiteral(" Group by RIYOUSHA_SUB.iCareSisetsuCd , CAREMANESISETSU.cShamei1 , "
                              "CAREMANESISETSU.cShameiKana1 ") +
               QStringLiteral(" ORDER BY CAREMANESISETSU.cShameiKana1, CAREMANESISETSU.cShamei1 ");
    default:
        return QStringLiteral(" select Doctor.cIDno AS ID, Doctor.cName AS NAME, Doctor.cKikan AS KIKAN") +
               reportBlock(c) + block(kPatientBlock) + block(kSubBlock) +
               joined({" left join DOCTOR ON",
                       "   DOCTOR.cIDno = ", "  (CASE WHEN RIYOUSHA.tDouiDay1 IS NULL THEN RIYOUSHA_SUB.iIsiCd2 ELSE ",
                       "     (CASE WHEN RIYOUSHA.tDouiDay2 IS NULL THEN RIYOUSHA_SUB.iIsiCd ELSE ",
                       "         (CASE WHEN RIYOUSHA.tDouiDay1 > RIYOUSHA.tDouiDay2 THEN RIYOUSHA_SUB.iIsiCd ELSE "
                       "RIYOUSHA_SUB.iIsiCd2 END) ",
                       "     END) ", "  END) ", " Group by DOCTOR.cIDNo, DOCTOR.cName, Doctor.cKikan ",
                       " order by DOCTOR.cIDNo"});
    }
}

qint32 iGetKeikaData(data::cT_ADODB& db, const KeikaCondition& c, ConsentRows& rows, QString& sErrMsg)
{
    db.iSetTimeout(120);
    const NoRows noRows = c.iKeikaMode == 1 ? NoRows{2, QStringLiteral("該当するケアマネージャーデータがありません。")}
                                            : NoRows{1, QStringLiteral("該当する医師データがありません。")};
    const auto read = [](data::ado::Recordset& rs, ConsentRows& found) {
        found.reserve(static_cast<size_t>(rs.RecordCount()));
        const data::ado::Field fID = rs.Fields(QStringLiteral("ID"));
        const data::ado::Field fName = rs.Fields(QStringLiteral("NAME"));
        const data::ado::Field fKikan = rs.Fields(QStringLiteral("KIKAN"));
        while (!rs.Eof()) {
            ConsentRow row;
            row.IshiIDno = base::csNull2Str(fID.Value());
            row.IshiName = base::csNull2Str(fName.Value());
            row.IshiKikanName = base::csNull2Str(fKikan.Value());
            found.push_back(std::move(row));
            rs.MoveNext();
        }
    };
    return readConsentRows(
        db, [&] { return sqlKeikaData(c); }, noRows, read, rows, sErrMsg);
}

}  // namespace selection
