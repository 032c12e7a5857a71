#include "shell/mdi_zomrel.h"

#include "base/module1.h"
#include "catalogue/catalogue.h"
#include "catalogue/fr_color_kind.h"
#include "catalogue/fr_serials.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "platform/controls/data_control.h"
#include "platform/controls/form.h"
#include "platform/controls/png_icon.h"
#include "platform/controls/restored_size.h"
#include "platform/report/toolbar_keys.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/version.h"
#include "shell/hinted_area.h"
#include "shell/status_bar.h"
#include "store/store_access.h"

#include <QCloseEvent>
#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace shell {

namespace {

constexpr QSize pictureSize(32, 32);
constexpr int indexOutOfBounds = 35600;

/// Returns the version text for the window title: the first, second and fourth part of the file
/// version.
QString shownVersion()
{
    const QVersionNumber version = runtime::programVersion();
    return u"%1.%2.%3"_s.arg(version.majorVersion())
        .arg(version.minorVersion())
        .arg(version.segmentAt(3));
}

QIcon picture(const QString& name)
{
    return controls::sharpIcon(u":/zomrel/icons/%1.png"_s.arg(name));
}

/// Returns the form in the active child window if the form is of the class Form, otherwise nullptr.
template <typename Form>
Form* frontForm(const QMdiArea& frame)
{
    const QMdiSubWindow* front = frame.activeSubWindow();
    return front == nullptr ? nullptr : qobject_cast<Form*>(front->widget());
}

QString beside(const QString& programDirectory, const QString& fileName)
{
    return QDir::toNativeSeparators(programDirectory + u'/' + fileName);
}

} // namespace

MDIZomrel::MDIZomrel(const QString& programDirectory)
    : ImageList1{picture(u"orders"_s), picture(u"series"_s), picture(u"kinds-and-colours"_s),
                 picture(u"exit"_s)},
      Toolbar1(new QToolBar(this)), DataMDI(new controls::DataControl(u"DataMDI"_s, this)),
      frame_(new HintedArea(this))
{
    setObjectName(u"MDIZomrel"_s);
    setWindowTitle(u"זומרל"_s);
    setLayoutDirection(Qt::RightToLeft);
    // The main window has no context menu, because Qt's context menu would let the user hide the
    // toolbar.
    setContextMenuPolicy(Qt::NoContextMenu);
    // Opens the store before the first text is laid out. Another thread reads the list of fonts
    // meanwhile, and the first text must wait for the list.
    Form_Load(programDirectory);
    buildToolbar();
    StatusBar1 = new StatusBar(this);
    setStatusBar(StatusBar1);
    frame_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    frame_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(frame_);
    controls::setFrame(frame_);
    addKeys();
    new controls::RestoredSize(*this);
}

MDIZomrel::~MDIZomrel()
{
    if (controls::frame() == frame_)
        controls::setFrame(nullptr);
}

void MDIZomrel::buildToolbar()
{
    Toolbar1->setObjectName(u"Toolbar1"_s);
    Toolbar1->setAccessibleName(u"פקודות"_s);
    Toolbar1->setIconSize(pictureSize);
    Toolbar1->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    Toolbar1->setMovable(false);
    addToolBar(Toolbar1);
    addButtonMenu(addButton(u"הזמנות"_s, u"Order"_s, 0));
    addButton(u"סדרות"_s, u"Serials"_s, 1);
    addButton(u"סוג וצבע"_s, u"ColorKind"_s, 2);
    addButton(u"יציאה"_s, u"Exit"_s, 3);
    for (QAction* each : Toolbar1->actions())
        // The tool tip is removed, because Qt's default tool tip repeats the caption.
        Toolbar1->widgetForAction(each)->setToolTip({});
    new report::ToolbarKeys({Toolbar1}, report::ToolbarKeys::Tab::SkipsButtons);
}

QAction* MDIZomrel::addButton(const QString& caption, const QString& tag, int picture)
{
    QAction* button = Toolbar1->addAction(ImageList1[std::size_t(picture)], caption);
    button->setData(tag);
    runtime::on(button, &QAction::triggered, this,
                [this, button] { Toolbar1_ButtonClick(*button); });
    return button;
}

void MDIZomrel::addButtonMenu(QAction* button)
{
    auto* menu = new QMenu(this);
    for (const auto& [text, tag] :
         {std::pair(u"קליטת הזמנה"_s, u"NewOrder"_s), std::pair(u"חפש הזמנה"_s, u"FindOrder"_s)}) {
        QAction* buttonMenu = menu->addAction(text);
        buttonMenu->setData(tag);
        runtime::on(buttonMenu, &QAction::triggered, this,
                    [this, buttonMenu] { Toolbar1_ButtonMenuClick(*buttonMenu); });
    }
    auto* toolButton = qobject_cast<QToolButton*>(Toolbar1->widgetForAction(button));
    // The toolbar's button and its action share one menu. The button must get the menu first. In
    // the reverse order, Qt removes the menu from the button.
    toolButton->setMenu(menu);
    button->setMenu(menu);
    toolButton->setPopupMode(QToolButton::MenuButtonPopup);
}

void MDIZomrel::addKeys()
{
    const auto onKey = [this](QWidget* place, const QKeySequence& key, auto handler) {
        auto* shortcut = new QShortcut(key, place);
        shortcut->setAutoRepeat(false);
        runtime::on(shortcut, &QShortcut::activated, this, handler);
        return shortcut;
    };
    onKey(this, Qt::CTRL | Qt::Key_N, [this] { GetOrder(1); });
    onKey(this, Qt::CTRL | Qt::Key_F, [this] { openSearch(); });
    // The order form handles Ctrl+P, F6 and Shift+F6 itself. The shortcuts added here make these
    // keys work while the toolbar has the focus.
    const auto onOrderKey = [this, onKey](const QKeySequence& key, auto handler) {
        const auto handle = [this, handler] {
            if (auto* order = frontForm<orders::FrOrder>(*frame_))
                handler(*order);
        };
        onKey(Toolbar1, key, handle)->setContext(Qt::WidgetWithChildrenShortcut);
    };
    onOrderKey(Qt::CTRL | Qt::Key_P, [](orders::FrOrder& order) { order.pressPrint(); });
    onOrderKey(Qt::Key_F6, [](orders::FrOrder& order) { order.goToPart(1); });
    onOrderKey(Qt::SHIFT | Qt::Key_F6, [](orders::FrOrder& order) { order.goToPart(-1); });
}

/// Opens the search form. If the order form is the active child window, its search button is
/// clicked instead, because the button also updates the number of lines in the order form.
void MDIZomrel::openSearch()
{
    const QMdiSubWindow* front = frame_->activeSubWindow();
    auto* button = front == nullptr ? nullptr : front->findChild<QPushButton*>(u"CmdFindOrder"_s);
    if (button != nullptr)
        button->click();
    else
        orders::findOrder();
}

void MDIZomrel::Form_Load(const QString& programDirectory)
{
    Module1::IsMonoblock = false;
    Module1::IsDoorFrame = false;
    setWindowTitle(u"זומרל - גרסה: "_s + shownVersion());
    Module1::StorePath = beside(programDirectory, u"Aluminium.mdb"_s);
    Module1::LogoPath = beside(programDirectory, u"Logo.jpg"_s);
    Module1::FileSys = std::make_unique<runtime::FileSystemObject>();
    BuildOrdersTable(Module1::StorePath);
}

void MDIZomrel::BuildOrdersTable(const QString& path)
{
    store::BuildOrdersTable(path);
}

void MDIZomrel::GetOrder(std::int16_t index)
{
    const QList<QAction*> buttons = Toolbar1->actions();
    if (index < 1 || index > buttons.size())
        throw runtime::RunTimeError(indexOutOfBounds, u"Index out of bounds"_s);
    const QString tag = buttons.at(index - 1)->data().toString();
    if (tag == u"Serials"_s)
        catalogue::frSerials().Show();
    else if (tag == u"Order"_s)
        orders::openOrderLongForm(*DataMDI);
    else if (tag == u"ColorKind"_s)
        catalogue::frColorKind().Show();
    else if (tag == u"Exit"_s)
        runtime::EndProcess(0);
}

void MDIZomrel::Toolbar1_ButtonClick(const QAction& button)
{
    const qsizetype position = Toolbar1->actions().indexOf(&button);
    GetOrder(static_cast<std::int16_t>(position + 1));
}

void MDIZomrel::Toolbar1_ButtonMenuClick(const QAction& buttonMenu)
{
    const QString tag = buttonMenu.data().toString();
    if (tag == u"NewOrder"_s)
        orders::openOrderShortForm(*DataMDI);
    else if (tag == u"FindOrder"_s)
        orders::findOrder();
}

void MDIZomrel::closeEvent(QCloseEvent* event)
{
    event->accept();
    runtime::guarded([] { runtime::EndProcess(0); });
}

} // namespace shell
