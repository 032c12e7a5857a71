// Benchmarks of a store on a server. Adding a line is compared with plain SQL statements that read
// and write the same data. Screens on a large store are compared with the same screens on a small
// store. The environment variable ZOMREL_SERVER_ORDERS sets the number of orders in the large
// store. Each order has ten lines.

#include "application.h"
#include "paired.h"
#include "server_store.h"

#include "base/module1.h"
#include "calculation/form_select_serial.h"
#include "orders/form_find_order.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "platform/controls/data_control.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/database.h"
#include "platform/runtime/guard.h"
#include "store/store_access.h"
#include "support/server_proxy.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QLineEdit>
#include <QScrollBar>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int usualOrders = 100000;
constexpr int fewOrders = 10;
constexpr int linesEach = 10;
constexpr std::int16_t knownOrder = 5; ///< Number of an order that exists in both stores.
constexpr double goal = 1.5;

/// Runs the function `work` inside an event handler and returns the duration of the call in
/// seconds.
template <typename Work>
double secondsInAnEvent(Work&& work)
{
    double seconds = 0;
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        seconds = bench::secondsOf(work);
        loop.quit();
    });
    loop.exec();
    return seconds;
}

template <typename Widget>
Widget* onOrderForm(const QString& name)
{
    return orders::frOrder().findChild<Widget*>(name);
}

/// The visible order form with the first order of the store. A series is chosen, and the order has
/// some lines.
class OpenOrder
{
public:
    explicit OpenOrder(const bench::ServerStore& store)
    {
        store.use();
        Module1::CurrentOrderNum = 0;
        controls::DataControl dataMDI(u"DataMDI"_s);
        orders::openOrderLongForm(dataMDI);
        orders::frOrder().show();
        Module1::SelectedSerialNum = 1;
        timer_ = onOrderForm<QTimer>(u"Timer1"_s);
        timer_->setInterval(0);
        onRowAdded_ = runtime::on(onOrderForm<controls::DataControl>(u"DataCuts"_s),
                                  &controls::DataControl::rowAdded, &orders::frOrder(),
                                  [this](const dao::RowKey&) { onCommitted(); });
        for (int i = 0; i < linesEach; ++i) {
            addLine();
            settle();
        }
    }

    ~OpenOrder()
    {
        QObject::disconnect(onRowAdded_);
        orders::frOrder().Unload();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        dao::DBEngine::instance().Idle();
    }
    OpenOrder(const OpenOrder&) = delete;
    OpenOrder& operator=(const OpenOrder&) = delete;

    /// Types an opening, clicks the button CmdAdd, which adds an order line, and returns the
    /// duration of the click in seconds.
    double addLine() const
    {
        onOrderForm<QLineEdit>(u"TextNum_0"_s)->setText(u"120"_s);
        onOrderForm<QLineEdit>(u"TextNum_2"_s)->setText(u"100"_s);
        return secondsInAnEvent([this] {
            onClick();
            onOrderForm<QAbstractButton>(u"CmdAdd"_s)->click();
            onClicked();
        });
    }
    /// Waits until the timer event that follows a click on CmdAdd is processed, and then paints the
    /// form.
    void settle() const
    {
        while (timer_->isActive())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        benchmark::DoNotOptimize(orders::frOrder().grab());
    }

    std::function<void()> onClick = [] {};
    std::function<void()> onCommitted = [] {};
    std::function<void()> onClicked = [] {};

private:
    QTimer* timer_ = nullptr;
    QMetaObject::Connection onRowAdded_;
};

/// Numbers of round trips between the program and the server while one line is added.
struct RoundTrips
{
    int untilCommitted = 0;
    int ofClick = 0;
    int ofAll = 0; ///< Includes the timer event and the painting.
};

RoundTrips roundTripsOfAClick()
{
    const bench::ServerStore store(u"counted"_s);
    const testsupport::ServerProxy proxy(store.link().port);
    store.leadThrough(proxy.port());
    OpenOrder order(store);
    RoundTrips counted;
    const int before = proxy.roundTrips();
    order.onCommitted = [&] { counted.untilCommitted = proxy.roundTrips() - before; };
    order.onClicked = [&] { counted.ofClick = proxy.roundTrips() - before; };
    order.addLine();
    order.settle();
    counted.ofAll = proxy.roundTrips() - before;
    return counted;
}

void tellRoundTrips(benchmark::State& state)
{
    // Counts the round trips between the program and the server while a line is added. This is done
    // only once, on an order form of its own.
    static const RoundTrips counted = roundTripsOfAClick();
    state.counters["trips_committed"] = counted.untilCommitted;
    state.counters["trips_click"] = counted.ofClick;
    state.counters["trips_all"] = counted.ofAll;
}

/// The baseline: runs the bare SQL statements that add a line to an order of a separate store.
class BareLine
{
public:
    explicit BareLine(const QString& name) : store_(name, 1, linesEach), bare_(store_.link()) {}

    /// Runs the SQL statements that add a line: SELECT of the series, of the order's lines and of
    /// the last line, and then one durable INSERT.
    void add() const
    {
        benchmark::DoNotOptimize(bare_.run(u"SELECT * FROM \"Serials\" WHERE \"AutoNum\" = 1"_s));
        benchmark::DoNotOptimize(bare_.run(numbers_ + u" ORDER BY \"NUM\""_s));
        benchmark::DoNotOptimize(bare_.run(last_));
        bare_.run(insert_);
    }

    /// Runs the SQL statements that follow the adding of a line: SELECT of the order's lines and of
    /// the order.
    void refresh() const
    {
        benchmark::DoNotOptimize(bare_.run(numbers_ + u" ORDER BY \"Order_Date\""_s));
        benchmark::DoNotOptimize(bare_.run(u"SELECT * FROM \"Orders\" WHERE \"Number\" = 1"_s));
    }

private:
    const QString numbers_ = u"SELECT zomrel_row FROM \"Cuts\" WHERE \"Order_Num\" = 1"_s;
    const QString last_ = u"SELECT * FROM \"Cuts\" WHERE zomrel_row = %1"_s.arg(linesEach);
    const QString insert_ = bench::insertedLines(u"1"_s, u"2"_s) + u" RETURNING zomrel_row"_s;
    bench::ServerStore store_;
    bench::BareServer bare_;
};

void AddLineUntilCommitted(benchmark::State& state)
{
    tellRoundTrips(state);
    const bench::ServerStore store(u"committed"_s);
    const BareLine bare(u"bare_committed"_s);
    OpenOrder order(store);
    bench::Pairs pairs;
    for ([[maybe_unused]] auto _ : state) {
        double ours = 0;
        bench::Stopwatch watch;
        order.onClick = [&] { watch = {}; };
        order.onCommitted = [&] { ours = watch.seconds(); };
        order.addLine();
        order.settle();
        pairs.add(ours, bench::secondsOf([&] { bare.add(); }));
        state.SetIterationTime(ours);
    }
    pairs.report(state, goal);
}

BENCHMARK(AddLineUntilCommitted)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(200);

/// Measures the complete click on CmdAdd. Besides adding the line, the click reads the lines again
/// and saves the customer's details.
void AddLine(benchmark::State& state)
{
    tellRoundTrips(state);
    const bench::ServerStore store(u"added"_s);
    const BareLine bare(u"bare_added"_s);
    OpenOrder order(store);
    bench::Pairs pairs;
    for ([[maybe_unused]] auto _ : state) {
        const double ours = order.addLine();
        order.settle();
        pairs.add(ours, bench::secondsOf([&] {
                      bare.add();
                      bare.refresh();
                  }));
        state.SetIterationTime(ours);
    }
    pairs.report(state, goal);
}
BENCHMARK(AddLine)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(200);

/// A small and a large store, which are filled once and used by all benchmarks in this file.
struct Stores
{
    static int manyOrders()
    {
        const int orders = qEnvironmentVariableIntValue("ZOMREL_SERVER_ORDERS");
        return orders > 0 ? orders : usualOrders;
    }

    bench::ServerStore small{u"small"_s, fewOrders, linesEach};
    bench::ServerStore large{u"large"_s, manyOrders(), linesEach};
};

const Stores& stores()
{
    static const Stores both;
    return both;
}

template <typename Action>
void onLargeAndSmall(benchmark::State& state, Action&& action)
{
    const auto on = [&action](const bench::ServerStore& store) {
        store.use();
        const double seconds = secondsInAnEvent(action);
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return seconds;
    };
    // The first run on each store is not measured, because it connects to the server and reads the
    // schema.
    on(stores().large);
    on(stores().small);
    bench::Pairs pairs;
    for ([[maybe_unused]] auto _ : state) {
        const double ours = on(stores().large);
        pairs.add(ours, on(stores().small));
        state.SetIterationTime(ours);
    }
    pairs.report(state, goal);
    dao::DBEngine::instance().Idle();
}

void OpenOrderForm(benchmark::State& state)
{
    onLargeAndSmall(state, [] {
        Module1::CurrentOrderNum = knownOrder;
        benchmark::DoNotOptimize(orders::frOrder().grab());
        orders::frOrder().Unload();
    });
}
BENCHMARK(OpenOrderForm)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

void OpenSearch(benchmark::State& state)
{
    onLargeAndSmall(state, [] {
        orders::FormFindOrder form([](std::int16_t) {});
        form.show();
        benchmark::DoNotOptimize(form.grab());
    });
}
BENCHMARK(OpenSearch)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

void OpenPicker(benchmark::State& state)
{
    onLargeAndSmall(state, [] {
        calculation::FormSelectSerial form;
        form.show();
        benchmark::DoNotOptimize(form.grab());
    });
}
BENCHMARK(OpenPicker)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

/// Compares scrolling the list of the search form near its middle with scrolling near its start.
/// Each step scrolls to rows that have not been visible before.
void ScrollSearch(benchmark::State& state)
{
    // The number of rows by which each iteration scrolls. It is larger than the number of rows that
    // the grid fetches at once.
    constexpr int away = 1000;
    stores().large.use();
    orders::FormFindOrder form([](std::int16_t) {});
    form.show();
    auto* grid = form.findChild<controls::DBGrid*>(u"DBGrid1"_s);
    const auto scrollTo = [&](int row) {
        grid->verticalScrollBar()->setValue(row);
        benchmark::DoNotOptimize(grid->grab());
    };
    int row = 0;
    const int middle = grid->verticalScrollBar()->maximum() / 2;
    bench::Pairs pairs;
    for ([[maybe_unused]] auto _ : state) {
        row += away;
        const double ours = bench::secondsOf([&] { scrollTo(middle + row); });
        pairs.add(ours, bench::secondsOf([&] { scrollTo(row); }));
        state.SetIterationTime(ours);
    }
    pairs.report(state, goal);
}
BENCHMARK(ScrollSearch)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(40);

/// Compares fetching a page of rows from the middle of the table Orders with a bare SELECT by key
/// for the same number of rows.
void FetchPage(benchmark::State& state)
{
    constexpr int pageRows = 64;
    stores().large.use();
    const auto pages =
        store::OpenMyDataBase()
            ->OpenRecordset(u"SELECT * FROM Orders ORDER BY Number"_s, dao::dbOpenDynaset)
            ->pages();
    const bench::BareServer bare(stores().large.link());
    bench::Pairs pairs;
    int page = pages->rowCount() / pageRows / 2;
    for ([[maybe_unused]] auto _ : state) {
        const int first = ++page * pageRows;
        const double ours = bench::secondsOf([&] { pages->load(first); });
        const QString sql =
            u"SELECT * FROM \"Orders\" WHERE \"Number\" BETWEEN %1 AND %2"_s.arg(first + 1).arg(
                first + pageRows);
        pairs.add(ours, bench::secondsOf([&] { benchmark::DoNotOptimize(bare.run(sql)); }));
        state.SetIterationTime(ours);
    }
    pairs.report(state, goal);
}
BENCHMARK(FetchPage)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);

} // namespace

int main(int argc, char** argv)
{
    return bench::runInApplication(argc, argv);
}
