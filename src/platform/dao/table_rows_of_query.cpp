// Reads the rows of a query with their values in one snapshot, and counts the rows of a query.

#include "platform/dao/table_rows.h"

namespace dao {

using namespace Qt::StringLiterals;

int TableRows::count(Session& session) const
{
    return session.rows("SELECT count(*) FROM "_L1 + name_).front().front().toInt();
}

bool TableRows::isEmpty(Session& session) const
{
    return session.rows("SELECT 1 FROM "_L1 + name_ + " LIMIT 1"_L1).empty();
}

TableRows::Beginning TableRows::beginning(Session& session,
                                          const std::optional<SelectQuery::Condition>& where,
                                          const RowOrder& order, int limit) const
{
    const Statement met = condition(where);
    const QString count = u"(SELECT count(*) FROM %1%2)"_s.arg(name_, met.sql);
    const Statement numbers = selection(session, rowNumber_, where, order);
    // The row ids are sorted in a subquery, because an engine that sorts whole rows first reads the
    // values of every row.
    const QString sql =
        u"SELECT %1, %2 FROM %3 WHERE %4 IN (%5 LIMIT %6)"_s.arg(
            count, columns_, name_, rowNumber_, numbers.sql, QString::number(limit)) +
        ordering(session, order, 0, Direction::Forward);
    Beginning result;
    // The count and the subquery have the same condition and refer to the same parameter.
    for (StoredValues& columns : session.rows(sql, met.values)) {
        result.total = columns.front().toULongLong();
        columns.erase(columns.begin());
        result.rows.push_back(taken(std::move(columns)));
    }
    return result;
}

std::vector<StoredRow> TableRows::all(Session& session,
                                      const std::optional<SelectQuery::Condition>& where,
                                      const RowOrder& order) const
{
    const Statement statement = selection(session, columns_, where, order);
    return taken(session.rows(statement.sql, statement.values));
}

} // namespace dao
