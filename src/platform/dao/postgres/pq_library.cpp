// Loads libpq, the client library of PostgreSQL, when the first store on a server is opened. libpq
// depends on about twenty other libraries (TLS, Kerberos, LDAP). Linking the program with libpq
// would make every start slower and use more memory.

#include "platform/dao/postgres/pq_library.h"

#include <QCoreApplication>
#include <QLibrary>

namespace dao::postgres {

using namespace Qt::StringLiterals;

namespace {

/// The version number in the file name of libpq, for example in libpq.so.5. This version has the
/// binary interface that the included header declares.
[[maybe_unused]] constexpr int libraryVersion = 5;

QLibrary* newLibrary()
{
#ifdef Q_OS_WIN
    // libpq.dll is loaded by its full path, because Windows would look for a file name without a
    // path in the current folder, too. Other users may put files into that folder.
    return new QLibrary(QCoreApplication::applicationDirPath() + u"/libpq.dll"_s);
#else
    return new QLibrary(u"pq"_s, libraryVersion);
#endif
}

QLibrary& library()
{
    // The QLibrary object is never destroyed, because pooled connections still use libpq when they
    // are closed at the end of the process.
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
