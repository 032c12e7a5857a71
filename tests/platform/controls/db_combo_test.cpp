#include "platform/controls/db_combo.h"

#include "platform/controls/data_control.h"
#include "sample_store.h"
#include "support/doors.h"
#include "support/widgets.h"

#include <QLineEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using controls::DataControl;
using controls::DBCombo;
using controlstest::SampleStore;

namespace {

QStringList entries(const DBCombo& combo)
{
    QStringList texts;
    for (int i = 0; i < combo.count(); ++i)
        texts.append(combo.itemText(i));
    return texts;
}

} // namespace

class DBComboTest : public QObject
{
    Q_OBJECT

private slots:
    void start_isEmptyWithAFilledList();
    void typing_completesToTheEntry();
    void typedText_isKeptUnchanged();
    void clearing_leavesTheTextEmpty();
    void bindingAgain_updatesTheListAndKeepsTheText();
    void filling_doesNotMoveTheRecordset();
    void readError_opensTheErrorBox();
};

void DBComboTest::start_isEmptyWithAFilledList()
{
    SampleStore store;
    store.addLines({u"לבן"_s, u"שחור"_s, u"לבן"_s, u""_s});
    DataControl data(u"DataColor_0"_s);
    DBCombo combo(u"DBComboColor_0"_s);
    QCOMPARE(combo.objectName(), u"DBComboColor_0"_s);
    combo.setRowSource(&data, u"Name"_s);
    QCOMPARE(combo.count(), 0);
    data.setRecordset(store.table());
    QCOMPARE(entries(combo), (QStringList{u"לבן"_s, u"שחור"_s, u"לבן"_s, u""_s}));
    QCOMPARE(combo.currentIndex(), -1);
    QCOMPARE(combo.currentText(), u""_s);

    DBCombo later(u"DBComboColor_1"_s);
    later.setRowSource(&data, u"name"_s); // The rows exist before the combo box is bound.
    QCOMPARE(later.count(), 4);
    QCOMPARE(later.currentText(), u""_s);
}

void DBComboTest::typing_completesToTheEntry()
{
    SampleStore store;
    store.addLines({u"white"_s, u"Black"_s});
    DataControl data(u"DataColor_0"_s);
    DBCombo combo(u"DBComboColor_0"_s);
    combo.setRowSource(&data, u"Name"_s);
    data.setRecordset(store.table());
    QVERIFY(testsupport::showActive(combo));
    combo.setFocus();
    QTest::keyClicks(&combo, u"w"_s);
    QCOMPARE(combo.currentText(), u"white"_s);
    QCOMPARE(combo.lineEdit()->selectedText(), u"hite"_s);
    combo.lineEdit()->selectAll();
    QTest::keyClicks(&combo, u"bl"_s);
    QCOMPARE(combo.currentText().toLower(), u"black"_s);
    QTest::keyClick(&combo, Qt::Key_Return);
    QCOMPARE(combo.count(), 2);
}

void DBComboTest::typedText_isKeptUnchanged()
{
    SampleStore store;
    store.addLines({u"white"_s});
    DataControl data(u"DataColor_0"_s);
    QWidget form;
    auto* column = new QVBoxLayout(&form);
    auto* combo = new DBCombo(u"DBComboColor_0"_s, &form);
    auto* other = new QLineEdit(&form);
    column->addWidget(combo);
    column->addWidget(other);
    combo->setRowSource(&data, u"Name"_s);
    data.setRecordset(store.table());
    QVERIFY(testsupport::showActive(form));
    combo->setFocus();
    QTest::keyClicks(combo, u"own colour"_s);
    QTest::keyClick(combo, Qt::Key_Return);
    other->setFocus();
    QCOMPARE(combo->currentText(), u"own colour"_s);
    QCOMPARE(combo->count(), 1);
}

void DBComboTest::clearing_leavesTheTextEmpty()
{
    SampleStore store;
    store.addLines({u"white"_s});
    DataControl data(u"DataColor_0"_s);
    DBCombo combo(u"DBComboColor_0"_s);
    combo.setRowSource(&data, u"Name"_s);
    data.setRecordset(store.table());
    QVERIFY(testsupport::showActive(combo));
    combo.setCurrentIndex(0);
    combo.lineEdit()->selectAll();
    QTest::keyClick(&combo, Qt::Key_Backspace);
    QTest::keyClick(&combo, Qt::Key_Return);
    QCOMPARE(combo.currentText(), u""_s);
}

void DBComboTest::bindingAgain_updatesTheListAndKeepsTheText()
{
    SampleStore store;
    store.addLines({u"white"_s});
    DataControl data(u"DataColor_0"_s);
    DBCombo combo(u"DBComboColor_0"_s);
    combo.setRowSource(&data, u"Name"_s);
    data.setRecordset(store.table());
    combo.setEditText(u"mine"_s);
    store.addLines({u"black"_s});
    QCOMPARE(combo.count(), 1); // A new name appears only after the rows are bound again.
    data.setRecordset(store.table());
    QCOMPARE(entries(combo), (QStringList{u"white"_s, u"black"_s}));
    QCOMPARE(combo.currentText(), u"mine"_s);
    store.sql(u"DELETE FROM Lines"_s);
    data.setRecordset(store.table());
    QCOMPARE(combo.count(), 0);
    QCOMPARE(combo.currentText(), u"mine"_s);
}

void DBComboTest::filling_doesNotMoveTheRecordset()
{
    SampleStore store;
    store.addLines({u"white"_s, u"black"_s});
    DataControl data(u"DataColor_0"_s);
    DBCombo combo(u"DBComboColor_0"_s);
    combo.setRowSource(&data, u"Name"_s);
    data.setRecordset(store.dynaset());
    QCOMPARE(data.Recordset().RecordCount(), 1);
    QCOMPARE(data.Recordset().Fields(u"Name"_s).Value().toString(), u"white"_s);
}

void DBComboTest::readError_opensTheErrorBox()
{
    SampleStore store;
    store.addLines({u"white"_s});
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    DataControl data(u"DataColor_0"_s);
    DBCombo combo(u"DBComboColor_0"_s);
    combo.setRowSource(&data, u"Name"_s);
    const std::shared_ptr<dao::Recordset> rows = store.table();
    rows->database()->Close();
    boxes.answer(runtime::vbOK);
    data.setRecordset(rows);
    QCOMPARE(end.exitStatus(), 1);
    QVERIFY(boxes.unexpected().isEmpty());
}

ZOMREL_QTEST_MAIN(DBComboTest)
#include "db_combo_test.moc"
