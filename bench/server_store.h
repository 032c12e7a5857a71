#pragma once

#include "bare_server.h"

#include "support/throwaway_server.h"

#include <QTemporaryDir>

namespace bench {

/// A store in a database of its own on the server, with the catalogue of series that is shipped
/// with the program, and a link file, which is a text file that names the database. The server has
/// its default settings, so every commit is written to the disk.
class ServerStore
{
public:
    /// Creates the store with the orders 1 to `orders`, each with `linesEach` lines. All but the
    /// last order are closed.
    explicit ServerStore(const QString& name, int orders = 0, int linesEach = 0);

    /// Makes this store the program's store.
    void use() const;
    /// Changes the link file so that the program connects to the given port of 127.0.0.1 instead of
    /// the server's own port.
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

/// Returns the beginning of an INSERT ... SELECT statement for order lines, without the FROM
/// clause. The statement sets all fields except the key. `order` and `line` are SQL expressions for
/// the order number and the line number. The expressions may use `i`, the number of the generated
/// line.
QString insertedLines(const QString& order, const QString& line);

} // namespace bench
