// Tables, fields and indexes of an embedded store.

#include "platform/dao/sqlite/sqlite_counters.h"
#include "platform/dao/sqlite/sqlite_session.h"

#include <QRegularExpression>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

constexpr auto primaryKeyName = "PrimaryKey"_L1;

/// Type and size by a declared type's spelling; what is unknown is a text without limit.
void readDeclaredType(const QString& declared, FieldInfo& field)
{
    static const QRegularExpression spelling(
        uR"(^\s*([A-Za-z]+)\s*(?:\(\s*([0-9]{1,9})\s*\))?\s*$)"_s);
    const QRegularExpressionMatch match = spelling.match(declared);
    const QString name = match.captured(1).toUpper();
    field.type = dbText;
    if (name == "TEXT"_L1)
        field.size = match.captured(2).toInt();
    else if (name == "COUNTER"_L1 || name == "LONG"_L1)
        field.type = dbLong;
    else if (name == "INTEGER"_L1)
        field.type = dbInteger;
    else if (name == "DOUBLE"_L1)
        field.type = dbDouble;
    else if (name == "DATETIME"_L1)
        field.type = dbDate;
    else if (name == "BOOLEAN"_L1)
        field.type = dbBoolean;
    field.counter = name == "COUNTER"_L1;
}

QString declaredType(const FieldInfo& field)
{
    switch (field.type) {
    case dbBoolean:
        return u"BOOLEAN"_s;
    case dbInteger:
        return u"INTEGER"_s;
    case dbLong:
        return field.counter ? u"COUNTER"_s : u"LONG"_s;
    case dbDouble:
        return u"DOUBLE"_s;
    case dbDate:
        return u"DATETIME"_s;
    case dbText:
        break;
    }
    return field.size > 0 ? u"TEXT(%1)"_s.arg(field.size) : u"TEXT"_s;
}

/// A field's name, type and constraints, as they stand in CREATE TABLE and ADD COLUMN.
QString fieldDefinition(const FieldInfo& field)
{
    QString text = Driver::quoted(field.name) + u' ' + declaredType(field);
    if (field.type == dbBoolean)
        text += " NOT NULL DEFAULT 0"_L1;
    else if (field.required && !field.counter)
        text += " NOT NULL"_L1;
    return text;
}

/// Index names are one name space for all tables there, so a table's indexes carry its name.
QString storedIndexName(const QString& table, const QString& index)
{
    return table + u'.' + index;
}

QString shownIndexName(const QString& table, const QString& stored)
{
    const QString prefix = table + u'.';
    return stored.startsWith(prefix, Qt::CaseInsensitive) ? stored.mid(prefix.size()) : stored;
}

} // namespace

std::vector<TableInfo> SqliteDriver::tables()
{
    std::vector<TableInfo> all;
    for (const StoredValues& row :
         rows(u"SELECT name, type = 'table' FROM sqlite_master WHERE type IN ('table', 'view') "
              "AND name NOT LIKE 'sqlite!_%' ESCAPE '!' AND name <> $1 ORDER BY rowid"_s,
              {QString(sqlite::counterTable)}))
        all.push_back({row[0].toString(), row[1].toBool(), {}});
    return all;
}

std::optional<TableInfo> SqliteDriver::table(const QString& name)
{
    const auto known = schema().tables.find(name);
    if (known != schema().tables.end())
        return known->second;
    return schema().tables.emplace(name, readTable(name)).first->second;
}

std::optional<TableInfo> SqliteDriver::readTable(const QString& name)
{
    std::optional<TableInfo> found;
    for (const StoredValues& row :
         rows(u"SELECT m.name, m.type = 'table', c.name, c.type, c.\"notnull\" "
              "FROM sqlite_master m, pragma_table_info(m.name) c "
              "WHERE m.name = $1 COLLATE NOCASE AND m.type IN ('table', 'view') ORDER BY c.cid"_s,
              {name})) {
        if (!found)
            found = TableInfo{row[0].toString(), row[1].toBool(), {}};
        FieldInfo field;
        field.name = row[2].toString();
        field.required = row[4].toBool();
        readDeclaredType(row[3].toString(), field);
        found->fields.push_back(field);
    }
    return found;
}

std::vector<IndexInfo> SqliteDriver::indexes(const QString& table)
{
    const auto known = schema().indexes.find(table);
    if (known != schema().indexes.end())
        return known->second;
    return schema().indexes.emplace(table, readIndexes(table)).first->second;
}

std::vector<IndexInfo> SqliteDriver::readIndexes(const QString& table)
{
    std::vector<IndexInfo> all;
    IndexInfo primary{primaryKeyName, {}, true, true};
    for (const StoredValues& row :
         rows(u"SELECT name FROM pragma_table_info($1) WHERE pk > 0 ORDER BY pk"_s, {table}))
        primary.fields.append(row[0].toString());
    if (!primary.fields.isEmpty())
        all.push_back(primary);
    QString stored;
    for (const StoredValues& row :
         rows(u"SELECT l.name, i.name, l.\"unique\" FROM pragma_index_list($1) l "
              "JOIN sqlite_master m ON m.type = 'index' AND m.name = l.name "
              "JOIN pragma_index_info(l.name) i "
              "WHERE l.origin <> 'pk' AND NOT l.partial "
              "AND NOT EXISTS (SELECT 1 FROM pragma_index_info(l.name) e WHERE e.name IS NULL) "
              "ORDER BY m.rowid, i.seqno"_s,
              {table})) {
        if (all.empty() || stored != row[0].toString()) {
            stored = row[0].toString();
            all.push_back({shownIndexName(table, stored), {}, false, row[2].toBool()});
        }
        all.back().fields.append(row[1].toString());
    }
    return all;
}

QStringList SqliteDriver::createTable(const TableInfo& table,
                                      const std::vector<IndexInfo>& indexes) const
{
    QStringList parts;
    QStringList following;
    QString primaryKey;
    QStringList keyFields;
    for (const IndexInfo& each : indexes) {
        if (!each.primary) {
            following.append(createIndex(table.name, each));
            continue;
        }
        keyFields = each.fields;
        primaryKey = u", PRIMARY KEY (%1)"_s.arg(quoted(each.fields));
    }
    for (FieldInfo each : table.fields) {
        each.required = each.required || keyFields.contains(each.name, Qt::CaseInsensitive);
        parts.append(fieldDefinition(each));
        if (each.counter)
            following.append(sqlite::counterMaking(table.name, each.name));
    }
    return QStringList(u"CREATE TABLE %1 (%2%3)"_s.arg(quoted(table.name), parts.join(u", "_s),
                                                       primaryKey)) +
           following;
}

QString SqliteDriver::createIndex(const QString& table, const IndexInfo& index) const
{
    return u"CREATE %1 %2 ON %3 (%4)"_s.arg(index.unique ? u"UNIQUE INDEX"_s : u"INDEX"_s,
                                            quoted(storedIndexName(table, index.name)),
                                            quoted(table), quoted(index.fields));
}

QStringList SqliteDriver::addField(const QString& table, const FieldInfo& field) const
{
    return {u"ALTER TABLE %1 ADD COLUMN %2"_s.arg(quoted(table), fieldDefinition(field))};
}

} // namespace dao
