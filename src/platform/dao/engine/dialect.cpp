#include "platform/dao/engine/dialect.h"

#include <algorithm>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

constexpr auto primaryKeyName = "PrimaryKey"_L1;

/// The columns in the result of a query for the fields of tables and views. The result has one row
/// for each field, and Dialect::tablesOf converts it.
enum TableColumn {
    TableName,
    IsTable,
    FieldName,
    FieldType,
    IsRequired,
    IsCounter,
    CountsByItself,
};

/// The columns of the result of indexesQuery.
enum IndexColumn { IndexName, IsPrimary, IsUnique, IndexField };

/// Returns the text with which the stored index names of a table start. In the program, index names
/// are unique only within a table, but the database engines require names that are unique in the
/// whole store.
QString indexPrefix(const QString& table)
{
    return table + u'.';
}

QString shownIndexName(const QString& table, const QString& stored)
{
    const QString prefix = indexPrefix(table);
    return stored.startsWith(prefix, Qt::CaseInsensitive) ? stored.mid(prefix.size()) : stored;
}

struct SplitType
{
    QStringView name;
    int size = 0;
};

/// Splits a declared type such as "TEXT(50)" into its name and its optional size. Returns nothing
/// if the text has another form. Does not use QRegularExpression, because its engine takes half a
/// megabyte of memory that the program does not need at start otherwise.
std::optional<SplitType> splitType(QStringView declared)
{
    constexpr qsizetype mostDigits = 9;
    const QStringView text = declared.trimmed();
    const qsizetype bracket = text.indexOf(u'(');
    if (bracket < 0)
        return SplitType{text};
    if (!text.endsWith(u')'))
        return {};
    const QStringView size = text.sliced(bracket + 1).chopped(1).trimmed();
    const bool isSize =
        !size.isEmpty() && size.size() <= mostDigits &&
        std::all_of(size.begin(), size.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    if (!isSize)
        return {};
    return SplitType{text.first(bracket).trimmed(), size.toInt()};
}

} // namespace

QString Dialect::quoted(const QString& name)
{
    QString inner = name;
    return u'"' + inner.replace(u'"', u"\"\""_s) + u'"';
}

QString Dialect::quoted(const QStringList& names)
{
    QStringList all;
    for (const QString& each : names)
        all.append(quoted(each));
    return all.join(u", "_s);
}

QString Dialect::literal(const QString& text)
{
    QString inner = text;
    return u'\'' + inner.replace(u'\'', u"''"_s) + u'\'';
}

QString Dialect::newCounterValue(const TableInfo& table, const FieldInfo& counter) const
{
    return u"(SELECT coalesce(max(%1), 0) + 1 FROM %2)"_s.arg(quoted(counter.name),
                                                              quoted(table.name));
}

Dialect::TableMaking Dialect::createTable(const TableInfo& table,
                                          const std::vector<IndexInfo>& indexes) const
{
    TableMaking making;
    QStringList keyFields;
    for (const IndexInfo& each : indexes) {
        if (each.primary)
            keyFields = each.fields;
        else
            making.after.append(createIndex(table.name, each));
    }
    QStringList parts;
    for (FieldInfo each : table.fields) {
        each.required = each.required || keyFields.contains(each.name, Qt::CaseInsensitive);
        parts.append(fieldDefinition(each));
        making.before += beforeField(each);
        if (each.counter)
            making.after += counterStatements(table.name, each.name);
    }
    if (!rowNumberDefinition().isEmpty())
        parts.append(rowNumberDefinition());
    if (!keyFields.isEmpty())
        parts.append(u"PRIMARY KEY (%1)"_s.arg(quoted(keyFields)));
    making.before.removeDuplicates();
    making.before.append(u"CREATE TABLE %1 (%2)"_s.arg(quoted(table.name), parts.join(u", "_s)));
    return making;
}

QString Dialect::createIndex(const QString& table, const IndexInfo& index) const
{
    return u"CREATE %1 %2 ON %3 (%4)"_s.arg(index.unique ? u"UNIQUE INDEX"_s : u"INDEX"_s,
                                            quoted(indexPrefix(table) + index.name), quoted(table),
                                            indexColumns(index));
}

QStringList Dialect::addField(const QString& table, const FieldInfo& field) const
{
    return beforeField(field) + QStringList(u"ALTER TABLE %1 ADD COLUMN %2"_s.arg(
                                    quoted(table), fieldDefinition(field)));
}

QString Dialect::fieldDefinition(const FieldInfo& field) const
{
    QString text = quoted(field.name) + u' ' + declaredType(field);
    if (field.counter)
        text += counterClause();
    else if (field.type == dbBoolean)
        text += " NOT NULL DEFAULT 0"_L1;
    else if (field.required)
        text += " NOT NULL"_L1;
    return text;
}

QString Dialect::declaredType(const FieldInfo& field) const
{
    const auto names = typeNames();
    const auto known = std::find_if(names.begin(), names.end(), [&field](const TypeName& each) {
        return each.type == field.type;
    });
    return field.size > 0 ? u"%1(%2)"_s.arg(known->name, QString::number(field.size))
                          : QString(known->name);
}

std::vector<IndexInfo> Dialect::indexesOf(const QString& table,
                                          const std::vector<StoredValues>& rows) const
{
    std::vector<IndexInfo> all;
    QString stored;
    for (const StoredValues& row : rows) {
        const QString field = row[IndexField].toString();
        if (field == rowNumberColumn())
            continue;
        if (all.empty() || stored != row[IndexName].toString()) {
            stored = row[IndexName].toString();
            const bool primary = row[IsPrimary].toBool();
            all.push_back({primary ? QString(primaryKeyName) : shownIndexName(table, stored),
                           {},
                           primary,
                           row[IsUnique].toBool()});
        }
        all.back().fields.append(field);
    }
    return all;
}

std::vector<TableInfo> Dialect::tablesOf(const std::vector<StoredValues>& rows) const
{
    std::vector<TableInfo> all;
    for (const StoredValues& row : rows) {
        const QString name = row[TableName].toString();
        if (all.empty() || all.back().name != name)
            all.push_back({name, row[IsTable].toBool(), {}, rowNumberColumn().isEmpty()});
        TableInfo& table = all.back();
        FieldInfo field;
        field.name = row[FieldName].toString();
        if (row[FieldName].isNull())
            continue;
        if (field.name == rowNumberColumn()) {
            table.numbered = true;
            continue;
        }
        readType(row[FieldType].toString(), field);
        field.required = row[IsRequired].toBool();
        field.counter = row[IsCounter].toBool();
        field.countsByItself = row[CountsByItself].toBool();
        table.fields.push_back(field);
    }
    return all;
}

void Dialect::readType(const QString& declared, FieldInfo& field) const
{
    const std::optional<SplitType> split = splitType(declared);
    const auto names = typeNames();
    const auto known = std::find_if(names.begin(), names.end(), [&](const TypeName& each) {
        return split && split->name.compare(each.name, Qt::CaseInsensitive) == 0;
    });
    field.type = known == names.end() ? dbText : known->type;
    if (known != names.end() && field.type == dbText)
        field.size = split->size;
}

} // namespace dao
