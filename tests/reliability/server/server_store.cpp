#include "reliability/server/server_store.h"

#include "reliability/figures.h"

#include "platform/dao/database.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"
#include "tools/store/move.h"
#include "tools/store/place.h"

#include <QFile>

#include <cstdio>
#include <random>

using namespace Qt::StringLiterals;
using testsupport::PlainSql;

namespace reliability {

namespace {

const QString database = u"workshop"_s;

dao::Link linkTo(const QString& server, int port, const QString& name)
{
    return {server, port, name, u"zomrel"_s, u"disable"_s};
}

} // namespace

LinkFolder::LinkFolder(const dao::Link& link)
{
    QFile file(path());
    const QByteArray text = dao::linkText(link);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write %s", qUtf8Printable(path()));
}

ServerStore::ServerStore(testsupport::ThrowawayServer::Care care) : server_(care)
{
    const LinkFolder keepers(linkTo(server_.folder(), server_.port(), u"postgres"_s));
    PlainSql(keepers.path()).exactly(u"CREATE DATABASE %1 TEMPLATE template0"_s.arg(database));
    folder_ = std::make_unique<LinkFolder>(link());
    testsupport::TemporaryStore file(testsupport::TemporaryStore::Contents::Delivered);
    addSeriesOfLines(file);
    const QStringList findings = storetools::moveStore(storetools::Place(file.path()),
                                                       storetools::Place(folder_->path()), {})
                                     .findings;
    if (!findings.isEmpty())
        qFatal("%s", qUtf8Printable(findings.join(u'\n')));
    PlainSql plain(folder_->path());
    ledger_ = std::make_unique<Ledger>(plain);
    dao::DBEngine::instance().Idle();
}

dao::Link ServerStore::link() const
{
    return linkTo(server_.folder(), server_.port(), database);
}

dao::Link ServerStore::linkByPort(int port) const
{
    return linkTo(u"127.0.0.1"_s, port, database);
}

void ServerStore::tell(StationProcess& station, const QString& name)
{
    for (const QString& told : station.takeTold())
        ledger_->tell(told, name);
}

QStringList ServerStore::findings()
{
    PlainSql plain(folder_->path());
    const QStringList all = storetools::checkStore(folder_->path()) + ledger_->findings(plain);
    dao::DBEngine::instance().Idle();
    return all;
}

int ServerStore::count(const QString& sql)
{
    return PlainSql(folder_->path()).scalar(sql).toInt();
}

bool tellsOfTheServer(const QString& box)
{
    return box.startsWith(u"Run-time error '3146': The connection to database 'workshop' on "
                          "server "_s) ||
           box.startsWith(u"Run-time error '3151': Connection to database 'workshop' on server "_s);
}

bool tellsOfACutUpgrade(const QString& box)
{
    return box == u"Run-time error '3010': Table 'Orders' already exists.";
}

unsigned printedSeed()
{
    const int seed = setting("ZOMREL_SEED", int(std::random_device{}() % 1000000));
    std::printf("ZOMREL_SEED=%d\n", seed);
    return unsigned(seed);
}

} // namespace reliability
