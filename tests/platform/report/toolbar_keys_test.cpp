#include "platform/report/toolbar_keys.h"

#include "support/widgets.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

class ToolbarKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { window_.reset(); }

    void f10_focusesTheFirstButton();
    void arrowKeys_moveBetweenButtons();
    void enterOrSpace_pressesTheButton_data();
    void enterOrSpace_pressesTheButton();
    void downKey_opensTheMenu();
    void escape_returnsTheFocus();
    void tabAndMouse_focusNoButton();

private:
    QWidget* button(int index) const
    {
        return toolbar_->widgetForAction(toolbar_->actions().at(index));
    }

    std::unique_ptr<QMainWindow> window_;
    QToolBar* toolbar_ = nullptr;
    QLineEdit* box_ = nullptr;
    QMenu* menu_ = nullptr;
};

void ToolbarKeysTest::init()
{
    window_ = std::make_unique<QMainWindow>();
    toolbar_ = window_->addToolBar(u"toolbar"_s);
    for (const QString& each : {u"a"_s, u"b"_s, u"c"_s})
        toolbar_->addAction(each);
    menu_ = new QMenu(window_.get());
    menu_->addAction(u"item"_s);
    toolbar_->actions().constFirst()->setMenu(menu_);
    box_ = new QLineEdit;
    window_->setCentralWidget(box_);
    new report::ToolbarKeys({toolbar_}, report::ToolbarKeys::Tab::SkipsButtons);
    window_->show();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
    box_->setFocus();
}

void ToolbarKeysTest::f10_focusesTheFirstButton()
{
    QTest::keyClick(box_, Qt::Key_F10);
    QCOMPARE(QApplication::focusWidget(), button(0));
}

void ToolbarKeysTest::arrowKeys_moveBetweenButtons()
{
    QTest::keyClick(box_, Qt::Key_F10);
    QTest::keyClick(button(0), Qt::Key_Left); // The second button is to the left of the first.
    QCOMPARE(QApplication::focusWidget(), button(1));
    QTest::keyClick(button(1), Qt::Key_Right);
    QTest::keyClick(button(0), Qt::Key_Right);
    QCOMPARE(QApplication::focusWidget(), button(2));
    QTest::keyClick(button(2), Qt::Key_Left);
    QCOMPARE(QApplication::focusWidget(), button(0));
}

void ToolbarKeysTest::enterOrSpace_pressesTheButton_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter ") << Qt::Key_Enter;
    QTest::newRow("space ") << Qt::Key_Space;
}

void ToolbarKeysTest::enterOrSpace_pressesTheButton()
{
    QFETCH(Qt::Key, key);
    const QSignalSpy pressed(toolbar_->actions().at(1), &QAction::triggered);
    QTest::keyClick(box_, Qt::Key_F10);
    QTest::keyClick(button(0), Qt::Key_Left);
    QTest::keyClick(button(1), key);
    QCOMPARE(pressed.count(), 1);
}

void ToolbarKeysTest::downKey_opensTheMenu()
{
    bool opened = false;
    connect(menu_, &QMenu::aboutToShow, this, [this, &opened] {
        opened = true;
        QMetaObject::invokeMethod(menu_, &QMenu::close, Qt::QueuedConnection);
    });
    QTest::keyClick(box_, Qt::Key_F10);
    QTest::keyClick(button(0), Qt::Key_Down);
    QTRY_VERIFY(opened);
    QTRY_VERIFY(!menu_->isVisible());
    QTest::keyClick(button(1), Qt::Key_Down); // The button has no menu, so nothing happens.
}

void ToolbarKeysTest::escape_returnsTheFocus()
{
    QTest::keyClick(box_, Qt::Key_F10);
    QTest::keyClick(button(0), Qt::Key_Left);
    QTest::keyClick(button(1), Qt::Key_F10);
    QTest::keyClick(button(0), Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), box_);
}

void ToolbarKeysTest::tabAndMouse_focusNoButton()
{
    QTest::keyClick(box_, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), box_);
    QTest::mouseClick(button(1), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), box_);
}

ZOMREL_QTEST_MAIN(ToolbarKeysTest)
#include "toolbar_keys_test.moc"
