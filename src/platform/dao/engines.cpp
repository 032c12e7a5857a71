#include "platform/dao/engines.h"

#include "platform/dao/engine/link.h"
#include "platform/dao/postgres/postgres_session.h"
#include "platform/dao/sqlite/sqlite_presence.h"
#include "platform/dao/sqlite/sqlite_session.h"
#include "platform/runtime/call_watch.h"

namespace dao {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

std::unique_ptr<Session> openEmbedded(const QString& path, const Timeouts& timeouts)
{
    try {
        return sqlite::SqliteSession::open(path, timeouts.lock);
    } catch (const RunTimeError& error) {
        if (error.number() == runtime::UnrecognizedFormat && beginsAsLink(path))
            throw RunTimeError(runtime::UnrecognizedFormat,
                               u"The store link '%1' is damaged: it is too long."_s.arg(path));
        throw;
    }
}

} // namespace

std::unique_ptr<Session> openStore(const QString& path, const Timeouts& timeouts)
{
    const runtime::WatchedCall call([&path] { return path; });
    const std::optional<Link> link = linkAt(path);
    if (!link)
        return openEmbedded(path, timeouts);
    if (link->namesFile())
        return openEmbedded(linkedFile(*link, path), timeouts);
    return postgres::PostgresSession::open(path, *link, timeouts);
}

std::unique_ptr<Session> createStore(const QString& path, const Timeouts& timeouts)
{
    return sqlite::SqliteSession::create(path, timeouts.lock);
}

QStringList connectedStations(const QString& path)
{
    const std::optional<Link> link = linkAt(path);
    if (!link)
        return sqlite::processesPresentAt(path);
    if (link->namesFile())
        return sqlite::processesPresentAt(linkedFile(*link, path));
    return postgres::PostgresSession::open(path, *link, Timeouts())->otherStations();
}

} // namespace dao
