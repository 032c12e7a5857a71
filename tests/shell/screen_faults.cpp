#include "shell/screen_faults.h"

#include "output/fitted_label.h"
#include "platform/controls/form.h"
#include "platform/controls/scroll_part.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QToolBar>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace testsupport {

namespace {

QString named(const QWidget& widget)
{
    return widget.objectName().isEmpty() ? QString::fromLatin1(widget.metaObject()->className())
                                         : widget.objectName();
}

QString text(const QRect& rect)
{
    return u"%1,%2 %3x%4"_s.arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

/// Returns the widget that limits where the control may stand: the contents of the scrolling part
/// around it, or its form.
const QWidget& limitOf(const QWidget& control, const QWidget& form)
{
    for (const QWidget* each = &control; each != &form; each = each->parentWidget()) {
        const QWidget* viewport = each->parentWidget();
        const auto* area = qobject_cast<const QScrollArea*>(viewport->parentWidget());
        if (area != nullptr && area->widget() == each)
            return *each;
    }
    return form;
}

bool isChecked(const QWidget& widget)
{
    const bool isOfToolkit = widget.objectName().startsWith(u"qt_"_s);
    const bool isControl =
        qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
        qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QLabel*>(&widget) ||
        qobject_cast<const QGroupBox*>(&widget) || qobject_cast<const QTableView*>(&widget);
    // Controls that do not fit a toolbar are in its extension menu.
    const bool isInToolbar = qobject_cast<const QToolBar*>(widget.parentWidget()) != nullptr;
    return widget.isVisible() && isControl && !isOfToolkit && !isInToolbar;
}

bool hasRoomForText(const QWidget& widget)
{
    const QFontMetrics metrics = widget.fontMetrics();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return metrics.horizontalAdvance(button->text()) <= button->width();
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return metrics.horizontalAdvance(group->title()) <= group->width();
    const auto* label = qobject_cast<const QLabel*>(&widget);
    // A fitted label sets its text smaller if it has too little room. A text that its own tool tip
    // repeats may be cut.
    if (label == nullptr || dynamic_cast<const output::FittedLabel*>(label) != nullptr ||
        label->toolTip() == label->text())
        return true;
    const int flags = label->wordWrap() ? Qt::TextWordWrap : 0;
    const QSize needed = metrics.boundingRect(label->contentsRect(), flags, label->text()).size();
    return needed.width() <= label->contentsRect().width() + 1 &&
           needed.height() <= label->contentsRect().height() + 2;
}

bool isFigure(const QString& shown)
{
    const auto isLetter = [](QChar each) { return each.isLetter(); };
    return !shown.isEmpty() && std::none_of(shown.begin(), shown.end(), isLetter);
}

QStringList gridFaults(const QTableView& grid)
{
    QStringList faults;
    for (int column = 0; column < grid.model()->columnCount(); ++column) {
        if (grid.isColumnHidden(column))
            continue;
        if (grid.columnWidth(column) < grid.horizontalHeader()->sectionSizeHint(column))
            faults.append(u"%1: header %2 is shortened"_s.arg(named(grid)).arg(column));
        for (int row = std::max(grid.rowAt(0), 0); row < grid.model()->rowCount(); ++row) {
            const QModelIndex cell = grid.model()->index(row, column);
            if (grid.visualRect(cell).top() > grid.viewport()->height())
                break;
            const QString shown = cell.data().toString();
            if (isFigure(shown) &&
                grid.columnWidth(column) < grid.fontMetrics().horizontalAdvance(shown) + 4)
                faults.append(u"%1: %2 is shortened"_s.arg(named(grid), shown));
        }
    }
    return faults;
}

/// Returns a fault for each scroll bar of the form's scrolling part that has nothing to scroll, or
/// that would not be needed if the form used the free room of the screen.
QStringList scrollFaults(const QWidget& form, const controls::ScrollPart& part, QSize freeRoom)
{
    QStringList faults;
    for (const QScrollBar* bar : {part.horizontalScrollBar(), part.verticalScrollBar()}) {
        if (!bar->isVisible())
            continue;
        const bool isHorizontal = bar->orientation() == Qt::Horizontal;
        const int spare = isHorizontal ? freeRoom.width() : freeRoom.height();
        if (bar->maximum() <= spare)
            faults.append(u"%1: a %2 scroll bar over %3 pixels, %4 pixels are free"_s.arg(
                named(form), isHorizontal ? u"horizontal"_s : u"vertical"_s,
                QString::number(bar->maximum()), QString::number(spare)));
    }
    return faults;
}

} // namespace

QStringList layoutFaults(QWidget& form)
{
    QStringList faults;
    const auto* child = qobject_cast<QMdiSubWindow*>(form.parentWidget());
    // A window manager draws frames in device pixels, so the size of a frame may be rounded up.
    const QRect room = child != nullptr ? child->mdiArea()->viewport()->rect()
                                        : form.screen()->availableGeometry().adjusted(0, 0, 1, 1);
    const QRect place = child != nullptr ? child->geometry() : form.frameGeometry();
    if (!room.contains(place))
        faults.append(u"%1 at %2 leaves %3"_s.arg(named(form), text(place), text(room)));
    for (const auto* each : form.findChildren<controls::ScrollPart*>())
        faults += scrollFaults(form, *each,
                               child != nullptr ? room.size() - place.size()
                                                : controls::roomOnScreen(form) - form.size());
    for (const QWidget* each : form.findChildren<QWidget*>()) {
        if (!isChecked(*each) || each->window() != form.window())
            continue;
        const QWidget& limit = limitOf(*each, form);
        const QRect inLimit(each->mapTo(&limit, QPoint(0, 0)), each->size());
        if (!limit.rect().contains(inLimit))
            faults.append(u"%1 at %2 leaves its form"_s.arg(named(*each), text(inLimit)));
        if (!hasRoomForText(*each))
            faults.append(u"%1 has no room for its text"_s.arg(named(*each)));
        if (const auto* grid = qobject_cast<const QTableView*>(each))
            faults += gridFaults(*grid);
    }
    return faults;
}

QStringList focusFaults(QWidget& form)
{
    QStringList faults;
    QWidget* first = QApplication::focusWidget();
    if (first == nullptr || !form.isAncestorOf(first))
        return {u"%1: the focus is not in it but in %2"_s.arg(
            named(form), first == nullptr ? u"no control"_s : named(*first))};
    QWidget* focused = first;
    for (int i = 0; i < 80; ++i) {
        const auto* area = qobject_cast<QAbstractScrollArea*>(focused);
        const QWidget& shown = area != nullptr ? *area->viewport() : *focused;
        const QRect seen = shown.visibleRegion().boundingRect();
        // A control larger than the visible part shows at least 40 pixels.
        const bool isSeen = seen == shown.rect() ||
                            (shown.height() > 100 && seen.height() >= 40 && seen.width() >= 40);
        if (!isSeen)
            faults.append(u"%1 has the focus out of view: %2 of %3"_s.arg(
                named(*focused), text(seen), text(shown.rect())));
        QTest::keyClick(focused, Qt::Key_Tab);
        focused = QApplication::focusWidget();
        if (focused == nullptr || focused == first || !form.isAncestorOf(focused))
            break;
    }
    return faults;
}

} // namespace testsupport
