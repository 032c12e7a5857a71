#pragma once

#include "platform/dao/engine/session.h"

namespace dao {

/// One connection to a store on one engine. Kept in the pool, it outlives the session that opened
/// it, and keeps what was read of the schema for the next one.
class EngineConnection
{
public:
    EngineConnection() { ++living_; }
    virtual ~EngineConnection() { --living_; }
    EngineConnection(const EngineConnection&) = delete;
    EngineConnection& operator=(const EngineConnection&) = delete;

    SchemaMemory& schema() { return *schema_; }
    /// Goes on with what another connection to the same store has read.
    void shareSchema(std::shared_ptr<SchemaMemory> schema) { schema_ = std::move(schema); }
    /// Forgets what is known of the schema, for this connection alone.
    void forgetSchema() { schema_ = std::make_shared<SchemaMemory>(); }

    /// How many connections the process has.
    static int living() { return living_; }

private:
    static inline int living_ = 0;
    std::shared_ptr<SchemaMemory> schema_ = std::make_shared<SchemaMemory>();
};

} // namespace dao
