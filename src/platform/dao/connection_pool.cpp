#include "platform/dao/connection_pool.h"

#include <QCoreApplication>

#include <algorithm>

namespace dao {

namespace {

/// As many as the loading of the order form opens at once.
constexpr std::size_t mostIdle = 12;

void clearAtTheEnd()
{
    ConnectionPool::instance().clear();
}

} // namespace

ConnectionPool::ConnectionPool()
{
    qAddPostRoutine(clearAtTheEnd); // connections have to go before the application does
}

ConnectionPool& ConnectionPool::instance()
{
    static ConnectionPool pool;
    return pool;
}

std::unique_ptr<SqlConnection> ConnectionPool::take(const QString& key)
{
    const auto found = std::find_if(idle_.rbegin(), idle_.rend(),
                                    [&key](const Idle& each) { return each.key == key; });
    if (found == idle_.rend())
        return nullptr;
    std::unique_ptr<SqlConnection> connection = std::move(found->connection);
    idle_.erase(std::next(found).base());
    return connection;
}

void ConnectionPool::give(const QString& key, std::unique_ptr<SqlConnection> connection)
{
    idle_.push_back({key, std::move(connection)});
    if (idle_.size() > mostIdle)
        idle_.pop_front();
}

void ConnectionPool::forget(const QString& key)
{
    std::erase_if(idle_, [&key](const Idle& each) { return each.key == key; });
}

void ConnectionPool::clear()
{
    idle_.clear();
}

} // namespace dao
