#include "tools/store/system.h"

// Functions that need POSIX calls. On other systems the resources of the process are not limited,
// and no stream counts as a terminal.
#include <QtGlobal>

#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#include <unistd.h>
#endif

// Detects a build with AddressSanitizer. GCC defines __SANITIZE_ADDRESS__. Clang has __has_feature,
// which Qt defines for compilers without it.
#if defined(__SANITIZE_ADDRESS__) || __has_feature(address_sanitizer)
#define ZOMREL_ADDRESS_SANITIZER
#endif

namespace storetools {

#ifdef Q_OS_UNIX

namespace {

void limit(decltype(RLIMIT_CORE) resource, rlim_t value)
{
    rlimit limits{};
    getrlimit(resource, &limits);
    limits.rlim_cur = value;
    setrlimit(resource, &limits);
}

} // namespace

void limitThisProcess()
{
    limit(RLIMIT_CORE, 0);
// In a build with AddressSanitizer memory is not limited, because AddressSanitizer reserves most of
// the address space.
#ifndef ZOMREL_ADDRESS_SANITIZER
    constexpr rlim_t memory = rlim_t{1} << 30U;
    limit(RLIMIT_AS, memory);
#endif
}

int takeStandardOutput()
{
    const int output = dup(STDOUT_FILENO);
    if (output >= 0 && dup2(STDERR_FILENO, STDOUT_FILENO) < 0)
        return -1;
    return output;
}

bool errorsGoToATerminal()
{
    return isatty(STDERR_FILENO) != 0;
}

#else

void limitThisProcess() {}

int takeStandardOutput()
{
    return fileno(stdout);
}

bool errorsGoToATerminal()
{
    return false;
}

#endif

} // namespace storetools
