#pragma once

#include "platform/dao/engine/session.h"

namespace dao::postgres {

class PqConnection;

/// Reads and writes whole tables of a store on a server with PostgreSQL's binary COPY.
class PostgresBulk final : public Bulk
{
public:
    /// `connection` is a reference to the session's own pointer and not a copy, because the session
    /// may replace its connection between two statements.
    PostgresBulk(Session& session, const std::shared_ptr<PqConnection>& connection)
        : session_(session), connection_(connection)
    {
    }

    QStringList integrityFindings() override;
    QStringList foreignObjects() override;
    void copyTo(const QString& path) override;
    std::optional<qint64> counterMark(const QString& table, const QString& field) override;
    std::unique_ptr<RowStream> rowStream(const TableInfo& table) override;
    std::unique_ptr<RowSink> rowSink(const TableInfo& table) override;
    qint64 highestGiven(const QString& table, const QString& field) override;
    void countOnFrom(const QString& table, const QString& field, qint64 highest) override;
    void analyze(const QString& table) override;
    QString setAside(const QStringList& tables) override;
    void actAsOwnerOf(const QStringList& tables) override;
    QStringList grantsOn(const QStringList& tables) override;
    Durability durability() override;
    std::vector<LoggedChange> changesOfOrder(int order) override;

private:
    Session& session_;
    const std::shared_ptr<PqConnection>& connection_;
};

} // namespace dao::postgres
