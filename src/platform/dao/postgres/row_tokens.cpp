#include "platform/dao/postgres/row_tokens.h"

namespace dao::postgres {

QString tokenTableStatement()
{
    return QStringLiteral("DO $$ BEGIN "
                          "IF NOT EXISTS (SELECT FROM pg_namespace WHERE nspname = 'zomrel_log') "
                          "AND has_database_privilege(current_database(), 'CREATE') THEN "
                          "CREATE SCHEMA zomrel_log; "
                          "CREATE TABLE zomrel_log.answers (token uuid PRIMARY KEY, "
                          "stored timestamptz NOT NULL DEFAULT now()); "
                          "END IF; "
                          "END $$");
}

QString tokensAreUsable()
{
    return QStringLiteral(
        "EXISTS (SELECT FROM pg_class c JOIN pg_namespace n ON n.oid = c.relnamespace "
        "WHERE n.nspname = 'zomrel_log' AND c.relname = 'answers' "
        "AND has_schema_privilege(n.oid, 'USAGE') AND has_table_privilege(c.oid, 'SELECT') "
        "AND has_table_privilege(c.oid, 'INSERT') AND has_table_privilege(c.oid, 'DELETE'))");
}

QString insertWithToken(const QString& insert, const QString& rowNumber, qsizetype parameters,
                        bool hasPrevious)
{
    const QString outdated = hasPrevious ? QStringLiteral("token = $%1::uuid").arg(parameters + 2)
                                         : QStringLiteral("stored < now() - interval '7 days'");
    return QStringLiteral("WITH zomrel_added AS (%1 RETURNING %2), "
                          "zomrel_outdated AS (DELETE FROM zomrel_log.answers WHERE %3), "
                          "zomrel_token AS (INSERT INTO zomrel_log.answers (token) "
                          "SELECT $%4::uuid FROM zomrel_added) "
                          "SELECT %2 FROM zomrel_added")
        .arg(insert, rowNumber, outdated)
        .arg(parameters + 1);
}

QString claimToken()
{
    return QStringLiteral(
        "INSERT INTO zomrel_log.answers (token) VALUES ($1::uuid) ON CONFLICT DO NOTHING");
}

} // namespace dao::postgres
