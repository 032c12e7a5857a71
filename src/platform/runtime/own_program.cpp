#include "platform/runtime/own_program.h"

#include <QCoreApplication>
#include <QFile>

#ifdef Q_OS_LINUX
#include <sys/mman.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

namespace runtime {

#ifdef Q_OS_LINUX

namespace {

bool copyProgramTo(int descriptor)
{
    QFile program(u"/proc/self/exe"_s);
    QFile copy;
    if (!program.open(QIODevice::ReadOnly) || !copy.open(descriptor, QIODevice::WriteOnly))
        return false;
    constexpr qint64 blockSize = 1 << 20;
    while (!program.atEnd()) {
        const QByteArray block = program.read(blockSize);
        if (block.isEmpty() || copy.write(block) != block.size())
            return false;
    }
    return copy.flush();
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
    // The child process resolves /proc/self/fd with its own copies of the descriptors, which are
    // closed only when it executes the program.
    return descriptor_ >= 0 ? u"/proc/self/fd/%1"_s.arg(descriptor_)
                            : QCoreApplication::applicationFilePath();
}

} // namespace runtime
