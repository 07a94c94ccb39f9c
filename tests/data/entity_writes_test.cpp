// Writes of the table classes: statements, the rows they leave, transactions of their
// own or of the caller, and failures that leave nothing half-written.

#include "data/ct_caremane.h"
#include "data/ct_corp.h"
#include "data/ct_shinseisyo.h"
#include "data/ct_sisetsu.h"
#include "data/ct_staff.h"
#include "data/riyousha_map.h"

#include "base/text_file.h"

#include "support/entity_db.h"
#include "support/golden.h"

#include <QFile>

#include <functional>
#include <memory>
#include <vector>

namespace {

using namespace data;

const QDateTime kServerNow(QDate(2026, 11, 21), QTime(10, 30, 0));

class WritesTest : public sealtest::InstallationTest {
protected:
    void SetUp() override
    {
        InstallationTest::SetUp();
        platform_.setMachineName(QStringLiteral("UKETSUKE-2"));
        connect(db_);
        db_.adoConnection().setClock([] { return kServerNow; });
    }

    void TearDown() override
    {
        tables_.clear();
        gsChizuSetting.clear();
        InstallationTest::TearDown();
    }

    static cD_CORP office(qint32 nIDNo, const QString& name)
    {
        cD_CORP row;
        row.nIDNo = nIDNo;
        row.cShamei1 = name;
        row.cYubinNo = QStringLiteral("160-0022");
        row.iType = 1;
        row.nLat = 35.6895;
        row.nLon = 139.6917;
        row.cEmail = QStringLiteral("info@example.jp");
        return row;
    }

    void loginFile(const QStringList& lines)
    {
        ASSERT_TRUE(base::writeTextFile(dir_.path() + QStringLiteral("/loginuser.cid"), lines).ok);
    }

    // A table class on the fixture's connection, kept until the test ends.
    template <class Table>
    Table& table()
    {
        auto t = std::make_shared<Table>();
        t->iInit(db_);
        tables_.push_back(t);
        return *t;
    }

    cT_ADODB db_;
    std::vector<std::shared_ptr<void>> tables_;
};

// The write statements whole, in tests/data/fixtures/golden/corp_*.sql: the office's
// two numbers, then the table's columns in their order, a number as a plain decimal,
// the machine name and the server's time; update and delete end in the row's key.
TEST_F(WritesTest, StatementsAreTheirGoldenTexts)
{
    const cD_CORP row = office(4, QStringLiteral("さくら"));
    sealtest::expectGolden(QStringLiteral("corp_insert.sql"), cT_CORP::sqlDataInsert(row, QStringLiteral("PC1")));
    sealtest::expectGolden(QStringLiteral("corp_update.sql"), cT_CORP::sqlDataUpdate(row, QStringLiteral("PC1")));
    sealtest::expectGolden(QStringLiteral("corp_delete.sql"), cT_CORP::sqlData削除(office(4, QString())));
}

TEST_F(WritesTest, InsertUpdateDeleteLeaveExactlyTheirRow)
{
    run(QStringLiteral("INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, cShamei1) VALUES (1, 3, 4, '他拠点の4番')"));
    cT_CORP& corps = table<cT_CORP>();
    cD_CORP row = office(4, QStringLiteral("さくら鍼灸院"));
    ASSERT_EQ(corps.iDataInsert(&row, true), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(
        column(QStringLiteral("SELECT cShamei1 || '|' || cPcName || '|' || tUpDateTime || '|' || nLat || '|' || iType "
                              "FROM CORP WHERE iKyotenCd = 1 AND iKyotenEb = 2")),
        QStringList{QStringLiteral("さくら鍼灸院|UKETSUKE-2|2026/11/21 10:30:00|35.6895|1")});

    row.cShamei1 = QStringLiteral("さくら鍼灸院 本院");
    row.iType = 0;
    ASSERT_EQ(corps.iDataUpdate(&row, true), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(column(QStringLiteral(
                  "SELECT iKyotenEb || ':' || cShamei1 || ':' || ifnull(iType, '') FROM CORP ORDER BY iKyotenEb")),
              (QStringList{QStringLiteral("2:さくら鍼灸院 本院:0"), QStringLiteral("3:他拠点の4番:")}));

    ASSERT_EQ(corps.iData削除(&row, true), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(column(QStringLiteral("SELECT cShamei1 FROM CORP")), QStringList{QStringLiteral("他拠点の4番")});
}

TEST_F(WritesTest, EveryPairWritesAndDeletesItsOwnRow)
{
    const std::vector<std::pair<QString, std::function<short(bool)>>> cases = {
        {QStringLiteral("CAREMANE"),
         [&](bool del) {
             cT_CAREMANE& t = table<cT_CAREMANE>();
             cD_CAREMANE r;
             r.nIDNo = 6;
             r.cName = QStringLiteral("高橋");
             r.sBirthday = QStringLiteral("1965/04/01");
             r.SISETSUSHAMEI = QStringLiteral("joined, never written");
             return del ? t.iData削除(&r, true) : t.iDataInsert(&r, true);
         }},
        {QStringLiteral("STAFF"),
         [&](bool del) {
             cT_STAFF& t = table<cT_STAFF>();
             cD_STAFF r;
             r.nIDNo = 6;
             r.cName = QStringLiteral("佐藤");
             r.iKyotenCd = 9;  // the office of a write is always this installation's
             return del ? t.iData削除(&r, true) : t.iDataInsert(&r, true);
         }},
        {QStringLiteral("SISETSU"),
         [&](bool del) {
             cT_SISETSU& t = table<cT_SISETSU>();
             cD_SISETSU r;
             r.nIDNo = 6;
             r.cShamei1 = QStringLiteral("ひかり苑");
             return del ? t.iData削除(&r, true) : t.iDataInsert(&r, true);
         }},
        {QStringLiteral("SHINSEISYO"),
         [&](bool del) {
             cT_SHINSEISYO& t = table<cT_SHINSEISYO>();
             cD_SHINSEISYO r;
             r.nIDNo = 6;
             r.cDispName = QStringLiteral("申請書");
             return del ? t.iData削除(&r, true) : t.iDataInsert(&r, true);
         }},
    };
    for (const auto& [table, write] : cases) {
        SCOPED_TRACE(table.toStdString());
        EXPECT_EQ(write(false), 0) << db_.sErrMsg().toStdString();
        EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM ") + table +
                         QStringLiteral(" WHERE iKyotenCd = 1 AND iKyotenEb = 2 AND nIDNo = 6")),
                  1);
        EXPECT_EQ(write(true), 0);
        EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM ") + table), 0);
    }
}

TEST_F(WritesTest, EmptyDateGoesInAsNullAndADateAsItsText)
{
    cT_STAFF& t = table<cT_STAFF>();
    cD_STAFF r;
    r.nIDNo = 1;
    r.cName = QStringLiteral("佐藤");
    r.sBirthday = QStringLiteral("1980/02/29");
    ASSERT_EQ(t.iDataInsert(&r, true), 0) << t.sErrMsg().toStdString();
    EXPECT_EQ(column(QStringLiteral("SELECT tBirthday || '|' || ifnull(tRday, 'NULL') FROM STAFF")),
              QStringList{QStringLiteral("1980/02/29|NULL")});
}

// A call of method with no row fails with text.
template <class Table, class Base, class Row>
void expectAbsent(short (Base::*method)(const Row*, bool), bool bTrans, const char16_t* text)
{
    Table table;
    EXPECT_EQ((table.*method)(nullptr, bTrans), -1);
    EXPECT_EQ(table.sErrMsg(), QString::fromUtf16(text));
}

TEST_F(WritesTest, AbsentRowFailsWithTheTablesOwnText)
{
    expectAbsent<cT_CORP>(&cT_CORP::iDataInsert, true, u"CORPが無効です。");
    expectAbsent<cT_CORP>(&cT_CORP::iData削除, false, u"CORPが無効です。");
    expectAbsent<cT_CAREMANE>(&cT_CAREMANE::iDataUpdate, true, u"CAREMANEが無効です。");
    expectAbsent<cT_CAREMANE>(&cT_CAREMANE::iDataUpdate_ToRiyousha, true, u"CAREMANEが無効です。");
    expectAbsent<cT_STAFF>(&cT_STAFF::iData削除, true, u"STAFFが無効です。");
    expectAbsent<cT_SISETSU>(&cT_SISETSU::iDataInsert, true, u"Sisetsuが無効です。");
    expectAbsent<cT_SISETSU>(&cT_SISETSU::iData削除, true, u"Sisetsuが無効です。");
    for (auto cascade : {&cT_SISETSU::iDataUpdate_ToRiyousha, &cT_SISETSU::iDataUpdate_ToCareMane,
                         &cT_SISETSU::iDataUpdate_ToSoudan, &cT_SISETSU::iDataUpdate_ToRiyousha_Iryou})
        expectAbsent<cT_SISETSU>(cascade, true, u"SISETUが無効です。");
    expectAbsent<cT_SHINSEISYO>(&cT_SHINSEISYO::iDataUpdate, true, u"SHINSEISYOが無効です。");
}

TEST_F(WritesTest, MachineNameThatCannotBeTakenStopsInsertAndUpdateButNotDelete)
{
    run(QStringLiteral("INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, cShamei1) VALUES (1, 2, 4, '元')"));
    platform_.setMachineName(QString(260, u'X'));
    cT_CORP& corps = table<cT_CORP>();
    cD_CORP row = office(4, QStringLiteral("新"));
    EXPECT_EQ(corps.iDataUpdate(&row, true), -1);
    EXPECT_EQ(corps.sErrMsg(), QStringLiteral("コンピューター名の取得に失敗しました。"));
    row.nIDNo = 5;
    EXPECT_EQ(corps.iDataInsert(&row, true), -1);
    EXPECT_EQ(column(QStringLiteral("SELECT cShamei1 FROM CORP")), QStringList{QStringLiteral("元")});
    row.nIDNo = 4;
    EXPECT_EQ(corps.iData削除(&row, true), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM CORP")), 0);
}

TEST_F(WritesTest, QuoteInAValueFailsTheStatementWithItsWholeText)
{
    cT_CORP& corps = table<cT_CORP>();
    cD_CORP row = office(4, QStringLiteral("O'Hara治療院"));
    EXPECT_EQ(corps.iDataInsert(&row, true), -1);
    EXPECT_TRUE(corps.sErrMsg().startsWith(QStringLiteral("ERR:iExecSQL ("))) << corps.sErrMsg().toStdString();
    EXPECT_TRUE(
        corps.sErrMsg().endsWith(QStringLiteral("\rSQL=") + cT_CORP::sqlDataInsert(row, QStringLiteral("UKETSUKE-2"))));
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM CORP")), 0);
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(WritesTest, FailedLaterStepRollsTheWholeWriteBack)
{
    run(QStringLiteral("INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 2, 3, 'O''Brien')"));
    cT_STAFF& t = table<cT_STAFF>();
    cD_STAFF r;
    r.nIDNo = 3;
    r.cName = QStringLiteral("O'Brien");  // the delete runs; its log line breaks
    EXPECT_EQ(t.iData削除(&r, true), -1);
    EXPECT_TRUE(t.sErrMsg().contains(QStringLiteral("STAFF_DELETE_LOG"))) << t.sErrMsg().toStdString();
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM STAFF")), 1);
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM STAFF_DELETE_LOG")), 0);
}

TEST_F(WritesTest, WithoutTheFlagTheCallersTransactionDecides)
{
    cT_CORP& corps = table<cT_CORP>();
    cD_CORP a = office(1, QStringLiteral("一"));
    cD_CORP b = office(2, QStringLiteral("二"));
    ASSERT_EQ(db_.iBeginTrans(), 0);
    ASSERT_EQ(corps.iDataInsert(&a, false), 0) << corps.sErrMsg().toStdString();
    ASSERT_EQ(corps.iDataInsert(&b, false), 0);
    ASSERT_EQ(db_.iRollback(), 0);
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM CORP")), 0);

    ASSERT_EQ(db_.iBeginTrans(), 0);
    ASSERT_EQ(corps.iDataInsert(&a, false), 0);
    cD_CORP broken = office(3, QStringLiteral("'"));
    EXPECT_EQ(corps.iDataInsert(&broken, false), -1);  // leaves the transaction to the caller
    ASSERT_EQ(corps.iDataInsert(&b, false), 0);
    ASSERT_EQ(db_.iCommitTrans(), 0);
    EXPECT_EQ(column(QStringLiteral("SELECT cShamei1 FROM CORP ORDER BY nIDNo")),
              (QStringList{QStringLiteral("一"), QStringLiteral("二")}));
}

TEST_F(WritesTest, FailedCommitRollsBackAndLeavesNoRow)
{
    // A server that refuses the commit: each new office row leaves an orphan behind a
    // foreign key checked only at commit.
    run(QStringLiteral("CREATE TABLE PARENT_T (id INTEGER PRIMARY KEY);"
                       "CREATE TABLE ORPHAN_T (pid INTEGER REFERENCES PARENT_T(id) DEFERRABLE INITIALLY DEFERRED);"
                       "CREATE TRIGGER CORP_ORPHAN AFTER INSERT ON CORP WHEN NEW.cShamei1 = '拒否' "
                       "BEGIN INSERT INTO ORPHAN_T VALUES (999); END;"));
    ASSERT_EQ(db_.iExecSQL(QStringLiteral("PRAGMA foreign_keys = ON")), 0) << db_.sErrMsg().toStdString();
    cT_CORP& corps = table<cT_CORP>();
    cD_CORP row = office(1, QStringLiteral("拒否"));
    EXPECT_EQ(corps.iDataInsert(&row, true), -1);
    EXPECT_TRUE(corps.sErrMsg().startsWith(QStringLiteral("ERR:CommitTrans ("))) << corps.sErrMsg().toStdString();
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM CORP")), 0);
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM ORPHAN_T")), 0);
    // The object stays usable.
    row.cShamei1 = QStringLiteral("一");
    EXPECT_EQ(corps.iDataInsert(&row, true), 0) << corps.sErrMsg().toStdString();
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM CORP")), 1);
}

TEST_F(WritesTest, DeleteLogsWhoDeletedWhatAndWhen)
{
    loginFile({QStringLiteral("[User]=受付"), QStringLiteral("[LoginId]=tanaka01"), QStringLiteral("[LoginId]=other")});
    run(QStringLiteral("INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 2, 3, '佐藤　花子');"
                       "INSERT INTO SISETSU (iKyotenCd, iKyotenEb, nIDNo, cShamei1) VALUES (1, 2, 8, 'ひかり苑')"));
    cT_STAFF& staff = table<cT_STAFF>();
    cD_STAFF s;
    s.nIDNo = 3;
    s.cName = QStringLiteral("佐藤　花子");
    ASSERT_EQ(staff.iData削除(&s, true), 0) << staff.sErrMsg().toStdString();
    cT_SISETSU& sisetsu = table<cT_SISETSU>();
    cD_SISETSU f;
    f.nIDNo = 8;
    f.cShamei1 = QStringLiteral("ひかり苑");
    ASSERT_EQ(sisetsu.iData削除(&f, true), 0) << sisetsu.sErrMsg().toStdString();

    const QString fields = QStringLiteral("SELECT iKyotenCd || '-' || iKyotenEb || '|' || nIDNo || '|' || cName || '|' "
                                          "|| deleteLoginID || '|' || deleteDate ");
    EXPECT_EQ(column(fields + QStringLiteral("FROM STAFF_DELETE_LOG")),
              QStringList{QStringLiteral("1-2|3|佐藤　花子|tanaka01|2026/11/21 10:30:00")});
    EXPECT_EQ(column(fields + QStringLiteral("FROM SISETSU_DELETE_LOG")),
              QStringList{QStringLiteral("1-2|8|ひかり苑|tanaka01|2026/11/21 10:30:00")});
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM STAFF")) +
                  scalar(QStringLiteral("SELECT COUNT(*) FROM SISETSU")),
              0);
}

TEST_F(WritesTest, LoginIdIsEmptyWithoutTheFileOrTheLine)
{
    EXPECT_EQ(entity::csGetLoginId(), QString());
    loginFile({QStringLiteral("[User]=受付"), QStringLiteral(" [LoginId]=indented")});
    EXPECT_EQ(entity::csGetLoginId(), QString());
    loginFile({QStringLiteral("[LoginId]=")});
    EXPECT_EQ(entity::csGetLoginId(), QString());
    loginFile({QStringLiteral("[LoginId]=鈴木 ")});
    EXPECT_EQ(entity::csGetLoginId(), QStringLiteral("鈴木 "));

    QFile::remove(dir_.path() + QStringLiteral("/loginuser.cid"));
    run(QStringLiteral("INSERT INTO STAFF (iKyotenCd, iKyotenEb, nIDNo, cName) VALUES (1, 2, 3, '佐藤')"));
    cT_STAFF& staff = table<cT_STAFF>();
    cD_STAFF s;
    s.nIDNo = 3;
    s.cName = QStringLiteral("佐藤");
    ASSERT_EQ(staff.iData削除(&s, true), 0) << staff.sErrMsg().toStdString();
    EXPECT_EQ(column(QStringLiteral("SELECT deleteLoginID FROM STAFF_DELETE_LOG")), QStringList{QString()});
}

TEST_F(WritesTest, MapEntriesFollowOnlyWhenTheSuiteSwitchIsOn)
{
    cT_CORP& corps = table<cT_CORP>();
    cD_CORP row = office(4, QStringLiteral("さくら"));
    ASSERT_EQ(corps.iDataInsert(&row, false), 0);
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM RIYOUSHA_MAP")), 0);

    gsChizuSetting = QStringLiteral("1");
    row.nIDNo = 5;
    ASSERT_EQ(corps.iDataInsert(&row, false), 0) << corps.sErrMsg().toStdString();
    row.nLat = 34.5;
    ASSERT_EQ(corps.iDataUpdate(&row, false), 0) << corps.sErrMsg().toStdString();
    cT_STAFF& staff = table<cT_STAFF>();
    cD_STAFF s;
    s.nIDNo = 9;
    s.nLat = 1.25;
    s.nLon = 2.5;
    ASSERT_EQ(staff.iDataInsert(&s, false), 0) << staff.sErrMsg().toStdString();
    EXPECT_EQ(
        column(QStringLiteral("SELECT iKyotenCd || '-' || iKyotenEb || '|' || nIDNo || '|' || nLat || '|' || nLon "
                              "FROM RIYOUSHA_MAP ORDER BY nIDNo")),
        (QStringList{QStringLiteral("1-2|5|34.5|139.6917"), QStringLiteral("1-2|9|1.25|2.5")}));
}

TEST_F(WritesTest, MapEntryFailureIsTheWritesFailure)
{
    gsChizuSetting = QStringLiteral("1");
    run(QStringLiteral("DROP TABLE RIYOUSHA_MAP"));
    cT_SISETSU& t = table<cT_SISETSU>();
    cD_SISETSU r;
    r.nIDNo = 2;
    EXPECT_EQ(t.iDataInsert(&r, false), -1);
    EXPECT_TRUE(t.sErrMsg().startsWith(QStringLiteral("iChizuLoad() でエラー\r\n("))) << t.sErrMsg().toStdString();
}

}  // namespace
