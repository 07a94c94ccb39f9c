#pragma once
// Texts the program must produce to the byte, kept as files under
// tests/data/fixtures/golden/ rather than as a second copy in a test's code. A test
// compares the program's own output with its file; other tests may read the same file
// (the schema test compiles every golden statement).
//
// SEAL_UPDATE_GOLDEN=1 in the environment writes the files from the program's output
// instead of comparing; review the difference before committing it.

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>

#include <gtest/gtest.h>

namespace sealtest {

inline QString goldenDir() { return QStringLiteral(SEAL_TEST_DATA_DIR "/golden"); }

// The golden file's text (UTF-8), or a text naming the missing file.
inline QString goldenText(const QString& name)
{
    QFile f(goldenDir() + u'/' + name);
    if (!f.open(QIODevice::ReadOnly)) return QStringLiteral("<no golden file ") + name + u'>';
    return QString::fromUtf8(f.readAll());
}

inline void expectGolden(const QString& name, const QString& text)
{
    if (qEnvironmentVariableIntValue("SEAL_UPDATE_GOLDEN") == 1) {
        QDir().mkpath(goldenDir());
        QFile f(goldenDir() + u'/' + name);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate)) << name.toStdString();
        f.write(text.toUtf8());
        return;
    }
    EXPECT_EQ(text, goldenText(name)) << "golden file " << name.toStdString();
}

}  // namespace sealtest
