#include "platform/dao/sqlite/sqlite_dialect.h"

#include "platform/dao/sqlite/sqlite_counters.h"

#include <algorithm>
#include <array>

namespace dao::sqlite {

using namespace Qt::StringLiterals;

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

/// After the last row has been deleted, SQLite gives its row id to the next new row. A station
/// whose list still contains the deleted row would then work on the new one. Therefore the row id
/// is derived from the table's counter, which never decreases.
QString SqliteDialect::newRowNumber(const TableInfo& table) const
{
    const auto counter =
        std::find_if(table.fields.begin(), table.fields.end(),
                     [](const FieldInfo& each) { return each.counter && each.countsByItself; });
    // In a table that another program has created, the counter may have no triggers.
    if (counter == table.fields.end())
        return {};
    return u"(SELECT 1 + max(%1, %2))"_s.arg(highestStored(table.name, rowNumber(table)),
                                             lastGiven(table.name));
}

QString SqliteDialect::joined(const QString& select) const
{
    // SQLite keeps the order of a subquery if the outer query has an aggregate other than count,
    // min and max. LIMIT -1 would ensure the order, too, but a query with a limit is sorted more
    // slowly.
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

QString SqliteDialect::newCounterValue(const TableInfo& table, const FieldInfo& counter) const
{
    return counterValueWithoutTrigger(table.name, counter.name);
}

QStringList SqliteDialect::counterStatements(const QString& table, const QString& field) const
{
    return counterMaking(table, field);
}

} // namespace dao::sqlite
