// The statements that write rows.

#include "platform/dao/table_rows.h"

namespace dao {

using namespace Qt::StringLiterals;

RowNumber TableRows::insert(Session& session, const std::vector<Assignment>& assignments) const
{
    QStringList columns;
    QStringList places;
    QVariantList values;
    std::vector<bool> assigned(table_.fields.size());
    if (const QString number = session.dialect().newRowNumber(table_); !number.isEmpty()) {
        columns.append(session.rowNumber(table_));
        places.append(number);
    }
    for (const Assignment& each : assignments) {
        assigned[static_cast<std::size_t>(each.ordinal)] = true;
        columns.append(target(each.ordinal));
        values.append(each.stored);
        places.append(parameter(values.size()));
    }
    for (std::size_t i = 0; i < table_.fields.size(); ++i) {
        const FieldInfo& each = table_.fields[i];
        if (!each.counter || each.countsByItself || assigned[i])
            continue;
        columns.append(Dialect::quoted(each.name));
        places.append(session.dialect().newCounterValue(table_, each));
    }
    const QString beginning = u"INSERT INTO %1 "_s.arg(name_);
    if (columns.isEmpty()) {
        session.requireExpectedMark(); // This form of the statement cannot have a condition.
        return session.insert(table_, beginning + "DEFAULT VALUES"_L1, values);
    }
    const QString condition = session.writeCondition();
    const QString row = places.join(u", "_s);
    const QString given = condition.isEmpty() ? u"VALUES (%1)"_s.arg(row)
                                              : u"SELECT %1 WHERE %2"_s.arg(row, condition);
    return session.insert(table_, u"%1(%2) %3"_s.arg(beginning, columns.join(u", "_s), given),
                          values);
}

/// Returns the WHERE clause of a statement that writes one row. `number` is the number of the
/// parameter that contains the row id.
QString TableRows::writtenRow(Session& session, qsizetype number) const
{
    QStringList conditions{rowNumber_ + " = "_L1 + parameter(number)};
    if (const QString condition = session.writeCondition(); !condition.isEmpty())
        conditions.append(condition);
    return whereText(conditions);
}

bool TableRows::update(Session& session, RowNumber number,
                       const std::vector<Assignment>& assignments) const
{
    QStringList parts;
    QVariantList values;
    for (const Assignment& each : assignments) {
        values.append(each.stored);
        parts.append(target(each.ordinal) + " = "_L1 + parameter(values.size()));
    }
    values.append(number);
    const QString sql =
        u"UPDATE %1 SET "_s.arg(name_) + parts.join(u", "_s) + writtenRow(session, values.size());
    return session.write(sql, values) > 0;
}

bool TableRows::remove(Session& session, RowNumber number) const
{
    return session.write("DELETE FROM "_L1 + name_ + writtenRow(session, 1), {number}) > 0;
}

} // namespace dao
