#pragma once

#include "platform/dao/engine/bulk.h"

#include <vector>

namespace dao {

class Database;

/// Returns the reasons why a power cut can lose rows of the store, and the reasons why damage can
/// stay unnoticed. A reason is a setting of the server or of a table.
Durability durabilityOf(Database& database);

/// Returns the logged changes of an order and of its lines, the oldest change first. Throws
/// OperationNotSupported (3251) for a store without a log of changes.
std::vector<LoggedChange> changesOfOrder(Database& database, int order);

} // namespace dao
