// The program only reads the database, and its connection to a SQLite file is read-only
// until a write is asked for: a statement that slips past the read guard still cannot
// change the file.

#include "support/ado_test_db.h"

#include "base/vb_error.h"
#include "data/ado/connection.h"
#include "data/ado/recordset.h"
#include "data/ct_adodb.h"

#include <gtest/gtest.h>

using namespace data::ado;

namespace {

int rowsOf(Connection& connection, const char* sql)
{
    Recordset rs;
    rs.setCursorLocation(adUseClient);
    rs.Open(QString::fromUtf8(sql), connection, adOpenForwardOnly, adLockReadOnly, adCmdText);
    return rs.RecordCount();
}

}  // namespace

TEST(SqliteReadOnly, AWriteThroughTheReadPathIsRefusedBySqlite)
{
    adotest::TestDb db;
    Connection connection;
    connection.Open(db.sqliteConnect());
    EXPECT_EQ(rowsOf(connection, "SELECT * FROM STAFF"), 3);
    // Statements a read never runs, handed to the read path directly.
    for (const char* sql : {"DELETE FROM STAFF RETURNING nIDNo", "PRAGMA user_version = 7",
                            "UPDATE STAFF SET cName = 'x' RETURNING cName"}) {
        try {
            connection.fetch(QString::fromUtf8(sql));
            ADD_FAILURE() << sql << " ran";
        } catch (const base::VbError&) {
            ASSERT_GE(connection.Errors().Count(), 1);
            EXPECT_TRUE(connection.Errors().Item(0).Description.contains(QStringLiteral("readonly"))) << sql;
        }
    }
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF WHERE cName <> 'x'"), 3);
    EXPECT_EQ(db.scalar("PRAGMA user_version"), 0);
}

TEST(SqliteReadOnly, TheSharedClassesWritesStillWriteAndReadTheirOwnChanges)
{
    adotest::TestDb db;
    data::cT_ADODB ado;
    ASSERT_EQ(ado.iInit(db.sqliteConnect()), 0);
    ASSERT_EQ(ado.iConnect(), 0);
    ASSERT_EQ(ado.iBeginTrans(), 0);
    ASSERT_EQ(ado.iExecSQL(QStringLiteral("DELETE FROM STAFF WHERE nIDNo = 7")), 0) << ado.sErrMsg().toStdString();
    // Inside the transaction a read sees the uncommitted change.
    EXPECT_EQ(rowsOf(ado.adoConnection(), "SELECT * FROM STAFF"), 2);
    ASSERT_EQ(ado.iRollback(), 0);
    EXPECT_EQ(rowsOf(ado.adoConnection(), "SELECT * FROM STAFF"), 3);
    ASSERT_EQ(ado.iExecSQL(QStringLiteral("UPDATE STAFF SET iChusiFlg = 1")), 0);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM STAFF WHERE iChusiFlg = 1"), 3);
}
