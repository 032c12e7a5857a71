// Examines whether the settings of a server protect a store in case of a power cut, and reads the
// log of changes.

#include "platform/dao/postgres/postgres_bulk.h"

namespace dao::postgres {

using namespace Qt::StringLiterals;
using runtime::RunTimeError;

Durability PostgresBulk::durability()
{
    const StoredValues settings = session_
                                      .rows(u"SELECT current_setting('fsync') = 'on', "
                                            "current_setting('full_page_writes') = 'on', "
                                            "current_setting('data_checksums') = 'on'"_s)
                                      .front();
    Durability result;
    if (!settings[0].toBool())
        result.hazards.append(u"fsync is off, so a power cut can lose stored rows"_s);
    if (!settings[1].toBool())
        result.hazards.append(u"full_page_writes is off, so a power cut can damage rows"_s);
    for (const StoredValues& table : session_.rows(
             u"SELECT c.relname FROM pg_class c WHERE c.relpersistence = 'u' AND "
             "c.relkind IN ('r', 'p') AND c.relnamespace = "
             "(SELECT oid FROM pg_namespace WHERE nspname = current_schema()) ORDER BY c.oid"_s))
        result.hazards.append(
            u"table '%1' is unlogged, so a crash empties it"_s.arg(table.front().toString()));
    if (!settings[2].toBool())
        result.remarks.append(u"data checksums are off, so damage on the disk is not noticed"_s);
    return result;
}

std::vector<LoggedChange> PostgresBulk::changesOfOrder(int order)
{
    const bool isThere = session_
                             .rows(u"SELECT EXISTS (SELECT FROM pg_class c "
                                   "JOIN pg_namespace n ON n.oid = c.relnamespace "
                                   "WHERE n.nspname = 'zomrel_log' AND c.relname = 'changes')"_s)
                             .front()
                             .front()
                             .toBool();
    if (!isThere)
        throw RunTimeError(runtime::OperationNotSupported,
                           u"There is no log of changes in %1; zomrel-store server-setup prints "
                           "the SQL that creates it."_s.arg(session_.place()));
    std::vector<LoggedChange> changes;
    for (const StoredValues& row : session_.rows(
             u"SELECT to_char(changed_at, 'YYYY-MM-DD HH24:MI:SS'), who, action, table_name, "
             "key, coalesce(jsonb_strip_nulls(old_row)::text, '') FROM zomrel_log.changes "
             "WHERE order_number = $1 ORDER BY id"_s,
             {order}))
        changes.push_back({row[0].toString(), row[1].toString(), row[2].toString(),
                           row[3].toString(), row[4].toString(), row[5].toString()});
    return changes;
}

} // namespace dao::postgres
