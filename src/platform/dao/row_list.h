#pragma once

#include "platform/dao/table_rows.h"

#include <optional>

namespace dao {

class Database;

/// The rows of a recordset in their order. Rows that stand in the order of a whole-number key
/// without gaps are told by that alone: their numbers come with their values when they are read, so
/// a long table costs no more to open than a short one. Which rows are in the list, and where, is
/// settled when it is made; a row that is deleted before it is read keeps its place, with a number
/// that no row has.
class RowList
{
public:
    explicit RowList(RowNumbers numbers);
    /// The rows of these keys.
    RowList(const TableRows& rows, int keyOrdinal, const KeyRun& keys);

    std::size_t size() const { return numbers_.size(); }
    RowNumber at(Database& database, std::size_t place);
    /// Reads rows of the table; one that no longer exists is absent.
    std::optional<StoredRow> row(Database& database, const TableRows& table, std::size_t place);
    std::vector<std::optional<StoredRow>> rows(Database& database, const TableRows& table,
                                               std::size_t first, std::size_t count);
    /// The place of the row; size() where it is not in the list.
    std::size_t find(Database& database, RowNumber number);
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
    std::vector<std::optional<StoredRow>> readMarked(Database& database, std::size_t first,
                                                     std::size_t count);

    /// A row that is known by its key alone has a mark instead of its number.
    RowNumbers numbers_;
    std::optional<Keys> keys_;
};

} // namespace dao
