#pragma once

#include "platform/dao/postgres/link.h"

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <functional>

namespace testsupport {

/// A PostgreSQL server of the tests' own in a temporary folder, reached by a local socket there and
/// by a free port of the loopback address. Where the tests run as root it belongs to another user,
/// for a server refuses root. It ends with this object, or with the process however that ends.
class ThrowawayServer
{
public:
    enum class Care {
        Quick,   ///< What it has taken may get lost with the machine.
        Durable, ///< On the disk, with the settings that a server comes with.
        Cramped, ///< As a quick one, with a journal in files of 1 MiB and none made beforehand.
    };

    /// In a folder of the disk, or of one that suits its care.
    explicit ThrowawayServer(Care care = Care::Quick, const QString& disk = {});
    ~ThrowawayServer();
    ThrowawayServer(const ThrowawayServer&) = delete;
    ThrowawayServer& operator=(const ThrowawayServer&) = delete;

    /// Starts it again after it was ended, over the same databases.
    void start();
    /// Ends it as a crash does, every connection with it.
    void endAtOnce();
    /// Starts it again with a certificate of its own, so that it takes encrypted connections too.
    /// The certificate is good for the address 127.0.0.1 and no name, and vouches for itself; gives
    /// the file that it stands in.
    QString certify();

    /// The folder of its socket.
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

/// A database of its own, for as long as it lives, on the server of this test run.
class ThrowawayDatabase
{
public:
    /// What a new database is a copy of: nothing, or another one that databaseOnce has made.
    explicit ThrowawayDatabase(const QString& pattern = {});
    ~ThrowawayDatabase();
    ThrowawayDatabase(const ThrowawayDatabase&) = delete;
    ThrowawayDatabase& operator=(const ThrowawayDatabase&) = delete;

    const dao::Link& link() const { return link_; }
    /// Lays the link to it at the path.
    void writeLink(const QString& path) const;

private:
    dao::Link link_;
};

/// True where the tests run over stores on a server.
bool isOnServer();

/// Makes it the server of this process's stores. It has to come before the first of them.
void useServer(const ThrowawayServer& server);

/// The way to a database of the server of this test run: the one that ZOMREL_TEST_SERVER names, or
/// else one that this process starts at its first use.
dao::Link linkTo(const QString& database);

/// Makes a database of this name, by filling a new one, where the server has none; other processes
/// wait meanwhile. It then serves as a pattern, so nobody may stay connected to it.
void databaseOnce(const QString& name, const std::function<void(const dao::Link&)>& fill);

/// Runs a statement in the server's own database, as its keeper does.
void runAsKeeper(const QString& sql);

} // namespace testsupport
