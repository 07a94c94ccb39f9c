#pragma once
// A small database in a self-deleting folder, written with the SQLite C API directly
// so that the code under test never builds its own fixture. The tables follow the
// storage conventions of the customers' data: c… TEXT, i…/n… INTEGER, nLat/nLon
// REAL, t… DATETIME stored as 'YYYY/MM/DD' or 'YYYY/MM/DD HH:MM:SS' text.

#include "support/sqlite_reader.h"

#include "base/vb_error.h"
#include "data/ado/connection.h"
#include "data/ado/japanese_collation.h"
#include "data/ado/recordset.h"

#include <QString>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <gtest/gtest.h>

namespace adotest {

// The fault a call raises, or number 0 when it raises none.
template <typename F>
base::VbError faultOf(F&& call)
{
    try {
        call();
    } catch (const base::VbError& e) {
        return e;
    }
    return {0, QString()};
}

// A query opened as every reader of the program opens it: client-side, read-only,
// forward-only, as text.
inline data::ado::Recordset openReadOnly(data::ado::Connection& connection, const QString& sql)
{
    data::ado::Recordset rs;
    rs.setCursorLocation(data::ado::adUseClient);
    rs.Open(sql, connection, data::ado::adOpenForwardOnly, data::ado::adLockReadOnly, data::ado::adCmdText);
    return rs;
}

inline const char* kOdbcSqliteDriver = "/usr/lib/x86_64-linux-gnu/odbc/libsqlite3odbc.so";

class TestDb {
public:
    TestDb()
    {
        EXPECT_TRUE(dir_.isValid());
        path_ = dir_.filePath(QStringLiteral("seal.db"));
        // Readings are declared with the clinic's collation, as the program's schema does.
        data::ado::registerJapaneseCollation();
        run(R"(
BEGIN;
CREATE TABLE RIYOUSHA (iKyotenCd INTEGER, iKyotenEb INTEGER, nIDNo INTEGER, cName TEXT, cNameKana TEXT,
  cAdress1 TEXT, tBirthday DATETIME, tExpireDay DATETIME, nTantou INTEGER, iChusiFlg INTEGER,
  PRIMARY KEY (iKyotenCd, iKyotenEb, nIDNo));
CREATE TABLE STAFF (iKyotenCd INTEGER, iKyotenEb INTEGER, nIDNo INTEGER, cName TEXT, iChusiFlg INTEGER,
  nLat REAL, nLon REAL, tUpDateTime DATETIME, PRIMARY KEY (iKyotenCd, iKyotenEb, nIDNo));
INSERT INTO RIYOUSHA VALUES (1, 2, 10, '山田　太郎', 'ﾔﾏﾀﾞ ﾀﾛｳ', '東京都千代田区1-1', '1940/04/01', NULL, 5, 0);
INSERT INTO RIYOUSHA VALUES (1, 2, 11, 'O''Brien', 'ｵﾌﾞﾗｲｴﾝ', NULL, '1951/12/31', '2026/10/31', 6, NULL);
INSERT INTO RIYOUSHA VALUES (1, 2, 12, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO RIYOUSHA VALUES (1, 3, 10, '別拠点', 'ﾍﾞﾂ', '大阪', '1960/01/01', NULL, 5, 0);
INSERT INTO STAFF VALUES (1, 2, 5, '佐藤　花子', 0, 35.681236, 139.767125, '2026/11/20 09:15:30');
INSERT INTO STAFF VALUES (1, 2, 6, '鈴木　一郎', NULL, NULL, NULL, NULL);
INSERT INTO STAFF VALUES (1, 2, 7, '退職　者', 1, 34.5, 135.5, '2025/03/31 18:00:00');
CREATE TABLE KINDS (nIDNo INTEGER PRIMARY KEY, cCode VARCHAR(40), cNote NVARCHAR(40), iSmall SMALLINT, iFlag BIT,
  nAmount DECIMAL(9,2), tWhen DATETIME, nRate REAL);
INSERT INTO KINDS VALUES (1, '～－①髙﨑ｶﾞ"', '～－①髙﨑ｶﾞ"', -32768, 1, 1234.5, '2026/11/20 09:15:30', 0.25);
INSERT INTO KINDS VALUES (2, 'ｱｲｳ abc', 'あいう', 32767, 0, -0.01, '1900/01/01', -1.5);
INSERT INTO KINDS VALUES (3, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
CREATE TABLE READINGS (nIDNo INTEGER PRIMARY KEY, cNameKana TEXT COLLATE Japanese_CI_AS);
INSERT INTO READINGS VALUES (1, 'ｻﾄｳ'), (2, 'スズキ'), (3, 'さいとう'), (4, 'カネコ'), (5, 'ガトウ'), (6, 'カトウ'),
  (7, 'ｱｵｷ'), (8, 'abe'), (9, 'ＡＢＥ'), (10, 'サトウ ');
COMMIT;
)");
    }

    const QString& path() const { return path_; }
    QString folder() const { return dir_.path(); }
    QString sqliteConnect() const { return QStringLiteral("Provider=SQLite;Data Source=") + path_; }
    QString odbcConnect() const
    {
        return QStringLiteral("Driver=%1;Database=%2").arg(QString::fromLatin1(kOdbcSqliteDriver), path_);
    }

    // Runs statements on the file outside the code under test.
    void run(const char* sql) const
    {
        try {
            sealtest::execSql(path_, QString::fromUtf8(sql));
        } catch (const std::exception& e) {
            ADD_FAILURE() << e.what();
        }
    }

    // One integer from the file, outside the code under test.
    long long scalar(const char* sql) const { return sealtest::SqliteReader(path_).number(QString::fromUtf8(sql)); }

private:
    QTemporaryDir dir_;
    QString path_;
};

// Holds an exclusive lock on a database file for as long as it lives.
class ExclusiveLock {
public:
    explicit ExclusiveLock(const QString& path)
    {
        sqlite3_open(path.toUtf8().constData(), &db_);
        char* message = nullptr;
        locked_ = sqlite3_exec(db_, "BEGIN EXCLUSIVE", nullptr, nullptr, &message) == SQLITE_OK;
        sqlite3_free(message);
    }
    ~ExclusiveLock()
    {
        sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        sqlite3_close(db_);
    }
    ExclusiveLock(const ExclusiveLock&) = delete;
    ExclusiveLock& operator=(const ExclusiveLock&) = delete;
    bool locked() const { return locked_; }

private:
    sqlite3* db_ = nullptr;
    bool locked_ = false;
};

// Holds a read transaction (a shared lock) on a database file for as long as it lives.
class ReadingElsewhere {
public:
    explicit ReadingElsewhere(const QString& path)
    {
        sqlite3_open(path.toUtf8().constData(), &db_);
        reading_ =
            sqlite3_exec(db_, "BEGIN; SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    ~ReadingElsewhere()
    {
        sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr);
        sqlite3_close(db_);
    }
    ReadingElsewhere(const ReadingElsewhere&) = delete;
    ReadingElsewhere& operator=(const ReadingElsewhere&) = delete;
    bool reading() const { return reading_; }

private:
    sqlite3* db_ = nullptr;
    bool reading_ = false;
};

}  // namespace adotest
