// The office's identity record: fixed-length fields and the boxes of each failure.

#include "data/corp_info.h"

#include "support/entity_db.h"

#include <QFile>

#include <functional>
#include <vector>

namespace {

using data::CorpInfo;
using data::loadInitCorp;

class CorpInfoTest : public sealtest::InstallationTest {};

TEST_F(CorpInfoTest, FirstRowOfThisOfficeFillsTheFieldsPaddedAndCut)
{
    const QString longName = QString(60, u'長');
    run(QStringLiteral(
            "INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, cShamei1, cShamei2, cJigyousyoNo, cYubinNo, "
            "cAddress1, cAddress2, cTelNo, cFaxNo, nLat, nLon, cMailDestination, cMailDestinationZipNo, "
            "cDaihyo, cJigyousyoNo2) VALUES "
            "(1, 2, 2, '二番目', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL),"
            "(1, 2, 1, 'さくら鍼灸院', '新宿院', '1312345678', '160-00221', '東京都新宿区新宿3-1-1', NULL, "
            "'03-1111-2222', '03-1111-2223-999', 35.6895, 139.6917, '新宿区新宿3-1-1 さくらビル', "
            "'160-0022', '") +
        longName +
        QStringLiteral(
            "', '1312345679'),"
            "(1, 3, 0, '他拠点', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL)"));
    CorpInfo info;
    bool bOk = false;
    loadInitCorp(info, bOk);
    EXPECT_TRUE(bOk);
    EXPECT_TRUE(platform_.transcript().isEmpty()) << platform_.transcript().join(u'\n').toStdString();
    EXPECT_EQ(info.cName, QStringLiteral("さくら鍼灸院新宿院") + QString(41, u' '));
    EXPECT_EQ(info.cJigyousyoNo, QStringLiteral("1312345678"));
    EXPECT_EQ(info.cYubinNo, QStringLiteral("160-0022"));  // cut at 8
    EXPECT_EQ(info.cAddress1, QStringLiteral("東京都新宿区新宿3-1-1") + QString(37, u' '));
    EXPECT_EQ(info.cAddress2, QString(50, u' '));
    EXPECT_EQ(info.cTelNo, QStringLiteral("03-1111-2222  "));
    EXPECT_EQ(info.cFaxNo, QStringLiteral("03-1111-2223-9"));
    EXPECT_EQ(info.cYobi1, QString(30, u' '));
    EXPECT_DOUBLE_EQ(info.nLat, 35.6895);
    EXPECT_DOUBLE_EQ(info.nLon, 139.6917);
    EXPECT_EQ(info.cYobi2, QString());
    EXPECT_EQ(info.cMailDestination, QStringLiteral("新宿区新宿3-1-1 さくらビル"));
    EXPECT_EQ(info.cMailDestinationZipNo, QStringLiteral("160-0022"));
    EXPECT_EQ(info.cDaihyo, QString(50, u'長'));
    EXPECT_EQ(info.cJigyousyoNo2, QStringLiteral("1312345679"));
}

TEST_F(CorpInfoTest, NameIsCutAtFiftyCharacters)
{
    run(QStringLiteral("INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, cShamei1, cShamei2) VALUES (1, 2, 1, '") +
        QString(40, u'あ') + QStringLiteral("', '") + QString(20, u'い') + QStringLiteral("')"));
    CorpInfo info;
    bool bOk = false;
    loadInitCorp(info, bOk);
    ASSERT_TRUE(bOk);
    EXPECT_EQ(info.cName, QString(40, u'あ') + QString(10, u'い'));
}

TEST_F(CorpInfoTest, NoRowLeavesTheRecordAsItWasWithoutABox)
{
    run(QStringLiteral("INSERT INTO CORP (iKyotenCd, iKyotenEb, nIDNo, cShamei1) VALUES (1, 3, 1, '他拠点')"));
    CorpInfo info;
    info.cName = QStringLiteral("前の値");
    bool bOk = true;
    loadInitCorp(info, bOk);
    EXPECT_FALSE(bOk);
    EXPECT_EQ(info.cName, QStringLiteral("前の値"));
    EXPECT_TRUE(platform_.transcript().isEmpty());
}

TEST_F(CorpInfoTest, EachFailureShowsItsOwnBox)
{
    struct Case {
        const char* name;
        std::function<void()> arrange;
        QString expected;  // the transcript line, or its start when it ends in "("
    };
    const QString tail = QStringLiteral("\\r\\nloadInitCorp でエラー");
    const std::vector<Case> cases = {
        {"EmptyConnectionText", [&] { setConnectString(QStringLiteral("   ")); },
         QStringLiteral("box 16 シール印刷|接続文字列取得できません。") + tail},
        {"NoSettingsFile", [&] { QFile::remove(iniPath()); },
         QStringLiteral("box 16 シール印刷|指定されたIni（") + app::gsAppPath +
             QStringLiteral("\\adodb.ini）ファイルが見つかりません。") + tail},
        {"DatabaseMissing",
         [&] {
             setConnectString(QStringLiteral("Provider=SQLite;Data Source=") +
                              dir_.filePath(QStringLiteral("no/x.db")));
         },
         QStringLiteral("box 16 シール印刷|(")},
        {"TableLacksAColumn",
         [&] {
             setConnectString(QStringLiteral("Provider=SQLite;Data Source=") + dbPath_);
             run(QStringLiteral(
                 "DROP TABLE CORP; CREATE TABLE CORP (iKyotenCd INTEGER, iKyotenEb INTEGER, nIDNo INTEGER)"));
         },
         QStringLiteral("box 16 シール印刷|(")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        platform_.clearTranscript();
        c.arrange();
        CorpInfo info;
        bool bOk = true;
        loadInitCorp(info, bOk);
        EXPECT_FALSE(bOk);
        ASSERT_EQ(platform_.transcript().size(), 1);
        const QString& line = platform_.transcript()[0];
        if (c.expected.endsWith(u'('))
            EXPECT_TRUE(line.startsWith(c.expected)) << line.toStdString();
        else
            EXPECT_EQ(line, c.expected);
        const bool tableRead = QString::fromLatin1(c.name) == u"TableLacksAColumn";
        EXPECT_TRUE(line.endsWith(tableRead ? QStringLiteral("\\r\\nエラーが発生しました。") : tail))
            << line.toStdString();
    }
}

}  // namespace
