#include "base/module1.h"
#include "platform/dao/database.h"
#include "store/schema.h"
#include "support/printers.h"
#include "support/temporary_store.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

TEST(TemporaryStoreTest, IsAtTheProgramsStorePath)
{
    Module1::StorePath = u"before"_s;
    QString path;
    {
        const TemporaryStore store;
        path = store.path();
        EXPECT_EQ(Module1::StorePath, path);
        EXPECT_EQ(Module1::LogoPath, store.folder() + u"/Logo.jpg"_s);
        EXPECT_TRUE(QFile::exists(path));
    }
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(Module1::StorePath, u"before"_s);
}

TEST(TemporaryStoreTest, IsEmptyEachTime)
{
    for (int round = 0; round < 2; ++round) {
        TemporaryStore store;
        for (const store::TableSchema& table : store::schema())
            EXPECT_EQ(store.scalar(u"SELECT count(*) FROM %1"_s.arg(table.name)), 0);
        store.addOrder(1);
    }
}

TEST(TemporaryStoreTest, AddedRowsAreReadByTheEngine)
{
    TemporaryStore store;
    const QList<double> deductions{-0.6, -0.5, -4.2, -4.1, -12.3, -12.2, -5.4, -5.3};
    EXPECT_EQ(store.addSeries(u"ראשונה"_s, deductions, 2, 3), 1);
    EXPECT_EQ(store.addSeries(u"דלת"_s, deductions, 1, 1, u"d2000"_s), 2);
    store.addOrder(7, true, u"2026-03-01"_s);
    store.addLine(7, 1);
    store.addLine(7, 2, u"דלת"_s);

    const auto database = dao::DBEngine::instance().OpenDatabase(store.path());
    const auto series = database->OpenRecordset(u"Serials"_s, dao::dbOpenTable);
    EXPECT_DOUBLE_EQ(series->Fields(u"Mashkof_W"_s).Value().toDouble(), -0.6);
    EXPECT_DOUBLE_EQ(series->Fields(u"Reshet_H"_s).Value().toDouble(), -5.3);
    EXPECT_EQ(series->Fields(u"Kanaf_Num"_s).Value().toInt(), 2);
    EXPECT_EQ(series->Fields(u"Nativ_Num"_s).Value().toInt(), 3);
    EXPECT_FALSE(series->Fields(u"Sign"_s).Value().isValid());

    const auto order = database->OpenRecordset(u"Orders"_s, dao::dbOpenTable);
    EXPECT_EQ(order->Fields(u"Order_Date"_s).Value().toDate(), QDate(2026, 3, 1));
    EXPECT_EQ(order->Fields(u"Open_Close"_s).Value().toInt(), -1);

    const auto lines = database->OpenRecordset(
        u"SELECT * FROM Cuts WHERE ORDER_NUM = 7 ORDER BY NUM ASC"_s, dao::dbOpenDynaset);
    lines->MoveLast();
    EXPECT_EQ(lines->RecordCount(), 2);
    EXPECT_EQ(lines->Fields(u"NUM"_s).Value().toInt(), 2);
    EXPECT_EQ(lines->Fields(u"Name"_s).Value().toString(), u"דלת"_s);
    EXPECT_EQ(lines->Fields(u"Code"_s).Value().toInt(), 2);
    // Only fields that no code of the program writes stay Null.
    QStringList empty;
    for (int i = 0; i < lines->FieldCount(); ++i) {
        if (!lines->Fields(i).Value().isValid())
            empty.append(lines->Fields(i).Name());
    }
    EXPECT_EQ(empty, (QStringList{u"Rem"_s, u"Sign"_s}));
}
