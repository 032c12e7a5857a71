#include "tools/store/server_setup.h"

#include "tools/store/command.h"
#include "tools/store/server_protection.h"

#include <QRegularExpression>

#include <utility>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

constexpr auto scriptHead =
    R"(-- Prepares the database of a Zomrel store. Run this script as a superuser in the store's database.
-- Create the database with: CREATE DATABASE zomrel ENCODING 'UTF8' TEMPLATE template0;
-- Each role needs a way to log in: a password (\password) or a line in pg_hba.conf. Give each
-- station a role of its own, because a role can change its own password and settings. The script
-- can be run again, for example with more stations.

BEGIN;

DO $$
BEGIN
  IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'zomrel_owner') THEN
    CREATE ROLE zomrel_owner LOGIN;
  END IF;
  -- All other roles lose their access to the database.
  EXECUTE format('REVOKE ALL ON DATABASE %I FROM PUBLIC', current_database());
  -- The command zomrel-store restore keeps the replaced store in a schema that the owner creates.
  EXECUTE format('GRANT CONNECT, CREATE ON DATABASE %I TO zomrel_owner', current_database());
END
$$;

-- The command zomrel-store move creates the store's tables as the owner.
REVOKE ALL ON SCHEMA public FROM PUBLIC;
GRANT USAGE, CREATE ON SCHEMA public TO zomrel_owner;
)";

// The rights are granted to the role of each station. The stations have no common role, because a
// member of a role can change the settings of that role.
constexpr auto station =
    R"(
-- The station %1 reads and writes rows of the owner's tables and cannot create tables.
DO $$
BEGIN
  IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = '%1') THEN
    CREATE ROLE "%1" LOGIN;
  END IF;
  EXECUTE format('GRANT CONNECT ON DATABASE %I TO "%1"', current_database());
END
$$;
GRANT USAGE ON SCHEMA public, zomrel_log TO "%1";
GRANT SELECT, INSERT, UPDATE, DELETE ON ALL TABLES IN SCHEMA public TO "%1";
GRANT SELECT ON ALL SEQUENCES IN SCHEMA public TO "%1";
ALTER DEFAULT PRIVILEGES FOR ROLE zomrel_owner IN SCHEMA public
  GRANT SELECT, INSERT, UPDATE, DELETE ON TABLES TO "%1";
ALTER DEFAULT PRIVILEGES FOR ROLE zomrel_owner IN SCHEMA public
  GRANT SELECT ON SEQUENCES TO "%1";
GRANT SELECT, INSERT, DELETE ON zomrel_log.answers TO "%1";
GRANT SELECT ON zomrel_log.changes TO "%1";
)";

constexpr auto ending =
    R"(
-- The tables of a store that is there already.
SELECT zomrel_log.protect(oid) FROM pg_class
  WHERE relnamespace = 'public'::regnamespace AND relkind = 'r';

COMMIT;
)";

} // namespace

QString serverSetup(const QStringList& stations)
{
    QString script = QLatin1StringView(scriptHead) + QString::fromLatin1(serverProtection);
    for (const QString& each : stations)
        script += QString::fromLatin1(station).replace("%1"_L1, each);
    return script + QLatin1StringView(ending);
}

QStringList stationRoles(const QString& text)
{
    static const QRegularExpression name(u"^[a-z_][a-z0-9_]{0,62}$"_s);
    // No role may have the name of the log's schema, "zomrel_log". PostgreSQL first searches the
    // schema with the role's name, so this role would find the log's tables before those of the
    // store.
    static const QStringList reserved{u"public"_s, u"none"_s, u"zomrel_owner"_s, u"zomrel_log"_s};
    QStringList names = text.split(u',');
    for (const QString& each : std::as_const(names)) {
        if (!name.match(each).hasMatch() || each.startsWith("pg_"_L1) || reserved.contains(each))
            throw WrongCall(say({u"'%1' cannot be the name of a station's role",
                                 u"'%1' לא יכול להיות שם המשתמש של עמדה"},
                                each));
    }
    return names;
}

} // namespace storetools
