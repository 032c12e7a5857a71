#pragma once

#include "platform/runtime/run_time_error.h"

#include <QSqlError>

namespace dao::sqlite {

/// Primary result codes of SQLite.
enum ResultCode {
    Permission = 3,
    Busy = 5,
    LockedTable = 6,
    NoMemory = 7,
    ReadOnlyStore = 8,
    InputOutput = 10,
    Corrupt = 11,
    Full = 13,
    CannotOpen = 14,
    Constraint = 19,
    Authorization = 23,
    NotADatabase = 26,
};

/// Returns SQLite's primary result code of an error.
int resultCode(const QSqlError& error);

/// Returns the run-time error that corresponds to an error of SQLite.
runtime::RunTimeError errorOf(const QSqlError& error);

} // namespace dao::sqlite
