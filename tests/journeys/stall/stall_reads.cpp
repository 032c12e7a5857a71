// A library that is loaded into the program before all others. It blocks every read of the file
// named by ZOMREL_STALL_FILE while the pipe named by ZOMREL_STALL_PIPE exists and nobody writes to
// it, as a network share does whose server is away.

#include <cstdlib>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

using Read = ssize_t (*)(int, void*, size_t, off64_t);

void waitForTheShare(int descriptor)
{
    const char* const file = std::getenv("ZOMREL_STALL_FILE");
    const char* const pipe = std::getenv("ZOMREL_STALL_PIPE");
    if (file == nullptr || pipe == nullptr)
        return;
    char name[4096];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), name, sizeof name);
    if (length < 0 || std::string(name, static_cast<size_t>(length)) != file)
        return;
    // Opening a pipe blocks until it is opened for writing; a missing one fails at once.
    const int gate = open(pipe, O_RDONLY | O_CLOEXEC);
    if (gate >= 0)
        close(gate);
}

ssize_t readOn(const char* function, int descriptor, void* buffer, size_t count, off64_t offset)
{
    waitForTheShare(descriptor);
    return reinterpret_cast<Read>(dlsym(RTLD_NEXT, function))(descriptor, buffer, count, offset);
}

} // namespace

extern "C" ssize_t pread(int descriptor, void* buffer, size_t count, off_t offset)
{
    return readOn("pread", descriptor, buffer, count, offset);
}

extern "C" ssize_t pread64(int descriptor, void* buffer, size_t count, off64_t offset)
{
    return readOn("pread64", descriptor, buffer, count, offset);
}
