#pragma once

#include "platform/dao/connection.h"
#include "platform/runtime/run_time_error.h"

#include <QStringList>

#include <algorithm>
#include <functional>
#include <optional>
#include <stdexcept>

namespace testsupport {

/// A record source out of thin air: each row is made when it is asked for. Counts what was read. It
/// can hold its first rows only until all are read, as a long query does.
class MemoryRows : public ado::Recordset
{
public:
    using Row = std::vector<QVariant>;
    using MakeRow = std::function<Row(int)>;

    MemoryRows(QStringList names, int count, MakeRow makeRow)
        : names_(std::move(names)), count_(count), makeRow_(std::move(makeRow))
    {
    }

    int RecordCount() const override { return count_; }
    int rowsAtHand() const override { return atHand.value_or(count_); }
    bool readAll() override
    {
        if (!atHand)
            return false;
        if (failsWith)
            throw runtime::RunTimeError(*failsWith);
        atHand.reset();
        ++timesReadAll;
        return changeOnReadAll && changeOnReadAll(*this);
    }
    void replace(int count, MakeRow makeRow)
    {
        count_ = count;
        makeRow_ = std::move(makeRow);
    }
    int FieldCount() const override { return static_cast<int>(names_.size()); }
    int ordinalOf(const QString& name) const override
    {
        for (int i = 0; i < FieldCount(); ++i) {
            if (names_[i].compare(name, Qt::CaseInsensitive) == 0)
                return i;
        }
        return -1;
    }
    std::vector<Row> rows(int first, int count) override
    {
        if (failsWith)
            throw runtime::RunTimeError(*failsWith);
        if (first + count > rowsAtHand())
            throw std::logic_error("rows asked for that are not at hand");
        std::vector<Row> page;
        for (int i = first; i < std::min(first + count, count_); ++i)
            page.push_back(makeRow_(i));
        rowsRead += static_cast<int>(page.size());
        return page;
    }

    int rowsRead = 0;
    std::optional<int> atHand; ///< How many rows are held; all where nothing is said.
    int timesReadAll = 0;
    /// What another station has done by then; true if it is seen in the rows.
    std::function<bool(MemoryRows&)> changeOnReadAll;
    std::optional<int> failsWith; ///< Error number that reading raises.

private:
    QStringList names_;
    int count_;
    MakeRow makeRow_;
};

} // namespace testsupport
