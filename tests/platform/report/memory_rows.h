#pragma once

#include "platform/report/row_source.h"
#include "platform/runtime/run_time_error.h"

#include <QStringList>

#include <algorithm>
#include <functional>
#include <optional>
#include <stdexcept>

namespace testsupport {

/// A record source in memory that creates each row when it is requested, and counts the rows that
/// were read. Like a long query, it can initially hold its first rows only.
class MemoryRows : public report::RowSource
{
public:
    using Row = report::Row;
    using MakeRow = std::function<Row(int)>;

    MemoryRows(QStringList names, int count, MakeRow makeRow)
        : names_(std::move(names)), count_(count), makeRow_(std::move(makeRow))
    {
    }

    int rowCount() const override { return count_; }
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
    int ordinalOf(const QString& name) const override
    {
        for (int i = 0; i < static_cast<int>(names_.size()); ++i) {
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
    std::optional<int> atHand; ///< Number of loaded rows; all rows are loaded if it is not set.
    int timesReadAll = 0;
    /// Simulates the changes of another station before readAll. Returns true if the rows have
    /// changed.
    std::function<bool(MemoryRows&)> changeOnReadAll;
    std::optional<int> failsWith; ///< Error number that reading throws.

private:
    QStringList names_;
    int count_;
    MakeRow makeRow_;
};

} // namespace testsupport
