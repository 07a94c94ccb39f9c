#pragma once
// Shared helpers of the engine tests: a GUI application for fonts and painting, files
// written the way the program writes them (CP932, CR LF), and ink measurement on
// rendered pages.

#include "base/text_codec.h"

#include <QApplication>
#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QRect>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace enginetest {

inline void ensureGuiApp()
{
    if (QCoreApplication::instance()) return;
    static int argc = 1;
    static char name[] = "test_engine";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(argc, argv);  // lives as long as the test process; widgets need it
}

inline QString formsDir() { return QStringLiteral(SEAL_SOURCE_DIR "/forms"); }
inline QString formPath(const QString& name) { return formsDir() + u'/' + name; }

// The label CSV's title line, as the program writes it.
inline const QString kLabelTitle = QStringLiteral(
    "cIDno,cName,cNameKana,cKikan,cDaihyo,cYubinNo,cAddress1,cTelNo,cFaxNo,cMobNo,cMst,cKeisho,nRoomNo,nTantouID"
    ",拠点名, 送付先郵便番号,送付先住所,拠点電話番号,拠点FAX番号,脚注");
inline const QString kBlankLine = QStringLiteral("0,,,,,,,,,,,,,,,,,,,");

struct Label {
    QString id = QStringLiteral("1");
    QString name = QStringLiteral("山田 太郎 様");
    QString kikan;
    QString daihyo;
    QString yubin = QStringLiteral("〒 123-4567");
    QString address = QStringLiteral("東京都新宿区西新宿2-8-1");
    QString keisho = QStringLiteral("様");
    QString room;
    QString footnote;
};

// One data line: a bare first field, the others quoted and not escaped.
inline QString labelLine(const Label& l)
{
    const QStringList quoted = {l.name,
                                QStringLiteral("ヤマダ タロウ"),
                                l.kikan,
                                l.daihyo,
                                l.yubin,
                                l.address,
                                QStringLiteral("03-1111-2222"),
                                QString(),
                                QString(),
                                QStringLiteral("0"),
                                l.keisho,
                                l.room,
                                QString(),
                                QStringLiteral("本店"),
                                QStringLiteral("100-0001"),
                                QStringLiteral("東京都千代田区丸の内1-1"),
                                QStringLiteral("03-0000-0000"),
                                QStringLiteral("03-0000-0001"),
                                l.footnote};
    QString line = l.id;
    for (const QString& q : quoted) line += QStringLiteral(",\"") + q + u'"';
    return line;
}

inline void writeCp932(const QString& path, const QStringList& lines)
{
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    for (const QString& l : lines) f.write(base::toCp932(l) + "\r\n");
}

// A script for one form and one data file, with the given extra lines before the mode.
inline QStringList scriptLines(const QString& form, const QString& data, const QStringList& extra = {},
                               const QString& mode = QStringLiteral("ShowWindow,2"))
{
    QStringList lines = {QStringLiteral("FileName,\"%1\"").arg(form), QStringLiteral("Title,\"シール\""),
                         QStringLiteral("SetDataText,\"シール\",\"%1\"").arg(data)};
    lines += extra;
    lines.append(QStringLiteral("PrintPaper, A4"));
    lines.append(mode);
    return lines;
}

// The bounding box of everything not white in rect (pixels); empty if no ink.
inline QRect inkBounds(const QImage& img, const QRect& rect)
{
    const QRect r = rect.intersected(img.rect());
    int minX = INT_MAX, minY = INT_MAX, maxX = -1, maxY = -1;
    for (int y = r.top(); y <= r.bottom(); ++y) {
        const QRgb* line = reinterpret_cast<const QRgb*>(img.constScanLine(y));
        for (int x = r.left(); x <= r.right(); ++x) {
            const QRgb p = line[x];
            if (qRed(p) < 200 || qGreen(p) < 200 || qBlue(p) < 200) {
                minX = std::min(minX, x);
                maxX = std::max(maxX, x);
                minY = std::min(minY, y);
                maxY = std::max(maxY, y);
            }
        }
    }
    if (maxX < 0) return {};
    return QRect(QPoint(minX, minY), QPoint(maxX, maxY));
}

inline QRect mmToPx(const QRectF& mm, double dpi)
{
    const double k = dpi / 25.4;
    return QRect(int(mm.left() * k), int(mm.top() * k), int(mm.width() * k), int(mm.height() * k));
}

inline QRectF pxToMm(const QRect& px, double dpi)
{
    const double k = 25.4 / dpi;
    return QRectF(px.left() * k, px.top() * k, (px.width()) * k, (px.height()) * k);
}

}  // namespace enginetest
