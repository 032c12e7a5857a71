// Runs a fuzz target on saved inputs, without libFuzzer:
//
//     fuzz_TARGET FOLDER...

#include "fuzz/fuzz.h"

#include <QDir>
#include <QFile>

#include <cstdio>

namespace {

/// Runs all files of the folder and returns their number.
int replay(const QString& folder)
{
    int count = 0;
    const QFileInfoList files = QDir(folder).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& each : files) {
        QFile file(each.filePath());
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "cannot read %s\n", qUtf8Printable(each.filePath()));
            return 0;
        }
        const QByteArray bytes = file.readAll();
        // The name is printed before the run, so the last printed name is the input that failed.
        std::printf("%s\n", qUtf8Printable(each.fileName()));
        std::fflush(stdout);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                               static_cast<std::size_t>(bytes.size()));
        ++count;
    }
    return count;
}

} // namespace

int main(int argc, char** argv)
{
    LLVMFuzzerInitialize(&argc, &argv);
    int empty = argc > 1 ? 0 : 1;
    for (int i = 1; i < argc; ++i) {
        const int count = replay(QString::fromLocal8Bit(argv[i]));
        std::printf("%d inputs of %s\n", count, argv[i]);
        empty += count == 0 ? 1 : 0;
    }
    return empty == 0 ? 0 : 1;
}
