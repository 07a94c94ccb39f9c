// Which driver a connection string chooses, and the ODBC string an OLE DB string for
// SQL Server becomes.

#include "base/vb_error.h"
#include "data/ado/connection_string.h"

#include <QDir>

#include "support/param_names.h"
#include <gtest/gtest.h>

using data::ado::chooseDriver;
using data::ado::ConnectionStringParts;
using data::ado::DriverTarget;

namespace {

struct Translation {
    const char* name;
    const char* oledb;
    const char* driver;
    const char* odbc;
};

class OledbTranslationTest : public ::testing::TestWithParam<Translation> {};

TEST_P(OledbTranslationTest, BecomesAnOdbcStringForSqlServer)
{
    const DriverTarget target = chooseDriver(QString::fromUtf8(GetParam().oledb), QStringLiteral("/opt/seal"),
                                             QString::fromUtf8(GetParam().driver));
    EXPECT_EQ(target.kind, DriverTarget::Kind::Odbc);
    EXPECT_EQ(target.odbcConnectString, QString::fromUtf8(GetParam().odbc));
}

INSTANTIATE_TEST_SUITE_P(
    Strings, OledbTranslationTest,
    ::testing::Values(
        Translation{"freetds_named_instance",
                    "Provider=SQLOLEDB.1;Persist Security Info=False;Data Source=SRV01\\SQLEXPRESS;"
                    "Initial Catalog=Tavrine;User ID=sa;Password=p@ss",
                    "FreeTDS", "Driver={FreeTDS};Server=SRV01\\SQLEXPRESS;Database=Tavrine;UID=sa;PWD=p@ss"},
        Translation{"windows_driver_keeps_host_and_port",
                    "Provider=SQLNCLI11;Data Source=10.0.0.5,1433;Initial Catalog=DB", "SQL Server",
                    "Driver={SQL Server};Server=10.0.0.5,1433;Database=DB"},
        Translation{"freetds_port_apart", "Provider=SQLOLEDB;Data Source=10.0.0.5,1433;Initial Catalog=DB", "FreeTDS",
                    "Driver={FreeTDS};Server=10.0.0.5;Port=1433;Database=DB"},
        Translation{"freetds_local_shorthand",
                    "Provider=SQLOLEDB;Data Source=(local)\\SQLEXPRESS;Integrated Security=SSPI", "FreeTDS",
                    "Driver={FreeTDS};Server=localhost\\SQLEXPRESS;Trusted_Connection=yes"},
        Translation{"driver_file_path_unbraced", "Provider=MSOLEDBSQL;Data Source=db;Initial Catalog=X",
                    "/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so",
                    "Driver=/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so;Server=db;Database=X"},
        Translation{"quoted_password_with_separator", "Provider=SQLOLEDB;Data Source=db;User ID=u;Password=\"a;b}c\"",
                    "FreeTDS", "Driver={FreeTDS};Server=db;UID=u;PWD={a;b}}c}"}),
    sealtest::ByName{});

TEST(ChooseDriver, SqliteWithARelativePathLivesInTheProgramsFolderAndAnAbsoluteOneStands)
{
    const std::pair<QString, QString> cases[] = {
        {QStringLiteral("Provider=SQLite;Data Source=data\\demo.db"),
         QDir::toNativeSeparators(QStringLiteral("/opt/seal/data/demo.db"))},
        {QStringLiteral("provider=sqlite; data source = /var/db/x.db ;"), QStringLiteral("/var/db/x.db")},
    };
    for (const auto& [text, path] : cases) {
        const DriverTarget target = chooseDriver(text, QStringLiteral("/opt/seal"), QStringLiteral("FreeTDS"));
        EXPECT_EQ(target.kind, DriverTarget::Kind::Sqlite) << text.toStdString();
        EXPECT_EQ(target.sqlitePath, path);
    }
}

TEST(ChooseDriver, DriverOrDsnGoesToOdbcAsItStands)
{
    for (const QString& text :
         {QStringLiteral("Driver={SQL Server};Server=a;Database=b"), QStringLiteral("DSN=seal;UID=x")}) {
        const DriverTarget target = chooseDriver(text, QStringLiteral("/opt/seal"), QStringLiteral("FreeTDS"));
        EXPECT_EQ(target.kind, DriverTarget::Kind::Odbc);
        EXPECT_EQ(target.odbcConnectString, text);
    }
}

struct Refusal {
    const char* name;
    const char* text;
    int fault;
};

class RefusedStringTest : public ::testing::TestWithParam<Refusal> {};

TEST_P(RefusedStringTest, FaultsAsAdoDoes)
{
    try {
        chooseDriver(QString::fromUtf8(GetParam().text), QStringLiteral("/opt/seal"), QStringLiteral("FreeTDS"));
        FAIL() << "no fault";
    } catch (const base::VbError& e) {
        EXPECT_EQ(e.number(), GetParam().fault);
        EXPECT_FALSE(e.description().isEmpty());
    }
}

INSTANTIATE_TEST_SUITE_P(Strings, RefusedStringTest,
                         ::testing::Values(Refusal{"part_without_equals", "Provider=SQLite;garbage", 3001},
                                           Refusal{"unclosed_quote", "Provider=SQLite;Data Source=\"/x.db", 3001},
                                           Refusal{"empty_key", "=x;Provider=SQLite", 3001},
                                           Refusal{"sqlite_without_file", "Provider=SQLite", 3001},
                                           Refusal{"unknown_provider",
                                                   "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=a.mdb", 3706},
                                           Refusal{"no_provider", "Data Source=x", 3706}, Refusal{"empty", "", 3706}),
                         sealtest::ByName{});

TEST(ConnectionStringParts, KeysIgnoreCaseAndTheLastValueWins)
{
    const ConnectionStringParts parts = ConnectionStringParts::parse(QStringLiteral("A=1; b = two words ;B='x;''y'"));
    EXPECT_TRUE(parts.has(u"a"));
    EXPECT_EQ(parts.value(u"a"), QStringLiteral("1"));
    EXPECT_EQ(parts.value(u"B"), QStringLiteral("x;'y"));
    EXPECT_EQ(parts.parts().size(), 3);
    EXPECT_EQ(parts.parts().at(1).second, QStringLiteral("two words"));
}

TEST(OdbcDriverName, ComesFromTheEnvironmentElseFreeTds)
{
    const QByteArray saved = qgetenv("SEAL_ODBC_DRIVER");
    qputenv("SEAL_ODBC_DRIVER", "ODBC Driver 18 for SQL Server");
    EXPECT_EQ(data::ado::defaultOdbcDriverName(), QStringLiteral("ODBC Driver 18 for SQL Server"));
    qunsetenv("SEAL_ODBC_DRIVER");
    EXPECT_EQ(data::ado::defaultOdbcDriverName(), QStringLiteral("FreeTDS"));
    if (!saved.isEmpty()) qputenv("SEAL_ODBC_DRIVER", saved);
}

}  // namespace
