// The ledger's data file, byte for byte, and the reduction of rows to the texts the
// seal screen reads.

#include "selection/handover.h"
#include "selection/ledger_csv.h"

#include "base/text_codec.h"
#include "support/files.h"
#include "support/printers.h"

#include <QTemporaryDir>

#include <initializer_list>
#include <tuple>

#include <gtest/gtest.h>

using namespace selection;

namespace {

ConsentRow row(qint32 id, const QString& name, qint32 tantou, const QString& staff, const QString& doctor)
{
    ConsentRow r;
    r.nIDNo = id;
    r.RiyouName = name;
    r.nTantou = tantou;
    r.StaffName = staff;
    r.KijunDay = QStringLiteral("2026/09/15");
    r.DouiKigen = QStringLiteral("2026/11/30");
    r.ShinDouiDay = QStringLiteral("2026/12/01");
    r.nKeika = 8;
    r.IshiIDno = doctor;
    r.IshiName = QStringLiteral("山田太郎");
    r.IshiKikanName = QStringLiteral("山田医院");
    return r;
}

// Rows numbered from 1, each with its staff number, staff name and doctor.
ConsentRows rowsOf(std::initializer_list<std::tuple<qint32, const char16_t*, const char16_t*>> list)
{
    ConsentRows rows;
    for (const auto& [tantou, staff, doctor] : list)
        rows.push_back(row(qint32(rows.size() + 1), {}, tantou, QString::fromUtf16(staff), QString::fromUtf16(doctor)));
    return rows;
}

const char kTitleLine[] =
    "\"枠線描画\",\"何月分\",\"種別\",\"No\",\"患者ID\",\"患者名\",\"施術者ID\",\"同意日\",\"同意書期限\",\"新同意日\","
    "\"経過\",\"担当者\",\"依頼日\",\"予備1\",\"予備2\",\"受取日\",\"同意医師\",\"同意医師機関\",\"同意医師TEL\","
    "\"同意医師IDNo\",\"基準日表示\",\"初回フラグ\",\"初療日未入力フラグ\"";

TEST(LedgerCsv, FileBytesAreCp932WithQuotedTextsAndBareNumbers)
{
    QTemporaryDir dir;
    ConsentRows rows{row(101, QStringLiteral("青木 一"), 11, QStringLiteral("佐藤"), QStringLiteral("D1"))};
    rows[0].IshiTel = QStringLiteral("03-1111-2222");
    const QString path = dir.path() + QStringLiteral("/同意データ.csv");
    writeLedgerCsv(path, ledgerCsvLines(rows, QDate(2026, 11, 1), 0, true));
    const QString expected = QString::fromUtf8(kTitleLine) + QStringLiteral("\r\n") +
                             QStringLiteral("\"1\",\"2026/11/01\",\"マッサージ\",1,101,\"青木 一\",11,\"2026/09/15\","
                                            "\"2026/11/30\",\"2026/12/01\",8,\"佐藤\",\"\",\"\",\"\",\"\",\"山田太郎\","
                                            "\"山田医院\",\"03-1111-2222\",\"D1\",1,0,0\r\n");
    EXPECT_EQ(sealtest::fileBytes(path), base::toCp932(expected));
}

TEST(LedgerCsv, APreviousFileIsReplacedNotAppendedTo)
{
    QTemporaryDir dir;
    const QString path = dir.path() + QStringLiteral("/同意データ.csv");
    sealtest::putBytes(path, QByteArray(5000, 'x'));
    writeLedgerCsv(path, ledgerCsvLines({}, QDate(2026, 11, 1), 0, true));
    EXPECT_EQ(sealtest::fileBytes(path), base::toCp932(QString::fromUtf8(kTitleLine)) + "\r\n");
}

TEST(LedgerCsv, AFolderThatDoesNotExistIsAFault)
{
    QTemporaryDir dir;
    EXPECT_NE(sealtest::faultOf([&] {
                  writeLedgerCsv(dir.path() + QStringLiteral("/no/such/同意データ.csv"), {QStringLiteral("x")});
              }),
              0);
}

TEST(LedgerCsv, RunningNumberRestartsPerStaffMemberAndRowsWithoutStaffAreEachOne)
{
    ConsentRows rows;
    for (qint32 staff : {0, 0, 11, 11, 11, 12, 12}) rows.push_back(row(0, {}, staff, {}, QStringLiteral("D1")));
    const QStringList lines = ledgerCsvLines(rows, QDate(2026, 11, 1), 0, true);
    ASSERT_EQ(lines.size(), 8);
    QStringList numbers;
    for (qsizetype i = 1; i < lines.size(); ++i) numbers << lines[i].split(u',')[3];
    EXPECT_EQ(numbers.join(u' '), QStringLiteral("1 1 1 2 3 1 2"));
}

TEST(LedgerCsv, EveryLineHasTwentyThreeFieldsAndTheBaseDateSwitch)
{
    const ConsentRows rows = rowsOf({{11, u"", u"D1"}, {11, u"", u"D2"}});
    for (bool disp : {false, true}) {
        const QStringList lines = ledgerCsvLines(rows, QDate(2026, 11, 1), 0, disp);
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const QStringList f = lines[i].split(u',');
            ASSERT_EQ(f.size(), 23) << lines[i].toStdString();
            EXPECT_EQ(f[20], disp ? QStringLiteral("1") : QStringLiteral("0"));
            for (int k = 12; k <= 15; ++k) EXPECT_EQ(f[k], QStringLiteral("\"\""));
        }
    }
}

TEST(LedgerCsv, ANameWithADoubleQuoteIsWrittenAsItStands)
{
    const QStringList lines =
        ledgerCsvLines({row(1, QStringLiteral("青木\"一"), 11, {}, QStringLiteral("D1"))}, QDate(2026, 11, 1), 0, true);
    EXPECT_TRUE(lines[1].contains(QStringLiteral(",\"青木\"一\",")));
}

TEST(LedgerCsv, KindTextFollowsTheTreatment)
{
    EXPECT_EQ(ledgerKindText(0), QStringLiteral("マッサージ"));
    EXPECT_EQ(ledgerKindText(1), QStringLiteral("変形徒手矯正術"));
    EXPECT_EQ(ledgerKindText(2), QStringLiteral("温あん法"));
    EXPECT_EQ(ledgerKindText(7), QStringLiteral("はり・きゅう"));
    EXPECT_EQ(ledgerKindText(3), QStringLiteral("温あん法・電気光線器具"));
    EXPECT_EQ(ledgerKindText(5), QStringLiteral("温あん法・電気光線器具"));
}

// --- hand-over ---------------------------------------------------------------------

TEST(HandOver, PerRowADoctorWithThreePatientsGivesThreeEntries)
{
    HandOver h;
    appendPerRow(rowsOf({{0, u"", u"D1"}, {0, u"", u"D1"}, {0, u"", u"D1"}}), h);
    EXPECT_EQ(h.sIshiID_SEAL, QStringLiteral("D1,D1,D1"));
    EXPECT_EQ(h.sTantouID_SEAL, QStringLiteral("0,0,0"));
    EXPECT_EQ(h.sTantouName_SEAL, QStringLiteral(",,"));
}

TEST(HandOver, PerRowAppendsToWhatTheMembersHold)
{
    HandOver h{QStringLiteral("X"), QStringLiteral("9"), QStringLiteral("n")};
    appendPerRow(rowsOf({{11, u"佐藤", u"D1"}}), h);
    EXPECT_EQ(h.sIshiID_SEAL, QStringLiteral("XD1"));
    EXPECT_EQ(h.sTantouID_SEAL, QStringLiteral("911"));
    EXPECT_EQ(h.sTantouName_SEAL, QStringLiteral("n佐藤"));
}

TEST(HandOver, PerDoctorOneDoctorUnderTwoStaffMembersGivesTwoEntries)
{
    HandOver h{QStringLiteral("stale"), QStringLiteral("stale"), QStringLiteral("stale")};
    joinPerDoctor(rowsOf({{11, u"佐藤", u"D1"}, {11, u"佐藤", u"D1"}, {11, u"佐藤", u"D2"}, {12, u"鈴木", u"D1"}}), h);
    EXPECT_EQ(h.sIshiID_SEAL, QStringLiteral("D1,D2,D1"));
    EXPECT_EQ(h.sTantouID_SEAL, QStringLiteral("11,11,12"));
    EXPECT_EQ(h.sTantouName_SEAL, QStringLiteral("佐藤,佐藤,鈴木"));
}

TEST(HandOver, PerDoctorWithoutStaffEachDoctorOnceInAll)
{
    HandOver h;
    joinPerDoctor(rowsOf({{0, u"", u"D1"}, {0, u"", u"D2"}, {0, u"", u"D1"}}), h);
    EXPECT_EQ(h.sIshiID_SEAL, QStringLiteral("D1,D2"));
    EXPECT_EQ(h.sTantouID_SEAL, QStringLiteral("0,0"));
}

}  // namespace
