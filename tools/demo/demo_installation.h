#pragma once
// The demo installation: a folder that looks like the program's own directory on a
// clinic's machine, with its settings files, working folders and database.
//
//   DIR/Tavrine.ini, DIR/adodb.ini        system settings and connection (CP932, CR LF)
//   DIR/SYS, DIR/TMP, DIR/ICON, DIR/DATA   forms, working files, wallpaper, data
//   DIR/DATA/帳票Format.ini               report form names
//   DIR/DATA/sealdemo.db                   the SQLite database

#include <QDate>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <stdexcept>

namespace demo {

inline constexpr char kDatabaseFile[] = "sealdemo.db";

struct DemoOptions {
    QString outDir;
    int patients = 3000;
    std::uint32_t seed = 1;
    QDate today;  // invalid: the current date
};

// A failure that the operator can act on; the text says what and where.
class DemoError : public std::runtime_error {
public:
    explicit DemoError(const QString& text) : std::runtime_error(text.toStdString()), text_(text) {}
    const QString& text() const { return text_; }

private:
    QString text_;
};

QString usageText();

// "--out DIR [--patients N] [--seed S] [--today yyyy/mm/dd]"; on a bad line, nothing and
// the reason in *error.
std::optional<DemoOptions> parseArguments(const QStringList& arguments, QString* error);

// Writes the settings files and folders into dir (which may exist). Files of the same
// names are replaced whole; other files in dir are left alone.
void writeSettingsFiles(const QString& dir);

// Writes everything. The database is built beside its final name and moved into place
// only when complete, so an interrupted run leaves the previous one usable.
void writeInstallation(const DemoOptions& options);

}  // namespace demo
