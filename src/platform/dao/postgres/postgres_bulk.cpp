#include "platform/dao/postgres/postgres_bulk.h"
#include "platform/dao/engine/row_bytes.h"
#include "platform/dao/postgres/postgres_dialect.h"
#include "platform/dao/postgres/pq_connection.h"

#include <QtEndian>

#include <string>

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

/// The output of a binary COPY starts with this signature and two 32-bit numbers. The program
/// ignores the two numbers.
constexpr QByteArrayView signature("PGCOPY\n\377\r\n", 11);
constexpr qsizetype headLength = signature.size() + 8;
/// The number that marks the end of a binary COPY. Every row starts with the number of its fields,
/// and the end mark is in the place of that number.
constexpr qint16 endMark = -1;
constexpr qsizetype blockSize = 1 << 18;

QString selected(const FieldInfo& field)
{
    const QString name = Dialect::quoted(field.name);
    switch (field.type) {
    case dbBoolean:
        return u"coalesce(%1::integer, 0)::smallint"_s.arg(name);
    case dbInteger:
        return name + "::smallint"_L1;
    case dbLong:
        return name + "::integer"_L1;
    case dbDouble:
        return name + "::double precision"_L1;
    case dbDate:
        return name + "::timestamp without time zone"_L1;
    case dbText:
        break;
    }
    return name + "::text"_L1;
}

/// Reads the rows of a table with a binary COPY and normalizes the values, so that equal values
/// have equal bytes on both engines.
class PostgresStream final : public RowStream
{
public:
    PostgresStream(PqConnection& connection, const TableInfo& table, const QString& rowNumber)
        : connection_(connection), table_(table)
    {
        QStringList columns;
        for (const FieldInfo& each : table.fields)
            columns.append(selected(each));
        connection_.startCopy(
            u"COPY (SELECT %1 FROM %2 ORDER BY %3) TO STDOUT (FORMAT binary)"_s.arg(
                columns.join(u", "_s), Dialect::quoted(table.name), rowNumber));
    }
    ~PostgresStream() override
    {
        // If not all rows have been read, the COPY is still in progress, and the connection can
        // execute nothing else. The connection is therefore closed.
        if (!isOver_)
            connection_.abandon(u"reading was given up"_s);
    }
    Q_DISABLE_COPY_MOVE(PostgresStream)

    std::optional<QByteArrayView> next() override
    {
        while (!isOver_) {
            isOver_ = true; // An error ends the copy, too.
            std::optional<QByteArrayView> block = connection_.nextCopied();
            if (!block)
                break;
            isOver_ = false;
            if (isFirst_) {
                if (!block->startsWith(signature))
                    throw RunTimeError(runtime::InternalError);
                block = block->sliced(headLength);
                isFirst_ = false;
            }
            if (!block->isEmpty() && qFromBigEndian<qint16>(block->data()) != endMark) {
                row_.assign(block->begin(), block->end());
                ++rows_;
                normalizeRow();
                return QByteArrayView(row_.data(), std::ssize(row_));
            }
        }
        return {};
    }

private:
    void normalizeRow()
    {
        char* place = row_.data() + sizeof(qint16);
        const char* end = row_.data() + row_.size();
        for (const FieldInfo& field : table_.fields) {
            if (end - place < static_cast<qsizetype>(sizeof(qint32)))
                throw RunTimeError(runtime::InternalError);
            const auto size = qFromBigEndian<qint32>(place);
            place += sizeof(qint32);
            if (size < 0)
                continue;
            normalize(field, place);
            place += size;
        }
    }

    void normalize(const FieldInfo& field, char* value) const
    {
        if (field.type == dbDouble) {
            const double number = doubleOf(QByteArrayView(value, sizeof(double)));
            if (!qIsFinite(number))
                refuse(field);
            if (number == 0)
                std::fill_n(value, sizeof(double), '\0');
        } else if (field.type == dbBoolean) {
            const bool truth = int16Of(QByteArrayView(value, sizeof(qint16))) != 0;
            std::fill_n(value, sizeof(qint16), truth ? '\xff' : '\0');
        } else if (field.type == dbDate) {
            normalizeDate(field, value);
        }
    }

    /// Removes the fraction of a second from a date. Throws DataTypeConversion (3421) for a year
    /// outside of 1 to 9999, because the text form of a date has four digits for the year.
    void normalizeDate(const FieldInfo& field, char* value) const
    {
        constexpr qint64 first = -63082281600; // 0001-01-01
        constexpr qint64 end = 252455616000;   // 10000-01-01
        const qint64 seconds = momentOf(QByteArrayView(value, sizeof(qint64)));
        if (seconds < first || seconds >= end)
            refuse(field);
        qToBigEndian(seconds * microsecondsPerSecond, value);
    }

    [[noreturn]] void refuse(const FieldInfo& field) const
    {
        throw RunTimeError(runtime::DataTypeConversion,
                           u"%1, row %2: %3 cannot be read"_s.arg(
                               table_.name, QString::number(rows_), field.name));
    }

    PqConnection& connection_;
    TableInfo table_;
    std::string row_;
    qint64 rows_ = 0;
    bool isFirst_ = true;
    bool isOver_ = false;
};

class PostgresSink final : public RowSink
{
public:
    PostgresSink(PqConnection& connection, const TableInfo& table) : connection_(connection)
    {
        QStringList names;
        for (const FieldInfo& each : table.fields)
            names.append(each.name);
        // With the option FREEZE, a later VACUUM need not visit the rows. PostgreSQL allows this
        // option here, because the table was created in the same transaction.
        connection_.startCopy(u"COPY %1 (%2) FROM STDIN (FORMAT binary, FREEZE)"_s.arg(
            Dialect::quoted(table.name), Dialect::quoted(names)));
        block_.reserve(blockSize * 2);
        block_.append(signature.data(), signature.size()).append(qsizetype{8}, '\0');
    }
    ~PostgresSink() override
    {
        if (isFinished_)
            return;
        try {
            connection_.endCopy("the rows could not be read");
        } catch (const RunTimeError&) {
            return; // The first error is the one to report.
        }
    }
    Q_DISABLE_COPY_MOVE(PostgresSink)

    void add(QByteArrayView row) override
    {
        block_.append(row.data(), row.size());
        if (block_.size() < blockSize)
            return;
        connection_.sendCopied(block_);
        block_.resize(0); // Unlike clear(), this keeps the allocated memory.
    }

    void finish() override
    {
        const qint16 mark = qToBigEndian(endMark);
        block_.append(reinterpret_cast<const char*>(&mark), sizeof(mark));
        connection_.sendCopied(block_);
        isFinished_ = true;
        connection_.endCopy();
    }

private:
    PqConnection& connection_;
    QByteArray block_;
    bool isFinished_ = false;
};

} // namespace

/// Checks that all rows can be read and that all indexes are valid. The files of the database are
/// not checked, because a client cannot read the files of the server.
QStringList PostgresBulk::integrityFindings()
{
    QStringList findings;
    for (const StoredValues& row : session_.rows(
             u"SELECT x.relname FROM pg_index i JOIN pg_class x ON x.oid = i.indexrelid "
             "WHERE NOT (i.indisvalid AND i.indisready) AND x.relnamespace = "
             "(SELECT oid FROM pg_namespace WHERE nspname = current_schema()) ORDER BY x.oid"_s))
        findings.append(u"index '%1' is not valid"_s.arg(row.front().toString()));
    for (const TableInfo& each : session_.tables()) {
        if (!each.updatable)
            continue;
        if (!each.numbered)
            findings.append(u"table '%1' has no column %2"_s.arg(
                each.name, session_.dialect().rowNumberColumn()));
        try {
            session_.rows(
                u"SELECT sum(length(t::text)) FROM %1 AS t"_s.arg(Dialect::quoted(each.name)));
        } catch (const RunTimeError& failure) {
            if (connection_->isLost())
                throw;
            findings.append(u"table '%1': %2"_s.arg(each.name, failure.description()));
        }
    }
    return findings;
}

QStringList PostgresBulk::foreignObjects()
{
    QStringList findings;
    for (const StoredValues& row : session_.rows(PostgresDialect::foreignObjectsQuery(),
                                                 {PostgresDialect::counterFunctionBody()})) {
        const QString table = row[2].toString();
        findings.append(u"the %1 '%2'%3 is not as the program makes it"_s.arg(
            row[0].toString(), row[1].toString(), table.isEmpty() ? QString() : " of "_L1 + table));
    }
    return findings;
}

void PostgresBulk::copyTo(const QString&)
{
    throw RunTimeError(
        runtime::OperationNotSupported,
        u"A store in %1 cannot be copied as a file; zomrel-store move copies it."_s.arg(
            session_.place()));
}

std::unique_ptr<RowStream> PostgresBulk::rowStream(const TableInfo& table)
{
    return std::make_unique<PostgresStream>(*connection_, table, session_.rowNumber(table));
}

std::unique_ptr<RowSink> PostgresBulk::rowSink(const TableInfo& table)
{
    session_.run(u"SET LOCAL idle_in_transaction_session_timeout = 0"_s);
    return std::make_unique<PostgresSink>(*connection_, table);
}

std::optional<qint64> PostgresBulk::counterMark(const QString& table, const QString& field)
{
    const std::optional<TableInfo> info = session_.table(table);
    const int ordinal = info ? info->ordinalOf(field) : -1;
    if (ordinal < 0 || !info->fields[static_cast<std::size_t>(ordinal)].countsByItself)
        return {};
    return session_
        .rows(u"SELECT coalesce(pg_sequence_last_value("
              "pg_get_serial_sequence($1, $2)::regclass), 0)"_s,
              {Dialect::quoted(table), field})
        .front()
        .front()
        .toLongLong();
}

qint64 PostgresBulk::highestGiven(const QString& table, const QString& field)
{
    return session_
        .rows(u"SELECT greatest((SELECT max(%1) FROM %2), "
              "pg_sequence_last_value(pg_get_serial_sequence($1, $2)::regclass), 0)"_s.arg(
                  Dialect::quoted(field), Dialect::quoted(table)),
              {Dialect::quoted(table), field})
        .front()
        .front()
        .toLongLong();
}

void PostgresBulk::countOnFrom(const QString& table, const QString& field, qint64 highest)
{
    if (highest > 0)
        session_.rows(u"SELECT setval(pg_get_serial_sequence($1, $2), $3)"_s,
                      {Dialect::quoted(table), field, highest});
}

void PostgresBulk::analyze(const QString& table)
{
    session_.run(u"ANALYZE "_s + Dialect::quoted(table));
}

QString PostgresBulk::setAside(const QStringList& tables)
{
    const QString first = u"before_restore"_s;
    QString schema = first;
    for (int number = 2;
         !session_.rows(u"SELECT 1 FROM pg_namespace WHERE nspname = $1"_s, {schema}).empty();
         ++number)
        schema = u"%1_%2"_s.arg(first).arg(number);
    session_.run(u"CREATE SCHEMA "_s + Dialect::quoted(schema));
    for (const QString& each : tables)
        session_.run(
            u"ALTER TABLE %1 SET SCHEMA %2"_s.arg(Dialect::quoted(each), Dialect::quoted(schema)));
    return u"schema '%1' of %2"_s.arg(schema, session_.place());
}

void PostgresBulk::actAsOwnerOf(const QStringList& tables)
{
    // The owner of the new tables must be a role that may create tables and schemas, because the
    // rest of the transaction creates the store as this role.
    const QString roles = u"SELECT rolname FROM pg_roles WHERE rolname <> current_user "
                          "AND pg_has_role(current_user, oid, 'MEMBER') "
                          "AND has_schema_privilege(oid, current_schema(), 'CREATE') "
                          "AND has_database_privilege(oid, current_database(), 'CREATE') AND "_s;
    const auto found = tables.isEmpty()
                           ? session_.rows(roles + u"rolname = 'zomrel_owner'"_s)
                           : session_.rows(roles + u"oid = (SELECT relowner FROM pg_class "
                                                   "WHERE oid = to_regclass($1))"_s,
                                           {Dialect::quoted(tables.first())});
    if (!found.empty())
        session_.run(u"SET LOCAL ROLE "_s + Dialect::quoted(found.front().front().toString()));
}

QStringList PostgresBulk::grantsOn(const QStringList& tables)
{
    QStringList statements;
    const QString grants = QStringLiteral(
        "SELECT format('DO $grant$ BEGIN IF to_regclass(%L) IS NOT NULL THEN "
        "GRANT %s ON %s %I TO %s%s; END IF; END $grant$', "
        "quote_ident(c.relname), a.privilege_type, "
        "CASE c.relkind WHEN 'S' THEN 'SEQUENCE' ELSE 'TABLE' END, c.relname, "
        "CASE a.grantee WHEN 0 THEN 'PUBLIC' ELSE quote_ident(pg_get_userbyid(a.grantee)) END, "
        "CASE WHEN a.is_grantable THEN ' WITH GRANT OPTION' ELSE '' END) "
        "FROM pg_class c CROSS JOIN LATERAL aclexplode(c.relacl) a "
        "WHERE a.grantee <> c.relowner AND (c.oid = to_regclass($1) "
        "OR c.relkind = 'S' AND EXISTS (SELECT FROM pg_depend d WHERE d.objid = c.oid "
        "AND d.classid = 'pg_class'::regclass AND d.refobjid = to_regclass($1)))");
    for (const QString& each : tables) {
        for (const StoredValues& row : session_.rows(grants, {Dialect::quoted(each)}))
            statements.append(row.front().toString());
    }
    return statements;
}

} // namespace dao::postgres
