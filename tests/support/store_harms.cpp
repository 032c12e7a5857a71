#include "support/store_harms.h"

#include "support/throwaway_server.h"

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

QString dropField(const QString& table, const QString& field)
{
    return u"ALTER TABLE \"%1\" DROP COLUMN \"%2\""_s.arg(table, field);
}

QList<StoreHarm> missingParts()
{
    return {
        {"no table of lines", {u"DROP TABLE \"Cuts\""_s}, true},
        {"no table of series", {u"DROP TABLE \"Serials\""_s}, true},
        {"no table of kinds", {u"DROP TABLE \"MashkofKind\""_s}, true},
        {"no table of colours", {u"DROP TABLE \"ReshetColor\""_s}, true},
        {"no table of orders", {u"DROP TABLE \"Orders\""_s}, true},
        {"lines without a number", {dropField(u"Cuts"_s, u"NUM"_s)}},
        {"lines without a width", {dropField(u"Cuts"_s, u"MyWidth"_s)}},
        {"lines without a date", {dropField(u"Cuts"_s, u"Order_Date"_s)}},
        {"lines without a name", {dropField(u"Cuts"_s, u"Name"_s)}},
        {"series without sashes", {dropField(u"Serials"_s, u"Kanaf_Num"_s)}},
        {"series without a name", {dropField(u"Serials"_s, u"Name"_s)}},
        {"series without a mark", {dropField(u"Serials"_s, u"Sign"_s)}},
        {"series without a mesh", {dropField(u"Serials"_s, u"Reshet_H"_s)}},
        {"no index of an order's lines", {u"DROP INDEX \"Cuts.Order_Num\""_s}},
        {"no identity", {u"DELETE FROM zomrel_store"_s}},
    };
}

QList<StoreHarm> foreignParts()
{
    return {
        {"a foreign table", {u"CREATE TABLE \"Notes\" (id integer PRIMARY KEY)"_s}},
        {"a foreign field", {u"ALTER TABLE \"Orders\" ADD COLUMN \"Paid\" integer"_s}},
        {"a foreign view", {u"CREATE VIEW \"Open\" AS SELECT * FROM \"Orders\""_s}},
        {"a foreign index", {u"CREATE INDEX extra ON \"Orders\" (\"Order_Date\")"_s}},
        {"a foreign unique index", {u"CREATE UNIQUE INDEX extra ON \"Cuts\" (\"Code\")"_s}},
        {"an index over some rows",
         {u"CREATE UNIQUE INDEX extra ON \"Cuts\" (\"NUM\") WHERE \"Order_Num\" = 99"_s}},
        {"an index over an expression", {u"CREATE INDEX extra ON \"Cuts\" ((\"NUM\" + 1))"_s}},
    };
}

QList<StoreHarm> badRows()
{
    return {
        {"a line with one field", {u"INSERT INTO \"Cuts\" (\"Order_Num\") VALUES (1)"_s}},
        {"an order without a date",
         {u"UPDATE \"Orders\" SET \"Order_Date\" = NULL WHERE \"Number\" = 2"_s}},
        {"an order with a time of day",
         {u"UPDATE \"Orders\" SET \"Order_Date\" = '2026-01-02 10:30:00' WHERE \"Number\" = 2"_s}},
        {"an order's number beyond 16 bits",
         {u"UPDATE \"Orders\" SET \"Number\" = 40000 WHERE \"Number\" = 2"_s}},
        {"a line without an order",
         {u"UPDATE \"Cuts\" SET \"Order_Num\" = 99 WHERE \"Code\" = 1"_s}},
        {"a line of no order", {u"UPDATE \"Cuts\" SET \"Order_Num\" = NULL WHERE \"Code\" = 1"_s}},
        {"a line with a negative number",
         {u"UPDATE \"Cuts\" SET \"NUM\" = -3 WHERE \"Code\" = 1"_s}},
        {"a line without a glass width",
         {u"UPDATE \"Cuts\" SET \"Glass_W\" = NULL WHERE \"Code\" = 1"_s}},
        {"a series without a deduction", {u"UPDATE \"Serials\" SET \"Glass_W\" = NULL"_s}},
        {"a series with no sash", {u"UPDATE \"Serials\" SET \"Kanaf_Num\" = 0"_s}},
        {"a series without a name", {u"UPDATE \"Serials\" SET \"Name\" = NULL"_s}},
    };
}

/// Changes the declaration of a table in the file and leaves its rows alone.
QStringList redeclared(const QString& table, const QString& from, const QString& to)
{
    return {u"PRAGMA writable_schema = ON"_s,
            u"UPDATE sqlite_master SET sql = replace(sql, '%1', '%2') WHERE name = '%3'"_s.arg(
                from, to, table)};
}

QStringList retyped(const QString& table, const QString& field, const QString& from,
                    const QString& to)
{
    return redeclared(table, u"\"%1\" %2"_s.arg(field, from), u"\"%1\" %2"_s.arg(field, to));
}

QList<StoreHarm> schemaOfAFile()
{
    return {
        {"date as Boolean", retyped(u"Orders"_s, u"Order_Date"_s, u"DATETIME"_s, u"BOOLEAN"_s)},
        {"number as date", retyped(u"Orders"_s, u"Number"_s, u"LONG"_s, u"DATETIME"_s)},
        {"width as date", retyped(u"Cuts"_s, u"MyWidth"_s, u"DOUBLE"_s, u"DATETIME"_s)},
        {"line number as text", retyped(u"Cuts"_s, u"NUM"_s, u"LONG"_s, u"TEXT(1)"_s)},
        {"kind too short", retyped(u"Cuts"_s, u"Kind"_s, u"TEXT(30)"_s, u"TEXT(1)"_s)},
        {"series' name as number", retyped(u"Serials"_s, u"Name"_s, u"TEXT(50)"_s, u"LONG"_s)},
        {"sashes as date", retyped(u"Serials"_s, u"Kanaf_Num"_s, u"LONG"_s, u"DATETIME"_s)},
        {"a field that refuses Null",
         retyped(u"Orders"_s, u"CustomerTel"_s, u"TEXT(20)"_s, u"TEXT(20) NOT NULL"_s)},
        {"a condition on rows",
         retyped(u"Cuts"_s, u"MyWidth"_s, u"DOUBLE"_s, u"DOUBLE CHECK (\"MyWidth\" < 119)"_s)},
        {"orders' numbers not unique",
         {u"ALTER TABLE Orders RENAME TO Former"_s,
          u"CREATE TABLE \"Orders\" (\"Number\" LONG NOT NULL, \"Order_Date\" DATETIME, "
          "\"Open_Close\" BOOLEAN NOT NULL DEFAULT 0, \"CustomerName\" TEXT(50), "
          "\"CustomerAddress\" TEXT(50), \"CustomerTel\" TEXT(20))"_s,
          u"INSERT INTO Orders SELECT * FROM Former"_s, u"DROP TABLE Former"_s,
          u"CREATE INDEX \"Orders.Number\" ON Orders (Number)"_s}},
    };
}

QList<StoreHarm> countersOfAFile()
{
    return {
        {"a counter without its trigger", {u"DROP TRIGGER \"Cuts.Code.counter\""_s}},
        {"a counter without its second trigger", {u"DROP TRIGGER \"Cuts.Code.counter_update\""_s}},
        {"a counter with another trigger",
         {u"DROP TRIGGER \"Cuts.Code.counter\""_s,
          u"CREATE TRIGGER \"Cuts.Code.counter\" AFTER INSERT ON Cuts BEGIN "
          "UPDATE Cuts SET Code = 1000 + NEW.rowid WHERE rowid = NEW.rowid; END"_s}},
        {"no table of counters", {u"DROP TABLE zomrel_counters"_s}},
        {"a counter without its row", {u"DELETE FROM zomrel_counters WHERE table_name = 'Cuts'"_s}},
        {"an exhausted counter",
         {u"UPDATE zomrel_counters SET last_number = 2147483647 WHERE table_name = 'Cuts'"_s},
         true},
        {"a lagging counter",
         {u"UPDATE zomrel_counters SET last_number = 1 WHERE table_name = 'Cuts'"_s}},
        {"a trigger that deletes lines",
         {u"CREATE TRIGGER rogue AFTER INSERT ON Orders BEGIN DELETE FROM Cuts; END"_s}},
    };
}

QList<StoreHarm> valuesOfAFile()
{
    return {
        {"an infinite width", {u"UPDATE Cuts SET MyWidth = 9e999 WHERE Code = 1"_s}},
        {"a width in words", {u"UPDATE Cuts SET MyWidth = 'wide' WHERE Code = 1"_s}},
        {"a name of bytes", {u"UPDATE Cuts SET Name = x'00ff' WHERE Code = 1"_s}},
        {"a fraction of a count", {u"UPDATE Cuts SET Kanaf_Count = 2.5 WHERE Code = 1"_s}},
        {"a date in words", {u"UPDATE Orders SET Order_Date = 'today' WHERE Number = 1"_s}},
        {"a long telephone number",
         {u"UPDATE Orders SET CustomerTel = '%1'"_s.arg(QString(21, u'5'))}},
    };
}

QStringList altered(const QString& table, const QString& field, const QString& type)
{
    return {u"ALTER TABLE \"%1\" ALTER \"%2\" TYPE %3"_s.arg(table, field, type)};
}

QList<StoreHarm> typesOfAServer()
{
    return {
        {"date as Boolean", altered(u"Orders"_s, u"Order_Date"_s, u"zomrel_boolean USING 0"_s)},
        {"number as date",
         altered(u"Orders"_s, u"Number"_s,
                 u"timestamp USING timestamp '2026-01-01' + \"Number\" * interval '1 day'"_s)},
        {"width as date",
         altered(u"Cuts"_s, u"MyWidth"_s, u"timestamp USING timestamp '2026-01-01'"_s)},
        {"line number as text",
         altered(u"Cuts"_s, u"NUM"_s, u"varchar(1) USING left(\"NUM\"::text, 1)"_s)},
        {"kind too short", altered(u"Cuts"_s, u"Kind"_s, u"varchar(1) USING left(\"Kind\", 1)"_s)},
        {"series' name as number", altered(u"Serials"_s, u"Name"_s, u"integer USING 1"_s)},
        {"sashes as date",
         altered(u"Serials"_s, u"Kanaf_Num"_s, u"timestamp USING timestamp '2026-01-01'"_s)},
        {"width of any number of digits",
         altered(u"Cuts"_s, u"MyWidth"_s, u"numeric USING 'NaN'"_s)},
        {"order's number of 64 bits",
         altered(u"Orders"_s, u"Number"_s, u"bigint USING \"Number\" + 3000000000"_s)},
        {"sashes as bytes",
         altered(u"Serials"_s, u"Kanaf_Num"_s, u"bytea USING '\\x00ff'::bytea"_s)},
        {"series' name as an array",
         altered(u"Serials"_s, u"Name"_s, u"text[] USING ARRAY[\"Name\", 'x']"_s)},
        {"order's date with a time zone", altered(u"Orders"_s, u"Order_Date"_s, u"timestamptz"_s)},
    };
}

QList<StoreHarm> schemaOfAServer()
{
    return {
        {"a width that is computed",
         {u"ALTER TABLE \"Cuts\" DROP COLUMN \"MyWidth_2\""_s,
          u"ALTER TABLE \"Cuts\" ADD COLUMN \"MyWidth_2\" double precision "
          "GENERATED ALWAYS AS (\"MyWidth\" * 2) STORED"_s}},
        {"a field that refuses Null",
         {u"UPDATE \"Orders\" SET \"CustomerTel\" = ''"_s,
          u"ALTER TABLE \"Orders\" ALTER \"CustomerTel\" SET NOT NULL"_s}},
        {"a condition on rows", {u"ALTER TABLE \"Cuts\" ADD CHECK (\"MyWidth\" < 1000)"_s}},
        {"orders' numbers not unique",
         {u"ALTER TABLE \"Orders\" DROP CONSTRAINT \"Orders_pkey\""_s,
          u"CREATE INDEX \"Orders.Number\" ON \"Orders\" (\"Number\")"_s}},
        {"a rule", {u"CREATE RULE rogue AS ON DELETE TO \"Cuts\" DO INSTEAD NOTHING"_s}},
    };
}

QList<StoreHarm> countersOfAServer()
{
    const QString setCounter = u"SELECT setval(pg_get_serial_sequence('\"Cuts\"', 'Code'), %1)"_s;
    return {
        {"a counter without its trigger", {u"DROP TRIGGER zomrel_counter ON \"Cuts\""_s}},
        {"a counter with a disabled trigger",
         {u"ALTER TABLE \"Cuts\" DISABLE TRIGGER zomrel_counter"_s}},
        {"a counter with another function",
         {u"CREATE OR REPLACE FUNCTION zomrel_count() RETURNS trigger LANGUAGE plpgsql AS "
          "$$ BEGIN RETURN NULL; END $$"_s}},
        {"an exhausted counter", {setCounter.arg(2147483647)}, true},
        {"a lagging counter", {setCounter.arg(1)}},
        {"a trigger that deletes lines",
         {u"CREATE FUNCTION rogue() RETURNS trigger LANGUAGE plpgsql AS "
          "$$ BEGIN DELETE FROM \"Cuts\"; RETURN NULL; END $$"_s,
          u"CREATE TRIGGER rogue AFTER INSERT ON \"Orders\" EXECUTE FUNCTION rogue()"_s}},
        {"an infinite width",
         {u"UPDATE \"Cuts\" SET \"MyWidth\" = 'Infinity' WHERE \"Code\" = 1"_s}},
        {"a width that is no number",
         {u"UPDATE \"Cuts\" SET \"MyWidth\" = 'NaN' WHERE \"Code\" = 1"_s}},
    };
}

} // namespace

QList<StoreHarm> storeHarms()
{
    const QList<StoreHarm> common = missingParts() + foreignParts() + badRows();
    if (isOnServer())
        return common + typesOfAServer() + schemaOfAServer() + countersOfAServer();
    return common + schemaOfAFile() + countersOfAFile() + valuesOfAFile();
}

} // namespace testsupport
