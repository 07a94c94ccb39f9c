#pragma once
// The command script "WfdCom.dat": what the program asks the engine to do. Reading
// turns its lines into a WfdScript value; nothing here touches a form or data file.

#include <QList>
#include <QString>

#include <optional>

namespace engine {

enum class OutputMode { None, Preview, PrintOut, PrintDialog };
enum class Paper { A4, A5, B5 };

// One data file bound to the form. hasTitle is false for the ",,,1" trailer: the file
// has no title line and its columns bind by position.
struct DataBinding {
    QString name;
    QString file;  // as written, with "\" separators
    bool hasTitle = true;
    int line = 0;  // script line, for messages
};

struct ItemValue {
    QString path;  // "sPart1.sPart2.sPart3" or "sPart1.sPart3"
    QString value;
    int line = 0;
};

// One report of a joined print: a form and the data read into it.
struct JoinedReport {
    QString form;
    QList<DataBinding> data;
    int line = 0;
};

struct WfdScript {
    QString path;  // the script file itself
    QString formFile;
    int formLine = 0;
    QString title;
    QList<DataBinding> data;
    int offsetX = 0;  // 0.1 mm; positive moves the print right
    int offsetY = 0;  // 0.1 mm; positive moves the print down
    int zoom = 2;
    int repeatStart = 0;  // the first cell or row to print in, 1-based; 0 for none
    int repeatStartLine = 0;
    std::optional<Paper> paper;
    QList<ItemValue> items;
    OutputMode mode = OutputMode::None;

    // The joined print's first script (setTitle / setreport / AddReport).
    bool joined = false;
    QList<JoinedReport> reports;
};

// Parses the decoded text of a script; fileName only names it in messages. Throws
// EngineError on an unknown line kind or a malformed line.
WfdScript parseWfdScript(const QString& text, const QString& fileName);

// Reads a script file (CP932). Throws EngineError when it is missing, unreadable, not
// CP932, or malformed.
WfdScript readWfdScript(const QString& path);

// Reads a text file that must be CP932: the decoded text, or EngineError naming the
// first line that holds bytes CP932 cannot read.
QString readCp932File(const QString& path, const QString& whatForMessage);

}  // namespace engine
