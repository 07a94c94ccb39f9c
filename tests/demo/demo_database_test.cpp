// The generated demo data: reproducible from its seed, and shaped like a clinic's
// database in the ways the program's screens depend on.

#include "base/text_codec.h"
#include "data/schema.h"
#include "demo_db.h"
#include "demo_installation.h"

#include <QDate>
#include <QDir>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <memory>

namespace {

using demotest::DemoDb;

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

    DemoDb db{path_};

    static std::unique_ptr<QTemporaryDir> dir_;
    static QString path_;
};

std::unique_ptr<QTemporaryDir> DemoDatabaseTest::dir_;
QString DemoDatabaseTest::path_;

QString dumpAll(const DemoDb& db)
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
    EXPECT_EQ(first, dumpAll(DemoDb(again)));
    EXPECT_NE(first, dumpAll(DemoDb(other)));
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
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) FROM RIYOUSHA WHERE tExpireDay > '2026/11/21'")), 0);
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
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) FROM RIYOUSHA WHERE (cHokenNo IS NOT NULL AND cHokenNo NOT IN "
                                       "(SELECT cIDno FROM HOKENJA)) "
                                       "OR (cFutanNo IS NOT NULL AND cFutanNo NOT IN (SELECT cIDno FROM HOKENJA))")),
              0);
    // Some insurers are reached only through the public fund number, some by nobody,
    // and some only by patients of the second office.
    EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM HOKENJA WHERE cIDno IN (SELECT cFutanNo FROM RIYOUSHA) "
                                       "AND cIDno NOT IN (SELECT cHokenNo FROM RIYOUSHA WHERE cHokenNo IS NOT NULL)")),
              0);
    EXPECT_GT(db.number(QStringLiteral(
                  "SELECT count(*) FROM HOKENJA WHERE cIDno NOT IN (SELECT ifnull(cHokenNo, '') FROM RIYOUSHA) "
                  "AND cIDno NOT IN (SELECT ifnull(cFutanNo, '') FROM RIYOUSHA)")),
              0);
    EXPECT_GT(db.number(QStringLiteral(
                  "SELECT count(*) FROM HOKENJA WHERE cIDno IN (SELECT cHokenNo FROM RIYOUSHA WHERE iKyotenEb = 2) "
                  "AND cIDno NOT IN (SELECT ifnull(cHokenNo, '') FROM RIYOUSHA WHERE iKyotenEb = 1)")),
              0);
    // Insurer numbers keep their leading zeros.
    EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM HOKENJA WHERE cIDno LIKE '0%' AND length(cIDno) = 8")), 0);
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
    for (const data::TableDef& t : data::schemaTables()) {
        for (const QString& c : t.columns) {
            if (!data::columnType(t.name, c).startsWith(QStringLiteral("TEXT"))) continue;
            for (const QString& value : db.column(QStringLiteral("SELECT ") + c + QStringLiteral(" FROM ") + t.name)) {
                bool lossy = false;
                base::toCp932(value, &lossy);
                ASSERT_FALSE(lossy) << t.name.toStdString() << "." << c.toStdString() << ": " << value.toStdString();
            }
        }
    }
}

TEST_F(DemoDatabaseTest, PostalCodesAndDatesAreStoredAsTheProgramCompares)
{
    const QRegularExpression zip(QStringLiteral("^\\d{3}-\\d{4}$"));
    const QRegularExpression day(QStringLiteral("^(\\d{4}/\\d{2}/\\d{2})( \\d{2}:\\d{2}:\\d{2})?$"));
    const QRegularExpression month(QStringLiteral("^\\d{4}/\\d{2}$"));
    int checked = 0;
    for (const data::TableDef& t : data::schemaTables()) {
        for (const QString& c : t.columns) {
            const QString sql = QStringLiteral("SELECT ") + c + QStringLiteral(" FROM ") + t.name +
                                QStringLiteral(" WHERE ") + c + QStringLiteral(" IS NOT NULL");
            const bool isZip = c.startsWith(QStringLiteral("cYubinNo")) || c == QStringLiteral("cMailDestinationZipNo");
            const QString type = data::columnType(t.name, c);
            if (!isZip && type != QStringLiteral("DATETIME") && c != QStringLiteral("tServicyMonth")) continue;
            for (const QString& value : db.column(sql)) {
                ++checked;
                if (isZip) {
                    ASSERT_TRUE(zip.match(value).hasMatch()) << c.toStdString() << ": " << value.toStdString();
                } else if (c == QStringLiteral("tServicyMonth")) {
                    ASSERT_TRUE(month.match(value).hasMatch()) << value.toStdString();
                } else {
                    const QRegularExpressionMatch m = day.match(value);
                    ASSERT_TRUE(m.hasMatch())
                        << t.name.toStdString() << "." << c.toStdString() << ": " << value.toStdString();
                    ASSERT_TRUE(QDate::fromString(m.captured(1), QStringLiteral("yyyy/MM/dd")).isValid())
                        << value.toStdString();
                    // A time of exactly midnight is written as the date alone.
                    ASSERT_NE(m.captured(2), QStringLiteral(" 00:00:00")) << value.toStdString();
                }
            }
        }
    }
    EXPECT_GT(checked, 1000);
}

TEST_F(DemoDatabaseTest, TelephoneNumbersHaveTheirNationalForm)
{
    // Fixed lines have ten digits with the area code first; mobiles eleven, 070/080/090.
    const QRegularExpression fixed(QStringLiteral("^0\\d{1,3}-\\d{2,4}-\\d{4}$"));
    const QRegularExpression mobile(QStringLiteral("^0[789]0-[1-9]\\d{3}-\\d{4}$"));
    int checked = 0;
    for (const data::TableDef& t : data::schemaTables()) {
        for (const QString& c : t.columns) {
            if (!c.endsWith(QStringLiteral("TelNo")) && !c.endsWith(QStringLiteral("FaxNo")) &&
                !c.endsWith(QStringLiteral("MobNo")))
                continue;
            for (const QString& value :
                 db.column(QStringLiteral("SELECT %1 FROM %2 WHERE %1 IS NOT NULL").arg(c, t.name))) {
                ++checked;
                const bool isMobile = mobile.match(value).hasMatch();
                const bool isFixed =
                    fixed.match(value).hasMatch() && QString(value).remove(QLatin1Char('-')).size() == 10;
                ASSERT_TRUE(isMobile || isFixed)
                    << t.name.toStdString() << "." << c.toStdString() << ": " << value.toStdString();
                if (c.endsWith(QStringLiteral("MobNo"))) {
                    ASSERT_TRUE(isMobile) << value.toStdString();
                }
            }
        }
    }
    EXPECT_GT(checked, 100);
}

TEST_F(DemoDatabaseTest, StaffCurrentAndLeftInBothOffices)
{
    for (int eb : {1, 2}) {
        const QString office = QStringLiteral(" AND iKyotenEb = ") + QString::number(eb);
        EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM STAFF WHERE ifnull(iChusiFlg, 0) = 0") + office), 0);
        EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM STAFF WHERE iChusiFlg = 1") + office), 0);
        EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM STAFF WHERE iChusiFlg = 2") + office), 0);
        EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM STAFF WHERE iChusiFlg IS NULL") + office), 0);
    }
    // Staff in charge of current patients are current staff of the patient's office.
    EXPECT_EQ(db.number(QStringLiteral(
                  "SELECT count(*) FROM RIYOUSHA r WHERE r.tExpireDay IS NULL AND NOT EXISTS (SELECT 1 FROM STAFF s "
                  "WHERE s.nIDNo = r.nTantou AND s.iKyotenCd = r.iKyotenCd AND s.iKyotenEb = r.iKyotenEb "
                  "AND ifnull(s.iChusiFlg, 0) = 0)")),
              0);
}

TEST_F(DemoDatabaseTest, LinksBetweenPeopleAndPlacesResolve)
{
    // Doctors of the consents, stored as numbers, find doctors keyed by text.
    EXPECT_EQ(
        db.number(QStringLiteral("SELECT count(*) FROM RIYOUSHA_SUB WHERE iIsiCd IS NOT NULL "
                                 "AND NOT EXISTS (SELECT 1 FROM DOCTOR WHERE DOCTOR.cIDno = RIYOUSHA_SUB.iIsiCd)")),
        0);
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) FROM DOCTOR WHERE iSisetsuCode NOT IN "
                                       "(SELECT nIDNo FROM SISETSU WHERE iKikanShubetsu = 2)")),
              0);
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) FROM RIYOUSHA_SUB WHERE iCareCd IS NOT NULL "
                                       "AND iCareCd NOT IN (SELECT nIDNo FROM CAREMANE)")),
              0);
    EXPECT_EQ(db.number(QStringLiteral(
                  "SELECT count(*) FROM RIYOUSHA_DOUI_REC WHERE cIsiCd NOT IN (SELECT cIDno FROM DOCTOR)")),
              0);
    // Care managers: at a facility, also with an office, with neither, and stopped.
    EXPECT_GT(
        db.number(QStringLiteral("SELECT count(*) FROM CAREMANE JOIN SISETSU ON SISETSU.nIDNo = CAREMANE.iSisetsuCode "
                                 "JOIN SISETSU AS S2 ON S2.nIDNo = CAREMANE.iJigyosyoCode")),
        0);
    EXPECT_GT(
        db.number(QStringLiteral("SELECT count(*) FROM CAREMANE WHERE iSisetsuCode IS NULL AND iJigyosyoCode IS NULL")),
        0);
    EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM CAREMANE WHERE iChusiFlg = 1")), 0);
    // Facilities and medical institutions, numbered apart over both offices.
    EXPECT_EQ(db.column(QStringLiteral("SELECT DISTINCT iKikanShubetsu FROM SISETSU ORDER BY 1")),
              (QStringList{QStringLiteral("1"), QStringLiteral("2")}));
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) - count(DISTINCT nIDNo) FROM SISETSU")), 0);
    // Doctor numbers are numeric text, and their number order is not their text order.
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) FROM DOCTOR WHERE CAST(cIDno AS INTEGER) || '' <> cIDno")), 0);
    EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM DOCTOR WHERE length(cIDno) > 1")), 0);
}

TEST_F(DemoDatabaseTest, PatientsHaveTheirFurtherAddresses)
{
    for (const char* sql :
         {"SELECT count(*) FROM RIYOUSHA WHERE cAdress2 IS NOT NULL AND cYubinNo2 IS NOT NULL",
          "SELECT count(*) FROM RIYOUSHA r JOIN RIYOUSHA_SUB s USING (iKyotenCd, iKyotenEb, nIDNo) "
          "WHERE s.cAdress3 IS NOT NULL AND r.cYubinNo3 IS NOT NULL",
          "SELECT count(*) FROM RIYOUSHA_SUB WHERE cJusyo1S0Ryosyu IS NOT NULL AND cAtenaS0Ryosyu IS NOT NULL",
          "SELECT count(*) FROM RIYOUSHA_SUB WHERE cJusyo1S0Renraku IS NOT NULL AND cAtenaS0Renraku IS NOT NULL",
          "SELECT count(*) FROM RIYOUSHA WHERE nRoomNo > 0",
          // Reimbursed patients, among them one whose receipts are handed over.
          "SELECT count(*) FROM RIYOUSHA_SUB WHERE iShoukanSiharai = 1",
          "SELECT count(*) FROM RIYOUSHA WHERE REPLACE(REPLACE(REPLACE(TRIM(cHTIryoName), CHAR(13), ''), "
          "CHAR(10), ''), '　', '') = '手渡し' AND cHTIryoName <> '手渡し'"})
        EXPECT_GT(db.number(QString::fromUtf8(sql)), 0) << sql;
    // The office rows carry the address that mail goes back to.
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(DISTINCT iKyotenEb) FROM CORP WHERE cMailDestination <> '' "
                                       "AND cMailDestinationZipNo <> ''")),
              2);
}

TEST_F(DemoDatabaseTest, ConsentsOfEachKindAcrossMonths)
{
    const QString kind = QStringLiteral(
        "SELECT count(*) FROM RIYOUSHA_DOUI_REC d JOIN RIYOUSHA r USING (iKyotenCd, iKyotenEb, nIDNo) WHERE ");
    EXPECT_GT(db.number(kind + QStringLiteral("r.iSejutsuKubun = 0 AND max(d.iSejutuBui1, d.iSejutuBui2, "
                                              "d.iSejutuBui3, d.iSejutuBui4, d.iSejutuBui5) <= 1")),
              0);
    EXPECT_GT(db.number(kind + QStringLiteral("r.iSejutsuKubun = 0 AND max(d.iSejutuBui1, d.iSejutuBui2, "
                                              "d.iSejutuBui3, d.iSejutuBui4, d.iSejutuBui5) >= 2")),
              0);
    EXPECT_GT(db.number(kind + QStringLiteral("r.iSejutsuKubun = 1")), 0);
    EXPECT_GE(db.number(QStringLiteral("SELECT count(DISTINCT substr(tDouiDay, 1, 7)) FROM RIYOUSHA_DOUI_REC")), 12);
    // The patient's two current consents are records of the history.
    EXPECT_EQ(db.number(QStringLiteral(
                  "SELECT count(*) FROM RIYOUSHA r WHERE r.tDouiDay1 >= '2025/08/21' AND NOT EXISTS (SELECT 1 FROM "
                  "RIYOUSHA_DOUI_REC d WHERE d.iKyotenCd = r.iKyotenCd AND d.iKyotenEb = r.iKyotenEb "
                  "AND d.nIDNo = r.nIDNo AND d.tDouiDay = r.tDouiDay1)")),
              0);
    EXPECT_GT(db.number(QStringLiteral("SELECT count(*) FROM RIYOUSHA WHERE tDouiDay1 IS NULL AND tDouiDay2 IS NULL")),
              0);
    // The consent list of this month (massage, three months) has patients to show.
    EXPECT_GT(db.number(kind + QStringLiteral("r.iSejutsuKubun = 0 AND r.tExpireDay IS NULL "
                                              "AND d.tDouiDay >= '2026/08/16' AND d.tDouiDay < '2026/09/16'")),
              0);
    EXPECT_GT(db.number(QStringLiteral("SELECT count(DISTINCT iDoui1CalcType) FROM DOUIKIROKU")), 1);
}

TEST_F(DemoDatabaseTest, VisitsAndReportsOfRecentMonths)
{
    EXPECT_EQ(db.column(QStringLiteral("SELECT DISTINCT substr(tServicyDayStart, 1, 7) FROM JISSEKI ORDER BY 1")),
              (QStringList{QStringLiteral("2026/09"), QStringLiteral("2026/10"), QStringLiteral("2026/11")}));
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) FROM JISSEKI WHERE tServicyDayStart > '2026/11/22'")), 0);
    // No visits after a patient's service ended.
    EXPECT_EQ(
        db.number(QStringLiteral("SELECT count(*) FROM JISSEKI j JOIN RIYOUSHA r ON r.iKyotenCd = j.iKyotenCd AND "
                                 "r.iKyotenEb = j.iKyotenEb AND r.nIDNo = j.nRiyoushaIDNo WHERE j.tServicyDayStart > "
                                 "r.tExpireDay || ' 23:59:59'")),
        0);
    EXPECT_GT(db.number(QStringLiteral("SELECT count(DISTINCT tServicyMonth) FROM 経過報告")), 3);
    EXPECT_EQ(db.number(QStringLiteral("SELECT count(*) FROM 経過報告 WHERE tServicyMonth >= '2026/11'")), 0);
}

TEST_F(DemoDatabaseTest, ConsultationsHaveStaffAlsoFromTheOtherOffice)
{
    EXPECT_EQ(
        db.number(QStringLiteral(
            "SELECT count(*) FROM SOUDAN_TANTOU t WHERE NOT EXISTS (SELECT 1 FROM STAFF s WHERE s.nIDNo = t.nStaffIDNo "
            "AND s.iKyotenCd = t.iStaffKyotenCd AND s.iKyotenEb = t.iStaffKyotenEb)")),
        0);
    EXPECT_EQ(
        db.number(QStringLiteral("SELECT count(*) FROM SOUDAN_TANTOU WHERE nIDNo NOT IN (SELECT nIDNo FROM SOUDAN)")),
        0);
    EXPECT_GT(
        db.number(QStringLiteral("SELECT count(*) FROM SOUDAN_TANTOU t JOIN SOUDAN c ON c.nIDNo = t.nIDNo "
                                 "JOIN SISETSU f ON f.nIDNo = c.iSisetsuCode WHERE f.iKyotenEb <> t.iStaffKyotenEb")),
        0);
}

}  // namespace
