#pragma once
// Printing through the external report engine: the settings of one job are collected
// in memory, then one output operation writes the command script "WfdCom.dat" into the
// temporary folder and starts the engine on it without waiting.
//
// The script is built by plain functions over a value (WfdScriptFields), so what lands
// in the file can be checked without touching the disk; cls_WfdPrintExe only stores,
// writes and starts.

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <cstdint>

namespace report {

// One value set into a named place of the form: the path sPart1.sPart2.sPart3.
struct WfdItemValue {
    QString sPart1;
    QString sPart2;
    QString sPart3;
    QString sValue;
};

// The fields of one print job, as cls_WfdPrintExe holds them.
struct WfdScriptFields {
    QString sExeName = QStringLiteral("wfrfv10.exe");
    QString sTmpPath;  // ends with "\"
    QString sWfdFile;
    QString sTitle;
    std::array<QString, 5> sDataName;  // slots 1..5 at 0..4
    std::array<QString, 5> sDataFile;
    std::array<int16_t, 5> bDataNoTitle{};  // -1 true, 0 false
    int32_t nOffsetX = 0;
    int32_t nOffsetY = 0;
    int16_t iPrintZoom = 2;
    int16_t iRepeatStart = 0;
    int16_t iItemCount = 0;
    QList<WfdItemValue> tItems;
};

// How the engine ends the script: the number is the original's mode number.
enum class WfdMode : int16_t { Preview = 0, PrintBk = 1, PrintDialog = 2 };

// The reports of a joined print. Arrays are read at 1..iCount, as the callers fill
// them; element 0 is a spare. An index past an array's end is a runtime fault.
struct WfdJoinedReports {
    int16_t iCount = 0;
    QString sDataName;
    QStringList sDataFiles;
    QString sAddDataName;       // second data name (joined print with added CSV)
    QStringList sAddDataFiles;  // second data files
    QList<int32_t> nAddFlags;   // 1 adds the second data file to report i
    bool bWithAddCsv = false;
    QStringList sWfdFiles;
};

inline constexpr char16_t kWfdScriptName[] = u"WfdCom.dat";

// The item path of a SetItemValue line.
QString wfdItemPath(const WfdItemValue& item);

// The lines of the script for a single report, in order, without line ends.
QStringList wfdScriptLines(const WfdScriptFields& f, int16_t paper, WfdMode mode);

// The first script of a joined print, read by the joining program. Throws
// base::VbError (9) when an array is shorter than the count asks.
QStringList wfdJoinScriptLines(const WfdJoinedReports& r, const QString& title);

// The second script of a joined print: the viewer opens what the joining program made.
QStringList wfdJoinViewerLines(const QString& title, const QString& tmpPath);

// The script file as bytes: CP932, every line ended by CR LF.
QByteArray wfdScriptBytes(const QStringList& lines);

// Command lines of the programs the driver starts.
QString wfdViewerCommandLine(const QString& exeName, const QString& tmpPath);
QString wfdActXCommandLine();
QString wfdJoinCommandLine(const QString& tmpPath);

class cls_WfdPrintExe {
public:
    QString sErrMsg;

    int16_t iInit(const QString& wfdFile, const QString& title);
    int16_t iSetDataText(int16_t slot, const QString& dataName, const QString& fileName);
    int16_t iSetDataTextNoTitle(int16_t slot, const QString& dataName, const QString& filePath);
    int16_t iSetOffset(int32_t x, int32_t y);
    int16_t iSetPrintZoom(int16_t zoom);
    int16_t iSetItemValue(const QString& part1, const QString& part2, const QString& part3, const QString& value);
    int16_t iSetRepeatStart(int16_t section);

    // Output operations; their faults are left in sErrMsg.
    void iPreview(int16_t paper);
    void iPreviewData();
    void iPreviewActX();
    void iPrintBk();
    void iPrintDialog(int16_t paper);
    void addPrint(int16_t count, const QString& dataName, const QStringList& dataFiles, const QStringList& wfdFiles,
                  const QString& title);
    void addPrint_addCSV(int16_t count, const QString& dataName, const QStringList& dataFiles,
                         const QString& addDataName, const QStringList& addDataFiles, const QStringList& wfdFiles,
                         const QList<int32_t>& addFlags, const QString& title);

    const WfdScriptFields& fields() const { return m_; }

private:
    int16_t setDataSlot(int16_t slot, const QString& name, const QString& file, int16_t noTitle);
    // Writes the script; -1 until the file is written and closed, then 0.
    int16_t iWriteScript(const QStringList& lines);
    void runSingle(int16_t paper, WfdMode mode, const QString& commandLine, int windowStyle, bool start);
    void runJoined(const WfdJoinedReports& reports, const QString& title);
    // Starts a program; a failure to start is a fault like any other.
    static void startEngine(const QString& commandLine, int windowStyle);
    QString scriptPath() const;

    WfdScriptFields m_;
};

}  // namespace report
