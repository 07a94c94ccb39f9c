// Reads 100,000 patients with the seal screen's patient query, through our Recordset
// and through the sqlite3 command-line program on the same file, and prints the
// medians. Run by hand: bench_read_patients [patients] [runs]

#include "data/ado/connection.h"
#include "data/ado/recordset.h"
#include "data/schema.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

const char* kKana[] = {"ｱｵｷ", "ｲﾉｳｴ", "ｳﾁﾀﾞ", "ｴﾝﾄﾞｳ", "ｵｶﾀﾞ", "ｶﾄｳ", "ｷﾑﾗ", "ｸﾎﾞ", "ｻﾄｳ", "ｽｽﾞｷ"};
const char* kName[] = {"青木", "井上", "内田", "遠藤", "岡田", "加藤", "木村", "久保", "佐藤", "鈴木"};

bool fill(const QString& path, int patients)
{
    QString error;
    if (!data::createSchemaDatabase(path, &error)) {
        std::fprintf(stderr, "schema: %s\n", qPrintable(error));
        return false;
    }
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    sqlite3_exec(db, "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* patient = nullptr;
    sqlite3_prepare_v2(db,
                       "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, cYubinNo, cAdress1, "
                       "cAdress2, tBirthday, cTelNo, cFaxNo, cMobNo, tExpireDay, nRoomNo, cYubinNo2, cYubinNo3, "
                       "cHTIryoName) VALUES (1, 1, ?1, ?2, ?3, '160-0023', ?4, ?5, ?6, '03-1234-5678', NULL, "
                       "'090-1111-2222', ?7, ?8, NULL, NULL, ?9)",
                       -1, &patient, nullptr);
    sqlite3_stmt* sub = nullptr;
    sqlite3_prepare_v2(
        db,
        "INSERT INTO RIYOUSHA_SUB (iKyotenCd, iKyotenEb, nIDNo, cAdress3, cYubinNoS0Ryosyu, "
        "cJusyo1S0Ryosyu, cAtenaS0Ryosyu, iShoukanSiharai) VALUES (1, 1, ?1, ?2, '150-0001', ?3, ?4, ?5)",
        -1, &sub, nullptr);
    sqlite3_stmt* visit = nullptr;
    sqlite3_prepare_v2(
        db, "INSERT INTO JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart) VALUES (1, 1, ?1, ?2)", -1,
        &visit, nullptr);
    for (int i = 1; i <= patients; ++i) {
        const QByteArray name = QByteArray(kName[i % 10]) + "　" + QByteArray::number(i);
        const QByteArray kana = QByteArray(kKana[i % 10]) + " " + QByteArray::number(i);
        const QByteArray address =
            "東京都新宿区西新宿" + QByteArray::number(i % 9 + 1) + "-" + QByteArray::number(i % 30 + 1);
        const QByteArray building =
            (i % 3) ? QByteArray("グリーンハイツ") + QByteArray::number(i % 500) + "号室" : QByteArray();
        const QByteArray birthday =
            QByteArray::number(1930 + i % 60) + "/0" + QByteArray::number(i % 9 + 1) + "/1" + QByteArray::number(i % 9);
        sqlite3_bind_int(patient, 1, i);
        sqlite3_bind_text(patient, 2, name.constData(), int(name.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(patient, 3, kana.constData(), int(kana.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(patient, 4, address.constData(), int(address.size()), SQLITE_TRANSIENT);
        if (building.isEmpty())
            sqlite3_bind_null(patient, 5);
        else
            sqlite3_bind_text(patient, 5, building.constData(), int(building.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(patient, 6, birthday.constData(), int(birthday.size()), SQLITE_TRANSIENT);
        if (i % 7 == 0)
            sqlite3_bind_text(patient, 7, "2026/03/31", -1, SQLITE_STATIC);
        else
            sqlite3_bind_null(patient, 7);
        sqlite3_bind_int(patient, 8, i % 400);
        sqlite3_bind_text(patient, 9, (i % 11 == 0) ? "手渡し" : "", -1, SQLITE_STATIC);
        sqlite3_step(patient);
        sqlite3_reset(patient);

        sqlite3_bind_int(sub, 1, i);
        sqlite3_bind_text(sub, 2, building.constData(), int(building.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(sub, 3, address.constData(), int(address.size()), SQLITE_TRANSIENT);
        sqlite3_bind_text(sub, 4, name.constData(), int(name.size()), SQLITE_TRANSIENT);
        sqlite3_bind_int(sub, 5, i % 2);
        sqlite3_step(sub);
        sqlite3_reset(sub);

        for (int v = 0; v < i % 4; ++v) {
            const QByteArray day = "2026/11/" + QByteArray::number(10 + v) + " 10:00:00";
            sqlite3_bind_int(visit, 1, i);
            sqlite3_bind_text(visit, 2, day.constData(), int(day.size()), SQLITE_TRANSIENT);
            sqlite3_step(visit);
            sqlite3_reset(visit);
        }
    }
    sqlite3_finalize(patient);
    sqlite3_finalize(sub);
    sqlite3_finalize(visit);
    const int rc = sqlite3_exec(db, "COMMIT; ANALYZE", nullptr, nullptr, nullptr);
    sqlite3_close(db);
    return rc == SQLITE_OK;
}

// The seal screen's patient query for office 1-1 and the month 2026/11.
QString patientQuery()
{
    return QStringLiteral(
        "SELECT  RIYOUSHA.iKyotenCd, RIYOUSHA.iKyotenEb, RIYOUSHA.nIDNo, RIYOUSHA.cName, RIYOUSHA.cNameKana,"
        " RIYOUSHA.cYubinNo, RIYOUSHA.cAdress1, RIYOUSHA.cAdress2, RIYOUSHA.tBirthday,"
        " RIYOUSHA.cTelNo, RIYOUSHA.cFaxNo, RIYOUSHA.cMobNo, RIYOUSHA.tExpireDay, RIYOUSHA.nRoomNo,"
        " RIYOUSHA.cYubinNo2, RIYOUSHA.cYubinNo3,"
        " RIYOUSHA.cHTIryoName,"
        " r_sub.cAdress3, r_sub.cYubinNoS0Ryosyu, r_sub.cJusyo1S0Ryosyu, r_sub.cJusyo2S0Ryosyu,"
        " r_sub.cYubinNoS0Renraku, r_sub.cJusyo1S0Renraku, r_sub.cJusyo2S0Renraku,"
        " r_sub.cAtenaS0Ryosyu, r_sub.cAtenaS0Renraku, r_sub.iShoukanSiharai,"
        " jisseki_ct"
        " FROM RIYOUSHA"
        " LEFT JOIN ( SELECT iKyotenCd,iKyotenEb,nIDNo, cAdress3, cYubinNoS0Ryosyu, cJusyo1S0Ryosyu,"
        " cJusyo2S0Ryosyu, cYubinNoS0Renraku, cJusyo1S0Renraku, cJusyo2S0Renraku, cAtenaS0Ryosyu,"
        " cAtenaS0Renraku, iShoukanSiharai FROM RIYOUSHA_SUB"
        "            WHERE  iKyotenCd = 1"
        "            AND    iKyotenEb = 1"
        "            ) r_sub ON RIYOUSHA.nIDNo = r_sub.nIDNo"
        " LEFT JOIN ( SELECT nRiyoushaIDNo ,count(nRiyoushaIDNo) as jisseki_ct FROM JISSEKI "
        "            WHERE  iKyotenCd = 1"
        "            AND    iKyotenEb = 1"
        "            AND    tServicyDayStart>'2026/10/31' AND tServicyDayStart<'2026/12/01' "
        "            GROUP BY nRiyoushaIDNo"
        "            ) r_jisseki ON RIYOUSHA.nIDNo = r_jisseki.nRiyoushaIDNo "
        " WHERE RIYOUSHA.iKyotenCd = 1"
        " AND RIYOUSHA.iKyotenEb = 1"
        " ORDER BY RIYOUSHA.cNameKana");
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

}  // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int patients = argc > 1 ? std::atoi(argv[1]) : 100000;
    const int runs = argc > 2 ? std::atoi(argv[2]) : 5;
    const QString cli = QStandardPaths::findExecutable(QStringLiteral("sqlite3"));
    if (cli.isEmpty()) {
        std::fprintf(stderr, "the sqlite3 command-line program is not installed\n");
        return 1;
    }
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("patients.db"));
    std::printf("filling %d patients ...\n", patients);
    std::fflush(stdout);
    if (!fill(path, patients)) return 1;
    const QString sql = patientQuery();

    std::vector<double> ours;
    std::vector<double> fetches;
    std::vector<double> theirs;
    qint64 rowsSeen = 0;
    for (int run = 0; run < runs; ++run) {
        QElapsedTimer timer;
        timer.start();
        data::ado::Connection connection;
        connection.Open(QStringLiteral("Provider=SQLite;Data Source=") + path);
        data::ado::Recordset rs;
        rs.setCursorLocation(data::ado::adUseClient);
        rs.Open(sql, connection, data::ado::adOpenForwardOnly, data::ado::adLockReadOnly, data::ado::adCmdText);
        fetches.push_back(double(timer.nsecsElapsed()) / 1e6);
        // Reads every field of every row by name, as the extraction copies them.
        std::vector<QString> names;
        for (int i = 0; i < rs.FieldCount(); ++i) names.push_back(rs.Fields(i).Name());
        qint64 cells = 0;
        rowsSeen = 0;
        while (!rs.Eof()) {
            for (const QString& name : names) cells += rs.Fields(name).Value().isNull() ? 0 : 1;
            rs.MoveNext();
            ++rowsSeen;
        }
        ours.push_back(double(timer.nsecsElapsed()) / 1e6);
        if (cells == 0) std::printf("(no values)\n");

        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        timer.restart();
        process.start(cli, {QStringLiteral("-readonly"), path, sql});
        process.waitForFinished(-1);
        theirs.push_back(double(timer.nsecsElapsed()) / 1e6);
        if (process.exitCode() != 0)
            std::fprintf(stderr, "sqlite3 failed: %s\n", process.readAllStandardError().constData());
    }
    const double a = median(ours);
    const double b = median(theirs);
    std::printf("rows read: %lld, runs: %d\n", static_cast<long long>(rowsSeen), runs);
    std::printf("Recordset (open, fetch all, read every field by name): median %.1f ms\n", a);
    std::printf("  of which the open and fetch:                          median %.1f ms\n", median(fetches));
    std::printf("sqlite3 command-line program (query to /dev/null):      median %.1f ms\n", b);
    std::printf("ratio: %.2f (limit 1.50)\n", a / b);
    return 0;
}
