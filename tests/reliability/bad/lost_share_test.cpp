#include "orders/order_commands.h"
#include "orders/order_head.h"
#include "reliability/bad/working_day.h"
#include "reliability/figures.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

/// Tests of a store folder that disappears while the program runs, as a network share does, and
/// returns later. The next command ends the program with an error box, and everything acknowledged
/// is stored.
class LostShareTest : public QObject
{
    Q_OBJECT

private slots:
    void lostFolder_endsTheProgramAndLosesNothing_data();
    void lostFolder_endsTheProgramAndLosesNothing();
    void lostFolderAtStart_endsTheProgram();
    void cleanupTestCase();

private:
    int lost_ = 0;
};

namespace {

enum Command { NewOrder, AddLine, Print, CloseOrder, PickSeries, FindOrder };

/// Moves the store's folder away while it exists.
class OutOfReach
{
public:
    explicit OutOfReach(const QString& folder) : folder_(folder), away_(folder + u"-away"_s)
    {
        if (!QDir().rename(folder_, away_))
            qFatal("cannot move the store away");
    }
    ~OutOfReach()
    {
        // Removes the folder if something has recreated it.
        QDir().rmdir(folder_);
        if (!QDir().rename(away_, folder_))
            qFatal("cannot move the store back");
    }
    OutOfReach(const OutOfReach&) = delete;
    OutOfReach& operator=(const OutOfReach&) = delete;

    bool leftNothing() const { return !QDir(folder_).exists(); }

private:
    QString folder_;
    QString away_;
};

void run(WorkingDay& day, Command command)
{
    switch (command) {
    case NewOrder:
        day.openOrder();
        break;
    case AddLine:
        day.addLine();
        break;
    case Print:
        day.click(u"CmdPrint"_s);
        break;
    case CloseOrder:
        day.boxes.answer(runtime::vbYes);
        day.click(u"CmdCloseOrder"_s);
        break;
    case PickSeries:
        day.chooseSeries();
        break;
    case FindOrder:
        day.click(u"CmdFindOrder"_s);
        break;
    }
}

} // namespace

void LostShareTest::lostFolder_endsTheProgramAndLosesNothing_data()
{
    QTest::addColumn<int>("command");
    // Pooled connections keep the file open.
    QTest::addColumn<bool>("isHeldOpen");
    const std::pair<const char*, Command> commands[] = {
        {"new order", NewOrder}, {"line", AddLine},      {"closing", CloseOrder},
        {"printing", Print},     {"series", PickSeries}, {"search", FindOrder}};
    for (const auto& [name, number] : commands) {
        QTest::addRow("%s", name) << int{number} << false;
        QTest::addRow("%s, held open", name) << int{number} << true;
    }
}

void LostShareTest::lostFolder_endsTheProgramAndLosesNothing()
{
    QFETCH(int, command);
    QFETCH(bool, isHeldOpen);
    TemporaryStore store;
    store.addSeries(u"סדרה"_s, {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, 2, 2);
    store.addOrder(1);
    {
        WorkingDay day;
        QVERIFY(day.start(store.folder()));
        QVERIFY(day.openOrder() && day.chooseSeries() && day.addLine());
        if (!isHeldOpen)
            dao::DBEngine::instance().Idle();
        {
            const OutOfReach away(store.folder());
            run(day, static_cast<Command>(command));
            ++lost_;
            QVERIFY(!day.goesOn());
            QVERIFY2(day.endedWithABox(), qPrintable(day.lastBox()));
            QVERIFY2(day.lastBox().startsWith(u"Run-time error '3024':"_s),
                     qPrintable(day.lastBox()));
            QVERIFY(away.leftNothing());
        }
    }
    QCOMPARE(storetools::checkStore(store.path()), QStringList());
    QCOMPARE(store.scalar(u"SELECT count(*) FROM Orders"_s).toInt(), 1);
    QCOMPARE(store.scalar(u"SELECT count(*) FROM Cuts WHERE Order_Num = 1"_s).toInt(), 1);
    QCOMPARE(store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), 0);

    // After the folder has returned, the next day continues normally.
    WorkingDay next;
    QVERIFY(next.start(store.folder()));
    QVERIFY(next.openOrder() && next.chooseSeries() && next.addLine());
    QCOMPARE(store.scalar(u"SELECT count(*) FROM Cuts WHERE Order_Num = 1"_s).toInt(), 2);
}

void LostShareTest::lostFolderAtStart_endsTheProgram()
{
    TemporaryStore store;
    const OutOfReach away(store.folder());
    WorkingDay day;
    QVERIFY(!day.start(store.folder()));
    QVERIFY(day.endedWithABox());
    QVERIFY2(day.lastBox().startsWith(u"Run-time error '3024':"_s), qPrintable(day.lastBox()));
    QVERIFY(away.leftNothing());
}

void LostShareTest::cleanupTestCase()
{
    reliability::writeFigures(u"lost_share"_s,
                              {{u"commands on a missing store"_s, QString::number(lost_)}});
}

ZOMREL_QTEST_MAIN(LostShareTest)
#include "lost_share_test.moc"
