#pragma once

#include "platform/dao/database.h"
#include "platform/dao/engine/session.h"

#include <optional>

namespace dao {

/// True for the tables in which the program keeps what is no part of the listed ones.
bool isOwnTable(const QString& name);

/// What a Database knows of one table; fields and indexes are read when they are first asked for.
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
    /// A table that was appended and then lost its last field: no SQL engine need hold such a
    /// table, so it stands here alone.
    bool standsHereAlone() { return appended && knownFields().empty(); }
    /// Throws ItemNotFound (3265) where the index is over a field that the table has not.
    void requireFields(const IndexInfo& index);
    void createInStore();
};

} // namespace dao
