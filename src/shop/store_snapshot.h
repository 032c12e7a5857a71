#pragma once

#include "platform/dao/database.h"
#include "platform/dao/table_copy.h"
#include "platform/runtime/run_time_error.h"

namespace shop {

/// A read-only snapshot of a store, which ends with the object. Stations may change the store
/// meanwhile, so everything that belongs together is read from one snapshot.
class StoreSnapshot
{
public:
    explicit StoreSnapshot(dao::Database& database) : database_(database)
    {
        dao::beginSnapshot(database_);
    }
    ~StoreSnapshot()
    {
        try {
            database_.Rollback();
        } catch (const runtime::RunTimeError&) {
            return; // A broken connection has no snapshot left to end.
        }
    }
    StoreSnapshot(const StoreSnapshot&) = delete;
    StoreSnapshot& operator=(const StoreSnapshot&) = delete;

private:
    dao::Database& database_;
};

} // namespace shop
