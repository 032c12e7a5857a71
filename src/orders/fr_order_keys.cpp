// This file contains the keyboard handling of the order form. A key presses a button or moves the
// focus, and the handler of the button executes the command.

#include "base/input_boxes.h"
#include "base/key_helpers.h"
#include "calculation/opening_panel.h"
#include "orders/fr_order.h"
#include "orders/order_commands.h"
#include "orders/order_head.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_combo.h"
#include "platform/controls/db_grid.h"
#include "platform/runtime/guard.h"

#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>

#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace orders {

namespace {

/// Clicks the button after the current mouse or key event has been handled. The click may open a
/// modal window, which must not open during the event. The click is omitted if another modal window
/// is open at that time. Otherwise a second quick key press would start another command while the
/// first command still asks a question.
void pressLater(QPushButton* button)
{
    const auto press = [button] {
        if (QApplication::activeModalWidget() == nullptr)
            button->click();
    };
    QMetaObject::invokeMethod(button, press, Qt::QueuedConnection);
}

QString captionWithKey(const QString& caption, const QKeySequence& key)
{
    return caption + u'\t' + key.toString(QKeySequence::NativeText);
}

/// Makes Enter in the box move the focus to the next tab stop, as in the measure boxes.
void leaveByEnter(QLineEdit* box)
{
    runtime::on(box, &QLineEdit::returnPressed, box,
                [box] { Module1::KeyNavigate(*box, Module1::KeyReturn, true); });
}

} // namespace

void FrOrder::connectKeys()
{
    const auto onKey = [this](const QKeySequence& key, auto handler) {
        auto* shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        shortcut->setAutoRepeat(false);
        runtime::on(shortcut, &QShortcut::activated, this, handler);
    };
    onKey(Qt::CTRL | Qt::Key_P, [this] { pressPrint(); });
    onKey(Qt::Key_F6, [this] { goToPart(1); });
    onKey(Qt::SHIFT | Qt::Key_F6, [this] { goToPart(-1); });
    for (QLineEdit* box :
         {head().TextCustomerName, head().TextCustomerAddress, head().TextCustomerTel})
        leaveByEnter(box);
    for (const auto& lists : {opening().DBComboKind, opening().DBComboColor}) {
        for (controls::DBCombo* list : lists)
            leaveByEnter(list->lineEdit());
    }
    connectGridKeys();
}

void FrOrder::connectGridKeys()
{
    const auto press = [this](auto signal, QPushButton* button) {
        runtime::on(DBGrid1, signal, this, [button] { pressLater(button); });
    };
    press(&controls::DBGrid::enterPressed, commands().CmdView);
    press(&controls::DBGrid::DblClick, commands().CmdView);
    press(&controls::DBGrid::deletePressed, commands().CmdDel);
    runtime::on(DBGrid1, &controls::DBGrid::menuRequested, this,
                [this](const QPoint& place) { showGridMenu(place); });
    const auto tell = [](QPushButton* button, const QKeySequence& key) {
        button->setToolTip(key.toString(QKeySequence::NativeText));
    };
    tell(commands().CmdView, Qt::Key_Return);
    tell(commands().CmdDel, Qt::Key_Delete);
    tell(commands().CmdPrint, Qt::CTRL | Qt::Key_P);
    tell(commands().CmdFindOrder, Qt::CTRL | Qt::Key_F);
}

void FrOrder::pressPrint()
{
    commands().CmdPrint->click();
}

void FrOrder::goToPart(int by)
{
    const std::array<QWidget*, 3> parts{opening_->TextNum[0], DBGrid1, head_->TextCustomerName};
    const QWidget* focused = focusWidget();
    int current = 0;
    if (focused == DBGrid1 || commands_->isAncestorOf(focused))
        current = opening_->commandRow()->isAncestorOf(focused) ? 0 : 1;
    else if (head_->isAncestorOf(focused))
        current = 2;
    parts[std::size_t(current + by + 3) % parts.size()]->setFocus(Qt::ShortcutFocusReason);
}

/// Adds a disabled menu entry for each remark about the current line. A remark says why the line
/// probably contains a typing mistake. A tool tip of the grid also shows the remarks, but it can
/// only be opened with the mouse.
void FrOrder::addRemarks(QMenu& menu)
{
    const QString remarks = DBGrid1->currentIndex().data(Qt::ToolTipRole).toString();
    for (const QString& each : remarks.split(u'\n', Qt::SkipEmptyParts))
        menu.addAction(each)->setEnabled(false);
    if (!remarks.isEmpty())
        menu.addSeparator();
}

void FrOrder::addMoves(QMenu& menu)
{
    for (const auto& [caption, key] : {std::pair(u"לשורה הראשונה"_s, Qt::Key_Home),
                                       std::pair(u"לשורה האחרונה"_s, Qt::Key_End)}) {
        QAction* entry = menu.addAction(captionWithKey(caption, key));
        runtime::on(entry, &QAction::triggered, this, [this, isLast = key == Qt::Key_End] {
            // The number of rows is read when the user chooses the menu entry, because the lines
            // may have changed while the menu was open.
            const int row = isLast ? DBGrid1->model()->rowCount() - 1 : 0;
            const int column = DBGrid1->currentIndex().column();
            if (DBGrid1->model()->hasIndex(row, column))
                DBGrid1->setCurrentIndex(DBGrid1->model()->index(row, column));
        });
    }
}

/// Opens the menu of the current line at a position on the screen. The menu contains the remarks
/// about the line, the commands for the line, and the moves to the first and to the last line.
void FrOrder::showGridMenu(const QPoint& place)
{
    auto* menu = new QMenu(DBGrid1);
    menu->setObjectName(u"MenuLine"_s);
    menu->setLayoutDirection(Qt::RightToLeft);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    addRemarks(*menu);
    for (const auto& [button, key] : {std::pair(commands().CmdView, Qt::Key_Return),
                                      std::pair(commands().CmdDel, Qt::Key_Delete)}) {
        QAction* entry = menu->addAction(captionWithKey(button->text(), key));
        runtime::on(entry, &QAction::triggered, button,
                    [pressed = button] { pressLater(pressed); });
    }
    addMoves(*menu);
    menu->popup(place);
}

} // namespace orders
