#include "orders/order_commands.h"
#include "orders/order_head.h"
#include "platform/dao/database.h"
#include "reliability/bad/working_day.h"
#include "reliability/figures.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"

#include <QFileInfo>

#include <sys/resource.h>

#include <csignal>
#include <limits>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

/// The disk takes no more while the program writes: the command ends the program with its box or is
/// done in full, and what was acknowledged before is there.
class FullDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void command_data();
    void command();
    void cleanupTestCase();

private:
    int tried_ = 0;
    int ended_ = 0;
};

namespace {

enum Command { NewOrder, AddLine, SaveDetails, CloseOrder };

/// No file may grow beyond the size while this lives, the journal of a change included.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(qint64 bytes) : formerHandler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &former_);
        rlimit limit = former_;
        limit.rlim_cur = static_cast<rlim_t>(bytes);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, formerHandler_);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit former_{};
    void (*formerHandler_)(int);
};

constexpr qint64 pageSize = 4096;
constexpr int linesBefore = 4;
const QString nameBefore = u"לקוח"_s;
const QString nameAfter = u"לקוח אחר"_s;

/// What the store holds of order 1 and how many orders there are.
struct Held
{
    int orders;
    int lines;
    QString customer;
    bool closed;
    bool operator==(const Held&) const = default;
};

Held held(TemporaryStore& store)
{
    return {store.scalar(u"SELECT count(*) FROM Orders"_s).toInt(),
            store.scalar(u"SELECT count(*) FROM Cuts WHERE Order_Num = 1"_s).toInt(),
            store.scalar(u"SELECT CustomerName FROM Orders WHERE Number = 1"_s).toString(),
            store.scalar(u"SELECT Open_Close FROM Orders WHERE Number = 1"_s).toInt() != 0};
}

void run(WorkingDay& day, Command command)
{
    switch (command) {
    case NewOrder:
        day.openOrder();
        break;
    case AddLine:
        day.addLine();
        break;
    case SaveDetails:
        day.click(u"CmdPrint"_s); // with no line in the order it saves and nothing else
        break;
    case CloseOrder:
        day.boxes.answer(runtime::vbYes);
        day.click(u"CmdCloseOrder"_s);
        break;
    }
}

} // namespace

void FullDiskTest::command_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<qint64>("room"); // beyond the store's size, or a limit below a page
    const std::pair<const char*, int> commands[] = {{"new order", NewOrder},
                                                    {"line", AddLine},
                                                    {"details", SaveDetails},
                                                    {"closing", CloseOrder}};
    for (const auto& [name, number] : commands) {
        for (const qint64 room : {qint64{-1}, qint64{0}, pageSize})
            QTest::addRow("%s, room %lld", name, static_cast<long long>(room)) << number << room;
    }
}

void FullDiskTest::command()
{
    QFETCH(int, command);
    QFETCH(qint64, room);
    TemporaryStore store;
    store.addSeries(u"סדרה"_s, {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, 2, 2);
    store.addOrder(1, command == NewOrder);
    store.execute(u"UPDATE Orders SET CustomerName = ?"_s, {nameBefore});
    const int lines = command == SaveDetails ? 0 : linesBefore;
    for (int line = 1; line <= lines; ++line)
        store.addLine(1, line);
    const Held before = held(store);

    bool ended = false;
    {
        WorkingDay day;
        QVERIFY(day.start(store.folder()));
        if (command != NewOrder) {
            QVERIFY(day.openOrder() && day.chooseSeries());
            day.form()->head().TextCustomerName->setText(nameAfter);
        }
        {
            const FileSizeLimit limit(room < 0 ? 0 : QFileInfo(store.path()).size() + room);
            run(day, static_cast<Command>(command));
        }
        ended = !day.goesOn();
        ++tried_;
        ended_ += ended ? 1 : 0;
        if (ended) {
            QVERIFY2(day.endedWithABox(), qPrintable(day.lastBox()));
            QVERIFY2(day.lastBox().startsWith(u"Run-time error '3043':"_s) ||
                         day.lastBox().startsWith(u"Run-time error '3026':"_s),
                     qPrintable(day.lastBox()));
        }
    }
    QVERIFY2(ended || room >= 0, "nothing could be written and nothing was said");
    QCOMPARE(storetools::checkStore(store.path()), QStringList());
    const Held after = held(store);
    Held done = before;
    if (command == NewOrder)
        ++done.orders;
    else
        done.customer = nameAfter;
    done.lines += command == AddLine ? 1 : 0;
    done.closed = done.closed || command == CloseOrder;
    if (ended && command == AddLine) {
        // The line is one change, the details behind it another.
        Held lineOnly = before;
        ++lineOnly.lines;
        QVERIFY(after == before || after == lineOnly);
    } else {
        QVERIFY(after == (ended ? before : done));
    }
}

void FullDiskTest::cleanupTestCase()
{
    reliability::writeFigures(u"full_disk"_s,
                              {{u"commands on a full disk"_s, QString::number(tried_)},
                               {u"commands ended with their box"_s, QString::number(ended_)}});
}

ZOMREL_QTEST_MAIN(FullDiskTest)
#include "full_disk_test.moc"
