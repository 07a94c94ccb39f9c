#pragma once
// One print job as the script asks for it: the forms and data files it names, read and
// checked, and the pages of all its reports in order. Output (preview, printer, PDF,
// PNG) asks this for pages and never looks at the script again.

#include "engine/csv_table.h"
#include "engine/font_book.h"
#include "engine/form.h"
#include "engine/page_renderer.h"
#include "engine/wfd_script.h"

#include <QPointF>
#include <QSizeF>
#include <QString>

#include <memory>
#include <vector>

class QPainter;

namespace engine {

class Document {
public:
    // Reads the form and the data files of a script and checks them against each
    // other. appDir is the engine's own directory: a form that is not where the script
    // says is looked for in its "forms" folders (beside it, then the installed
    // PREFIX/share/sealprint/forms). Throws EngineError.
    Document(const WfdScript& script, const QString& appDir);
    ~Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    int nPages() const { return totalPages_; }
    QSizeF pageSize(int page) const;  // mm, as the sheet lies
    bool landscape(int page) const;
    void printPage(QPainter& painter, int page) const;

    // Told of everything printPage draws (PageRenderer::setInkRecorder).
    void setInkRecorder(const std::function<void(const PlacedInk&)>& recorder);

    // The printer's own correction in mm, added to the script's offsets.
    void setCalibration(QPointF mm);
    QPointF calibration() const { return calibration_; }

    const QString& title() const { return title_; }
    OutputMode mode() const { return mode_; }
    int zoom() const { return zoom_; }
    // Where a PDF goes when nobody said: beside the script, named after the first data
    // file, with ".pdf".
    QString defaultPdfPath() const { return defaultPdf_; }

private:
    struct Part;
    std::pair<const Part*, int> locate(int page) const;
    void addPart(const QString& formPath, const QString& formRef, int formLine, const QList<DataBinding>& data,
                 const WfdScript& script);
    void applyOffsets();

    FontBook fonts_;
    std::vector<std::unique_ptr<Part>> parts_;
    QString title_;
    OutputMode mode_ = OutputMode::None;
    int zoom_ = 2;
    QString defaultPdf_;
    QPointF scriptOffset_;
    QPointF calibration_;
    int totalPages_ = 0;
};

// A path from a script or a form, with "\" separators, as the file system wants it; a
// relative one is taken from the current folder.
QString resolvePath(const QString& path);

}  // namespace engine
