#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace runtime {

/// The classic run-time error numbers that the program uses.
enum ErrorNumber {
    InvalidProcedureCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    InternalError = 51,
    FileNotFound = 53,
    ObjectNotSet = 91,
    InvalidUseOfNull = 94,
    InvalidPropertyValue = 380,
    ObjectRequired = 424,
    InvalidPicture = 481,
    NotAnIndex = 3015,
    NoCurrentIndex = 3019,
    UpdateWithoutEdit = 3020,
    NoCurrentRecord = 3021,
    DuplicateKey = 3022,
    DatabaseFileNotFound = 3024,
    DiskFull = 3026,
    ReadOnly = 3027,
    DiskOrNetworkError = 3043,
    CorruptDatabase = 3049,
    PermissionDenied = 3051,
    TooFewParameters = 3061,
    TableNotFound = 3078,
    QuerySyntax = 3131,
    CallFailed = 3146,
    ConnectionFailed = 3151,
    FieldTooSmall = 3163,
    RecordDeleted = 3167,
    FieldDefinedTwice = 3191,
    DatabaseExists = 3204,
    InvalidOperation = 3219,
    OperationNotSupported = 3251,
    Locked = 3260,
    ItemNotFound = 3265,
    FieldRequired = 3314,
    UnrecognizedFormat = 3343,
    ObjectClosed = 3420,
    DataTypeConversion = 3421,
    ReportWidthTooLarge = 8519,
};

/// The exception for every unexpected error. It propagates to guarded(), which shows the error box
/// and ends the process.
class RunTimeError : public std::exception
{
public:
    /// Creates an error with the classic description of its number.
    explicit RunTimeError(int number);
    /// Creates an error with its own description, which may name a file, table or field.
    RunTimeError(int number, QString description);

    int number() const { return number_; }
    const QString& description() const { return description_; }
    const char* what() const noexcept override { return what_.constData(); }

private:
    int number_;
    QString description_;
    QByteArray what_;
};

/// Returns the classic English description of an error number, or an empty text for an unknown
/// number.
QString errorDescription(int number);

} // namespace runtime
