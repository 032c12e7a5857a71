#include "shell/start.h"

#include "platform/dao/database.h"
#include "shell/base/module1.h"
#include "support/doors.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class StartTest : public QObject
{
    Q_OBJECT

private slots:
    void start_opensAMaximisedEmptyFrame();
    void completeStore_isNotChanged();
    void olderStore_getsItsMissingField();
    void missingStore_endsTheProgram();
    void otherFile_endsTheProgramUnchanged_data();
    void otherFile_endsTheProgramUnchanged();
    void lockedStore_endsTheProgram();
    void workingDirectory_isIgnored();

private:
    void expectFailure(const QString& folder, int number);
};

namespace {

QByteArray contents(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

} // namespace

/// Expects that the start shows the run-time error box, ends with exit status 1, and never shows a
/// window.
void StartTest::expectFailure(const QString& folder, int number)
{
    testsupport::RecordedBoxes boxes;
    const testsupport::RecordedEnd end;
    boxes.answer(runtime::vbOK);
    const auto window = shell::openMainWindow(folder);
    QVERIFY(window == nullptr);
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    const auto& box = boxes.shown().front();
    QVERIFY2(box.text.startsWith(u"Run-time error '%1':\n\n"_s.arg(number)), qPrintable(box.text));
    QCOMPARE(box.title, u"ProjZomrel"_s);
    QCOMPARE(box.flags, 16);
    QCOMPARE(end.exitStatus(), std::optional(1));
    for (const QWidget* each : QApplication::topLevelWidgets())
        QVERIFY(!each->isVisible());
}

void StartTest::start_opensAMaximisedEmptyFrame()
{
    const testsupport::TemporaryStore store;
    const testsupport::RecordedBoxes boxes;
    const auto window = shell::openMainWindow(store.folder());
    QVERIFY(window != nullptr);
    QVERIFY(window->isVisible());
    QVERIFY(window->isMaximized());
    QVERIFY(boxes.shown().empty());
    for (const QWidget* each : QApplication::topLevelWidgets())
        QVERIFY(each == window.get() || !each->isVisible());
}

void StartTest::completeStore_isNotChanged()
{
    const testsupport::TemporaryStore store(testsupport::TemporaryStore::Contents::Delivered);
    const QByteArray before = contents(store.path());
    QVERIFY(!before.isEmpty());
    const auto window = shell::openMainWindow(store.folder());
    QCOMPARE(contents(store.path()), before);
}

void StartTest::olderStore_getsItsMissingField()
{
    testsupport::TemporaryStore store;
    store.execute(u"ALTER TABLE Orders DROP COLUMN CustomerTel"_s);
    const auto window = shell::openMainWindow(store.folder());
    QVERIFY(window != nullptr);
    store.execute(u"SELECT CustomerTel FROM Orders"_s);
}

void StartTest::missingStore_endsTheProgram()
{
    const QTemporaryDir folder;
    expectFailure(folder.path(), 3024);
    QVERIFY(QDir(folder.path()).isEmpty());
}

void StartTest::otherFile_endsTheProgramUnchanged_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("text") << QByteArray("no store at all\n").repeated(500);
}

void StartTest::otherFile_endsTheProgramUnchanged()
{
    QFETCH(QByteArray, content);
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"Aluminium.mdb"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    expectFailure(folder.path(), 3343);
    QCOMPARE(contents(file.fileName()), content);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"Aluminium.mdb"_s});
}

void StartTest::lockedStore_endsTheProgram()
{
    if (testsupport::isOnServer())
        QSKIP("a server's store is never locked as a whole");
    testsupport::TemporaryStore store;
    store.execute(u"BEGIN EXCLUSIVE"_s);
    expectFailure(store.folder(), 3260);
    store.execute(u"ROLLBACK"_s);
}

void StartTest::workingDirectory_isIgnored()
{
    const QTemporaryDir elsewhere;
    const QString former = QDir::currentPath();
    QVERIFY(QDir::setCurrent(elsewhere.path()));
    const QString folder = QCoreApplication::applicationDirPath();
    // The working directory of the test contains no store.
    expectFailure(folder, 3024);
    QDir::setCurrent(former);
    QCOMPARE(Module1::StorePath, QDir::toNativeSeparators(folder + u"/Aluminium.mdb"_s));
    QCOMPARE(Module1::LogoPath, QDir::toNativeSeparators(folder + u"/Logo.jpg"_s));
}

ZOMREL_QTEST_MAIN(StartTest)
#include "start_test.moc"
