#include "report/cls_wfdprintexe.h"

#include "app/globals.h"
#include "app/system_settings.h"
#include "base/text_codec.h"
#include "base/vb_error.h"
#include "controls/platform.h"
#include "report/fault_text.h"
#include "report/work_file.h"

namespace report {

using namespace Qt::StringLiterals;

namespace {

const QString kJoinedForm = QStringLiteral("tmp.wfd");

QString quoted(const QString& value) { return u'"' + value + u'"'; }

// The element at index i of a caller's array, faulting like the original's runtime
// when the array is too short.
template <typename List>
auto at(const List& list, int i)
{
    if (i < 0 || i >= list.size()) throw base::VbError::subscriptOutOfRange();
    return list[i];
}

void checkSlot(int16_t slot)
{
    if (slot < 1 || slot > 5) throw base::VbError::subscriptOutOfRange();
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    const std::unique_ptr<QFile> file = openWorkFile(path);
    writeWorkFile(*file, bytes);
    closeWorkFile(*file);
}

}  // namespace

QString wfdItemPath(const WfdItemValue& item)
{
    QString path = item.sPart1;
    if (!item.sPart2.trimmed().isEmpty()) path += u'.' + item.sPart2;
    return path + u'.' + item.sPart3;
}

QStringList wfdScriptLines(const WfdScriptFields& f, int16_t paper, WfdMode mode)
{
    QStringList lines;
    lines << u"FileName,"_s + quoted(f.sWfdFile);
    if (!f.sTitle.isEmpty()) lines << u"Title,"_s + quoted(f.sTitle);
    for (std::size_t i = 0; i < f.sDataName.size(); ++i) {
        if (f.sDataName[i].isEmpty()) continue;
        QString line = u"SetDataText,"_s + quoted(f.sDataName[i]) + u',' + quoted(f.sDataFile[i]);
        if (f.bDataNoTitle[i] != 0) line += u",,,1"_s;
        lines << line;
    }
    if (f.nOffsetX != 0) lines << u"PrintOffsetX, "_s + QString::number(f.nOffsetX);
    if (f.nOffsetY != 0) lines << u"PrintOffsetY, "_s + QString::number(f.nOffsetY);
    if (f.iPrintZoom != 2) lines << u"PrintZoom, "_s + QString::number(f.iPrintZoom);
    if (f.iRepeatStart >= 1) lines << u"SectionRepeatStart, "_s + QString::number(f.iRepeatStart);

    switch (paper) {
    case 1:
        lines << u"PrintPaper, A5"_s;
        break;
    case 2:
        lines << u"PrintPaper, B5"_s;
        break;
    // The engine takes a repeated line as harmless; callers rely on -1 meaning
    // "leave the form's own paper".
    case -1:
        lines << lines.last();
        break;
    default:
        lines << u"PrintPaper, A4"_s;
        break;
    }

    for (const WfdItemValue& item : f.tItems) {
        lines << u"SetItemValue,"_s + quoted(wfdItemPath(item)) + u',' + quoted(item.sValue);
    }

    switch (mode) {
    case WfdMode::Preview:
        lines << u"ShowWindow,2"_s;
        break;
    case WfdMode::PrintBk:
        lines << u"PrintOut"_s;
        break;
    case WfdMode::PrintDialog:
        lines << u"PrintOutFromDialog"_s;
        break;
    }
    return lines;
}

QStringList wfdJoinScriptLines(const WfdJoinedReports& r, const QString& title)
{
    // Everything after the file name is one fixed text the joining program expects.
    static const QString trailer = QStringLiteral(R"(,",", """", True)");
    QStringList lines;
    lines << u"setTitle,"_s + quoted(title);
    for (int i = 1; i <= r.iCount; ++i) {
        lines << u"SetDataText,"_s + quoted(r.sDataName) + u',' + quoted(at(r.sDataFiles, i)) + trailer;
        if (r.bWithAddCsv && at(r.nAddFlags, i) == 1) {
            lines << u"SetDataText,"_s + quoted(r.sAddDataName) + u',' + quoted(at(r.sAddDataFiles, i)) + trailer;
        }
        lines << u"setreport,"_s + quoted(at(r.sWfdFiles, i));
        if (i < r.iCount) lines << u"AddReport"_s;
    }
    return lines;
}

QStringList wfdJoinViewerLines(const QString& title, const QString& tmpPath)
{
    return {u"Title,"_s + quoted(title), u"FileName,"_s + quoted(tmpPath + kJoinedForm), u"PrintOutFromDialog"_s};
}

QByteArray wfdScriptBytes(const QStringList& lines)
{
    QByteArray bytes;
    for (const QString& line : lines) {
        bytes += base::toCp932(line);
        bytes += "\r\n";
    }
    return bytes;
}

QString wfdViewerCommandLine(const QString& exeName, const QString& tmpPath)
{
    return exeName + u" /c "_s + tmpPath + QString::fromUtf16(kWfdScriptName);
}

QString wfdActXCommandLine()
{
    // This viewer is always given the folder relative to the program's directory.
    return u"WrVb6Viewer.exe /c ./TMP\\"_s + QString::fromUtf16(kWfdScriptName);
}

QString wfdJoinCommandLine(const QString& tmpPath)
{
    return u"wfrimg10.exe "_s + tmpPath + kJoinedForm + u" /c "_s + tmpPath + QString::fromUtf16(kWfdScriptName);
}

int16_t cls_WfdPrintExe::iInit(const QString& wfdFile, const QString& title)
{
    try {
        m_.sExeName = QStringLiteral("wfrfv10.exe");
        m_.sTmpPath = app::csSystemTmpPath();
        m_.sWfdFile = wfdFile;
        if (!title.isEmpty()) m_.sTitle = title;
        m_.nOffsetX = 0;
        m_.nOffsetY = 0;
        m_.iPrintZoom = 2;
        m_.iRepeatStart = 0;
        m_.iItemCount = 0;
        m_.tItems.clear();
        return 0;
    } catch (const base::VbError& e) {
        sErrMsg = faultText(e);
        return -1;
    }
}

int16_t cls_WfdPrintExe::setDataSlot(int16_t slot, const QString& name, const QString& file, int16_t noTitle)
{
    try {
        checkSlot(slot);
        m_.sDataName[slot - 1] = name;
        m_.sDataFile[slot - 1] = file;
        m_.bDataNoTitle[slot - 1] = noTitle;
        return 0;
    } catch (const base::VbError& e) {
        sErrMsg = faultText(e);
        return -1;
    }
}

int16_t cls_WfdPrintExe::iSetDataText(int16_t slot, const QString& dataName, const QString& fileName)
{
    return setDataSlot(slot, dataName, m_.sTmpPath + fileName, 0);
}

int16_t cls_WfdPrintExe::iSetDataTextNoTitle(int16_t slot, const QString& dataName, const QString& filePath)
{
    return setDataSlot(slot, dataName, filePath, -1);
}

int16_t cls_WfdPrintExe::iSetOffset(int32_t x, int32_t y)
{
    m_.nOffsetX = x;
    m_.nOffsetY = y;
    return 0;
}

int16_t cls_WfdPrintExe::iSetPrintZoom(int16_t zoom)
{
    m_.iPrintZoom = zoom;
    return 0;
}

int16_t cls_WfdPrintExe::iSetItemValue(const QString& part1, const QString& part2, const QString& part3,
                                       const QString& value)
{
    try {
        // The count is the original's 16-bit counter: one more than it holds overflows.
        if (m_.iItemCount == INT16_MAX) throw base::VbError::overflow();
        m_.tItems.append(WfdItemValue{part1, part2, part3, value});
        ++m_.iItemCount;
        return 0;
    } catch (const base::VbError& e) {
        sErrMsg = faultText(e);
        return -1;
    }
}

int16_t cls_WfdPrintExe::iSetRepeatStart(int16_t section)
{
    m_.iRepeatStart = section;
    return 0;
}

QString cls_WfdPrintExe::scriptPath() const { return m_.sTmpPath + QString::fromUtf16(kWfdScriptName); }

int16_t cls_WfdPrintExe::iWriteScript(const QStringList& lines)
{
    try {
        writeFile(scriptPath(), wfdScriptBytes(lines));
        return 0;
    } catch (const base::VbError& e) {
        sErrMsg = faultText(e);
        return -1;
    }
}

void cls_WfdPrintExe::startEngine(const QString& commandLine, int windowStyle)
{
    if (!app::platform().startProgram(commandLine, windowStyle)) {
        throw base::VbError::fileNotFound();
    }
}

void cls_WfdPrintExe::runSingle(int16_t paper, WfdMode mode, const QString& commandLine, int windowStyle, bool start)
{
    try {
        if (iWriteScript(wfdScriptLines(m_, paper, mode)) != 0) return;
        if (start) startEngine(commandLine, windowStyle);
    } catch (const base::VbError& e) {
        sErrMsg = faultText(e);
    }
}

void cls_WfdPrintExe::iPreview(int16_t paper)
{
    runSingle(paper, WfdMode::Preview, wfdViewerCommandLine(m_.sExeName, m_.sTmpPath),
              controls::WindowStyle::MinimizedFocus, true);
}

void cls_WfdPrintExe::iPreviewData()
{
    runSingle(0, WfdMode::Preview, wfdViewerCommandLine(m_.sExeName, m_.sTmpPath),
              controls::WindowStyle::MinimizedFocus, false);
}

void cls_WfdPrintExe::iPreviewActX()
{
    runSingle(0, WfdMode::Preview, wfdActXCommandLine(), controls::WindowStyle::MaximizedFocus, true);
}

void cls_WfdPrintExe::iPrintBk()
{
    runSingle(0, WfdMode::PrintBk, wfdViewerCommandLine(m_.sExeName, m_.sTmpPath),
              controls::WindowStyle::MinimizedFocus, true);
}

void cls_WfdPrintExe::iPrintDialog(int16_t paper)
{
    runSingle(paper, WfdMode::PrintDialog, wfdViewerCommandLine(m_.sExeName, m_.sTmpPath),
              controls::WindowStyle::MinimizedFocus, true);
}

void cls_WfdPrintExe::runJoined(const WfdJoinedReports& reports, const QString& title)
{
    try {
        if (iWriteScript(wfdJoinScriptLines(reports, title)) != 0) return;
        startEngine(wfdJoinCommandLine(m_.sTmpPath), controls::WindowStyle::MinimizedFocus);
        // No wait for the joining program: the original replaces its script at once.
        if (iWriteScript(wfdJoinViewerLines(title, m_.sTmpPath)) != 0) return;
        startEngine(wfdViewerCommandLine(m_.sExeName, m_.sTmpPath), controls::WindowStyle::MinimizedFocus);
    } catch (const base::VbError& e) {
        sErrMsg = faultText(e);
    }
}

void cls_WfdPrintExe::addPrint(int16_t count, const QString& dataName, const QStringList& dataFiles,
                               const QStringList& wfdFiles, const QString& title)
{
    WfdJoinedReports r;
    r.iCount = count;
    r.sDataName = dataName;
    r.sDataFiles = dataFiles;
    r.sWfdFiles = wfdFiles;
    runJoined(r, title);
}

void cls_WfdPrintExe::addPrint_addCSV(int16_t count, const QString& dataName, const QStringList& dataFiles,
                                      const QString& addDataName, const QStringList& addDataFiles,
                                      const QStringList& wfdFiles, const QList<int32_t>& addFlags, const QString& title)
{
    WfdJoinedReports r;
    r.iCount = count;
    r.sDataName = dataName;
    r.sDataFiles = dataFiles;
    r.sAddDataName = addDataName;
    r.sAddDataFiles = addDataFiles;
    r.nAddFlags = addFlags;
    r.bWithAddCsv = true;
    r.sWfdFiles = wfdFiles;
    runJoined(r, title);
}

}  // namespace report
