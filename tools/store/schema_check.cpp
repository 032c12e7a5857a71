#include "tools/store/schema_check.h"

#include "store/line_columns.h"
#include "tools/store/shared_texts.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

bool isFixed(const store::TableSchema& table, int ordinal)
{
    return table.name == "Cuts"_L1 && store::line::isReachedByOrdinal(ordinal);
}

QString typeName(const dao::FieldInfo& field)
{
    switch (field.type) {
    case dao::dbBoolean:
        return u"BOOLEAN"_s;
    case dao::dbInteger:
        return u"INTEGER"_s;
    case dao::dbLong:
        return field.counter ? u"COUNTER"_s : u"LONG"_s;
    case dao::dbDouble:
        return u"DOUBLE"_s;
    case dao::dbDate:
        return u"DATETIME"_s;
    case dao::dbText:
        break;
    }
    return field.size > 0 ? u"TEXT(%1)"_s.arg(field.size) : u"TEXT"_s;
}

QStringList checkFields(const store::TableSchema& expected, const store::TableSchema& found)
{
    QStringList findings;
    for (std::size_t i = 0; i < expected.fields.size(); ++i) {
        const dao::FieldInfo& wanted = expected.fields[i];
        const int ordinal = found.ordinalOf(wanted.name);
        if (ordinal < 0) {
            findings.append(say(fieldIsMissing, fieldOf(expected.name, wanted.name)));
            continue;
        }
        const QString type = typeName(found.fields[static_cast<std::size_t>(ordinal)]);
        if (type != typeName(wanted))
            findings.append(say({u"%1: is %2 and should be %3", u"השדה %1 הוא %2 וצריך להיות %3"},
                                fieldOf(expected.name, wanted.name), type, typeName(wanted)));
        const int place = static_cast<int>(i);
        if (ordinal != place && isFixed(expected, place))
            findings.append(say({u"%1: stands at ordinal %2 and should stand at %3",
                                 u"השדה %1 נמצא במקום %2 וצריך להיות במקום %3"},
                                fieldOf(expected.name, wanted.name), ordinal, place));
    }
    return findings;
}

bool isOn(const dao::IndexInfo& index, const QStringList& fields)
{
    return index.fields.join(u'\n').compare(fields.join(u'\n'), Qt::CaseInsensitive) == 0;
}

/// Returns the findings about a table's indexes. The program depends on the first index, so the
/// first index must be the expected one. The other indexes only make access faster and may be in
/// any order.
QStringList checkIndexes(const store::TableSchema& expected, const store::TableSchema& found)
{
    QStringList findings;
    const QStringList& first = expected.indexes.front().fields;
    if (found.indexes.empty() || !isOn(found.indexes.front(), first))
        findings.append(
            say({u"%1: the first index is not on %2", u"בטבלה %1 האינדקס הראשון אינו לפי %2"},
                expected.name, first.join(u", "_s)));
    for (std::size_t i = 1; i < expected.indexes.size(); ++i) {
        const QStringList& wanted = expected.indexes[i].fields;
        const bool exists = std::ranges::any_of(
            found.indexes, [&](const dao::IndexInfo& index) { return isOn(index, wanted); });
        if (!exists)
            findings.append(say({u"%1: there is no index on %2", u"בטבלה %1 אין אינדקס לפי %2"},
                                expected.name, wanted.join(u", "_s)));
    }
    return findings;
}

bool contains(const QStringList& names, const QString& name)
{
    return names.contains(name, Qt::CaseInsensitive);
}

/// Returns the findings about fields that the program does not create, and about fields that do not
/// allow Null although the program may store Null in them.
QStringList foreignFields(const store::TableSchema& expected, const store::TableSchema& found)
{
    QStringList findings;
    for (const dao::FieldInfo& field : found.fields) {
        const int ordinal = expected.ordinalOf(field.name);
        if (ordinal < 0) {
            findings.append(say({u"%1: is no field of the store", u"השדה %1 אינו של התוכנית"},
                                fieldOf(expected.name, field.name)));
            continue;
        }
        const dao::FieldInfo& wanted = expected.fields[static_cast<std::size_t>(ordinal)];
        const bool mayBeRequired = wanted.counter || wanted.type == dao::dbBoolean ||
                                   contains(expected.indexes.front().fields, wanted.name);
        if (field.required && !mayBeRequired)
            findings.append(say({u"%1: does not take Null", u"השדה %1 אינו יכול להיות ריק"},
                                fieldOf(expected.name, wanted.name)));
    }
    return findings;
}

QString uniqueness(const dao::IndexInfo& index)
{
    if (index.primary)
        return say({u"the primary key", u"המפתח הראשי"});
    return index.unique ? say({u"a unique index", u"אינדקס בלי כפילויות"})
                        : say({u"an index that is not unique", u"אינדקס שמרשה כפילויות"});
}

/// Returns the findings about indexes that the program does not create or creates differently.
QStringList foreignIndexes(const store::TableSchema& expected, const store::TableSchema& found)
{
    QStringList findings;
    for (const dao::IndexInfo& index : found.indexes) {
        const auto wanted = std::ranges::find_if(
            expected.indexes, [&](const dao::IndexInfo& each) { return isOn(index, each.fields); });
        if (wanted == expected.indexes.end())
            findings.append(say({u"%1: the index '%2' is not the program's",
                                 u"בטבלה %1 האינדקס '%2' אינו של התוכנית"},
                                expected.name, index.name));
        else if (index.unique != wanted->unique || index.primary != wanted->primary)
            findings.append(say({u"%1: the index '%2' on %3 has to be %4",
                                 u"בטבלה %1 האינדקס '%2' לפי %3 צריך להיות %4"},
                                expected.name, index.name, wanted->fields.join(u", "_s),
                                Phrase{uniqueness(*wanted)}));
    }
    return findings;
}

/// Returns the definition of the table with this name from the store's eleven tables and the
/// program's own tables. Returns nullptr for any other name.
const store::TableSchema* expectedTable(const QString& name)
{
    if (const store::TableSchema* table = store::tableSchema(name))
        return table;
    const auto own = std::ranges::find(store::ownTables(), name, &store::TableSchema::name);
    return own == store::ownTables().end() ? nullptr : &*own;
}

} // namespace

QStringList checkForeignParts(const Layout& layout)
{
    QStringList findings;
    for (const store::TableSchema& found : layout) {
        const store::TableSchema* expected = expectedTable(found.name);
        // A table with the prefix "zomrel_" belongs to the program even if this version does not
        // know it, because a later version may have created it. Therefore it is not a finding.
        if (expected == nullptr && found.name.startsWith("zomrel_"_L1))
            continue;
        if (expected == nullptr || expected->name != found.name)
            findings.append(
                say({u"%1: is no table of the store", u"הטבלה %1 אינה של התוכנית"}, found.name));
        else
            findings += foreignFields(*expected, found) + foreignIndexes(*expected, found);
    }
    return findings;
}

QStringList checkSchema(const Layout& layout)
{
    QStringList findings;
    for (const store::TableSchema& expected : store::schema()) {
        if (const store::TableSchema* found = tableIn(layout, expected.name))
            findings += checkFields(expected, *found) + checkIndexes(expected, *found);
        else
            findings.append(say(tableIsMissing, expected.name));
    }
    for (const store::TableSchema& expected : store::ownTables()) {
        if (const store::TableSchema* found = tableIn(layout, expected.name))
            findings += checkFields(expected, *found) + checkIndexes(expected, *found);
    }
    return findings;
}

} // namespace storetools
