#include "base/module1.h"
#include "catalogue/catalogue.h"
#include "catalogue/fr_color_kind.h"
#include "platform/controls/db_grid.h"

#include "support/doors.h"
#include "support/errors.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::child;

namespace {

const QStringList tables{u"MashkofKind"_s,  u"KanafKind"_s,  u"GlassKind"_s,  u"ReshetKind"_s,
                         u"MashkofColor"_s, u"KanafColor"_s, u"GlassColor"_s, u"ReshetColor"_s};

void addGridRows()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < 8; ++i)
        QTest::newRow(qPrintable(tables[i])) << i;
}

} // namespace

class FrColorKindTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void grids_haveTheirCaptionsAndPositions_data();
    void grids_haveTheirCaptionsAndPositions();
    void headingAndCommand_haveTheirTextsAndPositions();
    void columns_hideTheCode_data() { addGridRows(); }
    void columns_hideTheCode();
    void missingStore_isFileNotFound();

    void grid_showsItsTable_data() { addGridRows(); }
    void grid_showsItsTable();
    void grid_addsChangesAndDeletesRows_data() { addGridRows(); }
    void grid_addsChangesAndDeletesRows();
    void emptyList_takesItsFirstName();
    void sameNameTwice_isStoredTwice();
    void emptyName_isStored();
    void escape_discardsTheTypedText();
    void deletedKind_leavesOrderLinesUnchanged();

    void textTooLong_isRefusedAndStaysTyped();
    void duplicateInAUniqueIndex_isRefused();
    void rowDeletedByAnotherStation_isReported();

    void cmdEnd_writesThePendingRow_data();
    void cmdEnd_writesThePendingRow();
    void closeBox_writesThePendingRow();
    void refusedRow_keepsTheFormOpen();
    void refusedRowInTheFrame_keepsTheFormOpen();
    void cmdEnd_closesWithoutAQuestion();

private:
    void open();
    controls::DBGrid* grid(int index);
    void stand(int index, int row);
    void type(const QString& text);
    void press(Qt::Key key);
    void end() { QTest::mouseClick(child<QPushButton>(*form_, u"CmdEnd"_s), Qt::LeftButton); }
    QStringList names(int index);
    void add(int index, const QString& name);

    std::unique_ptr<testsupport::TemporaryStore> store_;
    std::unique_ptr<testsupport::RecordedBoxes> boxes_;
    QPointer<catalogue::FrColorKind> form_;
};

void FrColorKindTest::init()
{
    store_ = std::make_unique<testsupport::TemporaryStore>();
    boxes_ = std::make_unique<testsupport::RecordedBoxes>();
}

void FrColorKindTest::cleanup()
{
    if (form_ && form_->isVisible())
        form_->Unload();
    QTRY_VERIFY(form_.isNull());
    QCOMPARE(boxes_->unexpected(), QList<QString>());
    boxes_.reset();
    store_.reset();
}

void FrColorKindTest::open()
{
    form_ = &catalogue::frColorKind();
    form_->Show();
    QVERIFY(QTest::qWaitForWindowActive(form_));
}

controls::DBGrid* FrColorKindTest::grid(int index)
{
    return child<controls::DBGrid>(*form_, u"DBGridKind_%1"_s.arg(index));
}

/// Clicks the name cell of the row.
void FrColorKindTest::stand(int index, int row)
{
    controls::DBGrid* clicked = grid(index);
    const QModelIndex cell = clicked->model()->index(row, 1);
    QVERIFY(cell.isValid());
    QTest::mouseClick(clicked->viewport(), Qt::LeftButton, {}, clicked->visualRect(cell).center());
    QCOMPARE(clicked->currentIndex().row(), row);
}

void FrColorKindTest::type(const QString& text)
{
    for (const QChar letter : text) {
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown,
                            QString(letter), Qt::NoModifier);
    }
}

void FrColorKindTest::press(Qt::Key key)
{
    QTest::keyClick(QApplication::focusWidget(), key);
}

QStringList FrColorKindTest::names(int index)
{
    QStringList all;
    const QString sql = u"SELECT Name FROM %1 ORDER BY Code"_s.arg(tables[index]);
    for (const QList<QVariant>& row : store_->rows(sql))
        all.append(row[0].toString());
    return all;
}

void FrColorKindTest::add(int index, const QString& name)
{
    store_->execute(u"INSERT INTO %1 (Name) VALUES (?)"_s.arg(tables[index]), {name});
}

void FrColorKindTest::grids_haveTheirCaptionsAndPositions_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("top");
    QTest::newRow("0") << 0 << u"סוג משקוף"_s << 9960 << 1440;
    QTest::newRow("1") << 1 << u"סוג כנף"_s << 6720 << 1440;
    QTest::newRow("2") << 2 << u"סוג זכוכית"_s << 240 << 1440;
    QTest::newRow("3") << 3 << u"סוג רשת"_s << 3465 << 1440;
    QTest::newRow("4") << 4 << u"צבע משקוף"_s << 9960 << 3840;
    QTest::newRow("5") << 5 << u"צבע כנף"_s << 6720 << 3840;
    QTest::newRow("6") << 6 << u"צבע זכוכית"_s << 240 << 3840;
    QTest::newRow("7") << 7 << u"צבע רשת"_s << 3480 << 3840;
}

void FrColorKindTest::grids_haveTheirCaptionsAndPositions()
{
    QFETCH(int, index);
    QFETCH(QString, caption);
    QFETCH(int, left);
    QFETCH(int, top);
    open();
    QCOMPARE(form_->size(), QSize(883, 535));
    QCOMPARE(grid(index)->caption(), caption);
    QCOMPARE(grid(index)->geometry(), QRect(left / 15, top / 15, 3015 / 15, 2235 / 15));
    QVERIFY(grid(index)->isVisible());
}

void FrColorKindTest::headingAndCommand_haveTheirTextsAndPositions()
{
    open();
    QCOMPARE(form_->objectName(), u"FrColorKind"_s);
    QCOMPARE(form_->windowTitle(), u"סוגים וצבעים"_s);
    const auto* heading = child<QLabel>(*form_, u"Label1"_s);
    QCOMPARE(heading->text(), u"סוגים וצבעים"_s);
    QCOMPARE(heading->geometry(), QRect(3840 / 15, 360 / 15, 2655 / 15, 615 / 15));
    QCOMPARE(heading->font().family(), u"David"_s);
    QCOMPARE(heading->font().pointSizeF(), 20.25);
    QVERIFY(heading->font().bold());
    QVERIFY(heading->alignment().testFlag(Qt::AlignHCenter));
    QVERIFY(heading->fontMetrics().horizontalAdvance(heading->text()) <= heading->width());
    const auto* command = child<QPushButton>(*form_, u"CmdEnd"_s);
    QCOMPARE(command->text(), u"סיים"_s);
    QCOMPARE(command->geometry(), QRect(6120 / 15, 6480 / 15, 1095 / 15, 495 / 15));
    QCOMPARE(command->font().family(), u"Arial"_s);
    QCOMPARE(command->font().pointSizeF(), 11.25);
    QVERIFY(command->font().bold());
    QVERIFY(!command->icon().isNull());
    for (int i = 0; i < 4; ++i) {
        QVERIFY(!child<QWidget>(*form_, u"DataKind_%1"_s.arg(i))->isVisible());
        QVERIFY(!child<QWidget>(*form_, u"DataColor_%1"_s.arg(i))->isVisible());
    }
}

void FrColorKindTest::columns_hideTheCode()
{
    QFETCH(int, index);
    open();
    const QAbstractItemModel* model = grid(index)->model();
    QCOMPARE(model->columnCount(), 2);
    QCOMPARE(model->headerData(0, Qt::Horizontal).toString(), u"Code"_s);
    QCOMPARE(model->headerData(1, Qt::Horizontal).toString(), u"שם"_s);
    QVERIFY(grid(index)->isColumnHidden(0));
    QVERIFY(!grid(index)->isColumnHidden(1));
    QCOMPARE(grid(index)->font().pointSizeF(), 11.0);
    QCOMPARE(grid(index)->palette().color(QPalette::Text), QColor(Qt::black));
}

void FrColorKindTest::missingStore_isFileNotFound()
{
    const QString path = std::exchange(Module1::StorePath, store_->folder() + u"/none.mdb"_s);
    QCOMPARE(testsupport::errorOf([] { catalogue::frColorKind(); }),
             int(runtime::DatabaseFileNotFound));
    Module1::StorePath = path;
}

void FrColorKindTest::grid_showsItsTable()
{
    QFETCH(int, index);
    for (int i = 0; i < 8; ++i)
        add(i, u"first of "_s + tables[i]);
    add(index, u"second"_s);
    open();
    const QAbstractItemModel* model = grid(index)->model();
    QCOMPARE(model->rowCount(), 3);
    QTRY_COMPARE(model->index(0, 1).data().toString(), u"first of "_s + tables[index]);
    QCOMPARE(model->index(1, 1).data().toString(), u"second"_s);
    QCOMPARE(model->index(2, 1).data().toString(), QString());
}

void FrColorKindTest::grid_addsChangesAndDeletesRows()
{
    QFETCH(int, index);
    for (int i = 0; i < 8; ++i)
        add(i, u"a"_s);
    open();

    stand(index, 1);
    type(u"לבן"_s);
    // The row is written only after it has been left.
    QCOMPARE(names(index), QStringList(u"a"_s));
    press(Qt::Key_Down);
    QCOMPARE(names(index), QStringList({u"a"_s, u"לבן"_s}));
    QCOMPARE(grid(index)->model()->rowCount(), 3);

    stand(index, 0);
    type(u"b"_s);
    stand(index, 1);
    QCOMPARE(names(index), QStringList({u"b"_s, u"לבן"_s}));

    press(Qt::Key_Delete);
    QCOMPARE(names(index), QStringList(u"b"_s));
    QCOMPARE(grid(index)->model()->rowCount(), 2);
    stand(index, 0);
    press(Qt::Key_Delete);
    QCOMPARE(names(index), QStringList());
    QCOMPARE(grid(index)->model()->rowCount(), 1);

    for (int i = 0; i < 8; ++i) {
        if (i != index)
            QCOMPARE(names(i), QStringList(u"a"_s));
    }
}

void FrColorKindTest::emptyList_takesItsFirstName()
{
    open();
    grid(2)->setFocus(Qt::TabFocusReason);
    type(u"שקוף"_s);
    press(Qt::Key_Return);
    press(Qt::Key_Down);
    QCOMPARE(names(2), QStringList(u"שקוף"_s));
    QCOMPARE(store_->scalar(u"SELECT Code FROM GlassKind"_s).toInt(), 1);
}

void FrColorKindTest::sameNameTwice_isStoredTwice()
{
    open();
    for (const int row : {0, 1}) {
        stand(5, row);
        type(u"חום"_s);
        press(Qt::Key_Down);
    }
    QCOMPARE(names(5), QStringList({u"חום"_s, u"חום"_s}));
}

void FrColorKindTest::emptyName_isStored()
{
    add(0, u"a"_s);
    open();
    stand(0, 0);
    press(Qt::Key_F2);
    press(Qt::Key_Backspace);
    press(Qt::Key_Return);
    press(Qt::Key_Down);
    QCOMPARE(names(0), QStringList(QString()));
}

void FrColorKindTest::escape_discardsTheTypedText()
{
    add(0, u"a"_s);
    open();
    stand(0, 0);
    type(u"typed"_s);
    press(Qt::Key_Escape);
    press(Qt::Key_Down);
    end();
    QCOMPARE(names(0), QStringList(u"a"_s));
}

void FrColorKindTest::deletedKind_leavesOrderLinesUnchanged()
{
    add(3, u"בד"_s);
    store_->addLine(1, 1);
    store_->execute(u"UPDATE Cuts SET Reshet_Kind = 'בד'"_s);
    open();
    stand(3, 0);
    press(Qt::Key_Delete);
    QCOMPARE(names(3), QStringList());
    QCOMPARE(store_->scalar(u"SELECT Reshet_Kind FROM Cuts"_s).toString(), u"בד"_s);
}

void FrColorKindTest::textTooLong_isRefusedAndStaysTyped()
{
    add(1, u"a"_s);
    open();
    stand(1, 0);
    type(QString(51, u'n'));
    boxes_->answer(runtime::vbOK);
    press(Qt::Key_Down);
    QTRY_COMPARE(boxes_->shown().size(), 1u);
    QCOMPARE(boxes_->shown()[0].flags, runtime::refusalFlags);
    QCOMPARE(names(1), QStringList(u"a"_s));
    QCOMPARE(grid(1)->currentIndex().row(), 0);
    QCOMPARE(grid(1)->model()->index(0, 1).data().toString(), QString(51, u'n'));
    press(Qt::Key_Escape);
    QCOMPARE(grid(1)->model()->index(0, 1).data().toString(), u"a"_s);
}

void FrColorKindTest::duplicateInAUniqueIndex_isRefused()
{
    store_->execute(u"CREATE UNIQUE INDEX OneName ON KanafColor (Name)"_s);
    add(5, u"a"_s);
    open();
    stand(5, 1);
    type(u"a"_s);
    boxes_->answer(runtime::vbOK);
    press(Qt::Key_Up);
    QTRY_COMPARE(boxes_->shown().size(), 1u);
    QCOMPARE(names(5), QStringList(u"a"_s));
    QCOMPARE(grid(5)->currentIndex().row(), 1);
    type(u"b"_s);
    press(Qt::Key_Up);
    QCOMPARE(names(5), QStringList({u"a"_s, u"b"_s}));
}

void FrColorKindTest::rowDeletedByAnotherStation_isReported()
{
    add(4, u"a"_s);
    add(4, u"b"_s);
    open();
    store_->execute(u"DELETE FROM MashkofColor WHERE Name = 'a'"_s);
    stand(4, 0);
    type(u"changed"_s);
    boxes_->answer(runtime::vbOK);
    press(Qt::Key_Down);
    QTRY_COMPARE(boxes_->shown().size(), 1u);
    QCOMPARE(names(4), QStringList(u"b"_s));
    press(Qt::Key_Escape);
}

void FrColorKindTest::cmdEnd_writesThePendingRow_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("a changed row") << 0 << QStringList({u"typed"_s, u"b"_s});
    QTest::newRow("an added row") << 2 << QStringList({u"a"_s, u"b"_s, u"typed"_s});
}

void FrColorKindTest::cmdEnd_writesThePendingRow()
{
    QFETCH(int, row);
    QFETCH(QStringList, expected);
    add(6, u"a"_s);
    add(6, u"b"_s);
    open();
    stand(6, row);
    type(u"typed"_s);
    end();
    QTRY_VERIFY(form_.isNull());
    QCOMPARE(names(6), expected);
}

void FrColorKindTest::closeBox_writesThePendingRow()
{
    add(7, u"a"_s);
    open();
    stand(7, 0);
    type(u"typed"_s);
    form_->close();
    QTRY_VERIFY(form_.isNull());
    QCOMPARE(names(7), QStringList(u"typed"_s));
}

void FrColorKindTest::refusedRow_keepsTheFormOpen()
{
    add(0, u"a"_s);
    open();
    stand(0, 0);
    type(QString(51, u'n'));
    boxes_->answer(runtime::vbOK);
    end();
    QTRY_COMPARE(boxes_->shown().size(), 1u);
    QVERIFY(form_ && form_->isVisible());

    boxes_->answer(runtime::vbOK);
    form_->close();
    QTRY_COMPARE(boxes_->shown().size(), 2u);
    QVERIFY(form_ && form_->isVisible());
    QCOMPARE(&catalogue::frColorKind(), form_.data());
    QCOMPARE(names(0), QStringList(u"a"_s));

    stand(0, 0);
    type(u"mended"_s);
    end();
    QTRY_VERIFY(form_.isNull());
    QCOMPARE(names(0), QStringList(u"mended"_s));
}

void FrColorKindTest::refusedRowInTheFrame_keepsTheFormOpen()
{
    QMdiArea frame;
    frame.resize(1000, 700);
    frame.show();
    QVERIFY(QTest::qWaitForWindowActive(&frame));
    controls::setFrame(&frame);
    add(0, u"a"_s);
    form_ = &catalogue::frColorKind();
    form_->Show();
    QCOMPARE(frame.subWindowList().size(), 1);
    QCOMPARE(form_->size(), QSize(883, 535));
    QTRY_VERIFY(form_->isActiveWindow());
    stand(0, 0);
    type(QString(51, u'n'));
    boxes_->answer(runtime::vbOK);
    frame.subWindowList()[0]->close();
    QTRY_COMPARE(boxes_->shown().size(), 1u);
    QVERIFY(form_ && form_->isVisible());
    QCOMPARE(frame.subWindowList().size(), 1);

    stand(0, 0);
    type(u"mended"_s);
    frame.subWindowList()[0]->close();
    QTRY_VERIFY(form_.isNull());
    QTRY_VERIFY(frame.subWindowList().isEmpty());
    QCOMPARE(names(0), QStringList(u"mended"_s));
    controls::setFrame(nullptr);
}

void FrColorKindTest::cmdEnd_closesWithoutAQuestion()
{
    open();
    end();
    QTRY_VERIFY(form_.isNull());
    QVERIFY(boxes_->shown().empty());
}

ZOMREL_QTEST_MAIN(FrColorKindTest)
#include "fr_color_kind_test.moc"
