#include "catalogue/fr_color_kind.h"
#include "reliability/bad/writing_commands.h"
#include "reliability/figures.h"
#include "support/plain_sql.h"
#include "support/small_disk.h"
#include "support/temporary_store.h"
#include "support/throwaway_server.h"
#include "tools/store/checker.h"

#include <QFileInfo>

#include <sys/resource.h>

#include <csignal>
#include <limits>
#include <memory>
#include <optional>

using namespace Qt::StringLiterals;
using testsupport::PlainSql;
using testsupport::SmallDisk;
using testsupport::TemporaryStore;
using testsupport::ThrowawayServer;

/// Tests of a full disk during a write. The command is done completely, or it ends the program with
/// an error box, or its grid shows a message and keeps the typed text. Everything that was
/// acknowledged earlier is stored.
class FullDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void fullDisk_commandIsCompleteOrRefused_data();
    void fullDisk_commandIsCompleteOrRefused();
    void rowsUntilTheDiskIsFull_areAllStored_data();
    void rowsUntilTheDiskIsFull_areAllStored();
    void cleanupTestCase();

private:
    static void expectEnd(WorkingDay& day);
    static void repeatInGrid(WorkingDay& day, Command command, TemporaryStore& store,
                             const AllRows& done);

    std::unique_ptr<SmallDisk> disk_; ///< The server's disk; null for embedded stores.
    std::unique_ptr<ThrowawayServer> server_;
    int tried_ = 0;
    int ended_ = 0;
};

namespace {

/// Limits the size of every file, including journals, while it exists.
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
constexpr qint64 diskSize = 192 << 20;
constexpr qint64 journalFile = 1 << 20;

/// Returns the free bytes in the server's current WAL file.
qint64 journalRoom(PlainSql& sql)
{
    const QString used = u"SELECT (pg_current_wal_insert_lsn() - '0/0') % %1"_s.arg(journalFile);
    return journalFile - sql.exactly(used).first().first().toLongLong();
}

void writeJournal(PlainSql& sql, qint64 bytes)
{
    sql.exactly(u"SELECT pg_logical_emit_message(false, '', repeat('x', %1))"_s.arg(bytes));
}

/// Writes until the server uses the last of its existing WAL files.
void leaveJournalFiles(PlainSql& sql)
{
    const QString next = u"SELECT count(*) FROM pg_ls_waldir() "
                         "WHERE name > pg_walfile_name(pg_current_wal_insert_lsn())"_s;
    do {
        sql.exactly(u"SELECT pg_switch_wal()"_s);
        writeJournal(sql, 1);
        sql.exactly(u"CHECKPOINT"_s);
    } while (sql.exactly(next).first().first().toInt() > 0);
}

/// While it exists, the server's disk is full except for `room` bytes in its WAL. The server shuts
/// down if that is not enough. The destructor starts it again.
class FullServer
{
public:
    FullServer(ThrowawayServer& server, const SmallDisk& disk, TemporaryStore& store, qint64 room)
        : server_(server), disk_(disk), store_(store)
    {
        // The smallest amount by which the WAL grows.
        constexpr qint64 smallest = 64;
        PlainSql sql(store_.path());
        leaveJournalFiles(sql);
        if (room + 2 * pageSize < journalRoom(sql))
            writeJournal(sql, journalRoom(sql) - room - 2 * pageSize);
        while (room + smallest < journalRoom(sql))
            writeJournal(sql, 1);
        disk_.fill();
    }
    ~FullServer()
    {
        disk_.empty();
        server_.endAtOnce();
        server_.start();
        store_.reconnect();
    }
    FullServer(const FullServer&) = delete;
    FullServer& operator=(const FullServer&) = delete;

private:
    ThrowawayServer& server_;
    const SmallDisk& disk_;
    TemporaryStore& store_;
};

/// Creates the store with room for new rows in its tables. On a server, each added row also stores
/// a token. The table of tokens gets its first page here, as in every store to which a row has ever
/// been added; otherwise the first row would be refused although it fits into its own table.
void layUsedStore(TemporaryStore& store, Command command)
{
    layStore(store, command);
    if (testsupport::isOnServer())
        PlainSql(store.path())
            .exactly(u"INSERT INTO zomrel_log.answers (token) VALUES (gen_random_uuid())"_s);
}

/// Returns true for the error box of a server that has shut down.
bool tellsOfTheServer(const QString& box)
{
    return box.startsWith(u"Run-time error '3146':"_s) ||
           box.startsWith(u"Run-time error '3151':"_s);
}

/// A restarted server's counters may skip values. Returns the rows renumbered without these gaps.
AllRows withoutGaps(const AllRows& rows)
{
    if (!testsupport::isOnServer())
        return rows;
    AllRows anew;
    for (const auto& [table, all] : rows.asKeyValueRange()) {
        for (const QVariantList& row : all) {
            const int number = int(anew[table].size()) + 1;
            anew[table].insert(number, row.mid(1));
        }
    }
    return anew;
}

/// Returns true if the last message box is the grid's message that the row could not be written.
bool isRefused(WorkingDay& day)
{
    return day.lastBox().startsWith(u"השורה לא נ"_s) && day.boxes.takeUnexpected().size() == 1;
}

} // namespace

void FullDiskTest::initTestCase()
{
    if (!testsupport::isOnServer())
        return;
    disk_ = std::make_unique<SmallDisk>(diskSize);
    if (!disk_->isThere())
        QSKIP("filling a server's disk needs the right to mount one");
    server_ = std::make_unique<ThrowawayServer>(ThrowawayServer::Care::Cramped, disk_->path());
    testsupport::useServer(*server_);
}

void FullDiskTest::fullDisk_commandIsCompleteOrRefused_data()
{
    QTest::addColumn<int>("command");
    // The part of the store's size, in percent, that can be written before the disk is full.
    QTest::addColumn<qint64>("percent");
    // The number of bytes that can be written in addition to `percent`.
    QTest::addColumn<qint64>("room");
    for (const auto& [name, number] : writingCommands) {
        if (testsupport::isOnServer()) {
            QTest::addRow("%s, no journal", name) << int{number} << qint64{0} << qint64{0};
            QTest::addRow("%s, some journal", name) << int{number} << qint64{100} << qint64{500};
            continue;
        }
        // With a partial limit the journal is complete and the change stops in the middle.
        for (const qint64 percent : {0, 25, 50, 75, 100})
            QTest::addRow("%s, %lld%%", name, static_cast<long long>(percent))
                << int{number} << percent << qint64{0};
        QTest::addRow("%s, one page more", name) << int{number} << qint64{100} << pageSize;
    }
}

void FullDiskTest::fullDisk_commandIsCompleteOrRefused()
{
    QFETCH(int, command);
    QFETCH(qint64, percent);
    QFETCH(qint64, room);
    const auto what = static_cast<Command>(command);
    const AllRows done = rowsDone(what);
    TemporaryStore store;
    layUsedStore(store, what);
    const AllRows before = allRows(store);
    QVERIFY(done != before);
    const QByteArray bytes = store.contents();

    bool failed = false;
    {
        WorkingDay day;
        QVERIFY(day.start(store.folder()) && prepare(day, what));
        if (testsupport::isOnServer()) {
            const FullServer full(*server_, *disk_, store, room);
            run(day, what);
        } else {
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
        QVERIFY(withoutGaps(after) == withoutGaps(done));
    else
        QVERIFY(mayBeLeft(what, before, done, after));
    if (failed && after == before)
        QCOMPARE(store.contents(), bytes);
}

/// Expects that the program has ended with the matching error box.
void FullDiskTest::expectEnd(WorkingDay& day)
{
    QVERIFY2(day.endedWithABox(), qPrintable(day.lastBox()));
    QVERIFY2(day.lastBox().startsWith(u"Run-time error '3043':"_s) ||
                 day.lastBox().startsWith(u"Run-time error '3026':"_s) ||
                 (testsupport::isOnServer() && tellsOfTheServer(day.lastBox())),
             qPrintable(day.lastBox()));
}

/// Expects the grid's message and no change, then repeats the command with free space.
void FullDiskTest::repeatInGrid(WorkingDay& day, Command command, TemporaryStore& store,
                                const AllRows& done)
{
    QVERIFY2(day.lastBox().endsWith(u"אין די מקום בדיסק."_s) ||
                 day.lastBox().contains(u"אין די מקום בדיסק.\n"_s) ||
                 day.lastBox().contains(u"הגישה לדיסק או לרשת נכשלה."_s) ||
                 day.lastBox().contains(u"אין קשר לשרת הנתונים."_s),
             qPrintable(day.lastBox()));
    QVERIFY(day.goesOn() && day.child<catalogue::FrColorKind>()->isVisible());
    QVERIFY(allRows(store) != done);
    const std::size_t told = day.boxes.shown().size();
    run(day, command);
    QCOMPARE(day.boxes.shown().size(), told);
}

void FullDiskTest::rowsUntilTheDiskIsFull_areAllStored_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QString>("table");
    QTest::newRow("lines") << int{AddLine} << u"Cuts"_s;
    QTest::newRow("series") << int{AddSeries} << u"Serials"_s;
    QTest::newRow("names") << int{AddName} << u"MashkofKind"_s;
}

/// The journal and some rows fit on the disk, but the store cannot grow further.
void FullDiskTest::rowsUntilTheDiskIsFull_areAllStored()
{
    QFETCH(int, command);
    QFETCH(QString, table);
    const auto what = static_cast<Command>(command);
    constexpr int most = 1000;
    TemporaryStore store;
    layUsedStore(store, what);
    const AllRows before = allRows(store);
    int added = 0;
    {
        WorkingDay day;
        QVERIFY(day.start(store.folder()) && prepare(day, what));
        std::optional<FileSizeLimit> limit;
        if (testsupport::isOnServer()) {
            PlainSql sql(store.path());
            leaveJournalFiles(sql);
            disk_->fill();
        } else {
            limit.emplace(QFileInfo(store.path()).size() + pageSize);
        }
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
        QVERIFY2(!tellsOfTheServer(day.lastBox()), qPrintable(day.lastBox()));
    }
    if (disk_)
        disk_->empty();
    tried_ += added + 1;
    ++ended_;
    QVERIFY(added > 0 && added < most);
    QCOMPARE(storetools::checkStore(store.path()), QStringList());
    AllRows after = allRows(store);
    const qsizetype stored = after[table].size() - before[table].size();
    // A line may be stored although saving the order's details failed.
    QVERIFY(stored == added || (what == AddLine && stored == added + 1));
    for (const auto& [number, row] : before[table].asKeyValueRange())
        QCOMPARE(after[table][number], row);
}

void FullDiskTest::cleanupTestCase()
{
    if (tried_ == 0)
        return;
    reliability::writeFigures(
        u"full_disk"_s, {{u"commands on a full disk"_s, QString::number(tried_)},
                         {u"commands that ended or were refused"_s, QString::number(ended_)}});
}

ZOMREL_QTEST_MAIN(FullDiskTest)
#include "full_disk_test.moc"
