#include "tools/store/server_protection.h"

namespace storetools {

const char* const serverProtection = R"(
-- The log of changes, and the tokens by which a station finds out after a lost connection whether a
-- row was stored. Nobody but the owner can change the log; a function of the owner writes it.
CREATE SCHEMA IF NOT EXISTS zomrel_log;
ALTER SCHEMA zomrel_log OWNER TO zomrel_owner;
CREATE TABLE IF NOT EXISTS zomrel_log.answers (
  token uuid PRIMARY KEY,
  stored timestamptz NOT NULL DEFAULT now());
ALTER TABLE zomrel_log.answers OWNER TO zomrel_owner;
CREATE TABLE IF NOT EXISTS zomrel_log.changes (
  id bigint GENERATED ALWAYS AS IDENTITY PRIMARY KEY,
  changed_at timestamptz NOT NULL DEFAULT clock_timestamp(),
  who text NOT NULL DEFAULT session_user,
  client inet DEFAULT inet_client_addr(),
  action text NOT NULL,
  table_name text NOT NULL,
  key text NOT NULL,
  order_number integer,
  old_row jsonb);
CREATE INDEX IF NOT EXISTS changes_of_order ON zomrel_log.changes (order_number);
ALTER TABLE zomrel_log.changes OWNER TO zomrel_owner;

-- Arguments: the key field and the field with the order's number, if there is one.
CREATE OR REPLACE FUNCTION zomrel_log.log_change() RETURNS trigger LANGUAGE plpgsql
SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $$
DECLARE
  before jsonb;
  after jsonb;
  named jsonb;
BEGIN
  IF TG_OP <> 'INSERT' THEN before := to_jsonb(OLD) - 'zomrel_row'; END IF;
  IF TG_OP <> 'DELETE' THEN after := to_jsonb(NEW) - 'zomrel_row'; END IF;
  IF before = after THEN
    RETURN NULL;
  END IF;
  named := coalesce(before, after);
  INSERT INTO zomrel_log.changes (action, table_name, key, order_number, old_row)
  VALUES (CASE TG_OP WHEN 'INSERT' THEN 'added' WHEN 'UPDATE' THEN 'changed' ELSE 'deleted' END,
          TG_TABLE_NAME, coalesce(named ->> TG_ARGV[0], ''), (named ->> TG_ARGV[1])::integer,
          before);
  RETURN NULL;
END $$;
ALTER FUNCTION zomrel_log.log_change() OWNER TO zomrel_owner;

-- Refuses numbers with which one station could keep all others from adding rows. Arguments: the
-- counter field, or an empty text, and the field of an order's number. A number that the server
-- itself has assigned is never above the last value of its sequence.
CREATE OR REPLACE FUNCTION zomrel_log.check_numbers() RETURNS trigger LANGUAGE plpgsql
SECURITY DEFINER SET search_path = pg_catalog, pg_temp AS $$
DECLARE
  place text := format('%I.%I', TG_TABLE_SCHEMA, TG_TABLE_NAME);
  given bigint;
  highest bigint;
BEGIN
  IF NEW.zomrel_row > coalesce(pg_sequence_last_value(
       pg_get_serial_sequence(place, 'zomrel_row')::regclass), 0) THEN
    RAISE insufficient_privilege USING MESSAGE = 'a station cannot assign the column zomrel_row';
  END IF;
  IF TG_ARGV[0] <> '' THEN
    given := to_jsonb(NEW) ->> TG_ARGV[0];
    highest := pg_sequence_last_value(pg_get_serial_sequence(place, TG_ARGV[0])::regclass);
    IF given > 1000000000 AND given > coalesce(highest, 0) THEN
      RAISE insufficient_privilege USING
        MESSAGE = format('a station cannot assign the number %s', given);
    END IF;
  END IF;
  IF TG_ARGV[1] <> '' THEN
    given := to_jsonb(NEW) ->> TG_ARGV[1];
    EXECUTE format('SELECT %I FROM %s WHERE %1$I <> $1 ORDER BY %1$I DESC LIMIT 1',
                   TG_ARGV[1], place) INTO highest USING given;
    IF given > coalesce(highest, 0) + 1000 THEN
      RAISE insufficient_privilege USING
        MESSAGE = format('the order number %s is too far beyond the last one', given);
    END IF;
  END IF;
  RETURN NULL;
END $$;
ALTER FUNCTION zomrel_log.check_numbers() OWNER TO zomrel_owner;

-- Creates the triggers of a table of the store. The triggers of an event fire in the order of their
-- names, so zomrel_ceiling fires before zomrel_counter. Rows that the owner adds, as the commands
-- move and restore do, are not logged one by one.
CREATE OR REPLACE FUNCTION zomrel_log.protect(store_table regclass) RETURNS void LANGUAGE plpgsql
SET search_path = pg_catalog, pg_temp AS $$
DECLARE
  name text := (SELECT relname FROM pg_class WHERE oid = store_table);
  counter text := coalesce((SELECT attname FROM pg_attribute WHERE attrelid = store_table
    AND attidentity <> '' AND attname <> 'zomrel_row' AND NOT attisdropped LIMIT 1), '');
  has_rows boolean := EXISTS (SELECT FROM pg_attribute WHERE attrelid = store_table
    AND attname = 'zomrel_row' AND attidentity <> '');
  of_order text := CASE name WHEN 'Orders' THEN 'Number' WHEN 'Cuts' THEN 'Order_Num' ELSE '' END;
  key text := CASE name WHEN 'Orders' THEN 'Number' ELSE counter END;
  station text := 'NOT pg_has_role(session_user, ''zomrel_owner'', ''USAGE'')';
  grantee regrole;
BEGIN
  IF name IN ('Orders', 'Cuts', 'Serials') THEN
    EXECUTE format('CREATE OR REPLACE TRIGGER zomrel_history AFTER UPDATE OR DELETE ON %s '
      'FOR EACH ROW EXECUTE FUNCTION zomrel_log.log_change(%L, %L)', store_table, key, of_order);
    EXECUTE format('CREATE OR REPLACE TRIGGER zomrel_history_of_added AFTER INSERT ON %s '
      'FOR EACH ROW WHEN (%s) EXECUTE FUNCTION zomrel_log.log_change(%L, %L)',
      store_table, station, key, of_order);
  END IF;
  IF has_rows AND (counter <> '' OR name = 'Orders') THEN
    EXECUTE format('CREATE OR REPLACE TRIGGER zomrel_ceiling AFTER INSERT OR UPDATE ON %s '
      'FOR EACH ROW WHEN (%s) EXECUTE FUNCTION zomrel_log.check_numbers(%L, %L)',
      store_table, station, counter, CASE name WHEN 'Orders' THEN 'Number' ELSE '' END);
  END IF;
  -- A station reads by which store it works with; only the owner changes that.
  IF name = 'zomrel_store' THEN
    FOR grantee IN SELECT DISTINCT a.grantee FROM pg_class c, aclexplode(c.relacl) a
                   WHERE c.oid = store_table AND a.grantee NOT IN (0, c.relowner) LOOP
      EXECUTE format('REVOKE INSERT, UPDATE, DELETE ON %s FROM %s', store_table, grantee);
    END LOOP;
  END IF;
END $$;
ALTER FUNCTION zomrel_log.protect(regclass) OWNER TO zomrel_owner;

CREATE OR REPLACE FUNCTION zomrel_log.protect_created() RETURNS event_trigger LANGUAGE plpgsql
SET search_path = pg_catalog, pg_temp AS $$
DECLARE
  created record;
BEGIN
  FOR created IN SELECT objid FROM pg_event_trigger_ddl_commands()
                 WHERE command_tag = 'CREATE TABLE' AND schema_name = 'public' LOOP
    PERFORM zomrel_log.protect(created.objid::regclass);
  END LOOP;
END $$;
DROP EVENT TRIGGER IF EXISTS zomrel_protect;
CREATE EVENT TRIGGER zomrel_protect ON ddl_command_end WHEN TAG IN ('CREATE TABLE')
  EXECUTE FUNCTION zomrel_log.protect_created();
)";

} // namespace storetools
