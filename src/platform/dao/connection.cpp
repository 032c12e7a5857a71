#include "platform/dao/connection.h"

#include "platform/dao/database.h"
#include "platform/dao/recordset_p.h"
#include "platform/dao/values.h"

namespace ado {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

class QueryRows final : public Recordset
{
public:
    QueryRows(std::shared_ptr<dao::Database> database, dao::TableRows rows,
              const dao::SelectQuery& query)
        : database_(std::move(database)), rows_(std::move(rows)),
          numbers_(rows_.numbers(database_->driver(), query.where, dao::orderOf(rows_, query)))
    {
    }

    int RecordCount() const override { return static_cast<int>(numbers_.size()); }
    int FieldCount() const override { return static_cast<int>(rows_.table().fields.size()); }
    int ordinalOf(const QString& name) const override { return rows_.table().ordinalOf(name); }

    std::vector<std::vector<QVariant>> rows(int first, int count) override
    {
        const int begin = std::clamp(first, 0, RecordCount());
        const int length = std::clamp(count, 0, RecordCount() - begin);
        const auto wanted = std::span(numbers_).subspan(std::size_t(begin), std::size_t(length));
        std::vector<std::vector<QVariant>> result;
        for (const auto& row : rows_.fetch(database_->driver(), wanted))
            result.push_back(row ? values(*row) : std::vector<QVariant>(std::size_t(FieldCount())));
        return result;
    }

private:
    std::vector<QVariant> values(const dao::StoredRow& row) const
    {
        std::vector<QVariant> all;
        for (std::size_t i = 0; i < row.values.size(); ++i)
            all.push_back(dao::fromStored(rows_.table().fields[i], row.values[i]));
        return all;
    }

    std::shared_ptr<dao::Database> database_;
    dao::TableRows rows_;
    dao::RowNumbers numbers_;
};

QString dataSourceOf(const QString& connectionString)
{
    for (const QString& part : connectionString.split(u';')) {
        const qsizetype sign = part.indexOf(u'=');
        if (part.left(sign).trimmed().compare("Data Source"_L1, Qt::CaseInsensitive) == 0)
            return part.mid(sign + 1);
    }
    return {};
}

} // namespace

Connection::Connection() = default;

Connection::~Connection() = default;

void Connection::Open(const QString& connectionString, const QString&, const QString&, int)
{
    database_ = dao::DBEngine::instance().OpenDatabase(dataSourceOf(connectionString));
}

std::shared_ptr<Recordset> Connection::Execute(const QString& query, int)
{
    if (!database_)
        throw RunTimeError(runtime::ObjectClosed);
    const dao::SelectQuery parsed = dao::parseQuery(query);
    dao::Driver& driver = database_->driver();
    return std::make_shared<QueryRows>(
        database_, dao::TableRows(driver, dao::expectTable(driver, parsed.table)), parsed);
}

} // namespace ado
