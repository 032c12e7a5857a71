#include "tools/store/server_setup.h"

namespace storetools {

// The station role may read everything and may insert, update and delete orders, lines and
// catalogue entries. It advances counters through a function of the owner and reads them for
// backups. It cannot create or alter tables: a store that was moved as a whole needs no upgrade
// when a station starts.
QString serverSetup()
{
    return QStringLiteral(
        R"(-- Creates the roles of a Zomrel store. Run this script as a superuser in the store's database.
-- Create the database with: CREATE DATABASE zomrel ENCODING 'UTF8' TEMPLATE template0;
-- Both roles need a way to log in: a password (\password) or a line in pg_hba.conf. To let a
-- person's own role work as a station, run: GRANT zomrel_station TO that_role;

BEGIN;

DO $$
BEGIN
  IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'zomrel_owner') THEN
    CREATE ROLE zomrel_owner LOGIN;
  END IF;
  IF NOT EXISTS (SELECT FROM pg_roles WHERE rolname = 'zomrel_station') THEN
    CREATE ROLE zomrel_station LOGIN;
  END IF;
  -- All other roles lose their access to the database.
  EXECUTE format('REVOKE ALL ON DATABASE %I FROM PUBLIC', current_database());
  EXECUTE format('GRANT CONNECT ON DATABASE %I TO zomrel_owner, zomrel_station',
                 current_database());
  -- The command zomrel-store restore keeps the replaced store in a schema that the owner creates.
  EXECUTE format('GRANT CREATE ON DATABASE %I TO zomrel_owner', current_database());
END
$$;

-- The command zomrel-store move creates the store's tables as the owner.
REVOKE ALL ON SCHEMA public FROM PUBLIC;
GRANT USAGE, CREATE ON SCHEMA public TO zomrel_owner;

-- The stations read and write rows of the owner's tables and cannot create tables.
GRANT USAGE ON SCHEMA public TO zomrel_station;
ALTER DEFAULT PRIVILEGES FOR ROLE zomrel_owner IN SCHEMA public
  GRANT SELECT, INSERT, UPDATE, DELETE ON TABLES TO zomrel_station;
ALTER DEFAULT PRIVILEGES FOR ROLE zomrel_owner IN SCHEMA public
  GRANT SELECT ON SEQUENCES TO zomrel_station;

COMMIT;
)");
}

} // namespace storetools
