#pragma once

#include "reliability/ledger.h"
#include "reliability/station_process.h"

#include "platform/dao/link.h"
#include "support/plain_sql.h"
#include "support/throwaway_server.h"

#include <QTemporaryDir>

#include <memory>

namespace reliability {

/// A folder with nothing but the link to a store in it, as a station has it.
class LinkFolder
{
public:
    explicit LinkFolder(const dao::Link& link);

    QString folder() const { return folder_.path(); }
    QString path() const { return folder_.filePath(QStringLiteral("Aluminium.mdb")); }

private:
    QTemporaryDir folder_;
};

/// A server of the test's own with a store as it is delivered and the stations' series, and the
/// ledger of what the stations have told.
///
/// The server does not wait for its disk, yet it says of nothing that it is done before it has
/// handed it to the machine: while that lives, ending the server at once loses nothing.
class ServerStore
{
public:
    ServerStore();

    testsupport::ThrowawayServer& server() { return server_; }
    /// The way to the store; by the local socket, or by a port of the loopback address.
    dao::Link link() const;
    dao::Link linkByPort(int port) const;
    QString folder() const { return folder_->folder(); }

    void tell(StationProcess& station, const QString& name);
    /// What is lost, by half or unsound; empty for a good store. No station may be at work.
    QStringList findings();
    int count(const QString& sql);

    Ledger& ledger() { return *ledger_; }

private:
    testsupport::ThrowawayServer server_;
    std::unique_ptr<LinkFolder> folder_;
    std::unique_ptr<Ledger> ledger_;
};

/// The run-time box of a store whose server did not answer, could not be reached or was lost.
bool tellsOfTheServer(const QString& box);

/// The run-time box of a start whose look for the table of orders failed while the store was there
/// again a moment later: the start goes on to make the table that there is.
bool tellsOfACutUpgrade(const QString& box);

/// A new seed, or the one that ZOMREL_SEED says; it is printed.
unsigned printedSeed();

} // namespace reliability
