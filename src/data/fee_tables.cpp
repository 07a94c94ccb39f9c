#include "data/fee_tables.h"

#include "app/messages.h"
#include "base/conversions.h"
#include "base/vb_error.h"
#include "data/ado/ado_constants.h"
#include "data/ado/recordset.h"
#include "data/adodb_ini.h"
#include "data/ct_adodb.h"

#include <functional>
#include <memory>

namespace data {

namespace {

const QString kReadErrorTitle = QStringLiteral("DB Read Error!!");

struct TankaCode {
    qint32 kbn;
    qint32 code;
    Tanka tanka;
};

constexpr TankaCode kTankaCodes[] = {
    {1, 1, Tanka::マッサージ},     {1, 2, Tanka::変形徒手},       {1, 3, Tanka::温按法},
    {1, 4, Tanka::電気光線},       {1, 11, Tanka::鍼灸1術},       {1, 12, Tanka::鍼灸2術},
    {1, 13, Tanka::鍼灸1術初回},   {1, 14, Tanka::鍼灸2術初回},   {1, 15, Tanka::電気鍼温灸器},
    {1, 16, Tanka::鍼灸1術初検料}, {1, 17, Tanka::鍼灸2術初検料}, {1, 18, Tanka::施術報告書交付料},
    {2, 1, Tanka::基本往療費},     {2, 2, Tanka::加算往療費},     {9, 1, Tanka::定額料金1割},
    {9, 2, Tanka::定額料金2割},    {9, 3, Tanka::定額料金3割},    {9, 11, Tanka::実費施術費},
    {9, 12, Tanka::実費交通費},
};

// The validity of a row in the month: start and end compared as "yyyymm" text.
QString validIn(const QString& sYM)
{
    return QStringLiteral(" WHERE SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),1,4)"
                          "+SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),6,2) <=   '") +
           sYM + QStringLiteral("'") +
           QStringLiteral(" AND SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),1,4)"
                          "+SUBSTRING(CONVERT(VARCHAR, cEndDate, 112),6,2) >=   '") +
           sYM + QStringLiteral("'");
}

QString bandAndCode(const QString& sentence, const QString& band, const QString& code)
{
    return sentence + QStringLiteral("\r\n区分:") + band + QStringLiteral("  コード：") + code;
}

// One unit of work: connects through "adodb.ini", opens sql client-side and hands the
// rows to read. A failed connection step shows "<routine>() でエラー" and the reason;
// a fault inside read shows the text that read last put in its second argument, which
// names the row it was on. False after either box.
bool readRows(const QString& routine, const QString& sql, const std::function<void(ado::Recordset&, QString&)>& read)
{
    const QString head = routine + QStringLiteral("() でエラー\r\n");
    QString csConnect;
    QString sErr;
    if (iGetConnectString(csConnect, sErr) != 0) {
        app::msgBox(head + sErr, controls::BoxStyle::Critical);
        return false;
    }
    cT_ADODB db;
    if (db.iInit(csConnect) != 0 || db.iConnect() != 0) {
        app::msgBox(head + db.sErrMsg(), controls::BoxStyle::Critical);
        return false;
    }
    auto rs = std::make_unique<ado::Recordset>();
    rs->setCursorLocation(ado::adUseClient);
    if (db.iOpenRecSet(rs, sql, ado::adOpenForwardOnly, ado::adLockReadOnly, ado::adCmdText) != 0) {
        app::msgBox(head + db.sErrMsg(), controls::BoxStyle::Critical);
        return false;
    }
    QString faultText;
    try {
        read(*rs, faultText);
    } catch (const base::VbError&) {
        app::msgBox(faultText, controls::BoxStyle::Critical, kReadErrorTitle);
        return false;
    }
    db.iCloseRecSet(rs);
    db.iDisConnect();
    return true;
}

}  // namespace

std::optional<Tanka> tankaOf(qint32 iTankaKbn, qint32 nTankaCode)
{
    for (const TankaCode& c : kTankaCodes)
        if (c.kbn == iTankaKbn && c.code == nTankaCode) return c.tanka;
    return std::nullopt;
}

QString sqlTanka(const QString& sYM)
{
    return QStringLiteral("SELECT * FROM 療養費単価") + validIn(sYM) +
           QStringLiteral(" ORDER BY cStartDate, iTankaKbn, nTankaCode");
}

QString sqlOuryohi(const QString& sYM)
{
    return QStringLiteral("SELECT * FROM 往療費区分") + validIn(sYM) + QStringLiteral(" ORDER BY nMaxLen");
}

short cls単価::iGetTanka(const QString& sYM)
{
    bool empty = false;
    // A price the month lacks is 0, never the price of a month read before.
    std::array<qint32, kTankaCount> read{};
    const bool ok = readRows(QStringLiteral("iGetTanka"), sqlTanka(sYM), [&](ado::Recordset& rs, QString& fault) {
        if (rs.Eof()) {
            empty = true;
            return;
        }
        const ado::Field kbn = rs.Fields(QStringLiteral("iTankaKbn"));
        const ado::Field code = rs.Fields(QStringLiteral("nTankaCode"));
        const ado::Field tanka = rs.Fields(QStringLiteral("nTanka"));
        while (!rs.Eof()) {
            const QString sKbn = base::csNull2Str(kbn.Value());
            const QString sCode = base::csNull2Str(code.Value());
            fault = bandAndCode(QStringLiteral("単価の取得に失敗しました。"), sKbn, sCode);
            // The two keys are numbers in text columns: a key that is no number is a
            // fault of the row, not a pair to pass over.
            const qint32 nKbn = sKbn.isEmpty() ? 0 : base::CLng(sKbn);
            const qint32 nCode = sCode.isEmpty() ? 0 : base::CLng(sCode);
            if (const auto t = tankaOf(nKbn, nCode)) read[static_cast<size_t>(*t)] = base::nNull2Long(tanka.Value());
            rs.MoveNext();
        }
    });
    if (!ok) return -1;
    if (empty) {
        app::msgBox(QStringLiteral("単価データがありません。"), controls::BoxStyle::Warning);
        return -1;
    }
    n_ = read;
    return 0;
}

short cls往療費::iGetOuryohiAll(const QString& sYM)
{
    std::vector<qint32> amounts;
    std::vector<qint32> limits;
    const bool ok =
        readRows(QStringLiteral("iGetOuryohiAll"), sqlOuryohi(sYM), [&](ado::Recordset& rs, QString& fault) {
            fault = bandAndCode(QStringLiteral("往療単価の取得に失敗しました。"), QStringLiteral("1"), QString());
            const ado::Field amount = rs.Fields(QStringLiteral("nKingakuOuryou"));
            const ado::Field maxLen = rs.Fields(QStringLiteral("nMaxLen"));
            while (!rs.Eof()) {
                const QString band = QString::number(amounts.size() + 1);
                fault = bandAndCode(QStringLiteral("往療単価の取得に失敗しました。"), band,
                                    base::csNull2Str(maxLen.Value()));
                const qint32 nAmount = base::nNull2Long(amount.Value());
                const qint32 nMax = base::nNull2Long(maxLen.Value());
                amounts.push_back(nAmount);
                limits.push_back(nMax);
                rs.MoveNext();
            }
        });
    if (!ok) return -1;
    n金額_ = std::move(amounts);
    n距離_ = std::move(limits);
    return 0;
}

short cls往療費::iGetOuryohi(short i区分, short iコード)
{
    if (i区分 < 1 || i区分 > i往療区分数()) {
        app::msgBox(bandAndCode(QStringLiteral("往療金額の取得に失敗しました。"), QString::number(i区分),
                                QString::number(iコード)),
                    controls::BoxStyle::Critical, kReadErrorTitle);
        return -1;
    }
    n往療単価_ = n金額_[static_cast<size_t>(i区分 - 1)];
    n往療距離MAX_ = n距離_[static_cast<size_t>(i区分 - 1)];
    return 0;
}

}  // namespace data
