// From the seal screen through a side screen and back to printed labels, as scenario
// transcripts: the doctors of expiring consents and the addressees of progress reports
// become ticks and order lines, and the print step takes them like the operator's own.

#include "seal/seal_screen.h"

#include "base/text_codec.h"
#include "support/consent_fixture.h"
#include "support/scenario.h"

#include <QDir>
#include <QFile>

#include <initializer_list>

#include <gtest/gtest.h>

using sealtest::ConsentDb;

namespace {

using sealtest::fileBytes;

class SideScreenScenario : public ::testing::Test {
protected:
    SideScreenScenario()
    {
        install.touch(QStringLiteral("MGNT.CID"));
        install.touch(QStringLiteral("DATA/印刷設定.ini"));
        install.addStaff(11, QStringLiteral("佐藤 一郎"));
        install.addStaff(12, QStringLiteral("鈴木 花子"));
        install.exec(QStringLiteral(
            "INSERT INTO DOCTOR (cIDno, cName, cNameKana, cKikan, cYubinNo, cAddress1) VALUES "
            "('501', '山田 太郎', 'ﾔﾏﾀﾞ ﾀﾛｳ', '山田医院', '100-0001', '千代田区1-1'),"
            "('502', '田中 次郎', 'ﾀﾅｶ ｼﾞﾛｳ', '田中病院', '150-0002', '渋谷区2-2'),"
            "('503', '伊藤 三郎', 'ｲﾄｳ ｻﾌﾞﾛｳ', '伊藤内科', '160-0003', '新宿区3-3');"
            "INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, cShamei1, iType) VALUES (1, 2, 1, 'ひかり鍼灸院', 0);"));
        sealtest::addNovemberConsents(install, QStringLiteral("502"));
    }

    QStringList run(std::initializer_list<const char*> body) const
    {
        QStringList lines;
        for (const char* line : body) lines << QString::fromUtf8(line);
        return sealtest::runAfterStart(install, lines);
    }

    QString tmpFile(const QString& name) const { return install.path(QStringLiteral("TMP/") + name); }

    ConsentDb install;
};

const QString kCsvTitle = QStringLiteral(
    "cIDno,cName,cNameKana,cKikan,cDaihyo,cYubinNo,cAddress1,cTelNo,cFaxNo,cMobNo,cMst,cKeisho,nRoomNo,nTantouID,"
    "拠点名, 送付先郵便番号,送付先住所,拠点電話番号,拠点FAX番号,脚注");

// The label line of doctor 501 or 502 with a staff number.
QString doctorLine(int id, const char* staff)
{
    const QString doctor =
        id == 501
            ? QStringLiteral("501,\"山田 太郎 様\",\"ﾔﾏﾀﾞ ﾀﾛｳ\",\"山田医院\",\"\",\"〒 100-0001\",\"千代田区1-1\"")
            : QStringLiteral("502,\"田中 次郎 様\",\"ﾀﾅｶ ｼﾞﾛｳ\",\"田中病院\",\"\",\"〒 150-0002\",\"渋谷区2-2\"");
    return doctor + QStringLiteral(",\"\",\"\",\"\",\"1\",\"様\",\"\",\"%1\",\"ひかり鍼灸院\",\"\",\"\",\"\",\"\",\"\"")
                        .arg(QString::fromLatin1(staff));
}

using sealtest::crlf;

// The lines from the first one that starts with from, up to the end.
QStringList from(const QStringList& t, const QString& first)
{
    const qsizetype i = t.indexOf(first);
    return i < 0 ? QStringList{QStringLiteral("<no line ") + first + u'>'} : t.mid(i);
}

TEST_F(SideScreenScenario, ConsentDoctorsPerPatientArePrintedOncePerPatient)
{
    const QStringList t = run({"click optMst(1)", "click btnDouishoList", "check chkIsiMatome off", "click btnPrint(2)",
                               "show lstCheck", "click mnMenuPrint"});
    EXPECT_EQ(
        from(t, QStringLiteral("screen open frmDoui")),
        (QStringList{QStringLiteral("screen open frmDoui"), QStringLiteral("screen close frmDoui"),
                     QStringLiteral("state lstCheck index=-1 count=3 items=[501     山田 太郎 |501     山田 太郎 |"
                                    "502     田中 次郎 ] enabled=1 visible=1"),
                     QStringLiteral("box 33 シール印刷|印刷してもよろしいですか？"),
                     QStringLiteral("run 2 wfrfv10.exe /c APP\\TMP\\WfdCom.dat"),
                     QStringLiteral("screen close frmPrintシール"), QStringLiteral("run 1 APP\\Main.exe 2"),
                     QStringLiteral("end 0")}));
    EXPECT_EQ(fileBytes(tmpFile(QStringLiteral("シール.csv"))),
              crlf({kCsvTitle, doctorLine(501, "0"), doctorLine(501, "0"), doctorLine(502, "0")}));
}

TEST_F(SideScreenScenario, OneLabelPerDoctorAndStaffMemberCarriesTheStaffNumber)
{
    install.addConsentPatient(104, QStringLiteral("遠藤 四"), 12);
    install.addConsent(104, QStringLiteral("2026/09/12"), QStringLiteral("501"));
    run({"click optMst(1)", "click mnDouiSet", "check chkEachSejyutusya on", "click mnF03", "click mnMenuPrint"});
    // Staff 11: 501; staff 12: 502 and 501 again.
    EXPECT_EQ(fileBytes(tmpFile(QStringLiteral("シール.csv"))),
              crlf({kCsvTitle, doctorLine(501, "11"), doctorLine(502, "12"), doctorLine(501, "12")}));
}

TEST_F(SideScreenScenario, AHandOverWithRowsReplacesEarlierTicks)
{
    const QStringList t =
        run({"click optMst(1)", "tick fpSpread02 3 on", "click btnDouishoList", "click btnPrint(2)", "show lstCheck"});
    EXPECT_TRUE(t.contains(QStringLiteral(
        "state lstCheck index=-1 count=2 items=[501     山田 太郎 |502     田中 次郎 ] enabled=1 visible=1")))
        << t.join(u'\n').toStdString();
}

TEST_F(SideScreenScenario, ClosingTheSideScreenWithoutAHandOverKeepsTheTicks)
{
    const QStringList t = run({"click optMst(1)", "check chkEnter off", "tick fpSpread02 3 on", "click btnDouishoList",
                               "click btnPrint(6)", "show chkEnter", "show fpSpread02"});
    const QStringList after = from(t, QStringLiteral("screen close frmDoui"));
    ASSERT_GE(after.size(), 6) << after.join(u'\n').toStdString();
    // The enter-add mode is switched on all the same.
    EXPECT_TRUE(after[1].startsWith(QStringLiteral("state chkEnter value=1"))) << after[1].toStdString();
    EXPECT_TRUE(after[5].startsWith(QStringLiteral("state fpSpread02 row 3 1|503|"))) << after[5].toStdString();
}

TEST_F(SideScreenScenario, ProgressReportsSkipADoctorHiddenByTheSearchWhereConsentsDoNot)
{
    install.exec(QStringLiteral(
        "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, iIsiCd) VALUES (1, 2, 101, 501), (1, 2, 103, 502);"
        "UPDATE RIYOUSHA SET tDouiDay1 = '2026/05/01' WHERE nIDNo IN (101, 103);"
        "INSERT INTO 経過報告 (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyMonth, nStaffIDNo) VALUES "
        "(1, 2, 101, '2026/11', 11), (1, 2, 103, '2026/11', 12);"));
    const QStringList progress = run({"click optMst(1)", "type txtName 山田", "click btnDisp", "click btnSejutsuKeika",
                                      "click btnPrint(2)", "show fpSpread02"});
    const QStringList p = from(progress, QStringLiteral("screen open frmSeal_SejutsuKeika"));
    ASSERT_GE(p.size(), 6);
    EXPECT_TRUE(p[3].startsWith(QStringLiteral("state fpSpread02 row 1 1|501|"))) << p[3].toStdString();
    EXPECT_TRUE(p[4].startsWith(QStringLiteral("state fpSpread02 row 2 hidden 0|502|"))) << p[4].toStdString();

    const QStringList consent = run({"click optMst(1)", "type txtName 山田", "click btnDisp", "click btnDouishoList",
                                     "click btnPrint(2)", "show fpSpread02"});
    const QStringList c = from(consent, QStringLiteral("screen open frmDoui"));
    ASSERT_GE(c.size(), 6);
    EXPECT_TRUE(c[4].startsWith(QStringLiteral("state fpSpread02 row 2 hidden 1|502|"))) << c[4].toStdString();
}

using sealtest::drive;

TEST_F(SideScreenScenario, AConnectionTextLostBetweenTheScreensStopsThePressWithItsBox)
{
    short closeState = 0;
    int listed = -1;
    const QStringList t = drive(install, [&](seal::frmPrintシール& s) {
        s.optMst[1].setValue(true);
        install.writeLines(QStringLiteral("adodb.ini"), {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=")});
        s.btnDouishoList.click();
        closeState = s.job.nCloseState;
        listed = s.lstCheck.ListCount();
    });
    EXPECT_EQ(t.first(), QStringLiteral("box 16 シール印刷|データベースの抽出に失敗しました。"));
    EXPECT_FALSE(t.contains(QStringLiteral("screen open frmDoui")));
    EXPECT_EQ(closeState, -1);
    EXPECT_EQ(listed, 0);
}

TEST_F(SideScreenScenario, ADatabaseGoneBetweenTheScreensIsReportedAndTicksNothing)
{
    int ticked = -1;
    const QStringList t = drive(install, [&](seal::frmPrintシール& s) {
        s.optMst[1].setValue(true);
        QFile::remove(install.path(QStringLiteral("seal.db")));
        s.btnDouishoList.click();
        ticked = 0;
        for (int row = 1; row <= s.fpSpread02.MaxRows(); ++row) ticked += s.fpSpread02.value(1, row);
    });
    ASSERT_FALSE(t.isEmpty());
    EXPECT_TRUE(t.first().startsWith(QStringLiteral("box 16 "))) << t.join(u'\n').toStdString();
    EXPECT_EQ(ticked, 0);
}

}  // namespace
