#pragma once

#include "base/module1.h"
#include "driving/controls.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "platform/controls/data_control.h"
#include "support/doors.h"
#include "support/errors.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTimer>

namespace testsupport {

/// The environment of an order test: an empty store, today fixed at 1 March 2026, recorded message
/// boxes and dialogs, a frame for the order form, and the shared variables in their initial state.
class Desk
{
public:
    Desk();
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    TemporaryStore store;
    RecordedBoxes boxes;
    RecordedEnd end;
    FixedToday today{QDate(2026, 3, 1)};
    QMainWindow window;
    controls::DataControl dataMDI{QStringLiteral("DataMDI")};

    /// Adds an order with lines of these numbers. The series name of each line is its number.
    void addOrderWithLines(int number, const QList<int>& lineNumbers);
    /// Makes the order current and loads the form with it.
    orders::FrOrder& openOrder(int number);
    /// Returns the loaded order form, or nullptr if none is loaded.
    orders::FrOrder* form() const;

    template <typename Widget>
    Widget* on(const char* name) const
    {
        return child<Widget>(*form(), QString::fromLatin1(name));
    }
    void click(const char* button) const { driving::click(*form(), QString::fromLatin1(button)); }
    QString label(const char* name) const { return on<QLabel>(name)->text(); }
    QString box(const char* name) const { return on<QLineEdit>(name)->text(); }
    void type(const char* name, const QString& text) const
    {
        driving::type(*form(), QString::fromLatin1(name), text);
    }
    dao::Recordset& lines() const;
    /// Returns the NUM of the order's stored lines in table order.
    QList<int> storedLineNumbers(int order);
    /// Returns true after the timer that moves the grid to the last line has fired.
    bool timerRests() const;
};

} // namespace testsupport
