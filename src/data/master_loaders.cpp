#include "data/master_loaders.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "data/adodb_ini.h"
#include "data/column_binding.h"
#include "data/ct_adodb.h"
#include "data/entity_support.h"

#include <functional>
#include <memory>

namespace data {

namespace {

// Where a loader's failure goes: the process-wide last error, or a critical box
// naming the routine.
struct Reporter {
    QString routine;  // empty: silent
    void operator()(const QString& text) const
    {
        if (routine.isEmpty())
            app::gsLastError = text;
        else
            app::msgBox(routine + QStringLiteral("() でエラー\r\n") + text, controls::BoxStyle::Critical);
    }
};

const Reporter kSilent{};

// One unit of work: connects through "adodb.ini", opens sql as a client-side
// read-only recordset, hands it to work, then closes and disconnects. False after a
// failure, which has been reported.
bool withRecordset(const QString& sql, const Reporter& report, const std::function<void(ado::Recordset&)>& work)
{
    QString csConnect;
    QString sErr;
    if (iGetConnectString(csConnect, sErr) != 0) {
        report(sErr);
        return false;
    }
    cT_ADODB db;
    if (db.iInit(csConnect) != 0 || db.iConnect() != 0) {
        report(db.sErrMsg());
        return false;
    }
    auto rs = std::make_unique<ado::Recordset>();
    rs->setCursorLocation(ado::adUseClient);
    if (db.iOpenRecSet(rs, sql, ado::adOpenForwardOnly, ado::adLockReadOnly, ado::adCmdText) != 0) {
        report(db.sErrMsg());
        return false;
    }
    try {
        work(*rs);
    } catch (const base::VbError& fault) {
        report(entity::faultText(fault));
        return false;
    }
    db.iCloseRecSet(rs);
    db.iDisConnect();
    return true;
}

short countRows(const QString& sql, const Reporter& report)
{
    short n = 0;
    withRecordset(sql, report, [&](ado::Recordset& rs) {
        if (!rs.Eof()) rs.MoveLast();
        n = base::CInt(static_cast<double>(rs.RecordCount()));
    });
    return n;
}

// Fills a[0], a[1] ... from the rows, each field by its name, a NULL giving empty
// text or 0. An array too short for the rows (the table grew since the count) grows,
// keeping one spare place behind the last row.
template <class Rec>
short loadRows(const QString& sql, const std::vector<Binding<Rec>>& binds, std::vector<Rec>& a, const Reporter& report)
{
    short result = 0;
    withRecordset(sql, report, [&](ado::Recordset& rs) {
        if (rs.RecordCount() == 0) return;
        RecordBinder<Rec> fields(NullRule::Empty);
        for (const Binding<Rec>& b : binds) fields.bind(rs, b.name, &b.member);
        size_t index = 0;
        while (!rs.Eof()) {
            if (a.size() <= index) a.resize(index + 1);
            fields.fill(a[index]);
            rs.MoveNext();
            ++index;
        }
        if (a.size() < index + 1) a.resize(index + 1);
        result = -1;
    });
    return result;
}

#define BIND(R, m) SEAL_BIND(R, m)

const std::vector<Binding<HokenjaRec>>& hokenjaBinds()
{
    using R = HokenjaRec;
    static const std::vector<Binding<R>> list = {
        BIND(R, cIDno),     BIND(R, cCodeHou),    BIND(R, cCodeFuk),     BIND(R, cCodeHok), BIND(R, cCodeKen),
        BIND(R, iType),     BIND(R, cName),       BIND(R, cNameKana),    BIND(R, cKigou),   BIND(R, iPtype),
        BIND(R, cDaihyo),   BIND(R, cDaihyoKana), BIND(R, iFutanH),      BIND(R, iFutanK),  BIND(R, cYubinNo),
        BIND(R, cAddress1), BIND(R, cAddress2),   BIND(R, cAddressKana), BIND(R, cTelNo),   BIND(R, cFaxNo),
        BIND(R, cMobNo),    BIND(R, cMail1),      BIND(R, cMail2),       BIND(R, cWeb),     BIND(R, cYubinNo2),
        BIND(R, cAddress3), BIND(R, cName2),
    };
    return list;
}

const std::vector<Binding<DoctorRec>>& doctorBinds()
{
    using R = DoctorRec;
    static const std::vector<Binding<R>> list = {
        BIND(R, cIDno),      BIND(R, cCode),        BIND(R, cName),       BIND(R, cNameKana), BIND(R, cKikan),
        BIND(R, cKikanKana), BIND(R, cDaihyo),      BIND(R, cDaihyoKana), BIND(R, cYubinNo),  BIND(R, cAddress1),
        BIND(R, cAddress2),  BIND(R, cAddressKana), BIND(R, cTelNo),      BIND(R, cFaxNo),    BIND(R, cMobNo),
        BIND(R, cMail1),     BIND(R, cMail2),       BIND(R, cWeb),
    };
    return list;
}

const std::vector<Binding<SyoukaiRec>>& syoukaiBinds()
{
    using R = SyoukaiRec;
    static const std::vector<Binding<R>> list = {
        BIND(R, nIDNo),     BIND(R, cName),        BIND(R, cNameKana),      BIND(R, cYubinNo), BIND(R, cAddress1),
        BIND(R, cAddress2), BIND(R, cAddressKana), BIND(R, cTelNo),         BIND(R, cFaxNo),   BIND(R, cMobNo),
        BIND(R, cJob),      BIND(R, cJigyousho),   BIND(R, cJigyoushoKana), BIND(R, cBikou1),  BIND(R, cBikou2),
        BIND(R, cBikou3),   BIND(R, cBikou4),      BIND(R, cBikou5),        BIND(R, cBikou6),  BIND(R, cBikou7),
        BIND(R, cBikou8),   BIND(R, cBikou9),      BIND(R, cBikou10),
    };
    return list;
}

#undef BIND

// One grouped list of an insurer column of this office's patients, joined on cIDNo.
QString usedJoin(const QString& column, const QString& alias, const QString& on)
{
    return QStringLiteral(" Left Join ") + QStringLiteral(" ( ") + QStringLiteral("     select ") + column +
           QStringLiteral(" from RIYOUSHA ") + QStringLiteral("     Where iKyotenCd = ") +
           QString::number(app::iKyotenCd) + QStringLiteral("     And   iKyotenEb = ") +
           QString::number(app::iKyotenEb) + QStringLiteral(" group by ") + column + QStringLiteral(" ") +
           QStringLiteral(" ) as ") + alias + QStringLiteral(" on ") + on + QStringLiteral(" = cIDNo ");
}

}  // namespace

QString sqlHokenjaCount() { return QStringLiteral("select * from ") + QStringLiteral("HOKENJA"); }

QString sqlHokenjaData() { return QStringLiteral("SELECT * FROM ") + QStringLiteral("HOKENJA"); }

QString sqlHokenjaUsed()
{
    return QStringLiteral("select * from ") + QStringLiteral("HOKENJA") +
           usedJoin(QStringLiteral("cHokenNo"), QStringLiteral("RIYOUSHA_H"), QStringLiteral("chokenNo")) +
           usedJoin(QStringLiteral("cFutanNo"), QStringLiteral("RIYOUSHA_F"), QStringLiteral("cFutanNo")) +
           QStringLiteral(" Where RIYOUSHA_H.cHokenNo = cIDNo Or RIYOUSHA_F.cFutanNo = cIDNo ");
}

QString sqlDoctorCount() { return QStringLiteral("select cIDno from ") + QStringLiteral("DOCTOR"); }

QString sqlDoctorData()
{
    return QStringLiteral("SELECT * FROM ") + QStringLiteral("DOCTOR") +
           QStringLiteral(" order by CAST(cIDno AS NUMERIC(10))");
}

QString sqlSyoukaiCount() { return QStringLiteral("select nIDNo from ") + QStringLiteral("SYOUKAI"); }

QString sqlSyoukaiData()
{
    return QStringLiteral("select * from ") + QStringLiteral("SYOUKAI") + QStringLiteral(" order by nIDNo ");
}

short getHokenjaCount() { return countRows(sqlHokenjaCount(), kSilent); }

short getHokenjaData(std::vector<HokenjaRec>& aHokenja)
{
    return loadRows(sqlHokenjaData(), hokenjaBinds(), aHokenja, kSilent);
}

short getHokenjaUsedCount() { return countRows(sqlHokenjaUsed(), kSilent); }

short getHokenjaUsedData(std::vector<HokenjaRec>& aHokenja)
{
    return loadRows(sqlHokenjaUsed(), hokenjaBinds(), aHokenja, kSilent);
}

short getDoctorCount() { return countRows(sqlDoctorCount(), kSilent); }

short getDoctorData(std::vector<DoctorRec>& aDoctor)
{
    return loadRows(sqlDoctorData(), doctorBinds(), aDoctor, kSilent);
}

short getSyoukaicount() { return countRows(sqlSyoukaiCount(), Reporter{QStringLiteral("getSyoukaicount")}); }

short getSyoukaiData(std::vector<SyoukaiRec>& aSyoukai)
{
    return loadRows(sqlSyoukaiData(), syoukaiBinds(), aSyoukai, Reporter{QStringLiteral("getSyoukaiData")});
}

}  // namespace data
