#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "sample_store.h"
#include "support/doors.h"
#include "support/widgets.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using controls::DataControl;
using controls::DBGrid;
using controlstest::SampleStore;
using testsupport::cellText;
using testsupport::clickCell;

namespace {

constexpr int nameColumn = 1;
constexpr int sizeColumn = 2;

/// A form with an editable grid on the lines of the store and a second focusable control.
class EditForm : public QWidget
{
public:
    explicit EditForm(SampleStore& store)
        : grid(new DBGrid(u"DBGridKind_0"_s, this)), data(new DataControl(u"DataKind_0"_s, this)),
          other(new QLineEdit(this))
    {
        auto* column = new QVBoxLayout(this);
        column->addWidget(grid);
        column->addWidget(other);
        grid->setColumns(
            {{u"Code"_s, u"Code"_s}, {u"שם"_s, u"Name"_s, 2}, {u"גודל"_s, u"Size"_s, 1}});
        grid->setEditable(true);
        grid->setDataSource(data);
        data->setRecordset(store.table());
        resize(320, 320);
        if (!testsupport::showActive(*this))
            qFatal("the form is not active");
        grid->setFocus();
    }

    /// Returns the open editor. Closed editors exist until the event loop deletes them.
    QLineEdit* editor() const
    {
        for (auto* each : grid->viewport()->findChildren<QLineEdit*>())
            if (each->isVisible())
                return each;
        return nullptr;
    }
    int rowCount() const { return grid->model()->rowCount(); }

    /// Types into the current cell; the first key opens the editor.
    void type(const QString& text) const
    {
        for (const QChar each : text) {
            QWidget* target = editor() != nullptr ? static_cast<QWidget*>(editor()) : grid;
            QTest::sendKeyEvent(QTest::Click, target, Qt::Key_unknown, QString(each),
                                Qt::NoModifier);
        }
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QWidget* target = editor() != nullptr ? static_cast<QWidget*>(editor()) : grid;
        QTest::keyClick(target, key, modifiers);
        // Qt closes the editor after the key event.
        if (key == Qt::Key_Return)
            QTRY_VERIFY(editor() == nullptr);
    }

    DBGrid* grid;
    DataControl* data;
    QLineEdit* other;
    QAbstractItemModelTester tester{grid->model(),
                                    QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

class DBGridEditingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

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

    void refusedWrite_showsABoxAndKeepsTheText_data();
    void refusedWrite_showsABoxAndKeepsTheText();
    void refusedNewRow_showsABoxAndKeepsTheText();
    void refusalOnLeavingTheGrid_returnsToTheRow();
    void refusalOnClosing_showsABox();
    void refusedDelete_showsABox();
    void rowDeletedByAnotherStation_isReportedAndRemoved();
    void readError_opensTheErrorBox();

private:
    std::unique_ptr<SampleStore> store_;
    std::unique_ptr<testsupport::RecordedBoxes> boxes_;
};

void DBGridEditingTest::init()
{
    boxes_.reset();
    store_ = std::make_unique<SampleStore>();
    boxes_ = std::make_unique<testsupport::RecordedBoxes>();
}

void DBGridEditingTest::cleanup()
{
    QCOMPARE(boxes_->unexpected(), QStringList()); // Every message box was expected.
    boxes_.reset();
    store_.reset();
}

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

void DBGridEditingTest::refusedWrite_showsABoxAndKeepsTheText_data()
{
    QTest::addColumn<QString>("before"); // SQL that runs first.
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("mended");
    QTest::addColumn<QString>("reason");

    QTest::newRow("too long") << u""_s << u""_s << nameColumn << u"12345678901"_s << u"1234567890"_s
                              << u"הטקסט ארוך מדי"_s;
    QTest::newRow("duplicate") << u"CREATE UNIQUE INDEX ByName ON Lines (Name)"_s << u""_s
                               << nameColumn << u"b"_s << u"c"_s << u"אותו ערך"_s;
    QTest::newRow("not a number") << u""_s << u""_s << sizeColumn << u"x"_s << u"-1.5"_s
                                  << u"אינו מתאים לסוג"_s;
    QTest::newRow("locked") << u"BEGIN IMMEDIATE"_s << u"COMMIT"_s << nameColumn << u"n"_s << u"m"_s
                            << u"תפוסים"_s;
}

void DBGridEditingTest::refusedWrite_showsABoxAndKeepsTheText()
{
    QFETCH(const QString, before);
    QFETCH(const QString, after);
    QFETCH(const int, column);
    QFETCH(const QString, typed);
    QFETCH(const QString, mended);
    QFETCH(const QString, reason);
    store_->addLines({u"a"_s, u"b"_s});
    store_->sql(u"UPDATE Lines SET Size = 1"_s);
    if (!before.isEmpty())
        store_->sql(before);
    const EditForm form(*store_);
    clickCell(*form.grid, 0, column);
    form.type(typed);
    boxes_->answer(runtime::vbOK);
    form.press(Qt::Key_Down);
    QTRY_COMPARE(boxes_->shown().size(), 1U);
    QCOMPARE(boxes_->shown()[0].flags, 1572880);
    QVERIFY2(boxes_->shown()[0].text.contains(reason), qUtf8Printable(boxes_->shown()[0].text));
    QCOMPARE(form.grid->currentIndex().row(), 0);
    QVERIFY(form.grid->selectionModel()->isRowSelected(0));
    QCOMPARE(form.data->Recordset().Fields(u"Code"_s).Value().toInt(), 1);
    QCOMPARE(cellText(*form.grid, 0, column), typed);
    QCOMPARE(store_->names(), (QStringList{u"a"_s, u"b"_s}));

    // Escape discards the edit, and the stored value is shown again.
    form.press(Qt::Key_Escape);
    QCOMPARE(cellText(*form.grid, 0, column), column == nameColumn ? u"a"_s : u"1"_s);
    form.press(Qt::Key_Down);
    QCOMPARE(form.grid->currentIndex().row(), 1);

    // A corrected value is written.
    form.press(Qt::Key_Up);
    form.type(typed);
    boxes_->answer(runtime::vbOK);
    clickCell(*form.grid, 1, column);
    QTRY_COMPARE(boxes_->shown().size(), 2U);
    if (!after.isEmpty())
        store_->sql(after);
    QTRY_COMPARE(form.grid->currentIndex().row(), 0);
    form.type(mended);
    form.press(Qt::Key_Down);
    QCOMPARE(cellText(*form.grid, 0, column), mended);
    const QString field = column == nameColumn ? u"Name"_s : u"Size"_s;
    QCOMPARE(store_->sql(u"SELECT %1 FROM Lines ORDER BY Code"_s.arg(field))[0][0].toString(),
             mended);
    QCOMPARE(form.grid->currentIndex().row(), 1);
}

void DBGridEditingTest::refusedNewRow_showsABoxAndKeepsTheText()
{
    store_->sql(u"DROP TABLE Lines"_s);
    store_->sql(u"CREATE TABLE Lines (Code COUNTER PRIMARY KEY, Name TEXT(10), Size DOUBLE, "
                "Day DATETIME, Num LONG NOT NULL)"_s);
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"a"_s);
    boxes_->answer(runtime::vbOK);
    form.press(Qt::Key_Down);
    QTRY_COMPARE(boxes_->shown().size(), 1U);
    QVERIFY(boxes_->shown()[0].text.contains(u"חסר ערך"_s));
    QTRY_COMPARE(form.grid->currentIndex().row(), 0);
    QCOMPARE(form.rowCount(), 2);
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"a"_s);
    QCOMPARE(store_->names(), QStringList());
    form.press(Qt::Key_Escape);
    QCOMPARE(form.rowCount(), 1);
    QVERIFY(form.grid->commitEdits());
}

void DBGridEditingTest::refusalOnLeavingTheGrid_returnsToTheRow()
{
    store_->addLines({u"a"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"12345678901"_s);
    boxes_->answer(runtime::vbOK);
    QTest::mouseClick(form.other, Qt::LeftButton);
    QTRY_COMPARE(boxes_->shown().size(), 1U);
    QTRY_COMPARE(QApplication::focusWidget(), form.grid);
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"12345678901"_s);
    form.press(Qt::Key_Escape);
    form.other->setFocus();
    QCOMPARE(store_->names(), QStringList{u"a"_s});
}

void DBGridEditingTest::refusalOnClosing_showsABox()
{
    store_->addLines({u"a"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"12345678901"_s);
    boxes_->answer(runtime::vbOK);
    QVERIFY(!form.grid->commitEdits()); // The editor is still open.
    QCOMPARE(boxes_->shown().size(), 1U);
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"12345678901"_s);
    form.press(Qt::Key_F2);
    QCOMPARE(form.editor()->text(), u"12345678901"_s);
    form.editor()->setText(u"b"_s);
    QVERIFY(form.grid->commitEdits());
    QCOMPARE(store_->names(), QStringList{u"b"_s});
}

void DBGridEditingTest::refusedDelete_showsABox()
{
    store_->addLines({u"a"_s});
    const EditForm form(*store_);
    store_->sql(u"BEGIN IMMEDIATE"_s);
    boxes_->answer(runtime::vbOK);
    form.press(Qt::Key_Delete);
    QCOMPARE(boxes_->shown().size(), 1U);
    QVERIFY(boxes_->shown()[0].text.contains(u"תפוסים"_s));
    QCOMPARE(form.rowCount(), 2);
    store_->sql(u"COMMIT"_s);
    QCOMPARE(store_->names(), QStringList{u"a"_s});
    form.press(Qt::Key_Delete);
    QCOMPARE(store_->names(), QStringList());
}

void DBGridEditingTest::rowDeletedByAnotherStation_isReportedAndRemoved()
{
    store_->addLines({u"a"_s, u"b"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"x"_s);
    store_->sql(u"DELETE FROM Lines WHERE Name = 'a'"_s);
    boxes_->answer(runtime::vbOK);
    form.press(Qt::Key_Down);
    QTRY_COMPARE(boxes_->shown().size(), 1U);
    QVERIFY(boxes_->shown()[0].text.contains(u"נמחקה"_s));
    QTRY_COMPARE(form.grid->currentIndex().row(), 0);
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"x"_s);
    form.press(Qt::Key_Escape); // There is no row left to return to.
    QCOMPARE(form.rowCount(), 2);
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"b"_s);
    QCOMPARE(store_->names(), QStringList{u"b"_s});
}

void DBGridEditingTest::readError_opensTheErrorBox()
{
    store_->addLines({u"a"_s, u"b"_s});
    testsupport::RecordedEnd end;
    const EditForm form(*store_);
    form.data->Database().Close();
    boxes_->answer(runtime::vbOK);
    form.press(Qt::Key_Down);
    QTRY_COMPARE(end.exitStatus(), 1);
    QVERIFY(boxes_->shown()[0].text.startsWith(u"Run-time error '3420':"_s));
}

ZOMREL_QTEST_MAIN(DBGridEditingTest)
#include "db_grid_editing_test.moc"
