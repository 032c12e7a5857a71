#include "shell/stall_window.h"

#include "support/widgets.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using testsupport::child;
using testsupport::NextMessageBox;
using testsupport::showActive;

class StallWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void window_saysWhatIsWaitedForAndHowLong();
    void longPath_isWrapped();
    void keysForTheProgram_doNotEndIt_data();
    void keysForTheProgram_doNotEndIt();
    void closing_isIgnored();
    void enterInTheQuestion_goesOnWaiting();
    void yesInTheQuestion_endsTheProgramOnce();
};

namespace {

const QString path = u"/srv/סדנה/Aluminium.mdb"_s;

/// Presses the button with the keyboard, and these keys in the question that follows.
void pressEnd(QWidget& window, const QList<Qt::Key>& answer)
{
    NextMessageBox question([answer](QMessageBox& box) {
        QCOMPARE(box.text(), u"לסיים את התוכנית? מה שעדיין לא נשמר יאבד."_s);
        for (const Qt::Key each : answer)
            QTest::keyClick(box.focusWidget(), each);
    });
    QTest::keyClick(&window, Qt::Key_Tab);
    QCOMPARE(testsupport::focusName(), u"CmdEnd"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    QVERIFY(question.hasCome());
}

} // namespace

void StallWindowTest::window_saysWhatIsWaitedForAndHowLong()
{
    shell::StallWindow window(path, 5);
    window.show();
    QCOMPARE(window.layoutDirection(), Qt::RightToLeft);
    const auto* waiting = child<QLabel>(window, u"LabelWaiting"_s);
    QCOMPARE(waiting->text(), u"התוכנית ממתינה כבר 5 שניות לתשובה מבסיס הנתונים:"_s);
    QCOMPARE(child<QLabel>(window, u"LabelWhat"_s)->text().remove(QChar(0x200b)), path);
    QTRY_COMPARE(waiting->text(), u"התוכנית ממתינה כבר 6 שניות לתשובה מבסיס הנתונים:"_s);
}

void StallWindowTest::longPath_isWrapped()
{
    shell::StallWindow narrow(path, 5);
    shell::StallWindow window(QString(u"/a-folder-with-a-long-name"_s).repeated(20), 5);
    narrow.show();
    window.show();
    QCOMPARE(window.width(), narrow.width());
    QVERIFY(window.height() > narrow.height());
}

void StallWindowTest::keysForTheProgram_doNotEndIt_data()
{
    QTest::addColumn<int>("key");
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape})
        QTest::addRow("%x", static_cast<unsigned>(key)) << int{key};
}

void StallWindowTest::keysForTheProgram_doNotEndIt()
{
    QFETCH(const int, key);
    shell::StallWindow window(path, 5);
    const QSignalSpy ends(&window, &shell::StallWindow::endChosen);
    const NextMessageBox question([](QMessageBox& box) { box.reject(); });
    QVERIFY(showActive(window));
    QVERIFY(!child<QPushButton>(window, u"CmdEnd"_s)->hasFocus());
    QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key));
    QVERIFY(window.isVisible());
    QVERIFY(!question.hasCome());
    QCOMPARE(ends.count(), 0);
}

void StallWindowTest::closing_isIgnored()
{
    shell::StallWindow window(path, 5);
    window.show();
    QVERIFY(!window.close());
    QVERIFY(window.isVisible());
}

void StallWindowTest::enterInTheQuestion_goesOnWaiting()
{
    shell::StallWindow window(path, 5);
    const QSignalSpy ends(&window, &shell::StallWindow::endChosen);
    QVERIFY(showActive(window));
    pressEnd(window, {Qt::Key_Return});
    QCOMPARE(ends.count(), 0);
    QVERIFY(window.isVisible());
    QVERIFY(child<QPushButton>(window, u"CmdEnd"_s)->isEnabled());
}

void StallWindowTest::yesInTheQuestion_endsTheProgramOnce()
{
    shell::StallWindow window(path, 5);
    const QSignalSpy ends(&window, &shell::StallWindow::endChosen);
    QVERIFY(showActive(window));
    pressEnd(window, {Qt::Key_Tab, Qt::Key_Return});
    QCOMPARE(ends.count(), 1);
    QVERIFY(!child<QPushButton>(window, u"CmdEnd"_s)->isEnabled());
}

ZOMREL_QTEST_MAIN(StallWindowTest)
#include "stall_window_test.moc"
