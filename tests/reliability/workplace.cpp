#include "reliability/workplace.h"

#include "calculation/opening_panel.h"
#include "catalogue/catalogue.h"
#include "catalogue/fr_color_kind.h"
#include "catalogue/fr_serials.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "platform/controls/data_control.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"
#include "shell/base/module1.h"
#include "shell/start.h"
#include "support/widgets.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <cstdio>

using namespace Qt::StringLiterals;
using testsupport::child;

namespace reliability {

namespace {

QWidget* shownWindow(const QString& name)
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->objectName() == name && each->isVisible())
            return each;
    }
    return nullptr;
}

void click(const QWidget& form, const QString& button)
{
    child<QPushButton>(form, button)->click();
}

void type(const QWidget& form, const QString& box, const QString& text)
{
    child<QLineEdit>(form, box)->setText(text);
}

controls::DataControl& data(const QWidget& form, const QString& name)
{
    return *child<controls::DataControl>(form, name);
}

/// Closes the modal window that is open at the next event loop iteration.
void leaveNextModal()
{
    QTimer::singleShot(0, qApp, [] {
        if (QWidget* modal = QApplication::activeModalWidget())
            modal->close();
    });
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
    runtime::setMessageBoxDoor([](const runtime::MessageBoxRequest& request) {
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
    for (QAction* each : window_->findChildren<QAction*>()) {
        if (each->data().toString() == tag)
            each->trigger();
    }
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
    click(order(), u"CmdPicSerial"_s);
    QWidget* picker = shownWindow(u"FormSelectSerial"_s);
    if (picker == nullptr)
        qFatal("the picker did not open");
    auto* grid = child<QTableView>(*picker, u"DBGrid1"_s);
    constexpr int nameColumn = 2;
    int row = 0;
    while (row < grid->model()->rowCount() && testsupport::cellText(*grid, row, nameColumn) != name)
        ++row;
    if (row == grid->model()->rowCount()) {
        // A grid that cannot read its rows shows a message from the event loop and the program
        // ends.
        QApplication::sendPostedEvents(grid, QEvent::MetaCall);
        qFatal("no series %s", qUtf8Printable(name));
    }
    grid->setCurrentIndex(grid->model()->index(row, nameColumn));
    child<QCheckBox>(*picker, u"CheckKind"_s)->setChecked(monoblock);
    click(*picker, u"CmdPic"_s);
}

int Workplace::addLine(const Opening& opening)
{
    QWidget& form = order();
    type(form, u"TextNum_0"_s, QString::number(opening.width));
    type(form, u"TextNum_1"_s, u"50"_s);
    type(form, u"TextNum_2"_s, QString::number(opening.height));
    type(form, u"TextNum_3"_s, u"25"_s);
    for (int part = 0; part < 4; ++part) {
        child<QComboBox>(form, u"DBComboKind_%1"_s.arg(part))->setCurrentText(opening.tag);
        child<QComboBox>(form, u"DBComboColor_%1"_s.arg(part))->setCurrentText(opening.tag);
    }
    click(form, u"CmdAdd"_s);
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
    QTimer::singleShot(0, qApp, [number] {
        runtime::guarded([number] {
            const QWidget& search = *QApplication::activeModalWidget();
            dao::Recordset& all = data(search, u"DataOrders"_s).Recordset();
            all.MoveFirst();
            while (all.Fields(u"Number"_s).Value().toInt() != number)
                all.MoveNext();
            click(search, u"CmdPic"_s);
        });
    });
    trigger(u"FindOrder"_s);
}

void Workplace::closePreview()
{
    if (QWidget* preview = shownWindow(u"DataReport1"_s))
        preview->close();
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
    child<QComboBox>(series(), u"ComboLane"_s)->setCurrentIndex(1);
    child<QComboBox>(series(), u"ComboWing"_s)->setCurrentIndex(1);
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
    return *child<QTableView>(catalogue::frColorKind(), u"DBGridKind_%1"_s.arg(list));
}

/// Searches from the end, where the newest names are.
void Workplace::goToName(QTableView& grid, int code)
{
    int row = grid.model()->rowCount() - 1;
    while (row >= 0 && testsupport::cellText(grid, row, columnOfCode).toInt() != code)
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
    return testsupport::cellText(grid, blank, columnOfCode).toInt();
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
