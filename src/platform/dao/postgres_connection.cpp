#include "platform/dao/postgres_connection.h"

#include "platform/dao/answer_watch.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlResult>

#include <condition_variable>
#include <libpq-fe.h>
#include <mutex>
#include <thread>

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

/// For the whole of a log-in, name look-up included. With the wait of a greeting it stays below
/// ten seconds, which is what a click may take where a connection has died unseen.
constexpr std::chrono::seconds openingWait(5);
/// For one address of the server; the client library then says why.
constexpr std::chrono::seconds addressWait(4);
constexpr std::chrono::seconds greetingWait(3);
constexpr std::chrono::seconds idleInTransaction(60);

/// What tells of any change to the schema: every change of a table or an index leaves a row of the
/// one catalogue or of the other written by another transaction.
const QString greeting = QStringLiteral(
    "PREPARE zomrel_greeting AS WITH relation AS MATERIALIZED "
    "(SELECT c.oid, c.relkind, c.xmin::text::bigint AS writer FROM pg_class c "
    "WHERE c.relnamespace = (SELECT oid FROM pg_namespace WHERE nspname = current_schema())) "
    "SELECT (SELECT concat_ws('.', count(*), sum(writer)) FROM relation) || '.' || "
    "(SELECT concat_ws('.', count(*), sum(a.xmin::text::bigint)) FROM pg_attribute a "
    "WHERE a.attnum > 0 AND a.attrelid = ANY (ARRAY(SELECT oid FROM relation "
    "WHERE relkind NOT IN ('i', 'I', 'S')))), "
    "current_setting('server_encoding'), "
    "CASE WHEN current_setting('synchronous_commit') = 'off' "
    "THEN set_config('synchronous_commit', 'on', false) END");

/// The client library's own pointer behind one of the toolkit's objects; null where there is none.
template <typename Pointer>
Pointer pointerIn(const QVariant& handle, QByteArrayView structure, QByteArrayView synonym)
{
    const QByteArrayView type(handle.typeName());
    if (type != structure && type != synonym)
        return nullptr;
    return *static_cast<const Pointer*>(handle.constData());
}

PGconn* handleOf(const QSqlDatabase& database)
{
    return pointerIn<PGconn*>(database.driver()->handle(), "pg_conn*", "PGconn*");
}

QString oneLine(const QString& text)
{
    return text.simplified();
}

RunTimeError noConnection(const Link& link, const QString& reason)
{
    return RunTimeError(runtime::ConnectionFailed,
                        u"Connection to %1 as user '%2' failed: %3"_s.arg(link.place(), link.user,
                                                                          oneLine(reason)));
}

/// Settings that come with the log-in, so that they cost no round trip.
QString connectOptions(const Link& link, const Waits& waits)
{
    const QString session =
        u"-c lock_timeout=%1 -c idle_in_transaction_session_timeout=%2 -c extra_float_digits=1 "
        "-c standard_conforming_strings=on -c client_min_messages=warning"_s.arg(waits.lock.count())
            .arg(std::chrono::milliseconds(idleInTransaction).count());
    return u"connect_timeout=%1;tcp_user_timeout=%2;keepalives_idle=5;keepalives_interval=2;"
           "keepalives_count=2;sslmode=%3;application_name=Zomrel;options='%4'"_s
               .arg(addressWait.count())
               .arg(waits.answer.count())
               .arg(link.tls, session);
}

/// A log-in under way in a thread of its own: looking a name up and what the toolkit asks of a new
/// connection know no bound.
struct Opening
{
    std::mutex mutex;
    std::condition_variable changed;
    std::unique_ptr<SqlConnection> connection;
    bool isDone = false;
    bool isGivenUp = false;
    bool isGood = false;
};

void open(const std::shared_ptr<Opening>& opening)
{
    const bool good = opening->connection->database().open();
    const std::lock_guard lock(opening->mutex);
    opening->isGood = good;
    opening->isDone = true;
    if (opening->isGivenUp)
        opening->connection.reset();
    opening->changed.notify_all();
}

} // namespace

std::unique_ptr<SqlConnection> connect(const Link& link, const Waits& waits)
{
    if (!QSqlDatabase::isDriverAvailable(u"QPSQL"_s))
        throw noConnection(link, u"the toolkit's driver for PostgreSQL is not installed"_s);
    const auto opening = std::make_shared<Opening>();
    opening->connection = std::make_unique<SqlConnection>(u"QPSQL"_s);
    QSqlDatabase& database = opening->connection->database();
    database.setHostName(link.server);
    database.setPort(link.port);
    database.setDatabaseName(link.database);
    database.setUserName(link.user);
    database.setConnectOptions(connectOptions(link, waits));
    std::unique_lock lock(opening->mutex);
    std::thread([opening] { open(opening); }).detach();
    if (!opening->changed.wait_for(lock, openingWait, [&] { return opening->isDone; })) {
        opening->isGivenUp = true;
        throw noConnection(link, u"no answer within %1 s"_s.arg(openingWait.count()));
    }
    std::unique_ptr<SqlConnection> connection = std::move(opening->connection);
    if (!opening->isGood)
        throw noConnection(link, connection->database().lastError().databaseText());
    // What the server remarks stands in its own log; what fails comes as an error.
    PQsetNoticeProcessor(
        handleOf(connection->database()), [](void*, const char*) {}, nullptr);
    const QSqlError failure = execute(*connection, greeting, greetingWait).lastError();
    if (failure.isValid())
        throw noConnection(link, failure.databaseText());
    return connection;
}

std::optional<Greeting> greet(SqlConnection& connection, const Link& link)
{
    if (isLost(connection))
        return {};
    QSqlQuery& query = execute(connection, u"EXECUTE zomrel_greeting"_s, greetingWait);
    if (!query.isActive()) {
        if (isLost(connection))
            return {};
        throw errorOf(query.lastError(), connection, link);
    }
    query.next();
    Greeting answer{query.value(0).toString(), query.value(1).toString()};
    query.finish();
    return answer;
}

bool isLost(SqlConnection& connection)
{
    PGconn* handle = handleOf(connection.database());
    if (handle == nullptr)
        return true;
    // A server that goes down says so before it hangs up: the one reading takes the words, the
    // other finds the end.
    PQconsumeInput(handle);
    PQconsumeInput(handle);
    return PQstatus(handle) != CONNECTION_OK;
}

bool hasFailedTransaction(SqlConnection& connection)
{
    return PQtransactionStatus(handleOf(connection.database())) == PQTRANS_INERROR;
}

QSqlQuery& execute(SqlConnection& connection, const QString& sql,
                   std::chrono::milliseconds patience)
{
    QSqlQuery& query = connection.passing();
    const AnswerWatch watch(PQsocket(handleOf(connection.database())), patience);
    query.exec(sql);
    if (watch.hasExpired())
        connection.setLossReason(u"no answer within %1 s"_s.arg(
            std::chrono::duration_cast<std::chrono::seconds>(patience).count()));
    return query;
}

int columnCount(const QSqlQuery& query)
{
    const auto* result = pointerIn<PGresult*>(query.result()->handle(), "pg_result*", "PGresult*");
    return result != nullptr ? PQnfields(result) : 0;
}

} // namespace dao::postgres
