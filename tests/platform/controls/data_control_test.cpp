#include "platform/controls/data_control.h"

#include "platform/runtime/run_time_error.h"
#include "sample_store.h"
#include "support/doors.h"
#include "support/errors.h"
#include "support/widgets.h"

#include <QAbstractButton>
#include <QLabel>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using controls::DataControl;
using controlstest::SampleStore;
using testsupport::errorOf;

namespace {

QString currentName(const DataControl& control)
{
    return control.Recordset().Fields(u"Name"_s).Value().toString();
}

/// Records what a Validate handler sees: the current row before the change, and RecordCount.
class Watch
{
public:
    explicit Watch(DataControl& control)
    {
        QObject::connect(&control, &DataControl::Validate, &control, [this, &control] {
            dao::Recordset& rows = control.Recordset();
            seen.append(u"%1 of %2"_s.arg(rows.hasCurrent() ? currentName(control) : u"-"_s)
                            .arg(rows.RecordCount()));
        });
    }
    QStringList seen;
};

} // namespace

class DataControlTest : public QObject
{
    Q_OBJECT

private slots:
    void unbound_failsWithObjectNotSet();
    void binding_emitsNoValidate();
    void everyMove_emitsValidateBefore();
    void moveLast_readsAllRowsBeforeValidate();
    void delete_emitsValidateBefore();
    void rowChanges_areForwardedAsSignals();
    void refresh_keepsTheCurrentRow();
    void refresh_afterADeletion_selectsTheRowAtThatPosition();
    void refresh_afterAnotherStationDeletedTheRow_selectsAnother();
    void refresh_withoutACurrentRow_selectsTheFirst();
    void refresh_showsRowsOfOtherStations();
    void refresh_keepsTheNumberOfReachedRows();
    void refresh_ofATable_keepsTheCurrentRow();
    void formerRecordset_isNoLongerObserved();
    void barButtons_moveAndStopAtTheEnds();
    void barButtons_withoutRows_doNothing();
    void barButtons_afterADeletion_moveToANeighbour();
    void barButton_withAnError_opensTheErrorBox();
    void dataControl_isHiddenAndHasNoLabel();
};

void DataControlTest::unbound_failsWithObjectNotSet()
{
    DataControl control(u"DataOrders"_s);
    QVERIFY(!control.hasRecordset());
    QCOMPARE(errorOf([&] { control.Recordset(); }), int(runtime::ObjectNotSet));
    QCOMPARE(errorOf([&] { control.Database(); }), int(runtime::ObjectNotSet));
    QCOMPARE(errorOf([&] { control.Refresh(); }), int(runtime::ObjectNotSet));
}

void DataControlTest::binding_emitsNoValidate()
{
    SampleStore store;
    store.addLines({u"a"_s});
    DataControl control(u"DataOrders"_s);
    QSignalSpy validate(&control, &DataControl::Validate);
    QSignalSpy reset(&control, &DataControl::rowsReset);
    control.setRecordset(store.dynaset());
    control.setRecordset(store.dynaset());
    QCOMPARE(validate.count(), 0);
    QCOMPARE(reset.count(), 2);
    QCOMPARE(&control.Database(), control.Recordset().database().get());
}

void DataControlTest::everyMove_emitsValidateBefore()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    const Watch watch(control);
    control.Recordset().MoveNext();
    control.Recordset().MoveFirst();
    control.Recordset().MoveFirst(); // The same row becomes current again.
    control.Recordset().Move(0);
    control.Recordset().MovePrevious();
    QCOMPARE(watch.seen,
             (QStringList{u"a of 1"_s, u"b of 2"_s, u"a of 2"_s, u"a of 2"_s, u"a of 2"_s}));
    QVERIFY(control.Recordset().isBof());
}

void DataControlTest::moveLast_readsAllRowsBeforeValidate()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    const Watch watch(control);
    control.Recordset().MoveLast();
    QCOMPARE(watch.seen, QStringList{u"a of 3"_s});
    QCOMPARE(currentName(control), u"c"_s);
}

void DataControlTest::delete_emitsValidateBefore()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    control.Recordset().MoveLast();
    const Watch watch(control);
    control.Recordset().Delete();
    QCOMPARE(watch.seen, QStringList{u"b of 2"_s});
    QCOMPARE(store.names(), QStringList{u"a"_s});
}

void DataControlTest::rowChanges_areForwardedAsSignals()
{
    SampleStore store;
    store.addLines({u"a"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    QSignalSpy added(&control, &DataControl::rowAdded);
    QSignalSpy updated(&control, &DataControl::rowUpdated);
    QSignalSpy deleted(&control, &DataControl::rowDeleted);
    dao::Recordset& rows = control.Recordset();
    const dao::RowKey key = rows.currentKey();
    rows.Edit();
    rows.Fields(u"Name"_s).SetValue(u"x"_s);
    rows.Update();
    QCOMPARE(updated.count(), 1);
    QCOMPARE(updated[0][0].value<QVariant>(), key);
    rows.AddNew();
    rows.Update();
    QCOMPARE(added.count(), 1);
    rows.Delete();
    QCOMPARE(deleted.count(), 1);
    QCOMPARE(deleted[0][0].value<QVariant>(), key);
}

void DataControlTest::refresh_keepsTheCurrentRow()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    control.Recordset().MoveNext();
    const Watch watch(control);
    store.sql(u"UPDATE Lines SET Num = 9 WHERE Name = 'a'"_s); // The row now sorts last.
    control.Refresh();
    // Validate fires once, before the query runs again.
    QCOMPARE(watch.seen, QStringList{u"b of 2"_s});
    QCOMPARE(currentName(control), u"b"_s);
    control.Recordset().MoveLast();
    QCOMPARE(currentName(control), u"a"_s);
}

void DataControlTest::refresh_afterADeletion_selectsTheRowAtThatPosition()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    control.Recordset().MoveNext();
    control.Recordset().Delete();
    control.Refresh();
    QCOMPARE(currentName(control), u"c"_s);
    control.Recordset().Delete(); // After the last row is deleted, the previous row is the nearest.
    control.Refresh();
    QCOMPARE(currentName(control), u"a"_s);
    control.Recordset().Delete();
    control.Refresh();
    QCOMPARE(control.Recordset().RecordCount(), 0);
    QVERIFY(!control.Recordset().hasCurrent());
}

void DataControlTest::refresh_afterAnotherStationDeletedTheRow_selectsAnother()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    for (const bool asTable : {false, true}) {
        DataControl control(u"DataOrders"_s);
        control.setRecordset(asTable ? store.table() : store.dynaset());
        control.Recordset().MoveNext();
        const QString gone = currentName(control);
        control.Recordset().MoveNext();
        const QString next = currentName(control);
        control.Recordset().MovePrevious();
        store.sql(u"DELETE FROM Lines WHERE Name = ?"_s, {gone});
        control.Refresh();
        QCOMPARE(currentName(control), next);
    }
}

void DataControlTest::refresh_withoutACurrentRow_selectsTheFirst()
{
    SampleStore store;
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    const Watch watch(control);
    store.addLines({u"a"_s, u"b"_s});
    control.Refresh();
    QCOMPARE(watch.seen, QStringList{u"- of 0"_s});
    QCOMPARE(currentName(control), u"a"_s);
    control.Recordset().MoveLast();
    control.Recordset().MoveNext(); // The recordset is after its last row.
    control.Refresh();
    QCOMPARE(currentName(control), u"a"_s);
}

void DataControlTest::refresh_showsRowsOfOtherStations()
{
    SampleStore store;
    store.addLines({u"a"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    QSignalSpy reset(&control, &DataControl::rowsReset);
    store.addLines({u"b"_s});
    control.Recordset().MoveLast();
    QCOMPARE(currentName(control), u"a"_s);
    control.Refresh();
    QCOMPARE(reset.count(), 1);
    control.Recordset().MoveLast();
    QCOMPARE(currentName(control), u"b"_s);
}

void DataControlTest::refresh_keepsTheNumberOfReachedRows()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    control.Refresh();
    QCOMPARE(control.Recordset().RecordCount(), 1);
    control.Recordset().MoveNext();
    control.Recordset().MoveFirst();
    control.Refresh();
    QCOMPARE(control.Recordset().RecordCount(), 2);
    control.Recordset().MoveLast();
    control.Recordset().MoveFirst();
    const Watch watch(control);
    control.Recordset().Delete();
    control.Refresh();
    QCOMPARE(watch.seen, (QStringList{u"a of 4"_s, u"- of 3"_s}));
    QCOMPARE(control.Recordset().RecordCount(), 3);
    QCOMPARE(currentName(control), u"b"_s);
}

void DataControlTest::refresh_ofATable_keepsTheCurrentRow()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    DataControl control(u"DataGrid"_s);
    control.setRecordset(store.table());
    control.Recordset().MoveNext();
    control.Refresh();
    QCOMPARE(currentName(control), u"b"_s);
    control.Recordset().Delete();
    control.Refresh();
    QCOMPARE(currentName(control), u"c"_s);
    control.Recordset().Delete();
    control.Refresh();
    QCOMPARE(currentName(control), u"a"_s);
}

void DataControlTest::formerRecordset_isNoLongerObserved()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s});
    const std::shared_ptr<dao::Recordset> former = store.dynaset();
    const std::shared_ptr<dao::Recordset> later = store.dynaset();
    {
        DataControl control(u"DataOrders"_s);
        QSignalSpy validate(&control, &DataControl::Validate);
        control.setRecordset(former);
        control.setRecordset(later);
        former->MoveNext();
        QCOMPARE(validate.count(), 0);
    }
    later->MoveNext(); // A deleted data control is not notified.
    QCOMPARE(later->Fields(u"Name"_s).Value().toString(), u"b"_s);
}

void DataControlTest::barButtons_moveAndStopAtTheEnds()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    control.show();
    QSignalSpy validate(&control, &DataControl::Validate);
    const QList<QPair<QString, QString>> steps{
        {u"DataOrders_Previous"_s, u"a"_s}, {u"DataOrders_Next"_s, u"b"_s},
        {u"DataOrders_Next"_s, u"c"_s},     {u"DataOrders_Next"_s, u"c"_s},
        {u"DataOrders_Previous"_s, u"b"_s}, {u"DataOrders_First"_s, u"a"_s},
        {u"DataOrders_Last"_s, u"c"_s},     {u"DataOrders_Last"_s, u"c"_s},
    };
    for (int i = 0; i < steps.size(); ++i) {
        auto* button = testsupport::child<QAbstractButton>(control, steps[i].first);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(currentName(control), steps[i].second);
        QCOMPARE(validate.count(), i + 1);
    }
}

void DataControlTest::barButtons_withoutRows_doNothing()
{
    SampleStore store;
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    DataControl control(u"DataOrders"_s);
    control.show();
    QSignalSpy validate(&control, &DataControl::Validate);
    for (const bool bound : {false, true}) {
        if (bound)
            control.setRecordset(store.dynaset());
        for (auto* button : control.findChildren<QAbstractButton*>())
            QTest::mouseClick(button, Qt::LeftButton);
    }
    QCOMPARE(validate.count(), 0);
    QVERIFY(!end.exitStatus());
    QVERIFY(boxes.unexpected().isEmpty());
}

void DataControlTest::barButtons_afterADeletion_moveToANeighbour()
{
    SampleStore store;
    store.addLines({u"a"_s, u"b"_s, u"c"_s});
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    control.show();
    control.Recordset().MoveNext();
    control.Recordset().Delete();
    QTest::mouseClick(testsupport::child<QAbstractButton>(control, u"DataOrders_Next"_s),
                      Qt::LeftButton);
    QCOMPARE(currentName(control), u"c"_s);
}

void DataControlTest::barButton_withAnError_opensTheErrorBox()
{
    SampleStore store;
    store.addLines({u"a"_s});
    testsupport::RecordedBoxes boxes;
    testsupport::RecordedEnd end;
    DataControl control(u"DataOrders"_s);
    control.setRecordset(store.dynaset());
    control.show();
    control.Database().Close();
    boxes.answer(runtime::vbOK);
    QTest::mouseClick(testsupport::child<QAbstractButton>(control, u"DataOrders_Last"_s),
                      Qt::LeftButton);
    QCOMPARE(end.exitStatus(), 1);
    QCOMPARE(boxes.shown().size(), 1U);
    QVERIFY(boxes.shown()[0].text.startsWith(u"Run-time error '3420':"_s));
}

void DataControlTest::dataControl_isHiddenAndHasNoLabel()
{
    QWidget form;
    auto* control = new DataControl(u"DataOrders"_s, &form);
    QVERIFY(testsupport::showActive(form));
    QVERIFY(!control->isVisible());
    QVERIFY(control->findChildren<QLabel*>().isEmpty());
    control->show();
    QVERIFY(control->isVisible());
}

ZOMREL_QTEST_MAIN(DataControlTest)
#include "data_control_test.moc"
