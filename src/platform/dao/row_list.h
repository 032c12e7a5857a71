#pragma once

#include "platform/dao/session_owner.h"
#include "platform/dao/table_rows.h"

#include <optional>

namespace dao {

/// The ordered list of the rows of a recordset. If the rows are in the order of a whole-number key
/// without gaps, the list is created from the range of keys alone. The row ids are then read
/// together with the values of the rows, so that a long table opens as fast as a short one. Changes
/// that other stations make do not change the list. A row that another station deletes before it is
/// read keeps its position in the list, but has no values.
class RowList
{
public:
    explicit RowList(RowNumbers numbers);
    /// Creates a list of the rows whose keys are in the range `keys`.
    RowList(const TableRows& rows, int keyOrdinal, const KeyRun& keys);

    std::size_t size() const { return numbers_.size(); }
    RowNumber at(const SessionOwner& owner, std::size_t place);
    /// These functions read rows of the table. For a row that no longer exists, they return
    /// nullopt.
    std::optional<StoredRow> row(const SessionOwner& owner, const TableRows& table,
                                 std::size_t place);
    std::vector<std::optional<StoredRow>> rows(const SessionOwner& owner, const TableRows& table,
                                               std::size_t first, std::size_t count);
    /// Returns the position of the row with this row id, or size() if the list does not contain the
    /// row.
    std::size_t find(const SessionOwner& owner, RowNumber number);
    void append(RowNumber number);
    void remove(std::size_t place);

private:
    struct Keys
    {
        TableRows rows;
        int ordinal;
        KeyRun run;
    };

    bool isMark(RowNumber number) const;
    std::vector<std::optional<StoredRow>> readMarked(const SessionOwner& owner, std::size_t first,
                                                     std::size_t count);

    /// The row ids of all rows, in the order of the list. A list that is created from a range of
    /// keys contains a placeholder for each row that was not read yet.
    RowNumbers numbers_;
    std::optional<Keys> keys_;
};

} // namespace dao
