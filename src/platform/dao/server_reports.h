#pragma once

#include "platform/dao/engine/bulk.h"

#include <vector>

namespace dao {

class Database;

/// Returns the risks for the store in case of a power cut, as far as the settings of the store's
/// server cause them.
Durability durabilityOf(Database& database);

/// Returns the logged changes of an order and of its lines, the oldest change first. Throws
/// OperationNotSupported (3251) for a store without a log of changes.
std::vector<LoggedChange> changesOfOrder(Database& database, int order);

} // namespace dao
