#pragma once

#include <QString>
#include <QVariant>

#include <optional>

namespace dao {

/// A parsed query of the form SELECT * FROM table [WHERE field = number] [ORDER BY field [ASC]].
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

/// The condition of a query, or nothing if the query has no condition.
using Where = std::optional<SelectQuery::Condition>;

/// Returns true if the text starts like a query. A text for which the function returns false is a
/// table name.
bool isQuery(const QString& source);

/// Parses the text of a query. Throws QuerySyntax (3131) if the text is not a query of the
/// supported form.
SelectQuery parseQuery(const QString& text);

} // namespace dao
