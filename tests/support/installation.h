#pragma once
// A small installation in a temporary folder, as the program finds one: Tavrine.ini,
// adodb.ini pointing at a SQLite database of the suite's schema, and the data folder
// that holds 印刷設定.ini. Tests add patients and markers to it.

#include "support/files.h"
#include "support/globals_scope.h"
#include "support/printers.h"
#include "support/sqlite_reader.h"

#include "controls/recording_platform.h"
#include "data/schema.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sqlite3.h>

#include <stdexcept>
#include <string>

namespace sealtest {

class SealInstall {
public:
    // BASEID "0102": office 1, branch 2.
    explicit SealInstall(QStringList extraSettings = {})
    {
        if (!dir_.isValid()) throw std::runtime_error("no temporary folder");
        for (const char* sub : {"DATA", "SYS", "TMP", "ICON"}) QDir(dir_.path()).mkpath(QString::fromLatin1(sub));
        QStringList settings{QStringLiteral("BASEID=0102"),        QStringLiteral("SYSTEM_SYS=\\SYS"),
                             QStringLiteral("SYSTEM_TMP=\\TMP"),   QStringLiteral("SYSTEM_ICON=\\ICON"),
                             QStringLiteral("SYSTEM_DATA=\\DATA"), QStringLiteral("WALLPAPER=wall.bmp")};
        settings += extraSettings;
        writeLines(QStringLiteral("Tavrine.ini"), settings);
        writeLines(QStringLiteral("adodb.ini"),
                   {QStringLiteral("[接続情報]"), QStringLiteral("接続情報=Provider=SQLite;Data Source=seal.db")});
        QString error;
        if (!data::createSchemaDatabase(path(QStringLiteral("seal.db")), &error))
            throw std::runtime_error(error.toStdString());
    }

    QString appDir() const { return dir_.path(); }
    QString path(const QString& name) const { return dir_.path() + u'/' + name; }
    QString settingsIni() const { return path(QStringLiteral("DATA/印刷設定.ini")); }

    void writeLines(const QString& name, const QStringList& lines) const { writeCrlf(path(name), lines); }
    void touch(const QString& name) const { putBytes(path(name), QByteArray()); }
    void exec(const QString& sql) const { execSql(path(QStringLiteral("seal.db")), sql); }

    // One patient of this office; text columns given as SQL literals or NULL.
    void addPatient(int id, const QString& name, const QString& kana, const QString& birthday = QStringLiteral("NULL"),
                    const QString& expire = QStringLiteral("NULL"), int office = 1, int branch = 2) const
    {
        exec(QStringLiteral(
                 "INSERT INTO RIYOUSHA (iKyotenCd, iKyotenEb, nIDNo, cName, cNameKana, tBirthday, tExpireDay) "
                 "VALUES (%1, %2, %3, '%4', '%5', %6, %7);")
                 .arg(office)
                 .arg(branch)
                 .arg(id)
                 .arg(name, kana, birthday, expire));
    }

    void addService(int id, const QString& when, int office = 1, int branch = 2) const
    {
        exec(QStringLiteral("INSERT INTO JISSEKI (iKyotenCd, iKyotenEb, nRiyoushaIDNo, tServicyDayStart) "
                            "VALUES (%1, %2, %3, '%4');")
                 .arg(office)
                 .arg(branch)
                 .arg(id)
                 .arg(when));
    }

private:
    QTemporaryDir dir_;
};

// The process-wide values as the start sets them, on a recording platform whose today
// is 2026/11/21; all of them are put back when the scope ends.
class ProcessValues {
public:
    explicit ProcessValues(const SealInstall& install) : ProcessValues(install.appDir()) {}
    explicit ProcessValues(const QString& appDir)
    {
        platform.setToday(QDate(2026, 11, 21));
        app::setPlatform(&platform);
        app::gsAppPath = appDir;
        app::iKyotenCd = 1;
        app::iKyotenEb = 2;
    }

    controls::RecordingPlatform platform;

private:
    GlobalsScope scope_;
};

}  // namespace sealtest
