#include "reliability/station_process.h"

#include <QDeadlineTimer>

#include <algorithm>
#include <csignal>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace reliability {

StationProcess::StationProcess(const QString& folder, const QString& scenario, const QString& name,
                               int count)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    process_.setProcessEnvironment(environment);
    process_.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process_.start(QStringLiteral(ZOMREL_STATION),
                   {folder, scenario, name, QString::number(count)});
    if (!process_.waitForStarted())
        qFatal("the station did not start");
}

StationProcess::~StationProcess()
{
    if (process_.state() != QProcess::NotRunning)
        kill();
}

void StationProcess::read()
{
    rest_ += process_.readAllStandardOutput();
    for (qsizetype end = rest_.indexOf('\n'); end >= 0; end = rest_.indexOf('\n')) {
        told_.append(QString::fromUtf8(rest_.left(end)));
        rest_.remove(0, end + 1);
    }
}

bool StationProcess::waitFor(const QString& beginning, int patience)
{
    const QDeadlineTimer deadline(patience);
    qsizetype heard = 0;
    for (;;) {
        read();
        for (; heard < told_.size(); ++heard) {
            if (told_[heard].startsWith(beginning))
                return true;
        }
        if (deadline.hasExpired() || process_.state() == QProcess::NotRunning)
            return false;
        process_.waitForReadyRead(int(deadline.remainingTime()));
    }
}

void StationProcess::listen(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!deadline.hasExpired() && process_.state() != QProcess::NotRunning)
        process_.waitForReadyRead(int(deadline.remainingTime()));
    read();
}

void StationProcess::go(const QByteArray& word)
{
    process_.write(word + '\n');
    process_.waitForBytesWritten();
}

void StationProcess::suspend()
{
    ::kill(pid_t(process_.processId()), SIGSTOP);
}

void StationProcess::resume()
{
    ::kill(pid_t(process_.processId()), SIGCONT);
}

void StationProcess::kill()
{
    process_.kill();
    process_.waitForFinished();
    read();
}

int StationProcess::exitStatus(int patience)
{
    const bool ended =
        process_.state() == QProcess::NotRunning || process_.waitForFinished(patience);
    read();
    return ended && process_.exitStatus() == QProcess::NormalExit ? process_.exitCode() : -1;
}

QStringList StationProcess::takeTold()
{
    read();
    return std::exchange(told_, {});
}

QString StationProcess::errors()
{
    errors_ += process_.readAllStandardError();
    return QString::fromUtf8(errors_);
}

QStringList StationProcess::runTimeBoxes()
{
    return errors().split(u'\n').filter(u"Run-time error '"_s);
}

} // namespace reliability
