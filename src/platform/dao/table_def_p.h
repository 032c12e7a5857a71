#pragma once

#include "platform/dao/database.h"
#include "platform/dao/engine/session.h"

#include <optional>

namespace dao {

/// Returns true for the program's internal tables, which are not listed.
bool isOwnTable(const QString& name);

/// The state of a table definition. Fields and indexes are read when they are first needed.
struct TableDefState
{
    QString name;
    bool updatable = true;
    bool appended = false;
    std::weak_ptr<Database> database;
    std::optional<std::vector<FieldInfo>> fields;
    std::optional<std::vector<IndexInfo>> indexes;

    Session& session() const;
    std::vector<FieldInfo>& knownFields();
    std::vector<IndexInfo>& knownIndexes();
    /// Returns true for an appended table that has lost its last field. It exists only in this
    /// definition, because not every SQL engine supports a table without columns.
    bool standsHereAlone() { return appended && knownFields().empty(); }
    /// Throws ItemNotFound (3265) if the table lacks a field of the index.
    void requireFields(const IndexInfo& index);
    void createInStore();
};

} // namespace dao
