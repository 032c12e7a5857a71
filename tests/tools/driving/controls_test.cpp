#include "driving/controls.h"
#include "support/doors.h"
#include "support/widgets.h"

#include "platform/runtime/run_time_error.h"

#include <QAction>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>

using namespace Qt::StringLiterals;

namespace {

/// A form with two input boxes named "First" and "Second".
struct TwoBoxes
{
    TwoBoxes()
    {
        first.setObjectName(u"First"_s);
        second.setObjectName(u"Second"_s);
    }

    QWidget form;
    QLineEdit first{&form};
    QLineEdit second{&form};
};

} // namespace

/// The steps that operate any form, on small forms of this test.
class ControlsTest : public QObject
{
    Q_OBJECT

private slots:
    void shownWindow_withAHiddenAndAShownOne_returnsTheShownOne();
    void closeWindow_withoutSuchAWindow_closesNothing();
    void click_pressesTheNamedButton();
    void type_keepsTheFocus();
    void enter_movesTheFocusAndTakesItAway();
    void trigger_withSeveralCommands_triggersTheTagged();
    void cellText_returnsTheDisplayedText();
    void inNextModal_workLeavesTheDialogOpen_rejectsIt();
    void inNextModal_workAcceptsTheDialog_keepsItsResult();
    void inNextModal_errorInTheWork_endsTheProgram();
};

void ControlsTest::shownWindow_withAHiddenAndAShownOne_returnsTheShownOne()
{
    QWidget hidden;
    hidden.setObjectName(u"Form"_s);
    QCOMPARE(driving::shownWindow(u"Form"_s), nullptr);
    QWidget shown;
    shown.setObjectName(u"Form"_s);
    shown.show();
    QCOMPARE(driving::shownWindow(u"Form"_s), &shown);
}

void ControlsTest::closeWindow_withoutSuchAWindow_closesNothing()
{
    QWidget shown;
    shown.setObjectName(u"Form"_s);
    shown.show();
    driving::closeWindow(u"Other"_s);
    QVERIFY(shown.isVisible());
    driving::closeWindow(u"Form"_s);
    QVERIFY(!shown.isVisible());
}

void ControlsTest::click_pressesTheNamedButton()
{
    QWidget form;
    QPushButton add(&form);
    add.setObjectName(u"CmdAdd"_s);
    QPushButton del(&form);
    del.setObjectName(u"CmdDel"_s);
    int added = 0;
    int deleted = 0;
    connect(&add, &QPushButton::clicked, this, [&added] { ++added; });
    connect(&del, &QPushButton::clicked, this, [&deleted] { ++deleted; });
    driving::click(form, u"CmdDel"_s);
    QCOMPARE(added, 0);
    QCOMPARE(deleted, 1);
}

void ControlsTest::type_keepsTheFocus()
{
    TwoBoxes boxes;
    QVERIFY(testsupport::showActive(boxes.form));
    boxes.first.setFocus();
    driving::type(boxes.form, u"Second"_s, u"120"_s);
    QCOMPARE(boxes.second.text(), u"120"_s);
    QCOMPARE(testsupport::focusName(), u"First"_s);
}

void ControlsTest::enter_movesTheFocusAndTakesItAway()
{
    TwoBoxes boxes;
    QVERIFY(testsupport::showActive(boxes.form));
    boxes.first.setFocus();
    int finished = 0;
    connect(&boxes.second, &QLineEdit::editingFinished, this, [&finished] { ++finished; });
    driving::enter(boxes.form, u"Second"_s, u"120"_s);
    QCOMPARE(boxes.second.text(), u"120"_s);
    QCOMPARE(finished, 1);
    QCOMPARE(testsupport::focusName(), QString());
}

void ControlsTest::trigger_withSeveralCommands_triggersTheTagged()
{
    QWidget window;
    QStringList triggered;
    for (const QString& tag : {u"Serials"_s, u"Order"_s, u"Exit"_s}) {
        auto* action = new QAction(&window);
        action->setData(tag);
        connect(action, &QAction::triggered, this, [&triggered, tag] { triggered.append(tag); });
    }
    driving::trigger(window, u"Order"_s);
    QCOMPARE(triggered, QStringList{u"Order"_s});
}

void ControlsTest::cellText_returnsTheDisplayedText()
{
    QStandardItemModel model(2, 2);
    model.setItem(1, 0, new QStandardItem(u"below"_s));
    QTableView grid;
    grid.setModel(&model);
    QCOMPARE(driving::cellText(grid, 1, 0), u"below"_s);
}

void ControlsTest::inNextModal_workLeavesTheDialogOpen_rejectsIt()
{
    QDialog dialog;
    const QDialog* seen = nullptr;
    driving::inNextModal([&seen](QDialog& modal) { seen = &modal; });
    QCOMPARE(dialog.exec(), int(QDialog::Rejected));
    QCOMPARE(seen, &dialog);
}

void ControlsTest::inNextModal_workAcceptsTheDialog_keepsItsResult()
{
    QDialog dialog;
    driving::inNextModal([](QDialog& modal) { modal.accept(); });
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
}

void ControlsTest::inNextModal_errorInTheWork_endsTheProgram()
{
    testsupport::RecordedBoxes boxes;
    boxes.answer(runtime::vbOK);
    const testsupport::RecordedEnd end;
    QDialog dialog;
    driving::inNextModal([](QDialog& modal) {
        modal.accept();
        throw runtime::RunTimeError(runtime::NoCurrentRecord);
    });
    QCOMPARE(dialog.exec(), int(QDialog::Accepted));
    QCOMPARE(end.exitStatus(), std::optional(1));
}

ZOMREL_QTEST_MAIN(ControlsTest)
#include "controls_test.moc"
