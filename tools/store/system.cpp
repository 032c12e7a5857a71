#include "tools/store/system.h"

#include "tools/store/reporting.h"

// This file contains the functions that need system calls. On Windows the resources of the process
// are not limited, and closed standard streams remain closed.
#include <QtGlobal>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <system_error>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>
#else
#include <cstdlib>
#include <io.h>
#include <windows.h>
#endif

namespace storetools {

#ifdef Q_OS_UNIX

namespace {

void limit(decltype(RLIMIT_CORE) resource, rlim_t value)
{
    rlimit limits{};
    getrlimit(resource, &limits);
    // The process cannot raise the limit again.
    limits.rlim_cur = limits.rlim_max = qMin(value, limits.rlim_max);
    setrlimit(resource, &limits);
}

} // namespace

void limitThisProcess(int cpuSeconds)
{
    limit(RLIMIT_CORE, 0);
    // The signal SIGXFSZ is ignored. Writing beyond the limit of the file size then fails and does
    // not end the process.
    std::signal(SIGXFSZ, SIG_IGN);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_CPU, static_cast<rlim_t>(cpuSeconds));
// In a build with AddressSanitizer memory is not limited, because AddressSanitizer reserves most of
// the address space.
#ifndef ZOMREL_ADDRESS_SANITIZER
    constexpr rlim_t memory = rlim_t{1} << 30U;
    limit(RLIMIT_AS, memory);
#endif
}

void fillStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF)
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
}

int takeStandardOutput()
{
    const int output = dup(STDOUT_FILENO);
    if (output >= 0 && dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        return -1;
    return output;
}

bool isTerminal(FILE* stream)
{
    return isatty(fileno(stream)) != 0;
}

void useUtf8Console() {}

#else

void limitThisProcess(int) {}

void fillStandardStreams() {}

int takeStandardOutput()
{
    return fileno(stdout);
}

bool isTerminal(FILE* stream)
{
    return _isatty(_fileno(stream)) != 0;
}

void useUtf8Console()
{
    // The former code page is restored at exit. Otherwise the console would keep UTF-8 after the
    // program has ended.
    static const UINT former = GetConsoleOutputCP();
    if (former != 0 && SetConsoleOutputCP(CP_UTF8))
        std::atexit([] { SetConsoleOutputCP(former); });
}

#endif

bool errorsGoToATerminal()
{
    return isTerminal(stderr);
}

bool finishOutput(const QString& program, QTextStream& out, QTextStream& err)
{
    errno = 0;
    out.flush();
    const int error = errno;
    const bool isWritten =
        std::fflush(stdout) == 0 && std::ferror(stdout) == 0 && out.status() == QTextStream::Ok;
    if (!isWritten) {
        const Text text{u"could not write the output", u"אי אפשר לכתוב את הפלט"};
        const Text textWithReason{u"could not write the output: %1", u"אי אפשר לכתוב את הפלט: %1"};
        tell(err,
             error == 0 ? say(text)
                        : say(textWithReason,
                              QString::fromLocal8Bit(std::generic_category().message(error))),
             program);
        tellNextStep(
            err,
            say({u"The command has ended, and what it did is kept. Free some space on the "
                 "disk, or choose another place for the output.",
                 u"הפקודה הסתיימה, ומה שעשתה נשמר. פנה מקום בדיסק, או בחר מקום אחר לפלט."}),
            program);
    }
    err.flush();
    return isWritten && std::ferror(stderr) == 0;
}

} // namespace storetools
