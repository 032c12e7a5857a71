#include "tools/store/old_store/reading.h"

#include "platform/runtime/run_time_error.h"
#include "tools/store/old_store/frames.h"
#include "tools/store/old_store/old_file.h"
#include "tools/store/system.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QTextStream>

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace storetools {

namespace {

constexpr int second = 1000; // Milliseconds.

/// Limit of the reading process's CPU time in seconds. The largest possible file needs less.
constexpr int longestWork = 300;

/// Owns the reading process; the destructor kills it.
class Reader
{
public:
    explicit Reader(const ReadingProcess& process)
        : longestSilence_(process.longestSilence),
          deadline_(std::chrono::seconds(process.longestTime))
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& name : {u"MDBPATH"_s, u"MDBOPTS"_s, u"MDB_ICONV"_s})
            environment.remove(name);
        // The library does not reset its character conversion between names, so the last letter of
        // a Hebrew name would change the next name. ISO-8859-1 prevents this, because it converts
        // each byte by itself.
        environment.insert(u"MDB_JET3_CHARSET"_s, u"ISO-8859-1"_s);
        process_.setProcessEnvironment(environment);
        process_.setStandardInputFile(QProcess::nullDevice());
        process_.start(process.program, process.arguments);
        if (!process_.waitForStarted())
            throw RunTimeError(runtime::InternalError, process_.errorString());
    }
    ~Reader()
    {
        process_.kill();
        process_.waitForFinished();
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Passes the output of the process to `frames`. Throws CorruptDatabase (3049) if the process
    /// hangs, crashes, fails or stops before the end of the data.
    void readTo(FrameReader& frames)
    {
        int silence = 0;
        do {
            const bool speaks = process_.waitForReadyRead(second);
            silence = speaks ? 0 : silence + 1;
            frames.take(process_.readAllStandardOutput());
            errors_ = (errors_ + process_.readAllStandardError()).right(longestError);
        } while (process_.state() != QProcess::NotRunning && silence < longestSilence_ &&
                 !deadline_.hasExpired());
        if (process_.state() != QProcess::NotRunning)
            damaged(u"reading it takes too long"_s);
        if (process_.exitStatus() != QProcess::NormalExit)
            damaged(u"reading it was interrupted"_s);
        if (process_.exitCode() != 0)
            damaged(lastError());
        if (!frames.isFinished())
            damaged(u"reading it ended too early"_s);
    }

private:
    [[noreturn]] static void damaged(const QString& how)
    {
        throw RunTimeError(runtime::CorruptDatabase, how);
    }

    QString lastError() const
    {
        const QString last = QString::fromUtf8(errors_).trimmed().section(u'\n', -1);
        return last.isEmpty() ? u"reading it fails"_s : last;
    }

    static constexpr qsizetype longestError = 1000;
    int longestSilence_;
    QDeadlineTimer deadline_;
    QProcess process_;
    QByteArray errors_;
};

} // namespace

void readFrom(const ReadingProcess& process, OldStoreVisitor& visitor)
{
    Reader reader(process);
    FrameReader frames(visitor);
    reader.readTo(frames);
}

void readOldStore(const QString& path, OldStoreVisitor& visitor)
{
    try {
        readFrom(
            {QCoreApplication::applicationFilePath(), {QString::fromLatin1(readingCommand), path}},
            visitor);
    } catch (const RunTimeError& error) {
        if (error.number() != runtime::CorruptDatabase)
            throw;
        throw RunTimeError(runtime::CorruptDatabase,
                           u"'%1' is damaged: %2"_s.arg(path, error.description()));
    }
}

int runReading(const QString& path)
{
    limitThisProcess(longestWork);
    QFile output;
    // The library prints warnings to the standard output, so the data goes to a separate
    // descriptor.
    const int channel = takeStandardOutput();
    if (channel < 0 || !output.open(channel, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
        return 1;
    try {
        FrameWriter writer(output);
        readOldFile(path, writer);
        return output.flush() ? 0 : 1;
    } catch (const RunTimeError& error) {
        QTextStream(stderr) << '\n' << error.description() << '\n';
        return 1;
    }
}

} // namespace storetools
