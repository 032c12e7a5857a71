#include "support/throwaway_server.h"

#include <QFile>
#include <QUuid>

#include <libpq-fe.h>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

const QString ownDatabase = u"postgres"_s;

struct ConnectionCloser
{
    void operator()(PGconn* connection) const { PQfinish(connection); }
};
using Connection = std::unique_ptr<PGconn, ConnectionCloser>;

Connection connectedTo(const dao::Link& link)
{
    const QString text = u"host='%1' port=%2 dbname=%3 user=%4"_s.arg(link.server)
                             .arg(link.port)
                             .arg(link.database, link.user);
    return Connection(PQconnectdb(text.toUtf8().constData()));
}

void run(PGconn* connection, const QString& sql)
{
    PGresult* result = PQexec(connection, sql.toUtf8().constData());
    const ExecStatusType status = PQresultStatus(result);
    PQclear(result);
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        qFatal("%s\n%s", qPrintable(sql), PQerrorMessage(connection));
}

bool exists(PGconn* connection, const QString& database)
{
    const QString sql = u"SELECT FROM pg_database WHERE datname = '%1'"_s.arg(database);
    PGresult* result = PQexec(connection, sql.toUtf8().constData());
    const bool found = PQntuples(result) > 0;
    PQclear(result);
    return found;
}

/// Returns this process's connection to the maintenance database. Reconnects after the server has
/// been restarted.
PGconn* keeperConnection()
{
    static const Connection connection = [] {
        Connection made = connectedTo(linkTo(ownDatabase));
        if (PQstatus(made.get()) != CONNECTION_OK)
            qFatal("%s", PQerrorMessage(made.get()));
        return made;
    }();
    // After a shutdown, the first call reads the server's last message and the second one detects
    // the closed connection.
    PQconsumeInput(connection.get());
    PQconsumeInput(connection.get());
    if (PQstatus(connection.get()) != CONNECTION_OK)
        PQreset(connection.get());
    return connection.get();
}

dao::Link linkOn(const QString& folder, int port, const QString& database)
{
    return {folder, port, database, u"zomrel"_s, u"disable"_s};
}

std::optional<dao::Link>& usedServer()
{
    static std::optional<dao::Link> link;
    return link;
}

/// Returns the folder and the port of the server that the test run has started, one per line.
QStringList sharedServer()
{
    QFile file(qEnvironmentVariable("ZOMREL_TEST_SERVER"));
    if (file.fileName().isEmpty() || !file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

} // namespace

bool isOnServer()
{
    return qEnvironmentVariable("ZOMREL_TEST_ENGINE") == "postgresql"_L1;
}

void useServer(const ThrowawayServer& server)
{
    usedServer() = linkOn(server.folder(), server.port(), ownDatabase);
}

dao::Link linkTo(const QString& database)
{
    if (usedServer())
        return linkOn(usedServer()->server, usedServer()->port, database);
    static const QStringList shared = sharedServer();
    if (shared.size() == 2)
        return linkOn(shared[0], shared[1].toInt(), database);
    dao::Link own = ownServer();
    own.database = database;
    return own;
}

void runAsKeeper(const QString& sql)
{
    run(keeperConnection(), sql);
}

void databaseOnce(const QString& name, const std::function<void(const dao::Link&)>& fill)
{
    PGconn* connection = keeperConnection();
    run(connection, u"SELECT pg_advisory_lock(1)"_s);
    if (!exists(connection, name)) {
        const QString unfinished = u"unfinished_"_s + name;
        if (exists(connection, unfinished))
            run(connection, u"DROP DATABASE \"%1\" WITH (FORCE)"_s.arg(unfinished));
        run(connection, u"CREATE DATABASE \"%1\" TEMPLATE template0"_s.arg(unfinished));
        fill(linkTo(unfinished));
        run(connection, u"ALTER DATABASE \"%1\" RENAME TO \"%2\""_s.arg(unfinished, name));
    }
    run(connection, u"SELECT pg_advisory_unlock(1)"_s);
}

ThrowawayDatabase::ThrowawayDatabase(const QString& pattern)
    : link_(linkTo(u"test_"_s + QUuid::createUuid().toString(QUuid::Id128)))
{
    runAsKeeper(u"CREATE DATABASE \"%1\" TEMPLATE \"%2\" STRATEGY file_copy"_s.arg(
        link_.database, pattern.isEmpty() ? u"template0"_s : pattern));
}

/// The last few databases of a process are not dropped, because a window may still read its store
/// shortly after its test. A deleted file can be read in that case, too. The server removes the
/// databases when it ends.
ThrowawayDatabase::~ThrowawayDatabase()
{
    constexpr qsizetype kept = 3;
    static QStringList leftBehind;
    leftBehind.append(link_.database);
    if (leftBehind.size() > kept)
        runAsKeeper(u"DROP DATABASE \"%1\" WITH (FORCE)"_s.arg(leftBehind.takeFirst()));
}

void ThrowawayDatabase::writeLink(const QString& path) const
{
    QFile file(path);
    const QByteArray text = dao::linkText(link_);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace testsupport
