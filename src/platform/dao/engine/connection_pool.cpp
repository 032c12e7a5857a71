#include "platform/dao/engine/connection_pool.h"

#include <QCoreApplication>

#include <algorithm>

namespace dao {

namespace {

/// The maximum number of idle connections that are kept open. The order form opens this many
/// Database objects at the same time while it loads.
constexpr std::size_t mostIdle = 12;

} // namespace

ConnectionPool::ConnectionPool()
{
    // Idle connections are closed when QCoreApplication is destroyed. The destructor of the pool
    // would close them too late, because the pool is a static object.
    qAddPostRoutine([] { instance().clear(); });
}

ConnectionPool& ConnectionPool::instance()
{
    static ConnectionPool pool;
    return pool;
}

std::shared_ptr<EngineConnection> ConnectionPool::take(const QString& key)
{
    const auto found = std::find_if(idle_.rbegin(), idle_.rend(),
                                    [&key](const Idle& each) { return each.key == key; });
    if (found == idle_.rend())
        return nullptr;
    std::shared_ptr<EngineConnection> connection = std::move(found->connection);
    idle_.erase(std::next(found).base());
    return connection;
}

void ConnectionPool::give(const QString& key, std::shared_ptr<EngineConnection> connection)
{
    idle_.push_back({key, std::move(connection)});
    if (idle_.size() > mostIdle)
        idle_.pop_front();
}

std::shared_ptr<EngineConnection> ConnectionPool::shared(const QString& key) const
{
    const auto found = shared_.find(key);
    return found == shared_.end() ? nullptr : found->second.connection.lock();
}

void ConnectionPool::share(const QString& key, const std::shared_ptr<EngineConnection>& connection)
{
    shared_[key] = {connection, connection};
}

void ConnectionPool::clear()
{
    idle_.clear();
    for (auto& [key, each] : shared_)
        each.kept.reset();
}

} // namespace dao
