#include "platform/dao/connection.h"

#include "platform/dao/database.h"
#include "platform/dao/engine/values.h"
#include "platform/dao/recordset_p.h"

#include <algorithm>
#include <span>

namespace ado {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

namespace {

/// The number of rows of a query that Connection::Execute loads. The other rows are loaded later. A
/// page of the report has four rows, so the number is enough for the pages that are visible at
/// first.
constexpr int firstRows = 16;

bool isSame(const dao::StoredRow& one, const dao::StoredRow& other)
{
    return one.number == other.number && one.values == other.values;
}

/// The rows of one query. The object releases its connection to the store as soon as all rows are
/// loaded.
class QueryRows final : public Recordset
{
public:
    QueryRows(std::shared_ptr<dao::Database> database, dao::TableRows table, dao::SelectQuery query)
        : database_(std::move(database)), table_(std::move(table)), query_(std::move(query)),
          order_(dao::orderOf(table_, query_))
    {
        dao::TableRows::Beginning beginning =
            table_.beginning(database_->session(), query_.where, order_, firstRows);
        rows_ = std::move(beginning.rows);
        count_ = beginning.total;
        if (rows_.size() == count_)
            database_.reset();
    }

    int RecordCount() const override { return static_cast<int>(count_); }
    int rowsAtHand() const override { return static_cast<int>(rows_.size()); }
    int FieldCount() const override { return static_cast<int>(table_.table().fields.size()); }
    int ordinalOf(const QString& name) const override { return table_.table().ordinalOf(name); }

    bool readAll() override
    {
        if (!database_)
            return false;
        std::vector<dao::StoredRow> all = table_.all(database_->session(), query_.where, order_);
        const bool same =
            all.size() == count_ && std::equal(rows_.begin(), rows_.end(), all.begin(), isSame);
        rows_ = std::move(all);
        count_ = rows_.size();
        database_.reset();
        return !same;
    }

    std::vector<std::vector<QVariant>> rows(int first, int count) override
    {
        if (std::min(qint64{first} + count, qint64{RecordCount()}) > rowsAtHand())
            readAll();
        const int begin = std::clamp(first, 0, RecordCount());
        const int length = std::clamp(count, 0, RecordCount() - begin);
        std::vector<std::vector<QVariant>> result;
        for (const auto& row : std::span(rows_).subspan(std::size_t(begin), std::size_t(length)))
            result.push_back(values(row));
        return result;
    }

private:
    std::vector<QVariant> values(const dao::StoredRow& row) const
    {
        std::vector<QVariant> all;
        for (std::size_t i = 0; i < row.values.size(); ++i)
            all.push_back(dao::fromStored(table_.table().fields[i], row.values[i]));
        return all;
    }

    std::shared_ptr<dao::Database> database_; ///< Null after all rows have been loaded.
    dao::TableRows table_;
    dao::SelectQuery query_;
    dao::RowOrder order_;
    std::vector<dao::StoredRow> rows_; ///< The loaded rows, from the first one.
    std::size_t count_ = 0;            ///< Number of rows of the query.
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
    dao::Session& session = database_->session();
    return std::make_shared<QueryRows>(
        database_, dao::TableRows(session, dao::expectUpdatable(session, parsed.table)), parsed);
}

} // namespace ado
