#include "platform/dao/examination.h"

#include "platform/dao/database.h"
#include "platform/dao/engine/values.h"
#include "platform/dao/table_rows.h"

#include <algorithm>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t rowsPerRead = 256;

/// Returns true if `stored` has the type with which the engine stores the values of a field of type
/// `type`.
bool isStoredAs(DataType type, const QVariant& stored)
{
    const int kind = stored.typeId();
    const bool isWhole = kind == QMetaType::Int || kind == QMetaType::LongLong;
    switch (type) {
    case dbBoolean:
        return isWhole || kind == QMetaType::Bool;
    case dbInteger:
    case dbLong:
        return isWhole;
    case dbDouble:
        return isWhole || kind == QMetaType::Double;
    case dbDate:
        return kind == QMetaType::QString || kind == QMetaType::QDate ||
               kind == QMetaType::QDateTime;
    case dbText:
        break;
    }
    return kind == QMetaType::QString;
}

ExaminedRow examined(const TableInfo& table, const StoredRow& row)
{
    ExaminedRow result;
    result.key = row.number;
    result.values.resize(table.fields.size());
    for (std::size_t i = 0; i < table.fields.size(); ++i) {
        try {
            const QVariant& stored = row.values[i];
            result.values[i] = fromStored(table.fields[i], stored);
            if (!stored.isNull() && !isStoredAs(table.fields[i].type, stored))
                result.mistyped.push_back(static_cast<int>(i));
        } catch (const runtime::RunTimeError&) {
            result.unreadable.push_back(static_cast<int>(i));
        }
    }
    return result;
}

} // namespace

QStringList engineFindings(Database& database)
{
    return database.session().bulk()->integrityFindings();
}

QStringList foreignObjects(Database& database)
{
    return database.session().bulk()->foreignObjects();
}

bool hasBrokenMark(Database& database)
{
    Session& session = database.session();
    if (!session.table(storeMarkTable))
        return false;
    const std::vector<StoredValues> found =
        session.rows(u"SELECT identity, generation FROM %1"_s.arg(storeMarkTable));
    return found.size() != 1 || found[0][0].toString().isEmpty() ||
           found[0][1].toString().isEmpty();
}

void examineRows(Database& database, const QString& table,
                 const std::function<void(const ExaminedRow&)>& visitor)
{
    Session& session = database.session();
    const TableRows rows(session, session.expectTable(table));
    const RowNumbers numbers = rows.numbers(session, {}, {});
    const std::span all(numbers);
    for (std::size_t start = 0; start < all.size(); start += rowsPerRead) {
        const std::size_t count = std::min(rowsPerRead, all.size() - start);
        for (const std::optional<StoredRow>& row : rows.fetch(session, all.subspan(start, count))) {
            if (row)
                visitor(examined(rows.table(), *row));
        }
    }
}

bool ExaminedCounter::isExhausted() const
{
    return std::max(highest, mark.value_or(0)) >= highestCounter;
}

ExaminedCounter examineCounter(Database& database, const QString& table, const QString& field)
{
    Session& session = database.session();
    ExaminedCounter counter;
    // The highest stored number is read before the counter's last number. In the reverse order,
    // another station could add a row in between. The counter's last number would then seem too
    // low.
    counter.highest =
        session
            .rows(u"SELECT max(%1) FROM %2"_s.arg(Dialect::quoted(field), Dialect::quoted(table)))
            .front()
            .front()
            .toLongLong();
    counter.mark = session.bulk()->counterMark(table, field);
    return counter;
}

} // namespace dao
