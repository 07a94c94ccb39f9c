#include "engine/page_output.h"

#include "engine/document.h"
#include "engine/engine_error.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>

#include <cmath>

namespace engine {

namespace {

QPageLayout layoutFor(const Document& doc, int page)
{
    const QSizeF s = doc.pageSize(page);
    const bool land = s.width() > s.height();
    const QSizeF portrait = land ? s.transposed() : s;
    QPageLayout layout(QPageSize(portrait, QPageSize::Millimeter),
                       land ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF(0, 0, 0, 0),
                       QPageLayout::Millimeter);
    // Forms place everything from the paper's corner; a printer's unprintable margin
    // must not move the origin.
    layout.setMode(QPageLayout::FullPageMode);
    return layout;
}

// Pages carry patients' names and addresses: readable by the user alone, like the
// program's own working files.
void keepPrivate(const QString& path) { QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner); }

}  // namespace

void scaleToMillimetres(QPainter& painter, double dpi) { painter.scale(dpi / 25.4, dpi / 25.4); }

void writePdf(const Document& doc, const QString& path)
{
    QFile file(path);
    constexpr auto kPrivate = QFileDevice::ReadOwner | QFileDevice::WriteOwner;
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate, kPrivate) || !file.setPermissions(kPrivate))
        throw EngineError(path, 0, QStringLiteral("PDF ファイルを書けません: %1").arg(file.errorString()));
    QPdfWriter writer(&file);
    constexpr int kResolution = 600;
    writer.setResolution(kResolution);
    writer.setTitle(doc.title());
    writer.setCreator(QStringLiteral("sealprint wfrfv10"));
    writer.setPageLayout(layoutFor(doc, 0));
    QPainter painter;
    if (!painter.begin(&writer)) throw EngineError(path, 0, QStringLiteral("PDF ファイルを書けません。"));
    for (int i = 0; i < doc.nPages(); ++i) {
        if (i > 0) {
            writer.setPageLayout(layoutFor(doc, i));
            writer.newPage();
        }
        painter.save();
        scaleToMillimetres(painter, kResolution);
        doc.printPage(painter, i);
        painter.restore();
    }
    if (!painter.end() || !file.flush())
        throw EngineError(path, 0, QStringLiteral("PDF ファイルを書き終えられません。"));
}

QStringList writePngs(const Document& doc, const QString& dir, int dpi)
{
    QDir d(dir);
    if (!d.exists() && !QDir().mkpath(dir)) throw EngineError(dir, 0, QStringLiteral("フォルダーを作れません。"));
    QStringList files;
    for (int i = 0; i < doc.nPages(); ++i) {
        const QSizeF s = doc.pageSize(i);
        QImage img(int(std::lround(s.width() / 25.4 * dpi)), int(std::lround(s.height() / 25.4 * dpi)),
                   QImage::Format_RGB32);
        img.setDotsPerMeterX(int(std::lround(dpi / 0.0254)));
        img.setDotsPerMeterY(int(std::lround(dpi / 0.0254)));
        img.fill(Qt::white);
        {
            QPainter painter(&img);
            scaleToMillimetres(painter, dpi);
            doc.printPage(painter, i);
        }
        const QString file = d.filePath(QStringLiteral("page-%1.png").arg(i + 1, 3, 10, QLatin1Char('0')));
        if (!img.save(file, "PNG")) throw EngineError(file, 0, QStringLiteral("PNG ファイルを書けません。"));
        keepPrivate(file);
        files.append(file);
    }
    return files;
}

void printDocument(const Document& doc, QPrinter& printer, int fromPage, int toPage)
{
    const int first = fromPage > 0 ? fromPage - 1 : 0;
    const int last = toPage > 0 ? std::min(toPage, doc.nPages()) - 1 : doc.nPages() - 1;
    printer.setPageLayout(layoutFor(doc, first));
    QPainter painter;
    if (!painter.begin(&printer))
        throw EngineError(printer.printerName(), 0, QStringLiteral("プリンターに印刷を始められません。"));
    for (int i = first; i <= last; ++i) {
        if (i > first) {
            // A printer takes a new page size only between pages, and only where the
            // size changes (a joined print of labels and envelopes).
            const QPageLayout next = layoutFor(doc, i);
            if (!next.isEquivalentTo(printer.pageLayout())) printer.setPageLayout(next);
            printer.newPage();
        }
        painter.save();
        scaleToMillimetres(painter, printer.resolution());
        doc.printPage(painter, i);
        painter.restore();
    }
    painter.end();
}

}  // namespace engine
