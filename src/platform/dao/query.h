#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace dao {

/// A query text taken apart: SELECT * FROM table [WHERE field = number] [ORDER BY field [ASC]].
struct SelectQuery
{
    struct Condition
    {
        QString field;
        QVariant value; ///< A qlonglong or a double.
    };

    QString table;
    std::optional<Condition> where;
    QString orderBy; ///< Empty for the table's own order.
};

/// True for a text that begins like a query, so is no table's name.
bool isQuery(const QString& source);

/// Throws QuerySyntax (3131) for a text that is no such query.
SelectQuery parseQuery(const QString& text);

} // namespace dao
