#pragma once

#include <QFunctionPointer>

#include <libpq-fe.h>

namespace dao::postgres {

/// Loads PostgreSQL's client library, libpq, at the first call. Returns false if it is not
/// installed. No function of libpq may be called before this function has returned true.
bool loadClientLibrary();

/// Returns the function of libpq with this name. Ends the program if there is none.
QFunctionPointer clientFunction(const char* name);

} // namespace dao::postgres

/// PQ(status) is libpq's function PQstatus, looked up when it is used for the first time, with the
/// type that the library's header declares. The program is not linked with libpq, so a direct call
/// of PQstatus is a link error.
#define PQ(name)                                                                                   \
    ([] {                                                                                          \
        static const auto function =                                                               \
            reinterpret_cast<decltype(&PQ##name)>(dao::postgres::clientFunction("PQ" #name));      \
        return function;                                                                           \
    }())
