#include "reliability/bad/writing_commands.h"

#include "catalogue/fr_color_kind.h"
#include "catalogue/fr_serials.h"
#include "orders/order_head.h"
#include "store/schema.h"

#include <QTableView>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;
using testsupport::child;

namespace {

constexpr int nameColumn = 1;
constexpr int rowOfName = 1; ///< Index of the row that is changed or deleted.

bool isOfSeries(Command command)
{
    return command == AddSeries || command == SaveSeries || command == DeleteSeries;
}

bool changesOneRow(Command command)
{
    return command != AddLine && command != DeleteAllLines && command != PrintOrder &&
           command != CloseOrder;
}

/// Returns the grid of the frame kinds.
QTableView& list(const WorkingDay& day)
{
    return *child<QTableView>(*day.child<catalogue::FrColorKind>(), u"DBGridKind_0"_s);
}

bool prepareOrder(WorkingDay& day, Command command)
{
    if (command == NewOrder)
        return true;
    if (!day.openOrder() || !day.chooseSeries())
        return false;
    day.form()->head().TextCustomerName->setText(u"לקוח אחר"_s);
    // Waits until the grid has moved to its last line, so that RecordCount is complete.
    return QTest::qWaitFor(
        [&] { return !child<QTimer>(*day.form(), u"Timer1"_s)->isActive() || !day.goesOn(); });
}

bool prepareSeries(WorkingDay& day, Command command)
{
    day.trigger(u"Serials"_s);
    if (!day.goesOn())
        return false;
    const auto& form = *day.child<catalogue::FrSerials>();
    if (command == DeleteSeries)
        return true;
    WorkingDay::click(form, command == AddSeries ? u"CmdNew"_s : u"CmdUpdate"_s);
    child<QLineEdit>(form, u"TextName"_s)->setText(u"סדרה אחרת"_s);
    return day.goesOn();
}

bool prepareName(WorkingDay& day, Command command)
{
    day.trigger(u"ColorKind"_s);
    if (!day.goesOn())
        return false;
    QTableView& grid = list(day);
    const int row = command == AddName ? grid.model()->rowCount() - 1 : rowOfName;
    grid.setCurrentIndex(grid.model()->index(row, nameColumn));
    if (command != DeleteName)
        testsupport::typeIntoCell(grid, QString(50, u'ש'));
    return day.goesOn();
}

void runInSeries(WorkingDay& day, Command command)
{
    const auto& form = *day.child<catalogue::FrSerials>();
    if (command != SaveSeries) // Saving asks no question.
        day.boxes.answer(runtime::vbYes);
    WorkingDay::click(form, command == AddSeries    ? u"CmdAdd"_s
                            : command == SaveSeries ? u"CmdUpdate"_s
                                                    : u"CmdDelete"_s);
}

void runInGrid(WorkingDay& day, Command command)
{
    QTableView& grid = list(day);
    QTest::keyClick(&grid, command == DeleteName ? Qt::Key_Delete : Qt::Key_Up);
    // Delivers the grid's queued message box.
    QCoreApplication::sendPostedEvents(&grid, QEvent::MetaCall);
}

} // namespace

bool isInGrid(Command command)
{
    return command == AddName || command == ChangeName || command == DeleteName;
}

void layStore(testsupport::TemporaryStore& store, Command command)
{
    constexpr int lines = 4;
    for (const QString& name : {u"סדרה"_s, u"סדרה ב"_s})
        store.addSeries(name, {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, 2, 2);
    store.addOrder(1, command == NewOrder);
    store.execute(u"UPDATE Orders SET CustomerName = 'לקוח'"_s);
    // The numbers start at 5, so that printing has to renumber the lines.
    for (int line = 0; line < lines && command != SaveDetails; ++line)
        store.addLine(1, 5 + line);
    store.execute(u"INSERT INTO MashkofKind (Name) VALUES ('רגיל'), ('כבד')"_s);
}

bool prepare(WorkingDay& day, Command command)
{
    if (isOfSeries(command))
        return prepareSeries(day, command);
    return isInGrid(command) ? prepareName(day, command) : prepareOrder(day, command);
}

void run(WorkingDay& day, Command command)
{
    if (isOfSeries(command))
        return runInSeries(day, command);
    if (isInGrid(command))
        return runInGrid(day, command);
    if (command == NewOrder) {
        day.openOrder();
    } else if (command == AddLine) {
        day.addLine();
    } else if (command == SaveDetails || command == PrintOrder) {
        // An order without lines is saved but not printed.
        day.click(u"CmdPrint"_s);
    } else {
        day.boxes.answer(runtime::vbYes);
        day.click(command == DeleteLine       ? u"CmdDel"_s
                  : command == DeleteAllLines ? u"CmdDelAll"_s
                                              : u"CmdCloseOrder"_s);
    }
}

AllRows allRows(testsupport::TemporaryStore& store)
{
    AllRows all;
    for (const store::TableSchema& table : store::schema()) {
        for (const QVariantList& row : store.rows(u"SELECT * FROM "_s + table.name))
            all[table.name].insert(row.constFirst().toInt(), row);
    }
    return all;
}

AllRows rowsDone(Command command)
{
    testsupport::TemporaryStore store;
    layStore(store, command);
    WorkingDay day;
    if (day.start(store.folder()) && prepare(day, command))
        run(day, command);
    if (!day.goesOn())
        qFatal("%s", qPrintable(day.lastBox()));
    return allRows(store);
}

bool mayBeLeft(Command command, const AllRows& before, const AllRows& done, const AllRows& after)
{
    if (changesOneRow(command))
        return after == before;
    for (const store::TableSchema& table : store::schema()) {
        const auto& was = before[table.name];
        const auto& willBe = done[table.name];
        const auto& is = after[table.name];
        const auto numbers = was.keys() + willBe.keys() + is.keys();
        for (const int number : numbers) {
            if (is.value(number) != was.value(number) && is.value(number) != willBe.value(number))
                return false;
        }
    }
    return true;
}
