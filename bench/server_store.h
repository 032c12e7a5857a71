#pragma once

#include "bare_server.h"

#include "support/throwaway_server.h"

#include <QTemporaryDir>

namespace bench {

/// A store in a database of its own, with the catalogue that is shipped with the program, and a
/// link file to it. The server has its default settings, with which every commit is durable.
class ServerStore
{
public:
    /// Creates the store with the orders 1 to `orders`, each with `linesEach` lines. All but the
    /// last order are closed.
    explicit ServerStore(const QString& name, int orders = 0, int linesEach = 0);

    /// Makes this store the program's store.
    void use() const;
    /// Changes the link so that the program connects to this loopback port instead of the server's
    /// own.
    void leadThrough(int port) const;
    const dao::Link& link() const { return link_; }

private:
    QString path() const { return folder_.filePath(QStringLiteral("Aluminium.mdb")); }
    void write(const dao::Link& link) const;
    void moveDeliveredStoreIn() const;
    void fill(int orders, int linesEach) const;

    QTemporaryDir folder_;
    dao::Link link_;
};

/// Returns an INSERT ... SELECT statement for lines, up to but not including its FROM clause. It
/// sets all fields except the key. `order` and `line` are SQL expressions that may use `i`, the
/// number of the generated line.
QString insertedLines(const QString& order, const QString& line);

} // namespace bench
