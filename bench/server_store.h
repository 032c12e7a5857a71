#pragma once

#include "bare_server.h"

#include "support/throwaway_server.h"

#include <QTemporaryDir>

namespace bench {

/// A store in a database of its own, with the catalogue as it is delivered, and a link to it. The
/// server is one with the settings that it comes with, durable.
class ServerStore
{
public:
    /// Orders 1 to `orders` of `linesEach` lines each, all closed but the last.
    explicit ServerStore(const QString& name, int orders = 0, int linesEach = 0);

    /// Makes it the program's store.
    void use() const;
    /// Lets the program reach it through a port of the loopback address instead.
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

/// INSERT of lines with all fields but their code, up to and without the source of `i`; the numbers
/// of order and line are expressions.
QString insertedLines(const QString& order, const QString& line);

} // namespace bench
