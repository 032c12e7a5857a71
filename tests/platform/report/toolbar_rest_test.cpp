#include "platform/report/preview_fixture.h"
#include "platform/report/toolbar_keys.h"

#include <QAccessible>
#include <QComboBox>
#include <QMenu>
#include <QSignalSpy>
#include <QToolButton>

using namespace Qt::StringLiterals;
using testsupport::child;
using testsupport::PreviewFixture;

/// The buttons of a toolbar that is too narrow for them.
class ToolbarRestTest : public QObject
{
    Q_OBJECT

private slots:
    void wideWindow_hasNoFurtherButton();
    void furtherButton_isReachedByTabAndHasAName();
    void furtherButton_isReachedByArrowKeys();
    void key_showsTheRestAndFocusesIt_data();
    void key_showsTheRestAndFocusesIt();
    void command_isReachedAndPressed();
    void list_isReachedByTab();
    void escape_returnsToTheButtonAndThenToThePages();
    void escapeAfterTab_hidesTheRestBeforeTheWindow();
    void secondPress_hidesTheRest();
    void leavingTheToolbar_hidesTheRest();
    void lowWindow_opensAMenu();
};

namespace {

QToolBar& commands(const PreviewFixture& preview)
{
    return *child<QToolBar>(preview.window(), u"ToolbarPreview"_s);
}

QToolButton& furtherButton(const PreviewFixture& preview)
{
    return *child<QToolButton>(commands(preview), u"qt_toolbar_ext_button"_s);
}

QToolButton& button(const PreviewFixture& preview, const QString& action)
{
    QWidget* found = commands(preview).widgetForAction(&preview.action(action));
    return *qobject_cast<QToolButton*>(found);
}

/// Makes the window so narrow that some commands have no room.
void narrow(const PreviewFixture& preview, QSize size = {420, 600})
{
    preview.window().showNormal();
    preview.window().resize(size);
    QTRY_VERIFY(furtherButton(preview).isVisible());
    QTRY_VERIFY(!button(preview, u"ActionPrint"_s).isVisible());
    preview.window().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&preview.window()));
    preview.pages().setFocus();
}

void pressFocused(Qt::Key key, Qt::KeyboardModifiers modifiers = {})
{
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

/// Goes to the further button: the first button, and back over the end.
void goToFurther(const PreviewFixture& preview)
{
    pressFocused(Qt::Key_F10);
    pressFocused(Qt::Key_Right);
    QCOMPARE(QApplication::focusWidget(), &furtherButton(preview));
}

} // namespace

void ToolbarRestTest::wideWindow_hasNoFurtherButton()
{
    const PreviewFixture preview;
    preview.window().showNormal();
    preview.window().resize(2000, 600);
    QTRY_VERIFY(!furtherButton(preview).isVisible());
    preview.pages().setFocus();
    pressFocused(Qt::Key_F10);
    pressFocused(Qt::Key_Right);
    QCOMPARE(QApplication::focusWidget(), &button(preview, u"ActionFind"_s));
}

void ToolbarRestTest::furtherButton_isReachedByTabAndHasAName()
{
    const PreviewFixture preview;
    narrow(preview);
    QWidget* const start = QApplication::focusWidget();
    int steps = 0;
    do {
        pressFocused(Qt::Key_Tab);
    } while (QApplication::focusWidget() != &furtherButton(preview) &&
             QApplication::focusWidget() != start && ++steps < 50);
    QCOMPARE(QApplication::focusWidget(), &furtherButton(preview));
    const QAccessibleInterface& spoken =
        *QAccessible::queryAccessibleInterface(&furtherButton(preview));
    QCOMPARE(spoken.text(QAccessible::Name), u"פקודות נוספות"_s);
    QVERIFY(spoken.state().focusable);
    QVERIFY(spoken.state().focused);
}

void ToolbarRestTest::furtherButton_isReachedByArrowKeys()
{
    const PreviewFixture preview;
    narrow(preview);
    goToFurther(preview);
    // The toolbar reads from right to left, so the left arrow goes on to the first button.
    pressFocused(Qt::Key_Left);
    QCOMPARE(QApplication::focusWidget(), &button(preview, u"ActionNextPage"_s));
    pressFocused(Qt::Key_Right);
    QCOMPARE(QApplication::focusWidget(), &furtherButton(preview));
}

void ToolbarRestTest::key_showsTheRestAndFocusesIt_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("return") << Qt::Key_Return;
    QTest::newRow("enter ") << Qt::Key_Enter;
    QTest::newRow("space ") << Qt::Key_Space;
    QTest::newRow("down  ") << Qt::Key_Down;
}

void ToolbarRestTest::key_showsTheRestAndFocusesIt()
{
    QFETCH(Qt::Key, key);
    const PreviewFixture preview;
    narrow(preview);
    QList<QWidget*> hidden;
    for (QAction* each : commands(preview).actions()) {
        QWidget* widget = commands(preview).widgetForAction(each);
        if (!widget->isVisible())
            hidden.append(widget);
    }
    QVERIFY(hidden.size() >= 5);
    goToFurther(preview);
    pressFocused(key);
    for (const QWidget* each : std::as_const(hidden))
        QVERIFY(each->isVisible());
    QVERIFY(hidden.contains(QApplication::focusWidget()));
}

void ToolbarRestTest::command_isReachedAndPressed()
{
    const PreviewFixture preview;
    narrow(preview);
    const QSignalSpy pressed(&preview.action(u"ActionFitWidth"_s), &QAction::triggered);
    goToFurther(preview);
    pressFocused(Qt::Key_Return);
    for (int i = 0; i < 20 && QApplication::focusWidget() != &button(preview, u"ActionFitWidth"_s);
         ++i)
        pressFocused(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), &button(preview, u"ActionFitWidth"_s));
    pressFocused(Qt::Key_Right); // The whole page, and back.
    pressFocused(Qt::Key_Left);
    pressFocused(Qt::Key_Space);
    QCOMPARE(pressed.count(), 1);
}

void ToolbarRestTest::list_isReachedByTab()
{
    const PreviewFixture preview;
    narrow(preview, {220, 600});
    auto* zoom = child<QComboBox>(preview.window(), u"ComboZoom"_s);
    QVERIFY(!zoom->isVisible());
    goToFurther(preview);
    pressFocused(Qt::Key_Down);
    for (int i = 0; i < 20 && QApplication::focusWidget() != zoom; ++i)
        pressFocused(Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), zoom);
    QVERIFY(zoom->isVisible());
    pressFocused(Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), &furtherButton(preview));
    QVERIFY(!zoom->isVisible());
    QVERIFY(preview.window().isVisible());
}

void ToolbarRestTest::escape_returnsToTheButtonAndThenToThePages()
{
    const PreviewFixture preview;
    narrow(preview);
    goToFurther(preview);
    pressFocused(Qt::Key_Return);
    pressFocused(Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), &furtherButton(preview));
    QVERIFY(!button(preview, u"ActionPrint"_s).isVisible());
    pressFocused(Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), &preview.pages());
    QVERIFY(preview.window().isVisible());
}

void ToolbarRestTest::escapeAfterTab_hidesTheRestBeforeTheWindow()
{
    const PreviewFixture preview;
    narrow(preview);
    furtherButton(preview).setFocus(Qt::TabFocusReason);
    pressFocused(Qt::Key_Return);
    QVERIFY(button(preview, u"ActionPrint"_s).isVisible());
    pressFocused(Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), &furtherButton(preview));
    QVERIFY(preview.window().isVisible());
    QVERIFY(!button(preview, u"ActionPrint"_s).isVisible());
}

void ToolbarRestTest::secondPress_hidesTheRest()
{
    const PreviewFixture preview;
    narrow(preview);
    goToFurther(preview);
    pressFocused(Qt::Key_Return);
    furtherButton(preview).setFocus(Qt::TabFocusReason);
    pressFocused(Qt::Key_Space);
    QVERIFY(!button(preview, u"ActionPrint"_s).isVisible());
    QCOMPARE(QApplication::focusWidget(), &furtherButton(preview));
}

void ToolbarRestTest::leavingTheToolbar_hidesTheRest()
{
    const PreviewFixture preview;
    narrow(preview);
    goToFurther(preview);
    pressFocused(Qt::Key_Return);
    QVERIFY(button(preview, u"ActionPrint"_s).isVisible());
    preview.pages().setFocus();
    QVERIFY(!button(preview, u"ActionPrint"_s).isVisible());
    QCOMPARE(QApplication::focusWidget(), &preview.pages());
}

void ToolbarRestTest::lowWindow_opensAMenu()
{
    const PreviewFixture preview;
    narrow(preview, {160, 120});
    QMenu* menu = furtherButton(preview).menu();
    QVERIFY(menu != nullptr);
    bool opened = false;
    connect(menu, &QMenu::aboutToShow, this, [&] {
        opened = true;
        QMetaObject::invokeMethod(menu, &QMenu::close, Qt::QueuedConnection);
    });
    furtherButton(preview).setFocus(Qt::TabFocusReason);
    pressFocused(Qt::Key_Down);
    QTRY_VERIFY(opened);
    QTRY_VERIFY(!menu->isVisible());
}

ZOMREL_QTEST_MAIN(ToolbarRestTest)
#include "toolbar_rest_test.moc"
