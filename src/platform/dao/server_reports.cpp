#include "platform/dao/server_reports.h"

#include "platform/dao/database.h"
#include "platform/dao/engine/bulk.h"
#include "platform/dao/engine/session.h"

namespace dao {

Durability durabilityOf(Database& database)
{
    return database.session().bulk()->durability();
}

std::vector<LoggedChange> changesOfOrder(Database& database, int order)
{
    return database.session().bulk()->changesOfOrder(order);
}

} // namespace dao
