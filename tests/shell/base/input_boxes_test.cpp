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

/// A form with one pair of boxes and controls that follow them in tab order.
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
    void evenAndOddIndex_giveWholeAndHundredthsBox();
    void measurePair_isLaidOutLeftToRight();
    void disabledPair_staysWhite();
    void enterAndArrows_moveFocusAndSelect_data();
    void enterAndArrows_moveFocusAndSelect();
    void arrowKey_skipsControlsWithoutTabStop();
    void arrowKey_staysInItsChildWindow();
    void enterInABox_pressesNoDefaultButton();
    void measureBox_acceptsEveryKey();
    void emptyBoxLeft_isFilled();
    void singleHundredth_isPaddedOnlyWithFillDefaultAndPad();
    void menuOrOtherProgram_isNoFocusLoss();
    void focus_selectsTheText();
    void focusingClick_keepsTheSelection();

    void signBox_acceptsOnlySignKeys_data();
    void signBox_acceptsOnlySignKeys();
    void signLock_endsWithTheKeyRelease();
    void signBox_acceptsNoPaste();
    void signBox_movesFocusByEnterAndArrows();
    void signBoxLeftByTab_isNotReadOnly();
    void emptySignLeft_becomesPlus();
    void keyHelpers_acceptKeyCodes();
};

void InputBoxesTest::evenAndOddIndex_giveWholeAndHundredthsBox()
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

void InputBoxesTest::measurePair_isLaidOutLeftToRight()
{
    QWidget form;
    const Boxes boxes(&form);
    QVERIFY(testsupport::showActive(form));
    QCOMPARE(boxes.pair->objectName(), u"Picture1_0"_s);
    QCOMPARE(boxes.pair->point()->objectName(), u"Label1_1"_s);
    QCOMPARE(boxes.pair->point()->text(), u"."_s);
    QVERIFY(QFontInfo(boxes.pair->point()->font()).fixedPitch());
    QVERIFY(boxes.whole->x() < boxes.pair->point()->x());
    QVERIFY(boxes.pair->point()->x() < boxes.hundredths->x());
    QCOMPARE(boxes.whole->parentWidget(), boxes.pair);
    const int room = boxes.whole->fontMetrics().horizontalAdvance(u"888"_s);
    QVERIFY(boxes.whole->width() > room);
}

void InputBoxesTest::disabledPair_staysWhite()
{
    QWidget form;
    const Boxes boxes(&form);
    form.setEnabled(false);
    const QImage picture = boxes.pair->grab().toImage();
    for (int x = 2; x < picture.width() - 2; ++x)
        QCOMPARE(picture.pixelColor(x, 2), QColor(Qt::white));
}

void InputBoxesTest::enterAndArrows_moveFocusAndSelect_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("selected");

    QTest::newRow("Enter goes on")
        << u"TextNum_0"_s << int(Qt::Key_Return) << u"TextNum_1"_s << u"00"_s;
    QTest::newRow("keypad Enter goes on")
        << u"TextNum_0"_s << int(Qt::Key_Enter) << u"TextNum_1"_s << u"00"_s;
    QTest::newRow("Down goes on") << u"TextNum_0"_s << int(Qt::Key_Down) << u"TextNum_1"_s
                                  << u"00"_s;
    QTest::newRow("Up goes back") << u"TextNum_1"_s << int(Qt::Key_Up) << u"TextNum_0"_s << u"0"_s;
    QTest::newRow("into an editable combo")
        << u"TextNum_1"_s << int(Qt::Key_Return) << u"DBComboKind_0"_s << u"white"_s;
    QTest::newRow("Up in the first box goes to the last control")
        << u"TextNum_0"_s << int(Qt::Key_Up) << u"CmdOK"_s << u""_s;
}

void InputBoxesTest::enterAndArrows_moveFocusAndSelect()
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

void InputBoxesTest::arrowKey_skipsControlsWithoutTabStop()
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

void InputBoxesTest::arrowKey_staysInItsChildWindow()
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

void InputBoxesTest::enterInABox_pressesNoDefaultButton()
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

void InputBoxesTest::measureBox_acceptsEveryKey()
{
    QWidget form;
    const Boxes boxes(&form);
    QVERIFY(testsupport::showActive(form));
    boxes.whole->setFocus();
    boxes.whole->selectAll();
    QTest::keyClicks(boxes.whole, u"-.a9"_s);
    // The text is truncated to the box's maximum length.
    QCOMPARE(boxes.whole->text(), u"-.a"_s);
    boxes.hundredths->setFocus();
    boxes.hundredths->selectAll();
    QTest::keyClicks(boxes.hundredths, u"7x1"_s);
    QCOMPARE(boxes.hundredths->text(), u"7x"_s);
    QVERIFY(!boxes.hundredths->isReadOnly());
    boxes.name->setFocus();
    // A text that is not a number stays as well.
    QCOMPARE(boxes.whole->text(), u"-.a"_s);
}

void InputBoxesTest::emptyBoxLeft_isFilled()
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

void InputBoxesTest::singleHundredth_isPaddedOnlyWithFillDefaultAndPad()
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
        // A whole box is never padded.
        QCOMPARE(boxes.whole->text(), u"7"_s);
    }
}

void InputBoxesTest::menuOrOtherProgram_isNoFocusLoss()
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

void InputBoxesTest::focus_selectsTheText()
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
    // Selecting on focus is off by default.
    QCOMPARE(boxes.hundredths->selectedText(), u""_s);
}

void InputBoxesTest::focusingClick_keepsTheSelection()
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
    // A real click usually moves the mouse a little.
    QTest::mouseMove(boxes.whole, start + QPoint(5, 0));
    QTest::mouseRelease(boxes.whole, Qt::LeftButton, {}, start + QPoint(5, 0));
    QCOMPARE(boxes.whole->selectedText(), u"123"_s);
    // The next click in the focused box places the cursor as usual.
    QTest::mouseClick(boxes.whole, Qt::LeftButton, {}, start);
    QCOMPARE(boxes.whole->selectedText(), u""_s);
}

void InputBoxesTest::signBox_acceptsOnlySignKeys_data()
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

void InputBoxesTest::signBox_acceptsOnlySignKeys()
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

void InputBoxesTest::signLock_endsWithTheKeyRelease()
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
    // While Shift is held the box is read-only, so even the main keyboard's plus is not typed.
    box.selectAll();
    QTest::keyPress(&box, Qt::Key_Shift);
    QTest::keyPress(&box, Qt::Key_Minus, Qt::ShiftModifier);
    QVERIFY(box.isReadOnly());
    QCOMPARE(box.text(), u"-"_s);
    QTest::keyRelease(&box, Qt::Key_Minus, Qt::ShiftModifier);
    QVERIFY(!box.isReadOnly());
    // A box that holds a sign accepts no other sign until the first one is selected or removed.
    box.deselect();
    box.end(false);
    QTest::keyClick(&box, Qt::Key_Plus, Qt::KeypadModifier);
    QCOMPARE(box.text(), u"-"_s);
    QTest::keyClick(&box, Qt::Key_Backspace);
    QTest::keyClick(&box, Qt::Key_Plus, Qt::KeypadModifier);
    QCOMPARE(box.text(), u"+"_s);
}

void InputBoxesTest::signBox_acceptsNoPaste()
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

void InputBoxesTest::signBox_movesFocusByEnterAndArrows()
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

void InputBoxesTest::signBoxLeftByTab_isNotReadOnly()
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

void InputBoxesTest::emptySignLeft_becomesPlus()
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

void InputBoxesTest::keyHelpers_acceptKeyCodes()
{
    QWidget form;
    const Boxes boxes(&form);
    QVERIFY(testsupport::showActive(form));
    boxes.whole->setFocus();
    Module1::KeyNavigate(*boxes.whole, 13, false);
    // The text is selected regardless of the argument `selectAll`.
    QCOMPARE(boxes.hundredths->selectedText(), u"00"_s);
    Module1::KeyNavigate(*boxes.hundredths, 65, true);
    QCOMPARE(testsupport::focusName(), u"TextNum_1"_s);
    QVERIFY(!boxes.hundredths->isReadOnly());
    boxes.name->setText(u"abc"_s);
    Module1::SelectAllText(*boxes.name);
    QCOMPARE(boxes.name->selectedText(), u"abc"_s);
    // For a box in a hidden window the helper does nothing and reports no error.
    MeasureBox hidden(0, u"0"_s, OnLeaving::FillDefault);
    Module1::KeyNavigate(hidden, 40, true);
    QCOMPARE(hidden.text(), u"0"_s);
}

ZOMREL_QTEST_MAIN(InputBoxesTest)
#include "input_boxes_test.moc"
