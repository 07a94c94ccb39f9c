#pragma once
// The pages of a document onto paper-like devices: a PDF file, PNG images, a printer.
// Each failure is an EngineError naming the file or printer.

#include <QString>
#include <QStringList>

class QPainter;
class QPrinter;

namespace engine {

class Document;

void writePdf(const Document& doc, const QString& path);

// One PNG per page, "page-001.png" and on, at dpi; returns the files written.
QStringList writePngs(const Document& doc, const QString& dir, int dpi = 150);

// Prints every page (or from..to, 1-based, as a print dialog chose) on printer, whose
// page size follows each page. The printer must be set up (name, copies) by the caller.
void printDocument(const Document& doc, QPrinter& printer, int fromPage = 0, int toPage = 0);

// Scales a painter so that it works in mm on a device of dpi dots per inch.
void scaleToMillimetres(QPainter& painter, double dpi);

}  // namespace engine
