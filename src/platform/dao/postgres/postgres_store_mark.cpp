// The functions of PostgresSession that check the identifying mark of the store and list the
// connected stations.

#include "platform/dao/postgres/postgres_dialect.h"
#include "platform/dao/postgres/postgres_session.h"
#include "platform/dao/postgres/pq_connection.h"

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

/// Checks that the store is the one that this process expects. The store's identifying mark is
/// cached with the schema and read again only after the schema has changed. A restore changes the
/// schema, too.
void PostgresSession::recogniseStore()
{
    if (!schema().storeMark) {
        const StoreMark stored = storedMark();
        schema().storeMark = stored;
    }
    recognise(*schema().storeMark);
}

RowNumber PostgresSession::addedRow(const std::vector<StoredValues>& answer) const
{
    if (answer.empty())
        throw replacedError();
    return answer.front().front().toLongLong();
}

qint64 PostgresSession::write(const QString& sql, const QVariantList& values)
{
    const StoreMark expected = expectedMark();
    const qint64 affected = run(sql, values);
    if (affected > 0)
        return affected;
    requireExpectedMark();
    // The identifying mark was added by another station while this process expected a store without
    // a mark. The condition of the statement was therefore false, and nothing was written.
    if (expectedMark() != expected)
        throw replacedError();
    return affected;
}

/// Returns an SQL condition that is true if the store has the identifying mark that this process
/// expects. While a restore is in progress, a statement with this condition waits, because the
/// restore locks all tables. The condition is then evaluated for the restored store.
QString PostgresSession::writeCondition()
{
    if (expectedMark().isEmpty())
        markOlderStore();
    const StoreMark mark = expectedMark();
    if (mark.isEmpty())
        return u"to_regclass(%1) IS NULL"_s.arg(Dialect::literal(storeMarkTable));
    return u"EXISTS (SELECT FROM %1 WHERE identity = %2 AND generation = %3)"_s.arg(
        storeMarkTable, Dialect::literal(mark.identity), Dialect::literal(mark.generation));
}

/// Lets all roles read the table of the identifying mark, because all stations compare the mark.
/// Only the owner of the table may write to it.
QStringList PostgresSession::markTableStatements() const
{
    return Session::markTableStatements() +
           QStringList(u"GRANT SELECT ON %1 TO PUBLIC"_s.arg(storeMarkTable));
}

/// Adds an identifying mark, with one statement, to a store that an older version of the program
/// made without one. Does nothing if the current role does not own the store, because the owner
/// could not use a table that another role creates. The store is then used without a mark.
void PostgresSession::markOlderStore()
{
    if (inTransaction() || schema().cannotMark)
        return;
    const StoreMark mark = markOfOlderStore();
    const QStringList statements =
        markTableStatements() +
        QStringList(u"INSERT INTO %1 (identity, generation) VALUES (%2, %3)"_s.arg(
            storeMarkTable, Dialect::literal(mark.identity), Dialect::literal(mark.generation)));
    try {
        run(u"DO $mark$ BEGIN IF to_regclass(%1) IS NULL AND %2 THEN %3; END IF; END $mark$"_s.arg(
            Dialect::literal(storeMarkTable), PostgresDialect::ownsCounters(),
            statements.join(u"; "_s)));
    } catch (const RunTimeError&) {
        // An error while the identifying mark is added is ignored, because the store can be used
        // without a mark. If the connection is lost, the next statement reports the loss.
        schema().cannotMark = true;
        return;
    }
    const StoreMark stored = storedMark();
    schema().storeMark = stored;
    schema().cannotMark = stored.isEmpty();
    recognise(stored);
}

/// Returns one line for each other connection of the program to the database. The server may hide
/// the network address of another role's connection.
QStringList PostgresSession::otherStations()
{
    QStringList found;
    for (const StoredValues& row :
         rows(u"SELECT coalesce(usename::text, ''), coalesce(client_addr::text, '') "
              "FROM pg_stat_activity WHERE datname = current_database() AND "
              "application_name = current_setting('application_name') AND "
              "pid <> pg_backend_pid() ORDER BY backend_start, pid"_s)) {
        const QString address = row[1].toString();
        found.append(u"role %1, %2"_s.arg(row[0].toString(), address.isEmpty()
                                                                 ? u"address unknown or local"_s
                                                                 : u"address "_s + address));
    }
    return found;
}

} // namespace dao::postgres
