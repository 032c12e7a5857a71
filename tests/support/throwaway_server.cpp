#include "support/throwaway_server.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <csignal>
#include <grp.h>
#include <libpq-fe.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

const QString keeper = u"zomrel"_s;
constexpr int patience = 120000; // Milliseconds; enough for a busy machine.

QString binary(const QString& name)
{
    const QStringList versions =
        QDir(u"/usr/lib/postgresql"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (auto each = versions.rbegin(); each != versions.rend(); ++each) {
        const QString path = u"/usr/lib/postgresql/%1/bin/%2"_s.arg(*each, name);
        if (QFile::exists(path))
            return path;
    }
    qFatal("%s is not installed; the package postgresql-15 has it", qPrintable(name));
}

/// Returns the user that runs the server: the current one, or an unprivileged one if that is root.
const passwd* serverUser()
{
    if (geteuid() != 0)
        return nullptr;
    for (const char* name : {"postgres", "nobody"}) {
        if (const passwd* user = getpwnam(name))
            return user;
    }
    qFatal("no unprivileged user to run the server");
}

/// Returns true if the server's user may enter all folders above this one.
bool isReachable(const QString& folder)
{
    if (serverUser() == nullptr)
        return true;
    QFileInfo each(folder);
    while (!each.isRoot() && each.permission(QFile::ExeOther))
        each = QFileInfo(each.absolutePath());
    return each.isRoot();
}

QString diskFolder()
{
    return isReachable(QDir::tempPath()) ? QDir::tempPath() : u"/var/tmp"_s;
}

/// Returns a folder in memory if possible, because the database of one test has about three hundred
/// files.
QString quickFolder()
{
    constexpr qint64 roomForATestRun = qint64(1) << 30;
    const QStorageInfo memory(u"/dev/shm"_s);
    const bool isThere = memory.isValid() && memory.rootPath() == "/dev/shm"_L1 &&
                         QFileInfo(memory.rootPath()).isWritable();
    return isThere && memory.bytesAvailable() >= roomForATestRun ? memory.rootPath() : diskFolder();
}

int freePort()
{
    const int listener = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    auto* general = reinterpret_cast<sockaddr*>(&address);
    if (listener < 0 || bind(listener, general, size) != 0 ||
        getsockname(listener, general, &size) != 0)
        qFatal("no free port");
    close(listener);
    return ntohs(address.sin_port);
}

void becomeServerUser(QProcess& process, int endSignal)
{
    const passwd* user = serverUser();
    const uid_t uid = user != nullptr ? user->pw_uid : geteuid();
    const gid_t gid = user != nullptr ? user->pw_gid : getegid();
    const bool change = user != nullptr;
    process.setChildProcessModifier([uid, gid, change, endSignal] {
        if (change && (setgroups(0, nullptr) != 0 || setgid(gid) != 0 || setuid(uid) != 0))
            _exit(126);
        prctl(PR_SET_PDEATHSIG, endSignal);
    });
}

} // namespace

ThrowawayServer::ThrowawayServer(Care care, const QString& disk)
    : care_(care), folder_((!disk.isEmpty()         ? disk
                            : care == Care::Durable ? diskFolder()
                                                    : quickFolder()) +
                           u"/zomrel-server-XXXXXX"_s)
{
    if (!folder_.isValid())
        qFatal("%s", qPrintable(folder_.errorString()));
    makeCluster();
    start();
}

ThrowawayServer::~ThrowawayServer()
{
    endAtOnce();
}

void ThrowawayServer::makeCluster()
{
    if (const passwd* user = serverUser()) {
        if (chown(QFile::encodeName(folder()).constData(), user->pw_uid, user->pw_gid) != 0)
            qFatal("cannot give %s to %s", qPrintable(folder()), user->pw_name);
        QFile::setPermissions(folder(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner |
                                            QFile::ReadOther | QFile::ExeOther);
    }
    QStringList arguments{u"--pgdata="_s + folder_.filePath(u"data"_s),
                          u"--username="_s + keeper,
                          u"--auth=trust"_s,
                          u"--encoding=UTF8"_s,
                          u"--locale=C"_s,
                          u"--no-sync"_s,
                          u"--no-instructions"_s};
    if (care_ == Care::Cramped)
        arguments.append(u"--wal-segsize=1"_s);
    if (care_ != Care::Durable)
        arguments.append(u"--data-checksums"_s);
    runToEnd(binary(u"initdb"_s), arguments);
}

void ThrowawayServer::runToEnd(const QString& program, const QStringList& arguments)
{
    QProcess process;
    becomeServerUser(process, SIGKILL);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setWorkingDirectory(folder());
    process.start(program, arguments);
    if (!process.waitForFinished(patience) || process.exitCode() != 0)
        qFatal("%s: %s", qPrintable(program), process.readAll().constData());
}

void ThrowawayServer::start()
{
    if (port_ == 0)
        port_ = freePort();
    process_.setProcessChannelMode(QProcess::MergedChannels);
    process_.setStandardOutputFile(folder_.filePath(u"log"_s), QIODevice::Append);
    process_.setWorkingDirectory(folder());
    becomeServerUser(process_, SIGQUIT);
    QStringList settings{u"listen_addresses=127.0.0.1"_s};
    if (care_ == Care::Cramped)
        settings << u"wal_recycle=off"_s << u"min_wal_size=2MB"_s << u"autovacuum=off"_s;
    if (care_ != Care::Durable)
        settings << u"fsync=off"_s << u"full_page_writes=off"_s << u"wal_level=minimal"_s
                 << u"max_wal_senders=0"_s << u"shared_buffers=64MB"_s;
    if (QFile::exists(serverKey()))
        settings << u"ssl=on"_s;
    QStringList arguments{u"-D"_s, folder_.filePath(u"data"_s), u"-k"_s, folder(),
                          u"-p"_s, QString::number(port_)};
    for (const QString& each : settings)
        arguments << u"-c"_s << each;
    process_.start(binary(u"postgres"_s), arguments);
    for (int waited = 0; waited < patience; waited += 10) {
        const QString place =
            u"host='%1' port=%2 dbname=postgres user=%3"_s.arg(folder()).arg(port_).arg(keeper);
        if (PQping(place.toUtf8().constData()) == PQPING_OK)
            return;
        if (process_.waitForFinished(10)) // A server that cannot start ends immediately.
            break;
    }
    QFile log(folder_.filePath(u"log"_s));
    log.open(QIODevice::ReadOnly);
    qFatal("the server does not start: %s", log.readAll().constData());
}

/// Returns the path at which the server expects its private key.
QString ThrowawayServer::serverKey() const
{
    return folder_.filePath(u"data/server.key"_s);
}

void ThrowawayServer::endAtOnce()
{
    if (process_.state() == QProcess::NotRunning)
        return;
    ::kill(static_cast<pid_t>(process_.processId()), SIGQUIT);
    if (!process_.waitForFinished(patience))
        process_.kill();
    process_.waitForFinished();
}

QString ThrowawayServer::certify()
{
    const QString certificate = folder_.filePath(u"data/server.crt"_s);
    runToEnd(u"openssl"_s, {u"req"_s, u"-x509"_s, u"-nodes"_s, u"-newkey"_s, u"ec"_s, u"-pkeyopt"_s,
                            u"ec_paramgen_curve:prime256v1"_s, u"-subj"_s, u"/CN=throwaway"_s,
                            u"-addext"_s, u"subjectAltName=IP:127.0.0.1"_s, u"-days"_s, u"2"_s,
                            u"-keyout"_s, serverKey(), u"-out"_s, certificate});
    endAtOnce();
    start();
    return certificate;
}

dao::Link ownServer()
{
    static ThrowawayServer server;
    return {server.folder(), server.port(), {}, keeper, u"disable"_s};
}

} // namespace testsupport
