#include "serials_screen.h"

#include <QTableView>

#include <memory>

using namespace Qt::StringLiterals;

/// Tests of the commands on the grid's current row and of closing the series editor.
class SerialsEditingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { stage_ = std::make_unique<SerialsStage>(); }
    void cleanup();

    void updateWithAnEmptyTable_doesNothing();
    void updateTwice_editsAndSaves();
    void update_loadsTheGridsCurrentRow();
    void updateAfterCmdNew_discardsTheNewSeries();
    void editing_disablesTheGrid();
    void savingARowDeletedElsewhere_isRecordDeleted();
    void deleteAnsweredNo_deletesNothing();
    void delete_deletesTheGridsCurrentRow();
    void deleteFromAnEmptyTable_isNoCurrentRecord();
    void deletedSeries_leavesOrderLinesUnchanged();
    void cmdEndWhileEditing_discardsTheEdit();
    void cmdEndInEveryState_closesTheForm_data();
    void cmdEndInEveryState_closesTheForm();

private:
    std::unique_ptr<SerialsStage> stage_;
};

void SerialsEditingTest::cleanup()
{
    QCOMPARE(stage_->boxes.unexpected(), QList<QString>());
    stage_.reset();
}

void SerialsEditingTest::updateWithAnEmptyTable_doesNothing()
{
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    QVERIFY(screen.isIn(browsing));
    screen.press("CmdNew");
    screen.press("CmdUpdate");
    QVERIFY(screen.isIn(newSeries));
    QVERIFY(!stage_->end.exitStatus());
}

void SerialsEditingTest::updateTwice_editsAndSaves()
{
    stage_->add(u"a"_s);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    QVERIFY(screen.isIn(editing));
    screen.box(u"TextName"_s)->setText(u"changed"_s);
    screen.press("CmdUpdate");
    QVERIFY(screen.isIn(browsing));
    QCOMPARE(stage_->names(), QStringList(u"changed"_s));
    const auto* grid = screen.find<QTableView>(u"DBGrid1"_s);
    QTRY_COMPARE(grid->model()->index(0, 2).data().toString(), u"changed"_s);
}

void SerialsEditingTest::update_loadsTheGridsCurrentRow()
{
    stage_->add(u"a"_s);
    stage_->add(u"b"_s);
    stage_->add(u"c"_s);
    const SerialsScreen screen;
    screen.moveTo(2);
    QCOMPARE(screen.box(u"TextName"_s)->text(),
             // The fields do not follow the grid's current row.
             QString());
    screen.press("CmdUpdate");
    QCOMPARE(screen.box(u"TextName"_s)->text(), u"c"_s);
    screen.box(u"TextName"_s)->setText(u"C"_s);
    screen.press("CmdUpdate");
    QCOMPARE(stage_->names(), QStringList({u"a"_s, u"b"_s, u"C"_s}));
}

void SerialsEditingTest::updateAfterCmdNew_discardsTheNewSeries()
{
    stage_->add(u"a"_s, 2);
    const SerialsScreen screen;
    screen.press("CmdNew");
    screen.box(u"TextName"_s)->setText(u"typed"_s);
    screen.press("CmdUpdate");
    QVERIFY(screen.isIn(editing));
    QCOMPARE(screen.box(u"TextName"_s)->text(), u"a"_s);
    QCOMPARE(screen.deduction(7), u"+ 2 00"_s);
    QCOMPARE(stage_->names(), QStringList(u"a"_s));
}

void SerialsEditingTest::editing_disablesTheGrid()
{
    stage_->add(u"a"_s);
    stage_->add(u"b"_s);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    auto* grid = screen.find<QTableView>(u"DBGrid1"_s);
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, {},
                      grid->visualRect(grid->model()->index(1, 2)).center());
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Down);
    QCOMPARE(grid->currentIndex().row(), 0);
    screen.box(u"TextName"_s)->setText(u"A"_s);
    screen.press("CmdUpdate");
    QCOMPARE(stage_->names(), QStringList({u"A"_s, u"b"_s}));
}

void SerialsEditingTest::savingARowDeletedElsewhere_isRecordDeleted()
{
    const int key = stage_->add(u"a"_s);
    stage_->add(u"b"_s);
    const SerialsScreen screen;
    screen.press("CmdUpdate");
    stage_->store.execute(u"DELETE FROM Serials WHERE AutoNum = ?"_s, {key});
    stage_->boxes.answer(runtime::vbOK);
    screen.press("CmdUpdate");
    QCOMPARE(stage_->boxes.shown().front().text, u"Run-time error '3167':\n\nRecord is deleted."_s);
    QCOMPARE(stage_->end.exitStatus(), std::optional<int>(1));
    QCOMPARE(stage_->names(), QStringList(u"b"_s));
}

void SerialsEditingTest::deleteAnsweredNo_deletesNothing()
{
    stage_->add(u"a"_s);
    const SerialsScreen screen;
    stage_->boxes.answer(runtime::vbNo);
    screen.press("CmdDelete");
    QCOMPARE(stage_->boxes.shown()[0].text, u"האם אתה בטוח שברצונך למחוק את הסדרה הזו??"_s);
    QCOMPARE(stage_->boxes.shown()[0].title, u"מחיקת סדרה"_s);
    QCOMPARE(stage_->boxes.shown()[0].flags, 32 + 4 + 524288 + 1048576);
    QCOMPARE(stage_->names(), QStringList(u"a"_s));
}

void SerialsEditingTest::delete_deletesTheGridsCurrentRow()
{
    stage_->add(u"a"_s);
    stage_->add(u"b"_s);
    stage_->add(u"c"_s);
    const SerialsScreen screen;
    screen.moveTo(1);
    screen.press("CmdNew");
    screen.box(u"TextName"_s)->setText(u"typed"_s);
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdDelete");
    QCOMPARE(stage_->names(), QStringList({u"a"_s, u"c"_s}));
    QCOMPARE(screen.box(u"TextName"_s)->text(), u"typed"_s);
    QVERIFY(screen.isIn(newSeries));
    const auto* grid = screen.find<QTableView>(u"DBGrid1"_s);
    QCOMPARE(grid->model()->rowCount(), 2);
    // The row that takes the deleted row's place becomes current.
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdDelete");
    QCOMPARE(stage_->names(), QStringList(u"a"_s));
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdDelete");
    QCOMPARE(stage_->names(), QStringList());
    QVERIFY(!stage_->end.exitStatus());
}

void SerialsEditingTest::deleteFromAnEmptyTable_isNoCurrentRecord()
{
    const SerialsScreen screen;
    stage_->boxes.answer(runtime::vbNo);
    screen.press("CmdDelete");
    QVERIFY(!stage_->end.exitStatus());
    stage_->boxes.answer(runtime::vbYes);
    stage_->boxes.answer(runtime::vbOK);
    screen.press("CmdDelete");
    QCOMPARE(stage_->boxes.shown().back().text, u"Run-time error '3021':\n\nNo current record."_s);
    QCOMPARE(stage_->end.exitStatus(), std::optional<int>(1));
}

void SerialsEditingTest::deletedSeries_leavesOrderLinesUnchanged()
{
    stage_->add(u"sold"_s);
    stage_->store.addLine(3, 1, u"sold"_s);
    const SerialsScreen screen;
    stage_->boxes.answer(runtime::vbYes);
    screen.press("CmdDelete");
    QCOMPARE(stage_->names(), QStringList());
    QCOMPARE(stage_->store.scalar(u"SELECT Name FROM Cuts"_s).toString(), u"sold"_s);
}

void SerialsEditingTest::cmdEndWhileEditing_discardsTheEdit()
{
    stage_->add(u"a"_s);
    SerialsScreen screen;
    screen.press("CmdUpdate");
    screen.box(u"TextName"_s)->setText(u"typed"_s);
    screen.press("CmdEnd");
    QVERIFY(!screen.isOpen());
    QCOMPARE(stage_->names(), QStringList(u"a"_s));
}

void SerialsEditingTest::cmdEndInEveryState_closesTheForm_data()
{
    QTest::addColumn<QString>("before");
    QTest::newRow("browsing") << QString();
    QTest::newRow("new series") << u"CmdNew"_s;
    QTest::newRow("editing") << u"CmdUpdate"_s;
}

void SerialsEditingTest::cmdEndInEveryState_closesTheForm()
{
    QFETCH(QString, before);
    stage_->add(u"a"_s);
    const SerialsScreen screen;
    if (!before.isEmpty())
        screen.press(qPrintable(before));
    screen.press("CmdEnd");
    QVERIFY(!screen.isOpen());
    QVERIFY(stage_->boxes.shown().empty());
}

ZOMREL_QTEST_MAIN(SerialsEditingTest)
#include "serials_editing_test.moc"
