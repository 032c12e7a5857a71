#include "base/input_boxes.h"
#include "support/widgets.h"

#include <QClipboard>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using base::MeasureBox;
using base::SignBox;
using OnLeaving = MeasureBox::OnLeaving;

class SignBoxTest : public QObject
{
    Q_OBJECT

private slots:
    void signBox_acceptsOnlySignKeys_data();
    void signBox_acceptsOnlySignKeys();
    void signLock_endsWithTheKeyRelease();
    void signBox_acceptsNoPaste();
    void signBox_movesFocusByEnterAndArrows();
    void signBoxLeftByTab_isNotReadOnly();
    void emptySignLeft_becomesPlus();
};

void SignBoxTest::signBox_acceptsOnlySignKeys_data()
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

void SignBoxTest::signBox_acceptsOnlySignKeys()
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

void SignBoxTest::signLock_endsWithTheKeyRelease()
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

void SignBoxTest::signBox_acceptsNoPaste()
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

void SignBoxTest::signBox_movesFocusByEnterAndArrows()
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

void SignBoxTest::signBoxLeftByTab_isNotReadOnly()
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

void SignBoxTest::emptySignLeft_becomesPlus()
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

ZOMREL_QTEST_MAIN(SignBoxTest)
#include "sign_box_test.moc"
