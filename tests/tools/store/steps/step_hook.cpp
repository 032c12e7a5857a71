// A library for LD_PRELOAD that stops or kills a process exactly before one of its changes to a
// folder. It counts the calls that change files below ZOMREL_STEP_FOLDER. With the folder "server"
// it counts the messages to a server instead. Writes to intermediate files are not counted, because
// there are many and nothing depends on them.
//
//     ZOMREL_STEP=n             the call before which the signal is sent, from 1
//     ZOMREL_STEP_SIGNAL=number the signal
//     ZOMREL_STEP_LOG=file      gets a line with the name of each counted call
//     ZOMREL_STEP_FORBID=link   link() fails, as on a file system without hard links

#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

const char* setting(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

bool isBelowFolder(const std::string& path)
{
    const std::string folder = setting("ZOMREL_STEP_FOLDER");
    return !folder.empty() && path.compare(0, folder.size() + 1, folder + '/') == 0;
}

std::string pathOf(int descriptor)
{
    char buffer[PATH_MAX];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), buffer, sizeof buffer);
    return length > 0 ? std::string(buffer, static_cast<std::size_t>(length)) : std::string();
}

std::string pathAt(int folder, const char* path)
{
    if (path[0] == '/')
        return path;
    char buffer[PATH_MAX];
    const std::string start = folder == AT_FDCWD ? getcwd(buffer, sizeof buffer) : pathOf(folder);
    return start + '/' + path;
}

void log(const char* call, const std::string& path)
{
    const char* file = setting("ZOMREL_STEP_LOG");
    if (*file == '\0')
        return;
    const std::string line = std::string(call) + ' ' + path + '\n';
    const long descriptor =
        syscall(SYS_openat, AT_FDCWD, file, O_WRONLY | O_CREAT | O_APPEND, 0600);
    if (descriptor < 0 || syscall(SYS_write, descriptor, line.data(), line.size()) < 0)
        std::abort();
    syscall(SYS_close, descriptor);
}

/// To be called before each call that changes the path.
void step(const char* call, const std::string& path)
{
    static std::atomic<int> steps = 0;
    if (!isBelowFolder(path))
        return;
    log(call, path);
    if (++steps == std::atoi(setting("ZOMREL_STEP")))
        kill(getpid(), std::atoi(setting("ZOMREL_STEP_SIGNAL")));
}

void stepOfWriting(int descriptor)
{
    const std::string path = pathOf(descriptor);
    if (path.find("/zomrel-store-") == std::string::npos)
        step("write", path);
}

bool isForbidden(const char* call)
{
    if (std::strcmp(setting("ZOMREL_STEP_FORBID"), call) != 0)
        return false;
    errno = EPERM;
    return true;
}

template <typename Function>
Function* original(Function*, const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool writes(int flags)
{
    return (flags & (O_CREAT | O_TRUNC)) != 0;
}

} // namespace

// NOLINTBEGIN: The names and parameters are those of the C library.
#define ORIGINAL(name) original(&name, #name)

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (writes(flags))
        step("open", pathAt(AT_FDCWD, path));
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if (writes(flags))
        step("open", pathAt(AT_FDCWD, path));
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

ssize_t write(int descriptor, const void* bytes, size_t size)
{
    stepOfWriting(descriptor);
    return ORIGINAL(write)(descriptor, bytes, size);
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t size, off64_t place)
{
    stepOfWriting(descriptor);
    return ORIGINAL(pwrite64)(descriptor, bytes, size, place);
}

int ftruncate64(int descriptor, off64_t size)
{
    step("truncate", pathOf(descriptor));
    return ORIGINAL(ftruncate64)(descriptor, size);
}

ssize_t send(int descriptor, const void* bytes, size_t size, int flags)
{
    step("send", "server/");
    return ORIGINAL(send)(descriptor, bytes, size, flags);
}

int fsync(int descriptor)
{
    step("sync", pathOf(descriptor) + '/');
    return ORIGINAL(fsync)(descriptor);
}

int fdatasync(int descriptor)
{
    step("sync", pathOf(descriptor) + '/');
    return ORIGINAL(fdatasync)(descriptor);
}

int fchmod(int descriptor, mode_t mode)
{
    step("chmod", pathOf(descriptor));
    return ORIGINAL(fchmod)(descriptor, mode);
}

int rename(const char* from, const char* to)
{
    step("rename", pathAt(AT_FDCWD, to));
    return ORIGINAL(rename)(from, to);
}

int renameat2(int fromFolder, const char* from, int toFolder, const char* to, unsigned flags)
{
    step("rename", pathAt(toFolder, to));
    return ORIGINAL(renameat2)(fromFolder, from, toFolder, to, flags);
}

int link(const char* from, const char* to)
{
    if (isForbidden("link"))
        return -1;
    step("link", pathAt(AT_FDCWD, to));
    return ORIGINAL(link)(from, to);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags)
{
    step("link", pathAt(toFolder, to));
    return ORIGINAL(linkat)(fromFolder, from, toFolder, to, flags);
}

int unlink(const char* path)
{
    step("unlink", pathAt(AT_FDCWD, path));
    return ORIGINAL(unlink)(path);
}

int rmdir(const char* path)
{
    step("rmdir", pathAt(AT_FDCWD, path));
    return ORIGINAL(rmdir)(path);
}

int mkdir(const char* path, mode_t mode)
{
    step("mkdir", pathAt(AT_FDCWD, path));
    return ORIGINAL(mkdir)(path, mode);
}

} // extern "C"
// NOLINTEND
