#include "platform/dao/sqlite/sqlite_errors.h"

#include "platform/dao/sqlite/sqlite_dialect.h"

namespace dao::sqlite {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

int resultCode(const QSqlError& error)
{
    // Only the lowest 8 bits of SQLite's result code are used, because they contain the primary
    // code. The higher bits contain the details of the extended code.
    return error.nativeErrorCode().toInt() & 0xff;
}

RunTimeError errorOf(const QSqlError& failure)
{
    const QString text = failure.databaseText();
    switch (resultCode(failure)) {
    case Busy:
    case LockedTable:
        return RunTimeError(runtime::Locked);
    case ReadOnlyStore:
        return RunTimeError(runtime::ReadOnly);
    case Full:
        return RunTimeError(runtime::DiskFull);
    case InputOutput:
        return RunTimeError(runtime::DiskOrNetworkError);
    case Corrupt:
    case NotADatabase:
        return RunTimeError(runtime::CorruptDatabase);
    case CannotOpen:
    case Permission:
    case Authorization:
        return RunTimeError(runtime::PermissionDenied);
    case NoMemory:
        return RunTimeError(runtime::OutOfMemory);
    case Constraint:
        if (text.contains(counterExhausted))
            return RunTimeError(
                runtime::Overflow,
                u"%1 (%2)"_s.arg(runtime::errorDescription(runtime::Overflow), text));
        return RunTimeError(text.contains("NOT NULL"_L1) ? runtime::FieldRequired
                                                         : runtime::DuplicateKey);
    default:
        break;
    }
    if (text.contains("integer overflow"_L1))
        return RunTimeError(runtime::Overflow);
    if (text.contains("no such table"_L1))
        return RunTimeError(runtime::TableNotFound);
    if (text.contains("duplicate column name"_L1))
        return RunTimeError(runtime::FieldDefinedTwice);
    return RunTimeError(runtime::InternalError, text);
}

} // namespace dao::sqlite
