#include "reliability/bad/writing_commands.h"
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
    void linesUntilTheDiskIsFull();
    void cleanupTestCase();

private:
    int tried_ = 0;
    int ended_ = 0;
};

namespace {

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

} // namespace

void FullDiskTest::command_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<qint64>("room"); // beyond the store's size, or a limit below a page
    for (const auto& [name, number] : writingCommands) {
        for (const qint64 room : {qint64{-1}, qint64{0}, pageSize})
            QTest::addRow("%s, room %lld", name, static_cast<long long>(room))
                << int{number} << room;
    }
}

void FullDiskTest::command()
{
    QFETCH(int, command);
    QFETCH(qint64, room);
    TemporaryStore store;
    layOrder(store, static_cast<Command>(command));
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
    if (!ended)
        QVERIFY(after == heldAfter(static_cast<Command>(command), before));
    else
        QVERIFY(mayBeLeft(static_cast<Command>(command), before, after));
}

/// There is room for the journal and for some lines; the store itself cannot grow any further.
void FullDiskTest::linesUntilTheDiskIsFull()
{
    constexpr int most = 1000;
    TemporaryStore store;
    layOrder(store, AddLine);
    const Held before = held(store);
    int added = 0;
    {
        WorkingDay day;
        QVERIFY(day.start(store.folder()) && day.openOrder() && day.chooseSeries());
        const FileSizeLimit limit(QFileInfo(store.path()).size() + pageSize);
        while (day.addLine() && added < most)
            ++added;
        QVERIFY2(day.endedWithABox(), qPrintable(day.lastBox()));
        QVERIFY2(day.lastBox().startsWith(u"Run-time error '3043':"_s) ||
                     day.lastBox().startsWith(u"Run-time error '3026':"_s),
                 qPrintable(day.lastBox()));
    }
    tried_ += added + 1;
    ++ended_;
    QVERIFY(added > 0 && added < most);
    QCOMPARE(storetools::checkStore(store.path()), QStringList());
    const int stored = held(store).lines - before.lines;
    QVERIFY(stored == added || stored == added + 1);
}

void FullDiskTest::cleanupTestCase()
{
    reliability::writeFigures(u"full_disk"_s,
                              {{u"commands on a full disk"_s, QString::number(tried_)},
                               {u"commands ended with their box"_s, QString::number(ended_)}});
}

ZOMREL_QTEST_MAIN(FullDiskTest)
#include "full_disk_test.moc"
