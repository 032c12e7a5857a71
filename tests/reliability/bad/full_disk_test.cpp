#include "catalogue/fr_color_kind.h"
#include "reliability/bad/writing_commands.h"
#include "reliability/figures.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"

#include <QFile>
#include <QFileInfo>

#include <sys/resource.h>

#include <csignal>
#include <limits>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

/// The disk takes no more while the program writes: the command is done in full, or it ends the
/// program with its box, or the grid that it was given in says so and keeps what was typed; what
/// was acknowledged before is there.
class FullDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void command_data();
    void command();
    void rowsUntilTheDiskIsFull_data();
    void rowsUntilTheDiskIsFull();
    void cleanupTestCase();

private:
    static void expectEnd(const WorkingDay& day);
    static void repeatInGrid(WorkingDay& day, Command command, TemporaryStore& store,
                             const AllRows& done);

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

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool isRefused(const WorkingDay& day)
{
    return day.lastBox().startsWith(u"השורה לא נ"_s);
}

} // namespace

void FullDiskTest::command_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<qint64>("percent"); // how much of the store can be written again
    QTest::addColumn<qint64>("room");    // and how much can be written behind it
    for (const auto& [name, number] : writingCommands) {
        // Where a part can be, the journal is whole and the change stops in its middle.
        for (const qint64 percent : {0, 25, 50, 75, 100})
            QTest::addRow("%s, %lld%%", name, static_cast<long long>(percent))
                << int{number} << percent << qint64{0};
        QTest::addRow("%s, one page more", name) << int{number} << qint64{100} << pageSize;
    }
}

void FullDiskTest::command()
{
    QFETCH(int, command);
    QFETCH(qint64, percent);
    QFETCH(qint64, room);
    const auto what = static_cast<Command>(command);
    const AllRows done = rowsDone(what);
    TemporaryStore store;
    layStore(store, what);
    const AllRows before = allRows(store);
    QVERIFY(done != before);
    const QByteArray bytes = contentsOf(store.path());

    bool failed = false;
    {
        WorkingDay day;
        QVERIFY(day.start(store.folder()) && prepare(day, what));
        {
            const FileSizeLimit limit(QFileInfo(store.path()).size() * percent / 100 + room);
            run(day, what);
        }
        failed = isInGrid(what) ? isRefused(day) : !day.goesOn();
        ++tried_;
        ended_ += failed ? 1 : 0;
        if (failed && isInGrid(what))
            repeatInGrid(day, what, store, done);
        else if (failed)
            expectEnd(day);
    }
    QVERIFY2(failed || percent > 0, "nothing could be written and nothing was said");
    QCOMPARE(storetools::checkStore(store.path()), QStringList());
    const AllRows after = allRows(store);
    if (!failed || isInGrid(what))
        QVERIFY(after == done);
    else
        QVERIFY(mayBeLeft(what, before, done, after));
    if (failed && after == before)
        QCOMPARE(contentsOf(store.path()), bytes);
}

/// The program has ended with the box that says why.
void FullDiskTest::expectEnd(const WorkingDay& day)
{
    QVERIFY2(day.endedWithABox(), qPrintable(day.lastBox()));
    QVERIFY2(day.lastBox().startsWith(u"Run-time error '3043':"_s) ||
                 day.lastBox().startsWith(u"Run-time error '3026':"_s),
             qPrintable(day.lastBox()));
}

/// The grid has said why, nothing is written, and the same once more is done now that there is
/// room.
void FullDiskTest::repeatInGrid(WorkingDay& day, Command command, TemporaryStore& store,
                                const AllRows& done)
{
    QVERIFY2(day.lastBox().endsWith(u"אין די מקום בדיסק."_s) ||
                 day.lastBox().contains(u"אין די מקום בדיסק.\n"_s) ||
                 day.lastBox().contains(u"הגישה לדיסק או לרשת נכשלה."_s),
             qPrintable(day.lastBox()));
    QVERIFY(day.goesOn() && day.child<catalogue::FrColorKind>()->isVisible());
    QVERIFY(allRows(store) != done);
    const std::size_t told = day.boxes.shown().size();
    run(day, command);
    QCOMPARE(day.boxes.shown().size(), told);
}

void FullDiskTest::rowsUntilTheDiskIsFull_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("table");
    QTest::newRow("lines") << int{AddLine} << u"Cuts"_s;
    QTest::newRow("series") << int{AddSeries} << u"Serials"_s;
    QTest::newRow("names") << int{AddName} << u"MashkofKind"_s;
}

/// There is room for the journal and for some rows; the store itself cannot grow any further.
void FullDiskTest::rowsUntilTheDiskIsFull()
{
    QFETCH(int, command);
    QFETCH(QString, table);
    const auto what = static_cast<Command>(command);
    constexpr int most = 1000;
    TemporaryStore store;
    layStore(store, what);
    const AllRows before = allRows(store);
    int added = 0;
    {
        WorkingDay day;
        QVERIFY(day.start(store.folder()) && prepare(day, what));
        const FileSizeLimit limit(QFileInfo(store.path()).size() + pageSize);
        bool isAdded = true;
        while (isAdded && added < most) {
            run(day, what);
            isAdded = day.goesOn() && !(isInGrid(what) && isRefused(day));
            added += isAdded ? 1 : 0;
            if (isAdded && isInGrid(what))
                prepare(day, what);
        }
        if (!isInGrid(what))
            expectEnd(day);
    }
    tried_ += added + 1;
    ++ended_;
    QVERIFY(added > 0 && added < most);
    QCOMPARE(storetools::checkStore(store.path()), QStringList());
    AllRows after = allRows(store);
    const qsizetype stored = after[table].size() - before[table].size();
    // A line whose details could not be saved any more is there by itself.
    QVERIFY(stored == added || (what == AddLine && stored == added + 1));
    for (const auto& [number, row] : before[table].asKeyValueRange())
        QCOMPARE(after[table][number], row);
}

void FullDiskTest::cleanupTestCase()
{
    reliability::writeFigures(
        u"full_disk"_s, {{u"commands on a full disk"_s, QString::number(tried_)},
                         {u"commands ended or refused with their box"_s, QString::number(ended_)}});
}

ZOMREL_QTEST_MAIN(FullDiskTest)
#include "full_disk_test.moc"
