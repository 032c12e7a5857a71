#pragma once

#include <QFunctionPointer>

#include <libpq-fe.h>

namespace dao::postgres {

/// Loads PostgreSQL's client library, libpq, at the first call. Returns false if libpq is not
/// installed. No function of libpq may be called before this function has returned true.
bool loadClientLibrary();

/// Returns the function of libpq with this name. Ends the program if libpq has no such function.
QFunctionPointer clientFunction(const char* name);

} // namespace dao::postgres

/// PQ(status) is a pointer to libpq's function PQstatus, with the type that libpq's header
/// declares. The function is looked up when it is used for the first time. The program is not
/// linked with libpq, so a direct call of PQstatus is a link error.
#define PQ(name)                                                                                   \
    ([] {                                                                                          \
        static const auto function =                                                               \
            reinterpret_cast<decltype(&PQ##name)>(dao::postgres::clientFunction("PQ" #name));      \
        return function;                                                                           \
    }())
