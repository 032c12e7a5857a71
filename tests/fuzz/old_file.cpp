// Fuzzes the import of damaged old files. libmdb reads the file in a separate process, as in the
// real program. The file is either refused or yields a sound store. The separate process runs this
// same program, so libmdb runs under the same sanitizers.

#include "fuzz/fuzz.h"

#include "platform/runtime/run_time_error.h"
#include "tools/store/checker.h"
#include "tools/store/old_store/reading.h"
#include "tools/store/old_store/take_over.h"
#include "tools/store/place.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace storetools;

namespace {

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    fuzz::require(file.open(QIODevice::ReadOnly), "a file can be read", path);
    return file.readAll();
}

const QByteArray& wholeFile(int which)
{
    static const std::array files{
        contentsOf(QStringLiteral(ZOMREL_TEST_DATA) + u"/old_store/old-store.mdb"_s),
        contentsOf(QStringLiteral(ZOMREL_TEST_DATA) + u"/old_store/older-store.mdb"_s)};
    return files[static_cast<std::size_t>(which)];
}

/// The first byte chooses the file and the second how much of it is kept. Then pairs of position
/// and byte follow.
QByteArray damagedFile(fuzz::Input& input)
{
    QByteArray file = wholeFile(input.takeBelow(2));
    const int kept = input.takeBelow(256);
    if (kept != 0)
        file.truncate(file.size() * kept / 256);
    while (!input.atEnd() && !file.isEmpty()) {
        const auto place = static_cast<qsizetype>(input.take<quint32>());
        file[place % file.size()] = input.take<char>();
    }
    return file;
}

void takeOver(const QString& old, const QString& target)
{
    try {
        const TakeOverOutcome outcome = takeOverStore(old, Place(target), {}, {});
        if (!outcome.findings.isEmpty())
            return;
        fuzz::require(checkReport(Place(target), Figures::Skipped).preventCopying.isEmpty(),
                      "a store is sound", {});
        fuzz::require(QFile::remove(target), "a store is created", {});
    } catch (const runtime::RunTimeError& error) {
        fuzz::require(error.number() == runtime::CorruptDatabase ||
                          error.number() == runtime::UnrecognizedFormat,
                      "only damaged files are refused", error.description());
    }
}

} // namespace

int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    if (*argc == 3 && qstrcmp((*argv)[1], readingCommand) == 0)
        std::_Exit(runReading(QFile::decodeName((*argv)[2])));
    static const QCoreApplication application(*argc, *argv);
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const QTemporaryDir folder;
    fuzz::Input input(data, size);
    const QByteArray damaged = damagedFile(input);
    const QString old = folder.filePath(u"old.mdb"_s);
    QFile file(old);
    fuzz::require(file.open(QIODevice::WriteOnly) && file.write(damaged) == damaged.size(),
                  "a file can be written", old);
    file.close();
    // A process refuses a store that was replaced since it has opened the path.
    static int targets = 0;
    takeOver(old, folder.filePath(u"new%1.mdb"_s.arg(++targets)));
    fuzz::require(contentsOf(old) == damaged, "the old file is not changed", {});
    const QStringList left =
        QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    fuzz::require(left == QStringList(u"old.mdb"_s), "no file is left behind", left.join(u' '));
    return 0;
}
