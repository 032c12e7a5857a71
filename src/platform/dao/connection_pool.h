#pragma once

#include "platform/dao/driver.h"

#include <deque>

namespace dao {

/// Connections that no database works over at the moment. Every use of the store opens a database
/// of its own; it takes one of these where it can, so that a click does not pay for connecting.
class ConnectionPool
{
public:
    static ConnectionPool& instance();

    /// The connection to the store that was given back last; null where there is none. Stores with
    /// one key are the same one.
    std::unique_ptr<SqlConnection> take(const QString& key);
    /// Keeps the connection; the oldest goes where there are too many.
    void give(const QString& key, std::unique_ptr<SqlConnection> connection);
    /// Lets go of all connections to one store.
    void forget(const QString& key);
    void clear();

private:
    ConnectionPool();

    struct Idle
    {
        QString key;
        std::unique_ptr<SqlConnection> connection;
    };
    std::deque<Idle> idle_;
};

} // namespace dao
