#pragma once

#include "platform/dao/postgres/postgres_session.h"

namespace dao::postgres {

/// Whole tables on a server, by its own binary copying.
class PostgresBulk final : public Bulk
{
public:
    explicit PostgresBulk(PostgresSession& session) : session_(session) {}

    QStringList integrityFindings() override;
    void copyTo(const QString& path) override;
    std::optional<qint64> counterMark(const QString& table, const QString& field) override;
    std::unique_ptr<RowStream> rowStream(const TableInfo& table) override;
    std::unique_ptr<RowSink> rowSink(const TableInfo& table) override;
    qint64 highestGiven(const QString& table, const QString& field) override;
    void countOnFrom(const QString& table, const QString& field, qint64 highest) override;
    void analyze(const QString& table) override;
    QString setAside(const QStringList& tables) override;

private:
    PostgresSession& session_;
};

} // namespace dao::postgres
