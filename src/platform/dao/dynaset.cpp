#include "platform/dao/recordset_p.h"

#include <algorithm>
#include <utility>

namespace dao {

namespace {

/// A dynaset: a recordset that reads the list of its rows when it is opened. Grids read the same
/// list through RecordsetPages objects. Before the recordset or a RecordsetPages object changes the
/// list, it makes a copy of its own.
class DynasetCursor final : public Recordset::Private
{
public:
    DynasetCursor(Opened opened, TableInfo table, SelectQuery query)
        : Private(std::move(opened), std::move(table)), query_(std::move(query)),
          order_(orderOf(rows, query_))
    {
        requery();
        goFirst();
    }

    RecordsetType type() const override { return dbOpenDynaset; }
    int recordCount() override { return static_cast<int>(std::min(reached_, queried_) + added()); }
    bool isEmpty() override { return list_->size() == 0; }
    void reachEnd() override { reached_ = queried_; }
    void reach(int count) noexcept override
    {
        if (count > 0)
            reached_ = std::max(reached_, std::min(static_cast<std::size_t>(count), queried_));
    }

    void goFirst() override
    {
        if (isEmpty())
            place = Position::Empty;
        else
            visit(0);
    }

    void goLast() override
    {
        if (isEmpty())
            place = Position::Empty;
        else
            visit(list_->size() - 1);
    }

    void goBy(int count) override
    {
        // The list no longer contains a row that was deleted through this recordset. The position
        // of the deleted row is now the position of the next row. A move forward from the deleted
        // row is therefore shorter by one row.
        const qint64 from = place == Position::Before  ? -1
                            : place == Position::After ? qint64(list_->size())
                                                       : qint64(at_);
        const qint64 skipped = place == Position::OnDeleted && count > 0 ? 1 : 0;
        const qint64 to = from + count - skipped;
        if (to >= 0 && to < qint64(list_->size())) {
            visit(static_cast<std::size_t>(to));
            return;
        }
        if (to >= 0)
            reachEnd();
        standOn({}, to < 0 ? Position::Before : Position::After);
    }

    bool has(RowNumber number) override { return list_->find(*owner, number) < list_->size(); }
    void goTo(RowNumber number) override { visit(list_->find(*owner, number)); }

    void requery() override
    {
        first_.reset();
        if (const std::optional<KeyRun> keys = keyRun()) {
            list_ = std::make_shared<RowList>(rows, order_.front(), *keys);
        } else {
            TableRows::Listed listed = rows.listed(session(), query_.where, order_);
            list_ = std::make_shared<RowList>(std::move(listed.numbers));
            first_ = std::move(listed.first);
        }
        queried_ = list_->size();
        reached_ = 0;
    }

    void requeryAsFarAsReached() override
    {
        const bool wholly = !isEmpty() && reached_ == queried_;
        const int counted = recordCount();
        requery();
        if (wholly)
            reachEnd();
        else
            reach(counted);
    }

    void rowAdded(RowNumber number) override { ownList().append(number); }

    void rowRemoved() override
    {
        ownList().remove(at_);
        if (at_ < queried_)
            --queried_;
        if (at_ < reached_)
            --reached_;
    }

    std::shared_ptr<RowList> allRows() override { return list_; }

private:
    std::size_t added() const { return list_->size() - queried_; }

    RowList& ownList()
    {
        if (list_.use_count() > 1)
            list_ = std::make_shared<RowList>(*list_);
        return *list_;
    }

    /// Returns the range of the primary keys if they are whole numbers without gaps and the
    /// recordset contains all rows of a table in the order of these keys. Otherwise returns
    /// nothing. Rows in the range can be found by their keys, so their row ids can be read later.
    std::optional<KeyRun> keyRun()
    {
        if (query_.where || order_.size() != 1)
            return {};
        const FieldInfo& key = field(order_.front());
        if (key.type != dbLong && key.type != dbInteger)
            return {};
        const std::vector<IndexInfo> indexes = session().indexes(rows.table().name);
        if (indexes.empty() || !indexes.front().primary || indexes.front().fields.size() != 1 ||
            indexes.front().fields.front().compare(key.name, Qt::CaseInsensitive) != 0)
            return {};
        return rows.keyRun(session(), order_.front());
    }

    /// Makes the row at a position of the list current. If another station has deleted this row,
    /// the current row has no values.
    void visit(std::size_t position)
    {
        std::optional<StoredRow> found;
        if (std::optional<StoredRow> first = std::exchange(first_, {}); first && position == 0)
            found = std::move(first);
        else
            found = list_->row(*owner, rows, position);
        rowExists = found.has_value();
        row = found ? std::move(*found) : StoredRow{list_->at(*owner, position), {}};
        at_ = position;
        reach(static_cast<int>(position) + 1);
        place = Position::OnRow;
    }

    SelectQuery query_;
    RowOrder order_;
    std::shared_ptr<RowList> list_; ///< The rows of the query, followed by added rows.
    std::optional<StoredRow>
        first_;               ///< The first row as read by the query, for the first visit only.
    std::size_t queried_ = 0; ///< Number of rows in the list that come from the query.
    std::size_t reached_ = 0; ///< Number of the query's rows that have been reached.
    std::size_t at_ = 0;
};

} // namespace

std::shared_ptr<Recordset> openDynaset(Opened opened, TableInfo table, const SelectQuery& query)
{
    return std::make_shared<Recordset>(
        std::make_unique<DynasetCursor>(std::move(opened), std::move(table), query));
}

} // namespace dao
