#include "bare_server.h"

using namespace Qt::StringLiterals;

namespace bench {

BareServer::BareServer(const dao::Link& link)
    : connection_(PQconnectdb(u"host='%1' port=%2 dbname=%3 user=%4"_s.arg(link.server)
                                  .arg(link.port)
                                  .arg(link.database, link.user)
                                  .toUtf8()
                                  .constData()))
{
    if (PQstatus(connection()) != CONNECTION_OK)
        qFatal("%s", PQerrorMessage(connection()));
}

Result BareServer::run(const QString& sql) const
{
    Result result(PQexec(connection(), sql.toUtf8().constData()));
    const ExecStatusType status = PQresultStatus(result.get());
    if (status == PGRES_FATAL_ERROR || status == PGRES_BAD_RESPONSE)
        qFatal("%s\n%s", qPrintable(sql), PQerrorMessage(connection()));
    return result;
}

QByteArray BareServer::value(const QString& sql) const
{
    const Result result = run(sql);
    return PQntuples(result.get()) > 0 ? QByteArray(PQgetvalue(result.get(), 0, 0)) : QByteArray();
}

void BareServer::endCopy() const
{
    while (const Result result{PQgetResult(connection())}) {
        if (PQresultStatus(result.get()) != PGRES_COMMAND_OK)
            qFatal("%s", PQerrorMessage(connection()));
    }
}

} // namespace bench
