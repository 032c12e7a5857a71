// COUNTER fields of an embedded store.

#include "platform/dao/sqlite_counters.h"

#include "platform/dao/sqlite_driver.h"

#include <algorithm>

namespace dao {

using namespace Qt::StringLiterals;

namespace {

QString literal(const QString& text)
{
    QString inner = text;
    return u'\'' + inner.replace(u'\'', u"''"_s) + u'\'';
}

QString counterTriggerName(const QString& table, const QString& field)
{
    return table + u'.' + field + ".counter"_L1;
}

} // namespace

/// Numbers a new row past the highest number that the table holds or has ever held. The high-water
/// mark lies in the engine's own sequence table, which every station sees and which goes with the
/// insertion's own transaction.
QString sqlite::counterTrigger(const QString& table, const QString& field)
{
    return QStringLiteral(
               "CREATE TRIGGER %1 AFTER INSERT ON %2 BEGIN "
               "UPDATE %2 SET %3 = 1 + max(ifnull((SELECT max(%3) FROM %2), 0), "
               "ifnull((SELECT max(seq) FROM sqlite_sequence WHERE name = %4), 0)) "
               "WHERE rowid = NEW.rowid AND %3 IS NULL; "
               "INSERT INTO sqlite_sequence (name, seq) SELECT %4, 0 "
               "WHERE NOT EXISTS (SELECT 1 FROM sqlite_sequence WHERE name = %4); "
               "UPDATE sqlite_sequence SET seq = (SELECT %3 FROM %2 WHERE rowid = NEW.rowid) "
               "WHERE name = %4 AND seq < (SELECT %3 FROM %2 WHERE rowid = NEW.rowid); "
               "END")
        .arg(Driver::quoted(counterTriggerName(table, field)), Driver::quoted(table),
             Driver::quoted(field), literal(table));
}

QString SqliteDriver::counterValue(const QString& table, const QString& field)
{
    const QString counter = table + u'.' + field;
    const auto known = schema().counters.find(counter);
    if (known != schema().counters.end())
        return known->second;
    return schema().counters.emplace(counter, readCounterValue(table, field)).first->second;
}

/// The engine itself gives the number of a deleted last row to the next one. A station that has the
/// former still in its list would then work on the latter, so the number follows the table's
/// counter, which goes on counting.
QString SqliteDriver::newRowNumber(const TableInfo& table)
{
    const auto counter = std::find_if(table.fields.begin(), table.fields.end(),
                                      [](const FieldInfo& each) { return each.counter; });
    // A store that was made past this engine may keep no high-water mark.
    if (counter == table.fields.end() || !counterValue(table.name, counter->name).isEmpty())
        return {};
    return QStringLiteral("(SELECT 1 + max(ifnull((SELECT max(%1) FROM %2), 0), "
                          "ifnull((SELECT max(seq) FROM sqlite_sequence WHERE name = %3), 0)))")
        .arg(rowNumber(table), quoted(table.name), literal(table.name));
}

QString SqliteDriver::readCounterValue(const QString& table, const QString& field)
{
    if (!rows(u"SELECT 1 FROM sqlite_master WHERE type = 'trigger' AND name = ? COLLATE NOCASE"_s,
              {counterTriggerName(table, field)})
             .empty())
        return {};
    return u"(SELECT ifnull(max(%1), 0) + 1 FROM %2)"_s.arg(quoted(field), quoted(table));
}

qint64 SqliteDriver::highestGiven(const QString& table, const QString& field)
{
    return rows(u"SELECT max(ifnull((SELECT max(%1) FROM %2), 0), "
                "ifnull((SELECT max(seq) FROM sqlite_sequence WHERE name = ?), 0))"_s.arg(
                    quoted(field), quoted(table)),
                {table})
        .front()
        .front()
        .toLongLong();
}

void SqliteDriver::countOnFrom(const QString& table, const QString&, qint64 highest)
{
    run(u"DELETE FROM sqlite_sequence WHERE name = ?"_s, {table});
    run(u"INSERT INTO sqlite_sequence (name, seq) VALUES (?, ?)"_s, {table, highest});
}

} // namespace dao
