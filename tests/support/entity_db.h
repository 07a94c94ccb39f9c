#pragma once
// An installation in a self-deleting folder for the table classes and loaders: the
// suite's schema in a fresh SQLite file, an "adodb.ini" naming it, this office's
// SiteKey (1, 2) and a recording platform. Rows are written with the SQLite C API
// directly, so that the code under test never builds its own fixture.

#include "support/globals_scope.h"
#include "support/installation.h"
#include "support/printers.h"

#include "base/ini_file.h"
#include "controls/recording_platform.h"
#include "data/ct_adodb.h"
#include "data/schema.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <vector>

namespace sealtest {

class InstallationTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(dir_.isValid());
        globals_.emplace();
        app::gsAppPath = dir_.path();
        app::iKyotenCd = 1;
        app::iKyotenEb = 2;
        app::gsLastError.clear();
        app::setPlatform(&platform_);
        dbPath_ = dir_.filePath(QStringLiteral("seal.db"));
        QString error;
        ASSERT_TRUE(data::createSchemaDatabase(dbPath_, &error)) << error.toStdString();
        setConnectString(QStringLiteral("Provider=SQLite;Data Source=") + dbPath_);
    }

    void TearDown() override
    {
        held_.clear();
        globals_.reset();
    }

    void setConnectString(const QString& text)
    {
        const QString section = QStringLiteral("接続情報");
        base::clsOplIniFile ini;
        ini.iInit(iniPath());
        ASSERT_NE(ini.iWriteProfileString(section, section, text), 0);
    }

    QString iniPath() const { return dir_.path() + QStringLiteral("/adodb.ini"); }

    // Runs statements on the file outside the code under test.
    void run(const QString& sql) const
    {
        try {
            execSql(dbPath_, sql);
        } catch (const std::exception& e) {
            ADD_FAILURE() << e.what();
        }
    }

    // One integer from the file, outside the code under test.
    long long scalar(const QString& sql) const { return SqliteReader(dbPath_).number(sql); }

    // The first column of every row, as text ("NULL" for NULL), outside the code under
    // test.
    QStringList column(const QString& sql) const { return SqliteReader(dbPath_).column(sql, QStringLiteral("NULL")); }

    // A database object connected to the fixture.
    void connect(data::cT_ADODB& db) const
    {
        db.iInit(QStringLiteral("Provider=SQLite;Data Source=") + dbPath_);
        ASSERT_EQ(db.iConnect(), 0) << db.sErrMsg().toStdString();
    }

    // A table class initialised on its own connection to the fixture; the fixture
    // keeps both until the test ends.
    template <class Table>
    Table& opened()
    {
        auto db = std::make_shared<data::cT_ADODB>();
        connect(*db);
        auto table = std::make_shared<Table>();
        EXPECT_EQ(table->iInit(*db), 0);
        held_.push_back(table);
        held_.push_back(db);
        return *table;
    }

    QTemporaryDir dir_;
    QString dbPath_;
    controls::RecordingPlatform platform_;

private:
    // Tables before their connections: each is let go in the order it was taken.
    std::vector<std::shared_ptr<void>> held_;
    std::optional<GlobalsScope> globals_;
};

// The nIDNo of every row a table class read, in its order; at is its row accessor.
template <class Table, class Row>
std::vector<qint32> ids(Table& table, Row& (Table::*at)(qint32))
{
    std::vector<qint32> out;
    for (qint32 i = 0; i < table.nデータ数(); ++i) out.push_back((table.*at)(i).nIDNo);
    return out;
}

// The statement's lines, for messages that show where two statements part.
inline QStringList lines(const QString& sql) { return sql.split(QStringLiteral("\r\n")); }

}  // namespace sealtest
