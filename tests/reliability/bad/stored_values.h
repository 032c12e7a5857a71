#pragma once

#include "platform/runtime/run_time_error.h"
#include "store/schema.h"

#include <QList>
#include <QString>

#include <cstdlib>

/// Contents of a field as no form writes them. SQLite keeps a number that is none as Null, so there
/// is no other case of it.
struct StoredValue
{
    const char* name;
    QString sql; ///< As a statement takes it.
    /// The run-time error that reading it as such a field raises; 0 where it can be read.
    int asNumber; ///< DOUBLE and BOOLEAN
    int asLong;   ///< 32 bits
    int asText;
    int asDate;
    QString shownAsText; ///< What a text field that holds it shows.
};

inline QList<StoredValue> storedValues()
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

/// What reading the value as this field raises; 0 where it can be read.
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

/// Where whole numbers end says nothing of a field that is none.
inline bool isWorthAsking(const StoredValue& value, const dao::FieldInfo& field)
{
    bool isWhole = false;
    const qint64 number = value.sql.toLongLong(&isWhole);
    return field.type == dao::dbLong || !isWhole || std::abs(number) < 32768;
}
