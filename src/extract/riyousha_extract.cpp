#include "extract/riyousha_extract.h"

#include "app/globals.h"
#include "app/messages.h"
#include "base/conversions.h"
#include "base/dates.h"
#include "base/ini_file.h"
#include "base/vb_error.h"
#include "controls/platform.h"
#include "data/ct_adodb.h"

#include <QDateTime>

#include <algorithm>
#include <memory>

namespace extract {

namespace {

const QString kExtractFailed = QStringLiteral("患者データの抽出に失敗しました。");
const QString kNoMonth = QStringLiteral("抽出対象月の入力に誤りがあります。");

// A field's text: a text of its row alone read in place into a string of its own, a
// recurring one as the one string the recordset shares; anything else (a number, a
// date, NULL) as csNull2Str reads it.
QString textOf(const data::ado::Field& field)
{
    QStringView view;
    if (field.TextView(view)) return view.toString();
    const QVariant value = field.Value();
    if (value.typeId() == QMetaType::Int) return base::numberText(value.toInt());
    return base::csNull2Str(value);
}

// A fixed-length text field of the memory record: cut, or padded with blanks, in one
// allocation. A recurring text of the exact length, and the blanks of a null, are
// shared: a search holds every patient of the office.
QString fixedText(const data::ado::Field& field, qsizetype length)
{
    static const QString blanks8(8, u' ');
    static const QString blanks14(14, u' ');
    QStringView view;
    QString held;
    if (!field.TextView(view)) {
        const QVariant value = field.Value();
        if (base::IsNull(value)) {
            if (length == 8) return blanks8;
            if (length == 14) return blanks14;
        }
        held = base::csNull2Str(value);
        if (held.size() == length) return held;
        view = held;
    }
    QString fixed(length, u' ');
    std::copy_n(view.data(), std::min(length, view.size()), fixed.data());
    return fixed;
}

QDate dateOf(const QVariant& value)
{
    if (value.typeId() == QMetaType::QDateTime) return value.toDateTime().date();
    if (value.typeId() == QMetaType::QDate) return value.toDate();
    return base::CDate(value.toString());
}

// Dates and numbers keep the fresh element's value when their column is null.
void readDate(const QVariant& value, QDate& field)
{
    if (!base::IsNull(value)) field = dateOf(value);
}

void readLong(const QVariant& value, qint32& field)
{
    if (!base::IsNull(value)) field = base::nNull2Long(value);
}

}  // namespace

QString csRiyoushaSql(short office, short branch, const QDate& tMonthStart, int kaisyuIndex)
{
    const QString sOffice = QString::number(office);
    const QString sBranch = QString::number(branch);
    const QString tBefore = base::shortDate(tMonthStart.addDays(-1));
    const QString tAfter = base::shortDate(base::DateAdd(u"m", 1, tMonthStart));

    QString s;
    s.reserve(2400);
    s += QStringLiteral(
        "SELECT  RIYOUSHA.iKyotenCd, RIYOUSHA.iKyotenEb, RIYOUSHA.nIDNo, RIYOUSHA.cName, RIYOUSHA.cNameKana,");
    s += QStringLiteral(" RIYOUSHA.cYubinNo, RIYOUSHA.cAdress1, RIYOUSHA.cAdress2, RIYOUSHA.tBirthday,");
    s += QStringLiteral(" RIYOUSHA.cTelNo, RIYOUSHA.cFaxNo, RIYOUSHA.cMobNo, RIYOUSHA.tExpireDay, RIYOUSHA.nRoomNo,");
    s += QStringLiteral(" RIYOUSHA.cYubinNo2, RIYOUSHA.cYubinNo3,");
    s += QStringLiteral(" RIYOUSHA.cHTIryoName,");
    s += QStringLiteral(" r_sub.cAdress3,");
    s += QStringLiteral(" r_sub.cYubinNoS0Ryosyu,");
    s += QStringLiteral(" r_sub.cJusyo1S0Ryosyu,");
    s += QStringLiteral(" r_sub.cJusyo2S0Ryosyu,");
    s += QStringLiteral(" r_sub.cYubinNoS0Renraku,");
    s += QStringLiteral(" r_sub.cJusyo1S0Renraku,");
    s += QStringLiteral(" r_sub.cJusyo2S0Renraku,");
    s += QStringLiteral(" r_sub.cAtenaS0Ryosyu,");
    s += QStringLiteral(" r_sub.cAtenaS0Renraku,");
    s += QStringLiteral(" r_sub.iShoukanSiharai,");
    s += QStringLiteral(" jisseki_ct");
    s += QStringLiteral(" FROM ") + QStringLiteral("RIYOUSHA");
    s += QStringLiteral(" LEFT JOIN (");
    s += QStringLiteral(" SELECT iKyotenCd,iKyotenEb,nIDNo,");
    s += QStringLiteral(" cAdress3,");
    s += QStringLiteral(" cYubinNoS0Ryosyu,");
    s += QStringLiteral(" cJusyo1S0Ryosyu,");
    s += QStringLiteral(" cJusyo2S0Ryosyu,");
    s += QStringLiteral(" cYubinNoS0Renraku,");
    s += QStringLiteral(" cJusyo1S0Renraku,");
    s += QStringLiteral(" cJusyo2S0Renraku,");
    s += QStringLiteral(" cAtenaS0Ryosyu,");
    s += QStringLiteral(" cAtenaS0Renraku,");
    s += QStringLiteral(" iShoukanSiharai");
    s += QStringLiteral(" FROM RIYOUSHA_SUB");
    s += QStringLiteral("            WHERE  iKyotenCd = ") + sOffice;
    s += QStringLiteral("            AND    iKyotenEb = ") + sBranch;
    s += QStringLiteral("            ) r_sub ON RIYOUSHA.nIDNo = r_sub.nIDNo");
    s += QStringLiteral(" LEFT JOIN (");
    s += QStringLiteral(" SELECT nRiyoushaIDNo ,count(nRiyoushaIDNo) as jisseki_ct");
    s += QStringLiteral(" FROM JISSEKI ");
    s += QStringLiteral("            WHERE  iKyotenCd = ") + sOffice;
    s += QStringLiteral("            AND    iKyotenEb = ") + sBranch;
    s += QStringLiteral("            AND    tServicyDayStart>'") + tBefore +
         QStringLiteral("' AND tServicyDayStart<'") + tAfter + QStringLiteral("' ");
    s += QStringLiteral("            GROUP BY nRiyoushaIDNo");
    s += QStringLiteral("            ) r_jisseki ON RIYOUSHA.nIDNo = r_jisseki.nRiyoushaIDNo ");
    s += QStringLiteral(" WHERE RIYOUSHA.iKyotenCd = ") + sOffice;
    s += QStringLiteral(" AND RIYOUSHA.iKyotenEb = ") + sBranch;
    if (kaisyuIndex == 1) s += QStringLiteral(" AND r_sub.iShoukanSiharai = 1");
    if (kaisyuIndex == 2) {
        s += QStringLiteral(" AND r_sub.iShoukanSiharai = 1 ");
        s += QStringLiteral(" AND REPLACE(REPLACE(REPLACE(TRIM(RIYOUSHA.cHTIryoname), CHAR(13), ''), CHAR(10), ''), "
                            "'　', '') <> '手渡し' ");
    }
    s += QStringLiteral(" ORDER BY RIYOUSHA.cNameKana");
    return s;
}

QString csConnectionText()
{
    base::clsOplIniFile ini;
    if (ini.iInit(app::gsAppPath + QStringLiteral("\\adodb.ini")) != 0) return QString();
    const QString key = QStringLiteral("接続情報");
    return base::RTrim(base::csCutNull(ini.csGetProfileString(key, key)));
}

short getRiyoushaData_SEAL(const QString& sSQL, RiyoushaArray& aRiyousha)
{
    const QString connect = csConnectionText();
    if (connect.isEmpty()) return 0;

    data::cT_ADODB db;
    if (db.iInit(connect) != 0) return 0;
    const auto report = [&db] {
        app::msgBox(QStringLiteral("getRiyoushaData_SEAL() でエラー") + QStringLiteral("\r\n") + db.sErrMsg(),
                    controls::BoxStyle::Critical);
    };
    if (db.iConnect() != 0) {
        report();
        return 0;
    }
    auto rs = std::make_unique<data::ado::Recordset>();
    rs->setCursorLocation(data::ado::adUseClient);
    if (db.iOpenRecSet(rs, sSQL, 0, 1, 1) != 0) {
        report();
        return 0;
    }

    // Sized once from the client cursor's count: count + 1 elements, the last empty.
    // The rows of the last search go first, so that they are not held beside both the
    // recordset and their successors; a failed read above keeps them.
    const qint32 count = rs->RecordCount();
    RiyoushaArray().swap(aRiyousha);
    aRiyousha.assign(static_cast<size_t>(count) + 1, RiyoushaSealRow{});

    // Fields are found by name once; each then reads the current record.
    const auto field = [&rs](const char* name) { return rs->Fields(QString::fromLatin1(name)); };
    const data::ado::Field fIDNo = field("nIDNo"), fName = field("cName"), fNameKana = field("cNameKana"),
                           fBirthday = field("tBirthday"), fYubinNo = field("cYubinNo"), fAdress1 = field("cAdress1"),
                           fAdress2 = field("cAdress2"), fTelNo = field("cTelNo"), fFaxNo = field("cFaxNo"),
                           fMobNo = field("cMobNo"), fExpireDay = field("tExpireDay"), fRoomNo = field("nRoomNo"),
                           fAdress3 = field("cAdress3"), fYubinNo2 = field("cYubinNo2"), fYubinNo3 = field("cYubinNo3"),
                           fYubinRyosyu = field("cYubinNoS0Ryosyu"), fJusyo1Ryosyu = field("cJusyo1S0Ryosyu"),
                           fJusyo2Ryosyu = field("cJusyo2S0Ryosyu"), fYubinRenraku = field("cYubinNoS0Renraku"),
                           fJusyo1Renraku = field("cJusyo1S0Renraku"), fJusyo2Renraku = field("cJusyo2S0Renraku"),
                           fJisseki = field("jisseki_ct"), fAtenaRyosyu = field("cAtenaS0Ryosyu"),
                           fAtenaRenraku = field("cAtenaS0Renraku");
    const auto text = [](const data::ado::Field& f) { return textOf(f); };
    size_t i = 0;
    while (!rs->Eof()) {
        RiyoushaSealRow& r = aRiyousha[i];
        readLong(fIDNo.Value(), r.nIDNo);
        r.cName = text(fName);
        r.cNameKana = text(fNameKana);
        readDate(fBirthday.Value(), r.tBirthday);
        r.cYubinNo = fixedText(fYubinNo, 8);
        r.cAdress1 = text(fAdress1);
        r.cAdress2 = text(fAdress2);
        r.cTelNo = fixedText(fTelNo, 14);
        r.cFaxNo = fixedText(fFaxNo, 14);
        r.cMobNo = fixedText(fMobNo, 14);
        readDate(fExpireDay.Value(), r.tExpireDay);
        readLong(fRoomNo.Value(), r.nRoomNo);
        r.cAdress3 = text(fAdress3);
        r.cYubinNo2 = fixedText(fYubinNo2, 8);
        r.cYubinNo3 = fixedText(fYubinNo3, 8);
        r.cYubinNoS0Ryosyu = text(fYubinRyosyu);
        r.cJusyo1S0Ryosyu = text(fJusyo1Ryosyu);
        r.cJusyo2S0Ryosyu = text(fJusyo2Ryosyu);
        r.cYubinNoS0Renraku = text(fYubinRenraku);
        r.cJusyo1S0Renraku = text(fJusyo1Renraku);
        r.cJusyo2S0Renraku = text(fJusyo2Renraku);
        r.jisseki_ct = text(fJisseki);
        r.cAtenaS0Ryosyu = text(fAtenaRyosyu);
        r.cAtenaS0Renraku = text(fAtenaRenraku);
        rs->MoveNext();
        ++i;
    }
    db.iCloseRecSet(rs);

    if (db.iDisConnect() != 0) {
        app::msgBox(QStringLiteral("Error:") + db.sErrMsg(), controls::BoxStyle::Plain, QString());
        return 0;
    }
    return -1;
}

short RiyoushaMemorySet(const RiyoushaChoice& choice, RiyoushaArray& aRiyousha, short& nCloseState)
{
    short status = -1;
    app::Handler h(app::HandlerKind::Stop,
                   app::Report::patternA(QStringLiteral("データ展開中にエラーが発生しました。")));
    h([&] {
        if (choice.jissekiTicked && !choice.jissekiYm.isValid()) {
            app::msgBox(kNoMonth, controls::BoxStyle::Warning, app::kServiceMonthTitle);
            status = 0;
            h.stop();
            return;
        }
        // The month count is always computed; the tick only decides whether the list
        // greys the patients without services.
        if (!choice.jissekiYm.isValid()) throw base::VbError(94, QStringLiteral("Null の使い方が不正です。"));
        const QDate tMonthStart(choice.jissekiYm.year(), choice.jissekiYm.month(), 1);
        app::platform().setPointer(controls::Pointer::Hourglass);
        const QString sSQL = csRiyoushaSql(app::iKyotenCd, app::iKyotenEb, tMonthStart, choice.kaisyuIndex);
        if (getRiyoushaData_SEAL(sSQL, aRiyousha) == -1) {
            app::platform().setPointer(controls::Pointer::Normal);
        } else {
            app::msgBox(kExtractFailed, controls::BoxStyle::Critical);
            nCloseState = 1;
        }
    });
    if (h.failed()) status = 0;
    return status;
}

}  // namespace extract
