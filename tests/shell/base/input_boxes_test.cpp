#include "shell/base/input_boxes.h"

#include "support/widgets.h"

#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using Module1::MeasureBox;
using Module1::MeasurePair;
using Module1::SignBox;
using OnLeaving = MeasureBox::OnLeaving;

namespace {

QComboBox* editableCombo(QWidget* form)
{
    auto* combo = new QComboBox(form);
    combo->setObjectName(u"DBComboKind_0"_s);
    combo->setEditable(true);
    combo->setEditText(u"white"_s);
    return combo;
}

/// A form with one pair of boxes, and what can stand behind them in the tab order.
struct Boxes
{
    explicit Boxes(QWidget* form, OnLeaving onLeaving = OnLeaving::FillDefault)
        : whole(new MeasureBox(0, u"0"_s, onLeaving)),
          hundredths(new MeasureBox(1, u"00"_s, onLeaving)),
          pair(new MeasurePair(u"Picture1_0"_s, whole, hundredths, u"Label1_1"_s, form)),
          combo(editableCombo(form)), name(new QLineEdit(u"ab"_s, form)),
          button(new QPushButton(u"x"_s, form))
    {
        name->setObjectName(u"TextName"_s);
        button->setObjectName(u"CmdOK"_s);
        form->setLayoutDirection(Qt::RightToLeft);
        auto* column = new QVBoxLayout(form);
        for (QWidget* each : {static_cast<QWidget*>(pair), static_cast<QWidget*>(combo),
                              static_cast<QWidget*>(name), static_cast<QWidget*>(button)})
            column->addWidget(each);
        QWidget::setTabOrder(whole, hundredths);
        QWidget::setTabOrder(hundredths, combo);
        QWidget::setTabOrder(combo, name);
        QWidget::setTabOrder(name, button);
    }

    MeasureBox* whole;
    MeasureBox* hundredths;
    MeasurePair* pair;
    QComboBox* combo;
    QLineEdit* name;
    QPushButton* button;
};

} // namespace

class InputBoxesTest : public QObject
{
    Q_OBJECT

private slots:
    void defaultsFollowTheIndex();
    void pairStandsFromLeftToRight();
    void pointStandsInTheFixedPitchFontThatIsNamed();
    void pairStaysWhiteWhileDisabled();
    void enterAndArrowsWalkAndSelect_data();
    void enterAndArrowsWalkAndSelect();
    void walkSkipsWhatTabSkips();
    void walkStaysInItsChildWindow();
    void enterPressesNoDefaultButton();
    void noKeyIsRefused();
    void emptyBoxesAreFilled();
    void singleHundredthIsPaddedOnTheOrderFormOnly();
    void menusAreNoLoss();
    void focusSelects();
    void clickSelectsAndTheSelectionStays();

    void signKeys_data();
    void signKeys();
    void signLockLastsAsLongAsTheKey();
    void signTakesNoPaste();
    void signWalks();
    void signLeftByTabIsNotLocked();
    void signLeftEmptyIsPlus();
    void helpersTakeKeyCodes();
};

void InputBoxesTest::defaultsFollowTheIndex()
{
    const MeasureBox whole(4, u"4"_s, OnLeaving::FillDefault);
    QCOMPARE(whole.objectName(), u"TextNum_4"_s);
    QCOMPARE(whole.Index(), 4);
    QCOMPARE(whole.text(), u"4"_s);
    QCOMPARE(whole.maxLength(), 3);
    QVERIFY(whole.alignment().testFlags(Qt::AlignRight | Qt::AlignAbsolute));
    QCOMPARE(whole.layoutDirection(), Qt::LeftToRight);

    const MeasureBox hundredths(5, u"50"_s, OnLeaving::FillDefault);
    QCOMPARE(hundredths.maxLength(), 2);
    QVERIFY(hundredths.alignment().testFlags(Qt::AlignLeft | Qt::AlignAbsolute));

    const SignBox sign(7);
    QCOMPARE(sign.objectName(), u"TextSign_7"_s);
    QCOMPARE(sign.text(), u"-"_s);
    QCOMPARE(sign.maxLength(), 1);
}

void InputBoxesTest::pairStandsFromLeftToRight()
{
    QWidget form;
    const Boxes boxes(&form);
    QVERIFY(testsupport::showActive(form));
    QCOMPARE(boxes.pair->objectName(), u"Picture1_0"_s);
    QCOMPARE(boxes.pair->point()->objectName(), u"Label1_1"_s);
    QCOMPARE(boxes.pair->point()->text(), u"."_s);
    QVERIFY(boxes.whole->x() < boxes.pair->point()->x());
    QVERIFY(boxes.pair->point()->x() < boxes.hundredths->x());
    QCOMPARE(boxes.whole->parentWidget(), boxes.pair);
    QVERIFY(boxes.whole->width() > boxes.whole->fontMetrics().horizontalAdvance(u"888"_s));
}

/// Judged by the widths that are drawn: what a font says of its own pitch may be wrong.
void InputBoxesTest::pointStandsInTheFixedPitchFontThatIsNamed()
{
    QWidget form;
    const Boxes boxes(&form);
    const QFont font = boxes.pair->point()->font();
    QCOMPARE(QFontInfo(font).family(), u"DejaVu Sans Mono"_s);
    const QFontMetricsF metrics(font);
    for (const QString& each : {u"i"_s, u"W"_s, u"0"_s})
        QCOMPARE(metrics.horizontalAdvance(each), metrics.horizontalAdvance(u"."_s));
    QCOMPARE(QFontInfo(font).pointSizeF(), QFontInfo(boxes.whole->font()).pointSizeF());
}

void InputBoxesTest::pairStaysWhiteWhileDisabled()
{
    QWidget form;
    const Boxes boxes(&form);
    form.setEnabled(false);
    const QImage picture = boxes.pair->grab().toImage();
    for (int x = 2; x < picture.width() - 2; ++x)
        QCOMPARE(picture.pixelColor(x, 2), QColor(Qt::white));
}

void InputBoxesTest::enterAndArrowsWalkAndSelect_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("selected");

    QTest::newRow("Enter goes on")
        << u"TextNum_0"_s << int(Qt::Key_Return) << u"TextNum_1"_s << u"00"_s;
    QTest::newRow("so does the keypad's")
        << u"TextNum_0"_s << int(Qt::Key_Enter) << u"TextNum_1"_s << u"00"_s;
    QTest::newRow("so does Down") << u"TextNum_0"_s << int(Qt::Key_Down) << u"TextNum_1"_s
                                  << u"00"_s;
    QTest::newRow("Up goes back") << u"TextNum_1"_s << int(Qt::Key_Up) << u"TextNum_0"_s << u"0"_s;
    QTest::newRow("into an editable combo")
        << u"TextNum_1"_s << int(Qt::Key_Return) << u"DBComboKind_0"_s << u"white"_s;
    QTest::newRow("Up in the first goes round")
        << u"TextNum_0"_s << int(Qt::Key_Up) << u"CmdOK"_s << u""_s;
}

void InputBoxesTest::enterAndArrowsWalkAndSelect()
{
    QFETCH(const QString, from);
    QFETCH(const int, key);
    QWidget form;
    const Boxes boxes(&form);
    QVERIFY(testsupport::showActive(form));
    auto* start = testsupport::child<MeasureBox>(form, from);
    start->setFocus();
    QTest::keyClick(start, static_cast<Qt::Key>(key));
    QTEST(testsupport::focusName(), "to");
    QWidget* reached = QApplication::focusWidget();
    auto* edit = qobject_cast<QLineEdit*>(reached);
    if (reached == boxes.combo)
        edit = boxes.combo->lineEdit();
    QTEST(edit != nullptr ? edit->selectedText() : QString(u""_s), "selected");
}

void InputBoxesTest::walkSkipsWhatTabSkips()
{
    QWidget form;
    const Boxes boxes(&form);
    boxes.hundredths->setEnabled(false);
    boxes.combo->hide();
    QVERIFY(testsupport::showActive(form));
    boxes.whole->setFocus();
    QTest::keyClick(boxes.whole, Qt::Key_Down);
    QCOMPARE(testsupport::focusName(), u"TextName"_s);
    QCOMPARE(boxes.name->selectedText(), u"ab"_s);
}

void InputBoxesTest::walkStaysInItsChildWindow()
{
    QMdiArea frame;
    auto* first = new QWidget;
    auto* second = new QWidget;
    const Boxes inFirst(first);
    const Boxes inSecond(second);
    frame.addSubWindow(first);
    QMdiSubWindow* window = frame.addSubWindow(second);
    QVERIFY(testsupport::showActive(frame));
    frame.setActiveSubWindow(window);
    inSecond.whole->setFocus();
    QTest::keyClick(inSecond.whole, Qt::Key_Up);
    QCOMPARE(QApplication::focusWidget(), inSecond.button);
    inSecond.hundredths->setFocus();
    QTest::keyClick(inSecond.hundredths, Qt::Key_Down);
    QCOMPARE(QApplication::focusWidget(), inSecond.combo);
    QCOMPARE(inSecond.combo->lineEdit()->selectedText(), u"white"_s);
}

void InputBoxesTest::enterPressesNoDefaultButton()
{
    QDialog form;
    const Boxes boxes(&form);
    boxes.button->setDefault(true);
    QSignalSpy pressed(boxes.button, &QPushButton::clicked);
    QVERIFY(testsupport::showActive(form));
    boxes.whole->setFocus();
    QTest::keyClick(boxes.whole, Qt::Key_Return);
    QCOMPARE(testsupport::focusName(), u"TextNum_1"_s);
    QCOMPARE(pressed.count(), 0);
}

void InputBoxesTest::noKeyIsRefused()
{
    QWidget form;
    const Boxes boxes(&form);
    QVERIFY(testsupport::showActive(form));
    boxes.whole->setFocus();
    boxes.whole->selectAll();
    QTest::keyClicks(boxes.whole, u"-.a9"_s);
    QCOMPARE(boxes.whole->text(), u"-.a"_s); // up to its limit
    boxes.hundredths->setFocus();
    boxes.hundredths->selectAll();
    QTest::keyClicks(boxes.hundredths, u"7x1"_s);
    QCOMPARE(boxes.hundredths->text(), u"7x"_s);
    QVERIFY(!boxes.hundredths->isReadOnly());
    boxes.name->setFocus();
    QCOMPARE(boxes.whole->text(), u"-.a"_s); // what is no number stays, too
}

void InputBoxesTest::emptyBoxesAreFilled()
{
    QWidget form;
    const Boxes boxes(&form);
    QVERIFY(testsupport::showActive(form));
    boxes.whole->setFocus();
    QTest::keyClick(boxes.whole, Qt::Key_Backspace);
    QCOMPARE(boxes.whole->text(), u""_s);
    QTest::keyClick(boxes.whole, Qt::Key_Return);
    QCOMPARE(boxes.whole->text(), u"0"_s);
    QTest::keyClick(boxes.hundredths, Qt::Key_Delete);
    boxes.name->setFocus();
    QCOMPARE(boxes.hundredths->text(), u"00"_s);
}

void InputBoxesTest::singleHundredthIsPaddedOnTheOrderFormOnly()
{
    for (const OnLeaving onLeaving : {OnLeaving::FillDefault, OnLeaving::FillDefaultAndPad}) {
        QWidget form;
        const Boxes boxes(&form, onLeaving);
        const bool pads = onLeaving == OnLeaving::FillDefaultAndPad;
        QVERIFY(testsupport::showActive(form));
        boxes.hundredths->setFocus();
        boxes.hundredths->selectAll();
        QTest::keyClicks(boxes.hundredths, u"5"_s);
        QTest::keyClick(boxes.hundredths, Qt::Key_Return);
        QCOMPARE(boxes.hundredths->text(), pads ? u"50"_s : u"5"_s);
        QCOMPARE(testsupport::focusName(), u"DBComboKind_0"_s);

        boxes.hundredths->setFocus();
        boxes.hundredths->setText(u"x"_s);
        boxes.whole->setFocus();
        QCOMPARE(boxes.hundredths->text(), pads ? u"x0"_s : u"x"_s);

        boxes.whole->setText(u"7"_s);
        boxes.name->setFocus();
        QCOMPARE(boxes.whole->text(), u"7"_s); // a whole box is never padded
    }
}

void InputBoxesTest::menusAreNoLoss()
{
    QWidget form;
    const Boxes boxes(&form, OnLeaving::FillDefaultAndPad);
    boxes.hundredths->setSelectsOnFocus(true);
    QVERIFY(testsupport::showActive(form));
    boxes.hundredths->setFocus();
    boxes.hundredths->setText(u"5"_s);
    QFocusEvent menu(QEvent::FocusOut, Qt::PopupFocusReason);
    QApplication::sendEvent(boxes.hundredths, &menu);
    QCOMPARE(boxes.hundredths->text(), u"5"_s);
    QFocusEvent back(QEvent::FocusIn, Qt::PopupFocusReason);
    QApplication::sendEvent(boxes.hundredths, &back);
    QCOMPARE(boxes.hundredths->selectedText(), u""_s);
}

void InputBoxesTest::focusSelects()
{
    QWidget form;
    const Boxes boxes(&form);
    boxes.whole->setSelectsOnFocus(true);
    QVERIFY(testsupport::showActive(form));
    boxes.name->setFocus();
    boxes.whole->setText(u"123"_s);
    boxes.whole->setFocus(Qt::OtherFocusReason);
    QCOMPARE(boxes.whole->selectedText(), u"123"_s);
    boxes.hundredths->setFocus(Qt::OtherFocusReason);
    QCOMPARE(boxes.hundredths->selectedText(), u""_s); // where the form does not ask for it
}

void InputBoxesTest::clickSelectsAndTheSelectionStays()
{
    QWidget form;
    const Boxes boxes(&form);
    boxes.whole->setSelectsOnFocus(true);
    boxes.whole->setText(u"123"_s);
    QVERIFY(testsupport::showActive(form));
    boxes.name->setFocus();
    const QPoint start(3, boxes.whole->height() / 2);
    QTest::mousePress(boxes.whole, Qt::LeftButton, {}, start);
    QCOMPARE(boxes.whole->selectedText(), u"123"_s);
    QTest::mouseMove(boxes.whole, start + QPoint(5, 0)); // a hand is not quite still
    QTest::mouseRelease(boxes.whole, Qt::LeftButton, {}, start + QPoint(5, 0));
    QCOMPARE(boxes.whole->selectedText(), u"123"_s);
    // A further click in the box places the cursor as usual.
    QTest::mouseClick(boxes.whole, Qt::LeftButton, {}, start);
    QCOMPARE(boxes.whole->selectedText(), u""_s);
}

void InputBoxesTest::signKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("keypad");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("text");

    QTest::newRow("main minus") << int(Qt::Key_Minus) << false << u"-"_s << u"-"_s;
    QTest::newRow("keypad minus") << int(Qt::Key_Minus) << true << u"-"_s << u"-"_s;
    QTest::newRow("keypad plus") << int(Qt::Key_Plus) << true << u"+"_s << u"+"_s;
    QTest::newRow("main plus") << int(Qt::Key_Plus) << false << u"+"_s << u"*"_s;
    QTest::newRow("digit") << int(Qt::Key_5) << false << u"5"_s << u"*"_s;
    QTest::newRow("keypad digit") << int(Qt::Key_5) << true << u"5"_s << u"*"_s;
    QTest::newRow("letter") << int(Qt::Key_A) << false << u"a"_s << u"*"_s;
    QTest::newRow("parenthesis") << int(Qt::Key_ParenLeft) << false << u"("_s << u"*"_s;
    QTest::newRow("ampersand") << int(Qt::Key_Ampersand) << false << u"&"_s << u"*"_s;
    QTest::newRow("point") << int(Qt::Key_Period) << false << u"."_s << u"*"_s;
    QTest::newRow("blank") << int(Qt::Key_Space) << false << u" "_s << u"*"_s;
    QTest::newRow("Backspace") << int(Qt::Key_Backspace) << false << u"\b"_s << u""_s;
    QTest::newRow("Delete") << int(Qt::Key_Delete) << false << u"\x7f"_s << u""_s;
}

void InputBoxesTest::signKeys()
{
    QFETCH(const int, key);
    QFETCH(const bool, keypad);
    QFETCH(const QString, typed);
    SignBox box(0);
    QVERIFY(testsupport::showActive(box));
    box.setText(u"*"_s);
    box.selectAll();
    const Qt::KeyboardModifiers modifiers = keypad ? Qt::KeypadModifier : Qt::NoModifier;
    QTest::sendKeyEvent(QTest::Click, &box, static_cast<Qt::Key>(key), typed, modifiers);
    QTEST(box.text(), "text");
    QVERIFY(!box.isReadOnly());
}

void InputBoxesTest::signLockLastsAsLongAsTheKey()
{
    SignBox box(0);
    QVERIFY(testsupport::showActive(box));
    box.selectAll();
    for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Left, Qt::Key_Right, Qt::Key_7}) {
        QTest::keyPress(&box, key);
        QVERIFY(box.isReadOnly());
        QTest::keyRelease(&box, key);
        QVERIFY(!box.isReadOnly());
    }
    // While Shift is held nothing is typed, a plus of the main keyboard least of all.
    box.selectAll();
    QTest::keyPress(&box, Qt::Key_Shift);
    QTest::keyPress(&box, Qt::Key_Minus, Qt::ShiftModifier);
    QVERIFY(box.isReadOnly());
    QCOMPARE(box.text(), u"-"_s);
    QTest::keyRelease(&box, Qt::Key_Minus, Qt::ShiftModifier);
    QVERIFY(!box.isReadOnly());
    // A box that holds a sign takes no other until that one is selected or removed.
    box.deselect();
    box.end(false);
    QTest::keyClick(&box, Qt::Key_Plus, Qt::KeypadModifier);
    QCOMPARE(box.text(), u"-"_s);
    QTest::keyClick(&box, Qt::Key_Backspace);
    QTest::keyClick(&box, Qt::Key_Plus, Qt::KeypadModifier);
    QCOMPARE(box.text(), u"+"_s);
}

void InputBoxesTest::signTakesNoPaste()
{
    SignBox box(0);
    QVERIFY(testsupport::showActive(box));
    QApplication::clipboard()->setText(u"7"_s);
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(box.text(), u"-"_s);
    QTest::keyClick(&box, Qt::Key_Insert, Qt::ShiftModifier);
    QCOMPARE(box.text(), u"-"_s);
}

void InputBoxesTest::signWalks()
{
    QWidget form;
    auto* column = new QVBoxLayout(&form);
    auto* sign = new SignBox(0, &form);
    auto* whole = new MeasureBox(0, u"12"_s, OnLeaving::FillDefault, &form);
    column->addWidget(sign);
    column->addWidget(whole);
    QVERIFY(testsupport::showActive(form));
    sign->setFocus();
    QTest::keyClick(sign, Qt::Key_Return);
    QCOMPARE(testsupport::focusName(), u"TextNum_0"_s);
    QCOMPARE(whole->selectedText(), u"12"_s);
    QTest::keyClick(whole, Qt::Key_Up);
    QCOMPARE(testsupport::focusName(), u"TextSign_0"_s);
    QCOMPARE(sign->selectedText(), u"-"_s);
    QVERIFY(!sign->isReadOnly());
}

void InputBoxesTest::signLeftByTabIsNotLocked()
{
    QWidget form;
    auto* column = new QVBoxLayout(&form);
    auto* name = new QLineEdit(&form);
    auto* sign = new SignBox(0, &form);
    column->addWidget(name);
    column->addWidget(sign);
    QVERIFY(testsupport::showActive(form));
    sign->setFocus();
    QTest::keyPress(sign, Qt::Key_Shift);
    QTest::keyClick(sign, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget(), name);
    QTest::keyRelease(name, Qt::Key_Shift);
    sign->setFocus();
    sign->selectAll();
    QTest::keyClick(sign, Qt::Key_Plus, Qt::KeypadModifier);
    QCOMPARE(sign->text(), u"+"_s);
    QTest::keyClick(sign, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), name);
}

void InputBoxesTest::signLeftEmptyIsPlus()
{
    QWidget form;
    auto* column = new QVBoxLayout(&form);
    auto* sign = new SignBox(0, &form);
    auto* name = new QLineEdit(&form);
    column->addWidget(sign);
    column->addWidget(name);
    QVERIFY(testsupport::showActive(form));
    sign->setFocus();
    sign->selectAll();
    QTest::keyClick(sign, Qt::Key_Delete);
    QCOMPARE(sign->text(), u""_s);
    QTest::keyClick(sign, Qt::Key_Down);
    QCOMPARE(sign->text(), u"+"_s);
}

void InputBoxesTest::helpersTakeKeyCodes()
{
    QWidget form;
    const Boxes boxes(&form);
    QVERIFY(testsupport::showActive(form));
    boxes.whole->setFocus();
    Module1::KeyNavigate(*boxes.whole, 13, false);
    QCOMPARE(boxes.hundredths->selectedText(), u"00"_s); // whatever the flag says
    Module1::KeyNavigate(*boxes.hundredths, 65, true);
    QCOMPARE(testsupport::focusName(), u"TextNum_1"_s);
    QVERIFY(!boxes.hundredths->isReadOnly());
    boxes.name->setText(u"abc"_s);
    Module1::SelectAllText(*boxes.name);
    QCOMPARE(boxes.name->selectedText(), u"abc"_s);
    // A box in a window that nobody sees is passed over in silence.
    MeasureBox hidden(0, u"0"_s, OnLeaving::FillDefault);
    Module1::KeyNavigate(hidden, 40, true);
    QCOMPARE(hidden.text(), u"0"_s);
}

ZOMREL_QTEST_MAIN(InputBoxesTest)
#include "input_boxes_test.moc"
