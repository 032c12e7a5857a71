#include "platform/dao/postgres/postgres_dialect.h"

#include "platform/dao/postgres/row_tokens.h"

#include <array>

namespace dao::postgres {

using namespace Qt::StringLiterals;

namespace {

const QString rowColumn = QStringLiteral("zomrel_row");
constexpr auto booleanType = "zomrel_boolean"_L1;
constexpr auto counterTrigger = "zomrel_counter"_L1;

/// Returns the body of the trigger function for counters. The check of a store compares this text
/// with the body of the stored function.
QString counterBody()
{
    return QStringLiteral("DECLARE given bigint := to_jsonb(NEW) ->> TG_ARGV[0]; "
                          "counter regclass := pg_get_serial_sequence("
                          "format('%I.%I', TG_TABLE_SCHEMA, TG_TABLE_NAME), TG_ARGV[0]); "
                          "BEGIN "
                          "IF given > coalesce(pg_sequence_last_value(counter), 0) THEN "
                          "EXECUTE format('LOCK TABLE %I.%I IN SHARE ROW EXCLUSIVE MODE', "
                          "TG_TABLE_SCHEMA, TG_TABLE_NAME); "
                          "PERFORM setval(counter, greatest(given, "
                          "pg_sequence_last_value(counter))); "
                          "END IF; "
                          "RETURN NULL; "
                          "END");
}

/// Returns the statement that creates the trigger function for counters. If a number was assigned
/// explicitly and is higher than the counter's last number, the function sets the counter to this
/// number. The function locks the table, so that other stations cannot insert rows meanwhile.
/// Otherwise setval could set the counter below a number that another station has just got.
QString counterFunction()
{
    return QStringLiteral(
               "CREATE OR REPLACE FUNCTION zomrel_count() RETURNS trigger LANGUAGE plpgsql "
               "SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $$ ") +
           counterBody() + " $$"_L1;
}

} // namespace

const PostgresDialect& PostgresDialect::instance()
{
    static const PostgresDialect only;
    return only;
}

QString PostgresDialect::rowNumber(const TableInfo&) const
{
    return rowColumn;
}

QString PostgresDialect::sorted(const FieldInfo& field, const QString& column) const
{
    return field.type == dbText ? column + " COLLATE \"C\""_L1 : column;
}

QString PostgresDialect::joined(const QString& select) const
{
    return u"SELECT string_agg(n::text, ',') AS numbers FROM (%1) AS listed(n)"_s.arg(select);
}

QString PostgresDialect::firstOf(const QString& joined) const
{
    return u"split_part(%1, ',', 1)::bigint"_s.arg(joined);
}

QString PostgresDialect::indexesQuery() const
{
    return QStringLiteral(
        "SELECT x.relname, i.indisprimary, i.indisunique, a.attname "
        "FROM pg_index i "
        "JOIN pg_class c ON c.oid = i.indrelid "
        "JOIN pg_class x ON x.oid = i.indexrelid "
        "CROSS JOIN LATERAL unnest(i.indkey::int2[]) WITH ORDINALITY AS k(attnum, place) "
        "JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum = k.attnum "
        "WHERE c.relname = $1 AND c.relnamespace = "
        "(SELECT oid FROM pg_namespace WHERE nspname = current_schema()) "
        "AND i.indpred IS NULL AND i.indexprs IS NULL AND k.place <= i.indnkeyatts "
        "ORDER BY i.indisprimary DESC, x.oid, k.place");
}

QString PostgresDialect::tablesQuery() const
{
    // For a text field, the column atttypmod of the catalogue pg_attribute contains the declared
    // length plus four.
    return QStringLiteral(
               "SELECT c.relname, c.relkind IN ('r', 'p'), a.attname, "
               "CASE WHEN t.typname IN ('varchar', 'bpchar') AND a.atttypmod > 4 "
               "THEN t.typname || '(' || (a.atttypmod - 4) || ')' ELSE t.typname::text END, "
               "coalesce(a.attnotnull, false), coalesce(a.attidentity <> '', false), "
               "EXISTS (SELECT FROM pg_trigger g WHERE g.tgrelid = c.oid AND g.tgname = '%1' "
               "AND a.attidentity <> '') "
               "FROM pg_class c "
               "LEFT JOIN pg_attribute a ON a.attrelid = c.oid AND a.attnum > 0 "
               "AND NOT a.attisdropped "
               "LEFT JOIN pg_type t ON t.oid = a.atttypid "
               "WHERE c.relkind IN ('r', 'p', 'v', 'm') AND c.relnamespace = "
               "(SELECT oid FROM pg_namespace WHERE nspname = current_schema()) "
               "ORDER BY c.oid, a.attnum")
        .arg(counterTrigger);
}

QString PostgresDialect::foreignObjectsQuery()
{
    constexpr int afterInsertOrUpdateOfARow = 1 + 4 + 16;
    return QStringLiteral(
               "WITH own AS (SELECT * FROM pg_class WHERE relnamespace = "
               "(SELECT oid FROM pg_namespace WHERE nspname = current_schema())) "
               "SELECT 'trigger', t.tgname, c.relname FROM pg_trigger t "
               "JOIN own c ON c.oid = t.tgrelid JOIN pg_proc p ON p.oid = t.tgfoid "
               "WHERE NOT t.tgisinternal AND NOT (t.tgname = '%1' AND t.tgenabled = 'O' "
               "AND t.tgtype = %2 AND t.tgqual IS NULL AND btrim(p.prosrc) = $1) "
               "AND NOT (t.tgenabled = 'O' AND p.pronamespace = to_regnamespace('zomrel_log') "
               "AND (t.tgname, p.proname) IN (('zomrel_history', 'log_change'), "
               "('zomrel_history_of_added', 'log_change'), ('zomrel_ceiling', 'check_numbers'))) "
               "UNION ALL SELECT 'rule', r.rulename, c.relname FROM pg_rewrite r "
               "JOIN own c ON c.oid = r.ev_class WHERE r.rulename <> '_RETURN' "
               "UNION ALL SELECT 'view', relname, '' FROM own WHERE relkind IN ('v', 'm', 'f') "
               "UNION ALL SELECT 'constraint', k.conname, c.relname FROM pg_constraint k "
               "JOIN own c ON c.oid = k.conrelid WHERE k.contype IN ('c', 'f', 'x') "
               "UNION ALL SELECT 'policy', 'row security', relname FROM own WHERE relrowsecurity "
               "UNION ALL SELECT 'index', x.relname, c.relname FROM pg_index i "
               "JOIN own c ON c.oid = i.indrelid JOIN pg_class x ON x.oid = i.indexrelid "
               "WHERE i.indpred IS NOT NULL OR i.indexprs IS NOT NULL "
               "ORDER BY 1, 3, 2")
        .arg(counterTrigger)
        .arg(afterInsertOrUpdateOfARow);
}

QString PostgresDialect::counterFunctionBody()
{
    return counterBody();
}

QString PostgresDialect::ownsCounters()
{
    return QStringLiteral("has_schema_privilege(current_schema(), 'CREATE') AND EXISTS ("
                          "SELECT FROM pg_proc p JOIN pg_roles r ON r.oid = p.proowner "
                          "WHERE p.proname = 'zomrel_count' AND r.rolname = current_user "
                          "AND p.pronamespace = (SELECT oid FROM pg_namespace "
                          "WHERE nspname = current_schema()))");
}

std::span<const Dialect::TypeName> PostgresDialect::typeNames() const
{
    static constexpr std::array names = {
        TypeName{"varchar"_L1, dbText},   TypeName{"bpchar"_L1, dbText},
        TypeName{"int4"_L1, dbLong},      TypeName{"int8"_L1, dbLong},
        TypeName{"int2"_L1, dbInteger},   TypeName{"float8"_L1, dbDouble},
        TypeName{"float4"_L1, dbDouble},  TypeName{"numeric"_L1, dbDouble},
        TypeName{"timestamp"_L1, dbDate}, TypeName{"timestamptz"_L1, dbDate},
        TypeName{"date"_L1, dbDate},      TypeName{booleanType, dbBoolean},
        TypeName{"bool"_L1, dbBoolean},
    };
    return names;
}

QString PostgresDialect::declaredType(const FieldInfo& field) const
{
    QString type = Dialect::declaredType(field);
    switch (field.type) {
    case dbDate:
        return type + u"(0)"_s;
    case dbText:
        return (field.size > 0 ? type : u"text"_s) + u" COLLATE \"C\""_s;
    default:
        return type;
    }
}

QString PostgresDialect::counterClause() const
{
    return u" GENERATED BY DEFAULT AS IDENTITY"_s;
}

/// Returns the statement that creates the domain for Boolean fields. A Boolean is stored as -1 or
/// 0, and only the domain distinguishes a Boolean field from a field of 16-bit numbers.
QStringList PostgresDialect::beforeField(const FieldInfo& field) const
{
    if (field.type != dbBoolean)
        return {};
    return {u"DO $$ BEGIN IF to_regtype('%1') IS NULL THEN CREATE DOMAIN %1 AS smallint; END IF; "
            "END $$"_s.arg(booleanType)};
}

QStringList PostgresDialect::counterStatements(const QString& table, const QString& field) const
{
    return {counterFunction(),
            u"CREATE TRIGGER %1 AFTER INSERT OR UPDATE OF %2 ON %3 FOR EACH ROW "
            "EXECUTE FUNCTION zomrel_count(%4)"_s.arg(counterTrigger, quoted(field), quoted(table),
                                                      literal(field)),
            tokenTableStatement()};
}

QString PostgresDialect::rowNumberColumn() const
{
    return rowColumn;
}

QString PostgresDialect::rowNumberDefinition() const
{
    return rowColumn + " bigint GENERATED ALWAYS AS IDENTITY UNIQUE"_L1;
}

/// Returns the list of the index columns. The list of an index that is not unique includes the row
/// id, because rows with equal values are sorted in insertion order.
QString PostgresDialect::indexColumns(const IndexInfo& index) const
{
    QStringList columns;
    for (const QString& each : index.fields)
        columns.append(quoted(each) + " NULLS FIRST"_L1);
    if (!index.unique)
        columns.append(rowColumn);
    return columns.join(u", "_s);
}

} // namespace dao::postgres
