#include "platform/dao/sqlite/sqlite_presence.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace dao::sqlite {

using namespace Qt::StringLiterals;

namespace {

#ifdef F_OFD_SETLK
/// The byte that shows the presence of a process. It is in the page that SQLite reserves for its
/// own locks, behind the bytes that SQLite locks.
constexpr off_t presenceByte = 0x40000000 + 1024;

struct flock lockOf(short type)
{
    struct flock lock = {};
    lock.l_type = type;
    lock.l_whence = SEEK_SET;
    lock.l_start = presenceByte;
    lock.l_len = 1;
    return lock;
}

int opened(const QString& path)
{
    return ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
}

bool isAnybodyPresent(const QString& path)
{
    const int descriptor = opened(path);
    if (descriptor < 0)
        return false;
    struct flock lock = lockOf(F_WRLCK);
    const bool isKnown = ::fcntl(descriptor, F_OFD_GETLK, &lock) == 0;
    ::close(descriptor);
    return isKnown && lock.l_type != F_UNLCK;
}

bool hasOpen(const QString& process, const QString& fileIdentity)
{
    const QDir descriptors(u"/proc/%1/fd"_s.arg(process));
    const QStringList all =
        descriptors.entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot);
    return std::any_of(all.begin(), all.end(), [&](const QString& each) {
        return fileIdentityOf(descriptors.filePath(each)) == fileIdentity;
    });
}

QString nameOf(const QString& process)
{
    QFile file(u"/proc/%1/comm"_s.arg(process));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}
#endif

} // namespace

QString fileIdentityOf(const QString& path)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) == 0)
        return u"%1:%2"_s.arg(status.st_dev).arg(status.st_ino);
    return {};
}

#ifdef F_OFD_SETLK

Presence::Presence(const QString& path) : descriptor_(opened(path))
{
    if (descriptor_ < 0)
        return;
    struct flock lock = lockOf(F_RDLCK);
    ::fcntl(int(descriptor_), F_OFD_SETLK, &lock);
}

Presence::~Presence()
{
    if (descriptor_ >= 0)
        ::close(int(descriptor_));
}

QStringList processesPresentAt(const QString& path)
{
    if (!isAnybodyPresent(path))
        return {};
    const QString fileIdentity = fileIdentityOf(path);
    QStringList found;
    for (const QString& each : QDir(u"/proc"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (each.toLongLong() > 0 && each.toLongLong() != QCoreApplication::applicationPid() &&
            hasOpen(each, fileIdentity))
            found.append(u"process %1 (%2) on this computer"_s.arg(each, nameOf(each)));
    }
    if (found.isEmpty())
        found.append(u"a program on another computer or of another user"_s);
    return found;
}

#else

// A system without the fcntl command F_OFD_SETLK has no suitable lock on the store file, so these
// functions do nothing there. The program then does not notice that other stations use the store.
Presence::Presence(const QString&) {}

Presence::~Presence() = default;

QStringList processesPresentAt(const QString&)
{
    return {};
}

#endif

} // namespace dao::sqlite
