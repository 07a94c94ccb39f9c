// What the program checks at its start: CP932 in Qt and the engine's forms folder
// (the font lookup is tested with the installation's folders).

#include "app/startup_checks.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

TEST(StartupChecks, AMissingFormsFolderIsToldAndAPresentOneIsNot)
{
    ASSERT_TRUE(app::cp932Available());
    QTemporaryDir dir;
    const QString bin = dir.filePath(QStringLiteral("bin"));
    ASSERT_TRUE(QDir().mkpath(bin));
    auto forms = [](const QList<app::StartupProblem>& problems) {
        int n = 0;
        for (const auto& p : problems) {
            EXPECT_FALSE(p.fatal) << p.message.toStdString();
            n += p.message.contains(QStringLiteral("forms")) ? 1 : 0;
        }
        return n;
    };
    EXPECT_EQ(forms(app::startupChecks(bin)), 1);
    ASSERT_TRUE(QDir().mkpath(dir.filePath(QStringLiteral("share/sealprint/forms"))));
    EXPECT_EQ(forms(app::startupChecks(bin)), 0);
}

}  // namespace
