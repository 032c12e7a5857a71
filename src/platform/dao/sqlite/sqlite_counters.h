#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringList>

namespace dao::sqlite {

/// The table of counters, one row for each counted table. It is the engine's own.
constexpr QLatin1StringView counterTable("zomrel_counters");

/// What the engine's error text holds where a counter has no number left.
constexpr QLatin1StringView counterExhausted("has given its last number");

/// The statement that makes the table of counters unless the store has it.
QString counterTableMaking();

/// The statements that make a counter out of a field of a new table.
QStringList counterMaking(const QString& table, const QString& field);

/// The triggers that run after an insertion and after a change of the counter field.
QString insertTriggerName(const QString& table, const QString& field);
QString updateTriggerName(const QString& table, const QString& field);

/// The expression for the highest number in a column, as a whole number whatever else is there.
QString highestStored(const QString& table, const QString& field);
/// The expression for the number that the table's counter has reached; 0 if the table of counters
/// lacks its row.
QString lastGiven(const QString& table);
/// The expression for the next number of a counter that has no trigger.
QString counterValueWithoutTrigger(const QString& table, const QString& field);

} // namespace dao::sqlite
