#include "output/query_rows.h"

#include "platform/dao/connection.h"

namespace output {

namespace {

class QueryRows : public report::RowSource
{
public:
    explicit QueryRows(std::shared_ptr<ado::Recordset> query) : query_(std::move(query)) {}

    int rowCount() const override { return query_->RecordCount(); }
    int rowsAtHand() const override { return query_->rowsAtHand(); }
    bool readAll() override { return query_->readAll(); }
    int ordinalOf(const QString& column) const override { return query_->ordinalOf(column); }
    std::vector<report::Row> rows(int first, int count) override
    {
        return query_->rows(first, count);
    }

private:
    std::shared_ptr<ado::Recordset> query_;
};

} // namespace

std::shared_ptr<report::RowSource> rowsOf(std::shared_ptr<ado::Recordset> query)
{
    return std::make_shared<QueryRows>(std::move(query));
}

} // namespace output
