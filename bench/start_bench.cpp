// Measures two things: the time from starting the program to its first shown window, and the memory
// of the program while an order of a large store is open. The baseline of both is a process with an
// empty Qt main window.

#include "large_store.h"
#include "paired.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace {

/// Runs the program with a task of the probe plugin, waits until the program ends, and returns its
/// standard output.
QByteArray run(const QString& program, const QString& task)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_PLUGIN_PATH"_s, QStringLiteral(ZOMREL_PROBE_PLUGINS));
    environment.insert(u"QT_QPA_GENERIC_PLUGINS"_s, u"zomrelprobe:"_s + task);
    if (!environment.contains(u"QT_QPA_PLATFORM"_s))
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, QStringList());
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("%s did not end well", qPrintable(program));
    return process.readAllStandardOutput();
}

/// A copy of the program in a temporary folder that also contains a store.
class InstalledProgram
{
public:
    explicit InstalledProgram(testsupport::TemporaryStore& store)
        : path_(store.folder() + u"/Zomrel"_s)
    {
        if (!QFile::copy(QStringLiteral(ZOMREL_PROGRAM), path_))
            qFatal("cannot copy the program");
        if (store.path() != store.folder() + u"/Aluminium.mdb"_s)
            QFile::copy(store.path(), store.folder() + u"/Aluminium.mdb"_s);
    }
    const QString& path() const { return path_; }

private:
    QString path_;
};

const QString emptyWindow = QStringLiteral(ZOMREL_EMPTY_WINDOW);

void StartToShownFrame(benchmark::State& state)
{
    testsupport::TemporaryStore store(testsupport::TemporaryStore::Contents::Delivered);
    const InstalledProgram program(store);
    bench::runPaired(
        state, 1.5, [&] { run(program.path(), u"paint"_s); }, [] { run(emptyWindow, u"paint"_s); });
}
BENCHMARK(StartToShownFrame)->UseManualTime()->Iterations(20);

void MemoryWithALargeStoreOpen(benchmark::State& state)
{
    testsupport::TemporaryStore store(testsupport::TemporaryStore::Contents::Delivered);
    bench::fillStore(store, 10000, 20);
    const InstalledProgram program(store);
    bench::Pairs pairs;
    for ([[maybe_unused]] auto _ : state)
        pairs.add(run(program.path(), u"order"_s).toDouble(),
                  run(emptyWindow, u"idle"_s).toDouble());
    // The reported medians are kilobytes of memory.
    pairs.report(state, 1.5);
}
BENCHMARK(MemoryWithALargeStoreOpen)->Iterations(3);

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
