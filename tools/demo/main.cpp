// sealdemo --out DIR [--patients N] [--seed S] [--today yyyy/mm/dd]

#include "demo_installation.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTextStream>

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream err(stderr);
    QTextStream out(stdout);
    QString error;
    const std::optional<demo::DemoOptions> options = demo::parseArguments(app.arguments().mid(1), &error);
    if (!options) {
        err << error << '\n' << demo::usageText();
        return 2;
    }
    QElapsedTimer timer;
    timer.start();
    try {
        demo::writeInstallation(*options);
    } catch (const demo::DemoError& e) {
        err << e.text() << '\n';
        return 1;
    }
    out << QStringLiteral("デモ環境を作成しました: %1（患者 %2 人、%3 秒）\n")
               .arg(QDir(options->outDir).absolutePath())
               .arg(options->patients)
               .arg(timer.elapsed() / 1000.0, 0, 'f', 1);
    return 0;
}
