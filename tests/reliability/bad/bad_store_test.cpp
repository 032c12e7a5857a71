#include "platform/dao/database.h"
#include "reliability/bad/working_day.h"
#include "reliability/figures.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <map>
#include <optional>

using namespace Qt::StringLiterals;
using testsupport::TemporaryStore;

/// The program at stores as no program leaves them: it says what is wrong and ends, or it works.
/// It never crashes or hangs, and never makes a damaged file worse.
class BadStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void soundStoreWorks();
    void missing();
    void aFolder();
    void noStore_data();
    void noStore();
    void truncated();
    void flippedBytes();
    void withoutATable_data();
    void withoutATable();
    void withoutAField();
    void wrongType_data();
    void wrongType();

private:
    enum class Outcome { Ended, Worked };

    Outcome workOn(const QByteArray& bytes);
    Outcome workOnChanged(const QStringList& statements);
    void lay(const QByteArray& bytes);
    QByteArray bytes() const;
    QStringList findings() const { return storetools::checkStore(path()); }
    QString path() const { return folder_->filePath(u"Aluminium.mdb"_s); }
    /// What the query counts, -1 where it cannot be asked.
    int count(const QString& query) const;
    int newLines() const { return count(u"SELECT count(*) FROM Cuts WHERE Order_Num = 3"_s); }
    int newOrders() const { return count(u"SELECT count(*) FROM Orders WHERE Number = 3"_s); }

    std::map<Outcome, int> days_;
    QByteArray sound_;
    std::optional<QTemporaryDir> folder_;
    QString box_; ///< What the last box of the last day said.
};

namespace {

constexpr qint64 longest = 30000; ///< Milliseconds that a day may last on a busy machine.
constexpr int pageSize = 4096;

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// A delivered store with two closed orders, so that the day begins with a new one.
void BadStoreTest::initTestCase()
{
    TemporaryStore store(TemporaryStore::Contents::Delivered);
    store.execute(u"BEGIN"_s);
    for (int order = 1; order <= 2; ++order) {
        store.addOrder(order, true);
        for (int line = 1; line <= 15; ++line)
            store.addLine(order, line);
    }
    store.execute(u"COMMIT"_s);
    sound_ = contentsOf(store.path());
    QVERIFY(sound_.size() >= 16 * pageSize);
    QCOMPARE(sound_.size() % pageSize, 0);
}

void BadStoreTest::cleanupTestCase()
{
    reliability::writeFigures(
        u"bad_store"_s,
        {{u"damaged stores that a day ended at"_s, QString::number(days_[Outcome::Ended])},
         {u"damaged stores that a day went on with"_s, QString::number(days_[Outcome::Worked])}});
}

void BadStoreTest::lay(const QByteArray& bytes)
{
    folder_.emplace();
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray BadStoreTest::bytes() const
{
    return contentsOf(path());
}

int BadStoreTest::count(const QString& query) const
{
    int result = -1;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"look"_s);
        database.setDatabaseName(path());
        QSqlQuery asked;
        if (database.open()) {
            asked = QSqlQuery(database);
            if (asked.exec(query) && asked.next())
                result = asked.value(0).toInt();
        }
    }
    QSqlDatabase::removeDatabase(u"look"_s);
    return result;
}

BadStoreTest::Outcome BadStoreTest::workOn(const QByteArray& damaged)
{
    lay(damaged);
    QElapsedTimer clock;
    clock.start();
    bool started = false;
    bool opened = false;
    bool worked = false;
    bool ended = false;
    QByteArray atStart;
    {
        WorkingDay day;
        started = day.start(folder_->path());
        atStart = bytes(); // fields that Orders lacked may have been added
        opened = started && day.openOrder();
        worked = opened && day.chooseSeries() && day.addLine();
        ended = day.endedWithABox();
        box_ = day.lastBox();
    }
    if (clock.elapsed() > longest)
        QTest::qFail("the day lasted too long", __FILE__, __LINE__);
    if (!started && bytes() != damaged)
        QTest::qFail("a store that did not even open was changed", __FILE__, __LINE__);
    // Its number is written before the order's form is filled.
    if (!opened && bytes() != atStart && newOrders() != 1)
        QTest::qFail("a change that failed has left something", __FILE__, __LINE__);
    if (worked && newLines() != 1)
        QTest::qFail("the line that was added is not there", __FILE__, __LINE__);
    if (!worked && !ended)
        QTest::qFail("neither worked nor ended with a box: " + box_.toUtf8(), __FILE__, __LINE__);
    const Outcome outcome = worked ? Outcome::Worked : Outcome::Ended;
    ++days_[outcome];
    return outcome;
}

void BadStoreTest::soundStoreWorks()
{
    QCOMPARE(workOn(sound_), Outcome::Worked);
    QCOMPARE(findings(), QStringList());
}

void BadStoreTest::missing()
{
    folder_.emplace();
    WorkingDay day;
    QVERIFY(!day.start(folder_->path()));
    QVERIFY(day.endedWithABox());
    QVERIFY(day.lastBox().startsWith(u"Run-time error '3024':"_s));
    QVERIFY(QDir(folder_->path()).isEmpty());
    QVERIFY(!findings().isEmpty());
}

void BadStoreTest::aFolder()
{
    folder_.emplace();
    QVERIFY(QDir().mkdir(path()));
    WorkingDay day;
    QVERIFY(!day.start(folder_->path()));
    QVERIFY2(day.endedWithABox(), qPrintable(day.lastBox()));
    QVERIFY(QDir(path()).isEmpty());
    QVERIFY(!findings().isEmpty());
}

void BadStoreTest::noStore_data()
{
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

void BadStoreTest::noStore()
{
    QFETCH(QByteArray, content);
    QCOMPARE(workOn(content), Outcome::Ended);
    QCOMPARE(bytes(), content);
    QCOMPARE(QDir(folder_->path()).entryList(QDir::Files), QStringList{u"Aluminium.mdb"_s});
    QVERIFY(!findings().isEmpty());
}

void BadStoreTest::truncated()
{
    for (int part = 0; part < 16; ++part) {
        const QByteArray cut = sound_.left(sound_.size() * part / 16);
        lay(cut);
        QVERIFY2(!findings().isEmpty(), qPrintable(u"part %1 is found sound"_s.arg(part)));
        workOn(cut);
        QVERIFY2(!findings().isEmpty(), qPrintable(u"part %1: %2"_s.arg(part).arg(box_)));
    }
}

/// The first byte of each page tells what the page is, the next ones where its rows lie, and its
/// end holds rows.
void BadStoreTest::flippedBytes()
{
    std::map<Outcome, int> outcomes;
    for (qsizetype page = 0; page < sound_.size(); page += pageSize) {
        for (const qsizetype offset :
             {qsizetype{0}, qsizetype{5}, qsizetype{9}, qsizetype{pageSize - 30}}) {
            QByteArray flipped = sound_;
            const qsizetype place = page + offset + (page == 0 && offset < 100 ? 100 : 0);
            flipped[place] = static_cast<char>(flipped[place] ^ 0xff);
            lay(flipped);
            const QStringList before = findings();
            QCOMPARE(bytes(), flipped);
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

BadStoreTest::Outcome BadStoreTest::workOnChanged(const QStringList& statements)
{
    QByteArray changed;
    {
        lay(sound_);
        {
            QSqlDatabase database = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"change"_s);
            database.setDatabaseName(path());
            database.open();
            for (const QString& statement : statements) {
                QSqlQuery query(database);
                if (!query.exec(statement))
                    QTest::qFail(qPrintable(statement + query.lastError().text()), __FILE__,
                                 __LINE__);
            }
        }
        QSqlDatabase::removeDatabase(u"change"_s);
        changed = bytes();
    }
    return workOn(changed);
}

void BadStoreTest::withoutATable_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<bool>("works");
    for (const auto& table : {u"Cuts"_s, u"Serials"_s, u"MashkofKind"_s, u"ReshetColor"_s})
        QTest::newRow(qPrintable(table)) << table << false;
    QTest::newRow("Orders") << u"Orders"_s << false; // it is made anew without an index
}

void BadStoreTest::withoutATable()
{
    QFETCH(QString, table);
    QFETCH(bool, works);
    const Outcome outcome = workOnChanged({u"DROP TABLE %1"_s.arg(table)});
    QCOMPARE(outcome == Outcome::Worked, works);
    QVERIFY2(box_.startsWith(u"Run-time error '"_s), qPrintable(box_));
    QVERIFY(!findings().isEmpty());
}

/// Each field of the tables that a line is made of. Those of Orders are added at the start.
void BadStoreTest::withoutAField()
{
    for (const auto& [table, field] :
         {std::pair(u"Cuts"_s, u"NUM"_s), std::pair(u"Cuts"_s, u"MyWidth"_s),
          std::pair(u"Cuts"_s, u"Order_Date"_s), std::pair(u"Cuts"_s, u"Name"_s),
          std::pair(u"Serials"_s, u"Kanaf_Num"_s), std::pair(u"Serials"_s, u"Name"_s),
          std::pair(u"Serials"_s, u"Sign"_s), std::pair(u"Serials"_s, u"Reshet_H"_s)}) {
        const Outcome outcome =
            workOnChanged({u"ALTER TABLE %1 DROP COLUMN \"%2\""_s.arg(table, field)});
        QVERIFY2(!findings().isEmpty(), qPrintable(field));
        QVERIFY2(outcome == Outcome::Ended || newLines() == 1, qPrintable(field));
    }
    for (const QString& field : {u"CustomerName"_s, u"CustomerTel"_s, u"CustomerAddress"_s}) {
        QCOMPARE(workOnChanged({u"ALTER TABLE Orders DROP COLUMN "_s + field}), Outcome::Worked);
        QCOMPARE(findings(), QStringList());
    }
}

void BadStoreTest::wrongType_data()
{
    QTest::addColumn<QString>("sql");
    const auto redeclared = [](const QString& table, const QString& from, const QString& to) {
        return u"UPDATE sqlite_master SET sql = replace(sql, '%1', '%2') WHERE name = '%3'"_s.arg(
            from, to, table);
    };
    QTest::newRow("date as Boolean")
        << redeclared(u"Orders"_s, u"\"Order_Date\" DATETIME"_s, u"\"Order_Date\" BOOLEAN"_s);
    QTest::newRow("number as date")
        << redeclared(u"Orders"_s, u"\"Number\" LONG"_s, u"\"Number\" DATETIME"_s);
    QTest::newRow("width as date")
        << redeclared(u"Cuts"_s, u"\"MyWidth\" DOUBLE"_s, u"\"MyWidth\" DATETIME"_s);
    QTest::newRow("line number as text")
        << redeclared(u"Cuts"_s, u"\"NUM\" LONG"_s, u"\"NUM\" TEXT(1)"_s);
    QTest::newRow("kind too short")
        << redeclared(u"Cuts"_s, u"\"Kind\" TEXT(30)"_s, u"\"Kind\" TEXT(1)"_s);
    QTest::newRow("series' name as number")
        << redeclared(u"Serials"_s, u"\"Name\" TEXT(50)"_s, u"\"Name\" LONG"_s);
    QTest::newRow("sashes as date")
        << redeclared(u"Serials"_s, u"\"Kanaf_Num\" LONG"_s, u"\"Kanaf_Num\" DATETIME"_s);
}

void BadStoreTest::wrongType()
{
    QFETCH(QString, sql);
    const Outcome outcome = workOnChanged({u"PRAGMA writable_schema = ON"_s, sql});
    QVERIFY(!findings().isEmpty());
    QVERIFY(outcome == Outcome::Ended || newLines() == 1);
}

ZOMREL_QTEST_MAIN(BadStoreTest)
#include "bad_store_test.moc"
