#include "support/server_connection.h"

#include <libpq-fe.h>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

/// The server's object ids of its built-in types.
enum TypeNumber : Oid {
    Boolean = 16,
    Int8 = 20,
    Int2 = 21,
    Int4 = 23,
    Float4 = 700,
    Float8 = 701,
    Date = 1082,
    Timestamp = 1114,
    Numeric = 1700,
};

/// Converts 2026-01-02 09:30:00 to 2026-01-02T09:30:00. Of a date at midnight, only the date
/// remains.
QString isoText(QString moment)
{
    moment.replace(u' ', u'T');
    return moment.endsWith("T00:00:00"_L1) ? moment.section(u'T', 0, 0) : moment;
}

QVariant valueIn(const PGresult* result, int row, int column)
{
    if (PQgetisnull(result, row, column) != 0)
        return {};
    const QString text = QString::fromUtf8(PQgetvalue(result, row, column));
    switch (PQftype(result, column)) {
    case Boolean:
        return text == "t"_L1 ? 1 : 0;
    case Int2:
    case Int4:
        return text.toInt();
    case Int8:
        return text.toLongLong();
    case Float4:
    case Float8:
    case Numeric:
        return text == "NaN"_L1 ? QVariant(text) : QVariant(text.toDouble());
    case Date:
    case Timestamp:
        return isoText(text);
    default:
        return text;
    }
}

QByteArray parameterOf(const QVariant& value)
{
    if (value.isNull())
        return {};
    const QString text = value.typeId() == QMetaType::Bool
                             ? QString::number(value.toBool() ? -1 : 0)
                             : value.toString();
    return text.isEmpty() ? QByteArray("") : text.toUtf8();
}

bool isFailure(const PGresult* result)
{
    const ExecStatusType status = PQresultStatus(result);
    return status == PGRES_FATAL_ERROR || status == PGRES_BAD_RESPONSE;
}

} // namespace

ServerConnection::ServerConnection(const dao::Link& link)
{
    const std::vector<QByteArray> values = {link.server.toUtf8(),
                                            QByteArray::number(link.port),
                                            link.database.toUtf8(),
                                            link.user.toUtf8(),
                                            "UTF8",
                                            "-c datestyle=ISO"};
    const std::vector<const char*> keywords = {
        "host", "port", "dbname", "user", "client_encoding", "options", nullptr};
    std::vector<const char*> pointers;
    for (const QByteArray& each : values)
        pointers.push_back(each.constData());
    pointers.push_back(nullptr);
    connection_ = PQconnectdbParams(keywords.data(), pointers.data(), 0);
    if (PQstatus(connection_) != CONNECTION_OK)
        qFatal("%s", PQerrorMessage(connection_));
    PQsetNoticeProcessor(
        connection_, [](void*, const char*) {}, nullptr);
}

ServerConnection::~ServerConnection()
{
    PQfinish(connection_);
}

std::shared_ptr<PGresult> ServerConnection::run(const QString& sql, const QVariantList& values)
{
    const QByteArray text = sql.toUtf8();
    if (values.isEmpty())
        return {PQexec(connection_, text.constData()), PQclear};
    std::vector<QByteArray> parameters;
    for (const QVariant& each : values)
        parameters.push_back(parameterOf(each));
    std::vector<const char*> pointers;
    for (const QByteArray& each : parameters)
        pointers.push_back(each.isNull() ? nullptr : each.constData());
    return {PQexecParams(connection_, text.constData(), static_cast<int>(pointers.size()), nullptr,
                         pointers.data(), nullptr, nullptr, 0),
            PQclear};
}

QList<QVariantList> ServerConnection::rows(const QString& sql, const QVariantList& values)
{
    const std::shared_ptr<PGresult> result = run(sql, values);
    if (isFailure(result.get()))
        throw std::runtime_error((sql + u'\n').toStdString() + PQerrorMessage(connection_));
    QList<QVariantList> all;
    for (int row = 0; row < PQntuples(result.get()); ++row) {
        QVariantList columns;
        for (int column = 0; column < PQnfields(result.get()); ++column) {
            if (QByteArrayView(PQfname(result.get(), column)) != "zomrel_row")
                columns.append(valueIn(result.get(), row, column));
        }
        all.append(columns);
    }
    return all;
}

QString ServerConnection::errorOf(const QString& sql)
{
    const std::shared_ptr<PGresult> result = run(sql, {});
    return isFailure(result.get())
               ? QString::fromLatin1(PQresultErrorField(result.get(), PG_DIAG_SQLSTATE))
               : QString();
}

void ServerConnection::reconnect()
{
    PQreset(connection_);
    if (PQstatus(connection_) != CONNECTION_OK)
        qFatal("%s", PQerrorMessage(connection_));
}

} // namespace testsupport
