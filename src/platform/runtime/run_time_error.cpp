#include "platform/runtime/run_time_error.h"

#include <utility>

namespace runtime {

namespace {

struct Description
{
    int number;
    const char* text;
};

constexpr Description descriptions[] = {
    {InvalidProcedureCall, "Invalid procedure call or argument"},
    {Overflow, "Overflow"},
    {OutOfMemory, "Out of memory"},
    {SubscriptOutOfRange, "Subscript out of range"},
    {DivisionByZero, "Division by zero"},
    {TypeMismatch, "Type mismatch"},
    {InternalError, "Internal error"},
    {FileNotFound, "File not found"},
    {ObjectNotSet, "Object variable or With block variable not set"},
    {InvalidUseOfNull, "Invalid use of Null"},
    {InvalidPropertyValue, "Invalid property value"},
    {ObjectRequired, "Object required"},
    {InvalidPicture, "Invalid picture"},
    {NotAnIndex, "This is not an index in this table."},
    {NoCurrentIndex, "Operation invalid without a current index."},
    {UpdateWithoutEdit, "Update or CancelUpdate without AddNew or Edit."},
    {NoCurrentRecord, "No current record."},
    {DuplicateKey, "The changes you requested to the table were not successful because they would "
                   "create duplicate values in the index, primary key, or relationship."},
    {DatabaseFileNotFound, "Could not find file."},
    {DiskFull, "Not enough space on disk."},
    {ReadOnly, "Cannot update. Database or object is read-only."},
    {DiskOrNetworkError, "Disk or network error."},
    {CorruptDatabase, "Cannot open database. It may not be a database that your application "
                      "recognizes, or the file may be corrupt."},
    {PermissionDenied, "Cannot open the file. It is already opened exclusively by another user, "
                       "or you need permission to view its data."},
    {TooFewParameters, "Too few parameters."},
    {TableNotFound, "Cannot find the input table or query."},
    {QuerySyntax, "Syntax error in FROM clause."},
    {CallFailed, "Call to the database server failed."},
    {ConnectionFailed, "Connection to the database server failed."},
    {FieldTooSmall, "The field is too small to accept the amount of data you attempted to add. "
                    "Try inserting or pasting less data."},
    {RecordDeleted, "Record is deleted."},
    {FieldDefinedTwice, "Cannot define field more than once."},
    {DatabaseExists, "Database already exists."},
    {InvalidOperation, "Invalid operation."},
    {OperationNotSupported, "Operation is not supported for this type of object."},
    {Locked, "Could not update; currently locked by another user."},
    {ItemNotFound, "Item not found in this collection."},
    {FieldRequired, "The field cannot contain a Null value."},
    {UnrecognizedFormat, "Unrecognized database format."},
    {ObjectClosed, "Object invalid or no longer set."},
    {DataTypeConversion, "Data type conversion error."},
    {ReportWidthTooLarge, "Report width is larger than the paper width."},
};

} // namespace

QString errorDescription(int number)
{
    for (const Description& each : descriptions) {
        if (each.number == number)
            return QString::fromLatin1(each.text);
    }
    return {};
}

RunTimeError::RunTimeError(int number) : RunTimeError(number, errorDescription(number)) {}

RunTimeError::RunTimeError(int number, QString description)
    : number_(number), description_(std::move(description)),
      what_(QStringLiteral("%1: %2").arg(number_).arg(description_).toUtf8())
{
}

} // namespace runtime
