#include "shell/help_key.h"

#include "shell/help_window.h"
#include "support/wheel.h"
#include "support/widgets.h"

#include <QComboBox>
#include <QMenu>
#include <QPointer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using shell::HelpWindow;
using testsupport::child;

/// F1 while a list or menu is open, and the list of languages.
class HelpKeyTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { qApp->installEventFilter(&key_); }
    void cleanup();

    void f1InADroppedList_opensNoHelp();
    void f1InAMenu_opensNoHelp();
    void wheelWithoutTheFocus_keepsTheLanguage();

private:
    shell::HelpKey key_;
};

namespace {

int openHelps()
{
    int count = 0;
    for (const QWidget* each : QApplication::topLevelWidgets())
        count += qobject_cast<const HelpWindow*>(each) != nullptr ? 1 : 0;
    return count;
}

} // namespace

void HelpKeyTest::cleanup()
{
    qApp->removeEventFilter(&key_);
}

void HelpKeyTest::f1InADroppedList_opensNoHelp()
{
    QWidget form;
    QComboBox list(&form);
    list.addItems({u"a"_s, u"b"_s});
    QVERIFY(testsupport::showActive(form));
    list.showPopup();
    QPointer<QWidget> popup = QApplication::activePopupWidget();
    QVERIFY(popup != nullptr);
    QTest::keyClick(popup, Qt::Key_F1);
    QCOMPARE(openHelps(), 0);
    list.hidePopup();
    QTRY_VERIFY(QApplication::activePopupWidget() == nullptr);
    QTest::keyClick(&form, Qt::Key_F1);
    QCOMPARE(openHelps(), 1);
}

void HelpKeyTest::f1InAMenu_opensNoHelp()
{
    QWidget form;
    QVERIFY(testsupport::showActive(form));
    auto* menu = new QMenu(&form);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(u"a"_s);
    menu->popup(form.mapToGlobal(QPoint(5, 5)));
    QTest::keyClick(menu, Qt::Key_F1);
    QCOMPARE(openHelps(), 0);
    menu->close();
}

void HelpKeyTest::wheelWithoutTheFocus_keepsTheLanguage()
{
    HelpWindow help(nullptr);
    help.setAttribute(Qt::WA_DeleteOnClose, false);
    QVERIFY(testsupport::showActive(help));
    auto* language = child<QComboBox>(help, u"ComboLanguage"_s);
    child<QWidget>(help, u"ListChapters"_s)->setFocus();
    testsupport::turnWheel(*language);
    QCOMPARE(language->currentIndex(), 0);
    language->setFocus();
    testsupport::turnWheel(*language);
    QCOMPARE(language->currentIndex(), 1);
}

ZOMREL_QTEST_MAIN(HelpKeyTest)
#include "help_key_test.moc"
