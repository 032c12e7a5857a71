#include "server_store.h"

#include "platform/dao/database.h"
#include "shell/base/module1.h"
#include "store/schema.h"
#include "support/temporary_store.h"
#include "tools/store/move.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

const testsupport::ThrowawayServer& server()
{
    static const testsupport::ThrowawayServer only(testsupport::ThrowawayServer::Care::Durable);
    return only;
}

QString someValue(const dao::FieldInfo& field)
{
    switch (field.type) {
    case dao::dbText:
        return u"'לבן'"_s;
    case dao::dbDate:
        return u"'2026-01-02'"_s;
    case dao::dbDouble:
        return u"100.25"_s;
    default:
        return u"2"_s;
    }
}

} // namespace

QString insertedLines(const QString& order, const QString& line)
{
    QStringList names;
    QStringList values;
    for (const dao::FieldInfo& field : store::tableSchema(u"Cuts"_s)->fields) {
        if (field.counter)
            continue;
        names.append(u'"' + field.name + u'"');
        values.append(field.name == "Order_Num"_L1 ? order
                      : field.name == "NUM"_L1     ? line
                                                   : someValue(field));
    }
    return u"INSERT INTO \"Cuts\" (%1) SELECT %2"_s.arg(names.join(u", "_s), values.join(u", "_s));
}

ServerStore::ServerStore(const QString& name, int orders, int linesEach)
    : link_{server().folder(), server().port(), name, u"zomrel"_s, u"disable"_s}
{
    dao::Link keepers = link_;
    keepers.database = u"postgres"_s;
    BareServer(keepers).run(u"CREATE DATABASE %1 TEMPLATE template0"_s.arg(name));
    write(link_);
    moveDeliveredStoreIn();
    if (orders > 0)
        fill(orders, linesEach);
}

void ServerStore::use() const
{
    Module1::StorePath = path();
}

void ServerStore::leadThrough(int port) const
{
    dao::Link other = link_;
    other.server = u"127.0.0.1"_s;
    other.port = port;
    write(other);
}

void ServerStore::write(const dao::Link& link) const
{
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly) || file.write(dao::linkText(link)) <= 0)
        qFatal("cannot write %s", qPrintable(path()));
}

void ServerStore::moveDeliveredStoreIn() const
{
    const testsupport::TemporaryStore file(testsupport::TemporaryStore::Contents::Delivered);
    const storetools::MoveOutcome outcome =
        storetools::moveStore(storetools::Place(file.path()), storetools::Place(path()), {});
    if (!outcome.findings.isEmpty())
        qFatal("%s", qPrintable(outcome.findings.join(u'\n')));
    dao::DBEngine::instance().Idle();
}

/// The lines of different orders are interleaved, because a real table never stores an order's
/// lines in one block.
void ServerStore::fill(int orders, int linesEach) const
{
    const BareServer bare(link_);
    bare.run(u"INSERT INTO \"Orders\" (\"Number\", \"Order_Date\", \"Open_Close\", "
             "\"CustomerName\") SELECT i, '2026-01-02', CASE WHEN i < %1 THEN -1 ELSE 0 END, "
             "'לקוח ' || i FROM generate_series(1, %1) AS i"_s.arg(orders));
    bare.run(insertedLines(u"mod(i, %1) + 1"_s.arg(orders), u"i / %1 + 1"_s.arg(orders)) +
             u" FROM generate_series(0, %1) AS i"_s.arg(orders * linesEach - 1));
    bare.run(u"VACUUM ANALYZE"_s);
}

} // namespace bench
