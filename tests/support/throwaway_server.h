#pragma once

#include "platform/dao/engine/link.h"

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <functional>

namespace testsupport {

/// A private PostgreSQL server in a temporary folder. It accepts connections on a local socket in
/// the folder and on a free port of the loopback address. PostgreSQL refuses to run as root, so
/// tests that run as root start it as another user. The server ends with this object, or with the
/// process even if that is killed.
class ThrowawayServer
{
public:
    enum class Care {
        Quick,   ///< Does not sync to disk; committed data may be lost in a system crash. Has
                 ///< data checksums.
        Durable, ///< Syncs to disk with PostgreSQL's default settings.
        Cramped, ///< Like Quick, but with a write-ahead log in segments of 1 MiB that are not
                 ///< preallocated.
    };

    /// Starts the server in a folder of the given disk, or in a suitable folder if no disk is
    /// given.
    explicit ThrowawayServer(Care care = Care::Quick, const QString& disk = {});
    ~ThrowawayServer();
    ThrowawayServer(const ThrowawayServer&) = delete;
    ThrowawayServer& operator=(const ThrowawayServer&) = delete;

    /// Starts the server again after it was stopped, with the same databases.
    void start();
    /// Stops the server immediately, like a crash; all connections are lost.
    void endAtOnce();
    /// Restarts the server with its own certificate, so that it also accepts encrypted connections.
    /// The self-signed certificate is valid for the address 127.0.0.1 only. Returns the path of the
    /// certificate file.
    QString certify();

    /// Returns the folder of the socket.
    QString folder() const { return folder_.path(); }
    int port() const { return port_; }

private:
    void makeCluster();
    void runToEnd(const QString& program, const QStringList& arguments);
    QString serverKey() const;

    Care care_;
    QTemporaryDir folder_;
    int port_ = 0;
    QProcess process_;
};

/// A database on the server of this test run. It is dropped after the object is destroyed.
class ThrowawayDatabase
{
public:
    /// Creates the database, empty or as a copy of a template database that was created by
    /// databaseOnce.
    explicit ThrowawayDatabase(const QString& pattern = {});
    ~ThrowawayDatabase();
    ThrowawayDatabase(const ThrowawayDatabase&) = delete;
    ThrowawayDatabase& operator=(const ThrowawayDatabase&) = delete;

    const dao::Link& link() const { return link_; }
    /// Writes the link file of the database to the path.
    void writeLink(const QString& path) const;

private:
    dao::Link link_;
};

/// Returns true if the tests use stores on a server.
bool isOnServer();

/// Sets the server for the stores of this process. Must be called before the first store is
/// created.
void useServer(const ThrowawayServer& server);

/// Returns a link without a database to a server of this process, which the first call starts. Ends
/// the process on Windows, where the tests start no server.
dao::Link ownServer();

/// Returns the link to a database on the server of this test run. ZOMREL_TEST_SERVER names a file
/// with the server's folder or address and its port, one per line. If it is not set, this process
/// uses ownServer.
dao::Link linkTo(const QString& database);

/// Creates and fills a database with this name unless the server has one. Other processes wait
/// until it is filled. The database then serves as a template, so no connection to it may stay
/// open.
void databaseOnce(const QString& name, const std::function<void(const dao::Link&)>& fill);

/// Runs a statement as superuser in the server's maintenance database.
void runAsKeeper(const QString& sql);

} // namespace testsupport
