#include "driving/order_form.h"

#include "driving/controls.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QTableView>

namespace driving {

namespace {

/// Moves the grid's current row down, one row at a time, until the row with this series name is
/// current. Single steps are needed because the grid reads its rows on demand. Returns false if no
/// row has this name.
bool goToSeries(QTableView& grid, const QString& name)
{
    for (int row = 0; row < grid.model()->rowCount(); ++row) {
        grid.setCurrentIndex(grid.model()->index(row, seriesNameColumn));
        if (cellText(grid, row, seriesNameColumn) == name)
            return true;
    }
    // A grid that could not read its rows has posted the error to Qt's event loop. This call
    // handles the posted error at once, so that it is shown before this function returns.
    QCoreApplication::sendPostedEvents(&grid, QEvent::MetaCall);
    return false;
}

} // namespace

bool chooseSeries(const QWidget& orderForm, const QString& name,
                  const std::function<void(QWidget& picker)>& fill)
{
    click(orderForm, names::openPicker);
    QWidget* picker = shownWindow(names::picker);
    if (picker == nullptr)
        return false;
    if (!goToSeries(control<QTableView>(*picker, names::seriesGrid), name)) {
        click(*picker, names::closePicker);
        return false;
    }
    if (fill)
        fill(*picker);
    click(*picker, names::takeSeries);
    return true;
}

void fillOpening(const QWidget& orderForm, const Opening& opening)
{
    for (const Entry& each : measureEntries(opening))
        enter(orderForm, each.control, each.text);
    for (const Entry& each : listEntries(opening))
        control<QComboBox>(orderForm, each.control).setCurrentText(each.text);
}

} // namespace driving
