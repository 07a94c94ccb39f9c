// The ADO surface over each of the three roads to a database (SQLite's C API, the
// SQLite ODBC driver, FreeTDS against the TDS test server), all on the same file: the
// same statements give the same rows, values and faults, and every column kind the
// clinic's server sends reads back with its type number.

#include "support/ado_roads.h"

#include "base/vb_error.h"
#include "data/ado/faults.h"

#include <gtest/gtest.h>

using namespace data::ado;

namespace {

using adotest::faultOf;

template <typename Road>
class AdoRoad : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (const QString missing = Road::missing(); !missing.isEmpty()) GTEST_SKIP() << missing.toStdString();
        connection.Open(road.connect(db));
    }

    Recordset open(const QString& sql) { return adotest::openReadOnly(connection, sql); }

    adotest::TestDb db;
    Road road;  // before the connection: a server outlives its client
    Connection connection;
};

// No name generator: CTest names a typed case by its road's type
// (AdoRoad.Test<adotest::FreeTdsRoad>), which its discovery reads only from numbered suites.
using Roads = ::testing::Types<adotest::SqliteRoad, adotest::SqliteOdbcRoad, adotest::FreeTdsRoad>;
TYPED_TEST_SUITE(AdoRoad, Roads);

TYPED_TEST(AdoRoad, EveryColumnKindReadsBackWithItsTypeNumber)
{
    Recordset rs = this->open(QStringLiteral("SELECT * FROM KINDS ORDER BY nIDNo"));
    ASSERT_EQ(rs.RecordCount(), 3);
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Type(), adInteger);
    EXPECT_EQ(rs.Fields(QStringLiteral("cCode")).Type(), TypeParam::kVarCharType);
    EXPECT_EQ(rs.Fields(QStringLiteral("cNote")).Type(), adVarWChar);
    EXPECT_EQ(rs.Fields(QStringLiteral("iSmall")).Type(), adSmallInt);
    EXPECT_EQ(rs.Fields(QStringLiteral("iFlag")).Type(), adBoolean);
    if (TypeParam::kKnowsDecimal) {
        EXPECT_EQ(rs.Fields(QStringLiteral("nAmount")).Type(), adNumeric);
        EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("nAmount")).Value().toDouble(), 1234.5);
    } else {
        EXPECT_EQ(rs.Fields(QStringLiteral("nAmount")).Value(), QVariant(QStringLiteral("1234.5")));
    }
    EXPECT_EQ(rs.Fields(QStringLiteral("tWhen")).Type(), adDBTimeStamp);
    EXPECT_EQ(rs.Fields(QStringLiteral("nRate")).Type(), adDouble);

    // The characters CP932 converters disagree on come back as they were stored.
    const QString edge = QStringLiteral("～－①髙﨑ｶﾞ\"");
    EXPECT_EQ(adotest::show(rs.Fields(QStringLiteral("cCode")).Value()), adotest::show(edge));
    EXPECT_EQ(adotest::show(rs.Fields(QStringLiteral("cNote")).Value()), adotest::show(edge));
    EXPECT_EQ(rs.Fields(QStringLiteral("iSmall")).Value(), QVariant(-32768));
    EXPECT_EQ(rs.Fields(QStringLiteral("iFlag")).Value(), QVariant(true));
    EXPECT_EQ(rs.Fields(QStringLiteral("tWhen")).Value().toDateTime(),
              QDateTime(QDate(2026, 11, 20), QTime(9, 15, 30)));
    EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("nRate")).Value().toDouble(), 0.25);
    rs.MoveNext();
    EXPECT_EQ(rs.Fields(QStringLiteral("cCode")).Value().toString(), QStringLiteral("ｱｲｳ abc"));
    EXPECT_EQ(rs.Fields(QStringLiteral("iSmall")).Value(), QVariant(32767));
    EXPECT_EQ(rs.Fields(QStringLiteral("iFlag")).Value(), QVariant(false));
    EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("nAmount")).Value().toDouble(), -0.01);
    EXPECT_EQ(rs.Fields(QStringLiteral("tWhen")).Value().toDateTime(), QDateTime(QDate(1900, 1, 1), QTime(0, 0)));
    rs.MoveNext();
    for (int i = 0; i < rs.FieldCount(); ++i) {
        if (rs.Fields(i).Name() != u"nIDNo") {
            EXPECT_TRUE(rs.Fields(i).Value().isNull()) << rs.Fields(i).Name().toStdString();
        }
    }
}

TYPED_TEST(AdoRoad, NullInEveryKindOfColumnIsANullVariant)
{
    Recordset rs = this->open(
        QStringLiteral("SELECT nTantou, cName, tBirthday, iChusiFlg, cAdress1 FROM RIYOUSHA WHERE nIDNo = 12"));
    ASSERT_FALSE(rs.Eof());
    for (int i = 0; i < rs.FieldCount(); ++i)
        EXPECT_TRUE(rs.Fields(i).Value().isNull()) << rs.Fields(i).Name().toStdString();
    EXPECT_EQ(rs.Fields(QStringLiteral("tBirthday")).Type(), adDBTimeStamp);
    EXPECT_EQ(rs.Fields(QStringLiteral("nTantou")).Type(), adInteger);
}

TYPED_TEST(AdoRoad, ExpressionColumnsTakeTheTypeOfTheirValues)
{
    Recordset rs = this->open(QStringLiteral(
        "SELECT 0 as ShokaiFlg, isnull(iChusiFlg, 0) AS f, max(tBirthday) AS last, count(*) AS n, 'x' AS c "
        "FROM RIYOUSHA WHERE iKyotenEb = 2"));
    EXPECT_EQ(rs.Fields(QStringLiteral("ShokaiFlg")).Type(), adInteger);
    EXPECT_EQ(rs.Fields(QStringLiteral("f")).Type(), adInteger);
    EXPECT_EQ(rs.Fields(QStringLiteral("last")).Value().toDateTime().date(), QDate(1951, 12, 31));
    EXPECT_EQ(rs.Fields(QStringLiteral("n")).Value(), QVariant(3));
    EXPECT_EQ(rs.Fields(QStringLiteral("c")).Value(), QVariant(QStringLiteral("x")));
}

TYPED_TEST(AdoRoad, TheClientSideCursorMovesEveryWay)
{
    Recordset rs = this->open(QStringLiteral("SELECT nIDNo FROM RIYOUSHA WHERE iKyotenEb = 2 ORDER BY nIDNo"));
    EXPECT_EQ(rs.RecordCount(), 3);
    EXPECT_FALSE(rs.Bof());
    rs.MoveLast();
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(12));
    rs.MoveFirst();
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(10));
    rs.MoveNext();
    rs.MoveNext();
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(faultOf([&] { rs.MoveNext(); }).number(), 3021);
    EXPECT_EQ(faultOf([&] { rs.Fields(0).Value(); }).number(), 3021);
    rs.MovePrevious();
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(12));
}

TYPED_TEST(AdoRoad, AnEmptyResultIsAtEofAndBof)
{
    Recordset rs = this->open(QStringLiteral("SELECT nIDNo FROM RIYOUSHA WHERE nIDNo < 0"));
    EXPECT_TRUE(rs.Eof());
    EXPECT_TRUE(rs.Bof());
    EXPECT_EQ(rs.RecordCount(), 0);
    EXPECT_EQ(rs.FieldCount(), 1);
}

TYPED_TEST(AdoRoad, FieldsAreFoundByNameWithoutRegardToCase)
{
    Recordset rs = this->open(QStringLiteral("SELECT cIDno_x.nIDNo, cName FROM STAFF cIDno_x WHERE nIDNo = 5"));
    EXPECT_EQ(rs.Fields(QStringLiteral("NIDNO")).Value(), QVariant(5));
    EXPECT_EQ(rs.Fields(QStringLiteral("cname")).Name(), QStringLiteral("cName"));
    EXPECT_EQ(faultOf([&] { rs.Fields(QStringLiteral("cNameKana")); }).number(), 3265);
    EXPECT_EQ(faultOf([&] { rs.Fields(2); }).number(), 3265);
}

TYPED_TEST(AdoRoad, ANameSharedByTwoColumnsAlwaysFindsTheFirst)
{
    Recordset rs = this->open(QStringLiteral("SELECT r.nIDNo, s.cName, s.nIDNo FROM RIYOUSHA r JOIN STAFF s "
                                             "ON s.nIDNo = r.nTantou WHERE r.nIDNo = 11"));
    ASSERT_EQ(rs.RecordCount(), 1);
    // Read in select-list order, as a reader of every field does: the name after
    // cName is the first column's, not the third's.
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(11));
    EXPECT_EQ(rs.Fields(QStringLiteral("cName")).Value().toString(), QStringLiteral("鈴木　一郎"));
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(11));
    EXPECT_EQ(rs.Fields(2).Value(), QVariant(6));
}

TYPED_TEST(AdoRoad, AnOpenOnAClosedConnectionFaults)
{
    this->connection.Close();
    Recordset rs;
    EXPECT_EQ(faultOf([&] { rs.Open(QStringLiteral("SELECT 1"), this->connection); }).number(), 3709);
    qint32 affected = 0;
    EXPECT_EQ(faultOf([&] { this->connection.Execute(QStringLiteral("DELETE FROM STAFF"), affected); }).number(), 3709);
    EXPECT_EQ(this->db.scalar("SELECT count(*) FROM STAFF"), 3);
}

TYPED_TEST(AdoRoad, AClosedRecordsetFaultsOnEveryRead)
{
    Recordset rs = this->open(QStringLiteral("SELECT nIDNo FROM STAFF"));
    rs.Close();
    EXPECT_EQ(rs.State(), adStateClosed);
    EXPECT_EQ(faultOf([&] { rs.Eof(); }).number(), 3704);
    EXPECT_EQ(faultOf([&] { rs.Close(); }).number(), 3704);
    EXPECT_EQ(faultOf([&] { rs.Fields(0); }).number(), 3704);
}

TYPED_TEST(AdoRoad, AMissingColumnFailsWithTheProvidersRecord)
{
    Recordset rs;
    const base::VbError fault =
        faultOf([&] { rs.Open(QStringLiteral("SELECT cNoSuch FROM STAFF"), this->connection); });
    EXPECT_NE(fault.number(), 0);
    EXPECT_TRUE(fault.description().contains(QStringLiteral("no such column: cNoSuch")))
        << fault.description().toStdString();
    ASSERT_EQ(this->connection.Errors().Count(), 1);
    const Error& error = this->connection.Errors().Item(0);
    EXPECT_EQ(error.Number, fault.number());
    EXPECT_EQ(error.Description, fault.description());
    EXPECT_EQ(error.Source, TypeParam::errorSource());
    EXPECT_EQ(error.SQLState.size(), 5);
    EXPECT_EQ(rs.State(), adStateClosed);
}

TYPED_TEST(AdoRoad, ANewFailureReplacesTheErrorsOfTheLastOne)
{
    Recordset rs;
    faultOf([&] { rs.Open(QStringLiteral("SELECT x FROM STAFF"), this->connection); });
    faultOf([&] { rs.Open(QStringLiteral("SELECT * FROM NO_TABLE"), this->connection); });
    ASSERT_EQ(this->connection.Errors().Count(), 1);
    EXPECT_TRUE(this->connection.Errors().Item(0).Description.contains(QStringLiteral("NO_TABLE")));
}

TYPED_TEST(AdoRoad, TheProgramsTsqlRunsAsItStands)
{
    Recordset rs = this->open(QStringLiteral(
        "SELECT nIDNo, cName FROM STAFF WHERE isnull(iChusiFlg, 0) = 0 AND iKyotenCd = 1 AND iKyotenEb = 2 "
        "AND CONVERT(VARCHAR, isnull(tUpDateTime, GetDate()), 112) >= '20250101' ORDER BY nIDNo "));
    ASSERT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(5));
    rs.MoveNext();
    EXPECT_EQ(rs.Fields(0).Value(), QVariant(6));
}

TYPED_TEST(AdoRoad, AnAmbiguousOrderByNameIsTakenFromTheSelectList)
{
    Recordset rs = this->open(QStringLiteral(
        " select RIYOUSHA.nIDNo, RIYOUSHA.nTantou, STAFF.cName AS StaffName, 0 as EmptyFlg from RIYOUSHA "
        " LEFT JOIN STAFF ON RIYOUSHA.nTantou = STAFF.nIDNo WHERE RIYOUSHA.iKyotenEb = 2 AND STAFF.nIDNo >= 0"
        " ORDER BY nTantou, EmptyFlg, nIDNo "));
    ASSERT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(10));
    EXPECT_EQ(rs.Fields(QStringLiteral("StaffName")).Value().toString(), QStringLiteral("佐藤　花子"));
    rs.MoveNext();
    EXPECT_EQ(rs.Fields(QStringLiteral("nIDNo")).Value(), QVariant(11));
}

TYPED_TEST(AdoRoad, ExecuteCountsChangedRowsAndTransactionsHold)
{
    qint32 affected = -1;
    this->connection.Execute(QStringLiteral("UPDATE STAFF SET cName = 'x' WHERE iKyotenEb = 2"), affected,
                             adExecuteNoRecords);
    EXPECT_EQ(affected, 3);
    EXPECT_EQ(this->connection.BeginTrans(), 1);
    this->connection.Execute(QStringLiteral("DELETE FROM STAFF WHERE nIDNo = 7"), affected, adExecuteNoRecords);
    EXPECT_EQ(affected, 1);
    this->connection.RollbackTrans();
    EXPECT_EQ(this->db.scalar("SELECT count(*) FROM STAFF"), 3);
    this->connection.BeginTrans();
    this->connection.Execute(QStringLiteral("DELETE FROM STAFF WHERE nIDNo = 7"), affected, adExecuteNoRecords);
    this->connection.CommitTrans();
    EXPECT_EQ(this->db.scalar("SELECT count(*) FROM STAFF"), 2);
    // Back in autocommit: a later change stands without a commit.
    this->connection.Execute(QStringLiteral("DELETE FROM STAFF WHERE nIDNo = 6"), affected, adExecuteNoRecords);
    EXPECT_EQ(this->db.scalar("SELECT count(*) FROM STAFF"), 1);
}

TYPED_TEST(AdoRoad, TransactionMisuseFailsAsTheProviderSays)
{
    EXPECT_EQ(faultOf([&] { this->connection.CommitTrans(); }).number(), XACT_E_NOTRANSACTION);
    EXPECT_EQ(faultOf([&] { this->connection.RollbackTrans(); }).number(), XACT_E_NOTRANSACTION);
    this->connection.BeginTrans();
    EXPECT_EQ(faultOf([&] { this->connection.BeginTrans(); }).number(), XACT_E_XTIONEXISTS);
    EXPECT_EQ(this->connection.Errors().Count(), 1);
}

// Readings compare as under the clinic's Japanese_CI_AS on every road, the program's
// SQL unchanged: hiragana finds katakana and half-width katakana, and half-width
// readings sort among the full-width ones.
TYPED_TEST(AdoRoad, ReadingsCompareAsOnTheClinicsServer)
{
    const auto ids = [&](const char* where) {
        std::vector<int> found;
        Recordset rs = this->open(
            QStringLiteral("SELECT nIDNo FROM READINGS %1 ORDER BY cNameKana, nIDNo").arg(QString::fromUtf8(where)));
        for (; !rs.Eof(); rs.MoveNext()) found.push_back(rs.Fields(0).Value().toInt());
        return found;
    };
    EXPECT_EQ(ids(""), (std::vector<int>{8, 9, 7, 6, 5, 4, 3, 1, 10, 2}));
    EXPECT_EQ(ids("WHERE cNameKana = 'さとう'"), (std::vector<int>{1, 10}));
    EXPECT_EQ(ids("WHERE cNameKana = 'ABE'"), (std::vector<int>{8, 9}));
    EXPECT_EQ(ids("WHERE cNameKana LIKE 'さと%'"), (std::vector<int>{1, 10}));
    EXPECT_EQ(ids("WHERE cNameKana LIKE 'ｶﾞ%'"), (std::vector<int>{5}));
    EXPECT_EQ(ids("WHERE cNameKana LIKE '%き'"), (std::vector<int>{7, 2}));
    EXPECT_EQ(ids("WHERE cNameKana >= 'か' AND cNameKana < 'さ'"), (std::vector<int>{6, 5, 4}));
}

// What the SQLite road reads is the reference: every other road reads the same names,
// type numbers and values.
TYPED_TEST(AdoRoad, StatementsReadWhatTheSqliteRoadReads)
{
    if (TypeParam::kReference) GTEST_SKIP() << "the reference road";
    Connection direct;
    direct.Open(this->db.sqliteConnect());
    for (const char* sql :
         {"SELECT * FROM RIYOUSHA ORDER BY iKyotenEb, nIDNo",
          "SELECT nIDNo, cName, nLat, nLon, tUpDateTime FROM STAFF WHERE isnull(iChusiFlg, 0) = 0 "
          "AND iKyotenCd = 1 AND iKyotenEb = 2 ORDER BY nIDNo ",
          "SELECT cName FROM RIYOUSHA WHERE cName = 'O''Brien'",
          " select RIYOUSHA.nIDNo, RIYOUSHA.nTantou, STAFF.cName AS StaffName from RIYOUSHA "
          " LEFT JOIN STAFF ON RIYOUSHA.nTantou = STAFF.nIDNo WHERE STAFF.nIDNo >= 0 ORDER BY nTantou, nIDNo ",
          "SELECT nIDNo, cCode, cNote, iSmall, iFlag, tWhen, nRate FROM KINDS ORDER BY nIDNo"}) {
        SCOPED_TRACE(sql);
        const QString text = QString::fromUtf8(sql);
        const adotest::Table want = adotest::readAll(direct, text);
        ASSERT_FALSE(want.rows.empty());
        adotest::expectSameRows(adotest::readAll(this->connection, text), want, TypeParam::kVarCharType);
    }
}

}  // namespace
