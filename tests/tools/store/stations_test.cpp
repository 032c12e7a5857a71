// A restore or import while a station is connected, on both engines.

#include "platform/dao/database.h"
#include "platform/dao/engine/store_mark.h"
#include "support/errors.h"
#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/program_run.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using storetooltest::Outcome;
using storetooltest::zomrelStore;
using testsupport::errorOf;

namespace {

/// A store with one order, its backup, and a station: this process.
class StationsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        store_.addOrder(1);
        store_.addLine(1, 1);
        ASSERT_EQ(zomrelStore({u"backup"_s, store_.path(), backup_}).exitStatus, 0);
        store_.addOrder(2);
        station_ = dao::DBEngine::instance().OpenDatabase(store_.path());
    }
    void TearDown() override
    {
        station_.reset();
        dao::DBEngine::instance().Idle();
    }

    Outcome restore(const QStringList& options = {}) const
    {
        return zomrelStore(QStringList{u"restore"_s, backup_, store_.path()} + options);
    }
    static QStringList connectedHere()
    {
#ifdef Q_OS_WIN // The system does not tell which process has a lock.
        return {u"connected: a program on this or another computer"_s};
#else
        return {u"connected: process %1 (%2) on this computer"_s.arg(
            QString::number(QCoreApplication::applicationPid()),
            QCoreApplication::applicationName().left(15))};
#endif
    }
    static QString connectedHereInHebrew()
    {
#ifdef Q_OS_WIN
        return u"מחובר: תוכנית במחשב הזה או במחשב אחר"_s;
#else
        return u"מחובר: תהליך %1 (%2) במחשב הזה"_s.arg(
            QString::number(QCoreApplication::applicationPid()),
            QCoreApplication::applicationName().left(15));
#endif
    }
    QVariant ordersNow() const
    {
        return testsupport::PlainSql(store_.path()).scalar(u"SELECT count(*) FROM Orders"_s);
    }

    testsupport::TemporaryStore store_;
    QString backup_ = store_.folder() + u"/backup.mdb"_s;
    std::shared_ptr<dao::Database> station_;
};

} // namespace

TEST_F(StationsTest, RestoreIsRefusedWhileAStationIsConnected)
{
    const Outcome outcome = restore();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_TRUE(outcome.out.isEmpty());
    ASSERT_EQ(outcome.err.size(), 2) << outcome.err.join(u'\n').toStdString();
    EXPECT_TRUE(outcome.err[0].startsWith(u"connected: "_s)) << outcome.err[0].toStdString();
    if (!testsupport::isOnServer()) {
        EXPECT_EQ(outcome.err.first(1), connectedHere());
    }
    EXPECT_EQ(outcome.err[1], u"zomrel-store: stations are connected; nothing was changed"_s);
    EXPECT_EQ(outcome.advice, QStringList{u"zomrel-store: what to do: Close Zomrel on all stations "
                                          "and try again, or use --force."_s});
    EXPECT_EQ(ordersNow(), 2);
}

TEST_F(StationsTest, UserWithHebrewIsToldInHebrewThatAStationIsConnected)
{
    const Outcome outcome =
        storetooltest::zomrelStoreIn(u"he_IL.UTF-8"_s, {u"restore"_s, backup_, store_.path()});
    EXPECT_EQ(outcome.exitStatus, 1);
    ASSERT_EQ(outcome.err.size(), 2) << outcome.err.join(u'\n').toStdString();
    if (!testsupport::isOnServer()) {
        EXPECT_EQ(outcome.err[0], connectedHereInHebrew());
    }
    EXPECT_TRUE(outcome.err[0].startsWith(u"מחובר: "_s)) << outcome.err[0].toStdString();
    EXPECT_EQ(outcome.err[1], u"zomrel-store: יש עמדות מחוברות; לא השתנה דבר"_s);
    EXPECT_EQ(outcome.advice, QStringList{u"zomrel-store: מה עושים: צא מזומרל בכל העמדות ונסה "
                                          "שוב, או הוסף --force."_s});
}

TEST_F(StationsTest, RestoreGoesOnAfterTheStationHasLeft)
{
    station_.reset();
    dao::DBEngine::instance().Idle();
    store_.waitUntilLeft();
    const Outcome outcome = restore();
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(ordersNow(), 1);
}

TEST_F(StationsTest, StationWritesNothingAfterAForcedRestore)
{
    const auto lines = station_->OpenRecordset(u"Cuts"_s, dao::dbOpenDynaset);
    const auto orders = station_->OpenRecordset(u"Orders"_s, dao::dbOpenDynaset);
    EXPECT_EQ(lines->RecordCount(), 1);
    orders->Edit();
    orders->Fields(u"Open_Close"_s).SetValue(1);
    ASSERT_EQ(restore({u"--force"_s}).exitStatus, 0);
    EXPECT_EQ(errorOf([&] { orders->Update(); }), dao::storeReplaced);
    EXPECT_EQ(errorOf([&] { lines->Delete(); }), dao::storeReplaced);
    lines->AddNew();
    lines->Fields(u"Order_Num"_s).SetValue(2);
    EXPECT_EQ(errorOf([&] { lines->Update(); }), dao::storeReplaced);
    EXPECT_EQ(errorOf([&] { dao::DBEngine::instance().OpenDatabase(store_.path()); }),
              dao::storeReplaced);
    testsupport::PlainSql sql(store_.path());
    EXPECT_EQ(sql.scalar(u"SELECT count(*) FROM Cuts"_s), 1);
    EXPECT_EQ(sql.scalar(u"SELECT count(*) FROM Orders"_s), 1);
    EXPECT_EQ(sql.scalar(u"SELECT count(*) FROM Orders WHERE Open_Close <> 0"_s), 0);
}
