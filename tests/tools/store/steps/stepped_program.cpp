#include "tools/store/steps/stepped_program.h"

#include <QDeadlineTimer>

namespace storetooltest {

SteppedProgram::SteppedProgram(const QStringList& arguments, const Interruption& interruption)
{
    QProcessEnvironment environment = environmentIn(u"C.UTF-8"_s);
    environment.insert(u"LD_PRELOAD"_s, QStringLiteral(ZOMREL_STEP_HOOK));
    // AddressSanitizer would refuse a library that is loaded before its own.
    environment.insert(u"ASAN_OPTIONS"_s,
                       environment.value(u"ASAN_OPTIONS"_s) + u":verify_asan_link_order=0"_s);
    environment.insert(u"ZOMREL_STEP_FOLDER"_s, interruption.folder);
    environment.insert(u"ZOMREL_STEP"_s, QString::number(interruption.step));
    environment.insert(u"ZOMREL_STEP_SIGNAL"_s, QString::number(interruption.signal));
    environment.insert(u"ZOMREL_STEP_LOG"_s, interruption.log);
    if (interruption.noHardLinks)
        environment.insert(u"ZOMREL_STEP_FORBID"_s, u"link"_s);
    if (!interruption.temporaryFolder.isEmpty())
        environment.insert(u"TMPDIR"_s, interruption.temporaryFolder);
    process_.setProcessEnvironment(environment);
    process_.start(QStringLiteral(ZOMREL_STORE_PROGRAM), arguments);
    EXPECT_TRUE(process_.waitForStarted(programPatience)) << qPrintable(process_.errorString());
}

bool SteppedProgram::waitUntilStopped()
{
    const QDeadlineTimer deadline(programPatience);
    while (isRunning() && !deadline.hasExpired()) {
        QFile status(u"/proc/%1/stat"_s.arg(process_.processId()));
        if (!status.open(QIODevice::ReadOnly))
            continue;
        // The state follows the program's name, which is in parentheses.
        const QByteArray text = status.readAll();
        if (text.mid(text.lastIndexOf(')') + 2, 1) == "T")
            return true;
    }
    EXPECT_FALSE(deadline.hasExpired()) << "the program neither stops nor ends";
    return false;
}

void SteppedProgram::resume()
{
    ::kill(static_cast<pid_t>(process_.processId()), SIGCONT);
}

bool SteppedProgram::isRunning()
{
    return process_.state() != QProcess::NotRunning && !process_.waitForFinished(1);
}

bool SteppedProgram::wasKilled()
{
    EXPECT_TRUE(hasEnded(process_));
    return process_.exitStatus() == QProcess::CrashExit;
}

Outcome SteppedProgram::outcome()
{
    EXPECT_TRUE(hasEnded(process_));
    EXPECT_EQ(process_.exitStatus(), QProcess::NormalExit);
    return outcomeOf(process_);
}

} // namespace storetooltest
