#pragma once

#include "platform/dao/engine/session.h"

#include <QSqlDatabase>

namespace dao::sqlite {

/// Reads and writes whole tables of an embedded store, and copies the whole store file.
class SqliteBulk final : public Bulk
{
public:
    SqliteBulk(Session& session, const QSqlDatabase& database)
        : session_(session), database_(database)
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

private:
    bool isCounterTrigger(const QString& table, const QString& declaration);
    bool exists(const QString& type, const QString& name);
    std::optional<qint64> storedMark(const QString& table);

    Session& session_;
    QSqlDatabase database_;
};

} // namespace dao::sqlite
