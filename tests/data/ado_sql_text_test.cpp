// The SQLite dialect step and the read safety rule: both must see string literals as
// the server sees them, so that nothing inside a literal is rewritten or blamed.

#include "data/ado/read_safety.h"
#include "data/ado/sqlite_dialect.h"

#include <QDateTime>

#include "support/param_names.h"
#include <gtest/gtest.h>

using data::ado::orderByOverSelect;
using data::ado::readSafetyViolation;
using data::ado::toSqliteDialect;

namespace {

const QDateTime kNow(QDate(2026, 11, 21), QTime(9, 5, 7));

struct Rewrite {
    const char* name;
    const char* tsql;
    const char* sqlite;
};

class DialectTest : public ::testing::TestWithParam<Rewrite> {};

TEST_P(DialectTest, RewritesOnlyWhatSqliteLacks)
{
    EXPECT_EQ(toSqliteDialect(QString::fromUtf8(GetParam().tsql), kNow), QString::fromUtf8(GetParam().sqlite));
}

INSTANTIATE_TEST_SUITE_P(
    Statements, DialectTest,
    ::testing::Values(
        Rewrite{"isnull", " WHERE isnull(iChusiFlg, 0) = 0", " WHERE ifnull(iChusiFlg, 0) = 0"},
        Rewrite{"isnull_any_case_and_blank", "select ISNULL (a,0), IsNull(b,'')", "select ifnull (a,0), ifnull(b,'')"},
        Rewrite{"isnull_as_part_of_a_name", "select xisnull(a), isnull_flag from t",
                "select xisnull(a), isnull_flag from t"},
        Rewrite{"isnull_without_call", "select a from t where a is null", "select a from t where a is null"},
        Rewrite{"getdate", "update t set tUpdateTime = getdate() where n = 1",
                "update t set tUpdateTime = '2026/11/21 09:05:07' where n = 1"},
        Rewrite{"getdate_spaced", "values (GETDATE( ))", "values ('2026/11/21 09:05:07')"},
        Rewrite{"convert_112", "SUBSTRING(CONVERT(VARCHAR, tStartDate, 112),1,4)",
                "SUBSTRING(replace(replace(substr(tStartDate, 1, 10), '/', ''), '-', ''),1,4)"},
        Rewrite{"convert_112_of_a_text_column_keeps_the_text", "CONVERT(VARCHAR, u.cStartDate, 112)",
                "CAST(u.cStartDate AS TEXT)"},
        Rewrite{"plus_between_texts_joins",
                "SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),1,4)+SUBSTRING(CONVERT(VARCHAR, cStartDate, 112),6,2) <= "
                "'202611'",
                "SUBSTRING(CAST(cStartDate AS TEXT),1,4)||SUBSTRING(CAST(cStartDate AS TEXT),6,2) <= '202611'"},
        Rewrite{"plus_beside_a_literal_or_text_column_joins", "select r.cName + ' ' + r.cKeisho, 'ID' + cIDno from t",
                "select r.cName || ' ' || r.cKeisho, 'ID' || cIDno from t"},
        Rewrite{"plus_between_numbers_adds", "select nIDNo + 1, (iA + iB) + 2 from t",
                "select nIDNo + 1, (iA + iB) + 2 from t"},
        Rewrite{"convert_112_sized_nested", "convert(varchar(8), isnull(t.tDay, GetDate()), 112)",
                "replace(replace(substr(ifnull(t.tDay, '2026/11/21 09:05:07'), 1, 10), '/', ''), '-', '')"},
        Rewrite{"convert_other_style_untouched", "CONVERT(VARCHAR, tDay, 111)", "CONVERT(VARCHAR, tDay, 111)"},
        Rewrite{"literals_untouched",
                "select 'isnull(x)', 'GetDate()', 'CONVERT(VARCHAR, x, 112)' from t where c = 'it''s isnull('",
                "select 'isnull(x)', 'GetDate()', 'CONVERT(VARCHAR, x, 112)' from t where c = 'it''s isnull('"},
        Rewrite{"quoted_names_untouched", "select [isnull(a)], \"getdate()\" from t",
                "select [isnull(a)], \"getdate()\" from t"},
        Rewrite{"japanese_and_full_width_untouched", " AND REPLACE(TRIM(RIYOUSHA.cHTIryoname), '　', '') <> '手渡し' ",
                " AND REPLACE(TRIM(RIYOUSHA.cHTIryoname), '　', '') <> '手渡し' "}),
    sealtest::ByName{});

TEST(OrderByOverSelect, OrdersAnOuterSelectByResultColumns)
{
    const QString sql = QStringLiteral(
        " select RIYOUSHA.nIDNo, RIYOUSHA_DOUI_REC.tDouiDay as tKijunDay from RIYOUSHA_DOUI_REC, RIYOUSHA"
        " WHERE RIYOUSHA.nIDNo = RIYOUSHA_DOUI_REC.nIDNo ORDER BY nTantou, EmptyFlg, nIDNo ,tKijunDay");
    EXPECT_EQ(orderByOverSelect(sql),
              QStringLiteral("SELECT * FROM (select RIYOUSHA.nIDNo, RIYOUSHA_DOUI_REC.tDouiDay as tKijunDay from "
                             "RIYOUSHA_DOUI_REC, RIYOUSHA WHERE RIYOUSHA.nIDNo = RIYOUSHA_DOUI_REC.nIDNo) "
                             "ORDER BY nTantou, EmptyFlg, nIDNo ,tKijunDay"));
}

TEST(OrderByOverSelect, DropsTableQualifiersAndIgnoresInnerOrderAndLiterals)
{
    const QString sql = QStringLiteral(
        "select a.nIDNo, (select max(x) from y order by x) m from a where a.c = 'order by z' order by a.nIDNo desc");
    EXPECT_EQ(orderByOverSelect(sql),
              QStringLiteral("SELECT * FROM (select a.nIDNo, (select max(x) from y order by x) m from a where "
                             "a.c = 'order by z') ORDER BY nIDNo desc"));
}

TEST(OrderByOverSelect, NothingWithoutAnOuterOrderOrForAnotherVerb)
{
    EXPECT_TRUE(orderByOverSelect(QStringLiteral("select * from t where c = 'x order by y'")).isEmpty());
    EXPECT_TRUE(orderByOverSelect(QStringLiteral("select * from (select a from t order by a) s")).isEmpty());
    EXPECT_TRUE(orderByOverSelect(QStringLiteral("delete from t order by a")).isEmpty());
}

struct Read {
    const char* name;
    const char* sql;
    const char* reasonPart;  // empty: the read is allowed
};

class ReadSafetyTest : public ::testing::TestWithParam<Read> {};

TEST_P(ReadSafetyTest, AllowsOneSelectOnly)
{
    const QString violation = readSafetyViolation(QString::fromUtf8(GetParam().sql));
    const QString expected = QString::fromUtf8(GetParam().reasonPart);
    if (expected.isEmpty())
        EXPECT_TRUE(violation.isEmpty()) << violation.toStdString();
    else
        EXPECT_TRUE(violation.contains(expected)) << violation.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Statements, ReadSafetyTest,
    ::testing::Values(Read{"plain_select", "SELECT nIDNo, cName FROM STAFF WHERE isnull(iChusiFlg, 0) = 0", ""},
                      Read{"leading_blanks_and_lines", "  \r\n select * from t", ""},
                      Read{"subquery_and_union", "select a from (select a from t) s union select b from u", ""},
                      Read{"semicolon_in_literal", "select * from t where c = 'a;b'", ""},
                      Read{"comment_marks_in_literal", "select * from t where c like '%--%' or c = '/*'", ""},
                      Read{"doubled_quote_in_literal", "select * from t where c = 'O''Brien'", ""},
                      Read{"verb_in_literal", "select * from t where c = 'delete from t'", ""},
                      Read{"update_as_part_of_a_name", "select tUpdateTime, iDeleted from t", ""},
                      Read{"semicolon", "select * from t; delete from t", "';'"},
                      Read{"trailing_semicolon", "select * from t;", "';'"},
                      Read{"line_comment", "select * from t where c = 'x' --'", "'--'"},
                      Read{"block_comment", "select * from t /* x */", "'/*'"},
                      Read{"unterminated_block_comment", "select * from t /* x", "'/*'"},
                      Read{"unterminated_literal", "select * from t where cName like '%O'Brien%'", "(')"},
                      Read{"batch_without_semicolon", "select * from t where c = 'x' delete from t where 'a' = 'a'",
                           "(delete)"},
                      Read{"select_into", "select * into t2 from t", "(into)"},
                      Read{"exec", "exec sp_who", "SELECT 文ではありません"},
                      Read{"update", "UPDATE t SET a = 1", "SELECT 文ではありません"},
                      Read{"bracketed_select", "(select 1)", "SELECT 文ではありません"}, Read{"empty", "   ", "空"}),
    sealtest::ByName{});

}  // namespace
