#pragma once

#include "platform/dao/session_owner.h"
#include "platform/dao/table_rows.h"

#include <optional>

namespace dao {

/// The ordered rows of a recordset. Rows in the order of a whole-number key without gaps are stored
/// as a key range only, and their row ids are read together with their values, so that a long table
/// opens as fast as a short one. The set of rows and their order are fixed when the list is
/// created. A row that is deleted before it is read keeps its position but gets an unused row id.
class RowList
{
public:
    explicit RowList(RowNumbers numbers);
    /// Creates a list of the rows with these keys.
    RowList(const TableRows& rows, int keyOrdinal, const KeyRun& keys);

    std::size_t size() const { return numbers_.size(); }
    RowNumber at(const SessionOwner& owner, std::size_t place);
    /// These functions read rows of the table. A row that no longer exists is returned as nullopt.
    std::optional<StoredRow> row(const SessionOwner& owner, const TableRows& table,
                                 std::size_t place);
    std::vector<std::optional<StoredRow>> rows(const SessionOwner& owner, const TableRows& table,
                                               std::size_t first, std::size_t count);
    /// Returns the position of the row, or size() if it is not in the list.
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

    /// Row ids. If only the key of a row is known, the list holds a placeholder instead of the row
    /// id.
    RowNumbers numbers_;
    std::optional<Keys> keys_;
};

} // namespace dao
