#pragma once

#include "platform/dao/engine/bulk.h"

#include <vector>

namespace dao {

class Database;

/// Returns what the server's settings mean for the store after a power cut.
Durability durabilityOf(Database& database);

/// Returns the logged changes of an order and of its lines, the oldest first. Throws
/// OperationNotSupported (3251) for a store without a log of changes.
std::vector<LoggedChange> changesOfOrder(Database& database, int order);

} // namespace dao
