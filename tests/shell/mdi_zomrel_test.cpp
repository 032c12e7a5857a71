#include "shell/mdi_zomrel.h"

#include "base/module1.h"
#include "platform/report/doors.h"
#include "platform/runtime/run_time_error.h"
#include "support/doors.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

class MdiZomrelTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void title_showsTheVersion();
    void load_setsTheSharedVariables();
    void window_isRightToLeft();
    void toolbarButtons_haveTheirCaptionsAndTags_data();
    void toolbarButtons_haveTheirCaptionsAndTags();
    void firstButton_hasItsMenu();
    void dataControl_isHidden();

    void ordersButton_opensTheOrderForm();
    void buttonArrow_opensTheMenu();
    void newOrderItem_opensTheOrderForm();
    void findOrderItem_opensTheSearchForm();
    void commands_openTheirChildWindows_data();
    void commands_openTheirChildWindows();
    void secondOpening_activatesTheSameForm();
    void allForms_shareOneServerConnection();
    void ctrlN_opensTheOrderForm();
    void ctrlF_opensTheSearchForm_data();
    void ctrlF_opensTheSearchForm();
    void f6OnTheToolbar_goesToAPartOfTheOrder();
    void ctrlPOnTheToolbar_printsTheOrder();
    void heldKey_pressesNoCommand_data();
    void heldKey_pressesNoCommand();
    void unknownTag_doesNothing();
    void missingButton_isIndexOutOfBounds();

    void exitButton_endsTheProcess();
    void closedWindow_endsTheProcess();

private:
    QToolButton* button(int index) const;
    QAction* menuAction(const QString& tag) const;
    /// Returns the form in the frame, or nullptr if it is not shown.
    QWidget* formInFrame(const QString& name) const;

    std::unique_ptr<testsupport::TemporaryStore> store_;
    std::unique_ptr<testsupport::RecordedBoxes> boxes_;
    std::unique_ptr<testsupport::RecordedEnd> end_;
    std::unique_ptr<shell::MDIZomrel> window_;
    QToolBar* toolbar_ = nullptr;
};

void MdiZomrelTest::init()
{
    store_ = std::make_unique<testsupport::TemporaryStore>();
    boxes_ = std::make_unique<testsupport::RecordedBoxes>();
    end_ = std::make_unique<testsupport::RecordedEnd>();
    Module1::IsMonoblock = true;
    Module1::IsDoorFrame = true;
    window_ = std::make_unique<shell::MDIZomrel>(store_->folder());
    window_->resize(1366, 768);
    window_->show();
    toolbar_ = testsupport::child<QToolBar>(*window_, u"Toolbar1"_s);
}

void MdiZomrelTest::cleanup()
{
    QVERIFY(boxes_->unexpected().isEmpty());
    window_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    end_.reset();
    boxes_.reset();
    store_.reset();
}

QToolButton* MdiZomrelTest::button(int index) const
{
    return qobject_cast<QToolButton*>(toolbar_->widgetForAction(toolbar_->actions().at(index - 1)));
}

QAction* MdiZomrelTest::menuAction(const QString& tag) const
{
    for (QAction* each : toolbar_->actions().constFirst()->menu()->actions()) {
        if (each->data() == tag)
            return each;
    }
    qFatal("no menu item with the tag %s", qPrintable(tag));
}

QWidget* MdiZomrelTest::formInFrame(const QString& name) const
{
    for (const QMdiSubWindow* each : window_->findChild<QMdiArea*>()->subWindowList()) {
        if (each->isVisible() && each->widget()->objectName() == name)
            return each->widget();
    }
    return nullptr;
}

void MdiZomrelTest::title_showsTheVersion()
{
    QCOMPARE(window_->windowTitle(), u"זומרל - גרסה: 2.1.60"_s);
    QCOMPARE(window_->objectName(), u"MDIZomrel"_s);
}

void MdiZomrelTest::load_setsTheSharedVariables()
{
    QCOMPARE(Module1::StorePath, store_->path());
    QCOMPARE(Module1::LogoPath, QDir::toNativeSeparators(store_->folder() + u"/Logo.jpg"_s));
    QVERIFY(Module1::FileSys != nullptr);
    QVERIFY(!Module1::IsMonoblock);
    QVERIFY(!Module1::IsDoorFrame);
    QCOMPARE(store_->scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 0);
}

void MdiZomrelTest::window_isRightToLeft()
{
    QCOMPARE(window_->layoutDirection(), Qt::RightToLeft);
    QCOMPARE(toolbar_->layoutDirection(), Qt::RightToLeft);
    for (int i = 1; i < 4; ++i)
        QVERIFY(button(i)->x() > button(i + 1)->x());
}

void MdiZomrelTest::toolbarButtons_haveTheirCaptionsAndTags_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QString>("tag");
    QTest::newRow("orders") << 1 << u"הזמנות"_s << u"Order"_s;
    QTest::newRow("series") << 2 << u"סדרות"_s << u"Serials"_s;
    QTest::newRow("kinds ") << 3 << u"סוג וצבע"_s << u"ColorKind"_s;
    QTest::newRow("exit  ") << 4 << u"יציאה"_s << u"Exit"_s;
}

void MdiZomrelTest::toolbarButtons_haveTheirCaptionsAndTags()
{
    QFETCH(int, index);
    QFETCH(QString, caption);
    QFETCH(QString, tag);
    QCOMPARE(toolbar_->actions().size(), 4);
    const QAction* action = toolbar_->actions().at(index - 1);
    QCOMPARE(action->text(), caption);
    QCOMPARE(action->data().toString(), tag);
    QVERIFY(!action->icon().isNull());
    QCOMPARE(action->icon().availableSizes(), QList<QSize>{QSize(32, 32)});
    QCOMPARE(button(index)->text(), caption);
    QCOMPARE(button(index)->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    QCOMPARE(button(index)->iconSize(), QSize(32, 32));
    QCOMPARE(button(index)->toolTip(), QString());
    QVERIFY(button(index)->isVisible());
}

void MdiZomrelTest::firstButton_hasItsMenu()
{
    QCOMPARE(button(1)->popupMode(), QToolButton::MenuButtonPopup);
    const QList<QAction*> items = button(1)->menu()->actions();
    QCOMPARE(items.size(), 2);
    QCOMPARE(items[0]->text(), u"קליטת הזמנה"_s);
    QCOMPARE(items[0]->data().toString(), u"NewOrder"_s);
    QCOMPARE(items[1]->text(), u"חפש הזמנה"_s);
    QCOMPARE(items[1]->data().toString(), u"FindOrder"_s);
    for (int i = 2; i <= 4; ++i)
        QVERIFY(button(i)->menu() == nullptr);
}

void MdiZomrelTest::dataControl_isHidden()
{
    QVERIFY(!testsupport::child<QWidget>(*window_, u"DataMDI"_s)->isVisible());
}

void MdiZomrelTest::ordersButton_opensTheOrderForm()
{
    const QPoint mainPart(button(1)->width() - 10, button(1)->height() / 2);
    QTest::mouseClick(button(1), Qt::LeftButton, {}, mainPart);
    QVERIFY(formInFrame(u"FrOrder"_s) != nullptr);
    QCOMPARE(Module1::CurrentOrderNum, 1);
    QCOMPARE(store_->scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 1);
    button(1)->click();
    QCOMPARE(store_->scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 1);
}

void MdiZomrelTest::buttonArrow_opensTheMenu()
{
    bool opened = false;
    QMenu* menu = button(1)->menu();
    connect(menu, &QMenu::aboutToShow, this, [menu, &opened] {
        opened = true;
        QMetaObject::invokeMethod(menu, &QMenu::close, Qt::QueuedConnection);
    });
    const QPoint arrow(3, button(1)->height() / 2);
    QTest::mouseClick(button(1), Qt::LeftButton, {}, arrow);
    QVERIFY(opened);
    QVERIFY(formInFrame(u"FrOrder"_s) == nullptr);
}

void MdiZomrelTest::newOrderItem_opensTheOrderForm()
{
    store_->addOrder(7, true);
    menuAction(u"NewOrder"_s)->trigger();
    QVERIFY(formInFrame(u"FrOrder"_s) != nullptr);
    QCOMPARE(Module1::CurrentOrderNum, 8);
}

void MdiZomrelTest::findOrderItem_opensTheSearchForm()
{
    store_->addOrder(1);
    store_->addLine(1, 1);
    QString modal;
    driving::inNextModal([&modal](QDialog& form) { modal = form.objectName(); });
    menuAction(u"FindOrder"_s)->trigger();
    QCOMPARE(modal, u"FormFindOrder"_s);
}

void MdiZomrelTest::commands_openTheirChildWindows_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("form");
    QTest::newRow("series") << 2 << u"FrSerials"_s;
    QTest::newRow("kinds ") << 3 << u"FrColorKind"_s;
}

void MdiZomrelTest::commands_openTheirChildWindows()
{
    QFETCH(int, index);
    QFETCH(QString, form);
    QVERIFY(formInFrame(form) == nullptr);
    window_->GetOrder(static_cast<std::int16_t>(index));
    QVERIFY(formInFrame(form) != nullptr);
}

void MdiZomrelTest::secondOpening_activatesTheSameForm()
{
    button(2)->click();
    const QWidget* first = formInFrame(u"FrSerials"_s);
    button(3)->click();
    button(2)->click();
    QCOMPARE(formInFrame(u"FrSerials"_s), first);
    QCOMPARE(window_->findChild<QMdiArea*>()->activeSubWindow()->widget(), first);
}

/// Servers limit the number of connections, so all forms of a station share one.
void MdiZomrelTest::allForms_shareOneServerConnection()
{
    if (!testsupport::isOnServer())
        QSKIP("applies only to a server");
    store_->addOrder(1);
    store_->addLine(1, 1);
    for (int form = 1; form <= 3; ++form)
        button(form)->click();
    testsupport::child<QPushButton>(*formInFrame(u"FrOrder"_s), u"CmdPicSerial"_s)->click();
    QVERIFY(testsupport::child<QDialog>(*window_, u"FormSelectSerial"_s)->isVisible());
    int connections = -1;
    driving::inNextModal([&](QDialog& /*form*/) {
        connections = store_
                          ->scalar(u"SELECT COUNT(*) FROM pg_stat_activity WHERE datname = "
                                   "current_database() AND application_name = 'Zomrel'"_s)
                          .toInt();
    });
    menuAction(u"FindOrder"_s)->trigger();
    QCOMPARE(connections, 1);
}

void MdiZomrelTest::ctrlN_opensTheOrderForm()
{
    QVERIFY(testsupport::showActive(*window_));
    QTest::keyClick(window_.get(), Qt::Key_N, Qt::ControlModifier);
    QVERIFY(formInFrame(u"FrOrder"_s) != nullptr);
    QCOMPARE(store_->scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 1);
}

void MdiZomrelTest::ctrlF_opensTheSearchForm_data()
{
    QTest::addColumn<bool>("orderFormIsOpen");
    QTest::newRow("empty frame") << false;
    QTest::newRow("order form in front") << true;
}

void MdiZomrelTest::ctrlF_opensTheSearchForm()
{
    QFETCH(bool, orderFormIsOpen);
    store_->addOrder(1);
    QVERIFY(testsupport::showActive(*window_));
    if (orderFormIsOpen)
        window_->GetOrder(1);
    QString opened;
    driving::inNextModal([&opened](QDialog& dialog) { opened = dialog.objectName(); });
    QTest::keyClick(window_.get(), Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(opened, u"FormFindOrder"_s);
}

void MdiZomrelTest::f6OnTheToolbar_goesToAPartOfTheOrder()
{
    QVERIFY(testsupport::showActive(*window_));
    QTest::keyClick(window_.get(), Qt::Key_F10);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6); // No order form is open.
    QVERIFY(toolbar_->isAncestorOf(QApplication::focusWidget()));
    window_->GetOrder(1);
    QWidget* form = formInFrame(u"FrOrder"_s);
    testsupport::child<QWidget>(*form, u"TextNum_0"_s)->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F10);
    QVERIFY(toolbar_->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6);
    QCOMPARE(testsupport::focusName(), u"DBGrid1"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F10);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, Qt::ShiftModifier);
    QCOMPARE(testsupport::focusName(), u"TextNum_0"_s);
}

void MdiZomrelTest::ctrlPOnTheToolbar_printsTheOrder()
{
    // The machine's default printer may have another paper.
    const auto former = report::paperDoor().replace([] { return report::a4Portrait; });
    store_->addOrder(1);
    store_->addLine(1, 1);
    QVERIFY(testsupport::showActive(*window_));
    window_->GetOrder(1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_F10);
    QVERIFY(toolbar_->isAncestorOf(QApplication::focusWidget()));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_P, Qt::ControlModifier);
    const bool isPreviewed =
        QTest::qWaitFor([] { return driving::shownWindow(u"DataReport1"_s) != nullptr; });
    if (isPreviewed)
        driving::closeWindow(u"DataReport1"_s);
    report::paperDoor().replace(former);
    QVERIFY(isPreviewed);
}

void MdiZomrelTest::heldKey_pressesNoCommand_data()
{
    QTest::addColumn<QKeyCombination>("key");
    QTest::addColumn<bool>("orderFormIsOpen");
    QTest::newRow("new order") << QKeyCombination(Qt::CTRL, Qt::Key_N) << false;
    QTest::newRow("search") << QKeyCombination(Qt::CTRL, Qt::Key_F) << false;
    QTest::newRow("part of the order") << QKeyCombination(Qt::Key_F6) << true;
}

/// The key is held since another window was in front, so that only its repetitions come here.
void MdiZomrelTest::heldKey_pressesNoCommand()
{
    QFETCH(QKeyCombination, key);
    QFETCH(bool, orderFormIsOpen);
    QVERIFY(testsupport::showActive(*window_));
    if (orderFormIsOpen)
        window_->GetOrder(1);
    QTest::keyClick(window_.get(), Qt::Key_F10);
    QWidget* focused = QApplication::focusWidget();
    QVERIFY(toolbar_->isAncestorOf(focused));
    QStringList dialogs;
    QTimer watch;
    connect(&watch, &QTimer::timeout, this, [&dialogs] {
        if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            dialogs.append(dialog->objectName());
            dialog->reject();
        }
    });
    watch.start(0);
    const bool isRepeated = true;
    QTest::simulateEvent(focused, true, key.key(), key.keyboardModifiers(), {}, isRepeated);
    QCOMPARE(dialogs, QStringList());
    QCOMPARE(window_->findChild<QMdiArea*>()->subWindowList().size(), orderFormIsOpen ? 1 : 0);
    QCOMPARE(QApplication::focusWidget(), focused);
}

void MdiZomrelTest::unknownTag_doesNothing()
{
    toolbar_->actions().at(1)->setData(u"serials"_s);
    window_->GetOrder(2);
    button(2)->click();
    QVERIFY(window_->findChild<QMdiArea*>()->subWindowList().isEmpty());
    menuAction(u"NewOrder"_s)->setData(u"Order"_s);
    toolbar_->actions().constFirst()->menu()->actions().constFirst()->trigger();
    QVERIFY(window_->findChild<QMdiArea*>()->subWindowList().isEmpty());
    QVERIFY(!end_->exitStatus());
}

void MdiZomrelTest::missingButton_isIndexOutOfBounds()
{
    for (const std::int16_t index : {std::int16_t(0), std::int16_t(5)}) {
        try {
            window_->GetOrder(index);
            QFAIL("GetOrder accepted a button that does not exist");
        } catch (const runtime::RunTimeError& error) {
            QCOMPARE(error.number(), 35600);
        }
    }
}

void MdiZomrelTest::exitButton_endsTheProcess()
{
    button(4)->click();
    QCOMPARE(end_->exitStatus(), std::optional(0));
    QVERIFY(boxes_->shown().empty());
}

void MdiZomrelTest::closedWindow_endsTheProcess()
{
    window_->close();
    QCOMPARE(end_->exitStatus(), std::optional(0));
    QVERIFY(boxes_->shown().empty());
}

ZOMREL_QTEST_MAIN(MdiZomrelTest)
#include "mdi_zomrel_test.moc"
