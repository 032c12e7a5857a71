#pragma once

#include "platform/runtime/run_time_error.h"
#include "store/schema.h"
#include "support/throwaway_server.h"

#include <QList>
#include <QString>

#include <cstdlib>

/// Types of server columns, each of which accepts only matching values. An embedded store accepts
/// any value in any column.
enum Columns : unsigned {
    DoubleColumn = 1,
    LongColumn = 2,
    ShortColumn = 4, ///< Columns of the types INTEGER and BOOLEAN.
    TextColumn = 8,
    DateColumn = 16,
    AnyColumn = 31,
};

/// A value that no form writes.
struct StoredValue
{
    const char* name;
    QString sql; ///< The value as an SQL literal.
    /// The error that reading the value as each type throws; 0 if it can be read.
    int asNumber; ///< For DOUBLE and BOOLEAN.
    int asLong;   ///< For 32-bit integers.
    int asText;
    int asDate;
    QString shownAsText; ///< The text that a text field with this value shows.
    unsigned columns = AnyColumn;
};

/// SQLite stores NaN as Null, so NaN is not listed.
inline QList<StoredValue> valuesOfAFile()
{
    constexpr int none = 0;
    constexpr int no = runtime::DataTypeConversion;
    constexpr int over = runtime::Overflow;
    return {
        {"Null", QStringLiteral("NULL"), none, none, none, none, QStringLiteral("")},
        {"zero", QStringLiteral("0"), none, none, none, no, QStringLiteral("0")},
        {"negative", QStringLiteral("-3"), none, none, none, no, QStringLiteral("-3")},
        {"beyond 16 bits", QStringLiteral("32768"), none, none, none, no, QStringLiteral("32768")},
        {"largest whole", QStringLiteral("2147483647"), none, none, none, no,
         QStringLiteral("2147483647")},
        {"one beyond 32 bits", QStringLiteral("2147483648"), none, over, none, no,
         QStringLiteral("2147483648")},
        {"one below 32 bits", QStringLiteral("-2147483649"), none, over, none, no,
         QStringLiteral("-2147483649")},
        {"largest of 64 bits", QStringLiteral("9223372036854775807"), none, over, none, no,
         QStringLiteral("9223372036854775807")},
        {"beyond 64 bits", QStringLiteral("9223372036854775808"), none, over, none, no,
         QStringLiteral("9.22337203685478e+18")},
        {"beyond 32 bits", QStringLiteral("3000000000"), none, over, none, no,
         QStringLiteral("3000000000")},
        {"huge", QStringLiteral("1e308"), none, over, none, no, QStringLiteral("1.0e+308")},
        {"infinite", QStringLiteral("9e999"), over, over, none, no, QStringLiteral("Inf")},
        {"negative infinite", QStringLiteral("-9e999"), over, over, none, no,
         QStringLiteral("-Inf")},
        {"letters", QStringLiteral("'wide'"), no, no, none, no, QStringLiteral("wide")},
        {"bytes", QStringLiteral("x'00ff'"), no, no, no, no, QStringLiteral("")},
        {"empty text", QStringLiteral("''"), no, no, none, no, QStringLiteral("")},
        {"no day", QStringLiteral("'2026-02-30'"), no, no, none, no, QStringLiteral("2026-02-30")},
        {"digits", QStringLiteral("'12'"), none, none, none, no, QStringLiteral("12")},
        {"long text", u'\'' + QString(300, u'ש') + u'\'', no, no, none, no, QString(300, u'ש')},
    };
}

/// Values that a server's column accepts but the program's type does not.
inline QList<StoredValue> valuesOfAServer()
{
    constexpr int none = 0;
    constexpr int no = runtime::DataTypeConversion;
    constexpr int over = runtime::Overflow;
    constexpr unsigned wide = DoubleColumn | TextColumn;
    constexpr unsigned numbers = wide | LongColumn;
    constexpr unsigned moments = DateColumn | TextColumn;
    return {
        {"Null", QStringLiteral("NULL"), none, none, none, none, QStringLiteral("")},
        {"zero", QStringLiteral("0"), none, none, none, no, QStringLiteral("0"),
         numbers | ShortColumn},
        {"negative", QStringLiteral("-3"), none, none, none, no, QStringLiteral("-3"),
         numbers | ShortColumn},
        {"beyond 16 bits", QStringLiteral("32768"), none, none, none, no, QStringLiteral("32768"),
         numbers},
        {"largest whole", QStringLiteral("2147483647"), none, none, none, no,
         QStringLiteral("2147483647"), numbers},
        {"huge", QStringLiteral("1e308"), none, over, none, no, {}, DoubleColumn},
        {"infinite", QStringLiteral("'Infinity'"), over, over, none, no, QStringLiteral("Infinity"),
         wide | DateColumn},
        {"negative infinite", QStringLiteral("'-Infinity'"), over, over, none, no,
         QStringLiteral("-Infinity"), wide | DateColumn},
        {"no number", QStringLiteral("'NaN'"), over, over, none, no, QStringLiteral("NaN"), wide},
        {"letters", QStringLiteral("'wide'"), no, no, none, no, QStringLiteral("wide"), TextColumn},
        {"empty text", QStringLiteral("''"), no, no, none, no, QStringLiteral(""), TextColumn},
        {"digits", QStringLiteral("'12'"), none, none, none, no, QStringLiteral("12"),
         numbers | ShortColumn},
        {"year of five digits", QStringLiteral("'20000-01-01'"), no, no, none, no,
         QStringLiteral("20000-01-01"), moments},
        {"before the first year", QStringLiteral("'0044-03-15 BC'"), no, no, none, no,
         QStringLiteral("0044-03-15 BC"), moments},
    };
}

inline QList<StoredValue> storedValues()
{
    return testsupport::isOnServer() ? valuesOfAServer() : valuesOfAFile();
}

inline bool isKept(const StoredValue& value, const dao::FieldInfo& field)
{
    switch (field.type) {
    case dao::dbText:
        return !testsupport::isOnServer() ||
               ((value.columns & TextColumn) != 0 && value.shownAsText.size() <= field.size);
    case dao::dbDate:
        return (value.columns & DateColumn) != 0;
    case dao::dbLong:
        return (value.columns & LongColumn) != 0;
    case dao::dbDouble:
        return (value.columns & DoubleColumn) != 0;
    default:
        return (value.columns & ShortColumn) != 0;
    }
}

/// Returns the error that reading the value as this field throws, or 0.
inline int readingError(const StoredValue& value, const dao::FieldInfo& field)
{
    switch (field.type) {
    case dao::dbText:
        return value.asText;
    case dao::dbDate:
        return value.asDate;
    case dao::dbLong:
    case dao::dbInteger:
        return value.asLong;
    default:
        return value.asNumber;
    }
}

/// Skips integer limits for fields that do not hold integers.
inline bool isWorthAsking(const StoredValue& value, const dao::FieldInfo& field)
{
    bool isWhole = false;
    const qint64 number = value.sql.toLongLong(&isWhole);
    return field.type == dao::dbLong || !isWhole || std::abs(number) < 32768;
}

/// Returns the values to try in the field. Each value costs a database on a server, so there a
/// decimal or text field gets Null and one other value, which rotates from field to field.
inline QList<StoredValue> valuesFor(const dao::FieldInfo& field)
{
    QList<StoredValue> all;
    for (const StoredValue& each : storedValues()) {
        if (isKept(each, field) && isWorthAsking(each, field))
            all.append(each);
    }
    if (!testsupport::isOnServer() || (field.type != dao::dbDouble && field.type != dao::dbText))
        return all;
    static qsizetype turn = 0;
    return {all[0], all[1 + turn++ % (all.size() - 1)]};
}
