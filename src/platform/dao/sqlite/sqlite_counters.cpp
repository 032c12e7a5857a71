// COUNTER fields of an embedded store.

#include "platform/dao/sqlite/sqlite_counters.h"

#include "platform/dao/sqlite/sqlite_session.h"

#include <algorithm>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

using sqlite::counterTable;

QString literal(const QString& text)
{
    QString inner = text;
    return u'\'' + inner.replace(u'\'', u"''"_s) + u'\'';
}

/// The triggers that run after an insertion and after a change of the counter field.
QString insertTriggerName(const QString& table, const QString& field)
{
    return table + u'.' + field + ".counter"_L1;
}

QString updateTriggerName(const QString& table, const QString& field)
{
    return table + u'.' + field + ".counter_update"_L1;
}

/// The highest number that stands in the table, as a whole number whatever else stands there.
QString highestStored(const QString& table, const QString& field)
{
    return u"ifnull(CAST((SELECT max(%1) FROM %2) AS INTEGER), 0)"_s.arg(Driver::quoted(field),
                                                                         Driver::quoted(table));
}

/// The number that the table's counter has reached; 0 where the table of counters lacks its row.
QString lastGiven(const QString& table)
{
    return u"ifnull((SELECT last_number FROM %1 WHERE table_name = %2), 0)"_s.arg(counterTable,
                                                                                  literal(table));
}

/// Moves the counter past the number of the row that a trigger runs for. An OR clause of the
/// statement outside applies to the statements of a trigger too, so these meet no conflict.
QString countingOn(const QString& table, const QString& field)
{
    return QStringLiteral("INSERT INTO %1 (table_name, last_number) SELECT %2, 0 "
                          "WHERE NOT EXISTS (SELECT 1 FROM %1 WHERE table_name = %2); "
                          "UPDATE %1 SET last_number = max(last_number, ifnull(CAST("
                          "(SELECT %3 FROM %4 WHERE rowid = NEW.rowid) AS INTEGER), 0)) "
                          "WHERE table_name = %2; ")
        .arg(counterTable, literal(table), Driver::quoted(field), Driver::quoted(table));
}

/// Numbers a new row past the highest number that the table holds or has ever held. Where that was
/// the last one, the insertion fails and nothing of it stays.
QString insertTrigger(const QString& table, const QString& field)
{
    const QString highest = u"max(%1, %2)"_s.arg(highestStored(table, field), lastGiven(table));
    const QString refusal = u"the counter %1.%2 %3, %4"_s.arg(
        table, field, sqlite::counterExhausted, QString::number(highestCounter));
    return QStringLiteral("CREATE TRIGGER %1 AFTER INSERT ON %2 BEGIN "
                          "SELECT RAISE(ABORT, %3) WHERE NEW.%4 IS NULL AND %5 >= %6; "
                          "UPDATE %2 SET %4 = 1 + %5 WHERE rowid = NEW.rowid AND %4 IS NULL; "
                          "%7END")
        .arg(Driver::quoted(insertTriggerName(table, field)), Driver::quoted(table),
             literal(refusal), Driver::quoted(field), highest, QString::number(highestCounter),
             countingOn(table, field));
}

QString updateTrigger(const QString& table, const QString& field)
{
    return u"CREATE TRIGGER %1 AFTER UPDATE OF %2 ON %3 BEGIN %4END"_s.arg(
        Driver::quoted(updateTriggerName(table, field)), Driver::quoted(field),
        Driver::quoted(table), countingOn(table, field));
}

} // namespace

QString sqlite::counterTableMaking()
{
    return u"CREATE TABLE IF NOT EXISTS %1 "
           "(table_name TEXT NOT NULL PRIMARY KEY, last_number LONG NOT NULL)"_s.arg(counterTable);
}

QStringList sqlite::counterMaking(const QString& table, const QString& field)
{
    return {counterTableMaking(),
            u"INSERT OR REPLACE INTO %1 (table_name, last_number) VALUES (%2, 0)"_s.arg(
                counterTable, literal(table)),
            insertTrigger(table, field), updateTrigger(table, field)};
}

bool SqliteDriver::exists(const QString& type, const QString& name)
{
    return !rows(u"SELECT 1 FROM sqlite_master WHERE type = $1 AND name = $2 COLLATE NOCASE"_s,
                 {type, name})
                .empty();
}

QString SqliteDriver::counterValue(const QString& table, const QString& field)
{
    const QString counter = table + u'.' + field;
    const auto known = schema().counters.find(counter);
    if (known != schema().counters.end())
        return known->second;
    return schema().counters.emplace(counter, readCounterValue(table, field)).first->second;
}

/// A table that was not made by this engine has no trigger; its counter goes on after the highest
/// number that stands there. SQL has no way to fail outside of a trigger but an error of
/// arithmetic: the lowest 64-bit number has no absolute value. The field stands in that expression
/// so that it is not worked out before it is needed.
QString SqliteDriver::readCounterValue(const QString& table, const QString& field)
{
    if (exists(u"trigger"_s, insertTriggerName(table, field)))
        return {};
    return QStringLiteral("(SELECT CASE WHEN highest < %1 THEN highest + 1 "
                          "ELSE abs(0 * highest - 9223372036854775807 - 1) END "
                          "FROM (SELECT %2 AS highest))")
        .arg(QString::number(highestCounter), highestStored(table, field));
}

/// SQLite itself gives the row number of a deleted last row to the next row. A station that has the
/// former still in its list would then work on the latter, so the row number follows the table's
/// counter, which goes on counting.
QString SqliteDriver::newRowNumber(const TableInfo& table)
{
    const auto counter = std::find_if(table.fields.begin(), table.fields.end(),
                                      [](const FieldInfo& each) { return each.counter; });
    if (counter == table.fields.end() || !counterValue(table.name, counter->name).isEmpty())
        return {};
    return u"(SELECT 1 + max(%1, %2))"_s.arg(highestStored(table.name, rowNumber(table)),
                                             lastGiven(table.name));
}

std::optional<qint64> SqliteDriver::counterMark(const QString& table, const QString& field)
{
    if (!exists(u"trigger"_s, insertTriggerName(table, field)) ||
        !exists(u"trigger"_s, updateTriggerName(table, field)))
        return {};
    return storedMark(table);
}

std::optional<qint64> SqliteDriver::storedMark(const QString& table)
{
    if (!exists(u"table"_s, counterTable))
        return {};
    const std::vector<StoredValues> found =
        rows(u"SELECT last_number FROM %1 WHERE table_name = $1"_s.arg(counterTable), {table});
    if (found.empty())
        return {};
    return found.front().front().toLongLong();
}

qint64 SqliteDriver::highestGiven(const QString& table, const QString& field)
{
    const qint64 stored =
        rows("SELECT "_L1 + highestStored(table, field)).front().front().toLongLong();
    return std::max(stored, storedMark(table).value_or(0));
}

void SqliteDriver::countOnFrom(const QString& table, const QString&, qint64 highest)
{
    run(u"INSERT OR REPLACE INTO %1 (table_name, last_number) VALUES ($1, $2)"_s.arg(counterTable),
        {table, highest});
}

} // namespace dao
