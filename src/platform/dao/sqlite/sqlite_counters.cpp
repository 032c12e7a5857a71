// Creates the SQL of COUNTER fields in an embedded store.

#include "platform/dao/sqlite/sqlite_counters.h"

#include "platform/dao/engine/dialect.h"

namespace dao::sqlite {

using namespace Qt::StringLiterals;

QString insertTriggerName(const QString& table, const QString& field)
{
    return table + u'.' + field + ".counter"_L1;
}

QString updateTriggerName(const QString& table, const QString& field)
{
    return table + u'.' + field + ".counter_update"_L1;
}

QString highestStored(const QString& table, const QString& field)
{
    return u"ifnull(CAST((SELECT max(%1) FROM %2) AS INTEGER), 0)"_s.arg(Dialect::quoted(field),
                                                                         Dialect::quoted(table));
}

QString lastGiven(const QString& table)
{
    return u"ifnull((SELECT last_number FROM %1 WHERE table_name = %2), 0)"_s.arg(
        counterTable, Dialect::literal(table));
}

namespace {

/// Returns the trigger statements that move the counter past the number of the new row. They must
/// never cause a conflict, because an OR clause of the statement that fires the trigger applies to
/// the statements in the trigger, too.
QString countingOn(const QString& table, const QString& field)
{
    return QStringLiteral("INSERT INTO %1 (table_name, last_number) SELECT %2, 0 "
                          "WHERE NOT EXISTS (SELECT 1 FROM %1 WHERE table_name = %2); "
                          "UPDATE %1 SET last_number = max(last_number, ifnull(CAST("
                          "(SELECT %3 FROM %4 WHERE rowid = NEW.rowid) AS INTEGER), 0)) "
                          "WHERE table_name = %2; ")
        .arg(counterTable, Dialect::literal(table), Dialect::quoted(field), Dialect::quoted(table));
}

/// Returns the trigger that gives a new row the number after the highest number that the table has
/// ever had. After the last possible number, the insertion fails and stores nothing.
QString insertTrigger(const QString& table, const QString& field)
{
    const QString highest = u"max(%1, %2)"_s.arg(highestStored(table, field), lastGiven(table));
    const QString refusal = u"the counter %1.%2 %3, %4"_s.arg(table, field, counterExhausted,
                                                              QString::number(highestCounter));
    return QStringLiteral("CREATE TRIGGER %1 AFTER INSERT ON %2 BEGIN "
                          "SELECT RAISE(ABORT, %3) WHERE NEW.%4 IS NULL AND %5 >= %6; "
                          "UPDATE %2 SET %4 = 1 + %5 WHERE rowid = NEW.rowid AND %4 IS NULL; "
                          "%7END")
        .arg(Dialect::quoted(insertTriggerName(table, field)), Dialect::quoted(table),
             Dialect::literal(refusal), Dialect::quoted(field), highest,
             QString::number(highestCounter), countingOn(table, field));
}

QString updateTrigger(const QString& table, const QString& field)
{
    return u"CREATE TRIGGER %1 AFTER UPDATE OF %2 ON %3 BEGIN %4END"_s.arg(
        Dialect::quoted(updateTriggerName(table, field)), Dialect::quoted(field),
        Dialect::quoted(table), countingOn(table, field));
}

} // namespace

QString counterTableMaking()
{
    return u"CREATE TABLE IF NOT EXISTS %1 "
           "(table_name TEXT NOT NULL PRIMARY KEY, last_number LONG NOT NULL)"_s.arg(counterTable);
}

QStringList counterMaking(const QString& table, const QString& field)
{
    return {counterTableMaking(),
            u"INSERT OR REPLACE INTO %1 (table_name, last_number) VALUES (%2, 0)"_s.arg(
                counterTable, Dialect::literal(table)),
            insertTrigger(table, field), updateTrigger(table, field)};
}

/// A table that another program has created has no triggers. Its counter continues after the
/// highest number in the table. After the last possible number the statement must fail. Outside of
/// a trigger SQLite can only fail with an arithmetic error, so the expression takes abs() of the
/// lowest 64-bit number, which overflows. It refers to the field so that SQLite does not evaluate
/// it in advance.
QString counterValueWithoutTrigger(const QString& table, const QString& field)
{
    return QStringLiteral("(SELECT CASE WHEN highest < %1 THEN highest + 1 "
                          "ELSE abs(0 * highest - 9223372036854775807 - 1) END "
                          "FROM (SELECT %2 AS highest))")
        .arg(QString::number(highestCounter), highestStored(table, field));
}

} // namespace dao::sqlite
