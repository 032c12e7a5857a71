#include "editing_fixture.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using controls::DataControl;
using controlstest::EditForm;
using controlstest::nameColumn;
using controlstest::sizeColumn;
using testsupport::cellText;
using testsupport::clickCell;

class DBGridEditingTest : public controlstest::EditingFixture
{
    Q_OBJECT

private slots:
    void emptyTable_hasABlankRow();
    void typingInTheBlankRow_addsARow();
    void untouchedBlankRow_addsNothing();
    void cell_isEditedInPlace();
    void editedRow_isWrittenWhenLeft_data();
    void editedRow_isWrittenWhenLeft();
    void enterInTheEditor_doesNotWriteTheRow();
    void tabInTheEditor_leavesTheGrid();
    void escape_discardsTheEdit();
    void equalAndEmptyNames_areStored();
    void untouchedNull_staysNull();
    void moving_emitsValidateOncePerRecord();
    void deleteKey_deletesTheRow();
    void deleteKeyInTheEditor_deletesACharacter();
    void deleteKeyOnAnUnwrittenRow_discardsIt();
};

void DBGridEditingTest::emptyTable_hasABlankRow()
{
    const EditForm form(*store_);
    QCOMPARE(form.rowCount(), 1);
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u""_s);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"לבן"_s);
    form.press(Qt::Key_Down);
    QCOMPARE(store_->names(), QStringList{u"לבן"_s});
    QCOMPARE(form.rowCount(), 2);
    QCOMPARE(form.grid->currentIndex().row(), 1);
}

void DBGridEditingTest::typingInTheBlankRow_addsARow()
{
    store_->addLines({u"a"_s});
    const EditForm form(*store_);
    form.press(Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(form.grid->currentIndex().row(), 1);
    for (const QString& name : {u"b"_s, u"c"_s}) {
        form.grid->setCurrentIndex(
            form.grid->model()->index(form.grid->currentIndex().row(), nameColumn));
        form.type(name);
        form.press(Qt::Key_Down);
    }
    QCOMPARE(store_->names(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
    QCOMPARE(store_->sql(u"SELECT Code FROM Lines WHERE Name = 'c'"_s)[0][0].toInt(), 3);
    QCOMPARE(form.rowCount(), 4);
    QCOMPARE(cellText(*form.grid, 2, nameColumn), u"c"_s);
    QCOMPARE(cellText(*form.grid, 2, 0), u"3"_s); // The store has assigned this value.
    QCOMPARE(form.grid->currentIndex().row(), 3);
}

void DBGridEditingTest::untouchedBlankRow_addsNothing()
{
    store_->addLines({u"a"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 1, nameColumn);
    form.press(Qt::Key_F2);
    QVERIFY(form.editor() != nullptr);
    form.press(Qt::Key_Return);
    clickCell(*form.grid, 0, nameColumn);
    clickCell(*form.grid, 1, nameColumn);
    form.type(u"x"_s);
    form.press(Qt::Key_Escape);
    form.other->setFocus();
    QVERIFY(form.grid->commitEdits());
    QCOMPARE(store_->names(), QStringList{u"a"_s});
    QCOMPARE(form.rowCount(), 2);
}

void DBGridEditingTest::cell_isEditedInPlace()
{
    store_->addLines({u"ab"_s, u"cd"_s, u"ef"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"x"_s); // Typing replaces the text.
    form.press(Qt::Key_Down);
    form.press(Qt::Key_F2); // F2 opens the editor with all text selected.
    QCOMPARE(form.editor()->selectedText(), u"cd"_s);
    form.press(Qt::Key_End);
    form.type(u"y"_s);
    clickCell(*form.grid, 2, nameColumn);
    testsupport::doubleClickCell(*form.grid, 2, nameColumn);
    QVERIFY(form.editor() != nullptr);
    QCOMPARE(form.editor()->maxLength(), 32767); // The store limits the length, not the editor.
    form.editor()->setText(u"z"_s);
    QVERIFY(form.grid->commitEdits());
    QCOMPARE(store_->names(), (QStringList{u"x"_s, u"cdy"_s, u"z"_s}));
}

void DBGridEditingTest::editedRow_isWrittenWhenLeft_data()
{
    QTest::addColumn<QString>("by");
    for (const char* by : {"key", "click", "focus", "commit", "enter and key", "recordset"})
        QTest::newRow(by) << QString::fromLatin1(by);
}

void DBGridEditingTest::editedRow_isWrittenWhenLeft()
{
    QFETCH(const QString, by);
    store_->addLines({u"a"_s, u"b"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"new"_s);
    QCOMPARE(store_->names()[0], u"a"_s);
    if (by == u"key") {
        form.press(Qt::Key_Down);
    } else if (by == u"click") {
        clickCell(*form.grid, 1, nameColumn);
    } else if (by == u"focus") {
        form.other->setFocus();
    } else if (by == u"commit") {
        QVERIFY(form.grid->commitEdits());
    } else if (by == u"enter and key") {
        form.press(Qt::Key_Return);
        form.press(Qt::Key_Down);
    } else {
        form.data->Recordset().MoveLast();
        QCOMPARE(form.grid->currentIndex().row(), 1);
    }
    QCOMPARE(store_->names(), (QStringList{u"new"_s, u"b"_s}));
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"new"_s);
}

void DBGridEditingTest::enterInTheEditor_doesNotWriteTheRow()
{
    store_->addLines({u"a"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"new"_s);
    form.press(Qt::Key_Return);
    QCOMPARE(form.editor(), nullptr);
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"new"_s);
    QCOMPARE(store_->names(), QStringList{u"a"_s});
    QCOMPARE(QApplication::focusWidget(), form.grid);
    QVERIFY(form.grid->commitEdits());
}

void DBGridEditingTest::tabInTheEditor_leavesTheGrid()
{
    store_->addLines({u"a"_s, u"b"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"new"_s);
    form.press(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), form.other);
    QCOMPARE(store_->names(), (QStringList{u"new"_s, u"b"_s}));
    QCOMPARE(form.grid->currentIndex().row(), 0);
}

void DBGridEditingTest::escape_discardsTheEdit()
{
    store_->addLines({u"a"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"x"_s);
    form.press(Qt::Key_Escape); // The first Escape closes the editor.
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"a"_s);

    form.type(u"x"_s);
    form.press(Qt::Key_Return);
    form.press(Qt::Key_Escape); // The second Escape discards the edit of the row.
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"a"_s);

    clickCell(*form.grid, 1, nameColumn);
    form.type(u"x"_s);
    form.press(Qt::Key_Return);
    QCOMPARE(form.rowCount(), 3);
    form.press(Qt::Key_Escape); // Escape discards the row that was being added.
    QCOMPARE(form.rowCount(), 2);
    QCOMPARE(form.grid->currentIndex().row(), 1);
    QVERIFY(form.grid->commitEdits());
    QCOMPARE(store_->names(), QStringList{u"a"_s});
}

void DBGridEditingTest::equalAndEmptyNames_areStored()
{
    store_->addLines({u"a"_s, u"b"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 2, nameColumn);
    form.type(u"a"_s);
    clickCell(*form.grid, 1, nameColumn);
    form.press(Qt::Key_F2);
    form.editor()->clear();
    form.press(Qt::Key_Return);
    form.press(Qt::Key_Up);
    QCOMPARE(store_->names(), (QStringList{u"a"_s, u""_s, u"a"_s}));
}

void DBGridEditingTest::untouchedNull_staysNull()
{
    store_->addLines({u"a"_s});
    store_->sql(u"UPDATE Lines SET Name = NULL"_s);
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.press(Qt::Key_F2);
    form.press(Qt::Key_Return);
    clickCell(*form.grid, 0, sizeColumn);
    form.type(u"2.5"_s);
    QVERIFY(form.grid->commitEdits());
    QCOMPARE(store_->names(), QStringList{u"NULL"_s});
    QCOMPARE(store_->sql(u"SELECT Size FROM Lines"_s)[0][0].toDouble(), 2.5);
    QCOMPARE(cellText(*form.grid, 0, sizeColumn), u"2.5"_s);
}

void DBGridEditingTest::moving_emitsValidateOncePerRecord()
{
    store_->addLines({u"a"_s, u"b"_s});
    const EditForm form(*store_);
    QSignalSpy validate(form.data, &DataControl::Validate);
    clickCell(*form.grid, 1, nameColumn);
    QCOMPARE(validate.count(), 1);
    clickCell(*form.grid, 2, nameColumn); // The blank row is not a record.
    QCOMPARE(validate.count(), 1);
    form.type(u"c"_s);
    clickCell(*form.grid, 1, nameColumn); // This row is still the current record.
    QCOMPARE(validate.count(), 1);
    clickCell(*form.grid, 2, nameColumn); // The new row is a record now.
    QCOMPARE(validate.count(), 2);
    QCOMPARE(form.data->Recordset().Fields(u"Name"_s).Value().toString(), u"c"_s);
}

void DBGridEditingTest::deleteKey_deletesTheRow()
{
    store_->addLines({u"a"_s, u"b"_s, u"c"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 1, nameColumn);
    form.press(Qt::Key_Delete);
    QCOMPARE(store_->names(), (QStringList{u"a"_s, u"c"_s}));
    QCOMPARE(form.rowCount(), 3);
    QCOMPARE(form.grid->currentIndex().row(), 1);
    QCOMPARE(form.data->Recordset().Fields(u"Name"_s).Value().toString(), u"c"_s);
    form.press(Qt::Key_Delete); // After the last row is deleted, the previous row becomes current.
    QCOMPARE(store_->names(), QStringList{u"a"_s});
    QCOMPARE(form.grid->currentIndex().row(), 0);
    form.press(Qt::Key_Delete);
    QCOMPARE(store_->names(), QStringList());
    QCOMPARE(form.rowCount(), 1);
    form.press(Qt::Key_Delete); // Delete has no effect on the blank row.
    QCOMPARE(form.rowCount(), 1);
    form.type(u"d"_s);
    form.press(Qt::Key_Down);
    QCOMPARE(store_->names(), QStringList{u"d"_s});
}

void DBGridEditingTest::deleteKeyInTheEditor_deletesACharacter()
{
    store_->addLines({u"abc"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.press(Qt::Key_F2);
    form.editor()->setCursorPosition(0);
    QTest::keyClick(form.editor(), Qt::Key_Delete);
    QCOMPARE(form.editor()->text(), u"bc"_s);
    form.press(Qt::Key_Return);
    QVERIFY(form.grid->commitEdits());
    QCOMPARE(store_->names(), QStringList{u"bc"_s});
}

void DBGridEditingTest::deleteKeyOnAnUnwrittenRow_discardsIt()
{
    store_->addLines({u"a"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 1, nameColumn);
    form.type(u"x"_s);
    form.press(Qt::Key_Return);
    form.press(Qt::Key_Delete);
    QVERIFY(form.grid->commitEdits());
    QCOMPARE(store_->names(), QStringList{u"a"_s});
    QCOMPARE(form.rowCount(), 2);
}

ZOMREL_QTEST_MAIN(DBGridEditingTest)
#include "db_grid_editing_test.moc"
