#include "platform/controls/list_interface.h"

#include "platform/controls/accessibility.h"
#include "platform/controls/db_combo.h"
#include "support/widgets.h"

#include <QAbstractItemView>
#include <QLineEdit>

using namespace Qt::StringLiterals;

class ListInterfaceTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { controls::installAccessibility(); }

    void editableList_keepsItsNameWithAText();
    void fixedList_tellsItsNameAndText();
    void listToTypeIn_hasTheFocusInItsBox();
    void listWithoutAName_tellsItsText();
    void action_opensAndClosesTheList();
};

namespace {

QString spoken(QWidget& widget, QAccessible::Text type = QAccessible::Name)
{
    return QAccessible::queryAccessibleInterface(&widget)->text(type);
}

} // namespace

void ListInterfaceTest::editableList_keepsItsNameWithAText()
{
    controls::DBCombo list(u"DBComboKind_0"_s);
    list.setSpokenName(u"משקוף, סוג"_s);
    QCOMPARE(spoken(list), u"משקוף, סוג"_s);
    list.setEditText(u"רגיל"_s);
    QCOMPARE(spoken(list), u"משקוף, סוג"_s);
    QCOMPARE(spoken(list, QAccessible::Value), u"רגיל"_s);
    QAccessibleInterface& whole = *QAccessible::queryAccessibleInterface(&list);
    QCOMPARE(whole.role(), QAccessible::ComboBox);
    QVERIFY(whole.state().editable);
    QCOMPARE(whole.childCount(), 2);
    QCOMPARE(whole.child(1)->object(), list.lineEdit());
    QCOMPARE(whole.child(1)->role(), QAccessible::EditableText);
    QCOMPARE(whole.child(1)->text(QAccessible::Name), u"משקוף, סוג"_s);
    QCOMPARE(whole.child(1)->text(QAccessible::Value), u"רגיל"_s);
    for (int i = 0; i < 2; ++i)
        QCOMPARE(whole.indexOfChild(whole.child(i)), i);
    QCOMPARE(whole.child(2), nullptr);
}

void ListInterfaceTest::fixedList_tellsItsNameAndText()
{
    QComboBox list;
    list.setAccessibleName(u"עובי U"_s);
    QCOMPARE(spoken(list), u"עובי U"_s);
    list.addItems({u"6.5"_s, u"5.3"_s});
    QCOMPARE(spoken(list), u"עובי U: 6.5"_s);
    list.setCurrentIndex(1);
    QCOMPARE(spoken(list), u"עובי U: 5.3"_s);
    QCOMPARE(spoken(list, QAccessible::Value), u"5.3"_s);
    QCOMPARE(QAccessible::queryAccessibleInterface(&list)->childCount(), 1);
    QVERIFY(!QAccessible::queryAccessibleInterface(&list)->state().editable);
}

void ListInterfaceTest::listToTypeIn_hasTheFocusInItsBox()
{
    QComboBox list;
    list.setEditable(true);
    QVERIFY(testsupport::showActive(list));
    list.setFocus();
    QAccessibleInterface* const focused =
        QAccessible::queryAccessibleInterface(&list)->focusChild();
    QVERIFY(focused != nullptr);
    QCOMPARE(focused->object(), static_cast<QObject*>(list.lineEdit()));
}

void ListInterfaceTest::listWithoutAName_tellsItsText()
{
    QComboBox list;
    list.addItem(u"א"_s);
    QCOMPARE(spoken(list), u"א"_s);
}

void ListInterfaceTest::action_opensAndClosesTheList()
{
    QComboBox list;
    list.addItems({u"א"_s, u"ב"_s});
    QVERIFY(testsupport::showActive(list));
    QAccessibleInterface& whole = *QAccessible::queryAccessibleInterface(&list);
    QAccessibleActionInterface& action = *whole.actionInterface();
    QVERIFY(action.actionNames().contains(QAccessibleActionInterface::showMenuAction()));
    QVERIFY(!whole.state().expanded);
    action.doAction(QAccessibleActionInterface::showMenuAction());
    QTRY_VERIFY(list.view()->isVisible());
    QVERIFY(whole.state().expanded);
    action.doAction(QAccessibleActionInterface::showMenuAction());
    QTRY_VERIFY(!whole.state().expanded);
}

ZOMREL_QTEST_MAIN(ListInterfaceTest)
#include "list_interface_test.moc"
