// The program's own statements (the patient query, each kind's read, the consent and
// progress extractions, the staff search) read the same rows on every road to the
// database: through the SQLite ODBC driver and through FreeTDS against the TDS test
// server, the names and values equal the SQLite road's, texts unit for unit,
// including the characters CP932 converters disagree on.

#include "support/ado_roads.h"

#include "app/globals.h"
#include "data/master_loaders.h"
#include "demo_database.h"
#include "dialogs/staff_search.h"
#include "extract/riyousha_extract.h"
#include "selection/consent_extract.h"
#include "selection/keika_extract.h"
#include "selection/staff_list.h"

#include <gtest/gtest.h>

using namespace data::ado;

namespace {

const QDate kToday(2026, 11, 21);

class ProgramStatements : public ::testing::Test {
protected:
    static void SetUpTestSuite()
    {
        dir_ = new QTemporaryDir;
        path_ = dir_->filePath(QStringLiteral("seal.db"));
        demo::buildDatabase({path_, 200, 7, kToday});
        // The characters that differ between CP932 converters (～ － ① 髙 﨑 and a
        // half-width voiced kana), and a double quote, in names, readings and addresses.
        sealtest::execSql(path_, QString::fromUtf8(R"(
UPDATE RIYOUSHA SET cName = '髙﨑　"りえ"', cNameKana = 'ﾀｶｻｷ ﾘｴ', cAdress1 = '東京都～区①－２'
 WHERE nIDNo = (SELECT min(nIDNo) FROM RIYOUSHA WHERE iKyotenCd = 1 AND iKyotenEb = 1);
UPDATE RIYOUSHA SET cNameKana = 'ｶﾞﾄｳ ﾀﾛｳ'
 WHERE nIDNo = (SELECT max(nIDNo) FROM RIYOUSHA WHERE iKyotenCd = 1 AND iKyotenEb = 1);
UPDATE STAFF SET cName = '髙﨑　～－①', cNameKana = 'ﾀｶｻｷ'
 WHERE nIDNo = (SELECT min(nIDNo) FROM STAFF WHERE iKyotenCd = 1 AND iKyotenEb = 1);
UPDATE DOCTOR SET cName = '﨑山　"医師"' WHERE rowid = (SELECT min(rowid) FROM DOCTOR);
)"));
    }
    static void TearDownTestSuite()
    {
        delete dir_;
        dir_ = nullptr;
    }

    void SetUp() override
    {
        app::iKyotenCd = short(demo::kFirstOffice.iKyotenCd);
        app::iKyotenEb = short(demo::kFirstOffice.iKyotenEb);
        reference.Open(QStringLiteral("Provider=SQLite;Data Source=") + path_);
    }

    // The statement on each road that is installed, against the SQLite road.
    void expectSameOnEveryRoad(const QString& sql)
    {
        SCOPED_TRACE(sql.left(120).toStdString());
        const adotest::Table want = adotest::readAll(reference, sql);
        ASSERT_FALSE(want.rows.empty()) << "the statement must find rows to be worth comparing";
        int roads = 0;
        if (adotest::SqliteOdbcRoad::missing().isEmpty()) {
            Connection odbc;
            odbc.Open(adotest::sqliteOdbcConnect(path_));
            adotest::expectSameRows(adotest::readAll(odbc, sql), want, adotest::SqliteOdbcRoad::kVarCharType);
            ++roads;
        }
        if (adotest::FreeTdsRoad::missing().isEmpty()) {
            tdstest::ServerOptions options;
            options.databasePath = path_;
            tdstest::TdsTestServer server(options);
            Connection tds;
            tds.Open(tdstest::freeTdsConnectString(server.start(), options));
            adotest::expectSameRows(adotest::readAll(tds, sql), want, adotest::FreeTdsRoad::kVarCharType);
            ++roads;
        }
        if (roads == 0) GTEST_SKIP() << "no ODBC driver is installed";
    }

    static QTemporaryDir* dir_;
    static QString path_;
    Connection reference;
};

QTemporaryDir* ProgramStatements::dir_ = nullptr;
QString ProgramStatements::path_;

TEST_F(ProgramStatements, ThePatientQuery)
{
    const QDate month(kToday.year(), kToday.month(), 1);
    for (int kaisyu : {0, 1, 2})
        expectSameOnEveryRoad(extract::csRiyoushaSql(app::iKyotenCd, app::iKyotenEb, month, kaisyu));
}

TEST_F(ProgramStatements, EachKindsRead)
{
    for (const QString& sql : {data::sqlHokenjaData(), data::sqlDoctorData(), data::sqlSyoukaiData(),
                               dialogs::sqlStaffMast(), selection::sqlCbStaffData()})
        expectSameOnEveryRoad(sql);
}

TEST_F(ProgramStatements, TheConsentAndProgressExtractions)
{
    selection::DouiCondition consent;
    consent.iMode = 1;
    consent.tFrom = kToday.addYears(-3);
    consent.tTo = kToday.addYears(1);
    for (short sort : {0, 1}) {
        consent.iSort = sort;
        expectSameOnEveryRoad(selection::sqlKanjaData(consent, 0));
    }
    selection::KeikaCondition progress;
    progress.tFrom = QDate(kToday.year() - 1, kToday.month(), 1);
    progress.tTo = QDate(kToday.year(), kToday.month(), kToday.daysInMonth());
    progress.sFromMonth = progress.tFrom.toString(QStringLiteral("yyyy/MM"));
    progress.sToMonth = progress.tTo.toString(QStringLiteral("yyyy/MM"));
    expectSameOnEveryRoad(selection::sqlKeikaData(progress));
}

TEST_F(ProgramStatements, TheStaffSearch)
{
    dialogs::StaffFilter filter;
    expectSameOnEveryRoad(dialogs::sqlStaffList(filter));
    // A reading typed in hiragana finds the half-width one.
    filter.sSiboriKana = QStringLiteral("たかさき");
    expectSameOnEveryRoad(dialogs::sqlStaffList(filter));
}

}  // namespace
