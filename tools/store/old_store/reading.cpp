#include "tools/store/old_store/reading.h"

#include "tools/store/advice.h"
#include "tools/store/old_store/frames.h"
#include "tools/store/old_store/old_file.h"
#include "tools/store/system.h"
#include "tools/store/told_error.h"
#include "tools/store/words.h"

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

/// The limit of the reading process's CPU time in seconds. Reading the largest possible old file
/// takes less.
constexpr int longestWork = 300;

/// Owns the process that reads an old store. The destructor kills the process.
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
        // Names are read as ISO-8859-1, because this encoding converts each byte separately. The
        // library mdbtools does not reset its character conversion between two names. In another
        // encoding, the last letter of a Hebrew name would therefore change the next name.
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

    /// Passes the output of the reading process to the parser `frames`. Throws CorruptDatabase
    /// (3049) if the process hangs, crashes, fails or ends before the end of the data.
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
            damaged(say({u"reading it takes too long", u"הקריאה שלו נמשכת יותר מדי זמן"}));
        if (process_.exitStatus() != QProcess::NormalExit)
            damaged(say({u"reading it was interrupted", u"הקריאה שלו נקטעה"}));
        if (process_.exitCode() != 0)
            damaged(lastError());
        if (!frames.isFinished())
            damaged(say({u"reading it ended too early", u"הקריאה שלו נגמרה מוקדם מדי"}));
    }

private:
    [[noreturn]] static void damaged(const QString& how)
    {
        throw ToldError(runtime::CorruptDatabase, how);
    }

    QString lastError() const
    {
        const QString last = QString::fromUtf8(errors_).trimmed().section(u'\n', -1);
        return last.isEmpty() ? say({u"reading it fails", u"הקריאה שלו נכשלת"}) : last;
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
        throw ToldError(
            runtime::CorruptDatabase,
            say({u"'%1' is damaged: %2", u"הקובץ '%1' פגום: %2"}, path, Phrase{happened(error)}),
            say({u"Copy the file again from its place, or import an older copy of it.",
                 u"העתק את הקובץ שוב מהמקום שלו, או ייבא עותק ישן יותר שלו."}));
    }
}

int runReading(const QString& path)
{
    limitThisProcess(longestWork);
    QFile output;
    // The library mdbtools prints warnings to the standard output, so the data is written to a
    // separate descriptor.
    const int channel = takeStandardOutput();
    if (channel < 0 || !output.open(channel, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle))
        return 1;
    try {
        FrameWriter writer(output);
        readOldFile(path, writer);
        return output.flush() ? 0 : 1;
    } catch (const RunTimeError& error) {
        QTextStream(stderr) << '\n' << happened(error) << '\n';
        return 1;
    }
}

} // namespace storetools
