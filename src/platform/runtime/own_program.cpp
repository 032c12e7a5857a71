#include "platform/runtime/own_program.h"

#include <QCoreApplication>
#include <QFile>

#ifdef Q_OS_LINUX
#include <cerrno>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace runtime {

#ifdef Q_OS_LINUX

namespace {

/// Copies the program's file to the file descriptor. sendfile copies inside the kernel. A copy
/// buffer in this thread would stay allocated after the copying.
bool copyProgramTo(int descriptor)
{
    QFile program(u"/proc/self/exe"_s);
    if (!program.open(QIODevice::ReadOnly))
        return false;
    qint64 left = program.size();
    while (left > 0) {
        const ssize_t copied =
            ::sendfile(descriptor, program.handle(), nullptr, static_cast<std::size_t>(left));
        if (copied < 0 && errno == EINTR)
            continue;
        if (copied <= 0)
            return false;
        left -= copied;
    }
    return true;
}

} // namespace

OwnProgram::OwnProgram() : descriptor_(::memfd_create("zomrel", MFD_CLOEXEC))
{
    if (descriptor_ >= 0 && !copyProgramTo(descriptor_)) {
        ::close(descriptor_);
        descriptor_ = -1;
    }
}

OwnProgram::~OwnProgram()
{
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

#else

OwnProgram::OwnProgram() = default;
OwnProgram::~OwnProgram() = default;

#endif

QString OwnProgram::path() const
{
    // The path of a file descriptor is also valid in a child process, because the child keeps a
    // copy of the descriptor until it executes the program.
    return descriptor_ >= 0 ? u"/proc/self/fd/%1"_s.arg(descriptor_)
                            : QCoreApplication::applicationFilePath();
}

} // namespace runtime
