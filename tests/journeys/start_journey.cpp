#include "journeys/order_steps.h"
#include "journeys/program.h"
#include "platform/dao/database.h"
#include "platform/dao/engine/link.h"
#include "support/plain_sql.h"
#include "support/temporary_store.h"
#include "support/throwaway_server.h"
#include "support/widgets.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;
using journeys::Box;
using journeys::Program;

/// Journeys of starting and ending the program.
class StartJourney : public QObject
{
    Q_OBJECT

private slots:
    void start_showsTheEmptyFrame();
    void exitButton_endsTheProgram();
    void missingStore_endsTheProgram();
    void otherFile_endsTheProgram();
    void lockedStore_endsTheProgram();
    void linkToAFile_leavesTheProgramsFolderUnchanged();
    void linkToNowhere_endsTheProgram_data();
    void linkToNowhere_endsTheProgram();
    void databaseWithoutAStore_endsTheProgram();
    void olderOrdersTable_isUpgraded();

private:
    static QStringList filesBeside(const Program& program);
    static void expectRefusal(Program& program, int number, const QStringList& told);
};

void StartJourney::start_showsTheEmptyFrame()
{
    Program program;
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
    QCOMPARE(program.property(u"MDIZomrel"_s, u"windowTitle"_s).toString(),
             u"זומרל - גרסה: 2.1.60"_s);
    QVERIFY(!program.isVisible(u"FrOrder"_s));
    QCOMPARE(program.scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 0);
}

void StartJourney::exitButton_endsTheProgram()
{
    Program program;
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
    program.clickTag(u"Exit"_s);
    QCOMPARE(program.exitStatus(), 0);
}

void StartJourney::missingStore_endsTheProgram()
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

void StartJourney::otherFile_endsTheProgram()
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

void StartJourney::lockedStore_endsTheProgram()
{
    if (testsupport::isOnServer())
        QSKIP("a server's store is never locked as a whole");
    Program program;
    testsupport::PlainSql station(program.storePath());
    station.rows(u"BEGIN EXCLUSIVE"_s);
    program.start();
    const Box box = program.waitForBox();
    QVERIFY2(box.text.startsWith(u"Run-time error '3260':\n\n"_s), qPrintable(box.text));
    program.press(Qt::Key_Return);
    QCOMPARE(program.exitStatus(), 1);
    station.rows(u"ROLLBACK"_s);
}

/// Returns the names of the program's file and of all files beside it.
QStringList StartJourney::filesBeside(const Program& program)
{
    return QDir(program.folder()).entryList(QDir::Files | QDir::Hidden);
}

/// The program is in a folder that stations cannot write to, and the store is in another one.
void StartJourney::linkToAFile_leavesTheProgramsFolderUnchanged()
{
    if (testsupport::isOnServer())
        QSKIP("applies only to a store that is one file");
    testsupport::TemporaryStore store(testsupport::TemporaryStore::Contents::Delivered);
    Program program(false);
    QFile file(program.storePath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(dao::linkText(dao::Link::toFile(store.path())));
    file.close();
    const QStringList files = filesBeside(program);
    const QFile::Permissions before = QFile::permissions(program.folder());
    QVERIFY(QFile::setPermissions(program.folder(), QFile::ReadOwner | QFile::ExeOwner));
    program.start();
    journeys::openOrder(program);
    QVERIFY(program.waitForText(u"LabelOrderNum"_s, u"1"_s));
    QCOMPARE(store.scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 1);
    QCOMPARE(filesBeside(program), files);
    QVERIFY(QFile::setPermissions(program.folder(), before)); // so that it can be removed
}

void StartJourney::linkToNowhere_endsTheProgram_data()
{
    QTest::addColumn<QByteArray>("link");
    QTest::addColumn<int>("number");
    QTest::addColumn<QStringList>("told");
    const QByteArray first("Zomrel store link 1\n");
    const QByteArray rest("database = zomrel\nuser = station\ntls = prefer\n");
    QTest::newRow("damaged") << first + "server = h\nport = 0\n" + rest << 3343
                             << QStringList{u"'0' is no port"_s, u"Aluminium.mdb"_s};
    QTest::newRow("a password") << first + "server = h\nport = 5432\npassword = x\n" + rest << 3343
                                << QStringList{u"password"_s, u"Aluminium.mdb"_s};
    QTest::newRow("a file that is missing")
        << first + "file = /no/such/folder/Aluminium.mdb\n"
        << 3024 << QStringList{u"Could not find file '/no/such/folder/Aluminium.mdb'."_s};
    QTest::newRow("nothing there") << first + "server = 127.0.0.1\nport = 1\n" + rest << 3151
                                   << QStringList{u"127.0.0.1:1"_s, u"Connection refused"_s};
#ifdef Q_OS_UNIX // A server's folder is that of its Unix socket.
    QTest::newRow("no such folder")
        << first + "server = /no/such/folder\nport = 5432\n" + rest << 3151
        << QStringList{u"/no/such/folder:5432"_s, u"No such file"_s};
#endif
}

void StartJourney::linkToNowhere_endsTheProgram()
{
    QFETCH(const QByteArray, link);
    QFETCH(const int, number);
    QFETCH(const QStringList, told);
    Program program(false);
    QFile file(program.storePath());
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(link);
    file.close();
    const QStringList before = filesBeside(program);
    expectRefusal(program, number, told);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), link);
    QCOMPARE(filesBeside(program), before);
}

void StartJourney::databaseWithoutAStore_endsTheProgram()
{
    if (!testsupport::isOnServer())
        QSKIP("applies only to a server");
    const testsupport::ThrowawayDatabase database;
    Program program(false);
    database.writeLink(program.storePath());
    testsupport::PlainSql store(program.storePath());
    store.exactly(u"CREATE TABLE notes (text text)"_s);
    expectRefusal(program, 3343, {database.link().place()});
    QCOMPARE(store
                 .scalar(u"SELECT count(*) FROM pg_class WHERE relnamespace = "
                         "'public'::regnamespace AND relkind = 'r'"_s)
                 .toInt(),
             1);
}

/// Expects a start that shows one run-time error box with these words, opens no window, and ends
/// with exit status 1.
void StartJourney::expectRefusal(Program& program, int number, const QStringList& told)
{
    program.start();
    const Box box = program.waitForBox();
    QVERIFY2(box.text.startsWith(u"Run-time error '%1':\n\n"_s.arg(number)), qPrintable(box.text));
    for (const QString& each : told)
        QVERIFY2(box.text.contains(each), qPrintable(box.text));
    QCOMPARE(box.title, u"ProjZomrel"_s);
    QVERIFY(!program.isVisible(u"MDIZomrel"_s));
    program.press(Qt::Key_Return);
    QCOMPARE(program.exitStatus(), 1);
}

void StartJourney::olderOrdersTable_isUpgraded()
{
    Program program;
    program.execute(u"ALTER TABLE Orders DROP COLUMN CustomerTel"_s);
    program.start();
    QVERIFY(program.waitForWindow(u"MDIZomrel"_s));
    const auto database = dao::DBEngine::instance().OpenDatabase(program.storePath());
    const dao::FieldDef added = database->tableDefs()(u"Orders"_s).Fields()(u"CustomerTel"_s);
    QCOMPARE(added.Type(), dao::dbText);
    QCOMPARE(added.Size(), 20);
}

ZOMREL_GUILESS_QTEST_MAIN(StartJourney)
#include "start_journey.moc"
