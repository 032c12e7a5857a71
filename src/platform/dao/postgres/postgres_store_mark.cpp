// The part of a session that recognises the store and shows which stations use it.

#include "platform/dao/postgres/postgres_dialect.h"
#include "platform/dao/postgres/postgres_session.h"
#include "platform/dao/postgres/pq_connection.h"

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

/// Costs a round trip only after the schema has changed, and a restore changes it.
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
    // The store of an older version got its mark at this moment, so the condition was not met.
    if (expectedMark() != expected)
        throw replacedError();
    return affected;
}

/// The statement waits for a restore that is under way, because the restore locks all tables, and
/// then sees the mark of the new store.
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

/// All stations read the mark. Only the owner of the table changes it.
QStringList PostgresSession::markTableStatements() const
{
    return Session::markTableStatements() +
           QStringList(u"GRANT SELECT ON %1 TO PUBLIC"_s.arg(storeMarkTable));
}

/// Gives a store that an older version made its mark, with one statement. The role must own the
/// store: a table that another role creates could not be used by the owner. Otherwise the store
/// stays without a mark and can be used nevertheless.
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
        // The store is used without a mark. If the connection is lost, the next statement shows it.
        schema().cannotMark = true;
        return;
    }
    const StoreMark stored = storedMark();
    schema().storeMark = stored;
    schema().cannotMark = stored.isEmpty();
    recognise(stored);
}

/// The server may hide the address of another role's connection.
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
