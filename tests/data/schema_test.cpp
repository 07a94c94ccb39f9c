// The suite's database as SQLite holds it: the statements of the program run against
// it, keys and column types follow the suite's conventions, and dates stored as text
// compare the way the program's date literals expect.

#include "data/schema.h"

#include "support/globals_scope.h"
#include "support/golden.h"
#include "support/param_names.h"
#include "support/printers.h"

#include "app/globals.h"
#include "data/ado/sqlite_dialect.h"
#include "data/ct_staff.h"
#include "data/master_loaders.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <vector>

using namespace data;

namespace {

// A fresh in-memory database holding the schema.
class SchemaDb {
public:
    SchemaDb()
    {
        sqlite3_open(":memory:", &db_);
        QString error;
        ok_ = data::applySchema(db_, &error);
        error_ = error;
    }
    ~SchemaDb() { sqlite3_close(db_); }
    SchemaDb(const SchemaDb&) = delete;
    SchemaDb& operator=(const SchemaDb&) = delete;

    bool ok() const { return ok_; }
    const QString& error() const { return error_; }
    sqlite3* handle() const { return db_; }

    // Empty when the statement compiles, else SQLite's complaint.
    QString prepareError(const QString& sql) const
    {
        sqlite3_stmt* st = nullptr;
        const int rc = sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &st, nullptr);
        sqlite3_finalize(st);
        return rc == SQLITE_OK ? QString() : QString::fromUtf8(sqlite3_errmsg(db_));
    }

    bool exec(const QString& sql) const
    {
        char* message = nullptr;
        const int rc = sqlite3_exec(db_, sql.toUtf8().constData(), nullptr, nullptr, &message);
        sqlite3_free(message);
        return rc == SQLITE_OK;
    }

    // Rows as "a|b|c" lines, NULL as "<null>".
    QStringList rows(const QString& sql) const
    {
        QStringList out;
        sqlite3_stmt* st = nullptr;
        if (sqlite3_prepare_v2(db_, sql.toUtf8().constData(), -1, &st, nullptr) != SQLITE_OK) {
            ADD_FAILURE() << sqlite3_errmsg(db_) << "\n" << sql.toStdString();
            return out;
        }
        while (sqlite3_step(st) == SQLITE_ROW) {
            QStringList cells;
            for (int i = 0; i < sqlite3_column_count(st); ++i) {
                const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(st, i));
                cells << (p ? QString::fromUtf8(p) : QStringLiteral("<null>"));
            }
            out << cells.join(QLatin1Char('|'));
        }
        sqlite3_finalize(st);
        return out;
    }

private:
    sqlite3* db_ = nullptr;
    bool ok_ = false;
    QString error_;
};

// A test on a fresh schema.
class SchemaStorageTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(db.ok()) << db.error().toStdString(); }
    SchemaDb db;
};

// ---- the program's statements ---------------------------------------------------

struct Statement {
    std::string name;
    QString sql;
};

// The statements of this library that its own tests never run on the schema (those
// tests run every other one on a database made by createSchemaDatabase).
std::vector<Statement> libraryStatements()
{
    sealtest::GlobalsScope globals;
    app::iKyotenCd = 1;
    app::iKyotenEb = 1;
    cD_STAFF staff;
    staff.cNameKana = QStringLiteral("ヤ");
    staff.nIDNo = 4;
    staff.cName = QStringLiteral("x");
    return {
        {"StaffOfAllOffices", cT_STAFF::sqlDataReadGrid_AllKyoten(staff, false)},
        {"StaffUpdate", cT_STAFF::sqlDataUpdate(staff, QStringLiteral("PC01"))},
    };
}

// Every golden statement (those of the libraries above this one among them), from the
// files their own tests compare them with; and what the program writes inline or the
// suite's other programs read.
std::vector<Statement> otherStatements()
{
    std::vector<Statement> out;
    for (const QFileInfo& f :
         QDir(sealtest::goldenDir()).entryInfoList({QStringLiteral("*.sql")}, QDir::Files, QDir::Name))
        out.push_back({sealtest::caseName(f.completeBaseName().toStdString()), sealtest::goldenText(f.fileName())});
    out.push_back({"DoctorTelephones", QStringLiteral("SELECT cName, cKikan, cTelNo FROM DOCTOR")});
    out.push_back(
        {"OfficeList", QStringLiteral("SELECT * FROM KYOTEN WHERE KYOTEN.iKyotenEb<>0 AND iUsedFlg IN (1, 2)")});
    return out;
}

std::vector<Statement> programStatements()
{
    std::vector<Statement> all = libraryStatements();
    for (Statement& s : otherStatements()) all.push_back(std::move(s));
    return all;
}

// The statement as the SQLite driver runs it: through the dialect step, and ordered
// over an outer select where SQLite finds the order's name ambiguous.
QString prepareThroughDialect(const SchemaDb& db, const QString& sql)
{
    const QString text = ado::toSqliteDialect(sql, QDateTime(QDate(2026, 11, 21), QTime(10, 0)));
    const QString error = db.prepareError(text);
    if (ado::isAmbiguousColumnMessage(error)) return db.prepareError(ado::orderByOverSelect(text));
    return error;
}

class ProgramStatementTest : public SchemaStorageTest, public ::testing::WithParamInterface<Statement> {};

TEST_P(ProgramStatementTest, CompilesAgainstTheSchema)
{
    EXPECT_EQ(prepareThroughDialect(db, GetParam().sql), QString()) << GetParam().sql.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Statements, ProgramStatementTest, ::testing::ValuesIn(programStatements()),
                         sealtest::ByName{});

TEST(ProgramStatementGoldens, EveryLibraryAboveThisOneHasItsStatementsHere)
{
    // The tests of extract, selection and dialogs write these; a lost file would
    // silently shrink the check above.
    EXPECT_GE(otherStatements().size(), 16u);
}

// ---- the storage conventions ----------------------------------------------------

TEST_F(SchemaStorageTest, DeclaredTypesFollowTheColumnNames)
{
    const std::map<QString, QString> exceptions = {
        {QStringLiteral("nLat"), QStringLiteral("REAL")},
        {QStringLiteral("nLon"), QStringLiteral("REAL")},
        {QStringLiteral("経過報告.tServicyMonth"), QStringLiteral("TEXT")},
        {QStringLiteral("deleteDate"), QStringLiteral("DATETIME")},
        {QStringLiteral("deleteLoginID"), QStringLiteral("TEXT")},
    };
    int columns = 0;
    for (const QString& table : db.rows(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table'"))) {
        for (const QString& row :
             db.rows(QStringLiteral("SELECT name, type FROM pragma_table_info('%1')").arg(table))) {
            const QString name = row.section(QLatin1Char('|'), 0, 0);
            const QString type = row.section(QLatin1Char('|'), 1, 1);
            QString expected;
            if (auto it = exceptions.find(table + QLatin1Char('.') + name); it != exceptions.end())
                expected = it->second;
            else if (auto it2 = exceptions.find(name); it2 != exceptions.end())
                expected = it2->second;
            else if (name.startsWith(QLatin1Char('c')))
                expected = QStringLiteral("TEXT");
            else if (name.startsWith(QLatin1Char('i')) || name.startsWith(QLatin1Char('n')))
                expected = QStringLiteral("INTEGER");
            else if (name.startsWith(QLatin1Char('t')))
                expected = QStringLiteral("DATETIME");
            EXPECT_EQ(type, expected) << table.toStdString() << "." << name.toStdString();
            ++columns;
        }
    }
    EXPECT_GT(columns, 450);
}

TEST_F(SchemaStorageTest, HoldsTheSuitesTables)
{
    QStringList tables = db.rows(QStringLiteral("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"));
    QStringList expected = QStringLiteral("CAREMANE CORP DOCTOR DOUIKIROKU HOKENJA JISSEKI KYOTEN RIYOUSHA "
                                          "RIYOUSHA_DOUI_REC RIYOUSHA_MAP RIYOUSHA_SUB SHINSEISYO SISETSU "
                                          "SISETSU_DELETE_LOG SOUDAN SOUDAN_TANTOU STAFF STAFF_DELETE_LOG SYOUKAI "
                                          "往療費区分 療養費単価 経過報告")
                               .split(u' ');
    tables.sort();
    expected.sort();
    EXPECT_EQ(tables, expected);
}

struct KeyCase {
    const char* table;
    QStringList key;
    bool unique;
};

void PrintTo(const KeyCase& c, std::ostream* os) { *os << c.table; }

class SchemaKeyTest : public SchemaStorageTest, public ::testing::WithParamInterface<KeyCase> {};

TEST_P(SchemaKeyTest, TableCarriesTheSuitesKey)
{
    const KeyCase& c = GetParam();
    const QString table = QString::fromUtf8(c.table);
    if (c.unique) {
        const QStringList pk =
            db.rows(QStringLiteral("SELECT name FROM pragma_table_info('%1') WHERE pk > 0 ORDER BY pk").arg(table));
        EXPECT_EQ(pk, c.key);
    } else {
        bool found = false;
        for (const QString& index : db.rows(QStringLiteral("SELECT name FROM pragma_index_list('%1')").arg(table))) {
            const QStringList cols =
                db.rows(QStringLiteral("SELECT name FROM pragma_index_info('%1') ORDER BY seqno").arg(index));
            found = found || cols.mid(0, c.key.size()) == c.key;
        }
        EXPECT_TRUE(found) << c.table;
    }
}

const QStringList kOfficeKey = {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"), QStringLiteral("nIDNo")};
const QStringList kVisitKey = {QStringLiteral("iKyotenCd"), QStringLiteral("iKyotenEb"),
                               QStringLiteral("nRiyoushaIDNo")};

INSTANTIATE_TEST_SUITE_P(
    Tables, SchemaKeyTest,
    ::testing::Values(
        KeyCase{"RIYOUSHA", kOfficeKey, true}, KeyCase{"RIYOUSHA_SUB", kOfficeKey, true},
        KeyCase{"DOUIKIROKU", kOfficeKey, true}, KeyCase{"CAREMANE", kOfficeKey, true},
        KeyCase{"STAFF", kOfficeKey, true}, KeyCase{"SISETSU", kOfficeKey, true}, KeyCase{"CORP", kOfficeKey, true},
        KeyCase{"SHINSEISYO", kOfficeKey, true}, KeyCase{"RIYOUSHA_MAP", kOfficeKey, true},
        KeyCase{"KYOTEN", kOfficeKey.mid(0, 2), true}, KeyCase{"HOKENJA", {QStringLiteral("cIDno")}, true},
        KeyCase{"DOCTOR", {QStringLiteral("cIDno")}, true}, KeyCase{"SYOUKAI", {QStringLiteral("nIDNo")}, true},
        KeyCase{"RIYOUSHA_DOUI_REC", kOfficeKey, false}, KeyCase{"JISSEKI", kVisitKey, false},
        KeyCase{"経過報告", kVisitKey + QStringList{QStringLiteral("nStaffIDNo"), QStringLiteral("tServicyMonth")},
                true},
        KeyCase{"SOUDAN_TANTOU", {QStringLiteral("nIDNo")}, false}),
    [](const ::testing::TestParamInfo<KeyCase>& info) {
        const std::string name = info.param.table;
        return name == "経過報告" ? std::string("KEIKAHOUKOKU") : name;
    });

TEST_F(SchemaStorageTest, APatientNumberIsUniqueWithinItsOfficeOnly)
{
    EXPECT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 1, 5)")));
    EXPECT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 2, 5)")));
    EXPECT_FALSE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 1, 5)")));
    EXPECT_FALSE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo) VALUES (1, 1, NULL)")));
    // Consents and visits are many per patient.
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA_DOUI_REC (iKyotenCd, iKyotenEb, nIDNo, tDouiDay) "
                                           "VALUES (1, 1, 5, '2026/09/15')")));
        EXPECT_TRUE(
            db.exec(QStringLiteral("INSERT INTO JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart) "
                                   "VALUES (1, 1, 5, '2026/11/02 10:00:00')")));
    }
}

TEST_F(SchemaStorageTest, PatientsOfAnOfficeAreReadInReadingOrderFromAnIndex)
{
    const QString plan =
        db.rows(QStringLiteral("EXPLAIN QUERY PLAN SELECT nIDNo, cName FROM RIYOUSHA WHERE "
                               "RIYOUSHA.iKyotenCd = 1 AND RIYOUSHA.iKyotenEb = 1 ORDER BY RIYOUSHA.cNameKana"))
            .join(QLatin1Char('\n'));
    EXPECT_TRUE(plan.contains(QStringLiteral("COVERING INDEX IX_RIYOUSHA_KANA"))) << plan.toStdString();
    EXPECT_FALSE(plan.contains(QStringLiteral("TEMP B-TREE"))) << plan.toStdString();
}

TEST_F(SchemaStorageTest, OneMonthOfServicesIsReadAsARangeOfAnIndex)
{
    // Three months of visits of forty patients, with the statistics a live database has.
    ASSERT_TRUE(
        db.exec(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 3599) "
                               "INSERT INTO JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart) "
                               "SELECT 1, 1, i % 40, printf('2026/%02d/%02d 10:00:00', 9 + i / 1200, 1 + i % 28) "
                               "FROM n")));
    ASSERT_TRUE(db.exec(QStringLiteral("ANALYZE")));
    const QString plan =
        db.rows(
              QStringLiteral("EXPLAIN QUERY PLAN SELECT nRiyoushaIDNo ,count(nRiyoushaIDNo) as jisseki_ct FROM JISSEKI "
                             "WHERE iKyotenCd = 1 AND iKyotenEb = 1 AND tServicyDayStart>'2026/10/31' "
                             "AND tServicyDayStart<'2026/12/01' GROUP BY nRiyoushaIDNo"))
            .join(QLatin1Char('\n'));
    EXPECT_TRUE(plan.contains(QStringLiteral("COVERING INDEX IX_JISSEKI_DAY"))) << plan.toStdString();
    EXPECT_TRUE(plan.contains(QStringLiteral("tServicyDayStart>? AND tServicyDayStart<?"))) << plan.toStdString();
}

// The month count of the patient list looks at visits after the last day of the month
// before and before the first of the month after. Visit times are text; one at
// midnight is stored as the date alone, which keeps it out of the span as on SQL Server.
TEST_F(SchemaStorageTest, VisitTimesStoredAsTextFallInTheMonthLikeDates)
{
    const std::vector<std::pair<const char*, bool>> visits = {
        {"2026/10/31", false}, {"2026/10/31 00:00:01", true},  {"2026/10/31 23:50:00", true},
        {"2026/11/01", true},  {"2026/11/15 10:30:00", true},  {"2026/11/30 23:59:59", true},
        {"2026/12/01", false}, {"2026/12/01 09:00:00", false}, {"2026/09/30 10:00:00", false}};
    int id = 0;
    for (const auto& [time, inMonth] : visits) {
        ++id;
        ASSERT_TRUE(db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cNameKana) "
                                           "VALUES (1, 1, %1, 'ア')")
                                .arg(id)));
        ASSERT_TRUE(
            db.exec(QStringLiteral("INSERT INTO JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart) "
                                   "VALUES (1, 1, %1, '%2')")
                        .arg(id)
                        .arg(QString::fromLatin1(time))));
    }
    QStringList expected;
    id = 0;
    for (const auto& [time, inMonth] : visits)
        expected << QStringLiteral("%1|%2").arg(++id).arg(inMonth ? QStringLiteral("1") : QStringLiteral("<null>"));
    QStringList got;
    for (const QString& row : db.rows(sealtest::goldenText(QStringLiteral("patient_list_office_1_1.sql"))))
        got << row.section(QLatin1Char('|'), 2, 2) + QLatin1Char('|') + row.section(QLatin1Char('|'), -1);
    got.sort();
    expected.sort();
    EXPECT_EQ(got, expected);
}

TEST_F(SchemaStorageTest, UsedInsurersCountOncePerNumberWithLeadingZerosKept)
{
    for (const char* no : {"39131008", "01130012", "81133014", "06131311", "39111000"})
        ASSERT_TRUE(db.exec(
            QStringLiteral("INSERT INTO HOKENJA (cIDno, cName) VALUES ('%1', 'x')").arg(QString::fromLatin1(no))));
    const char* const patients[] = {
        "(1, 1, 1, '39131008', NULL)", "(1, 1, 2, '39131008', '81133014')",  // two patients, one insurer
        "(1, 1, 3, '01130012', NULL)",                                       // a number with a leading zero
        "(1, 2, 1, '39111000', NULL)",                                       // the other office only
    };
    for (const char* p : patients)
        ASSERT_TRUE(
            db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cHokenNo, cFutanNo) VALUES ") +
                    QString::fromLatin1(p)));
    sealtest::GlobalsScope globals;
    app::iKyotenCd = 1;
    app::iKyotenEb = 1;
    QStringList used;
    for (const QString& row : db.rows(sqlHokenjaUsed())) used << row.section(QLatin1Char('|'), 0, 0);
    used.sort();
    EXPECT_EQ(used, (QStringList{QStringLiteral("01130012"), QStringLiteral("39131008"), QStringLiteral("81133014")}));
}

TEST_F(SchemaStorageTest, DoctorLinksStoredAsNumbersFindDoctorsKeyedByText)
{
    for (const char* doctor : {"('7', '内田　誠', '内田クリニック')", "('12', '森　花子', '森内科医院')"})
        ASSERT_TRUE(
            db.exec(QStringLiteral("INSERT INTO DOCTOR (cIDno, cName, cKikan) VALUES ") + QString::fromUtf8(doctor)));
    // The newer consent names the doctor; on equal dates the second.
    const char* const patients[][2] = {
        {"(1, 2, 1, '2026/05/01', '2026/08/01')", "(1, 2, 1, 7, 12)"},
        {"(1, 2, 2, '2026/09/01', '2026/04/01')", "(1, 2, 2, 7, 12)"},
        {"(1, 2, 3, '2026/06/01', '2026/06/01')", "(1, 2, 3, 12, 7)"},
    };
    for (const auto& p : patients) {
        ASSERT_TRUE(
            db.exec(QStringLiteral("INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, tDouiDay1, tDouiDay2) VALUES ") +
                    QString::fromLatin1(p[0])));
        ASSERT_TRUE(
            db.exec(QStringLiteral("INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iIsiCd, iIsiCd2) VALUES ") +
                    QString::fromLatin1(p[1])));
    }
    for (int patient = 1; patient <= 3; ++patient)
        ASSERT_TRUE(db.exec(
            QStringLiteral("INSERT INTO 経過報告 (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyMonth, nStaffIDNo) "
                           "VALUES (1, 2, %1, '2026/10', 3)")
                .arg(patient)));
    // The progress report screen's doctors of office (1, 2), months 2026/09 to 2026/11.
    EXPECT_EQ(db.rows(sealtest::goldenText(QStringLiteral("keika_doctors.sql"))),
              (QStringList{QStringLiteral("12|森　花子|森内科医院"), QStringLiteral("7|内田　誠|内田クリニック")}));
}

// ---- making a database ----------------------------------------------------------

TEST(SchemaDatabaseTest, ANewFileHoldsTheSchema)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("new.db"));
    QString error;
    ASSERT_TRUE(data::createSchemaDatabase(path, &error)) << error.toStdString();
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(path.toUtf8().constData(), &db), SQLITE_OK);
    sqlite3_stmt* st = nullptr;
    ASSERT_EQ(sqlite3_prepare_v2(db, "SELECT count(*) FROM sqlite_master WHERE type = 'table'", -1, &st, nullptr),
              SQLITE_OK);
    ASSERT_EQ(sqlite3_step(st), SQLITE_ROW);
    EXPECT_EQ(sqlite3_column_int(st, 0), static_cast<int>(data::schemaTables().size()));
    sqlite3_finalize(st);
    sqlite3_close(db);
}

TEST(SchemaDatabaseTest, AnExistingFileIsLeftAsItWas)
{
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("clinic.db"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not to be lost");
    file.close();
    QString error;
    EXPECT_FALSE(data::createSchemaDatabase(path, &error));
    EXPECT_TRUE(error.contains(path)) << error.toStdString();
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("not to be lost"));
}

TEST(SchemaDatabaseTest, ApplyingTwiceOrWithoutADatabaseSaysWhy)
{
    SchemaDb db;
    ASSERT_TRUE(db.ok()) << db.error().toStdString();
    QString error;
    EXPECT_FALSE(data::applySchema(db.handle(), &error));
    EXPECT_TRUE(error.contains(QStringLiteral("already exists"))) << error.toStdString();
    error.clear();
    EXPECT_FALSE(data::applySchema(nullptr, &error));
    EXPECT_FALSE(error.isEmpty());
}

}  // namespace
