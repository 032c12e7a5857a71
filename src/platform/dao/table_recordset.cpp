#include "platform/dao/engine/values.h"
#include "platform/dao/recordset_p.h"

#include <cstdlib>

namespace dao {

namespace {

/// A table-type recordset, which reads the live table. The position of the recordset is determined
/// by the values and the row id of the current row. The recordset needs no list of rows and stays
/// correct if other stations write.
class TableCursor final : public Recordset::Private
{
public:
    TableCursor(Opened opened, TableInfo table) : Private(std::move(opened), std::move(table)) {}

    RecordsetType type() const override { return dbOpenTable; }
    int recordCount() override { return rows.count(session()); }
    bool isEmpty() override { return rows.isEmpty(session()); }

    void goFirst() override { goToStart(Direction::Forward); }
    void goLast() override { goToStart(Direction::Backward); }
    void standFirst() override { settled_ = false; }

    void settle() override
    {
        if (!settled_)
            goFirst();
    }

    void goBy(int count) override
    {
        const bool forward = count > 0;
        const Direction direction = forward ? Direction::Forward : Direction::Backward;
        const Position start = forward ? Position::Before : Position::After;
        const Position end = forward ? Position::After : Position::Before;
        for (int left = std::abs(count); left > 0 && place != end && place != Position::Empty;
             --left) {
            if (place == start)
                goToStart(direction);
            else
                standOn(rows.neighbour(session(), order_, row, direction), end);
        }
    }

    bool has(RowNumber number) override { return rows.fetch(session(), number).has_value(); }

    void goTo(RowNumber number) override
    {
        settled_ = true;
        standOn(rows.fetch(session(), number), Position::Nowhere);
    }

    void requery() override {}

    std::shared_ptr<RowList> allRows() override
    {
        return std::make_shared<RowList>(rows.numbers(session(), {}, order_));
    }

    void setIndex(const QString& name) override
    {
        for (const IndexInfo& each : session().indexes(rows.table().name)) {
            if (each.name.compare(name, Qt::CaseInsensitive) != 0)
                continue;
            order_.clear();
            for (const QString& field : each.fields)
                order_.push_back(rows.expectField(field));
            index_ = each.name;
            return;
        }
        throw runtime::RunTimeError(runtime::NotAnIndex);
    }

    QString index() const override { return index_; }

    void seek(const QVariant& key) override
    {
        const FieldInfo& keyField = field(order_.front());
        FieldInfo unlimited = keyField;
        unlimited.size = 0; // A search text may be longer than the field.
        const QVariant stored = toStored(keyField, converted(unlimited, key));
        std::optional<StoredRow> found = rows.find(session(), order_, stored);
        settled_ = true;
        noMatch = !found;
        if (found)
            standOn(std::move(found), Position::Nowhere);
        else
            place = Position::Nowhere;
    }

private:
    using Direction = TableRows::Direction;

    void goToStart(Direction direction)
    {
        settled_ = true;
        standOn(rows.start(session(), order_, direction), Position::Empty);
    }

    QString index_;
    RowOrder order_;
    /// True after the first row has been looked up. The look-up is delayed, because most tables are
    /// opened only for a Seek.
    bool settled_ = false;
};

} // namespace

std::shared_ptr<Recordset> openTable(Opened opened, TableInfo table)
{
    return std::make_shared<Recordset>(
        std::make_unique<TableCursor>(std::move(opened), std::move(table)));
}

} // namespace dao
