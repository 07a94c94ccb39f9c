// What is particular to the SQLite ODBC driver road: it has no catalog,
// its lock waits, and how a wrong driver or a missing file fails. What every road
// shares is in ado_roads_test.cpp.

#include "support/ado_test_db.h"

#include "base/vb_error.h"
#include "data/ado/connection.h"
#include "data/ado/faults.h"
#include "data/ado/recordset.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace data::ado;

namespace {

using adotest::faultOf;

class OdbcAdo : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!QFile::exists(QString::fromLatin1(adotest::kOdbcSqliteDriver)))
            GTEST_SKIP() << "the SQLite ODBC driver is not installed";
        connection.Open(db.odbcConnect());
    }

    adotest::TestDb db;
    Connection connection;
};

TEST_F(OdbcAdo, AskingForTheCatalogDoesNotFail)
{
    // The SQLite ODBC driver has no catalogs; asking must not fail.
    EXPECT_NO_THROW(connection.DefaultDatabase());
}

TEST_F(OdbcAdo, ALockedFileFailsWithTheDriversRecord)
{
    // The SQLite ODBC driver waits for a lock by its own Timeout (milliseconds), not by
    // the statement time-out.
    Connection impatient;
    impatient.Open(db.odbcConnect() + QStringLiteral(";Timeout=500"));
    adotest::ExclusiveLock lock(db.path());
    ASSERT_TRUE(lock.locked());
    qint32 affected = 0;
    const base::VbError fault =
        faultOf([&] { impatient.Execute(QStringLiteral("UPDATE STAFF SET cName = 'y'"), affected); });
    EXPECT_NE(fault.number(), 0);
    ASSERT_GE(impatient.Errors().Count(), 1);
    EXPECT_TRUE(impatient.Errors().Item(0).Description.contains(QStringLiteral("locked")))
        << impatient.Errors().Item(0).Description.toStdString();
}

TEST(OdbcAdoOpen, AWrongDriverNameFailsWithTheDriverManagersRecord)
{
    Connection connection;
    const base::VbError fault =
        faultOf([&] { connection.Open(QStringLiteral("Driver={No Such Driver 99};Server=x;Database=y")); });
    EXPECT_EQ(fault.number(), E_FAIL_);
    EXPECT_EQ(connection.State(), adStateClosed);
    ASSERT_GE(connection.Errors().Count(), 1);
    EXPECT_EQ(connection.Errors().Item(0).SQLState, QStringLiteral("01000"));
    EXPECT_TRUE(connection.Errors().Item(0).Description.contains(QStringLiteral("Driver Manager")));
}

TEST(OdbcAdoOpen, AMissingDatabaseFileFailsInsteadOfCreatingOne)
{
    if (!QFile::exists(QString::fromLatin1(adotest::kOdbcSqliteDriver)))
        GTEST_SKIP() << "the SQLite ODBC driver is not installed";
    adotest::TestDb db;
    const QString missing = db.folder() + QStringLiteral("/none.db");
    Connection connection;
    // The SQLite ODBC driver creates missing files unless told not to.
    const QString text =
        QStringLiteral("Driver=%1;Database=%2;NoCreat=1").arg(QString::fromLatin1(adotest::kOdbcSqliteDriver), missing);
    EXPECT_THROW(connection.Open(text), base::VbError);
    EXPECT_FALSE(QFile::exists(missing));
}

}  // namespace
