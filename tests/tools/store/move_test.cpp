#include "store/schema.h"
#include "support/plain_sql.h"
#include "support/temporary_store.h"
#include "tools/store/server_run.h"

#include <QDir>
#include <QTemporaryDir>

#include <limits>

using namespace Qt::StringLiterals;
using storetooltest::addressOf;
using storetooltest::asText;
using storetooltest::contentsOf;
using storetooltest::Outcome;
using storetooltest::ServerSql;
using storetooltest::zomrelStore;
using testsupport::PlainSql;
using testsupport::TemporaryStore;
using testsupport::ThrowawayDatabase;

namespace {

/// Converts decimals to texts with all significant digits.
QList<QVariantList> exact(QList<QVariantList> rows)
{
    for (QVariantList& row : rows) {
        for (QVariant& value : row) {
            if (value.typeId() == QMetaType::Double)
                value = QString::number(value.toDouble(), 'g', 17);
        }
    }
    return rows;
}

/// Returns the contents of all tables of a store, sorted by key.
QList<QList<QVariantList>> contentsOfStore(const QString& path)
{
    PlainSql sql(path);
    QList<QList<QVariantList>> all;
    for (const store::TableSchema& table : store::schema())
        all.append(exact(sql.rows(u"SELECT * FROM %1 ORDER BY %2"_s.arg(
            table.name, table.indexes.front().fields.front()))));
    return all;
}

/// Texts that incorrect copying would change.
const QStringList awkwardTexts{u"שלום \"עולם\""_s,
                               u"it's"_s,
                               u"tab\there"_s,
                               u"line\nbreak"_s,
                               u"carriage\rreturn"_s,
                               u"back\\slash \\N \\."_s,
                               u"\\."_s,
                               u" blanks around "_s,
                               u"𝄞 beyond sixteen bits"_s,
                               u"\u200f\u05d0\u05b0"_s,
                               u"{}[],;%$|"_s,
                               u"NULL"_s};

class MoveTest : public testing::Test
{
protected:
    MoveTest()
    {
        database_.writeLink(link_);
        address_ = addressOf(database_.link());
    }

    QString at(const QString& name) const { return folder_.filePath(name); }
    Outcome move(const QString& from, const QString& to) const
    {
        return zomrelStore({u"move"_s, from, to});
    }
    void expectMoved(const QString& from, const QString& to) const
    {
        const Outcome outcome = move(from, to);
        EXPECT_EQ(outcome.exitStatus, 0) << asText(outcome.err);
        EXPECT_TRUE(outcome.err.isEmpty()) << asText(outcome.err);
        EXPECT_EQ(outcome.out.value(outcome.out.size() - 1),
                  u"moved %1 to %2; both hold the same rows in all tables"_s.arg(from, to));
    }

    TemporaryStore store_{TemporaryStore::Contents::Delivered};
    QTemporaryDir folder_;
    ThrowawayDatabase database_;
    QString link_ = folder_.filePath(u"link.mdb"_s);
    QString address_;
};

} // namespace

TEST_F(MoveTest, CopiesAWholeStoreToAServerAndBack)
{
    store_.addOrder(7);
    store_.addLine(7, 1);
    store_.addLine(7, 2);
    const auto before = contentsOfStore(store_.path());
    const QByteArray file = contentsOf(store_.path());
    expectMoved(store_.path(), address_);
    EXPECT_EQ(contentsOfStore(link_), before);
    expectMoved(link_, at(u"back.mdb"_s));
    EXPECT_EQ(contentsOfStore(at(u"back.mdb"_s)), before);
    EXPECT_EQ(contentsOf(store_.path()), file);
    EXPECT_EQ(QDir(folder_.path())
                  .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name),
              (QStringList{u"back.mdb"_s, u"link.mdb"_s}));
    for (const QString& each : {link_, address_, at(u"back.mdb"_s)})
        EXPECT_EQ(zomrelStore({u"check"_s, each}).exitStatus, 0) << each.toStdString();
}

TEST_F(MoveTest, CountsTheRowsOfEachTable)
{
    store_.addOrder(1);
    store_.addLine(1, 1);
    store_.addLine(1, 2);
    const Outcome outcome = move(store_.path(), link_);
    EXPECT_EQ(outcome.out.value(0), u"table             rows"_s);
    EXPECT_EQ(outcome.out.value(1), u"Orders               1"_s);
    EXPECT_EQ(outcome.out.value(2), u"Cuts                 2"_s);
    EXPECT_EQ(outcome.out.size(), 13);
}

TEST_F(MoveTest, KeepsEveryKindOfValue)
{
    store_.execute(
        u"INSERT INTO Orders (Number, Order_Date, Open_Close, CustomerName, "
        "CustomerAddress, CustomerTel) VALUES (32767, '0001-01-01', -1, '', NULL, 'x')"_s);
    store_.execute(
        u"INSERT INTO Orders (Number, Order_Date, Open_Close, CustomerName) "
        "VALUES (-5, '9999-12-31T23:59:59', 0, NULL), (0, '1999-12-31T00:00:01', -1, '')"_s);
    int code = 0;
    for (const QString& text : awkwardTexts)
        store_.execute(u"INSERT INTO GlassKind (Code, Name) VALUES (?, ?)"_s,
                       {1000 + ++code, text});
    constexpr double huge = std::numeric_limits<double>::max();
    for (const double number :
         {0.1, 1.0 / 3, 100.00000000000001, -48.35, huge, -huge, std::numeric_limits<double>::min(),
          std::numeric_limits<double>::denorm_min(), 9007199254740993.0, 123456789.12345678, 5e-324,
          1e15, 1e16})
        store_.execute(u"INSERT INTO Cuts (MyWidth, MYHeight, Name, NUM, Mahkof_Count) "
                       "VALUES (?, ?, 'x', ?, ?)"_s,
                       {number, -number, std::numeric_limits<qint32>::max(),
                        std::numeric_limits<qint32>::min()});
    store_.execute(u"INSERT INTO Cuts (Code) VALUES (2147483600)"_s);
    const auto before = contentsOfStore(store_.path());
    expectMoved(store_.path(), link_);
    EXPECT_EQ(contentsOfStore(link_), before);
    expectMoved(link_, at(u"back.mdb"_s));
    EXPECT_EQ(contentsOfStore(at(u"back.mdb"_s)), before);
    // An empty text stays different from Null in both directions.
    PlainSql back(at(u"back.mdb"_s));
    EXPECT_EQ(back.scalar(u"SELECT count(*) FROM Orders WHERE CustomerName = ''"_s), 2);
    EXPECT_EQ(back.scalar(u"SELECT count(*) FROM Orders WHERE CustomerName IS NULL"_s), 1);
}

TEST_F(MoveTest, KeepsTheInsertionOrder)
{
    for (const int code : {900, 300, 700, 100})
        store_.execute(u"INSERT INTO KanafKind (Code, Name) VALUES (?, 'same')"_s, {code});
    const QString order = u"SELECT Code FROM KanafKind WHERE Name = 'same' ORDER BY %1"_s;
    expectMoved(store_.path(), link_);
    const QList<QVariantList> wanted{{900}, {300}, {700}, {100}};
    EXPECT_EQ(PlainSql(link_).rows(order.arg(u"zomrel_row"_s)), wanted);
    // On a server, an updated row changes its physical position but keeps its row id.
    PlainSql(link_).rows(u"UPDATE KanafKind SET Name = 'same' WHERE Code = 900"_s);
    expectMoved(link_, at(u"back.mdb"_s));
    EXPECT_EQ(PlainSql(at(u"back.mdb"_s)).rows(order.arg(u"rowid"_s)), wanted);
}

TEST_F(MoveTest, ContinuesCountersAfterTheHighestNumberEverAssigned)
{
    const QString add = u"INSERT INTO Serials (Name) VALUES ('new')"_s;
    const QString last = u"SELECT max(AutoNum) FROM Serials"_s;
    store_.execute(u"INSERT INTO Serials (AutoNum, Name) VALUES (500, 'gone')"_s);
    store_.execute(u"DELETE FROM Serials WHERE AutoNum = 500"_s);
    store_.execute(u"DELETE FROM ReshetColor"_s);
    expectMoved(store_.path(), link_);
    PlainSql server(link_);
    server.rows(add);
    EXPECT_EQ(server.scalar(last), 501);
    server.rows(u"DELETE FROM Serials WHERE AutoNum = 501"_s);
    server.rows(u"INSERT INTO Cuts (Name) VALUES ('first')"_s);
    EXPECT_EQ(server.scalar(u"SELECT max(Code) FROM Cuts"_s), 1);
    expectMoved(link_, at(u"back.mdb"_s));
    PlainSql back(at(u"back.mdb"_s));
    back.rows(add);
    EXPECT_EQ(back.scalar(last), 502);
    back.rows(u"INSERT INTO ReshetColor (Name) VALUES ('next')"_s);
    const QVariant given = store_.scalar(u"SELECT last_number FROM zomrel_counters "
                                         "WHERE table_name = 'ReshetColor'"_s);
    EXPECT_EQ(back.scalar(u"SELECT Code FROM ReshetColor"_s).toInt(), given.toInt() + 1);
}

TEST_F(MoveTest, KeepsFieldsAndIndexes)
{
    store_.execute(u"ALTER TABLE Orders ADD COLUMN Own TEXT(7)"_s);
    store_.execute(u"CREATE INDEX \"Orders.ByOwn\" ON \"Orders\" (\"Own\")"_s);
    store_.execute(u"INSERT INTO Orders (Number, Own) VALUES (1, 'own')"_s);
    expectMoved(store_.path(), link_);
    ServerSql server(database_.link());
    EXPECT_EQ(server.scalar(u"SELECT character_maximum_length FROM information_schema.columns "
                            "WHERE table_name = 'Orders' AND column_name = 'Own'"_s),
              7);
    EXPECT_EQ(server.scalar(u"SELECT count(*) FROM pg_indexes WHERE indexname = 'Orders.ByOwn'"_s),
              1);
    expectMoved(link_, at(u"back.mdb"_s));
    // On a server, stations cannot create the table of bar settings, so move creates it.
    for (const QString& schema :
         {u"SELECT m.name, c.cid, c.name, c.type, c.\"notnull\", c.dflt_value, c.pk "
          "FROM sqlite_master m, pragma_table_info(m.name) c WHERE m.type = 'table' "
          "AND m.name NOT LIKE 'sqlite%' AND m.name <> 'zomrel_bars' ORDER BY m.name, c.cid"_s,
          u"SELECT type, name, sql FROM sqlite_master WHERE type <> 'table' "
          "AND tbl_name <> 'zomrel_bars' ORDER BY name"_s})
        EXPECT_EQ(PlainSql(at(u"back.mdb"_s)).rows(schema), PlainSql(store_.path()).rows(schema));
    EXPECT_EQ(PlainSql(at(u"back.mdb"_s)).scalar(u"SELECT Own FROM Orders"_s), u"own"_s);
}

TEST_F(MoveTest, SkipsAndReportsOtherTables)
{
    store_.execute(u"CREATE TABLE Notes (Text TEXT)"_s);
    const Outcome outcome = move(store_.path(), link_);
    EXPECT_EQ(outcome.exitStatus, 0) << asText(outcome.err);
    EXPECT_EQ(outcome.out.value(0), u"Notes: not a table of the store, not copied"_s);
    EXPECT_EQ(ServerSql(database_.link()).scalar(u"SELECT to_regclass('\"Notes\"') IS NULL"_s),
              true);
}

TEST_F(MoveTest, CopiesTheProgramsInternalTables)
{
    store_.execute(u"CREATE TABLE zomrel_notes (Code COUNTER PRIMARY KEY, Note TEXT(20))"_s);
    store_.execute(u"INSERT INTO zomrel_notes VALUES (3, 'kept')"_s);
    expectMoved(store_.path(), link_);
    expectMoved(link_, at(u"back.mdb"_s));
    const QString notes = u"SELECT Code, Note FROM zomrel_notes"_s;
    EXPECT_EQ(PlainSql(link_).rows(notes), (QList<QVariantList>{{3, u"kept"_s}}));
    EXPECT_EQ(PlainSql(at(u"back.mdb"_s)).rows(notes), (QList<QVariantList>{{3, u"kept"_s}}));
    EXPECT_EQ(zomrelStore({u"check"_s, at(u"back.mdb"_s)}).exitStatus, 0);
}

TEST_F(MoveTest, MovesFromFileToFileAndFromServerToServer)
{
    store_.addOrder(3);
    const auto before = contentsOfStore(store_.path());
    expectMoved(store_.path(), at(u"second.mdb"_s));
    EXPECT_EQ(contentsOfStore(at(u"second.mdb"_s)), before);
    expectMoved(at(u"second.mdb"_s), address_);
    const ThrowawayDatabase other;
    other.writeLink(at(u"other.mdb"_s));
    expectMoved(address_, at(u"other.mdb"_s));
    EXPECT_EQ(contentsOfStore(at(u"other.mdb"_s)), before);
}

TEST_F(MoveTest, RefusesATargetWithAStore)
{
    const QByteArray file = contentsOf(store_.path());
    const Outcome ontoFile = move(store_.path(), store_.path());
    EXPECT_EQ(ontoFile.exitStatus, 1);
    EXPECT_EQ(ontoFile.err,
              QStringList{u"zomrel-store: Database '%1' already exists."_s.arg(store_.path())});
    EXPECT_EQ(contentsOf(store_.path()), file);

    expectMoved(store_.path(), address_);
    const auto before = contentsOfStore(link_);
    for (const QString& target : {address_, link_}) {
        const Outcome outcome = move(store_.path(), target);
        EXPECT_EQ(outcome.exitStatus, 1);
        EXPECT_EQ(outcome.err, QStringList{u"zomrel-store: There is a store already in %1."_s.arg(
                                   database_.link().place())});
    }
    EXPECT_EQ(contentsOfStore(link_), before);
    EXPECT_EQ(move(address_, address_).exitStatus, 1);
}

TEST_F(MoveTest, RefusesADatabaseWithOneOfTheTables)
{
    ServerSql server(database_.link());
    server.run(u"CREATE TABLE \"Serials\" (x integer)"_s);
    EXPECT_EQ(move(store_.path(), address_).exitStatus, 1);
    EXPECT_EQ(server.scalar(u"SELECT count(*) FROM pg_tables WHERE schemaname = 'public'"_s), 1);
}

TEST_F(MoveTest, RefusesAnIncompleteStore)
{
    store_.execute(u"DROP TABLE KanafKind"_s);
    for (const QString& target : {address_, at(u"new.mdb"_s)}) {
        const Outcome outcome = move(store_.path(), target);
        EXPECT_EQ(outcome.exitStatus, 1);
        EXPECT_TRUE(outcome.out.isEmpty());
        EXPECT_EQ(outcome.err,
                  (QStringList{u"KanafKind: the table is missing"_s,
                               u"zomrel-store: the store is not complete; nothing was moved"_s}));
    }
    EXPECT_FALSE(QFile::exists(at(u"new.mdb"_s)));
    EXPECT_EQ(ServerSql(database_.link())
                  .scalar(u"SELECT count(*) FROM pg_tables "
                          "WHERE schemaname = 'public'"_s),
              0);
}

TEST_F(MoveTest, ReportsValuesThatDoNotFit)
{
    const struct
    {
        QString damage;
        QString finding;
    } cases[] = {
        {u"UPDATE Cuts SET MyWidth = 'wide' WHERE Code = 2"_s,
         u"Cuts, Code 2: MyWidth cannot be read"_s},
        {u"UPDATE Cuts SET Sign = '12345678901' WHERE Code = 1"_s,
         u"Cuts, Code 1: Sign has 11 characters and takes 10"_s},
        {u"UPDATE Cuts SET NUM = 2147483648 WHERE Code = 1"_s,
         u"Cuts, Code 1: NUM cannot be read"_s},
        {u"UPDATE Cuts SET Order_Date = '2026-02-30' WHERE Code = 1"_s,
         u"Cuts, Code 1: Order_Date cannot be read"_s},
    };
    for (const auto& each : cases) {
        TemporaryStore damaged;
        damaged.addOrder(1);
        damaged.addLine(1, 1);
        damaged.addLine(1, 2);
        damaged.execute(each.damage);
        const Outcome outcome = move(damaged.path(), address_);
        EXPECT_EQ(outcome.exitStatus, 1);
        EXPECT_EQ(outcome.err, QStringList{u"zomrel-store: "_s + each.finding});
    }
    EXPECT_EQ(ServerSql(database_.link())
                  .scalar(u"SELECT count(*) FROM pg_tables "
                          "WHERE schemaname = 'public'"_s),
              0);
}

TEST_F(MoveTest, ReportsValuesThatNoFieldCanHold)
{
    store_.addOrder(1);
    store_.addLine(1, 1);
    expectMoved(store_.path(), link_);
    ServerSql server(database_.link());
    for (const auto& [damage, repair, field] :
         {std::tuple(u"\"MyWidth\" = 'NaN'"_s, u"\"MyWidth\" = 1"_s, u"MyWidth"_s),
          std::tuple(u"\"MyWidth\" = '-Infinity'"_s, u"\"MyWidth\" = 1"_s, u"MyWidth"_s),
          std::tuple(u"\"Order_Date\" = 'infinity'"_s, u"\"Order_Date\" = NULL"_s, u"Order_Date"_s),
          std::tuple(u"\"Order_Date\" = '10000-01-01'"_s, u"\"Order_Date\" = NULL"_s,
                     u"Order_Date"_s)}) {
        server.run(u"UPDATE \"Cuts\" SET "_s + damage);
        const Outcome outcome = move(link_, at(u"new.mdb"_s));
        EXPECT_EQ(outcome.exitStatus, 1);
        EXPECT_EQ(outcome.err,
                  QStringList{u"zomrel-store: Cuts, row 1: %1 cannot be read"_s.arg(field)});
        EXPECT_FALSE(QFile::exists(at(u"new.mdb"_s)));
        server.run(u"UPDATE \"Cuts\" SET "_s + repair);
    }
    // Negative zero equals zero.
    server.run(u"UPDATE \"Cuts\" SET \"MyWidth\" = '-0'"_s);
    expectMoved(link_, at(u"new.mdb"_s));
}

TEST_F(MoveTest, FailsWithoutSourceOrTarget)
{
    EXPECT_EQ(move(at(u"absent.mdb"_s), address_).exitStatus, 1);
    EXPECT_EQ(move(store_.path(), at(u"no such folder/new.mdb"_s)).exitStatus, 1);
    // The database does not contain a store.
    EXPECT_EQ(move(address_, at(u"new.mdb"_s)).exitStatus, 1);
    EXPECT_EQ(move(u"postgresql://x:y@server/z"_s, at(u"new.mdb"_s)).err,
              QStringList{u"zomrel-store: No such place: an address holds no password."_s});
    EXPECT_EQ(
        QDir(folder_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList{u"link.mdb"_s});
}
