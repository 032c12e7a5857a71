#include "platform/dao/postgres/postgres_session.h"

#include "platform/dao/engine/connection_pool.h"
#include "platform/dao/engine/field_search.h"
#include "platform/dao/postgres/postgres_bulk.h"
#include "platform/dao/postgres/postgres_dialect.h"
#include "platform/dao/postgres/pq_connection.h"
#include "platform/dao/postgres/pq_login.h"
#include "platform/dao/postgres/row_tokens.h"
#include "platform/runtime/call_watch.h"

#include <QCoreApplication>
#include <QThread>
#include <QTimer>
#include <QUuid>

#include <algorithm>
#include <thread>

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

constexpr auto greetingName = "zomrel_greeting";
constexpr std::chrono::seconds greetingPatience(3);
/// The time limit for connecting again after the connection was lost while a row was being added.
constexpr std::chrono::seconds reconnectPatience(5);
constexpr std::chrono::milliseconds reconnectPause(100);

/// Returns the statement that is executed each time a store is opened. The first column of its
/// result is the schema mark, a value that changes with every change of a table or index. Such a
/// change adds or deletes a row in one of two system catalogues of the server, or changes the
/// number of the writing transaction (xmin) of a row. Therefore the mark combines the row counts
/// and the sums of xmin of the two catalogues.
QString greetingText()
{
    return QStringLiteral(
               "WITH relation AS MATERIALIZED "
               "(SELECT c.oid, c.relkind, c.xmin::text::bigint AS writer FROM pg_class c "
               "WHERE c.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = "
               "current_schema())) "
               "SELECT (SELECT concat_ws('.', count(*), sum(writer)) FROM relation) || '.' || "
               "(SELECT concat_ws('.', count(*), sum(a.xmin::text::bigint)) FROM pg_attribute a "
               "WHERE a.attnum > 0 AND a.attrelid = ANY (ARRAY(SELECT oid FROM relation "
               "WHERE relkind NOT IN ('i', 'I', 'S')))), "
               "current_setting('server_encoding'), "
               "CASE WHEN current_setting('synchronous_commit') = 'off' "
               "THEN set_config('synchronous_commit', 'on', false) END, ") +
           tokensAreUsable();
}

QString keyOf(const Link& link, const Timeouts& timeouts)
{
    return u"server|%1|%2|%3|%4|%5|%6|%7"_s.arg(link.server)
        .arg(link.port)
        .arg(link.database, link.user, link.tls)
        .arg(timeouts.lock.count())
        .arg(timeouts.answer.count());
}

/// Returns the schema cache that all connections to one store share. The cache is shared because
/// reading the schema costs round trips to the server.
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

/// Returns the table with exactly this name. If there is none, returns a table whose name differs
/// only in case.
std::optional<TableInfo> tableIn(const std::vector<TableInfo>& all, const QString& name)
{
    const auto exact = std::ranges::find(all, name, &TableInfo::name);
    if (exact != all.end())
        return *exact;
    const int similar = ordinalOf(all, name);
    if (similar < 0)
        return {};
    return all[static_cast<std::size_t>(similar)];
}

/// Returns the text with a full stop and a blank at the end, so that another sentence can follow.
QString sentence(const QString& text)
{
    return text + (text.endsWith(u'.') ? u" "_s : u". "_s);
}

bool isHandlingEvents()
{
    return QThread::currentThread()->loopLevel() > 0;
}

/// Records on the connection that the server has just answered, so that the next session need not
/// test the connection. The record is deleted when control returns to the event loop. Outside of an
/// event loop, the function has no effect.
void markAsAnswered(const std::shared_ptr<PqConnection>& connection)
{
    if (!isHandlingEvents())
        return;
    connection->setJustAnswered(true);
    QTimer::singleShot(0, QCoreApplication::instance(),
                       [answered = std::weak_ptr<PqConnection>(connection)] {
                           if (const auto still = answered.lock())
                               still->setJustAnswered(false);
                       });
}

/// Returns true if the SQL statement leaves the schema unchanged. Returns false for ROLLBACK,
/// because it can undo changes of tables.
bool keepsTheSchema(const QString& sql)
{
    return !mayChangeSchema(sql) || sql.startsWith("BEGIN"_L1) || sql.startsWith("COMMIT"_L1);
}

} // namespace

PostgresSession::PostgresSession(const QString& path, Link link, const Timeouts& timeouts)
    : Session(path, PostgresDialect::instance()), link_(std::move(link)), timeouts_(timeouts),
      poolKey_(keyOf(link_, timeouts_))
{
}

/// A session that was in a transaction may have a connection of its own. If the store has no shared
/// connection, this connection becomes the shared connection for later sessions.
PostgresSession::~PostgresSession()
{
    if (connection_ && !inTransaction() && !shared() && !connection_->isLost())
        ConnectionPool::instance().share(poolKey_, connection_);
}

std::unique_ptr<PostgresSession> PostgresSession::open(const QString& path, const Link& link,
                                                       const Timeouts& timeouts)
{
    std::unique_ptr<PostgresSession> session(new PostgresSession(path, link, timeouts));
    session->connection_ = session->shared();
    if (session->connection_ && session->takeUp()) {
        session->recogniseStore();
        return session;
    }
    ConnectionPool& pool = ConnectionPool::instance();
    pool.unshare(session->poolKey_);
    session->connection_ = session->logIn();
    session->requireTakenUp();
    pool.share(session->poolKey_, session->connection_);
    session->recogniseStore();
    return session;
}

SchemaMemory& PostgresSession::schema()
{
    return connection_->schema();
}

PostgresSession::Connection PostgresSession::shared() const
{
    return std::static_pointer_cast<PqConnection>(ConnectionPool::instance().shared(poolKey_));
}

PostgresSession::Connection PostgresSession::logIn() const
{
    const runtime::WatchedCall call([this] { return place(); }, runtime::Awaited::Server);
    auto connection = std::make_shared<PqConnection>(link_, timeouts_);
    try {
        connection->prepare(greetingName, greetingText(), greetingPatience);
    } catch (const RunTimeError& error) {
        throw logInError(link_, error.description());
    }
    return connection;
}

/// Checks with one statement to the server that the connection works and that the cached schema is
/// valid. Returns false if the connection is lost. An event handler may open the store many times,
/// so the check is done only once until control returns to the event loop.
bool PostgresSession::takeUp()
{
    if (isHandlingEvents() && connection_->hasJustAnswered() && !connection_->isLost())
        return true;
    if (connection_->isLost())
        return false;
    StoredValues greeting;
    const runtime::WatchedCall call([this] { return place(); }, runtime::Awaited::Server);
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
    connection_->setUsesTokens(greeting[3].toBool());
    connection_->shareSchema(sharedSchema(poolKey_, mark));
    markAsAnswered(connection_);
    return true;
}

void PostgresSession::requireTakenUp()
{
    if (!takeUp())
        throw RunTimeError(runtime::ConnectionFailed,
                           u"Connection to %1 failed: it was lost at once"_s.arg(link_.place()));
}

/// Replaces a lost connection by a working one. Must not be called in a transaction, because the
/// changes of a transaction are lost with its connection.
void PostgresSession::reconnect()
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

Answer PostgresSession::execute(const QString& sql, const QVariantList& values)
{
    const runtime::WatchedCall call([this] { return place(); }, runtime::Awaited::Server);
    if (connection_->isLost()) {
        if (inTransaction() || sql == "ROLLBACK"_L1)
            throw connection_->lossError();
        reconnect();
    }
    // A COMMIT after a failed statement is refused here, because the server would roll the
    // transaction back without reporting an error.
    if (sql == "COMMIT"_L1 && connection_->hasFailedTransaction())
        throw RunTimeError(runtime::InvalidOperation,
                           u"A statement of the transaction has failed; nothing of it is kept."_s);
    if (!keepsTheSchema(sql))
        connection_->forgetSchema();
    if (mayChangeSchema(sql))
        askAnew();
    if (!inTransaction() && !values.isEmpty() && !mayChangeSchema(sql))
        return connection_->executeKept(sql, values);
    return connection_->execute(sql, values);
}

/// Makes the next opening of the store check the cached schema, which is otherwise checked only
/// once for each handled event. Called before a statement that may change tables.
void PostgresSession::askAnew() const
{
    if (const Connection greeted = shared())
        greeted->setJustAnswered(false);
}

const std::vector<TableInfo>& PostgresSession::knownTables()
{
    if (!schema().all)
        schema().all = dialect().tablesOf(rows(PostgresDialect::instance().tablesQuery()));
    return *schema().all;
}

std::vector<TableInfo> PostgresSession::tables()
{
    std::vector<TableInfo> all = knownTables();
    for (TableInfo& each : all)
        each.fields.clear();
    return all;
}

std::optional<TableInfo> PostgresSession::table(const QString& name)
{
    if (std::optional<TableInfo> known = tableIn(knownTables(), name))
        return known;
    // The cached schema lacks the table. The schema is read again, because another station may have
    // created the table in the meantime.
    schema().all.reset();
    return tableIn(knownTables(), name);
}

RowNumber PostgresSession::insert(const TableInfo& table, const QString& sql,
                                  const QVariantList& values)
{
    const runtime::WatchedCall call([this] { return place(); });
    if (inTransaction())
        return addedRow(rows(sql + " RETURNING "_L1 + rowNumber(table), values));
    if (connection_->isLost())
        reconnect();
    const QString token = QUuid::createUuid().toString(QUuid::WithoutBraces);
    try {
        return insertWithToken(table, sql, values, token);
    } catch (const RunTimeError& error) {
        if (!connection_->isLost())
            throw;
        throw RunTimeError(error.number(), sentence(error.description()) + fateOf(token));
    }
}

/// Adds a row outside of a transaction. If the server has a table of tokens (see row_tokens.h),
/// stores the random text `token` with the row. If the server's answer is lost, the token shows
/// whether the row is stored.
RowNumber PostgresSession::insertWithToken(const TableInfo& table, const QString& sql,
                                           const QVariantList& values, const QString& token)
{
    const QString number = rowNumber(table);
    if (!connection_->usesTokens())
        return addedRow(rows(sql + " RETURNING "_L1 + number, values));
    const QString previous = connection_->lastToken();
    QVariantList all = values;
    all.append(token);
    if (!previous.isEmpty())
        all.append(previous);
    const RowNumber added = addedRow(
        rows(postgres::insertWithToken(sql, number, values.size(), !previous.isEmpty()), all));
    connection_->setLastToken(token);
    return added;
}

/// Returns a sentence for the user that says whether a new row is stored. Called if the connection
/// was lost before the server confirmed the row. Looks for the row's token (a random text that is
/// stored with the row) over a new connection.
QString PostgresSession::fateOf(const QString& token)
{
    QString unknown = u"It is not known whether the new row is stored."_s;
    if (!connection_->usesTokens())
        return unknown;
    try {
        reconnectInTime();
        const bool isClaimed = connection_->execute(claimToken(), {token}).affected > 0;
        return isClaimed ? u"The new row is not stored."_s : u"The new row is stored."_s;
    } catch (const RunTimeError&) {
        return unknown; // the loss that led here is the error to report
    }
}

/// Replaces the lost connection. A server that is restarting refuses connections for a moment, so
/// the function tries again until a time limit.
void PostgresSession::reconnectInTime()
{
    const Deadline deadline(reconnectPatience);
    for (;;) {
        try {
            reconnect();
            return;
        } catch (const RunTimeError&) {
            if (deadline.left() <= reconnectPause)
                throw;
        }
        std::this_thread::sleep_for(reconnectPause);
    }
}

/// Gives the session a connection that no other session uses, because a transaction needs its own
/// connection.
void PostgresSession::useOwnConnection()
{
    if (shared() != connection_)
        return;
    constexpr long here = 1;
    constexpr long inThePool = 1;
    if (connection_.use_count() > here + inThePool) {
        connection_ = logIn();
        requireTakenUp();
    } else {
        ConnectionPool::instance().unshare(poolKey_);
    }
}

void PostgresSession::begin()
{
    const runtime::WatchedCall call([this] { return place(); });
    useOwnConnection();
    run(u"BEGIN"_s);
    setInTransaction();
    try {
        requireExpectedMark();
    } catch (const RunTimeError&) {
        rollback();
        throw;
    }
}

void PostgresSession::beginSnapshot()
{
    useOwnConnection();
    run(u"BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"_s);
    setInTransaction();
    run(u"SET LOCAL idle_in_transaction_session_timeout = 0"_s);
}

std::unique_ptr<Bulk> PostgresSession::bulk()
{
    return std::make_unique<PostgresBulk>(*this, connection_);
}

} // namespace dao::postgres
