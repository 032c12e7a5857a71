// Finds objects in an embedded store that this program has not created.

#include "platform/dao/sqlite/sqlite_bulk.h"
#include "platform/dao/sqlite/sqlite_dialect.h"

#include <QRegularExpression>

#include <algorithm>

namespace dao::sqlite {

using namespace Qt::StringLiterals;

namespace {

/// Returns true if the SQL declaration of a table contains a constraint, a default or an option
/// that the program does not use. Quoted names and string literals in the declaration are ignored.
bool hasForeignClause(QString declaration)
{
    static const QRegularExpression quoted(
        uR"("(?:[^"]|"")*"|'(?:[^']|'')*'|\[[^\]]*\]|`[^`]*`)"_s);
    static const QRegularExpression clause(
        uR"(\b(CHECK|REFERENCES|GENERATED|AS|COLLATE|CONFLICT|WITHOUT|STRICT|DEFAULT(?!\s+0\b))\b)"_s,
        QRegularExpression::CaseInsensitiveOption);
    return clause.match(declaration.remove(quoted)).hasMatch();
}

} // namespace

QStringList SqliteBulk::foreignObjects()
{
    QStringList findings;
    for (const StoredValues& row :
         session_.rows(u"SELECT type, name, tbl_name, sql FROM sqlite_master "
                       "WHERE type <> 'index' ORDER BY rowid"_s)) {
        const QString type = row[0].toString();
        const QString name = row[1].toString();
        const QString table = row[2].toString();
        const QString declaration = row[3].toString();
        if (type == "view"_L1)
            findings.append(u"the view '%1' is not the program's"_s.arg(name));
        else if (type == "trigger"_L1 && !isCounterTrigger(table, declaration))
            findings.append(
                u"the trigger '%1' of %2 is not as the program makes it"_s.arg(name, table));
        else if (type == "table"_L1 && hasForeignClause(declaration))
            findings.append(
                u"the table %1 has a clause that the program does not make"_s.arg(name));
    }
    for (const StoredValues& row : session_.rows(
             u"SELECT DISTINCT m.name, m.tbl_name FROM sqlite_master m "
             "JOIN pragma_index_list(m.tbl_name) l ON l.name = m.name "
             "WHERE m.type = 'index' AND (l.partial OR EXISTS "
             "(SELECT 1 FROM pragma_index_xinfo(m.name) i WHERE i.key AND (i.name IS NULL "
             "OR i.\"desc\" OR i.coll <> 'BINARY')))"_s))
        findings.append(u"the index '%1' of %2 is not as the program makes it"_s.arg(
            row[0].toString(), row[1].toString()));
    return findings;
}

bool SqliteBulk::isCounterTrigger(const QString& table, const QString& declaration)
{
    const std::optional<TableInfo> info = session_.table(table);
    return info &&
           std::any_of(info->fields.begin(), info->fields.end(), [&](const FieldInfo& each) {
               return each.counter && SqliteDialect::instance()
                                          .counterStatements(info->name, each.name)
                                          .contains(declaration);
           });
}

} // namespace dao::sqlite
