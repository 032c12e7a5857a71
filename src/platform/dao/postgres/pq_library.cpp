// Defines the functions of libpq that the program calls. Each of them calls the function in the
// library, which is loaded when the first store on a server is opened. The library depends on about
// twenty others (TLS, Kerberos, LDAP). Linking it would make every start slower and use more
// memory. A function that is called but not defined here causes a link error.

#include "platform/dao/postgres/pq_library.h"

#include <QCoreApplication>
#include <QLibrary>

#include <libpq-fe.h>

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

template <typename Function>
Function* resolved(const char* name)
{
    const QFunctionPointer found = library().resolve(name);
    if (found == nullptr)
        qFatal("libpq has no function %s", name);
    return reinterpret_cast<Function*>(found);
}

} // namespace

bool dao::postgres::loadClientLibrary()
{
    return library().load();
}

// The compiler checks each definition against its declaration in the library's header.
#define PASS_ON(result, name, parameters, arguments)                                               \
    result name parameters                                                                         \
    {                                                                                              \
        static auto* const function = resolved<decltype(name)>(#name);                             \
        return function arguments;                                                                 \
    }

PASS_ON(PGconn*, PQconnectStartParams,
        (const char* const* keywords, const char* const* values, int expandDbName),
        (keywords, values, expandDbName))
PASS_ON(PostgresPollingStatusType, PQconnectPoll, (PGconn * connection), (connection))
PASS_ON(void, PQfinish, (PGconn * connection), (connection))
PASS_ON(ConnStatusType, PQstatus, (const PGconn* connection), (connection))
PASS_ON(PGTransactionStatusType, PQtransactionStatus, (const PGconn* connection), (connection))
PASS_ON(char*, PQerrorMessage, (const PGconn* connection), (connection))
PASS_ON(int, PQconnectionNeedsPassword, (const PGconn* connection), (connection))
PASS_ON(int, PQsslInUse, (PGconn * connection), (connection))
PASS_ON(int, PQsocket, (const PGconn* connection), (connection))
PASS_ON(PQnoticeProcessor, PQsetNoticeProcessor,
        (PGconn * connection, PQnoticeProcessor processor, void* argument),
        (connection, processor, argument))
PASS_ON(int, PQsetnonblocking, (PGconn * connection, int isNonBlocking),
        (connection, isNonBlocking))
PASS_ON(int, PQconsumeInput, (PGconn * connection), (connection))
PASS_ON(int, PQisBusy, (PGconn * connection), (connection))
PASS_ON(int, PQflush, (PGconn * connection), (connection))
PASS_ON(int, PQsendQuery, (PGconn * connection, const char* sql), (connection, sql))
PASS_ON(int, PQsendQueryParams,
        (PGconn * connection, const char* sql, int count, const Oid* types,
         const char* const* values, const int* lengths, const int* formats, int resultFormat),
        (connection, sql, count, types, values, lengths, formats, resultFormat))
PASS_ON(int, PQsendPrepare,
        (PGconn * connection, const char* statement, const char* sql, int count, const Oid* types),
        (connection, statement, sql, count, types))
PASS_ON(int, PQsendQueryPrepared,
        (PGconn * connection, const char* statement, int count, const char* const* values,
         const int* lengths, const int* formats, int resultFormat),
        (connection, statement, count, values, lengths, formats, resultFormat))
PASS_ON(PGresult*, PQgetResult, (PGconn * connection), (connection))
PASS_ON(int, PQgetCopyData, (PGconn * connection, char** block, int isAsync),
        (connection, block, isAsync))
PASS_ON(int, PQputCopyData, (PGconn * connection, const char* block, int size),
        (connection, block, size))
PASS_ON(int, PQputCopyEnd, (PGconn * connection, const char* refusal), (connection, refusal))
PASS_ON(ExecStatusType, PQresultStatus, (const PGresult* result), (result))
PASS_ON(char*, PQresultErrorMessage, (const PGresult* result), (result))
PASS_ON(char*, PQresultErrorField, (const PGresult* result, int field), (result, field))
PASS_ON(char*, PQcmdTuples, (PGresult * result), (result))
PASS_ON(int, PQntuples, (const PGresult* result), (result))
PASS_ON(int, PQnfields, (const PGresult* result), (result))
PASS_ON(Oid, PQftype, (const PGresult* result, int column), (result, column))
PASS_ON(char*, PQgetvalue, (const PGresult* result, int row, int column), (result, row, column))
PASS_ON(int, PQgetlength, (const PGresult* result, int row, int column), (result, row, column))
PASS_ON(int, PQgetisnull, (const PGresult* result, int row, int column), (result, row, column))
PASS_ON(void, PQclear, (PGresult * result), (result))
PASS_ON(void, PQfreemem, (void* memory), (memory))

#undef PASS_ON
