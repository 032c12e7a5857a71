#pragma once

#include "platform/dao/session_owner.h"
#include "platform/dao/table_def.h"

#include <optional>

namespace dao {

/// Returns true if the name is that of an internal table of the program. TableDefs does not list
/// internal tables.
bool isOwnTable(const QString& name);

/// The state of a table definition. Fields and indexes are read from the store when they are first
/// needed.
struct TableDefState
{
    QString name;
    bool updatable = true;
    bool appended = false;
    std::weak_ptr<const SessionOwner> owner;
    std::optional<std::vector<FieldInfo>> fields;
    std::optional<std::vector<IndexInfo>> indexes;

    Session& session() const;
    std::vector<FieldInfo>& knownFields();
    std::vector<IndexInfo>& knownIndexes();
    /// Returns true if the last field of a table in the store was deleted. The store then no longer
    /// contains the table, because not every SQL engine supports a table without columns. The table
    /// exists only as this object.
    bool standsHereAlone() { return appended && knownFields().empty(); }
    /// Throws ItemNotFound (3265) if the table lacks a field of the index.
    void requireFields(const IndexInfo& index);
    void createInStore();
};

/// The table definitions that a Database has read or created so far.
struct TableList
{
    std::weak_ptr<const SessionOwner> owner;
    std::vector<std::shared_ptr<TableDefState>> known;

    /// Returns the tables of the store, followed by the definitions of tables that are no longer in
    /// the store, because their last field was deleted. The program's internal tables are not
    /// returned, but they can be opened by name.
    std::vector<std::shared_ptr<TableDefState>> listed();
};

} // namespace dao
