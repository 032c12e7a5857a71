#pragma once

#include <QLatin1StringView>
#include <QString>
#include <QStringList>

namespace dao::sqlite {

/// The engine's internal table of counters. It has one row for each table with a counter.
constexpr QLatin1StringView counterTable("zomrel_counters");

/// A part of SQLite's error message when a counter has no number left.
constexpr QLatin1StringView counterExhausted("has given its last number");

/// Returns the statement that creates the table of counters if it does not exist.
QString counterTableMaking();

/// Returns the statements that turn a field of a new table into a counter.
QStringList counterMaking(const QString& table, const QString& field);

/// Return the names of the triggers after an INSERT and after an UPDATE of the counter field.
QString insertTriggerName(const QString& table, const QString& field);
QString updateTriggerName(const QString& table, const QString& field);

/// Returns the SQL expression for the highest number in a column. Its result is always a whole
/// number, also if the column contains texts.
QString highestStored(const QString& table, const QString& field);
/// Returns the SQL expression for the last number of the table's counter, or 0 if the table of
/// counters has no row for it.
QString lastGiven(const QString& table);
/// Returns the SQL expression for the next number of a counter without triggers.
QString counterValueWithoutTrigger(const QString& table, const QString& field);

} // namespace dao::sqlite
