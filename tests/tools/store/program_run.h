#pragma once

#include "support/printers.h"

#include <QFile>
#include <QProcess>

#include <gtest/gtest.h>

namespace storetooltest {

using namespace Qt::StringLiterals;

struct Outcome
{
    int exitStatus = -1;
    QStringList out;
    QStringList err;         ///< The error stream without the lines that say what to do.
    QStringList advice = {}; ///< The lines of the error stream that say what to do.
};

inline QStringList lines(const QByteArray& output)
{
    QString text = QString::fromUtf8(output);
    text.remove(u'\r'); // It ends lines on Windows.
    return text.split(u'\n', Qt::SkipEmptyParts);
}

inline constexpr int programPatience = 120000; // Milliseconds; enough for a busy machine.

/// Waits for the end of a process that may have ended already.
inline bool hasEnded(QProcess& process)
{
    return process.state() == QProcess::NotRunning || process.waitForFinished(programPatience);
}

/// Returns the outcome of a process that has ended.
inline Outcome outcomeOf(QProcess& process)
{
    Outcome outcome{process.exitCode(), lines(process.readAllStandardOutput()), {}};
    for (const QString& line : lines(process.readAllStandardError())) {
        const bool isAdvice = line.startsWith(u"zomrel-store: what to do: "_s) ||
                              line.startsWith(u"zomrel-store: מה עושים: "_s);
        (isAdvice ? outcome.advice : outcome.err).append(line);
    }
    return outcome;
}

/// Returns the environment of this process with the language of the locale.
inline QProcessEnvironment environmentIn(const QString& locale)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, locale);
    for (const QString& each : {u"LANGUAGE"_s, u"LC_MESSAGES"_s, u"LANG"_s})
        environment.remove(each);
    return environment;
}

/// Runs zomrel-store as a separate process in a locale.
inline Outcome zomrelStoreIn(const QString& locale, const QStringList& arguments,
                             const QString& folder = {})
{
    QProcess process;
    process.setProcessEnvironment(environmentIn(locale));
    process.setWorkingDirectory(folder);
    process.start(QStringLiteral(ZOMREL_STORE_PROGRAM), arguments);
    if (!process.waitForFinished(programPatience))
        ADD_FAILURE() << qPrintable(process.errorString());
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return outcomeOf(process);
}

/// Runs zomrel-store as a separate process. Its messages are English on every machine.
inline Outcome zomrelStoreUnforced(const QStringList& arguments, const QString& folder = {})
{
    return zomrelStoreIn(u"C.UTF-8"_s, arguments, folder);
}

/// Returns the arguments with --force for a command that refuses a server without durable rows. The
/// servers of tests do not sync to disk.
inline QStringList forced(QStringList arguments)
{
    if (QStringList{u"check"_s, u"link"_s, u"move"_s}.contains(arguments.value(0)))
        arguments.insert(1, u"--force"_s);
    return arguments;
}

/// Runs zomrel-store as a separate process, on a server with any settings.
inline Outcome zomrelStore(const QStringList& arguments, const QString& folder = {})
{
    return zomrelStoreUnforced(forced(arguments), folder);
}

inline QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

} // namespace storetooltest
