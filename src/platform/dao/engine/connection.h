#pragma once

#include "platform/dao/engine/session.h"

namespace dao {

/// A connection to a store, with a cache of the store's schema. A pooled connection outlives the
/// session that opened it and serves later sessions.
class EngineConnection
{
public:
    EngineConnection() { ++living_; }
    virtual ~EngineConnection() { --living_; }
    EngineConnection(const EngineConnection&) = delete;
    EngineConnection& operator=(const EngineConnection&) = delete;

    SchemaMemory& schema() { return *schema_; }
    /// Uses the schema cache of another connection to the same store.
    void shareSchema(std::shared_ptr<SchemaMemory> schema) { schema_ = std::move(schema); }
    /// Gives this connection an empty schema cache of its own.
    void forgetSchema() { schema_ = std::make_shared<SchemaMemory>(); }

    /// Returns the number of connections in the process.
    static int living() { return living_; }

private:
    static inline int living_ = 0;
    std::shared_ptr<SchemaMemory> schema_ = std::make_shared<SchemaMemory>();
};

} // namespace dao
