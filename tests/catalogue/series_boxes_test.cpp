#include "serials_screen.h"
#include "support/doors.h"
#include "support/temporary_store.h"

#include <memory>

using namespace Qt::StringLiterals;

/// Tests of the keyboard in the boxes of the series editor and of the contents of a box after it
/// loses the focus.
class SeriesBoxesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void tabKey_visitsTheControlsInOrder();
    void enterKey_movesThroughTheBoxes();
    void upKey_movesBack();
    void enterInTheName_keepsTheFocus();
    void signBox_acceptsOnlySignKeys_data();
    void signBox_acceptsOnlySignKeys();
    void measureBox_acceptsEveryKey();
    void emptyBoxLeft_isFilled();
    void singleDigitLeft_isNotPadded();
    void buttonPressInAnEmptySign_fillsThePlus();
    void signAndMeasure_areLaidOutLeftToRight();

private:
    void enter(QLineEdit* box, const QString& text = {});

    std::unique_ptr<testsupport::TemporaryStore> store_;
    std::unique_ptr<testsupport::RecordedBoxes> boxes_;
    std::unique_ptr<SerialsScreen> screen_;
};

void SeriesBoxesTest::init()
{
    store_ = std::make_unique<testsupport::TemporaryStore>();
    boxes_ = std::make_unique<testsupport::RecordedBoxes>();
    screen_ = std::make_unique<SerialsScreen>();
    screen_->press("CmdNew");
}

void SeriesBoxesTest::cleanup()
{
    QCOMPARE(boxes_->unexpected(), QList<QString>());
    screen_.reset();
    boxes_.reset();
    store_.reset();
}

/// Focuses the box and replaces its text.
void SeriesBoxesTest::enter(QLineEdit* box, const QString& text)
{
    box->setFocus();
    box->selectAll();
    if (text.isEmpty())
        QTest::keyClick(box, Qt::Key_Delete);
    else
        QTest::keyClicks(box, text);
}

void SeriesBoxesTest::tabKey_visitsTheControlsInOrder()
{
    QStringList expected{u"TextName"_s, u"ComboLane"_s, u"ComboWing"_s};
    for (int i = 0; i < 8; ++i) {
        expected << u"TextSign_%1"_s.arg(i) << u"TextNum_%1"_s.arg(2 * i)
                 << u"TextNum_%1"_s.arg(2 * i + 1);
    }
    expected << u"TextRem"_s << u"CmdNew"_s << u"CmdAdd"_s << u"CmdUpdate"_s << u"CmdDelete"_s
             << u"CmdEnd"_s << u"DBGrid1"_s;

    screen_->box(u"TextName"_s)->setFocus();
    QStringList reached;
    for (qsizetype i = 0; i < expected.size(); ++i) {
        reached << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(reached, expected);
}

void SeriesBoxesTest::enterKey_movesThroughTheBoxes()
{
    screen_->sign(0)->setFocus();
    const QStringList way{u"TextNum_0"_s, u"TextNum_1"_s, u"TextSign_1"_s, u"TextNum_2"_s};
    for (const QString& next : way) {
        const int key = next == u"TextNum_1"_s ? Qt::Key_Down : Qt::Key_Return;
        QTest::keyClick(QApplication::focusWidget(), Qt::Key(key));
        QTRY_COMPARE(QApplication::focusWidget()->objectName(), next);
        QTRY_COMPARE(screen_->box(next)->selectedText(), screen_->box(next)->text());
    }
    QTest::keyClick(screen_->num(2), Qt::Key_7);
    QCOMPARE(screen_->num(2)->text(), u"7"_s);
}

void SeriesBoxesTest::upKey_movesBack()
{
    screen_->num(2)->setFocus();
    for (const QString& next : {u"TextSign_1"_s, u"TextNum_1"_s, u"TextNum_0"_s, u"TextSign_0"_s}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
        QTRY_COMPARE(QApplication::focusWidget()->objectName(), next);
        QTRY_COMPARE(screen_->box(next)->selectedText(), screen_->box(next)->text());
    }
}

void SeriesBoxesTest::enterInTheName_keepsTheFocus()
{
    QLineEdit* name = screen_->box(u"TextName"_s);
    enter(name, u"n"_s);
    QTest::keyClick(name, Qt::Key_Return);
    QTest::keyClick(name, Qt::Key_Down);
    QTest::qWait(0);
    QCOMPARE(QApplication::focusWidget(), name);
    QVERIFY(boxes_->shown().empty());
}

void SeriesBoxesTest::signBox_acceptsOnlySignKeys_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("onKeypad");
    QTest::addColumn<QString>("text");
    QTest::newRow("minus") << int(Qt::Key_Minus) << false << u"-"_s;
    QTest::newRow("keypad minus") << int(Qt::Key_Minus) << true << u"-"_s;
    QTest::newRow("keypad plus") << int(Qt::Key_Plus) << true << u"+"_s;
    QTest::newRow("plus") << int(Qt::Key_Plus) << false << QString();
    QTest::newRow("digit") << int(Qt::Key_5) << false << QString();
    QTest::newRow("keypad digit") << int(Qt::Key_5) << true << QString();
    QTest::newRow("letter") << int(Qt::Key_X) << false << QString();
    QTest::newRow("blank") << int(Qt::Key_Space) << false << QString();
}

void SeriesBoxesTest::signBox_acceptsOnlySignKeys()
{
    QFETCH(int, key);
    QFETCH(bool, onKeypad);
    QFETCH(QString, text);
    QLineEdit* sign = screen_->sign(3);
    enter(sign);
    QCOMPARE(sign->text(), QString());
    QTest::keyClick(sign, Qt::Key(key), onKeypad ? Qt::KeypadModifier : Qt::NoModifier);
    QCOMPARE(sign->text(), text);
}

void SeriesBoxesTest::measureBox_acceptsEveryKey()
{
    enter(screen_->num(4), u"1a-x"_s);
    QCOMPARE(screen_->num(4)->text(), u"1a-"_s);
    enter(screen_->num(5), u".9"_s);
    QCOMPARE(screen_->num(5)->text(), u".9"_s);
}

void SeriesBoxesTest::emptyBoxLeft_isFilled()
{
    for (int i = 0; i < 8; ++i) {
        enter(screen_->sign(i));
        enter(screen_->num(2 * i));
        QCOMPARE(screen_->sign(i)->text(), u"+"_s);
        enter(screen_->num(2 * i + 1));
        QCOMPARE(screen_->num(2 * i)->text(), u"0"_s);
        screen_->box(u"TextName"_s)->setFocus();
        QCOMPARE(screen_->num(2 * i + 1)->text(), u"00"_s);
    }
}

void SeriesBoxesTest::singleDigitLeft_isNotPadded()
{
    enter(screen_->num(1), u"5"_s);
    screen_->box(u"TextName"_s)->setFocus();
    QCOMPARE(screen_->num(1)->text(), u"5"_s);
}

void SeriesBoxesTest::buttonPressInAnEmptySign_fillsThePlus()
{
    enter(screen_->num(0), u"2"_s);
    enter(screen_->sign(0));
    QCOMPARE(screen_->sign(0)->text(), QString());
    boxes_->answer(runtime::vbYes);
    screen_->press("CmdAdd");
    QCOMPARE(screen_->sign(0)->text(), u"+"_s);
    QCOMPARE(store_->scalar(u"SELECT Mashkof_W FROM Serials"_s), 2.0);
}

void SeriesBoxesTest::signAndMeasure_areLaidOutLeftToRight()
{
    const auto leftOf = [&](const QString& name) {
        const QWidget* widget = screen_->find(name);
        return widget->mapTo(&screen_->form(), QPoint(0, 0)).x();
    };
    for (int i = 0; i < 8; ++i) {
        QVERIFY(leftOf(u"TextSign_%1"_s.arg(i)) < leftOf(u"TextNum_%1"_s.arg(2 * i)));
        QVERIFY(leftOf(u"TextNum_%1"_s.arg(2 * i)) < leftOf(u"Label1_%1"_s.arg(i + 1)));
        QVERIFY(leftOf(u"Label1_%1"_s.arg(i + 1)) < leftOf(u"TextNum_%1"_s.arg(2 * i + 1)));
        QVERIFY(screen_->find(u"Picture1_%1"_s.arg(i))->isAncestorOf(screen_->num(2 * i)));
        QVERIFY(screen_->find(u"Picture1_%1"_s.arg(i))->isAncestorOf(screen_->num(2 * i + 1)));
    }
    // The width column is on the right, because the form reads right-to-left.
    QVERIFY(leftOf(u"Picture1_0"_s) > leftOf(u"Picture1_1"_s));
    QVERIFY(leftOf(u"Label6"_s) > leftOf(u"Picture1_0"_s));
}

ZOMREL_QTEST_MAIN(SeriesBoxesTest)
#include "series_boxes_test.moc"
