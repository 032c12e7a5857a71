// System calls of the whole process. The dynamic linker prefers these definitions of the executable
// to those of the C library, for Qt, SQLite and the C++ library too. Each one counts the call, may
// let it fail, passes it on, and records it if it succeeded in the recorded folder.

#include "crash/recorder.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

using crash::InsideVfs;
using crash::Recorder;
using crash::Request;

namespace {

template <typename Function>
Function next(Function, const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// Calls the C library's definition of the function in which this stands.
#define NEXT(function)                                                                             \
    ([] {                                                                                          \
        static const auto found = next(&function, #function);                                      \
        return found;                                                                              \
    }())

constexpr std::size_t mostDescriptors = 4096;

/// The open files that lie in the watched folder.
std::array<bool, mostDescriptors> isWatched;

bool watches(int descriptor)
{
    return descriptor >= 0 && static_cast<std::size_t>(descriptor) < mostDescriptors &&
           isWatched.at(static_cast<std::size_t>(descriptor));
}

void watch(int descriptor, bool watched)
{
    if (descriptor >= 0 && static_cast<std::size_t>(descriptor) < mostDescriptors)
        isWatched.at(static_cast<std::size_t>(descriptor)) = watched;
}

bool records()
{
    return Recorder::instance().isRecording() && !InsideVfs::isActive();
}

/// Returns the name under which a file was opened.
std::string nameOf(int descriptor)
{
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    std::array<char, PATH_MAX> name{};
    const ssize_t size = readlink(link.c_str(), name.data(), name.size());
    return {name.data(), static_cast<std::size_t>(size > 0 ? size : 0)};
}

/// Returns the path relative to the watched folder, or nothing for another path.
std::optional<std::string> inside(int folder, const char* path)
{
    if (path == nullptr || folder == AT_FDCWD || *path == '/')
        return Recorder::instance().inside(path == nullptr ? "" : path);
    return Recorder::instance().inside(nameOf(folder) + '/' + path);
}

/// Returns true if the call has to fail, and sets errno.
bool fails(Request request)
{
    const int error = Recorder::instance().errorFor(request);
    if (error != 0)
        errno = error;
    return error != 0;
}

bool hasMode(int flags)
{
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

struct stat statusOf(int descriptor)
{
    struct stat status = {};
    fstat(descriptor, &status);
    return status;
}

struct stat statusOf(int folder, const char* path)
{
    struct stat status = {};
    fstatat(folder, path, &status, AT_SYMLINK_NOFOLLOW);
    return status;
}

template <typename Call>
int openFile(int folder, const char* path, int flags, const Call& call)
{
    const auto name = inside(folder, path);
    if (name && fails(Request::Open))
        return -1;
    const bool isNew = name && statusOf(folder, path).st_ino == 0;
    const off_t size = name ? statusOf(folder, path).st_size : 0;
    const int descriptor = call();
    watch(descriptor, name.has_value());
    if (!name || descriptor < 0 || !records() || !S_ISREG(statusOf(descriptor).st_mode))
        return descriptor;
    const struct stat status = statusOf(descriptor);
    if (isNew)
        Recorder::instance().addNewFile(*name, status);
    else if ((flags & O_TRUNC) != 0 && size > 0)
        Recorder::instance().addResize(status, 0);
    return descriptor;
}

template <typename Call>
ssize_t writeFile(int descriptor, const void* bytes, std::int64_t position, const Call& call)
{
    if (!watches(descriptor))
        return call();
    if (fails(Request::Write))
        return -1;
    const ssize_t written = call();
    if (written > 0 && records())
        Recorder::instance().addWrite(statusOf(descriptor), position, bytes,
                                      static_cast<std::size_t>(written));
    return written;
}

/// Returns where a write without a position begins.
off_t placeIn(int descriptor)
{
    if (!watches(descriptor))
        return 0;
    const bool appends = (fcntl(descriptor, F_GETFL) & O_APPEND) != 0;
    return appends ? statusOf(descriptor).st_size : lseek(descriptor, 0, SEEK_CUR);
}

template <typename Call>
int resizeFile(int descriptor, std::int64_t size, const Call& call)
{
    if (watches(descriptor) && fails(Request::Resize))
        return -1;
    const int result = call();
    if (result == 0 && watches(descriptor) && records())
        Recorder::instance().addResize(statusOf(descriptor), size);
    return result;
}

/// Folders are recorded for the recording VFS too, which does not see them.
template <typename Call>
int syncFile(int descriptor, const Call& call)
{
    if (!watches(descriptor))
        return call();
    if (fails(Request::Sync))
        return -1;
    const int result = call();
    const struct stat status = statusOf(descriptor);
    if (result == 0 && S_ISDIR(status.st_mode)) {
        if (const auto name = Recorder::instance().inside(nameOf(descriptor)))
            Recorder::instance().addFolderSync(*name == "." ? std::string() : *name);
    } else if (result == 0 && records()) {
        Recorder::instance().addSync(status);
    }
    return result;
}

template <typename Call>
int renameFile(int fromFolder, const char* from, int toFolder, const char* to, const Call& call)
{
    const auto fromName = inside(fromFolder, from);
    const auto toName = inside(toFolder, to);
    if ((fromName || toName) && fails(Request::Rename))
        return -1;
    const int result = call();
    if (result == 0 && records() && fromName && toName)
        Recorder::instance().addRename(*fromName, *toName);
    return result;
}

template <typename Call>
int linkFile(int folder, const char* to, const Call& call)
{
    const auto name = inside(folder, to);
    if (name && fails(Request::Rename))
        return -1;
    const int result = call();
    if (result == 0 && records() && name)
        Recorder::instance().addEntry(*name, statusOf(folder, to));
    return result;
}

template <typename Call>
int removeFile(int folder, const char* path, const Call& call)
{
    const auto name = inside(folder, path);
    if (name && fails(Request::Remove))
        return -1;
    const int result = call();
    if (result == 0 && records() && name)
        Recorder::instance().addRemoval(*name);
    return result;
}

template <typename Call>
int lockFile(int descriptor, int command, void* argument, const Call& call)
{
    const bool locks = command == F_SETLK || command == F_SETLKW || command == F_OFD_SETLK;
    if (locks && watches(descriptor) && static_cast<struct flock*>(argument)->l_type != F_UNLCK &&
        fails(Request::Lock))
        return -1;
    return call();
}

} // namespace

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = hasMode(flags) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openFile(AT_FDCWD, path, flags, [&] { return NEXT(open)(path, flags, mode); });
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = hasMode(flags) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openFile(AT_FDCWD, path, flags, [&] { return NEXT(open64)(path, flags, mode); });
}

int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = hasMode(flags) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openFile(folder, path, flags, [&] { return NEXT(openat)(folder, path, flags, mode); });
}

int openat64(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = hasMode(flags) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return openFile(folder, path, flags, [&] { return NEXT(openat64)(folder, path, flags, mode); });
}

int close(int descriptor)
{
    watch(descriptor, false);
    return NEXT(close)(descriptor);
}

ssize_t write(int descriptor, const void* bytes, size_t size)
{
    return writeFile(descriptor, bytes, placeIn(descriptor),
                     [&] { return NEXT(write)(descriptor, bytes, size); });
}

ssize_t writev(int descriptor, const struct iovec* parts, int count)
{
    if (!watches(descriptor))
        return NEXT(writev)(descriptor, parts, count);
    ssize_t all = 0;
    for (const struct iovec* part = parts; part != parts + count; ++part) {
        const ssize_t written = write(descriptor, part->iov_base, part->iov_len);
        if (written < 0)
            return all > 0 ? all : written;
        all += written;
    }
    return all;
}

ssize_t pwrite(int descriptor, const void* bytes, size_t size, off_t position)
{
    return writeFile(descriptor, bytes, position,
                     [&] { return NEXT(pwrite)(descriptor, bytes, size, position); });
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t size, off64_t position)
{
    return writeFile(descriptor, bytes, position,
                     [&] { return NEXT(pwrite64)(descriptor, bytes, size, position); });
}

// Callers that copy with one call fall back to reading and writing.
ssize_t sendfile(int to, int from, off_t* position, size_t size) noexcept
{
    if (!watches(to))
        return NEXT(sendfile)(to, from, position, size);
    errno = EINVAL;
    return -1;
}

int ftruncate(int descriptor, off_t size) noexcept
{
    return resizeFile(descriptor, size, [&] { return NEXT(ftruncate)(descriptor, size); });
}

int ftruncate64(int descriptor, off64_t size) noexcept
{
    return resizeFile(descriptor, size, [&] { return NEXT(ftruncate64)(descriptor, size); });
}

int fsync(int descriptor)
{
    return syncFile(descriptor, [&] { return NEXT(fsync)(descriptor); });
}

int fdatasync(int descriptor)
{
    return syncFile(descriptor, [&] { return NEXT(fdatasync)(descriptor); });
}

int rename(const char* from, const char* to) noexcept
{
    return renameFile(AT_FDCWD, from, AT_FDCWD, to, [&] { return NEXT(rename)(from, to); });
}

int renameat(int fromFolder, const char* from, int toFolder, const char* to) noexcept
{
    return renameFile(fromFolder, from, toFolder, to,
                      [&] { return NEXT(renameat)(fromFolder, from, toFolder, to); });
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
              unsigned flags) noexcept
{
    return renameFile(fromFolder, from, toFolder, to,
                      [&] { return NEXT(renameat2)(fromFolder, from, toFolder, to, flags); });
}

int link(const char* from, const char* to) noexcept
{
    return linkFile(AT_FDCWD, to, [&] { return NEXT(link)(from, to); });
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) noexcept
{
    return linkFile(toFolder, to,
                    [&] { return NEXT(linkat)(fromFolder, from, toFolder, to, flags); });
}

int unlink(const char* path) noexcept
{
    return removeFile(AT_FDCWD, path, [&] { return NEXT(unlink)(path); });
}

int unlinkat(int folder, const char* path, int flags) noexcept
{
    return removeFile(folder, path, [&] { return NEXT(unlinkat)(folder, path, flags); });
}

int remove(const char* path) noexcept
{
    return removeFile(AT_FDCWD, path, [&] { return NEXT(remove)(path); });
}

int rmdir(const char* path) noexcept
{
    return removeFile(AT_FDCWD, path, [&] { return NEXT(rmdir)(path); });
}

int mkdir(const char* path, mode_t mode) noexcept
{
    const auto name = inside(AT_FDCWD, path);
    if (name && fails(Request::Open))
        return -1;
    const int result = NEXT(mkdir)(path, mode);
    if (result == 0 && records() && name)
        Recorder::instance().addFolder(*name);
    return result;
}

int fcntl(int descriptor, int command, ...)
{
    va_list arguments;
    va_start(arguments, command);
    auto* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return lockFile(descriptor, command, argument,
                    [&] { return NEXT(fcntl)(descriptor, command, argument); });
}

int fcntl64(int descriptor, int command, ...)
{
    va_list arguments;
    va_start(arguments, command);
    auto* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return lockFile(descriptor, command, argument,
                    [&] { return NEXT(fcntl64)(descriptor, command, argument); });
}

} // extern "C"
