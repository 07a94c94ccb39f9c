#include "demo_installation.h"

#include "base/text_codec.h"
#include "demo_database.h"
#include "sqlite_insert.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>
#include <QSaveFile>

namespace demo {

namespace {

const QString kWallpaper = QStringLiteral("wallpaper.png");

// One settings file: CP932, every line ending in CR LF.
void writeTextFile(const QString& path, const QStringList& lines)
{
    const QString text = lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n");
    bool lossy = false;
    const QByteArray bytes = base::toCp932(text, &lossy);
    if (lossy) throw DemoError(QStringLiteral("CP932 にない文字があります: ") + path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit())
        throw DemoError(QStringLiteral("書き込めません: ") + path + QStringLiteral(" (") + file.errorString() +
                        QLatin1Char(')'));
}

void makeFolder(const QDir& base, const QString& name)
{
    if (!base.mkpath(name)) throw DemoError(QStringLiteral("フォルダを作れません: ") + base.filePath(name));
}

// A quiet picture for the background window: a morning sky over soft hills.
void writeWallpaper(const QString& path)
{
    QImage image(1280, 800, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient sky(0, 0, 0, 800);
    sky.setColorAt(0.0, QColor(0xcf, 0xe6, 0xf5));
    sky.setColorAt(1.0, QColor(0xfb, 0xf6, 0xe9));
    painter.fillRect(image.rect(), sky);
    QRadialGradient sun(1000, 180, 140);
    sun.setColorAt(0.0, QColor(0xff, 0xf3, 0xc4));
    sun.setColorAt(1.0, QColor(0xff, 0xf3, 0xc4, 0));
    painter.fillRect(image.rect(), sun);
    painter.setPen(Qt::NoPen);
    const QColor hills[] = {QColor(0xa8, 0xd0, 0x9a), QColor(0x86, 0xbb, 0x7c), QColor(0x6a, 0xa5, 0x66)};
    for (int i = 0; i < 3; ++i) {
        painter.setBrush(hills[i]);
        painter.drawEllipse(QPointF(250 + i * 420, 880 + i * 20), 620 - i * 60, 330 - i * 40);
    }
    painter.end();
    if (!image.save(path, "PNG")) throw DemoError(QStringLiteral("壁紙を書き込めません: ") + path);
}

}  // namespace

QString usageText()
{
    return QStringLiteral("使い方: sealdemo --out DIR [--patients N] [--seed S] [--today yyyy/mm/dd]\n"
                          "  --out DIR       デモ環境を作るフォルダ（設定ファイルとデータベースを置き換えます）\n"
                          "  --patients N    患者数（2 拠点の合計、%1 以上、既定 3000）\n"
                          "  --seed S        乱数の種（既定 1）。同じ種と日付からは同じデータができます\n"
                          "  --today DATE    データの基準日（既定は今日）\n")
        .arg(kMinPatients);
}

std::optional<DemoOptions> parseArguments(const QStringList& arguments, QString* error)
{
    DemoOptions options;
    auto fail = [&](const QString& reason) {
        if (error) *error = reason;
        return std::nullopt;
    };
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& arg = arguments.at(i);
        if (i + 1 >= arguments.size()) return fail(arg + QStringLiteral(" の値がありません。"));
        const QString value = arguments.at(++i);
        bool ok = false;
        if (arg == QStringLiteral("--out")) {
            options.outDir = value;
        } else if (arg == QStringLiteral("--patients")) {
            options.patients = value.toInt(&ok);
            if (!ok || options.patients < kMinPatients)
                return fail(QStringLiteral("--patients は %1 以上の整数です: ").arg(kMinPatients) + value);
        } else if (arg == QStringLiteral("--seed")) {
            options.seed = value.toUInt(&ok);
            if (!ok) return fail(QStringLiteral("--seed は 0 以上の整数です: ") + value);
        } else if (arg == QStringLiteral("--today")) {
            options.today = QDate::fromString(value, QStringLiteral("yyyy/MM/dd"));
            if (!options.today.isValid()) return fail(QStringLiteral("--today は yyyy/mm/dd の日付です: ") + value);
        } else {
            return fail(QStringLiteral("不明な引数です: ") + arg);
        }
    }
    if (options.outDir.isEmpty()) return fail(QStringLiteral("--out を指定してください。"));
    return options;
}

void writeSettingsFiles(const QString& dir)
{
    const QDir root(dir);
    if (!QDir().mkpath(dir)) throw DemoError(QStringLiteral("フォルダを作れません: ") + dir);
    for (const char* folder : {"SYS", "TMP", "ICON", "DATA"}) makeFolder(root, QString::fromLatin1(folder));

    writeTextFile(
        root.filePath(QStringLiteral("Tavrine.ini")),
        {QStringLiteral("SYSTEM_SYS=\\SYS"), QStringLiteral("SYSTEM_TMP=\\TMP"), QStringLiteral("SYSTEM_ICON=\\ICON"),
         QStringLiteral("SYSTEM_DATA=\\DATA"), QStringLiteral("WALLPAPER=") + kWallpaper,
         QStringLiteral("BASEID=") + QString::asprintf("%02d%02d", kFirstOffice.iKyotenCd, kFirstOffice.iKyotenEb),
         QStringLiteral("和タイプ=1"), QStringLiteral("紹介者=1"), QStringLiteral("同意更新医師TEL出力=1"),
         QStringLiteral("同意記録1出力=1")});
    // The data source is relative: the program resolves it against its own directory.
    writeTextFile(root.filePath(QStringLiteral("adodb.ini")),
                  {QStringLiteral("[接続情報]"),
                   QStringLiteral("接続情報=Provider=SQLite;Data Source=DATA\\") + QString::fromLatin1(kDatabaseFile)});
    writeTextFile(root.filePath(QStringLiteral("DATA/帳票Format.ini")),
                  {QStringLiteral("[同意書更新]"), QStringLiteral("同意書更新=同意台帳_TKZK.wfd")});
    writeWallpaper(root.filePath(QStringLiteral("ICON/") + kWallpaper));
    // The suite's version file and the help site's account, with invented contents.
    writeTextFile(root.filePath(QStringLiteral("Velmio.Ver")),
                  {QStringLiteral("[Velmio]"), QStringLiteral("VERSION=5.2.0"), QStringLiteral("UUPDATE=2026.10.01"),
                   QStringLiteral("[OnlineHelp]"), QStringLiteral("ADDRESS=https://help.velmio.example.jp/manual/")});
    writeTextFile(root.filePath(QStringLiteral("EmapUser.ini")),
                  {QStringLiteral("ZENRIN_USER=demo-office"), QStringLiteral("ZENRIN_PWD=demo-pass")});
    // An office that has printed once: its choices and footnotes are saved. They are
    // the operator's from then on, so a later run keeps them.
    const QString printSettings = root.filePath(QStringLiteral("DATA/印刷設定.ini"));
    if (!QFile::exists(printSettings))
        writeTextFile(printSettings,
                      {QStringLiteral("[タックシール]"), QStringLiteral("印刷対象CK=0"), QStringLiteral("チェック順=0"),
                       QStringLiteral("Enter=1"), QStringLiteral("種類：保険者データ=0"),
                       QStringLiteral("タックシール宛先=医事課御中"), QStringLiteral("[タックシール脚注]"),
                       QStringLiteral("脚注数=5"), QStringLiteral("脚注1=療養費支給申請書在中"),
                       QStringLiteral("脚注2=同意書在中"), QStringLiteral("脚注3=領収書在中"),
                       QStringLiteral("脚注4=請求書在中"), QStringLiteral("脚注5=経過報告書在中")});
    // The marker that shows the progress report button: the demo opens every screen.
    QFile marker(root.filePath(QStringLiteral("MGNT.CID")));
    if (!marker.open(QIODevice::WriteOnly | QIODevice::Truncate))
        throw DemoError(QStringLiteral("書き込めません: ") + marker.fileName() + QStringLiteral(" (") +
                        marker.errorString() + QLatin1Char(')'));
}

void writeInstallation(const DemoOptions& options)
{
    writeSettingsFiles(options.outDir);
    const QDir data(QDir(options.outDir).filePath(QStringLiteral("DATA")));
    const QString finalPath = data.filePath(QString::fromLatin1(kDatabaseFile));
    const QString buildPath = finalPath + QStringLiteral(".building");
    QFile::remove(buildPath);  // left by an interrupted run of ours
    DatabaseRequest request;
    request.path = buildPath;
    request.patients = options.patients;
    request.seed = options.seed;
    request.today = options.today.isValid() ? options.today : QDate::currentDate();
    try {
        buildDatabase(request);
    } catch (const DatabaseError& e) {
        throw DemoError(QStringLiteral("データベースを作れません: ") + QString::fromStdString(e.what()));
    } catch (const std::invalid_argument& e) {
        throw DemoError(QStringLiteral("データベースを作れません: ") + QString::fromStdString(e.what()));
    }
    if (QFile::exists(finalPath) && !QFile::remove(finalPath)) {
        QFile::remove(buildPath);
        throw DemoError(QStringLiteral("古いデータベースを置き換えられません: ") + finalPath);
    }
    if (!QFile::rename(buildPath, finalPath)) throw DemoError(QStringLiteral("データベースを置けません: ") + finalPath);
}

}  // namespace demo
