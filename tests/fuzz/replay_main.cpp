// Without libFuzzer a fuzz target is a plain program that runs every file of the corpus
// folders (or the files) it is given through the target once: CTest runs it on the
// checked-in corpus, reproducers included, so every build checks them.

#include "fuzz_support.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cstdio>

int main(int argc, char** argv)
{
    QStringList files;
    for (int i = 1; i < argc; ++i) {
        const QString arg = QFile::decodeName(argv[i]);
        if (arg.startsWith(u'-')) continue;  // libFuzzer's options, e.g. -runs=0
        if (QFileInfo(arg).isDir()) {
            QDirIterator it(arg, QDir::Files, QDirIterator::Subdirectories);
            while (it.hasNext()) files.append(it.next());
        } else {
            files.append(arg);
        }
    }
    if (files.isEmpty()) {
        std::fprintf(stderr, "usage: %s CORPUS_DIR_OR_FILE...\n", argv[0]);
        return 2;
    }
    std::sort(files.begin(), files.end());
    for (const QString& path : files) {
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", qPrintable(path));
            return 2;
        }
        const QByteArray bytes = f.readAll();
        std::fprintf(stderr, "%s\n", qPrintable(QFileInfo(path).fileName()));
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size()));
    }
    std::printf("replayed %d inputs\n", int(files.size()));
    return 0;
}
