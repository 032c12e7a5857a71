// The database server of a whole test run. "serve_tests begin FILE" starts it and writes its folder
// and port to the file. "serve_tests end FILE" stops it. It stops by itself after the test run has
// ended.

#include "support/plain_environment.h"
#include "support/throwaway_server.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSaveFile>
#include <QThread>
#include <QTimer>

#include <cerrno>
#include <csignal>
#include <sys/prctl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 250000; // Milliseconds; enough for a busy machine.
constexpr int step = 20;         // Milliseconds.

bool waitFor(const std::function<bool()>& condition)
{
    const QDeadlineTimer deadline(patience);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        QThread::msleep(step);
    }
    return true;
}

int begin(const QString& place)
{
    QFile::remove(place);
    QDir().mkpath(QFileInfo(place).absolutePath());
    QProcess server;
    server.setProgram(QCoreApplication::applicationFilePath());
    server.setArguments({u"serve"_s, place, QString::number(getppid())});
    server.setStandardInputFile(QProcess::nullDevice());
    server.setStandardOutputFile(QProcess::nullDevice());
    server.setStandardErrorFile(place + u".log"_s);
    if (!server.startDetached() || !waitFor([&] { return QFile::exists(place); })) {
        QFile log(place + u".log"_s);
        log.open(QIODevice::ReadOnly);
        qFatal("the server did not start: %s", log.readAll().constData());
    }
    return 0;
}

int end(const QString& place)
{
    QFile::remove(place);
    return waitFor([&] { return !QFile::exists(place + u".running"_s); }) ? 0 : 1;
}

/// Runs the server until its place file is deleted or the test run has ended.
int serve(const QString& place, pid_t testRun)
{
    const testsupport::ThrowawayServer server;
    QFile running(place + u".running"_s);
    running.open(QIODevice::WriteOnly);
    QSaveFile file(place);
    file.open(QIODevice::WriteOnly);
    file.write(u"%1\n%2\n"_s.arg(server.folder()).arg(server.port()).toUtf8());
    if (!file.commit())
        return 1;
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        const bool gone = ::kill(testRun, 0) != 0 && errno == ESRCH;
        if (gone || !QFile::exists(place))
            QCoreApplication::quit();
    });
    look.start(step * 5);
    const int status = QCoreApplication::exec();
    running.remove();
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    testsupport::setPlainEnvironment();
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments[1] == u"begin"_s)
        return begin(arguments[2]);
    if (arguments.size() == 3 && arguments[1] == u"end"_s)
        return end(arguments[2]);
    if (arguments.size() == 4 && arguments[1] == u"serve"_s)
        return serve(arguments[2], arguments[3].toInt());
    return 2;
}
