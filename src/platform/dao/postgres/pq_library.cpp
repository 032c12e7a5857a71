// Loads libpq when the first store on a server is opened. The library depends on about twenty
// others (TLS, Kerberos, LDAP). Linking it would make every start slower and use more memory.

#include "platform/dao/postgres/pq_library.h"

#include <QCoreApplication>
#include <QLibrary>

namespace dao::postgres {

using namespace Qt::StringLiterals;

namespace {

/// Version of the library's binary interface that the included header declares.
[[maybe_unused]] constexpr int libraryVersion = 5;

QLibrary* newLibrary()
{
#ifdef Q_OS_WIN
    // Windows would also look for a bare name in the current folder, where others may put files.
    return new QLibrary(QCoreApplication::applicationDirPath() + u"/libpq.dll"_s);
#else
    return new QLibrary(u"pq"_s, libraryVersion);
#endif
}

QLibrary& library()
{
    // The library object is never destroyed, because pooled connections still use it when they are
    // closed at the end of the process.
    static auto* const loaded = newLibrary();
    return *loaded;
}

} // namespace

bool loadClientLibrary()
{
    return library().load();
}

QFunctionPointer clientFunction(const char* name)
{
    const QFunctionPointer found = library().resolve(name);
    if (found == nullptr)
        qFatal("libpq has no function %s", name);
    return found;
}

} // namespace dao::postgres
