#pragma once
// Engine jobs as the program hands them over: the label CSV it writes, WfdCom.dat over
// the shipped forms, in a self-deleting folder, read into the engine's document.

#include "support/files.h"

#include "engine/document.h"
#include "engine/engine_error.h"
#include "engine/wfd_script.h"

#include <QApplication>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace sealtest {

// Layout measures text with real fonts and the preview is a widget: both need a GUI
// application, which lives as long as the test process.
inline void ensureGuiApp()
{
    if (QCoreApplication::instance()) return;
    static int argc = 1;
    static char name[] = "test_engine";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    new QApplication(argc, argv);
}

inline QString formPath(const QString& name) { return QStringLiteral(SEAL_SOURCE_DIR "/forms/") + name; }

// The label CSV's title line, as the program writes it.
inline const QString kLabelTitle = QStringLiteral(
    "cIDno,cName,cNameKana,cKikan,cDaihyo,cYubinNo,cAddress1,cTelNo,cFaxNo,cMobNo,cMst,cKeisho,nRoomNo,nTantouID"
    ",拠点名, 送付先郵便番号,送付先住所,拠点電話番号,拠点FAX番号,脚注");
inline const QString kBlankLine = QStringLiteral("0,,,,,,,,,,,,,,,,,,,");

// The consent ledger's columns, in the order of its data file.
inline const QStringList kLedgerColumns =
    QStringLiteral("枠線描画,何月分,種別,No,患者ID,患者名,施術者ID,同意日,同意書期限,新同意日,経過,担当者,依頼日,"
                   "予備1,予備2,受取日,同意医師,同意医師機関,同意医師TEL,同意医師IDNo,基準日表示,初回フラグ,"
                   "初療日未入力フラグ")
        .split(u',');

struct Label {
    QString id = QStringLiteral("1");
    QString name = QStringLiteral("山田 太郎 様");
    QString kikan;
    QString daihyo;
    QString yubin = QStringLiteral("〒 123-4567");
    QString address = QStringLiteral("東京都新宿区西新宿2-8-1");
    QString mst = QStringLiteral("0");  // the kind of addressee
    QString keisho = QStringLiteral("様");
    QString room;
    QString footnote;
};

// One data line: a bare first field, the others quoted and not escaped.
inline QString labelLine(const Label& l)
{
    return QStringLiteral("%1,\"%2\",\"ヤマダ タロウ\",\"%3\",\"%4\",\"%5\",\"%6\",\"03-1111-2222\",\"\",\"\","
                          "\"%7\",\"%8\",\"%9\",\"\",\"本店\",\"100-0001\",\"東京都千代田区丸の内1-1\","
                          "\"03-0000-0000\",\"03-0000-0001\",\"%10\"")
        .arg(l.id, l.name, l.kikan, l.daihyo, l.yubin, l.address, l.mst, l.keisho, l.room, l.footnote);
}

// n labels of the default addressee, numbered from 1.
inline QStringList labelLines(int n)
{
    QStringList lines;
    for (int i = 1; i <= n; ++i) {
        Label l;
        l.id = QString::number(i);
        lines.append(labelLine(l));
    }
    return lines;
}

// A script for one form and one data file, with the given extra lines before the paper.
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

// Expects the call to raise the engine's error naming the file (any when null) and the
// line (any when -1), its message holding every part.
inline void expectEngineError(const std::function<void()>& call, const QString& file, int line,
                              const QStringList& parts = {})
{
    try {
        call();
        ADD_FAILURE() << "no error";
    } catch (const engine::EngineError& e) {
        if (!file.isNull()) {
            EXPECT_EQ(e.file(), file);
        }
        if (line >= 0) {
            EXPECT_EQ(e.line(), line);
        }
        for (const QString& part : parts) EXPECT_TRUE(e.message().contains(part)) << e.text().toStdString();
    }
}

// The number of pages of a PDF as its page objects count them; -1 without the file.
inline int pdfPageCount(const QString& path)
{
    const QByteArray bytes = fileBytes(path);
    if (bytes == "<missing>") return -1;
    return int(bytes.count("/Type /Page\n") + bytes.count("/Type /Page\r") + bytes.count("/Type /Page "));
}

// A folder of one job's files, written as the program writes them (CP932, CR LF).
class JobFolder {
public:
    JobFolder() { ensureGuiApp(); }

    QString path(const QString& name) const { return dir_.filePath(name); }
    QString write(const QString& name, const QStringList& lines)
    {
        writeCrlf(path(name), lines);
        return path(name);
    }
    // "シール.csv": the title line, then the data lines.
    QString labels(const QStringList& dataLines)
    {
        return write(QStringLiteral("シール.csv"), QStringList{kLabelTitle} + dataLines);
    }
    QString labels(int n) { return labels(labelLines(n)); }
    // "WfdCom.dat" over a form: a bare name is a shipped form, anything else a path.
    QString script(const QString& form, const QString& csv, const QStringList& extra = {})
    {
        const bool shipped = !form.contains(u'/') && !form.contains(u'\\');
        return write(QStringLiteral("WfdCom.dat"), scriptLines(shipped ? formPath(form) : form, csv, extra));
    }
    // The engine's document of a script; enginesDir is where it looks for forms named elsewhere.
    static std::unique_ptr<engine::Document> document(const QString& script, const QString& enginesDir = {})
    {
        return std::make_unique<engine::Document>(engine::readWfdScript(script), enginesDir);
    }
    // A job of a form over label lines.
    std::unique_ptr<engine::Document> job(const QString& form, const QStringList& dataLines,
                                          const QStringList& extra = {})
    {
        return document(script(form, labels(dataLines), extra));
    }

private:
    QTemporaryDir dir_;
};

}  // namespace sealtest
