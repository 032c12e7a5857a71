// Compares finding an order, closing it and deleting its lines on a large store and on a small one.
// The cost must depend only on the order's own lines.

#include "application.h"
#include "large_store.h"
#include "paired.h"

#include "base/module1.h"
#include "orders/form_find_order.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "platform/controls/data_control.h"
#include "platform/runtime/message_box.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int linesEach = 10;
constexpr std::int16_t order = 5; ///< Number of an order that exists in both stores.

/// A small and a large store, which are filled once and used by all benchmarks in this file.
struct Stores
{
    Stores()
    {
        bench::fillStore(small, 10, linesEach);
        bench::fillStore(large, 100000, linesEach);
    }

    testsupport::TemporaryStore small;
    testsupport::TemporaryStore large;
};

Stores& stores()
{
    static Stores both;
    return both;
}

void use(const testsupport::TemporaryStore& store)
{
    Module1::StorePath = store.path();
}

void click(const QWidget& form, const QString& button)
{
    form.findChild<QAbstractButton*>(button)->click();
}

/// Opens and paints the search form, then moves to its first and to its last order.
void lookThroughOrders(const testsupport::TemporaryStore& store)
{
    use(store);
    orders::FormFindOrder form([](std::int16_t) {});
    form.show();
    benchmark::DoNotOptimize(form.grab());
    for (const QString& end : {u"DataOrders_First"_s, u"DataOrders_Last"_s}) {
        click(form, end);
        benchmark::DoNotOptimize(form.grab());
    }
}

void OpenSearchAndGoToItsEnds(benchmark::State& state)
{
    // The first call of stores() fills the stores, so it is made before the measurement starts.
    stores();
    bench::runPaired(
        state, 1.5, [] { lookThroughOrders(stores().large); },
        [] { lookThroughOrders(stores().small); });
}
BENCHMARK(OpenSearchAndGoToItsEnds)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

/// A search form that is shown on the given store. The interval of its timer TimerGetOrder is set
/// to 0, so that the form loads the lines of the current order without delay.
class Search
{
public:
    explicit Search(const testsupport::TemporaryStore& store)
        : store_(store),
          form_((use(store), std::make_unique<orders::FormFindOrder>([](std::int16_t) {}))),
          deferred_(form_->findChild<QTimer*>(u"TimerGetOrder"_s))
    {
        deferred_->setInterval(0);
        form_->show();
        waitForLines();
    }

    void moveBack()
    {
        use(store_);
        click(*form_, u"DataOrders_Previous"_s);
        waitForLines();
    }

private:
    void waitForLines() const
    {
        while (deferred_->isActive())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    const testsupport::TemporaryStore& store_;
    std::unique_ptr<orders::FormFindOrder> form_;
    QTimer* deferred_;
};

void DeferredLoadAfterAMove(benchmark::State& state)
{
    std::unique_ptr<Search> large;
    std::unique_ptr<Search> small;
    bench::Pairs pairs;
    for ([[maybe_unused]] auto _ : state) {
        // Each iteration opens a new search form, which starts at the last order. If all iterations
        // used one form, it would reach the first order of the small store and could not move back
        // further.
        large = std::make_unique<Search>(stores().large);
        small = std::make_unique<Search>(stores().small);
        for (int i = 0; i < 5; ++i) {
            const double ours = bench::secondsOf([&] { large->moveBack(); });
            pairs.add(ours, bench::secondsOf([&] { small->moveBack(); }));
        }
    }
    pairs.report(state, 1.2);
}
BENCHMARK(DeferredLoadAfterAMove)->Unit(benchmark::kMillisecond)->Iterations(10);

void takeOrder(const testsupport::TemporaryStore& store)
{
    use(store);
    Module1::CurrentOrderNum = order;
    orders::frOrder().GetOrderDetails(order);
    // Moves to the last line before the measurement. Otherwise the timer Timer1 of the order form
    // would move there during the measurement.
    orders::frOrder().findChild<controls::DataControl*>(u"DataAllCuts"_s)->Recordset().MoveLast();
}

/// Measures the same button click on the same order in the large and in the small store. The
/// order's lines are restored before each click.
void runClick(benchmark::State& state, const QString& button)
{
    for (testsupport::TemporaryStore* store : {&stores().large, &stores().small})
        store->execute(
            u"CREATE TEMP TABLE IF NOT EXISTS kept AS SELECT * FROM Cuts WHERE Order_Num = ?"_s,
            {order});
    const auto timed = [&button](testsupport::TemporaryStore& store) {
        store.execute(u"DELETE FROM Cuts WHERE Order_Num = ?"_s, {order});
        store.execute(u"INSERT INTO Cuts SELECT * FROM kept"_s);
        takeOrder(store);
        return bench::secondsOf([&] { click(orders::frOrder(), button); });
    };
    bench::Pairs pairs;
    for ([[maybe_unused]] auto _ : state) {
        const double ours = timed(stores().large);
        pairs.add(ours, timed(stores().small));
        state.SetIterationTime(ours);
    }
    pairs.report(state, 1.2);
    orders::frOrder().Unload();
}

void CloseOrder(benchmark::State& state)
{
    runClick(state, u"CmdCloseOrder"_s);
}
BENCHMARK(CloseOrder)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

void DeleteLine(benchmark::State& state)
{
    runClick(state, u"CmdDel"_s);
}
BENCHMARK(DeleteLine)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(100);

void DeleteAllLines(benchmark::State& state)
{
    runClick(state, u"CmdDelAll"_s);
}
BENCHMARK(DeleteAllLines)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(50);

} // namespace

int main(int argc, char** argv)
{
    runtime::messageBoxDoor().replace(
        [](const runtime::MessageBoxRequest&) { return runtime::vbYes; });
    return bench::runInApplication(argc, argv);
}
