#include "platform/dao/sqlite/sqlite_dialect.h"

#include <algorithm>
#include <array>

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

/// Returns the statements of a trigger that raise the counter to the number of the new row. These
/// statements must never cause a conflict. An OR clause (such as OR IGNORE) of the statement that
/// fires the trigger would also apply to them.
QString countingOn(const QString& table, const QString& field)
{
    return QStringLiteral("INSERT INTO %1 (table_name, last_number) SELECT %2, 0 "
                          "WHERE NOT EXISTS (SELECT 1 FROM %1 WHERE table_name = %2); "
                          "UPDATE %1 SET last_number = max(last_number, ifnull(CAST("
                          "(SELECT %3 FROM %4 WHERE rowid = NEW.rowid) AS INTEGER), 0)) "
                          "WHERE table_name = %2; ")
        .arg(counterTable, Dialect::literal(table), Dialect::quoted(field), Dialect::quoted(table));
}

/// Returns the statement that creates the trigger for a new row. The trigger gives the row the
/// number after the highest number that the table has ever contained. After the last possible
/// number, the insertion fails and stores nothing.
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

const SqliteDialect& SqliteDialect::instance()
{
    static const SqliteDialect only;
    return only;
}

QString SqliteDialect::rowNumber(const TableInfo& table) const
{
    for (const QString& each : {u"rowid"_s, u"_rowid_"_s}) {
        if (table.ordinalOf(each) < 0)
            return each;
    }
    return u"oid"_s;
}

/// After the last row of a table has been deleted, SQLite gives the row id of the deleted row to
/// the next new row. A station whose list still contains the deleted row would then change the new
/// row. Therefore the row id is derived from the counter of the table, which never decreases.
QString SqliteDialect::newRowNumber(const TableInfo& table) const
{
    const auto counter =
        std::find_if(table.fields.begin(), table.fields.end(),
                     [](const FieldInfo& each) { return each.counter && each.countsByItself; });
    // A table that another program has created may have no triggers for its counter. SQLite itself
    // then assigns the row ids.
    if (counter == table.fields.end())
        return {};
    return u"(SELECT 1 + max(%1, %2))"_s.arg(highestStored(table.name, rowNumber(table)),
                                             lastGiven(table.name));
}

QString SqliteDialect::joined(const QString& select) const
{
    // The subquery is ordered, and group_concat reads it in this order. SQLite keeps the order for
    // all aggregate functions except count, min and max. LIMIT -1 would also keep it, but SQLite
    // sorts a query with a limit more slowly.
    return u"WITH listed(n) AS (%1) SELECT group_concat(n) AS numbers FROM listed"_s.arg(select);
}

QString SqliteDialect::firstOf(const QString& joined) const
{
    return u"CAST(%1 AS INTEGER)"_s.arg(joined); // CAST reads the digits at the start of a text.
}

QString SqliteDialect::indexesQuery() const
{
    return QStringLiteral(
        "SELECT * FROM (SELECT 'PrimaryKey', 1, 1, name, 0 AS made, pk AS place "
        "FROM pragma_table_info($1) WHERE pk > 0 "
        "UNION ALL SELECT l.name, 0, l.\"unique\", i.name, m.rowid, i.seqno "
        "FROM pragma_index_list($1) l "
        "JOIN sqlite_master m ON m.type = 'index' AND m.name = l.name "
        "JOIN pragma_index_info(l.name) i "
        "WHERE l.origin <> 'pk' AND NOT l.partial "
        "AND NOT EXISTS (SELECT 1 FROM pragma_index_info(l.name) e WHERE e.name IS NULL)) "
        "ORDER BY made, place");
}

QString SqliteDialect::tableQuery() const
{
    return QStringLiteral(
        "SELECT m.name, m.type = 'table', c.name, c.type, c.\"notnull\", "
        "upper(c.type) = 'COUNTER', "
        "EXISTS (SELECT 1 FROM sqlite_master t WHERE t.type = 'trigger' AND "
        "t.name COLLATE NOCASE = m.name || '.' || c.name || '.counter') "
        "FROM sqlite_master m, pragma_table_info(m.name) c "
        "WHERE m.name = $1 COLLATE NOCASE AND m.type IN ('table', 'view') ORDER BY c.cid");
}

std::span<const Dialect::TypeName> SqliteDialect::typeNames() const
{
    static constexpr std::array names = {
        TypeName{"TEXT"_L1, dbText},       TypeName{"LONG"_L1, dbLong},
        TypeName{"COUNTER"_L1, dbLong},    TypeName{"INTEGER"_L1, dbInteger},
        TypeName{"DOUBLE"_L1, dbDouble},   TypeName{"DATETIME"_L1, dbDate},
        TypeName{"BOOLEAN"_L1, dbBoolean},
    };
    return names;
}

QString SqliteDialect::declaredType(const FieldInfo& field) const
{
    return field.counter ? u"COUNTER"_s : Dialect::declaredType(field);
}

/// Returns the SQL expression for the next number of a counter field without triggers, in a table
/// that another program has created. The next number is the highest number in the table plus 1.
/// After the last possible number, the statement must fail. Outside of a trigger, SQL can raise
/// only an arithmetic error, so the expression takes abs() of the lowest 64-bit number, which
/// overflows. The term `0 * highest` keeps SQLite from evaluating abs() in advance.
QString SqliteDialect::newCounterValue(const TableInfo& table, const FieldInfo& counter) const
{
    return QStringLiteral("(SELECT CASE WHEN highest < %1 THEN highest + 1 "
                          "ELSE abs(0 * highest - 9223372036854775807 - 1) END "
                          "FROM (SELECT %2 AS highest))")
        .arg(QString::number(highestCounter), highestStored(table.name, counter.name));
}

QStringList SqliteDialect::counterStatements(const QString& table, const QString& field) const
{
    return {counterTableMaking(),
            u"INSERT OR REPLACE INTO %1 (table_name, last_number) VALUES (%2, 0)"_s.arg(
                counterTable, Dialect::literal(table)),
            insertTrigger(table, field), updateTrigger(table, field)};
}

} // namespace dao::sqlite
