#include "editing_fixture.h"

using namespace Qt::StringLiterals;
using controlstest::EditForm;
using controlstest::nameColumn;
using controlstest::sizeColumn;
using testsupport::cellText;
using testsupport::clickCell;

class DBGridRefusalTest : public controlstest::EditingFixture
{
    Q_OBJECT

private slots:
    void refusedWrite_showsItsReasonAndKeepsTheText_data();
    void refusedWrite_showsItsReasonAndKeepsTheText();
    void refusedNewRow_showsItsReasonAndKeepsTheText();
    void refusedWrite_afterLeavingTheGrid_returnsTheFocus();
    void refusedWrite_onClosing_keepsTheText();
    void refusedDelete_showsItsReasonAndKeepsTheRow();
    void rowDeletedByAnotherStation_isReportedAndRemoved();
    void readError_opensTheErrorBox();
};

void DBGridRefusalTest::refusedWrite_showsItsReasonAndKeepsTheText_data()
{
    QTest::addColumn<QString>("before"); // SQL statement
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("corrected");
    QTest::addColumn<QString>("reason");

    QTest::newRow("too long") << u""_s << u""_s << nameColumn << u"12345678901"_s << u"1234567890"_s
                              << u"הטקסט ארוך מדי"_s;
    QTest::newRow("duplicate") << u"CREATE UNIQUE INDEX ByName ON Lines (Name)"_s << u""_s
                               << nameColumn << u"b"_s << u"c"_s << u"אותו ערך"_s;
    QTest::newRow("no number") << u""_s << u""_s << sizeColumn << u"x"_s << u"-1.5"_s
                               << u"אינו מתאים לסוג"_s;
    QTest::newRow("locked") << u"BEGIN IMMEDIATE"_s << u"COMMIT"_s << nameColumn << u"n"_s << u"m"_s
                            << u"תפוסים"_s;
}

void DBGridRefusalTest::refusedWrite_showsItsReasonAndKeepsTheText()
{
    QFETCH(const QString, before);
    QFETCH(const QString, after);
    QFETCH(const int, column);
    QFETCH(const QString, typed);
    QFETCH(const QString, corrected);
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

    // Escape discards the typed text, and the cell shows the stored value again.
    form.press(Qt::Key_Escape);
    QCOMPARE(cellText(*form.grid, 0, column), column == nameColumn ? u"a"_s : u"1"_s);
    form.press(Qt::Key_Down);
    QCOMPARE(form.grid->currentIndex().row(), 1);

    // A corrected text is written.
    form.press(Qt::Key_Up);
    form.type(typed);
    boxes_->answer(runtime::vbOK);
    clickCell(*form.grid, 1, column);
    QTRY_COMPARE(boxes_->shown().size(), 2U);
    if (!after.isEmpty())
        store_->sql(after);
    QTRY_COMPARE(form.grid->currentIndex().row(), 0);
    form.type(corrected);
    form.press(Qt::Key_Down);
    QCOMPARE(cellText(*form.grid, 0, column), corrected);
    const QString field = column == nameColumn ? u"Name"_s : u"Size"_s;
    QCOMPARE(store_->sql(u"SELECT %1 FROM Lines ORDER BY Code"_s.arg(field))[0][0].toString(),
             corrected);
    QCOMPARE(form.grid->currentIndex().row(), 1);
}

void DBGridRefusalTest::refusedNewRow_showsItsReasonAndKeepsTheText()
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

void DBGridRefusalTest::refusedWrite_afterLeavingTheGrid_returnsTheFocus()
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

void DBGridRefusalTest::refusedWrite_onClosing_keepsTheText()
{
    store_->addLines({u"a"_s});
    const EditForm form(*store_);
    clickCell(*form.grid, 0, nameColumn);
    form.type(u"12345678901"_s);
    boxes_->answer(runtime::vbOK);
    QVERIFY(!form.grid->commitEdits()); // The editor is open.
    QCOMPARE(boxes_->shown().size(), 1U);
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"12345678901"_s);
    form.press(Qt::Key_F2);
    QCOMPARE(form.editor()->text(), u"12345678901"_s);
    form.editor()->setText(u"b"_s);
    QVERIFY(form.grid->commitEdits());
    QCOMPARE(store_->names(), QStringList{u"b"_s});
}

void DBGridRefusalTest::refusedDelete_showsItsReasonAndKeepsTheRow()
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

void DBGridRefusalTest::rowDeletedByAnotherStation_isReportedAndRemoved()
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
    form.press(Qt::Key_Escape); // The row no longer exists.
    QCOMPARE(form.rowCount(), 2);
    QCOMPARE(cellText(*form.grid, 0, nameColumn), u"b"_s);
    QCOMPARE(store_->names(), QStringList{u"b"_s});
}

void DBGridRefusalTest::readError_opensTheErrorBox()
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

ZOMREL_QTEST_MAIN(DBGridRefusalTest)
#include "db_grid_refusal_test.moc"
