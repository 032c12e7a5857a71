#include "catalogue/fr_color_kind.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/database.h"
#include "platform/runtime/message_box.h"
#include "serials_screen.h"

#include <QSignalSpy>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::child;

/// Tests of the catalogue's forms while another station locks the store or deletes rows.
class SharedStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void lockedStore_endsTheSeriesEditor_data();
    void lockedStore_endsTheSeriesEditor();
    void editingADeletedSeries_isRecordDeleted();
    void editingWithAllSeriesDeleted_doesNothing();
    void deletingADeletedSeries_isRecordDeleted();
    void lockedStore_keepsTheTypedRow();
    void lockedStore_keepsTheDeletedRow();
    void refusedRow_leavesOtherListsUnchanged();
    void exclusiveLock_keepsBothListsUnchanged();

private:
    void expectEnded(int error) const;
    /// Locks the store as a writing station does. Other stations may read until it writes its
    /// changes to the file.
    void lock(const QString& kind = u"IMMEDIATE"_s) { stage_->store.execute(u"BEGIN "_s + kind); }
    void letGo() { stage_->store.execute(u"ROLLBACK"_s); }

    catalogue::FrColorKind& openLists();
    static controls::DBGrid* list(int index);
    static void stand(int index, int row);
    QStringList stored(const QString& table);

    std::unique_ptr<SerialsStage> stage_;
};

void SharedStoreTest::init()
{
    stage_ = std::make_unique<SerialsStage>();
    dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::milliseconds(20));
}

void SharedStoreTest::cleanup()
{
    dao::DBEngine::instance().Workspaces(0).setLockWait(std::chrono::seconds(5));
    QCOMPARE(stage_->boxes.unexpected(), QList<QString>());
    stage_.reset();
}

void SharedStoreTest::expectEnded(int error) const
{
    QCOMPARE(stage_->end.exitStatus(), 1);
    const QString text = stage_->boxes.shown().back().text;
    QVERIFY2(text.startsWith(u"Run-time error '%1':"_s.arg(error)), qPrintable(text));
}

void SharedStoreTest::lockedStore_endsTheSeriesEditor_data()
{
    QTest::addColumn<QByteArray>("command");
    for (const char* command : {"CmdAdd", "CmdUpdate", "CmdDelete"})
        QTest::newRow(command) << QByteArray(command);
}

/// Expects the run-time error box and an unchanged store.
void SharedStoreTest::lockedStore_endsTheSeriesEditor()
{
    QFETCH(QByteArray, command);
    stage_->add(u"a"_s);
    const SerialsScreen screen;
    const bool asks = command != "CmdUpdate";
    if (!asks)
        screen.press("CmdUpdate");
    screen.box(u"TextName"_s)->setText(u"changed"_s);
    lock();
    if (asks)
        stage_->boxes.answer(runtime::vbYes);
    stage_->boxes.answer(runtime::vbOK);
    screen.press(command.constData());
    letGo();
    expectEnded(3260);
    QCOMPARE(stage_->names(), QStringList(u"a"_s));
}

void SharedStoreTest::editingADeletedSeries_isRecordDeleted()
{
    stage_->add(u"a"_s);
    stage_->add(u"b"_s);
    const SerialsScreen screen;
    stage_->store.execute(u"DELETE FROM Serials WHERE Name = 'a'"_s);
    stage_->boxes.answer(runtime::vbOK);
    screen.press("CmdUpdate");
    expectEnded(3167);
    QCOMPARE(stage_->names(), QStringList(u"b"_s));
}

/// CmdUpdate reads the row count first, so with no rows left it does nothing.
void SharedStoreTest::editingWithAllSeriesDeleted_doesNothing()
{
    stage_->add(u"a"_s);
    const SerialsScreen screen;
    stage_->store.execute(u"DELETE FROM Serials"_s);
    screen.press("CmdUpdate");
    QVERIFY(!stage_->end.exitStatus());
    QVERIFY(screen.isIn(browsing));
}

void SharedStoreTest::deletingADeletedSeries_isRecordDeleted()
{
    stage_->add(u"a"_s);
    stage_->add(u"b"_s);
    const SerialsScreen screen;
    stage_->store.execute(u"DELETE FROM Serials WHERE Name = 'a'"_s);
    stage_->boxes.answer(runtime::vbYes);
    stage_->boxes.answer(runtime::vbOK);
    screen.press("CmdDelete");
    expectEnded(3167);
    QCOMPARE(stage_->names(), QStringList(u"b"_s));
}

catalogue::FrColorKind& SharedStoreTest::openLists()
{
    for (const QString& table : {u"MashkofKind"_s, u"KanafKind"_s}) {
        for (const QString& name : {u"a"_s, u"b"_s})
            stage_->store.execute(u"INSERT INTO %1 (Name) VALUES (?)"_s.arg(table), {name});
    }
    catalogue::FrColorKind& form = catalogue::frColorKind();
    form.Show();
    if (!QTest::qWaitForWindowActive(&form))
        qFatal("the form did not become active");
    return form;
}

controls::DBGrid* SharedStoreTest::list(int index)
{
    return child<controls::DBGrid>(catalogue::frColorKind(), u"DBGridKind_%1"_s.arg(index));
}

void SharedStoreTest::stand(int index, int row)
{
    const QRect cell = list(index)->visualRect(list(index)->model()->index(row, 1));
    QTest::mouseClick(list(index)->viewport(), Qt::LeftButton, {}, cell.center());
}

QStringList SharedStoreTest::stored(const QString& table)
{
    QStringList all;
    for (const QList<QVariant>& row :
         stage_->store.rows(u"SELECT Name FROM %1 ORDER BY Code"_s.arg(table)))
        all.append(row[0].toString());
    return all;
}

/// The grid shows its own message and keeps the typed row. The row is written after the lock has
/// ended.
void SharedStoreTest::lockedStore_keepsTheTypedRow()
{
    openLists();
    stand(0, 1);
    type(u"changed"_s);
    lock();
    stage_->boxes.answer(runtime::vbOK);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QTRY_COMPARE(stage_->boxes.shown().size(), 1U);
    letGo();
    QVERIFY(!stage_->end.exitStatus());
    QCOMPARE(stage_->boxes.shown().front().flags, runtime::refusalFlags);
    QVERIFY(!stage_->boxes.shown().front().text.contains(u"Run-time"_s));
    QCOMPARE(stored(u"MashkofKind"_s), QStringList({u"a"_s, u"b"_s}));
    QCOMPARE(list(0)->currentIndex().row(), 1);
    QCOMPARE(list(0)->model()->index(1, 1).data().toString(), u"changed"_s);

    QTest::mouseClick(child<QPushButton>(catalogue::frColorKind(), u"CmdEnd"_s), Qt::LeftButton);
    QCOMPARE(stored(u"MashkofKind"_s), QStringList({u"a"_s, u"changed"_s}));
}

void SharedStoreTest::lockedStore_keepsTheDeletedRow()
{
    openLists();
    stand(1, 0);
    lock();
    stage_->boxes.answer(runtime::vbOK);
    QTest::keyClick(list(1), Qt::Key_Delete);
    QTRY_COMPARE(stage_->boxes.shown().size(), 1U);
    letGo();
    QVERIFY(!stage_->end.exitStatus());
    QCOMPARE(stored(u"KanafKind"_s), QStringList({u"a"_s, u"b"_s}));
    QCOMPARE(list(1)->model()->rowCount(), 3);
    QCOMPARE(list(1)->model()->index(0, 1).data().toString(), u"a"_s);
    catalogue::frColorKind().Unload();
}

/// A row that cannot be written does not affect other grids: rows left earlier are stored, and
/// typing elsewhere continues.
void SharedStoreTest::refusedRow_leavesOtherListsUnchanged()
{
    openLists();
    stand(0, 0);
    type(u"first"_s);
    stand(1, 0);
    QCOMPARE(stored(u"MashkofKind"_s), QStringList({u"first"_s, u"b"_s}));
    type(u"second"_s);
    lock();
    stage_->boxes.answer(runtime::vbOK);
    stand(0, 1);
    QTRY_COMPARE(stage_->boxes.shown().size(), 1U);
    letGo();
    QTRY_VERIFY(list(1)->hasFocus());
    QCOMPARE(list(1)->model()->index(0, 1).data().toString(), u"second"_s);
    QCOMPARE(list(0)->model()->index(0, 1).data().toString(), u"first"_s);
    QTest::mouseClick(child<QPushButton>(catalogue::frColorKind(), u"CmdEnd"_s), Qt::LeftButton);
    QCOMPARE(stored(u"MashkofKind"_s), QStringList({u"first"_s, u"b"_s}));
    QCOMPARE(stored(u"KanafKind"_s), QStringList({u"second"_s, u"b"_s}));
}

/// With an exclusive lock even reading fails. Both grids show a message and keep their contents.
void SharedStoreTest::exclusiveLock_keepsBothListsUnchanged()
{
    openLists();
    stand(1, 0);
    type(u"typed"_s);
    lock(u"EXCLUSIVE"_s);
    stage_->boxes.answer(runtime::vbOK);
    stage_->boxes.answer(runtime::vbOK);
    stand(0, 1);
    QTRY_COMPARE(stage_->boxes.shown().size(), 2U);
    letGo();
    QVERIFY(!stage_->end.exitStatus());
    QCOMPARE(list(0)->currentIndex().row(), 0);
    QCOMPARE(list(1)->model()->index(0, 1).data().toString(), u"typed"_s);
    stand(0, 1);
    QCOMPARE(list(0)->currentIndex().row(), 1);
    QTest::mouseClick(child<QPushButton>(catalogue::frColorKind(), u"CmdEnd"_s), Qt::LeftButton);
    QCOMPARE(stored(u"KanafKind"_s), QStringList({u"typed"_s, u"b"_s}));
}

ZOMREL_QTEST_MAIN(SharedStoreTest)
#include "shared_store_test.moc"
