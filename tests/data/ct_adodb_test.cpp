// cT_ADODB on the real drivers: each operation, each status, and each form of sErrMsg
// exactly as callers show it to the operator.

#include "support/ado_test_db.h"

#include "support/globals_scope.h"
#include "support/param_names.h"

#include "app/globals.h"
#include "controls/recording_platform.h"
#include "data/ado/faults.h"
#include "data/ct_adodb.h"

#include <QFile>

#include <gtest/gtest.h>

using data::cT_ADODB;
using data::ado::Recordset;

namespace {

const QString kClosedFault = QStringLiteral("オブジェクトが閉じている場合は、操作は許可されません。");

class CtAdodb : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_EQ(adodb.iInit(db.sqliteConnect()), 0);
        ASSERT_EQ(adodb.iConnect(), 0) << adodb.sErrMsg().toStdString();
    }

    short open(std::unique_ptr<Recordset>& rs, const QString& sql)
    {
        rs = std::make_unique<Recordset>();
        rs->setCursorLocation(data::ado::adUseClient);
        return adodb.iOpenRecSet(rs, sql, data::ado::adOpenForwardOnly, data::ado::adLockReadOnly,
                                 data::ado::adCmdText);
    }

    // The text vAddAdoErrorLog appends for one SQLite error on an open connection.
    static QString oneSqliteError(const QString& head, qint32 number, const QString& text, const QString& state,
                                  int native)
    {
        return head + QStringLiteral("\rConnection State=1\rError Number: %1\r  Description: %2\r  Source: SQLite"
                                     "\r  SQL State: %3\r  Native Error: %4\r\r1 provider error(s) occurred.")
                          .arg(number)
                          .arg(text, state)
                          .arg(native);
    }

    adotest::TestDb db;
    cT_ADODB adodb;
};

TEST(CtAdodbFresh, StartsEmptyAndInitDoesNotConnect)
{
    adotest::TestDb db;
    cT_ADODB adodb;
    EXPECT_TRUE(adodb.sErrMsg().isEmpty());
    EXPECT_EQ(adodb.ihehe(), 0);
    EXPECT_EQ(adodb.iInit(db.sqliteConnect()), 0);
    EXPECT_EQ(adodb.adoConnection().State(), data::ado::adStateClosed);
    EXPECT_TRUE(adodb.sErrMsg().isEmpty());
}

TEST_F(CtAdodb, ConnectOpensAndSetsTheCommandTimeoutTo180)
{
    EXPECT_EQ(adodb.adoConnection().State(), data::ado::adStateOpen);
    EXPECT_EQ(adodb.adoConnection().CommandTimeout(), 180);
    EXPECT_EQ(adodb.sDbName(), QStringLiteral("seal.db"));
}

TEST_F(CtAdodb, ConnectOnAnOpenConnectionKeepsItAndResetsTheTimeout)
{
    ASSERT_EQ(adodb.iExecSQL(QStringLiteral("CREATE TEMP TABLE work (n INTEGER)")), 0);
    ASSERT_EQ(adodb.iSetTimeout(60), 0);
    EXPECT_EQ(adodb.adoConnection().CommandTimeout(), 60);
    EXPECT_EQ(adodb.iConnect(), 0);
    EXPECT_EQ(adodb.adoConnection().CommandTimeout(), 180);
    // A reopened connection would have lost its temporary table.
    EXPECT_EQ(adodb.iExecSQL(QStringLiteral("INSERT INTO work VALUES (1)")), 0) << adodb.sErrMsg().toStdString();
}

TEST_F(CtAdodb, SetTimeoutIgnoresZeroAndBelow)
{
    for (short seconds : {short(0), short(-1), short(-32768)}) {
        EXPECT_EQ(adodb.iSetTimeout(seconds), 0);
        EXPECT_EQ(adodb.adoConnection().CommandTimeout(), 180);
    }
    EXPECT_EQ(adodb.iSetTimeout(120), 0);
    EXPECT_EQ(adodb.adoConnection().CommandTimeout(), 120);
}

struct FailedConnect {
    const char* name;
    const char* connect;  // %1 is the test's folder
    const char* errMsg;   // %1 likewise
};

class CtAdodbConnectFailure : public ::testing::TestWithParam<FailedConnect> {};

TEST_P(CtAdodbConnectFailure, KeepsTheShortFaultFormAlone)
{
    adotest::TestDb db;
    cT_ADODB adodb;
    adodb.iInit(QString::fromUtf8(GetParam().connect).arg(db.folder()));
    EXPECT_EQ(adodb.iConnect(), -1);
    EXPECT_EQ(adodb.sErrMsg(), QString::fromUtf8(GetParam().errMsg).arg(db.folder()));
    // The provider errors were appended and cleared before the text was replaced.
    EXPECT_EQ(adodb.adoConnection().Errors().Count(), 0);
    EXPECT_EQ(adodb.adoConnection().State(), data::ado::adStateClosed);
}

INSTANTIATE_TEST_SUITE_P(
    Strings, CtAdodbConnectFailure,
    ::testing::Values(
        FailedConnect{"missing_file", "Provider=SQLite;Data Source=%1/none.db",
                      "(-2147467259)unable to open database file: %1/none.db does not exist"},
        FailedConnect{"malformed", "Provider=SQLite;Data Source",
                      "( 3001)引数が間違った型、許容範囲外、または競合しています。"},
        FailedConnect{"unknown_provider", "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=%1/a.mdb",
                      "( 3706)プロバイダが見つかりません。正しくインストールされていない可能性があります。"},
        FailedConnect{"wrong_odbc_driver", "Driver={No Such Driver 99};Database=x",
                      "(-2147467259)[unixODBC][Driver Manager]Can't open lib 'No Such Driver 99' : file not found"}),
    sealtest::ByName{});

TEST(CtAdodbConnect, ALockedFileStillConnectsAndTheReadFails)
{
    adotest::TestDb db;
    cT_ADODB adodb;
    adodb.iInit(db.sqliteConnect());
    ASSERT_EQ(adodb.iConnect(), 0);
    adodb.iSetTimeout(1);
    adotest::ExclusiveLock lock(db.path());
    ASSERT_TRUE(lock.locked());
    auto rs = std::make_unique<Recordset>();
    EXPECT_EQ(adodb.iOpenRecSet(rs, QStringLiteral("SELECT * FROM STAFF"), 0, 1, 1), -1);
    EXPECT_TRUE(adodb.sErrMsg().startsWith(QStringLiteral("(-2147217871)database is locked\rSQL=SELECT * FROM STAFF\r"
                                                          "Connection State=1\rError Number: -2147217871")))
        << adodb.sErrMsg().toStdString();
}

TEST_F(CtAdodb, OpenRecSetReadsEveryRow)
{
    std::unique_ptr<Recordset> rs;
    ASSERT_EQ(open(rs, QStringLiteral("SELECT nIDNo, cName FROM STAFF ORDER BY nIDNo")), 0);
    EXPECT_EQ(rs->RecordCount(), 3);
    EXPECT_EQ(rs->Fields(QStringLiteral("cName")).Value().toString(), QStringLiteral("佐藤　花子"));
    EXPECT_EQ(adodb.iCloseRecSet(rs), 0);
    EXPECT_EQ(rs, nullptr);
}

TEST_F(CtAdodb, OpenRecSetFailureShowsTheSqlAndTheProviderErrors)
{
    std::unique_ptr<Recordset> rs;
    EXPECT_EQ(open(rs, QStringLiteral("SELECT cNoSuch FROM STAFF")), -1);
    EXPECT_EQ(adodb.sErrMsg(),
              oneSqliteError(QStringLiteral("(-2147217900)no such column: cNoSuch\rSQL=SELECT cNoSuch FROM STAFF"),
                             -2147217900, QStringLiteral("no such column: cNoSuch"), QStringLiteral("42S22"), 1));
    EXPECT_EQ(adodb.adoConnection().Errors().Count(), 0);
}

TEST_F(CtAdodb, OpenRecSetCutsTheSqlAfter80Characters)
{
    const QString head = QStringLiteral("SELECT cNoSuch FROM STAFF WHERE cName = '");
    const QString exactly80 = head + QString(80 - head.size() - 1, u'x') + u'\'';
    const QString of81 = head + QString(81 - head.size() - 1, u'x') + u'\'';
    ASSERT_EQ(exactly80.size(), 80);
    ASSERT_EQ(of81.size(), 81);
    std::unique_ptr<Recordset> rs;
    EXPECT_EQ(open(rs, exactly80), -1);
    EXPECT_TRUE(
        adodb.sErrMsg().contains(QStringLiteral("\rSQL=") + exactly80 + QStringLiteral("\rConnection State=1")));
    EXPECT_FALSE(adodb.sErrMsg().contains(QStringLiteral("・・・")));
    EXPECT_EQ(open(rs, of81), -1);
    EXPECT_TRUE(adodb.sErrMsg().contains(QStringLiteral("\rSQL=") + of81.left(80) +
                                         QStringLiteral("・・・\rConnection State=1")));
}

struct Smuggled {
    const char* name;
    const char* typed;   // what the operator typed into a name search
    const char* reason;  // the start of the explanation
};

class CtAdodbReadSafety : public CtAdodb, public ::testing::WithParamInterface<Smuggled> {};

TEST_P(CtAdodbReadSafety, ASearchNeverBecomesAWrite)
{
    // Built as the program builds it: by concatenation, without quoting.
    const QString sql = QStringLiteral("SELECT nIDNo FROM STAFF WHERE cName LIKE '%") +
                        QString::fromUtf8(GetParam().typed) + QStringLiteral("%'");
    std::unique_ptr<Recordset> rs;
    EXPECT_EQ(open(rs, sql), -1);
    const QString shown = sql.size() > 80 ? sql.left(80) + QStringLiteral("・・・") : sql;
    EXPECT_EQ(adodb.sErrMsg(), QStringLiteral("(-2147217900)") + QString::fromUtf8(GetParam().reason) +
                                   QStringLiteral("\rSQL=") + shown);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 3);
}

INSTANTIATE_TEST_SUITE_P(
    Typed, CtAdodbReadSafety,
    ::testing::Values(
        Smuggled{"second_statement", "x'; DELETE FROM STAFF; SELECT '",
                 "読み取りの SQL に ';' があります。読み取りで実行できるのは SELECT 文一つだけです。"},
        Smuggled{
            "comment", "x' OR 1=1 --",
            "読み取りの SQL に注釈 ('--' または '/*') があります。読み取りで実行できるのは SELECT 文一つだけです。"},
        Smuggled{
            "block_comment", "x' /*",
            "読み取りの SQL に注釈 ('--' または '/*') があります。読み取りで実行できるのは SELECT 文一つだけです。"},
        Smuggled{"batch", "x' DELETE FROM STAFF WHERE 'a' = 'a",
                 "読み取りの SQL に SELECT 以外の命令 (DELETE) があります。"},
        Smuggled{"lone_apostrophe", "O'Brien", "読み取りの SQL の文字列 (') が閉じていません。"}),
    sealtest::ByName{});

TEST_F(CtAdodb, CloseRecSetOfAClosedRecordsetFailsAndKeepsTheReference)
{
    std::unique_ptr<Recordset> rs;
    ASSERT_EQ(open(rs, QStringLiteral("SELECT nIDNo FROM STAFF")), 0);
    rs->Close();
    EXPECT_EQ(adodb.iCloseRecSet(rs), -1);
    EXPECT_EQ(adodb.sErrMsg(), QStringLiteral("3704\r\n") + kClosedFault);
    EXPECT_NE(rs, nullptr);
    rs.reset();
    EXPECT_EQ(adodb.iCloseRecSet(rs), -1);
    EXPECT_EQ(adodb.sErrMsg(), QStringLiteral("91\r\nオブジェクト変数または With ブロック変数が設定されていません。"));
}

TEST_F(CtAdodb, ExecSqlStoresTheCountOnlyWhenAsked)
{
    EXPECT_EQ(adodb.iExecSQL(QStringLiteral("UPDATE STAFF SET iChusiFlg = 0 WHERE iChusiFlg IS NULL")), 0);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF WHERE iChusiFlg = 0"), 2);
    qint32 affected = -7;
    EXPECT_EQ(adodb.iExecSQL(QStringLiteral("UPDATE STAFF SET cName = cName WHERE iKyotenEb = 2"), affected), 0);
    EXPECT_EQ(affected, 3);
}

TEST_F(CtAdodb, ExecSqlFailureShowsTheWholeStatementBehindTheErrors)
{
    const QString sql = QStringLiteral("UPDATE NO_TABLE SET cName = '") + QString(2000, u'長') + u'\'';
    EXPECT_EQ(adodb.iExecSQL(sql), -1);
    EXPECT_EQ(adodb.sErrMsg(),
              oneSqliteError(QStringLiteral("ERR:iExecSQL (-2147217865)no such table: NO_TABLE"), -2147217865,
                             QStringLiteral("no such table: NO_TABLE"), QStringLiteral("42S02"), 1) +
                  QStringLiteral("\rSQL=") + sql);
}

TEST_F(CtAdodb, TwoFailuresInARowLogOnlyTheSecondsErrorsAndASuccessLeavesThem)
{
    EXPECT_EQ(adodb.iExecSQL(QStringLiteral("UPDATE NO_TABLE SET a = 1")), -1);
    EXPECT_EQ(adodb.iExecSQL(QStringLiteral("UPDATE STAFF SET nope = 1")), -1);
    const QString failure = adodb.sErrMsg();
    EXPECT_EQ(failure.count(QStringLiteral("Error Number: ")), 1);
    EXPECT_TRUE(failure.contains(QStringLiteral("no such column: nope")));
    EXPECT_FALSE(failure.contains(QStringLiteral("NO_TABLE")));
    EXPECT_EQ(adodb.iExecSQL(QStringLiteral("UPDATE STAFF SET cName = cName")), 0);
    EXPECT_EQ(adodb.sErrMsg(), failure);
}

TEST_F(CtAdodb, AddAdoErrorLogWithoutErrorsLeavesTheTextAsItIs)
{
    QString text = QStringLiteral("前の文");
    adodb.vAddAdoErrorLog(text);
    EXPECT_EQ(text, QStringLiteral("前の文"));
}

struct TransactionMisuse {
    const char* name;
    short (cT_ADODB::*first)();
    short (cT_ADODB::*second)();
    const char* opening;
    qint32 number;
    const char* text;
};

class CtAdodbTransactionFailure : public CtAdodb, public ::testing::WithParamInterface<TransactionMisuse> {};

TEST_P(CtAdodbTransactionFailure, NamesTheStep)
{
    const auto& p = GetParam();
    if (p.first) {
        ASSERT_EQ((adodb.*p.first)(), 0);
    }
    EXPECT_EQ((adodb.*p.second)(), -1);
    const QString text = QString::fromUtf8(p.text);
    EXPECT_EQ(adodb.sErrMsg(),
              QString::fromUtf8(p.opening) + QString::number(p.number) + u')' + text +
                  QStringLiteral("\rConnection State=1\rError Number: %1\r  Description: %2\r  Source: ADO"
                                 "\r  SQL State: 25000\r  Native Error: 0\r\r1 provider error(s) occurred.")
                      .arg(p.number)
                      .arg(text));
}

INSTANTIATE_TEST_SUITE_P(
    Steps, CtAdodbTransactionFailure,
    ::testing::Values(TransactionMisuse{"begin_twice", &cT_ADODB::iBeginTrans, &cT_ADODB::iBeginTrans,
                                        "ERR:BeginTrans (", data::ado::XACT_E_XTIONEXISTS,
                                        "このセッションでは、トランザクションは 1 つしかアクティブにできません。"},
                      TransactionMisuse{"commit_without_begin", nullptr, &cT_ADODB::iCommitTrans, "ERR:CommitTrans (",
                                        data::ado::XACT_E_NOTRANSACTION, "アクティブなトランザクションがありません。"},
                      TransactionMisuse{"rollback_without_begin", nullptr, &cT_ADODB::iRollback, "ERR:Rollback (",
                                        data::ado::XACT_E_NOTRANSACTION, "アクティブなトランザクションがありません。"}),
    sealtest::ByName{});

TEST_F(CtAdodb, DisconnectReleasesAndASecondOneFailsQuietly)
{
    EXPECT_EQ(adodb.iDisConnect(), 0);
    // The next touch makes a fresh, closed connection, whose Close faults.
    EXPECT_EQ(adodb.iDisConnect(), -1);
    EXPECT_EQ(adodb.sErrMsg(), QStringLiteral("( 3704)") + kClosedFault);
    EXPECT_EQ(adodb.iConnect(), 0);
    EXPECT_EQ(adodb.adoConnection().State(), data::ado::adStateOpen);
}

TEST(CtAdodbLifetime, DroppingTheObjectEndsItsWork)
{
    adotest::TestDb db;
    {
        cT_ADODB adodb;
        adodb.iInit(db.sqliteConnect());
        ASSERT_EQ(adodb.iConnect(), 0);
        ASSERT_EQ(adodb.iBeginTrans(), 0);
        ASSERT_EQ(adodb.iExecSQL(QStringLiteral("DELETE FROM STAFF")), 0);
    }
    // The disconnect rolled the open work back and let the file go.
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF"), 3);
    adotest::ExclusiveLock lock(db.path());
    EXPECT_TRUE(lock.locked());
}

TEST(CtAdodbLifetime, SeveralObjectsWorkOnOneFileAtOnce)
{
    adotest::TestDb db;
    cT_ADODB first;
    cT_ADODB second;
    first.iInit(db.sqliteConnect());
    second.iInit(db.sqliteConnect());
    ASSERT_EQ(first.iConnect(), 0);
    ASSERT_EQ(second.iConnect(), 0);
    auto a = std::make_unique<Recordset>();
    auto b = std::make_unique<Recordset>();
    EXPECT_EQ(first.iOpenRecSet(a, QStringLiteral("SELECT * FROM STAFF"), 0, 1, 1), 0);
    EXPECT_EQ(second.iOpenRecSet(b, QStringLiteral("SELECT * FROM RIYOUSHA"), 0, 1, 1), 0);
    EXPECT_EQ(a->RecordCount(), 3);
    EXPECT_EQ(b->RecordCount(), 4);
}

TEST(CtAdodbOdbc, FailuresCarryTheOdbcRecords)
{
    if (!QFile::exists(QString::fromLatin1(adotest::kOdbcSqliteDriver)))
        GTEST_SKIP() << "the SQLite ODBC driver is not installed";
    adotest::TestDb db;
    cT_ADODB adodb;
    adodb.iInit(db.odbcConnect());
    ASSERT_EQ(adodb.iConnect(), 0) << adodb.sErrMsg().toStdString();
    auto rs = std::make_unique<Recordset>();
    ASSERT_EQ(adodb.iOpenRecSet(rs, QStringLiteral("SELECT nIDNo FROM STAFF WHERE isnull(iChusiFlg, 0) = 0"), 0, 1, 1),
              0);
    EXPECT_EQ(rs->RecordCount(), 2);
    EXPECT_EQ(adodb.iExecSQL(QStringLiteral("UPDATE STAFF SET nope = 1")), -1);
    const QString text = adodb.sErrMsg();
    EXPECT_TRUE(text.startsWith(QStringLiteral("ERR:iExecSQL (-"))) << text.toStdString();
    EXPECT_TRUE(text.contains(QStringLiteral("\rConnection State=1\rError Number: -")));
    EXPECT_TRUE(text.contains(QStringLiteral("\r  Source: ODBC\r  SQL State: ")));
    EXPECT_TRUE(text.contains(QStringLiteral(" provider error(s) occurred.\rSQL=UPDATE STAFF SET nope = 1")));
    EXPECT_FALSE(text.contains(u'\n'));
}

struct MachineName {
    const char* name;
    const char* machine;
    const char* result;
};

class CtAdodbComputerName : public ::testing::TestWithParam<MachineName> {};

TEST_P(CtAdodbComputerName, FitsASixteenCharacterBuffer)
{
    controls::RecordingPlatform platform;
    platform.setMachineName(QString::fromUtf8(GetParam().machine));
    sealtest::GlobalsScope globals(platform);
    cT_ADODB adodb;
    EXPECT_EQ(adodb.csGetComputerName(), QString::fromUtf8(GetParam().result));
}

INSTANTIATE_TEST_SUITE_P(Names, CtAdodbComputerName,
                         ::testing::Values(MachineName{"ordinary", "OFFICE-PC01", "OFFICE-PC01"},
                                           MachineName{"fifteen_characters", "ABCDEFGHIJKLMNO", "ABCDEFGHIJKLMNO"},
                                           MachineName{"sixteen_characters", "ABCDEFGHIJKLMNOP", ""},
                                           MachineName{"japanese_within_bytes", "受付ＰＣ", "受付ＰＣ"},
                                           MachineName{"japanese_too_many_bytes", "鍼灸院受付事務所用端末", ""},
                                           MachineName{"empty", "", ""}),
                         sealtest::ByName{});

}  // namespace
