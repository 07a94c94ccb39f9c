// The four statements of the progress report screen, character for character: each is
// kept whole in its golden file (tests/data/fixtures/golden/keika_*.sql), which the
// schema test also compiles against the suite's tables.

#include "selection/keika_extract.h"

#include "support/globals_scope.h"
#include "support/golden.h"
#include "support/param_names.h"
#include "support/printers.h"

#include "app/globals.h"

#include <gtest/gtest.h>

using namespace selection;

namespace {

struct KeikaCase {
    const char* name;
    short mode;
    qint32 staff;  // 0: every staff member
};

class KeikaStatement : public ::testing::TestWithParam<KeikaCase> {
protected:
    sealtest::GlobalsScope globals;
};

// Office 1, branch 2, reports of 2026/09 to 2026/11.
TEST_P(KeikaStatement, IsItsGoldenText)
{
    app::iKyotenCd = 1;
    app::iKyotenEb = 2;
    KeikaCondition c;
    c.sFromMonth = QStringLiteral("2026/09");
    c.sToMonth = QStringLiteral("2026/11");
    c.tFrom = QDate(2026, 9, 1);
    c.tTo = QDate(2026, 11, 30);
    c.iKeikaMode = GetParam().mode;
    if (GetParam().staff) c.nStaffNo = GetParam().staff;
    const QString sql = sqlKeikaData(c);
    sealtest::expectGolden(QString::fromLatin1(GetParam().name) + QStringLiteral(".sql"), sql);
    EXPECT_EQ(sql.count(u'('), sql.count(u')'));
}

// The doctors of the newer consent; the care managers of one staff member; the medical
// institutions, with eleven nested joins and the top-level OR (the staff member is not
// used there); the facilities of the care managers.
INSTANTIATE_TEST_SUITE_P(Modes, KeikaStatement,
                         ::testing::Values(KeikaCase{"keika_doctors", 0, 0}, KeikaCase{"keika_care_managers", 1, 12},
                                           KeikaCase{"keika_institutions", 2, 12}, KeikaCase{"keika_facilities", 3, 0}),
                         sealtest::ByName{});

}  // namespace
