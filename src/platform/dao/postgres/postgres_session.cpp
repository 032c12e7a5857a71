#include "platform/dao/postgres/postgres_session.h"

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/postgres/postgres_dialect.h"
#include "platform/dao/postgres/pq_connection.h"
#include "platform/dao/postgres/pq_login.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

#include <algorithm>

namespace dao {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

constexpr auto greetingName = "zomrel_greeting";
constexpr std::chrono::seconds greetingPatience(3);

/// Every change of a table or an index leaves a row of one of the two catalogues written by another
/// transaction, so counts and sums of their writers tell of any change to the schema.
QString greetingText()
{
    return QStringLiteral(
        "WITH relation AS MATERIALIZED "
        "(SELECT c.oid, c.relkind, c.xmin::text::bigint AS writer FROM pg_class c "
        "WHERE c.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = current_schema())) "
        "SELECT (SELECT concat_ws('.', count(*), sum(writer)) FROM relation) || '.' || "
        "(SELECT concat_ws('.', count(*), sum(a.xmin::text::bigint)) FROM pg_attribute a "
        "WHERE a.attnum > 0 AND a.attrelid = ANY (ARRAY(SELECT oid FROM relation "
        "WHERE relkind NOT IN ('i', 'I', 'S')))), "
        "current_setting('server_encoding'), "
        "CASE WHEN current_setting('synchronous_commit') = 'off' "
        "THEN set_config('synchronous_commit', 'on', false) END");
}

QString keyOf(const Link& link, const Waits& waits)
{
    return u"server|%1|%2|%3|%4|%5|%6|%7"_s.arg(link.server)
        .arg(link.port)
        .arg(link.database, link.user, link.tls)
        .arg(waits.lock.count())
        .arg(waits.answer.count());
}

/// What has been read of the schema of a store, for all connections to it: a click works over
/// several, and reading it costs round trips.
std::shared_ptr<SchemaMemory> sharedSchema(const QString& key, const QString& mark)
{
    static std::map<QString, std::shared_ptr<SchemaMemory>> memories;
    std::shared_ptr<SchemaMemory>& memory = memories[key];
    if (!memory || memory->mark != mark) {
        memory = std::make_shared<SchemaMemory>();
        memory->mark = mark;
    }
    return memory;
}

/// Two tables may differ in case alone; then the spelling counts.
std::optional<TableInfo> tableIn(const std::vector<TableInfo>& all, const QString& name)
{
    auto found = std::find_if(all.begin(), all.end(),
                              [&](const TableInfo& each) { return each.name == name; });
    if (found == all.end())
        found = std::find_if(all.begin(), all.end(), [&](const TableInfo& each) {
            return each.name.compare(name, Qt::CaseInsensitive) == 0;
        });
    if (found == all.end())
        return {};
    return *found;
}

bool isHandlingEvents()
{
    return QThread::currentThread()->loopLevel() > 0;
}

/// Holds for as long as the event is handled that is being handled now; outside an event loop, not
/// at all.
void markAsAnswered(const std::shared_ptr<postgres::PqConnection>& connection)
{
    if (!isHandlingEvents())
        return;
    connection->setJustAnswered(true);
    QTimer::singleShot(0, QCoreApplication::instance(),
                       [answered = std::weak_ptr<postgres::PqConnection>(connection)] {
                           if (const auto still = answered.lock())
                               still->setJustAnswered(false);
                       });
}

/// Transactions leave the schema as it is, but for one that is taken back.
bool keepsTheSchema(const QString& sql)
{
    return !mayChangeTheSchema(sql) || sql.startsWith("BEGIN"_L1) || sql.startsWith("COMMIT"_L1);
}

} // namespace

PostgresDriver::PostgresDriver(Connection connection, const QString& path, Link link,
                               const Waits& waits)
    : Driver(path), connection_(std::move(connection)), link_(std::move(link)), waits_(waits),
      poolKey_(keyOf(link_, waits_))
{
}

/// A transaction's own connection serves all databases if no other one does.
PostgresDriver::~PostgresDriver()
{
    if (connection_ && !inTransaction() && !shared() && !connection_->isLost())
        ConnectionPool::instance().share(poolKey_, connection_);
}

std::unique_ptr<Driver> PostgresDriver::open(const QString& path, const Link& link,
                                             const Waits& waits)
{
    std::unique_ptr<PostgresDriver> driver(new PostgresDriver(nullptr, path, link, waits));
    driver->connection_ = driver->shared();
    if (driver->connection_ && driver->takeUp())
        return driver;
    ConnectionPool& pool = ConnectionPool::instance();
    pool.unshare(driver->poolKey_);
    driver->connection_ = driver->logIn();
    driver->requireTakenUp();
    pool.share(driver->poolKey_, driver->connection_);
    return driver;
}

SchemaMemory& PostgresDriver::schema()
{
    return connection_->schema();
}

PostgresDriver::Connection PostgresDriver::shared() const
{
    return std::static_pointer_cast<postgres::PqConnection>(
        ConnectionPool::instance().shared(poolKey_));
}

PostgresDriver::Connection PostgresDriver::logIn() const
{
    auto connection = std::make_shared<postgres::PqConnection>(link_, waits_);
    try {
        connection->prepare(greetingName, greetingText(), greetingPatience);
    } catch (const RunTimeError& error) {
        throw postgres::logInError(link_, error.description());
    }
    return connection;
}

/// Greets the server, which shows whether the connection lives, and learns whether the schema is
/// the known one. False if the connection has died. A handler opens the store again and again; one
/// greeting is enough for it.
bool PostgresDriver::takeUp()
{
    if (isHandlingEvents() && connection_->hasJustAnswered() && !connection_->isLost())
        return true;
    if (connection_->isLost())
        return false;
    StoredValues greeting;
    try {
        greeting = connection_->executePrepared(greetingName, greetingPatience).rows.front();
    } catch (const RunTimeError&) {
        if (connection_->isLost())
            return false;
        throw;
    }
    const QString mark = greeting[0].toString();
    const QString encoding = greeting[1].toString();
    if (encoding != "UTF8"_L1)
        throw RunTimeError(
            runtime::UnrecognizedFormat,
            u"The encoding of %1 is %2; a store needs UTF8."_s.arg(link_.place(), encoding));
    connection_->shareSchema(sharedSchema(poolKey_, mark));
    markAsAnswered(connection_);
    return true;
}

void PostgresDriver::requireTakenUp()
{
    if (!takeUp())
        throw RunTimeError(runtime::ConnectionFailed,
                           u"Connection to %1 failed: it was lost at once"_s.arg(link_.place()));
}

/// Replaces a connection that has died. Between two statements nothing is under way.
void PostgresDriver::goOnAnew()
{
    const Connection other = shared();
    if (other && other != connection_ && !other->isLost()) {
        connection_ = other;
        return;
    }
    connection_ = logIn();
    requireTakenUp();
    ConnectionPool::instance().share(poolKey_, connection_);
}

Answer PostgresDriver::execute(const QString& sql, const QVariantList& values)
{
    if (connection_->isLost()) {
        if (inTransaction() || sql == "ROLLBACK"_L1)
            throw connection_->lossError();
        goOnAnew();
    }
    // The server would take this for a rollback and not say so.
    if (sql == "COMMIT"_L1 && connection_->hasFailedTransaction())
        throw RunTimeError(runtime::InvalidOperation,
                           u"A statement of the transaction has failed; nothing of it is kept."_s);
    if (!keepsTheSchema(sql))
        connection_->forgetSchema();
    if (mayChangeTheSchema(sql))
        askAnew();
    if (!inTransaction() && !values.isEmpty() && !mayChangeTheSchema(sql))
        return connection_->executeKept(sql, values);
    return connection_->execute(sql, values);
}

/// Lets the next database to be opened ask for the schema's mark.
void PostgresDriver::askAnew() const
{
    if (const Connection greeted = shared())
        greeted->setJustAnswered(false);
}

const std::vector<TableInfo>& PostgresDriver::knownTables()
{
    if (!schema().all) {
        const std::vector<StoredValues> read = rows(postgres::tablesQuery());
        for (const QString& each : postgres::sureCountersOf(read))
            schema().counters[each] = QString();
        schema().all = postgres::tablesOf(read);
    }
    return *schema().all;
}

std::vector<TableInfo> PostgresDriver::tables()
{
    std::vector<TableInfo> all = knownTables();
    for (TableInfo& each : all)
        each.fields.clear();
    return all;
}

std::optional<TableInfo> PostgresDriver::table(const QString& name)
{
    if (std::optional<TableInfo> known = tableIn(knownTables(), name))
        return known;
    // Another station may have made it since the store was opened.
    schema().all.reset();
    return tableIn(knownTables(), name);
}

std::vector<IndexInfo> PostgresDriver::indexes(const QString& table)
{
    const auto known = schema().indexes.find(table);
    if (known != schema().indexes.end())
        return known->second;
    std::vector<IndexInfo> read =
        postgres::indexesOf(table, rows(postgres::indexesQuery(), {table}));
    return schema().indexes.emplace(table, std::move(read)).first->second;
}

QString PostgresDriver::rowNumber(const TableInfo& table) const
{
    if (!table.numbered)
        throw RunTimeError(
            runtime::UnrecognizedFormat,
            u"Table '%1' in %2 was not made as a store's table: it has no column %3."_s.arg(
                table.name, link_.place(), postgres::rowColumn));
    return postgres::rowColumn;
}

QString PostgresDriver::sorted(const FieldInfo& field, const QString& column) const
{
    return field.type == dbText ? column + " COLLATE \"C\""_L1 : column;
}

RowNumber PostgresDriver::insert(const TableInfo& table, const QString& sql,
                                 const QVariantList& values)
{
    return rows(sql + " RETURNING "_L1 + rowNumber(table), values).front().front().toLongLong();
}

QString PostgresDriver::joined(const QString& select) const
{
    return u"SELECT string_agg(n::text, ',') AS numbers FROM (%1) AS listed(n)"_s.arg(select);
}

QString PostgresDriver::firstOf(const QString& joined) const
{
    return u"split_part(%1, ',', 1)::bigint"_s.arg(joined);
}

QString PostgresDriver::counterValue(const QString& table, const QString& field)
{
    knownTables();
    if (schema().counters.contains(table + u'.' + field))
        return {};
    return u"(SELECT coalesce(max(%1), 0) + 1 FROM %2)"_s.arg(quoted(field), quoted(table));
}

QStringList PostgresDriver::createTable(const TableInfo& table,
                                        const std::vector<IndexInfo>& indexes) const
{
    return postgres::createTable(table, indexes);
}

QString PostgresDriver::createIndex(const QString& table, const IndexInfo& index) const
{
    return postgres::createIndex(table, index);
}

QStringList PostgresDriver::addField(const QString& table, const FieldInfo& field) const
{
    return postgres::addField(table, field);
}

/// The other databases on the store are no part of the transaction, so they get another connection.
void PostgresDriver::begin()
{
    if (shared() == connection_) {
        constexpr long here = 1;
        constexpr long inThePool = 1;
        if (connection_.use_count() > here + inThePool) {
            connection_ = logIn();
            requireTakenUp();
        } else {
            ConnectionPool::instance().unshare(poolKey_);
        }
    }
    run(u"BEGIN"_s);
    setInTransaction();
}

/// The server guards its files itself; what can be asked is whether everything can be read and
/// whether the indexes are good.
QStringList PostgresDriver::integrityFindings()
{
    QStringList findings;
    for (const StoredValues& row :
         rows(u"SELECT x.relname FROM pg_index i JOIN pg_class x ON x.oid = i.indexrelid "
              "WHERE NOT (i.indisvalid AND i.indisready) AND x.relnamespace = "
              "(SELECT oid FROM pg_namespace WHERE nspname = current_schema()) ORDER BY x.oid"_s))
        findings.append(u"index '%1' is not valid"_s.arg(row.front().toString()));
    for (const TableInfo& each : knownTables()) {
        if (!each.updatable)
            continue;
        if (!each.numbered)
            findings.append(u"table '%1' has no column %2"_s.arg(each.name, postgres::rowColumn));
        try {
            rows(u"SELECT sum(length(t::text)) FROM %1 AS t"_s.arg(quoted(each.name)));
        } catch (const RunTimeError& failure) {
            if (connection_->isLost())
                throw;
            findings.append(u"table '%1': %2"_s.arg(each.name, failure.description()));
        }
    }
    return findings;
}

void PostgresDriver::copyTo(const QString&)
{
    throw RunTimeError(
        runtime::OperationNotSupported,
        u"A store in %1 cannot be copied as a file; zomrel-store move copies it."_s.arg(
            link_.place()));
}

} // namespace dao
