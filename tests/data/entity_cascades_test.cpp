// After a change of a care manager or a facility, the copies of its data in patients,
// care managers, consultations and doctors: exactly the rows that name it, in one
// write that leaves nothing behind when it fails.

#include "data/ct_caremane.h"
#include "data/ct_sisetsu.h"

#include "support/entity_db.h"

namespace {

using namespace data;

const QDateTime kServerNow(QDate(2026, 11, 21), QTime(10, 30, 0));
const QString kStamp = QStringLiteral("2026/11/21 10:30:00");

class CascadesTest : public sealtest::InstallationTest {
protected:
    void SetUp() override
    {
        InstallationTest::SetUp();
        connect(db_);
        db_.adoConnection().setClock([] { return kServerNow; });
        sisetsu_.iInit(db_);
        // Patients 1 to 4 of this office, 1 of office 1-3; each with its RIYOUSHA_SUB row.
        run(QStringLiteral(
            "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, tUpdateTime) VALUES "
            "(1, 2, 1, '青木', '2020/01/01'), (1, 2, 2, '石井', '2020/01/01'), (1, 2, 3, '上田', '2020/01/01'),"
            "(1, 2, 4, '江藤', '2020/01/01'), (1, 3, 1, '他拠点', '2020/01/01');"
            "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iCareCd, iSyoukaiSisetsuCd, iIsiCd, iIsiCd2, "
            "cCareName) VALUES "
            "(1, 2, 1, 7, 20, 101, NULL, '旧名'), (1, 2, 2, 7, NULL, NULL, 101, '旧名'), (1, 2, 3, 8, 20, 102, 103, "
            "'別'),"
            "(1, 2, 4, NULL, NULL, NULL, NULL, NULL), (1, 3, 1, 7, 20, 101, 101, '旧名');"
            "INSERT INTO CAREMANE (iKyotenCd, iKyotenEb, nIDNo, cName, iSisetsuCode) VALUES "
            "(1, 2, 7, '高橋', 20), (1, 2, 8, '田中', 21), (1, 3, 7, '他拠点', 20);"
            "INSERT INTO SOUDAN (nIDNo, iSisetsuCode, cKikan) VALUES (1, 20, '旧'), (2, 21, '別');"
            "INSERT INTO DOCTOR (cIDno, cName, iSisetsuCode, cKikan) VALUES ('101', '医師A', 20, '旧'), "
            "('102', '医師B', 21, '別'), ('103', '医師C', 20, '旧')"));
    }

    // The stamped patients as "office:number".
    QStringList stamped() const
    {
        return column(QStringLiteral("SELECT iKyotenEb || ':' || nIDNo FROM RIYOUSHA WHERE tUpdateTime = '") + kStamp +
                      QStringLiteral("' ORDER BY iKyotenEb, nIDNo"));
    }

    static cD_SISETSU facility()
    {
        cD_SISETSU f;
        f.nIDNo = 20;
        f.cShamei1 = QStringLiteral("ひかり病院");
        f.cShameiKana1 = QStringLiteral("ﾋｶﾘ");
        f.cYubinNo = QStringLiteral("231-0001");
        f.cAddress1 = QStringLiteral("横浜市中区1-1");
        f.cAddress2 = QStringLiteral("ひかりビル");
        f.cTelNo = QStringLiteral("045-111-2222");
        f.cFaxNo = QStringLiteral("045-111-2223");
        return f;
    }

    cT_ADODB db_;
    cT_SISETSU sisetsu_;
};

TEST_F(CascadesTest, CareManagerChangeReachesItsPatientsOfThisOffice)
{
    cT_CAREMANE t;
    t.iInit(db_);
    cD_CAREMANE c;
    c.nIDNo = 7;
    c.cName = QStringLiteral("高橋　新");
    c.cTelNo = QStringLiteral("045-000-0007");
    c.iSisetsuCode = 20;
    ASSERT_EQ(t.iDataUpdate_ToRiyousha(&c, true), 0) << t.sErrMsg().toStdString();
    EXPECT_EQ(
        column(QStringLiteral("SELECT iKyotenEb || ':' || nIDNo || '|' || ifnull(cCareName, '') || '|' || "
                              "ifnull(cCareTelNo, '') || '|' || ifnull(iCareSisetsuCd, '') FROM RIYOUSHA_SUB "
                              "ORDER BY iKyotenEb, nIDNo")),
        (QStringList{QStringLiteral("2:1|高橋　新|045-000-0007|20"), QStringLiteral("2:2|高橋　新|045-000-0007|20"),
                     QStringLiteral("2:3|別||"), QStringLiteral("2:4|||"), QStringLiteral("3:1|旧名||")}));
    EXPECT_EQ(stamped(), (QStringList{QStringLiteral("2:1"), QStringLiteral("2:2")}));
}

TEST_F(CascadesTest, FacilityReferralTelephone)
{
    const cD_SISETSU f = facility();
    ASSERT_EQ(sisetsu_.iDataUpdate_ToRiyousha(&f, true), 0) << sisetsu_.sErrMsg().toStdString();
    EXPECT_EQ(
        column(QStringLiteral("SELECT iKyotenEb || ':' || nIDNo FROM RIYOUSHA_SUB WHERE cSyoukaiTelNo = '045-111-2222' "
                              "ORDER BY iKyotenEb, nIDNo")),
        (QStringList{QStringLiteral("2:1"), QStringLiteral("2:3")}));
    EXPECT_EQ(stamped(), (QStringList{QStringLiteral("2:1"), QStringLiteral("2:3")}));
}

TEST_F(CascadesTest, FacilityAddressReachesItsCareManagersAndTheirPatients)
{
    const cD_SISETSU f = facility();
    ASSERT_EQ(sisetsu_.iDataUpdate_ToCareMane(&f, true), 0) << sisetsu_.sErrMsg().toStdString();
    EXPECT_EQ(column(QStringLiteral(
                  "SELECT iKyotenEb || ':' || nIDNo || '|' || ifnull(cYubinNo, '') || '|' || "
                  "ifnull(cAdress1, '') || '|' || ifnull(cAdress2, '') || '|' || ifnull(cTelNo, '') || '|' || "
                  "ifnull(cFaxNo, '') || '|' || ifnull(tUpDateTime, '') FROM CAREMANE ORDER BY iKyotenEb, nIDNo")),
              (QStringList{QStringLiteral("2:7|231-0001|横浜市中区1-1|ひかりビル|045-111-2222|045-111-2223|") + kStamp,
                           QStringLiteral("2:8||||||"), QStringLiteral("3:7||||||")}));
    EXPECT_EQ(
        column(QStringLiteral("SELECT iKyotenEb || ':' || nIDNo FROM RIYOUSHA_SUB WHERE cCareTelNo = '045-111-2222' "
                              "ORDER BY iKyotenEb, nIDNo")),
        (QStringList{QStringLiteral("2:1"), QStringLiteral("2:2")}));
    EXPECT_EQ(stamped(), (QStringList{QStringLiteral("2:1"), QStringLiteral("2:2")}));
}

TEST_F(CascadesTest, InstitutionReachesItsConsultations)
{
    const cD_SISETSU f = facility();
    ASSERT_EQ(sisetsu_.iDataUpdate_ToSoudan(&f, true), 0) << sisetsu_.sErrMsg().toStdString();
    EXPECT_EQ(
        column(QStringLiteral("SELECT nIDNo || '|' || cKikan || '|' || ifnull(cKikankana, '') || '|' || "
                              "ifnull(cAdress1, '') || '|' || ifnull(tUpdateTime, '') FROM SOUDAN ORDER BY nIDNo")),
        (QStringList{QStringLiteral("1|ひかり病院|ﾋｶﾘ|横浜市中区1-1|") + kStamp, QStringLiteral("2|別|||")}));
}

TEST_F(CascadesTest, InstitutionReachesItsDoctorsAndTheirPatientsConsents)
{
    const cD_SISETSU f = facility();
    ASSERT_EQ(sisetsu_.iDataUpdate_ToRiyousha_Iryou(&f, true), 0) << sisetsu_.sErrMsg().toStdString();
    EXPECT_EQ(column(QStringLiteral("SELECT cIDno || '|' || cKikan || '|' || ifnull(cAddress2, '') || '|' || "
                                    "ifnull(tUpdateTime, '') FROM DOCTOR ORDER BY cIDno")),
              (QStringList{QStringLiteral("101|ひかり病院|ひかりビル|") + kStamp, QStringLiteral("102|別||"),
                           QStringLiteral("103|ひかり病院|ひかりビル|") + kStamp}));
    // Patient 1: first doctor 101; patient 2: second doctor 101; patient 3: second 103.
    EXPECT_EQ(column(QStringLiteral("SELECT iKyotenEb || ':' || nIDNo || '|' || ifnull(cDouiIsiKikan1, '') || '|' || "
                                    "ifnull(cDouiIsiAdd1, '') || '|' || ifnull(cDouiIsiKikan2, '') || '|' || "
                                    "ifnull(cDouiIsiAdd2, '') FROM RIYOUSHA ORDER BY iKyotenEb, nIDNo")),
              (QStringList{QStringLiteral("2:1|ひかり病院|横浜市中区1-1 ひかりビル||"),
                           QStringLiteral("2:2|||ひかり病院|横浜市中区1-1 ひかりビル"),
                           QStringLiteral("2:3|||ひかり病院|横浜市中区1-1 ひかりビル"), QStringLiteral("2:4||||"),
                           QStringLiteral("3:1||||")}));
    EXPECT_EQ(stamped(), (QStringList{QStringLiteral("2:1"), QStringLiteral("2:2"), QStringLiteral("2:3")}));
}

TEST_F(CascadesTest, DoctorStatementFindsTheDoctorsThroughTheirInstitution)
{
    const QStringList statements = cT_SISETSU::sqlToRiyousha_Iryou(facility());
    ASSERT_EQ(statements.size(), 3);
    EXPECT_TRUE(
        statements[1].contains(QStringLiteral("RIYOUSHA_SUB.iIsiCd IN (\r\n SELECT DOCTOR.cIDNo\r\n FROM DOCTOR\r\n"
                                              " where DOCTOR.iSisetsuCode =20\r\n)")))
        << statements[1].toStdString();
    EXPECT_TRUE(statements[2].contains(QStringLiteral("RIYOUSHA_SUB.iIsiCd2 IN (")));
}

TEST_F(CascadesTest, FailingLaterStatementUndoesTheEarlierOnes)
{
    cD_SISETSU f = facility();
    f.cShamei1 = QStringLiteral("O'Neil病院");  // DOCTOR's update breaks at the name
    EXPECT_EQ(sisetsu_.iDataUpdate_ToRiyousha_Iryou(&f, true), -1);
    EXPECT_TRUE(sisetsu_.sErrMsg().startsWith(QStringLiteral("ERR:iExecSQL ("))) << sisetsu_.sErrMsg().toStdString();

    f = facility();
    f.cShameiKana1 = QStringLiteral("ﾋｶﾘ'");  // SOUDAN breaks; nothing else changed first
    EXPECT_EQ(sisetsu_.iDataUpdate_ToSoudan(&f, true), -1);

    // ToCareMane: the care managers' update runs, the telephone copy breaks.
    run(QStringLiteral("ALTER TABLE RIYOUSHA_SUB RENAME COLUMN cCareTelNo TO cCareTel"));
    f = facility();
    EXPECT_EQ(sisetsu_.iDataUpdate_ToCareMane(&f, true), -1);
    EXPECT_EQ(column(QStringLiteral("SELECT ifnull(cTelNo, 'NULL') FROM CAREMANE ORDER BY iKyotenEb, nIDNo")),
              (QStringList{QStringLiteral("NULL"), QStringLiteral("NULL"), QStringLiteral("NULL")}));
    EXPECT_EQ(column(QStringLiteral("SELECT cKikan FROM DOCTOR ORDER BY cIDno")),
              (QStringList{QStringLiteral("旧"), QStringLiteral("別"), QStringLiteral("旧")}));
    EXPECT_EQ(column(QStringLiteral("SELECT cKikan FROM SOUDAN ORDER BY nIDNo")),
              (QStringList{QStringLiteral("旧"), QStringLiteral("別")}));
    EXPECT_EQ(stamped(), QStringList{});
}

TEST_F(CascadesTest, CascadeInTheCallersTransaction)
{
    cT_CAREMANE t;
    t.iInit(db_);
    cD_CAREMANE c;
    c.nIDNo = 7;
    c.cName = QStringLiteral("高橋　新");
    ASSERT_EQ(db_.iBeginTrans(), 0);
    ASSERT_EQ(t.iDataUpdate_ToRiyousha(&c, false), 0) << t.sErrMsg().toStdString();
    ASSERT_EQ(db_.iRollback(), 0);
    EXPECT_EQ(scalar(QStringLiteral("SELECT COUNT(*) FROM RIYOUSHA_SUB WHERE cCareName = '高橋　新'")), 0);
    EXPECT_EQ(stamped(), QStringList{});
}

}  // namespace
