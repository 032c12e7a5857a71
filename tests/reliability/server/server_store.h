#pragma once

#include "reliability/ledger.h"
#include "reliability/station_process.h"

#include "platform/dao/engine/link.h"
#include "support/plain_sql.h"
#include "support/throwaway_server.h"

#include <QTemporaryDir>

#include <memory>

namespace reliability {

/// A folder that contains only a link to a store, as on a station.
class LinkFolder
{
public:
    explicit LinkFolder(const dao::Link& link);

    QString folder() const { return folder_.path(); }
    QString path() const { return folder_.filePath(QStringLiteral("Aluminium.mdb")); }

private:
    QTemporaryDir folder_;
};

/// A server of the test's own with a delivered store and the stations' series, and the ledger of
/// the stations' reports.
///
/// A quick server does not wait for its disk, but it confirms a commit only after handing the data
/// to the operating system. Therefore killing the server process loses nothing while the machine
/// keeps running. A durable server has its files on a disk and waits for it at each commit.
class ServerStore
{
public:
    explicit ServerStore(
        testsupport::ThrowawayServer::Care care = testsupport::ThrowawayServer::Care::Quick);

    testsupport::ThrowawayServer& server() { return server_; }
    /// Returns the link to the store by the local socket; linkByPort uses a loopback port.
    dao::Link link() const;
    dao::Link linkByPort(int port) const;
    QString folder() const { return folder_->folder(); }

    void tell(StationProcess& station, const QString& name);
    /// Returns all losses, partial rows and damage, or an empty list for a sound store. No station
    /// may be running.
    QStringList findings();
    int count(const QString& sql);

    Ledger& ledger() { return *ledger_; }

private:
    testsupport::ThrowawayServer server_;
    std::unique_ptr<LinkFolder> folder_;
    std::unique_ptr<Ledger> ledger_;
};

/// Returns true for the error box of a server that did not answer, could not be reached or was
/// lost.
bool tellsOfTheServer(const QString& box);

/// Returns true for the error box of a start whose check for the table Orders failed although the
/// server was available again a moment later. The start then tries to create the existing table.
bool tellsOfACutUpgrade(const QString& box);

/// Prints and returns a random seed, or the one in ZOMREL_SEED.
unsigned printedSeed();

} // namespace reliability
