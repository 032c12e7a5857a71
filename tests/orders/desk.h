#pragma once

#include "base/module1.h"
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

#include <utility>

namespace testsupport {

/// What a test of the orders works at: an empty store, today held at 1 March 2026, the doors to
/// the outside watched, a frame for the order form, the shared variables as a start leaves them.
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

    /// An order with lines of these numbers, each line's series named after its number.
    void addOrderWithLines(int number, const QList<int>& lineNumbers);
    /// The order is the current one, and the form is loaded on it.
    orders::FrOrder& openOrder(int number);
    /// The loaded order form; null where none is loaded.
    orders::FrOrder* form() const;

    template <typename Widget>
    Widget* on(const char* name) const
    {
        return child<Widget>(*form(), QString::fromLatin1(name));
    }
    void click(const char* button) const { on<QPushButton>(button)->click(); }
    QString label(const char* name) const { return on<QLabel>(name)->text(); }
    QString box(const char* name) const { return on<QLineEdit>(name)->text(); }
    void type(const char* name, const QString& text) const { on<QLineEdit>(name)->setText(text); }
    dao::Recordset& lines() const;
    /// NUM of the order's lines in the store, by their place in the table.
    QList<int> storedLineNumbers(int order);
    /// True when the timer that brings the grid to its last line has done its work.
    bool timerRests() const;
};

/// Lays ready what is done in the next modal dialog, which is left afterwards in any case.
template <typename Work>
void inNextDialog(Work work)
{
    QTimer::singleShot(0, qApp, [work] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        QVERIFY2(dialog != nullptr, "no modal dialog stands");
        const QPointer<QDialog> still(dialog);
        work(*dialog);
        if (still && still->isVisible())
            still->done(QDialog::Rejected);
    });
}

} // namespace testsupport
