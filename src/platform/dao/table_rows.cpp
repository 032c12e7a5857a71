#include "platform/dao/table_rows.h"

#include <QHash>

#include <algorithm>
#include <charconv>

namespace dao {

using namespace Qt::StringLiterals;

StoredRow taken(StoredValues&& columns)
{
    StoredRow row;
    row.number = columns.front().toLongLong();
    columns.erase(columns.begin());
    row.values = std::move(columns);
    return row;
}

std::vector<StoredRow> taken(std::vector<StoredValues>&& rows)
{
    std::vector<StoredRow> result;
    result.reserve(rows.size());
    for (StoredValues& columns : rows)
        result.push_back(taken(std::move(columns)));
    return result;
}

QString parameter(qsizetype number)
{
    return u'$' + QString::number(number);
}

QString whereText(const QStringList& conditions)
{
    return conditions.isEmpty() ? QString() : " WHERE "_L1 + conditions.join(" AND "_L1);
}

namespace {

/// Returns the row ids in a text of numbers that are separated by commas. Uses std::from_chars,
/// because it is several times faster than QString::toLongLong.
RowNumbers rowNumbersIn(const QString& joined)
{
    const QByteArray text = joined.toLatin1();
    RowNumbers numbers;
    numbers.reserve(static_cast<std::size_t>(text.count(',')) + 1);
    for (const char *at = text.begin(), *end = text.end(); at < end; ++at) {
        RowNumber number = 0;
        at = std::from_chars(at, end, number).ptr; // It stops at a comma or at the end.
        numbers.push_back(number);
    }
    return numbers;
}

/// Adds "field = value" to `conditions`, or "field IS NULL" if the value is Null, because the
/// operator = is never true for Null.
void addEqual(const QString& field, const QVariant& value, QStringList& conditions,
              QVariantList& values)
{
    if (value.isNull()) {
        conditions.append(field + " IS NULL"_L1);
        return;
    }
    values.append(value);
    conditions.append(field + " = "_L1 + parameter(values.size()));
}

bool isWholeNumber(const QVariant& value)
{
    return value.typeId() == QMetaType::Int || value.typeId() == QMetaType::LongLong;
}

struct Bound
{
    QString condition;
    QVariantList values;
};

/// Returns SQL conditions for the rows in which the field is sorted after the value (forward) or
/// before it (backward). Null is sorted before every other value, so backward the condition for
/// lower values comes first and the condition for Null second. Null needs a condition of its own,
/// because in SQL no comparison with Null is true.
std::vector<Bound> beyond(const QString& field, const QVariant& value, const QString& parameter,
                          bool forward)
{
    if (forward && value.isNull())
        return {{field + " IS NOT NULL"_L1, {}}};
    if (forward)
        return {{field + " > "_L1 + parameter, {value}}};
    if (value.isNull())
        return {};
    return {{field + " < "_L1 + parameter, {value}}, {field + " IS NULL"_L1, {}}};
}

} // namespace

TableRows::TableRows(const Session& session, TableInfo table)
    : table_(std::move(table)), name_(Dialect::quoted(table_.name)),
      rowNumber_(name_ + u'.' + session.rowNumber(table_))
{
    QStringList columns(rowNumber_);
    for (std::size_t i = 0; i < table_.fields.size(); ++i)
        columns.append(field(static_cast<int>(i)));
    columns_ = columns.join(u", "_s);
    select_ = u"SELECT %1 FROM %2"_s.arg(columns_, name_);
}

int TableRows::expectField(const QString& name) const
{
    const int ordinal = table_.ordinalOf(name);
    if (ordinal < 0)
        throw runtime::RunTimeError(runtime::TooFewParameters);
    return ordinal;
}

QString TableRows::target(int ordinal) const
{
    return Dialect::quoted(table_.fields[static_cast<std::size_t>(ordinal)].name);
}

/// Returns the name of the field, qualified by the name of the table. For an unknown quoted name
/// without a table, SQLite would use a string literal instead of reporting an error.
QString TableRows::field(int ordinal) const
{
    return name_ + u'.' + target(ordinal);
}

QString TableRows::sortField(const Session& session, int ordinal) const
{
    return session.dialect().sorted(table_.fields[static_cast<std::size_t>(ordinal)],
                                    field(ordinal));
}

QString TableRows::ordering(const Session& session, const RowOrder& order, std::size_t from,
                            Direction direction) const
{
    const bool forward = direction == Direction::Forward;
    QStringList terms;
    for (std::size_t i = from; i < order.size(); ++i) {
        // NULLS FIRST is omitted for a field that cannot be Null, because the engine can then also
        // use an index that was created without NULLS FIRST.
        const bool withoutNull = table_.fields[static_cast<std::size_t>(order[i])].required;
        const QString nulls = withoutNull ? QString()
                              : forward   ? u" NULLS FIRST"_s
                                          : u" NULLS LAST"_s;
        terms.append(sortField(session, order[i]) + (forward ? " ASC"_L1 : " DESC"_L1) + nulls);
    }
    terms.append(rowNumber_ + (forward ? " ASC"_L1 : " DESC"_L1));
    return " ORDER BY "_L1 + terms.join(u", "_s);
}

/// Adds the condition "field = number" of a query to `conditions`. A text field is compared with
/// the number's decimal text. A date field never equals a number.
void TableRows::addCondition(const SelectQuery::Condition& where, QStringList& conditions,
                             QVariantList& values) const
{
    const int ordinal = expectField(where.field);
    switch (table_.fields[static_cast<std::size_t>(ordinal)].type) {
    case dbDate:
        conditions.append(u"1 = 0"_s);
        break;
    case dbText:
        addEqual(field(ordinal), where.value.toString(), conditions, values);
        break;
    default:
        addEqual(field(ordinal), where.value, conditions, values);
    }
}

TableRows::Statement TableRows::condition(const Where& where) const
{
    QStringList conditions;
    QVariantList values;
    if (where)
        addCondition(*where, conditions, values);
    return {whereText(conditions), values};
}

TableRows::Statement TableRows::selection(const Session& session, const QString& selected,
                                          const Where& where, const RowOrder& order) const
{
    const Statement met = condition(where);
    return {u"SELECT %1 FROM %2"_s.arg(selected, name_) + met.sql +
                ordering(session, order, 0, Direction::Forward),
            met.values};
}

TableRows::Statement TableRows::numbersStatement(Session& session, const Where& where,
                                                 const RowOrder& order) const
{
    const Statement numbers = selection(session, rowNumber_, where, order);
    return {session.dialect().joined(numbers.sql), numbers.values};
}

RowNumbers TableRows::numbers(Session& session, const Where& where, const RowOrder& order) const
{
    const Statement statement = numbersStatement(session, where, order);
    return rowNumbersIn(session.rows(statement.sql, statement.values).front().front().toString());
}

TableRows::Listed TableRows::listed(Session& session, const Where& where,
                                    const RowOrder& order) const
{
    const Statement statement = numbersStatement(session, where, order);
    const QString list = Dialect::quoted(u" list"_s);
    const QString numbers = list + u".numbers"_s;
    const QString sql = u"SELECT %1, %2 FROM (%3) AS %4 LEFT JOIN %5 ON %6 = %7"_s.arg(
        numbers, columns_, statement.sql, list, name_, rowNumber_,
        session.dialect().firstOf(numbers));
    StoredValues columns = std::move(session.rows(sql, statement.values).front());
    Listed result{rowNumbersIn(columns.front().toString()), {}};
    columns.erase(columns.begin());
    if (!result.numbers.empty() && !columns.front().isNull())
        result.first = taken(std::move(columns));
    return result;
}

TableRows::Beginning TableRows::beginning(Session& session, const Where& where,
                                          const RowOrder& order, int limit) const
{
    const Statement met = condition(where);
    const QString count = u"(SELECT count(*) FROM %1%2)"_s.arg(name_, met.sql);
    const Statement numbers = selection(session, rowNumber_, where, order);
    // The subquery finds and sorts only row ids. If it sorted whole rows, an engine could read the
    // values of every row in the table.
    const QString sql =
        u"SELECT %1, %2 FROM %3 WHERE %4 IN (%5 LIMIT %6)"_s.arg(
            count, columns_, name_, rowNumber_, numbers.sql, QString::number(limit)) +
        ordering(session, order, 0, Direction::Forward);
    Beginning result;
    // The list of parameter values contains the value of the condition only once, because the
    // subqueries for the count and for the row ids use the same parameter.
    for (StoredValues& columns : session.rows(sql, met.values)) {
        result.total = columns.front().toULongLong();
        columns.erase(columns.begin());
        result.rows.push_back(taken(std::move(columns)));
    }
    return result;
}

std::vector<StoredRow> TableRows::all(Session& session, const Where& where,
                                      const RowOrder& order) const
{
    const Statement statement = selection(session, columns_, where, order);
    return taken(session.rows(statement.sql, statement.values));
}

std::optional<KeyRun> TableRows::keyRun(Session& session, int key) const
{
    const QString counted = u"(SELECT count(*) FROM %1%2)"_s;
    const QString end = u"(SELECT %1(%2) FROM %3)"_s;
    const QStringList asked{
        counted.arg(name_, QString()),
        counted.arg(name_, u" WHERE %1 IS NULL"_s.arg(field(key))),
        end.arg(u"min"_s, field(key), name_),
        end.arg(u"max"_s, field(key), name_),
    };
    const StoredValues seen = session.rows("SELECT "_L1 + asked.join(u", "_s)).front();
    // Returns nothing if the lowest or the highest key is not a whole number, for example in an
    // empty table. The difference of the two keys is needed to find out whether the keys have gaps.
    if (!std::all_of(seen.begin(), seen.end(), isWholeNumber))
        return {};
    const qint64 first = seen[2].toLongLong();
    // The lowest key is subtracted from the highest as an unsigned number, because the difference
    // may exceed a signed 64-bit number.
    const auto count = static_cast<quint64>(seen[0].toLongLong());
    const auto width = static_cast<quint64>(seen[3].toLongLong()) - static_cast<quint64>(first);
    if (seen[1].toLongLong() != 0 || width != count - 1)
        return {};
    return KeyRun{first, static_cast<std::size_t>(count)};
}

std::vector<StoredRow> TableRows::rowsOfKeys(Session& session, int key, qint64 first,
                                             qint64 last) const
{
    const QStringList conditions{field(key) + " >= $1"_L1, field(key) + " <= $2"_L1};
    return taken(session.rows(select_ + whereText(conditions), {first, last}));
}

int TableRows::count(Session& session) const
{
    return session.rows("SELECT count(*) FROM "_L1 + name_).front().front().toInt();
}

bool TableRows::isEmpty(Session& session) const
{
    return session.rows("SELECT 1 FROM "_L1 + name_ + " LIMIT 1"_L1).empty();
}

std::optional<StoredRow> TableRows::fetch(Session& session, RowNumber number) const
{
    return pick(session, {rowNumber_ + " = $1"_L1}, {number}, {});
}

std::vector<std::optional<StoredRow>> TableRows::fetch(Session& session,
                                                       std::span<const RowNumber> numbers) const
{
    std::vector<std::optional<StoredRow>> result(numbers.size());
    if (numbers.empty())
        return result;
    QHash<RowNumber, std::size_t> places;
    QStringList list;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        places.insert(numbers[i], i);
        list.append(QString::number(numbers[i]));
    }
    const QString condition = u" WHERE %1 IN (%2)"_s.arg(rowNumber_, list.join(u','));
    for (StoredValues& columns : session.rows(select_ + condition)) {
        StoredRow row = taken(std::move(columns));
        const std::size_t place = places.value(row.number);
        result[place] = std::move(row);
    }
    return result;
}

std::optional<StoredRow> TableRows::pick(Session& session, const QStringList& conditions,
                                         const QVariantList& values, const QString& ordering) const
{
    std::vector<StoredValues> found =
        session.rows(select_ + whereText(conditions) + ordering + " LIMIT 1"_L1, values);
    if (found.empty())
        return {};
    return taken(std::move(found.front()));
}

std::optional<StoredRow> TableRows::start(Session& session, const RowOrder& order,
                                          Direction direction) const
{
    return pick(session, {}, {}, ordering(session, order, 0, direction));
}

/// Searches for the row that follows or precedes `from` in the sort order. The first search is
/// among the rows that equal `from` in all sort fields. The next search is among the rows that
/// equal `from` in all sort fields but the last one, and so on until a row is found. Each search is
/// one look-up in an index.
std::optional<StoredRow> TableRows::neighbour(Session& session, const RowOrder& order,
                                              const StoredRow& from, Direction direction) const
{
    for (std::size_t agreeing = order.size() + 1; agreeing-- > 0;) {
        QStringList conditions;
        QVariantList values;
        for (std::size_t i = 0; i < agreeing; ++i)
            addEqual(field(order[i]), from.values[static_cast<std::size_t>(order[i])], conditions,
                     values);
        const bool byNumber = agreeing == order.size();
        const QString name = byNumber ? rowNumber_ : sortField(session, order[agreeing]);
        const QVariant bound = byNumber ? QVariant(from.number)
                                        : from.values[static_cast<std::size_t>(order[agreeing])];
        for (const Bound& each :
             beyond(name, bound, parameter(values.size() + 1), direction == Direction::Forward)) {
            if (auto row =
                    pick(session, conditions + QStringList(each.condition), values + each.values,
                         ordering(session, order, agreeing, direction)))
                return row;
        }
    }
    return {};
}

std::optional<StoredRow> TableRows::find(Session& session, const RowOrder& order,
                                         const QVariant& value) const
{
    QStringList conditions;
    QVariantList values;
    addEqual(field(order.front()), value, conditions, values);
    return pick(session, conditions, values, ordering(session, order, 1, Direction::Forward));
}

} // namespace dao
