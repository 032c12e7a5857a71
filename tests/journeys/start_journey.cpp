#include "journeys/program.h"

#include <QFile>
#include <QSqlQuery>
#include <QTest>

using namespace Qt::StringLiterals;
using journeys::Box;
using journeys::Program;

/// How the program starts and ends, as its user meets it.
class StartJourney : public QObject
{
    Q_OBJECT

private slots:
    void showsTheEmptyFrame();
    void endsByTheExitButton();
    void refusesAMissingStore();
    void refusesAFileThatIsNoStore();
    void refusesALockedStore();
    void upgradesAnOlderOrdersTable();
};

void StartJourney::showsTheEmptyFrame()
{
    Program program;
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
    QCOMPARE(program.property(u"MDIZomrel"_s, u"windowTitle"_s).toString(),
             u"זומרל - גרסה: 2.1.60"_s);
    QVERIFY(!program.isVisible(u"FrOrder"_s));
    QCOMPARE(program.scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 0);
}

void StartJourney::endsByTheExitButton()
{
    Program program;
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
    program.clickTag(u"Exit"_s);
    QCOMPARE(program.exitStatus(), 0);
}

void StartJourney::refusesAMissingStore()
{
    Program program(false);
    program.start();
    const Box box = program.waitForBox();
    QVERIFY2(box.text.startsWith(u"Run-time error '3024':\n\n"_s), qPrintable(box.text));
    QCOMPARE(box.title, u"ProjZomrel"_s);
    QVERIFY(!program.isVisible(u"MDIZomrel"_s));
    program.press(Qt::Key_Return);
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(!QFile::exists(program.storePath()));
}

void StartJourney::refusesAFileThatIsNoStore()
{
    const QByteArray contents("This is a letter and no store.\n");
    Program program(false);
    QFile file(program.storePath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(contents);
    file.close();

    program.start();
    const Box box = program.waitForBox();
    QVERIFY2(box.text.startsWith(u"Run-time error '3343':\n\n"_s), qPrintable(box.text));
    program.press(Qt::Key_Return);
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), contents);
}

void StartJourney::refusesALockedStore()
{
    Program program;
    QSqlDatabase station = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"station"_s);
    station.setDatabaseName(program.storePath());
    QVERIFY(station.open());
    QVERIFY(QSqlQuery(station).exec(u"BEGIN EXCLUSIVE"_s));
    program.start();
    const Box box = program.waitForBox();
    QVERIFY2(box.text.startsWith(u"Run-time error '3260':\n\n"_s), qPrintable(box.text));
    program.press(Qt::Key_Return);
    QCOMPARE(program.exitStatus(), 1);
    QVERIFY(QSqlQuery(station).exec(u"ROLLBACK"_s));
    station = QSqlDatabase();
    QSqlDatabase::removeDatabase(u"station"_s);
}

void StartJourney::upgradesAnOlderOrdersTable()
{
    Program program;
    program.execute(u"ALTER TABLE Orders DROP COLUMN CustomerTel"_s);
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
    QCOMPARE(
        program.scalar(u"SELECT type FROM pragma_table_info('Orders') WHERE name = 'CustomerTel'"_s)
            .toString(),
        u"TEXT(20)"_s);
}

QTEST_GUILESS_MAIN(StartJourney)
#include "start_journey.moc"
