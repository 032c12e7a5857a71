#include "reliability/workplace.h"

#include "base/module1.h"
#include "calculation/opening_panel.h"
#include "catalogue/catalogue.h"
#include "catalogue/fr_color_kind.h"
#include "catalogue/fr_serials.h"
#include "driving/controls.h"
#include "driving/order_form.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "platform/controls/data_control.h"
#include "platform/runtime/message_box.h"
#include "shell/start.h"
#include "support/widgets.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QTableView>
#include <QTest>

#include <cstdio>

using namespace Qt::StringLiterals;
using driving::click;
using driving::type;

namespace reliability {

namespace {

controls::DataControl& data(const QWidget& form, const QString& name)
{
    return driving::control<controls::DataControl>(form, name);
}

/// Closes the modal dialog that is open at the next event loop iteration.
void leaveNextModal()
{
    driving::inNextModal([](QDialog& dialog) { dialog.close(); });
}

constexpr int columnOfCode = 0;
constexpr int columnOfName = 1;

/// Presses Down, which writes the current row. If the grid cannot write it, it shows a message and
/// returns to the row.
void leaveRow(QTableView& grid)
{
    const int row = grid.currentIndex().row();
    QTest::keyClick(&grid, Qt::Key_Down);
    QApplication::sendPostedEvents(&grid, QEvent::MetaCall);
    if (grid.currentIndex().row() != row + 1)
        qFatal("row %d of %s was not written", row, qUtf8Printable(grid.objectName()));
}

void fillSeries(const QWidget& form, int number)
{
    for (int i = 0; i < 8; ++i) {
        type(form, u"TextSign_%1"_s.arg(i), u"-"_s);
        type(form, u"TextNum_%1"_s.arg(2 * i), QString::number(number));
        type(form, u"TextNum_%1"_s.arg(2 * i + 1), u"25"_s);
    }
    type(form, u"TextRem"_s, QString::number(number));
}

} // namespace

void answerBoxes()
{
    runtime::messageBoxDoor().replace([](const runtime::MessageBoxRequest& request) {
        if ((request.flags & runtime::vbYesNo) != 0)
            return runtime::vbYes;
        std::fprintf(stderr, "%s\n", qUtf8Printable(request.text.simplified()));
        std::fflush(stderr);
        return runtime::vbOK;
    });
}

QString customerOf(int order)
{
    return u"לקוח %1"_s.arg(order);
}

Workplace::Workplace(const QString& folder) : window_(shell::openMainWindow(folder)) {}

Workplace::~Workplace() = default;

void Workplace::trigger(const QString& tag)
{
    driving::trigger(*window_, tag);
}

QWidget& Workplace::order() const
{
    return orders::frOrder();
}

QWidget& Workplace::series() const
{
    return catalogue::frSerials();
}

void Workplace::newOrder()
{
    trigger(u"Order"_s);
    type(order(), u"TextCustomerName"_s, customerOf(currentOrder()));
}

bool Workplace::hasSeries() const
{
    return Module1::SelectedSerialNum != 0;
}

void Workplace::chooseSeries(const QString& name, bool monoblock)
{
    const bool chosen = driving::chooseSeries(order(), name, [monoblock](QWidget& picker) {
        driving::control<QCheckBox>(picker, driving::names::monoblock).setChecked(monoblock);
    });
    if (!chosen)
        qFatal("the picker did not open or has no series %s", qUtf8Printable(name));
}

int Workplace::addLine(const Opening& opening)
{
    const auto boxes = [](int whole, const char* hundredths) {
        return driving::Boxes{QString::number(whole), QString::fromLatin1(hundredths)};
    };
    driving::Opening entered{boxes(opening.width, "50"), boxes(opening.height, "25"), {}, {}, {}};
    entered.kinds.fill(opening.tag);
    entered.colours.fill(opening.tag);
    driving::fillOpening(order(), entered);
    click(order(), driving::names::addLine);
    // The added row is the last one of the recordset through which it was added.
    dao::Recordset& added = orders::frOrder().opening().DataCuts->Recordset();
    added.MoveLast();
    if (added.Fields(u"Mashof_Kind"_s).Value().toString() != opening.tag)
        qFatal("%s was not added", qUtf8Printable(opening.tag));
    return added.Fields(u"NUM"_s).Value().toInt();
}

int Workplace::lineCount() const
{
    return data(order(), u"DataAllCuts"_s).Recordset().RecordCount();
}

void Workplace::goToLastLine()
{
    if (lineCount() > 0)
        data(order(), u"DataAllCuts"_s).Recordset().MoveLast();
}

QString Workplace::currentTag() const
{
    return data(order(), u"DataAllCuts"_s).Recordset().Fields(u"Mashof_Kind"_s).Value().toString();
}

void Workplace::deleteLine()
{
    click(order(), u"CmdDel"_s);
}

void Workplace::deleteAllLines()
{
    click(order(), u"CmdDelAll"_s);
}

void Workplace::print()
{
    click(order(), u"CmdPrint"_s);
}

void Workplace::closeOrder()
{
    click(order(), u"CmdCloseOrder"_s);
}

void Workplace::viewLine()
{
    leaveNextModal();
    click(order(), u"CmdView"_s);
}

void Workplace::findOrder()
{
    leaveNextModal();
    trigger(u"FindOrder"_s);
}

void Workplace::takeOrder(int number)
{
    driving::inNextModal([number](QDialog& search) {
        dao::Recordset& all = data(search, u"DataOrders"_s).Recordset();
        all.MoveFirst();
        while (all.Fields(u"Number"_s).Value().toInt() != number)
            all.MoveNext();
        click(search, u"CmdPic"_s);
    });
    trigger(u"FindOrder"_s);
}

void Workplace::closePreview()
{
    driving::closeWindow(driving::names::preview);
}

void Workplace::closeOrderForm()
{
    click(order(), u"Command2"_s);
}

int Workplace::currentOrder() const
{
    return Module1::CurrentOrderNum;
}

void Workplace::addSeries(const QString& name, int number)
{
    trigger(u"Serials"_s);
    click(series(), u"CmdNew"_s);
    type(series(), u"TextName"_s, name);
    driving::control<QComboBox>(series(), u"ComboLane"_s).setCurrentIndex(1);
    driving::control<QComboBox>(series(), u"ComboWing"_s).setCurrentIndex(1);
    fillSeries(series(), number);
    click(series(), u"CmdAdd"_s);
}

/// Searches from the end, where the newest series are; other stations may have added some
/// meanwhile.
void Workplace::goToSeries(const QString& name)
{
    trigger(u"Serials"_s);
    dao::Recordset& all = data(series(), u"DataGrid"_s).Recordset();
    all.MoveLast();
    while (all.Fields(u"Name"_s).Value().toString() != name)
        all.MovePrevious();
}

void Workplace::changeSeries(const QString& name, int number)
{
    goToSeries(name);
    click(series(), u"CmdUpdate"_s);
    fillSeries(series(), number);
    click(series(), u"CmdUpdate"_s);
}

void Workplace::deleteSeries(const QString& name)
{
    goToSeries(name);
    click(series(), u"CmdDelete"_s);
}

void Workplace::closeSeriesForm()
{
    click(series(), u"CmdEnd"_s);
}

QTableView& Workplace::openList(int list)
{
    trigger(u"ColorKind"_s);
    return driving::control<QTableView>(catalogue::frColorKind(), u"DBGridKind_%1"_s.arg(list));
}

/// Searches from the end, where the newest names are.
void Workplace::goToName(QTableView& grid, int code)
{
    int row = grid.model()->rowCount() - 1;
    while (row >= 0 && driving::cellText(grid, row, columnOfCode).toInt() != code)
        --row;
    if (row < 0)
        qFatal("no code %d in %s", code, qUtf8Printable(grid.objectName()));
    grid.setCurrentIndex(grid.model()->index(row, columnOfName));
}

int Workplace::addName(int list, const QString& name)
{
    QTableView& grid = openList(list);
    const int blank = grid.model()->rowCount() - 1;
    grid.setCurrentIndex(grid.model()->index(blank, columnOfName));
    testsupport::typeIntoCell(grid, name);
    leaveRow(grid);
    return driving::cellText(grid, blank, columnOfCode).toInt();
}

void Workplace::changeName(int list, int code, const QString& name)
{
    QTableView& grid = openList(list);
    goToName(grid, code);
    testsupport::typeIntoCell(grid, name);
    leaveRow(grid);
}

void Workplace::deleteName(int list, int code)
{
    QTableView& grid = openList(list);
    goToName(grid, code);
    const int rows = grid.model()->rowCount();
    QTest::keyClick(&grid, Qt::Key_Delete);
    if (grid.model()->rowCount() != rows - 1)
        qFatal("code %d of %s was not deleted", code, qUtf8Printable(grid.objectName()));
}

void Workplace::closeKinds()
{
    click(catalogue::frColorKind(), u"CmdEnd"_s);
}

void Workplace::openAndCloseKinds()
{
    trigger(u"ColorKind"_s);
    catalogue::frColorKind().Unload();
}

} // namespace reliability
