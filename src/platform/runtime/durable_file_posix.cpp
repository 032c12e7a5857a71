#include "platform/runtime/durable_file.h"

#include "platform/runtime/run_time_error.h"

#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>
#ifdef Q_OS_LINUX
#include <sys/xattr.h>
#endif

namespace runtime {

using namespace Qt::StringLiterals;

namespace {

constexpr mode_t groupBits = S_IRWXG;
constexpr mode_t allBits = S_IRWXU | S_IRWXG | S_IRWXO;
constexpr auto accessList = "system.posix_acl_access";

QByteArray native(const QString& path)
{
    return QFile::encodeName(path);
}

[[noreturn]] void raise(const QString& path, int error)
{
    const QString reason = QString::fromLocal8Bit(std::generic_category().message(error).c_str());
    int number = DiskOrNetworkError;
    if (error == ENOSPC || error == EDQUOT)
        number = DiskFull;
    else if (error == EACCES || error == EPERM || error == EROFS || error == ENOENT ||
             error == ENOTDIR || error == EISDIR || error == ELOOP)
        number = PermissionDenied;
    else if (error == EEXIST)
        throw RunTimeError(DatabaseExists, u"Database '%1' already exists."_s.arg(path));
    throw RunTimeError(number, u"Could not write '%1': %2"_s.arg(path, reason));
}

/// Owns an open file descriptor.
class Descriptor
{
public:
    Descriptor(const QString& path, int flags) : number_(open(native(path).constData(), flags)) {}
    ~Descriptor()
    {
        if (number_ >= 0)
            close(number_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int number() const { return number_; }
    int release() { return std::exchange(number_, -1); }

private:
    int number_;
};

/// Returns true if the file with this path is still the file that is open.
bool names(const QString& path, int descriptor)
{
    struct stat opened = {};
    struct stat named = {};
    return fstat(descriptor, &opened) == 0 && lstat(native(path).constData(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Renames a file unless the new name exists. Returns 0 or the system's error number. Some file
/// systems can neither rename without replacing nor give a file a second name. On such a file
/// system, a file that another process creates under the new name during the call may be replaced.
int renameToFreeName(const QByteArray& from, const QByteArray& to)
{
#ifdef RENAME_NOREPLACE
    if (renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
#endif
    if (link(from.constData(), to.constData()) == 0)
        return unlink(from.constData()) == 0 ? 0 : errno;
    if (errno == EEXIST)
        return EEXIST;
    struct stat named = {};
    if (lstat(to.constData(), &named) == 0)
        return EEXIST;
    return rename(from.constData(), to.constData()) == 0 ? 0 : errno;
}

mode_t modeFor(Readers readers)
{
    return readers == Readers::OnlyOwner ? S_IRUSR | S_IWUSR : allBits & ~0111U;
}

mode_t forbiddenBits()
{
    const mode_t mask = umask(S_IRWXG | S_IRWXO);
    umask(mask);
    return mask;
}

/// Sets the group of the file. Returns true if the file has this group afterwards.
bool setGroup(int descriptor, gid_t group)
{
    struct stat status = {};
    if (fstat(descriptor, &status) == 0 && status.st_gid == group)
        return true;
    return fchown(descriptor, static_cast<uid_t>(-1), group) == 0;
}

/// Returns the mode with the group's permissions reduced to those that everybody has.
mode_t withoutGroup(mode_t mode)
{
    return (mode & ~groupBits) | (mode & groupBits & ((mode & S_IRWXO) << 3U));
}

QByteArray accessListOf(const QString& path)
{
#ifdef Q_OS_LINUX
    const ssize_t size = getxattr(native(path).constData(), accessList, nullptr, 0);
    if (size <= 0)
        return {};
    QByteArray list(size, '\0');
    const ssize_t read = getxattr(native(path).constData(), accessList, list.data(), size_t(size));
    return read == size ? list : QByteArray();
#else
    return {};
#endif
}

/// Gives the file the access control list, or none if the list is empty. Returns false if the list
/// could not be set.
bool setAccessList(int descriptor, const QByteArray& list)
{
#ifdef Q_OS_LINUX
    if (!list.isEmpty())
        return fsetxattr(descriptor, accessList, list.constData(), size_t(list.size()), 0) == 0;
    fremovexattr(descriptor, accessList);
#endif
    return true;
}

} // namespace

QString followLinks(const QString& path)
{
    constexpr int mostLinks = 40;
    QString place = path;
    for (int followed = 0; followed < mostLinks; ++followed) {
        const QFileInfo info(place);
        if (!info.isSymLink())
            return place;
        place = info.symLinkTarget();
    }
    raise(path, ELOOP);
}

void syncFolder(const QString& folder)
{
    const Descriptor opened(folder, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (opened.number() < 0) {
        // A folder without read permission cannot be opened for fsync, so the function syncs all
        // file systems.
        sync();
        return;
    }
    // The errors EINVAL and ENOTSUP are ignored, because some network file systems write a folder
    // immediately and have no fsync for folders.
    if (fsync(opened.number()) != 0 && errno != EINVAL && errno != ENOTSUP)
        raise(folder, errno);
}

void syncFile(QFile& file, const QString& path)
{
    if (!file.flush() || fsync(file.handle()) != 0)
        raise(path, errno);
}

void replaceFile(const QString& path, const QString& newPath)
{
    if (rename(native(path).constData(), native(newPath).constData()) != 0)
        raise(newPath, errno);
}

void durableRename(QFile& file, const QString& path, const QString& newPath, Existing existing)
{
    syncFile(file, path);
    const QByteArray from = native(path);
    const QByteArray to = native(newPath);
    int error = 0;
    if (existing == Existing::Refuse)
        error = renameToFreeName(from, to);
    else if (rename(from.constData(), to.constData()) != 0)
        error = errno;
    if (error != 0)
        raise(newPath, error);
    syncFolder(QFileInfo(newPath).absolutePath());
}

Linked durableLink(const QString& path, const QString& secondName)
{
    if (link(native(path).constData(), native(secondName).constData()) != 0)
        return errno == EEXIST ? Linked::NameExists : Linked::NotPermitted;
    syncFolder(QFileInfo(secondName).absolutePath());
    return Linked::Done;
}

void durableMove(const QString& path, const QString& newPath)
{
    if (const int error = renameToFreeName(native(path), native(newPath)))
        raise(newPath, error);
    syncFolder(QFileInfo(newPath).absolutePath());
}

bool createUnnamedFile(QFile& file, const QString& folder, Readers readers)
{
#ifdef O_TMPFILE
    if (access("/proc/self/fd", X_OK) != 0) // nameFile needs it.
        return false;
    const int descriptor =
        open(native(folder).constData(), O_RDWR | O_TMPFILE | O_CLOEXEC, modeFor(readers));
    if (descriptor < 0)
        return false;
    flock(descriptor, LOCK_EX | LOCK_NB); // The mark of createFile, for the time after nameFile.
    if (!file.open(descriptor, QIODevice::ReadWrite, QFileDevice::AutoCloseHandle))
        raise(folder, EIO);
    return true;
#else
    return false;
#endif
}

bool nameFile(QFile& file, const QString& path)
{
#ifdef O_TMPFILE
    const QByteArray opened = "/proc/self/fd/" + QByteArray::number(file.handle());
    if (linkat(AT_FDCWD, opened.constData(), AT_FDCWD, native(path).constData(),
               AT_SYMLINK_FOLLOW) == 0)
        return true;
    if (errno == EEXIST)
        return false;
    raise(path, errno);
#else
    raise(path, ENOTSUP);
#endif
}

bool createFile(QFile& file, const QString& path, Readers readers)
{
    // With O_EXCL a symbolic link counts as an existing file.
    const int descriptor =
        open(native(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
             modeFor(readers));
    if (descriptor < 0 && errno == EEXIST)
        return false;
    if (descriptor < 0)
        raise(path, errno);
    // A file system without locks cannot mark the file as used, so removeIfLeft later does not
    // remove the file.
    const bool marked = flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    struct stat status = {};
    const bool isRemoved = fstat(descriptor, &status) != 0 || status.st_nlink == 0;
    if (!marked || isRemoved) {
        close(descriptor);
        return false;
    }
    if (!file.open(descriptor, QIODevice::ReadWrite, QFileDevice::AutoCloseHandle))
        raise(path, EIO);
    return true;
}

bool openForReading(QFile& file, const QString& path)
{
    const int descriptor = open(native(path).constData(), O_RDONLY | O_CLOEXEC);
    return descriptor >= 0 &&
           file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle);
}

bool createFolder(const QString& path)
{
    if (mkdir(native(path).constData(), S_IRWXU) == 0)
        return true;
    if (errno != EEXIST)
        raise(path, errno);
    return false;
}

bool mayReadFolder(const QString& folder)
{
    return faccessat(AT_FDCWD, native(folder).constData(), R_OK | X_OK, AT_EACCESS) == 0;
}

bool mayWriteInFolder(const QString& folder)
{
    return faccessat(AT_FDCWD, native(folder).constData(), W_OK | X_OK, AT_EACCESS) == 0;
}

FolderMark::FolderMark(const QString& folder) : folder_(folder), descriptor_(-1)
{
    Descriptor opened(folder, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (opened.number() < 0)
        return;
    const bool marked = flock(opened.number(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
    if (marked && names(folder, opened.number()))
        descriptor_ = opened.release();
}

void FolderMark::release()
{
    if (isValid())
        close(int(std::exchange(descriptor_, -1)));
}

FolderMark::~FolderMark()
{
    release();
}

void FolderMark::removeFolder()
{
    QDir(folder_).removeRecursively();
    release();
}

void removeIfLeft(const QString& path)
{
    const bool isFolder = QFileInfo(path).isDir();
    // On a network file system, flock can lock a file only if it is open for writing, so a file is
    // opened with O_RDWR.
    const int how = isFolder ? O_RDONLY | O_DIRECTORY : O_RDWR;
    const Descriptor opened(path, how | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    struct stat status = {};
    if (opened.number() < 0 || fstat(opened.number(), &status) != 0)
        return;
    const bool isOwn = status.st_uid == geteuid() || geteuid() == 0;
    if (!isOwn || flock(opened.number(), LOCK_EX | LOCK_NB) != 0 || !names(path, opened.number()))
        return;
    if (isFolder)
        QDir(path).removeRecursively();
    else if (S_ISREG(status.st_mode))
        unlink(native(path).constData());
}

FileAccess accessOf(const QString& path)
{
    struct stat status = {};
    if (stat(native(path).constData(), &status) != 0)
        raise(path, errno);
    return {status.st_uid, status.st_gid, status.st_mode & allBits, accessListOf(path)};
}

bool keepAccess(QFile& file, const FileAccess& access)
{
    const bool hasGroup = setGroup(file.handle(), access.group);
    struct stat status = {};
    const bool hasOwner =
        fstat(file.handle(), &status) == 0 &&
        (status.st_uid == access.owner || fchown(file.handle(), access.owner, gid_t(-1)) == 0);
    // The group bits of the mode limit the entries of the access control list. If the new file does
    // not get the same group and list, these bits could give a group too many rights. They are
    // therefore reduced to the rights that everybody has.
    const bool isSame = hasGroup && setAccessList(file.handle(), access.list);
    if (!isSame)
        setAccessList(file.handle(), {});
    const mode_t mode = isSame ? access.mode : withoutGroup(access.mode);
    return fchmod(file.handle(), mode) == 0 && isSame && hasOwner;
}

void limitAccess(QFile& file, const FileAccess& source)
{
    const bool hasGroup = source.list.isEmpty() && setGroup(file.handle(), source.group);
    const mode_t mode = hasGroup ? source.mode : withoutGroup(source.mode);
    setAccessList(file.handle(), {});
    fchmod(file.handle(), mode & ~forbiddenBits() & ~0111U);
}

} // namespace runtime
