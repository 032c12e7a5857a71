#include "store/store_access.h"

#include "base/module1.h"
#include "store/schema.h"
#include "support/doors.h"
#include "support/errors.h"
#include "support/ordinary_user.h"
#include "support/temporary_store.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using testsupport::errorOf;
using testsupport::TemporaryStore;

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct ExpectedField
{
    QString name;
    dao::DataType type;
    int size;
};

const std::vector<ExpectedField> ordersFields{
    {u"Number"_s, dao::dbLong, 0},           {u"Order_Date"_s, dao::dbDate, 0},
    {u"Open_Close"_s, dao::dbBoolean, 0},    {u"CustomerName"_s, dao::dbText, 50},
    {u"CustomerAddress"_s, dao::dbText, 50}, {u"CustomerTel"_s, dao::dbText, 20},
};

dao::FieldDef ordersField(const QString& name)
{
    return store::OpenMyDataBase()->tableDefs()(u"Orders"_s).Fields()(name);
}

void expectFreshOrders()
{
    const auto database = store::OpenMyDataBase();
    dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    ASSERT_EQ(orders.Fields().Count(), int(ordersFields.size()));
    for (std::size_t i = 0; i < ordersFields.size(); ++i) {
        const dao::FieldDef field = orders.Fields()(int(i));
        EXPECT_EQ(field.Name(), ordersFields[i].name);
        EXPECT_EQ(field.Type(), ordersFields[i].type) << qPrintable(field.Name());
        EXPECT_EQ(field.Size(), ordersFields[i].size) << qPrintable(field.Name());
    }
}

class StoreAccessTest : public testing::Test
{
protected:
    ~StoreAccessTest() override { EXPECT_TRUE(boxes.unexpected().isEmpty()); }

    /// Locks the store as another user until `unlock`.
    void lock() { temporaryStore.execute(u"BEGIN EXCLUSIVE"_s); }
    void unlock() { temporaryStore.execute(u"ROLLBACK"_s); }

    TemporaryStore temporaryStore;
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
};

using OpenMyDataBaseTest = StoreAccessTest;
using TableExistsTest = StoreAccessTest;
using AlterFieldTest = StoreAccessTest;
using BuildOrdersTableTest = StoreAccessTest;

TEST_F(OpenMyDataBaseTest, GivesANewDatabaseAtEachCall)
{
    const auto first = store::OpenMyDataBase();
    const auto second = store::OpenMyDataBase();
    EXPECT_NE(first, second);
    EXPECT_EQ(first->Name(), Module1::StorePath);
    first->Close();
    EXPECT_TRUE(second->isOpen());
}

TEST_F(OpenMyDataBaseTest, OpensForWriting)
{
    const auto orders = store::OpenMyDataBase()->OpenRecordset(u"Orders"_s, dao::dbOpenTable);
    orders->AddNew();
    orders->Fields(u"Number"_s).SetValue(5);
    orders->Update();
    EXPECT_EQ(temporaryStore.scalar(u"SELECT Number FROM Orders"_s).toInt(), 5);
}

TEST_F(OpenMyDataBaseTest, MissingFileIsThrown)
{
    Module1::StorePath = temporaryStore.folder() + u"/none.mdb"_s;
    EXPECT_EQ(errorOf([] { store::OpenMyDataBase(); }), 3024);
    EXPECT_FALSE(QFile::exists(Module1::StorePath));
}

TEST_F(StoreAccessTest, AdoConnectionReadsTheStoreAtThePath)
{
    temporaryStore.addOrder(3);
    ado::Connection connection;
    store::OpenAdoConnection(connection, temporaryStore.path());
    EXPECT_EQ(connection.Execute(u"SELECT * FROM Orders"_s)->RecordCount(), 1);
}

TEST_F(StoreAccessTest, AdoConnectionThrowsForAMissingFile)
{
    ado::Connection connection;
    const QString path = temporaryStore.folder() + u"/none.mdb"_s;
    EXPECT_EQ(errorOf([&] { store::OpenAdoConnection(connection, path); }), 3024);
}

TEST_F(TableExistsTest, FindsEveryTableByItsExactName)
{
    for (const store::TableSchema& each : store::schema())
        EXPECT_TRUE(store::TableExists(temporaryStore.path(), each.name)) << qPrintable(each.name);
    EXPECT_FALSE(store::TableExists(temporaryStore.path(), u"orders"_s));
    EXPECT_FALSE(store::TableExists(temporaryStore.path(), u"Order"_s));
    EXPECT_FALSE(store::TableExists(temporaryStore.path(), QString()));
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(TableExistsTest, MissingFileAsksAndReturnsFalse)
{
    boxes.answer(runtime::vbCancel);
    EXPECT_FALSE(store::TableExists(temporaryStore.folder() + u"/none.mdb"_s, u"Orders"_s));
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(u"שגיאה מספר: (3024) - תאור: "_s));
    EXPECT_TRUE(boxes.shown()[0].text.contains(u"\rאין גישה לקובץ ! סיבות :\r"_s));
}

TEST_F(TableExistsTest, AnswerNoThrowsObjectRequired)
{
    boxes.answer(runtime::vbNo);
    const QString lost = temporaryStore.folder() + u"/none.mdb"_s;
    EXPECT_EQ(errorOf([&] { store::TableExists(lost, u"Orders"_s); }), 424);
}

TEST_F(TableExistsTest, OtherErrorIsShownAndReturnsFalse)
{
    QFile file(temporaryStore.folder() + u"/text.mdb"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray("no store at all\n").repeated(500));
    file.close();
    boxes.answer(runtime::vbOK);
    EXPECT_FALSE(store::TableExists(file.fileName(), u"Orders"_s));
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(
        u"שגיאה מספר: (3343) - תאור: Unrecognized database format"_s));
    EXPECT_FALSE(boxes.shown()[0].text.contains(u'\r'));
}

TEST_F(TableExistsTest, LockedStoreEndsTheProcess)
{
    if (testsupport::isOnServer())
        GTEST_SKIP() << "a server's store is never locked as a whole";
    lock();
    boxes.answer(runtime::vbOK);
    EXPECT_THROW(store::TableExists(temporaryStore.path(), u"Orders"_s), runtime::ProcessEnded);
    unlock();
    EXPECT_EQ(end.exitStatus(), 1);
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(u"שגיאה מספר: (3260) - תאור: "_s));
}

TEST_F(AlterFieldTest, AppendsAMissingField)
{
    const auto database = store::OpenMyDataBase();
    dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    store::AlterField(orders, u"APPEND"_s, u"Fax"_s, dao::dbText, 20);
    EXPECT_EQ(ordersField(u"Fax"_s).Type(), dao::dbText);
    EXPECT_EQ(ordersField(u"Fax"_s).Size(), 20);
}

TEST_F(AlterFieldTest, ExistingFieldStaysUnchanged)
{
    const auto database = store::OpenMyDataBase();
    dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    store::AlterField(orders, u"APPEND"_s, u"CustomerTel"_s, dao::dbDouble);
    EXPECT_EQ(ordersField(u"CustomerTel"_s).Type(), dao::dbText);
    EXPECT_EQ(ordersField(u"CustomerTel"_s).Size(), 20);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(AlterFieldTest, NameInAnotherCaseIsReported)
{
    const auto database = store::OpenMyDataBase();
    dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    boxes.answer(runtime::vbOK);
    store::AlterField(orders, u"APPEND"_s, u"customertel"_s, dao::dbText, 20);
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(u"שגיאה מספר: (3191) - תאור: "_s));
    EXPECT_EQ(orders.Fields().Count(), 6);
}

TEST_F(AlterFieldTest, DeletesAField)
{
    const auto database = store::OpenMyDataBase();
    dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    store::AlterField(orders, u"DELETE"_s, u"CustomerTel"_s, dao::dbText);
    EXPECT_EQ(store::OpenMyDataBase()->tableDefs()(u"Orders"_s).Fields().Count(), 5);
}

TEST_F(AlterFieldTest, ReportsAFieldThatCannotBeDeletedAndReturns)
{
    const auto database = store::OpenMyDataBase();
    dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    boxes.answer(runtime::vbOK);
    store::AlterField(orders, u"DELETE"_s, u"Fax"_s, dao::dbText);
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(u"שגיאה מספר: (3265) - תאור: "_s));
}

TEST_F(AlterFieldTest, AnyOtherActionDoesNothing)
{
    const auto database = store::OpenMyDataBase();
    dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    for (const QString& action : {u"append"_s, u"delete"_s, QString(), u"RENAME"_s})
        store::AlterField(orders, action, u"Fax"_s, dao::dbText, 20);
    store::AlterField(orders, u"delete"_s, u"CustomerTel"_s, dao::dbText);
    EXPECT_EQ(orders.Fields().Count(), 6);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(AlterFieldTest, ReadOnlyDefinitionShowsABox)
{
    temporaryStore.execute(u"CREATE VIEW OpenOrders AS SELECT * FROM Orders"_s);
    const auto database = store::OpenMyDataBase();
    dao::TableDef view = database->tableDefs()(u"OpenOrders"_s);
    boxes.answer(runtime::vbOK);
    store::AlterField(view, u"APPEND"_s, u"Fax"_s, dao::dbText, 20);
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_EQ(boxes.shown()[0].text, u"TableDef not Updatable! Unable to complete task."_s);
    EXPECT_EQ(boxes.shown()[0].flags, 0);
    EXPECT_EQ(boxes.shown()[0].title, u"ProjZomrel"_s);
}

TEST_F(BuildOrdersTableTest, CompleteStoreIsNotChanged)
{
    temporaryStore.addOrder(1);
    const QByteArray before = contents(temporaryStore.path());
    store::BuildOrdersTable(temporaryStore.path());
    EXPECT_EQ(contents(temporaryStore.path()), before);
}

TEST_F(BuildOrdersTableTest, AddsAMissingFieldWithNullInOldRows)
{
    temporaryStore.addOrder(1);
    temporaryStore.execute(u"ALTER TABLE Orders DROP COLUMN CustomerTel"_s);
    store::BuildOrdersTable(temporaryStore.path());
    EXPECT_EQ(ordersField(u"CustomerTel"_s).Type(), dao::dbText);
    EXPECT_EQ(ordersField(u"CustomerTel"_s).Size(), 20);
    const auto rows = temporaryStore.rows(u"SELECT Number, CustomerTel IS NULL FROM Orders"_s);
    EXPECT_EQ(rows, (QList<QList<QVariant>>{{1, 1}}));
}

TEST_F(BuildOrdersTableTest, AddsEveryMissingFieldInOrder)
{
    temporaryStore.addOrder(4);
    for (const QString& each : {u"Order_Date"_s, u"Open_Close"_s, u"CustomerName"_s,
                                u"CustomerAddress"_s, u"CustomerTel"_s})
        temporaryStore.execute(u"ALTER TABLE Orders DROP COLUMN "_s + each);
    store::BuildOrdersTable(temporaryStore.path());
    expectFreshOrders();
    const auto orders = store::OpenMyDataBase()->OpenRecordset(u"Orders"_s, dao::dbOpenTable);
    EXPECT_EQ(orders->Fields(u"Number"_s).Value(), QVariant(4));
    EXPECT_EQ(orders->Fields(u"Open_Close"_s).Value(), QVariant(0)); // A Boolean is never Null.
}

TEST_F(BuildOrdersTableTest, FieldOfAnotherTypeStaysUnchanged)
{
    temporaryStore.execute(u"ALTER TABLE Orders DROP COLUMN CustomerTel"_s);
    temporaryStore.execute(u"ALTER TABLE Orders DROP COLUMN CustomerAddress"_s);
    const auto database = store::OpenMyDataBase();
    dao::TableDef orders = database->tableDefs()(u"Orders"_s);
    orders.Fields().Append(orders.CreateField(u"CustomerAddress"_s, dao::dbText, 30));
    orders.Fields().Append(orders.CreateField(u"CustomerTel"_s, dao::dbDouble));
    const QByteArray before = contents(temporaryStore.path());
    store::BuildOrdersTable(temporaryStore.path());
    EXPECT_EQ(contents(temporaryStore.path()), before);
    EXPECT_EQ(ordersField(u"CustomerAddress"_s).Size(), 30);
    EXPECT_EQ(ordersField(u"CustomerTel"_s).Type(), dao::dbDouble);
}

TEST_F(BuildOrdersTableTest, CreatesAMissingTableWithoutAnIndex)
{
    temporaryStore.execute(u"DROP TABLE Orders"_s);
    store::BuildOrdersTable(temporaryStore.path());
    expectFreshOrders();
    const auto database = store::OpenMyDataBase();
    EXPECT_EQ(database->tableDefs()(u"Orders"_s).indexes().Count(), 0);
    EXPECT_EQ(temporaryStore.scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 0);
    store::BuildOrdersTable(temporaryStore.path());
    expectFreshOrders();
}

TEST_F(BuildOrdersTableTest, OtherMissingTablesAreNotCreated)
{
    temporaryStore.execute(u"DROP TABLE GlassKind"_s);
    store::BuildOrdersTable(temporaryStore.path());
    EXPECT_FALSE(store::TableExists(temporaryStore.path(), u"GlassKind"_s));
}

TEST_F(BuildOrdersTableTest, OneFailingFieldDoesNotStopTheOthers)
{
    temporaryStore.execute(u"ALTER TABLE Orders RENAME COLUMN CustomerName TO customername"_s);
    temporaryStore.execute(u"ALTER TABLE Orders DROP COLUMN CustomerTel"_s);
    boxes.answer(runtime::vbOK);
    store::BuildOrdersTable(temporaryStore.path());
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_TRUE(boxes.shown()[0].text.startsWith(u"שגיאה מספר: (3191) - תאור: "_s));
    EXPECT_EQ(ordersField(u"CustomerTel"_s).Size(), 20);
}

TEST_F(BuildOrdersTableTest, MissingFileIsNotCreated)
{
    const QString path = temporaryStore.folder() + u"/none.mdb"_s;
    EXPECT_EQ(errorOf([&] { store::BuildOrdersTable(path); }), 3024);
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(BuildOrdersTableTest, DatabaseOfAnotherProgramIsUnrecognized)
{
    for (const store::TableSchema& each : store::schema())
        temporaryStore.execute(u"DROP TABLE "_s + each.name);
    temporaryStore.execute(u"CREATE TABLE Notes (Text TEXT)"_s);
    const QByteArray before = contents(temporaryStore.path());
    EXPECT_EQ(errorOf([&] { store::BuildOrdersTable(temporaryStore.path()); }), 3343);
    EXPECT_EQ(contents(temporaryStore.path()), before);
}

TEST_F(BuildOrdersTableTest, DatabaseWithOneTableIsAStore)
{
    for (const store::TableSchema& each : store::schema()) {
        if (each.name != u"Cuts"_s)
            temporaryStore.execute(u"DROP TABLE "_s + each.name);
    }
    store::BuildOrdersTable(temporaryStore.path());
    expectFreshOrders();
}

TEST_F(BuildOrdersTableTest, LockedStoreIsThrownWithoutABox)
{
    if (testsupport::isOnServer())
        GTEST_SKIP() << "a server's store is never locked as a whole";
    lock();
    EXPECT_EQ(errorOf([&] { store::BuildOrdersTable(temporaryStore.path()); }), 3260);
    unlock();
    EXPECT_TRUE(boxes.shown().empty());
}

#ifdef Q_OS_UNIX // An administrator of Unix may write to such a file, so the tests become an
                 // ordinary user.
/// A read-only store opens without an error if nothing has to be added.
TEST_F(BuildOrdersTableTest, ReadOnlyCompleteStoreOpens)
{
    QFile::setPermissions(temporaryStore.path(), QFile::ReadOwner);
    const testsupport::OrdinaryUser user;
    dao::DBEngine::instance().Idle();
    EXPECT_EQ(errorOf([&] { store::BuildOrdersTable(temporaryStore.path()); }), 0);
    EXPECT_TRUE(boxes.shown().empty());
}

TEST_F(BuildOrdersTableTest, ReadOnlyOlderStoreReportsEachMissingField)
{
    if (testsupport::isOnServer())
        GTEST_SKIP() << "a server's store is not written through its file";
    temporaryStore.execute(u"ALTER TABLE Orders DROP COLUMN CustomerTel"_s);
    QFile::setPermissions(temporaryStore.path(), QFile::ReadOwner);
    const testsupport::OrdinaryUser user;
    dao::DBEngine::instance().Idle();
    boxes.answer(runtime::vbOK);
    store::BuildOrdersTable(temporaryStore.path());
    ASSERT_EQ(boxes.shown().size(), 1u);
    EXPECT_EQ(boxes.shown()[0].title, u"שגיאה"_s);
    EXPECT_EQ(ordersField(u"CustomerAddress"_s).Size(), 50);
}
#endif

} // namespace
