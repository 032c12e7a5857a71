#pragma once

#include "platform/dao/engine/bulk.h"

#include <vector>

namespace dao {

class Database;

/// Returns why a power cut can lose rows of the store or damage can stay unnoticed. The reasons are
/// settings of the server and its tables.
Durability durabilityOf(Database& database);

/// Returns the logged changes of an order and of its lines, the oldest change first. Throws
/// OperationNotSupported (3251) for a store without a log of changes.
std::vector<LoggedChange> changesOfOrder(Database& database, int order);

} // namespace dao
