// The generated demo data: reproducible from its seed, and shaped like a clinic's
// database in the ways the program's screens depend on.

#include "base/text_codec.h"
#include "data/schema.h"
#include "demo_installation.h"
#include "support/printers.h"
#include "support/sqlite_reader.h"

#include <QDate>
#include <QDir>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>

namespace {

using sealtest::SqliteReader;

const QDate kToday(2026, 11, 21);

QString makeInstallation(const QTemporaryDir& dir, const QString& name, std::uint32_t seed, int patients = 60)
{
    demo::DemoOptions options;
    options.outDir = dir.filePath(name);
    options.patients = patients;
    options.seed = seed;
    options.today = kToday;
    demo::writeInstallation(options);
    return options.outDir + QStringLiteral("/DATA/sealdemo.db");
}

class DemoDatabaseTest : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        dir_ = std::make_unique<QTemporaryDir>();
        ASSERT_TRUE(dir_->isValid());
        path_ = makeInstallation(*dir_, QStringLiteral("a"), 11);
    }
    static void TearDownTestSuite() { dir_.reset(); }

    // Each statement counts rows that must not be there, or that must.
    void expectNone(std::initializer_list<const char*> counts) const
    {
        for (const char* sql : counts) EXPECT_EQ(db.number(QString::fromUtf8(sql)), 0) << sql;
    }
    void expectSome(std::initializer_list<const char*> counts) const
    {
        for (const char* sql : counts) EXPECT_GT(db.number(QString::fromUtf8(sql)), 0) << sql;
    }

    // The values (NULL left out) of the columns pick(table, column) chooses that fail
    // good(column, value), as "TABLE.column: value", the first twenty of them.
    template <class Pick, class Good>
    QStringList badValues(Pick pick, Good good, int* checked = nullptr) const
    {
        QStringList bad;
        for (const data::TableDef& t : data::schemaTables()) {
            for (const QString& c : t.columns) {
                if (!pick(t.name, c)) continue;
                for (const QString& v :
                     db.column(QStringLiteral("SELECT %1 FROM %2 WHERE %1 IS NOT NULL").arg(c, t.name))) {
                    if (checked) ++*checked;
                    if (!good(c, v) && bad.size() < 20) bad << t.name + u'.' + c + QStringLiteral(": ") + v;
                }
            }
        }
        return bad;
    }

    SqliteReader db{path_};

    static std::unique_ptr<QTemporaryDir> dir_;
    static QString path_;
};

std::unique_ptr<QTemporaryDir> DemoDatabaseTest::dir_;
QString DemoDatabaseTest::path_;

QString dumpAll(const SqliteReader& db)
{
    QString all;
    for (const QString& t : db.tables()) all += t + QLatin1Char('\n') + db.dump(t);
    return all;
}

TEST_F(DemoDatabaseTest, SameSeedGivesTheSameDataAndAnotherSeedOther)
{
    const QString again = makeInstallation(*dir_, QStringLiteral("b"), 11);
    const QString other = makeInstallation(*dir_, QStringLiteral("c"), 12);
    const QString first = dumpAll(db);
    EXPECT_GT(first.size(), 10000);
    EXPECT_EQ(first, dumpAll(SqliteReader(again)));
    EXPECT_NE(first, dumpAll(SqliteReader(other)));
}

TEST_F(DemoDatabaseTest, EveryTableOfTheSchemaHasRows)
{
    for (const data::TableDef& t : data::schemaTables())
        EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM ") + t.name), 0) << t.name.toStdString();
}

TEST_F(DemoDatabaseTest, TwoOfficesEachWithCurrentAndEndedPatients)
{
    const QStringList offices =
        db.column(QStringLiteral("SELECT iKyotenCd || '/' || iKyotenEb FROM RIYOUSHA GROUP BY iKyotenCd, iKyotenEb "
                                 "HAVING sum(tExpireDay IS NULL) > 0 AND sum(tExpireDay IS NOT NULL) > 0"));
    EXPECT_EQ(offices, (QStringList{QStringLiteral("1/1"), QStringLiteral("1/2")}));
    expectNone({"SELECT count(*) FROM RIYOUSHA WHERE tExpireDay > '2026/11/21'"});
    // Both are offices in use, and an office row with branch 0 is there to be left out.
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) FROM KYOTEN WHERE iKyotenEb IN (1, 2) AND iUsedFlg = 1")), 2);
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) FROM KYOTEN WHERE iKyotenEb = 0")), 1);
}

TEST_F(DemoDatabaseTest, BirthdaysCoverAllAgesUpToPastAHundred)
{
    const QStringList days = db.column(QStringLiteral("SELECT tBirthday FROM RIYOUSHA ORDER BY tBirthday"));
    ASSERT_FALSE(days.isEmpty());
    const QDate oldest = QDate::fromString(days.first(), QStringLiteral("yyyy/MM/dd"));
    const QDate youngest = QDate::fromString(days.last(), QStringLiteral("yyyy/MM/dd"));
    EXPECT_LE(oldest, kToday.addYears(-100));
    EXPECT_GE(youngest, kToday.addYears(-75));
}

TEST_F(DemoDatabaseTest, EveryInsurerNumberOfAPatientIsAnInsurer)
{
    expectNone({"SELECT count(*) FROM RIYOUSHA WHERE (cHokenNo IS NOT NULL AND cHokenNo NOT IN "
                "(SELECT cIDno FROM HOKENJA)) "
                "OR (cFutanNo IS NOT NULL AND cFutanNo NOT IN (SELECT cIDno FROM HOKENJA))"});
    // Some insurers are reached only through the public fund number, some by nobody,
    // and some only by patients of the second office; their numbers keep leading zeros.
    expectSome({"SELECT count(*) FROM HOKENJA WHERE cIDno IN (SELECT cFutanNo FROM RIYOUSHA) "
                "AND cIDno NOT IN (SELECT cHokenNo FROM RIYOUSHA WHERE cHokenNo IS NOT NULL)",
                "SELECT count(*) FROM HOKENJA WHERE cIDno NOT IN (SELECT ifnull(cHokenNo, '') FROM RIYOUSHA) "
                "AND cIDno NOT IN (SELECT ifnull(cFutanNo, '') FROM RIYOUSHA)",
                "SELECT count(*) FROM HOKENJA WHERE cIDno IN (SELECT cHokenNo FROM RIYOUSHA WHERE iKyotenEb = 2) "
                "AND cIDno NOT IN (SELECT ifnull(cHokenNo, '') FROM RIYOUSHA WHERE iKyotenEb = 1)",
                "SELECT count(*) FROM HOKENJA WHERE cIDno LIKE '0%' AND length(cIDno) = 8"});
}

TEST_F(DemoDatabaseTest, ReadingsAreFullWidthKatakanaWithVoicedSounds)
{
    const QStringList sources = {
        QStringLiteral("SELECT cNameKana FROM RIYOUSHA"),   QStringLiteral("SELECT cNameKana FROM STAFF"),
        QStringLiteral("SELECT cNameKana FROM CAREMANE"),   QStringLiteral("SELECT cNameKana FROM DOCTOR"),
        QStringLiteral("SELECT cKikanKana FROM DOCTOR"),    QStringLiteral("SELECT cNameKana FROM SYOUKAI"),
        QStringLiteral("SELECT cShameiKana1 FROM SISETSU"), QStringLiteral("SELECT cNameKana FROM HOKENJA"),
        QStringLiteral("SELECT cAddressKana FROM RIYOUSHA")};
    QString all;
    for (const QString& sql : sources) {
        for (const QString& kana : db.column(sql)) {
            ASSERT_FALSE(kana.isEmpty()) << sql.toStdString();
            for (QChar ch : kana)
                ASSERT_TRUE((ch.unicode() >= 0x30A1 && ch.unicode() <= 0x30FC) || ch.unicode() == 0x3000)
                    << kana.toStdString() << " from " << sql.toStdString();
            all += kana;
        }
    }
    for (const char16_t* letters : {u"ガギグゲゴ", u"ザジズゼゾ", u"ダヂヅデド", u"バビブベボ", u"パピプペポ"}) {
        bool found = false;
        for (const char16_t* p = letters; *p; ++p) found = found || all.contains(QChar(*p));
        EXPECT_TRUE(found) << QString::fromUtf16(letters).toStdString();
    }
}

TEST_F(DemoDatabaseTest, TextsFitTheCodePageOfTheLabelFiles)
{
    const auto texts = [](const QString& t, const QString& c) {
        return data::columnType(t, c).startsWith(QStringLiteral("TEXT"));
    };
    const auto fits = [](const QString&, const QString& value) {
        bool lossy = false;
        base::toCp932(value, &lossy);
        return !lossy;
    };
    EXPECT_EQ(badValues(texts, fits), QStringList());
}

TEST_F(DemoDatabaseTest, PostalCodesAndDatesAreStoredAsTheProgramCompares)
{
    const QRegularExpression zip(QStringLiteral("^\\d{3}-\\d{4}$"));
    const QRegularExpression day(QStringLiteral("^(\\d{4}/\\d{2}/\\d{2})( \\d{2}:\\d{2}:\\d{2})?$"));
    const QRegularExpression month(QStringLiteral("^\\d{4}/\\d{2}$"));
    const auto isZip = [](const QString& c) {
        return c.startsWith(QStringLiteral("cYubinNo")) || c == QStringLiteral("cMailDestinationZipNo");
    };
    const auto picked = [&](const QString& t, const QString& c) {
        return isZip(c) || data::columnType(t, c) == QStringLiteral("DATETIME") || c == QStringLiteral("tServicyMonth");
    };
    const auto stored = [&](const QString& c, const QString& value) {
        if (isZip(c)) return zip.match(value).hasMatch();
        if (c == QStringLiteral("tServicyMonth")) return month.match(value).hasMatch();
        const QRegularExpressionMatch m = day.match(value);
        // A time of exactly midnight is written as the date alone.
        return m.hasMatch() && QDate::fromString(m.captured(1), QStringLiteral("yyyy/MM/dd")).isValid() &&
               m.captured(2) != QStringLiteral(" 00:00:00");
    };
    int checked = 0;
    EXPECT_EQ(badValues(picked, stored, &checked), QStringList());
    EXPECT_GT(checked, 1000);
}

TEST_F(DemoDatabaseTest, TelephoneNumbersHaveTheirNationalForm)
{
    // Fixed lines have ten digits with the area code first; mobiles eleven, 070/080/090.
    const QRegularExpression fixed(QStringLiteral("^0\\d{1,3}-\\d{2,4}-\\d{4}$"));
    const QRegularExpression mobile(QStringLiteral("^0[789]0-[1-9]\\d{3}-\\d{4}$"));
    const auto phones = [](const QString&, const QString& c) {
        return c.endsWith(QStringLiteral("TelNo")) || c.endsWith(QStringLiteral("FaxNo")) ||
               c.endsWith(QStringLiteral("MobNo"));
    };
    const auto national = [&](const QString& c, const QString& value) {
        const bool isFixed = fixed.match(value).hasMatch() && QString(value).remove(u'-').size() == 10;
        return mobile.match(value).hasMatch() || (isFixed && !c.endsWith(QStringLiteral("MobNo")));
    };
    int checked = 0;
    EXPECT_EQ(badValues(phones, national, &checked), QStringList());
    EXPECT_GT(checked, 100);
}

TEST_F(DemoDatabaseTest, StaffCurrentAndLeftInBothOffices)
{
    for (const char* office : {"1", "2"}) {
        SCOPED_TRACE(office);
        const QString where =
            QStringLiteral("SELECT count(*) FROM STAFF WHERE iKyotenEb = %1 AND ").arg(QString::fromLatin1(office));
        for (const char* flag : {"ifnull(iChusiFlg, 0) = 0", "iChusiFlg = 1", "iChusiFlg = 2", "iChusiFlg IS NULL"})
            EXPECT_GT(db.number(where + QString::fromLatin1(flag)), 0) << flag;
    }
    // Staff in charge of current patients are current staff of the patient's office.
    expectNone({"SELECT count(*) FROM RIYOUSHA r WHERE r.tExpireDay IS NULL AND NOT EXISTS (SELECT 1 FROM STAFF s "
                "WHERE s.nIDNo = r.nTantou AND s.iKyotenCd = r.iKyotenCd AND s.iKyotenEb = r.iKyotenEb "
                "AND ifnull(s.iChusiFlg, 0) = 0)"});
}

TEST_F(DemoDatabaseTest, LinksBetweenPeopleAndPlacesResolve)
{
    // Doctors of the consents, stored as numbers, find doctors keyed by text; doctor
    // numbers are numeric text.
    expectNone({"SELECT count(*) FROM RIYOUSHA_SUB WHERE iIsiCd IS NOT NULL "
                "AND NOT EXISTS (SELECT 1 FROM DOCTOR WHERE DOCTOR.cIDno = RIYOUSHA_SUB.iIsiCd)",
                "SELECT count(*) FROM DOCTOR WHERE iSisetsuCode NOT IN "
                "(SELECT nIDNo FROM SISETSU WHERE iKikanShubetsu = 2)",
                "SELECT count(*) FROM RIYOUSHA_SUB WHERE iCareCd IS NOT NULL "
                "AND iCareCd NOT IN (SELECT nIDNo FROM CAREMANE)",
                "SELECT count(*) FROM RIYOUSHA_DOUI_REC WHERE cIsiCd NOT IN (SELECT cIDno FROM DOCTOR)",
                "SELECT count(*) - count(DISTINCT nIDNo) FROM SISETSU",
                "SELECT count(*) FROM DOCTOR WHERE CAST(cIDno AS INTEGER) || '' <> cIDno"});
    // Care managers at a facility and also with an office, with neither, and stopped;
    // doctor numbers whose number order is not their text order.
    expectSome({"SELECT count(*) FROM CAREMANE JOIN SISETSU ON SISETSU.nIDNo = CAREMANE.iSisetsuCode "
                "JOIN SISETSU AS S2 ON S2.nIDNo = CAREMANE.iJigyosyoCode",
                "SELECT count(*) FROM CAREMANE WHERE iSisetsuCode IS NULL AND iJigyosyoCode IS NULL",
                "SELECT count(*) FROM CAREMANE WHERE iChusiFlg = 1",
                "SELECT count(*) FROM DOCTOR WHERE length(cIDno) > 1"});
    // Facilities and medical institutions, numbered apart over both offices.
    EXPECT_EQ(db.column(QStringLiteral("SELECT DISTINCT iKikanShubetsu FROM SISETSU ORDER BY 1")),
              (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
}

TEST_F(DemoDatabaseTest, PatientsHaveTheirFurtherAddresses)
{
    expectSome({"SELECT count(*) FROM RIYOUSHA WHERE cAdress2 IS NOT NULL AND cYubinNo2 IS NOT NULL",
                "SELECT count(*) FROM RIYOUSHA r JOIN RIYOUSHA_SUB s USING (iKyotenCd, iKyotenEb, nIDNo) "
                "WHERE s.cAdress3 IS NOT NULL AND r.cYubinNo3 IS NOT NULL",
                "SELECT count(*) FROM RIYOUSHA_SUB WHERE cJusyo1S0Ryosyu IS NOT NULL AND cAtenaS0Ryosyu IS NOT NULL",
                "SELECT count(*) FROM RIYOUSHA_SUB WHERE cJusyo1S0Renraku IS NOT NULL AND cAtenaS0Renraku IS NOT NULL",
                "SELECT count(*) FROM RIYOUSHA WHERE nRoomNo > 0",
                // Reimbursed patients, among them one whose receipts are handed over.
                "SELECT count(*) FROM RIYOUSHA_SUB WHERE iShoukanSiharai = 1",
                "SELECT count(*) FROM RIYOUSHA WHERE REPLACE(REPLACE(REPLACE(TRIM(cHTIryoName), CHAR(13), ''), "
                "CHAR(10), ''), '　', '') = '手渡し' AND cHTIryoName <> '手渡し'"});
    // The office rows carry the address that mail goes back to.
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(DISTINCT iKyotenEb) FROM CORP WHERE cMailDestination <> '' "
                                       "AND cMailDestinationZipNo <> ''")),
              2);
}

TEST_F(DemoDatabaseTest, ConsentsOfEachKindAcrossMonths)
{
    const QString consents = QStringLiteral(
        "SELECT count(*) FROM RIYOUSHA_DOUI_REC d JOIN RIYOUSHA r USING (iKyotenCd, iKyotenEb, nIDNo) WHERE ");
    for (const char* where :
         {"r.iSejutsuKubun = 0 AND max(d.iSejutuBui1, d.iSejutuBui2, d.iSejutuBui3, d.iSejutuBui4, d.iSejutuBui5) <= 1",
          "r.iSejutsuKubun = 0 AND max(d.iSejutuBui1, d.iSejutuBui2, d.iSejutuBui3, d.iSejutuBui4, d.iSejutuBui5) >= 2",
          "r.iSejutsuKubun = 1",
          // The consent list of this month (massage, three months) has patients to show.
          "r.iSejutsuKubun = 0 AND r.tExpireDay IS NULL AND d.tDouiDay >= '2026/08/16' AND d.tDouiDay < '2026/09/16'"})
        EXPECT_GT(db.number(consents + QString::fromLatin1(where)), 0) << where;
    expectSome({"SELECT count(*) FROM RIYOUSHA WHERE tDouiDay1 IS NULL AND tDouiDay2 IS NULL"});
    EXPECT_GE(db.number(QStringLiteral("SELECT count(DISTINCT substr(tDouiDay, 1, 7)) FROM RIYOUSHA_DOUI_REC")), 12);
    EXPECT_GT(db.number(QStringLiteral("SELECT count(DISTINCT iDoui1CalcType) FROM DOUIKIROKU")), 1);
    // The patient's two current consents are records of the history.
    expectNone({"SELECT count(*) FROM RIYOUSHA r WHERE r.tDouiDay1 >= '2025/08/21' AND NOT EXISTS (SELECT 1 FROM "
                "RIYOUSHA_DOUI_REC d WHERE d.iKyotenCd = r.iKyotenCd AND d.iKyotenEb = r.iKyotenEb "
                "AND d.nIDNo = r.nIDNo AND d.tDouiDay = r.tDouiDay1)"});
}

TEST_F(DemoDatabaseTest, VisitsAndReportsOfRecentMonths)
{
    EXPECT_EQ(db.column(QStringLiteral("SELECT DISTINCT substr(tServicyDayStart, 1, 7) FROM JISSEKI ORDER BY 1")),
              (QStringList{QStringLiteral("2026/09"), QStringLiteral("2026/10"), QStringLiteral("2026/11")}));
    EXPECT_GT(db.number(QStringLiteral("SELECT count(DISTINCT tServicyMonth) FROM 経過報告")), 3);
    // Nothing after today, and no visits after a patient's service ended.
    expectNone({"SELECT count(*) FROM JISSEKI WHERE tServicyDayStart > '2026/11/22'",
                "SELECT count(*) FROM JISSEKI j JOIN RIYOUSHA r ON r.iKyotenCd = j.iKyotenCd AND "
                "r.iKyotenEb = j.iKyotenEb AND r.nIDNo = j.nRiyoushaIDNo WHERE j.tServicyDayStart > "
                "r.tExpireDay || ' 23:59:59'",
                "SELECT count(*) FROM 経過報告 WHERE tServicyMonth >= '2026/11'"});
}

TEST_F(DemoDatabaseTest, ConsultationsHaveStaffAlsoFromTheOtherOffice)
{
    expectNone({"SELECT count(*) FROM SOUDAN_TANTOU t WHERE NOT EXISTS (SELECT 1 FROM STAFF s WHERE s.nIDNo = "
                "t.nStaffIDNo AND s.iKyotenCd = t.iStaffKyotenCd AND s.iKyotenEb = t.iStaffKyotenEb)",
                "SELECT count(*) FROM SOUDAN_TANTOU WHERE nIDNo NOT IN (SELECT nIDNo FROM SOUDAN)"});
    expectSome({"SELECT count(*) FROM SOUDAN_TANTOU t JOIN SOUDAN c ON c.nIDNo = t.nIDNo "
                "JOIN SISETSU f ON f.nIDNo = c.iSisetsuCode WHERE f.iKyotenEb <> t.iStaffKyotenEb"});
}

}  // namespace
