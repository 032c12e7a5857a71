#include "platform/dao/database.h"
#include "reliability/bad/working_day.h"
#include "reliability/figures.h"
#include "store/schema.h"
#include "support/plain_sql.h"
#include "support/store_harms.h"
#include "support/temporary_store.h"
#include "support/throwaway_server.h"
#include "tools/store/checker.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <map>
#include <memory>
#include <optional>
#include <stdexcept>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

namespace {

/// Timeout of one day in milliseconds; generous for a busy machine.
constexpr qint64 longest = 30000;
constexpr int pageSize = 4096;

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// Runs the program on damaged stores. It either shows an error and ends, or works. It never
/// crashes or hangs, and it never damages a file further.
class BadStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void soundStore_works();
    void missingStore_endsTheProgram();
    void folderInPlaceOfTheStore_endsTheProgram();
    void otherFile_endsTheProgram_data();
    void otherFile_endsTheProgram();
    void truncatedFile_isFoundDamaged();
    void flippedBytes_workOrEndTheProgram();
    void harm_worksOrEndsTheProgramAndIsFound_data();
    void harm_worksOrEndsTheProgramAndIsFound();
    void missingCustomerField_isAddedAtTheStart();
    void otherDatabase_endsTheProgram_data();
    void otherDatabase_endsTheProgram();

private:
    enum class Outcome { Ended, Worked };

    Outcome workOn(const QByteArray& bytes);
    Outcome workOnChanged(const QStringList& statements);
    Outcome work();
    void lay(const QByteArray& bytes);
    void laySound();
    void plant(const QStringList& statements);
    QByteArray contents() const { return store_ ? store_->contents() : contentsOf(path()); }
    QStringList findings() const { return storetools::checkStore(path()); }
    QString folder() const { return store_ ? store_->folder() : folder_->path(); }
    QString path() const { return folder() + u"/Aluminium.mdb"_s; }
    /// Returns the result of a count query, or -1 if the query fails.
    int count(const QString& query) const;
    int newLines() const
    {
        return count(u"SELECT count(*) FROM \"Cuts\" WHERE \"Order_Num\" = 3"_s);
    }
    int newOrders() const
    {
        return count(u"SELECT count(*) FROM \"Orders\" WHERE \"Number\" = 3"_s);
    }

    std::map<Outcome, int> days_;
    QByteArray sound_;
    std::optional<QTemporaryDir> folder_; ///< The folder of the damaged file.
    /// A store that was changed by SQL statements; null for a damaged file.
    std::unique_ptr<TemporaryStore> store_;
    QString box_; ///< The text of the last message box of the last day.
};

/// Creates a delivered store with two closed orders, so that the day starts with a new order.
void BadStoreTest::laySound()
{
    folder_.reset();
    store_ = std::make_unique<TemporaryStore>(TemporaryStore::Contents::Delivered);
    store_->execute(u"BEGIN"_s);
    for (int order = 1; order <= 2; ++order) {
        store_->addOrder(order, true);
        for (int line = 1; line <= 15; ++line)
            store_->addLine(order, line);
    }
    store_->execute(u"COMMIT"_s);
}

void BadStoreTest::initTestCase()
{
    if (testsupport::isOnServer())
        return;
    laySound();
    sound_ = contents();
    QVERIFY(sound_.size() >= 16 * pageSize);
    QCOMPARE(sound_.size() % pageSize, 0);
}

void BadStoreTest::cleanupTestCase()
{
    reliability::writeFigures(u"bad_store"_s, {{u"damaged stores that ended the program"_s,
                                                QString::number(days_[Outcome::Ended])},
                                               {u"damaged stores that the program worked with"_s,
                                                QString::number(days_[Outcome::Worked])}});
}

void BadStoreTest::lay(const QByteArray& bytes)
{
    store_.reset();
    folder_.emplace();
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

int BadStoreTest::count(const QString& query) const
{
    try {
        testsupport::PlainSql sql(path());
        return sql.exactly(query).first().first().toInt();
    } catch (const std::runtime_error&) {
        return -1;
    }
}

BadStoreTest::Outcome BadStoreTest::workOn(const QByteArray& damaged)
{
    lay(damaged);
    return work();
}

BadStoreTest::Outcome BadStoreTest::work()
{
    const QByteArray before = contents();
    QElapsedTimer clock;
    clock.start();
    bool started = false;
    bool opened = false;
    bool worked = false;
    bool ended = false;
    QByteArray atStart;
    {
        WorkingDay day;
        started = day.start(folder());
        // The start may have added missing fields to Orders.
        atStart = contents();
        opened = started && day.openOrder();
        worked = opened && day.chooseSeries() && day.addLine();
        ended = day.endedWithABox();
        box_ = day.lastBox();
    }
    if (clock.elapsed() > longest)
        QTest::qFail("the working day exceeded its timeout", __FILE__, __LINE__);
    if (!started && contents() != before)
        QTest::qFail("a store that could not be opened was changed", __FILE__, __LINE__);
    // The order's number is stored before the form is loaded, so it may exist without a line.
    if (!opened && contents() != atStart && newOrders() != 1)
        QTest::qFail("a failed change left data behind", __FILE__, __LINE__);
    if (worked && newLines() != 1)
        QTest::qFail("the added line is not stored", __FILE__, __LINE__);
    if (!worked && !ended)
        QTest::qFail("neither worked nor ended with an error box: " + box_.toUtf8(), __FILE__,
                     __LINE__);
    const Outcome outcome = worked ? Outcome::Worked : Outcome::Ended;
    ++days_[outcome];
    return outcome;
}

void BadStoreTest::soundStore_works()
{
    QCOMPARE(workOnChanged({}), Outcome::Worked);
    QCOMPARE(findings(), QStringList());
}

void BadStoreTest::missingStore_endsTheProgram()
{
    store_.reset();
    folder_.emplace();
    WorkingDay day;
    QVERIFY(!day.start(folder_->path()));
    QVERIFY(day.endedWithABox());
    QVERIFY(day.lastBox().startsWith(u"Run-time error '3024':"_s));
    QVERIFY(QDir(folder_->path()).isEmpty());
    QVERIFY(!findings().isEmpty());
}

void BadStoreTest::folderInPlaceOfTheStore_endsTheProgram()
{
    store_.reset();
    folder_.emplace();
    QVERIFY(QDir().mkdir(path()));
    WorkingDay day;
    QVERIFY(!day.start(folder_->path()));
    QVERIFY2(day.endedWithABox(), qPrintable(day.lastBox()));
    QVERIFY(QDir(path()).isEmpty());
    QVERIFY(!findings().isEmpty());
}

void BadStoreTest::otherFile_endsTheProgram_data()
{
    if (testsupport::isOnServer())
        QSKIP("applies only to an embedded file");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("one byte") << QByteArray("S");
    QTest::newRow("zeroes") << QByteArray(8192, '\0');
    QTest::newRow("text") << QByteArray("order;width;height\n").repeated(1000);
    QByteArray random(65536, Qt::Uninitialized);
    QRandomGenerator generator(7);
    for (char& each : random)
        each = static_cast<char>(generator.bounded(256));
    QTest::newRow("random") << random;
    QTest::newRow("signature and nothing") << QByteArray("SQLite format 3\0", 16);
    QTest::newRow("signature and random") << QByteArray("SQLite format 3\0", 16) + random;
}

void BadStoreTest::otherFile_endsTheProgram()
{
    QFETCH(QByteArray, content);
    QCOMPARE(workOn(content), Outcome::Ended);
    QCOMPARE(contents(), content);
    QCOMPARE(QDir(folder_->path()).entryList(QDir::Files), QStringList{u"Aluminium.mdb"_s});
    QVERIFY(!findings().isEmpty());
}

void BadStoreTest::truncatedFile_isFoundDamaged()
{
    if (testsupport::isOnServer())
        QSKIP("a server protects its own files");
    for (int part = 0; part < 16; ++part) {
        const QByteArray cut = sound_.left(sound_.size() * part / 16);
        lay(cut);
        QVERIFY2(!findings().isEmpty(), qPrintable(u"part %1 is found sound"_s.arg(part)));
        workOn(cut);
        QVERIFY2(!findings().isEmpty(), qPrintable(u"part %1: %2"_s.arg(part).arg(box_)));
    }
}

/// The first byte of a page is its type, the next bytes locate its rows, and the end of the page
/// holds rows.
void BadStoreTest::flippedBytes_workOrEndTheProgram()
{
    if (testsupport::isOnServer())
        QSKIP("a server protects its own files");
    std::map<Outcome, int> outcomes;
    for (qsizetype page = 0; page < sound_.size(); page += pageSize) {
        for (const qsizetype offset :
             {qsizetype{0}, qsizetype{5}, qsizetype{9}, qsizetype{pageSize - 30}}) {
            QByteArray flipped = sound_;
            const qsizetype place = page + offset + (page == 0 && offset < 100 ? 100 : 0);
            flipped[place] = static_cast<char>(flipped[place] ^ 0xff);
            lay(flipped);
            const QStringList before = findings();
            QCOMPARE(contents(), flipped);
            const Outcome outcome = workOn(flipped);
            ++outcomes[outcome];
            const QString where =
                u"page %1, offset %2: %3"_s.arg(page / pageSize + 1).arg(offset).arg(box_);
            if (outcome == Outcome::Ended)
                QVERIFY2(!before.isEmpty(), qPrintable(where));
            else if (before.isEmpty())
                QVERIFY2(findings().isEmpty(), qPrintable(where + findings().join(u'\n')));
        }
    }
    QVERIFY(outcomes[Outcome::Ended] > 0);
    QVERIFY(outcomes[Outcome::Worked] > 0);
}

/// Lays a sound store and changes it.
void BadStoreTest::plant(const QStringList& statements)
{
    laySound();
    testsupport::PlainSql sql(path());
    for (const QString& statement : statements)
        sql.exactly(statement);
}

BadStoreTest::Outcome BadStoreTest::workOnChanged(const QStringList& statements)
{
    plant(statements);
    return work();
}

void BadStoreTest::harm_worksOrEndsTheProgramAndIsFound_data()
{
    QTest::addColumn<QStringList>("statements");
    QTest::addColumn<bool>("ends");
    for (const testsupport::StoreHarm& each : testsupport::storeHarms())
        QTest::newRow(each.name) << each.statements << each.endsTheProgram;
}

void BadStoreTest::harm_worksOrEndsTheProgramAndIsFound()
{
    QFETCH(QStringList, statements);
    QFETCH(bool, ends);
    plant(statements);
    QVERIFY(!findings().isEmpty());
    const Outcome outcome = work();
    if (ends) {
        QCOMPARE(outcome, Outcome::Ended);
        QVERIFY2(box_.startsWith(u"Run-time error '"_s), qPrintable(box_));
    }
}

/// Missing fields of Orders are added at the start.
void BadStoreTest::missingCustomerField_isAddedAtTheStart()
{
    for (const QString& field : {u"CustomerName"_s, u"CustomerTel"_s, u"CustomerAddress"_s}) {
        QCOMPARE(workOnChanged({u"ALTER TABLE \"Orders\" DROP COLUMN \"%1\""_s.arg(field)}),
                 Outcome::Worked);
        QCOMPARE(findings(), QStringList());
    }
}

void BadStoreTest::otherDatabase_endsTheProgram_data()
{
    QTest::addColumn<QStringList>("statements");
    QStringList empty;
    for (const store::TableSchema& each : store::schema())
        empty.append(u"DROP TABLE \"%1\""_s.arg(each.name));
    const QStringList foreign{
        u"CREATE TABLE \"Orders\" (id integer PRIMARY KEY, customer text, total numeric)"_s,
        u"INSERT INTO \"Orders\" VALUES (1, 'x', 12.5)"_s,
        u"CREATE TABLE \"Invoices\" (id integer PRIMARY KEY)"_s};
    QTest::newRow("empty") << empty;
    QTest::newRow("of another program") << empty + foreign;
    if (!testsupport::isOnServer())
        return;
    for (const QString& table : {u"Orders"_s, u"Cuts"_s, u"Serials"_s, u"GlassKind"_s})
        QTest::addRow("%s without row numbers", qPrintable(table))
            << QStringList(u"ALTER TABLE \"%1\" DROP COLUMN zomrel_row CASCADE"_s.arg(table));
}

/// Opens a database that is not a store or was altered afterwards.
void BadStoreTest::otherDatabase_endsTheProgram()
{
    QFETCH(QStringList, statements);
    QCOMPARE(workOnChanged(statements), Outcome::Ended);
    QVERIFY2(box_.startsWith(u"Run-time error '"_s), qPrintable(box_));
    QVERIFY(!findings().isEmpty());
}

ZOMREL_QTEST_MAIN(BadStoreTest)
#include "bad_store_test.moc"
