// Benchmarks of three actions: computing a line, adding a line, and opening the order form. Adding
// a line is compared with plain SQL statements that write the same data. Opening the form on a
// large store is compared with opening it on a small one.

#include "application.h"
#include "large_store.h"
#include "paired.h"

#include "base/module1.h"
#include "calculation/cuts.h"
#include "calculation/opening_panel.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "platform/controls/data_control.h"
#include "support/temporary_store.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// Measures the pure cut-size arithmetic of one line, without input boxes and store.
void ComputeOneLine(benchmark::State& state)
{
    const cuts::Series series{{{{-1, -1.5}, {-4.2, -7.5}, {-13.4, -16}, {-6.3, -8.25}}}, 2};
    const cuts::Size opening{120.5, 100.25};
    for ([[maybe_unused]] auto _ : state) {
        for (const auto part : {cuts::Mashkof, cuts::Kanaf, cuts::Glass, cuts::Reshet}) {
            benchmark::DoNotOptimize(cuts::cutWidth(series, part, opening));
            benchmark::DoNotOptimize(cuts::cutHeight(series, part, opening));
        }
    }
}
BENCHMARK(ComputeOneLine);

/// The baseline of adding a line: an INSERT and an UPDATE through a plain SQLite connection, in a
/// store of its own. The statements are prepared once, and each execution is written to the disk.
class BareStatements
{
public:
    BareStatements()
    {
        database_ = QSqlDatabase::addDatabase(u"QSQLITE"_s, u"bare"_s);
        database_.setDatabaseName(store_.path());
        database_.open();
        QSqlQuery(database_).exec(u"PRAGMA synchronous = EXTRA"_s);
        store_.addOrder(1);
        store_.addLine(1, 1);
        insert_ = std::make_unique<QSqlQuery>(database_);
        insert_->prepare(
            u"INSERT INTO Cuts (Name, MyWidth, MYHeight, Mashkof_W, Mashkof_H, Kanaf_W, Kanaf_H,"
            " Glass_W, Glass_H, Reshet_W, Reshet_H, Mashof_Kind, Mahkof_Color, Mahkof_Count,"
            " Kanaf_Kind, Kanaf_Color, Kanaf_Count, Glass_Kind, Glass_Color, Glass_Count,"
            " Reshet_Kind, Reshet_Color, Reshet_Count, Kind, Order_Num, Order_Date, NUM)"
            " VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)"_s);
        update_ = std::make_unique<QSqlQuery>(database_);
        update_->prepare(u"UPDATE Orders SET CustomerName = ? WHERE Number = 1"_s);
    }

    ~BareStatements()
    {
        insert_.reset();
        update_.reset();
        database_ = QSqlDatabase();
        QSqlDatabase::removeDatabase(u"bare"_s);
    }

    BareStatements(const BareStatements&) = delete;
    BareStatements& operator=(const BareStatements&) = delete;

    void insert()
    {
        ++number_;
        const QVariantList values{
            u"בלגי 7000"_s, 120.5,    100.25,   119.5,     98.75,           58.15,    92.75,
            53.55,          84.25,    57.1,     92.0,      u"פרופיל"_s,     u"לבן"_s, 2,
            u"כנף"_s,       u"לבן"_s, 4,        u"שקוף"_s, u"ללא"_s,        2,        u"רשת"_s,
            u"שחור"_s,      2,        u"אור"_s, 1,         u"2026-01-02"_s, number_};
        for (int i = 0; i < values.size(); ++i)
            insert_->bindValue(i, values[i]);
        insert_->exec();
    }

    void update()
    {
        update_->bindValue(0, u"לקוח %1"_s.arg(++number_));
        update_->exec();
    }

private:
    testsupport::TemporaryStore store_;
    QSqlDatabase database_;
    std::unique_ptr<QSqlQuery> insert_;
    std::unique_ptr<QSqlQuery> update_;
    int number_ = 1;
};

template <typename Widget>
Widget* onOrderForm(const QString& name)
{
    return orders::frOrder().findChild<Widget*>(name);
}

/// The order form with an open order and a chosen series. The object creates the store that
/// contains them.
class OpenOrder
{
public:
    OpenOrder()
    {
        Module1::SelectedSerialNum = 0;
        const int series =
            store_.addSeries(u"בלגי 7000"_s, {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, 2, 2);
        controls::DataControl dataMDI(u"DataMDI"_s);
        orders::openOrderLongForm(dataMDI);
        Module1::SelectedSerialNum = static_cast<std::int16_t>(series);
        width_ = onOrderForm<QLineEdit>(u"TextNum_0"_s);
        height_ = onOrderForm<QLineEdit>(u"TextNum_2"_s);
        add_ = onOrderForm<QPushButton>(u"CmdAdd"_s);
        customer_ = onOrderForm<QLineEdit>(u"TextCustomerName"_s);
    }

    ~OpenOrder() { orders::frOrder().Unload(); }
    OpenOrder(const OpenOrder&) = delete;
    OpenOrder& operator=(const OpenOrder&) = delete;

    void typeOpening()
    {
        width_->setText(u"120"_s);
        height_->setText(u"100"_s);
    }
    void changeCustomer() { customer_->setText(u"לקוח %1"_s.arg(++customers_)); }
    void clickAdd() { add_->click(); }

private:
    testsupport::TemporaryStore store_;
    QLineEdit* width_ = nullptr;
    QLineEdit* height_ = nullptr;
    QLineEdit* customer_ = nullptr;
    QPushButton* add_ = nullptr;
    int customers_ = 0;
};

void addLine(benchmark::State& state, bool changedCustomer)
{
    // BareStatements and OpenOrder each create a store, and the program uses the store that was
    // created last. OpenOrder needs the program's store, so it is created second.
    BareStatements bare;
    OpenOrder order;
    bench::Pairs pairs;
    for ([[maybe_unused]] auto _ : state) {
        order.typeOpening();
        if (changedCustomer)
            order.changeCustomer();
        const double ours = bench::secondsOf([&] { order.clickAdd(); });
        pairs.add(ours, bench::secondsOf([&] {
                      if (changedCustomer)
                          bare.update();
                      bare.insert();
                  }));
        state.SetIterationTime(ours);
    }
    pairs.report(state, 1.5);
}

void AddLineWithUnchangedCustomer(benchmark::State& state)
{
    addLine(state, false);
}
BENCHMARK(AddLineWithUnchangedCustomer)->UseManualTime()->Iterations(300);

void AddLineWithChangedCustomer(benchmark::State& state)
{
    addLine(state, true);
}
BENCHMARK(AddLineWithChangedCustomer)->UseManualTime()->Iterations(300);

/// Opens the order form on the last order of the store and then unloads the form.
void openOrderForm(const QString& storePath)
{
    Module1::StorePath = storePath;
    controls::DataControl dataMDI(u"DataMDI"_s);
    orders::openOrderLongForm(dataMDI);
    orders::frOrder().Unload();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void OpenOrderFormOnALargeStore(benchmark::State& state)
{
    testsupport::TemporaryStore small;
    bench::fillStore(small, 1, 20);
    testsupport::TemporaryStore large;
    bench::fillStore(large, 10000, 20);
    bench::runPaired(
        state, 1.2, [&] { openOrderForm(large.path()); }, [&] { openOrderForm(small.path()); });
}
BENCHMARK(OpenOrderFormOnALargeStore)->UseManualTime()->Iterations(100);

} // namespace

int main(int argc, char** argv)
{
    return bench::runInApplication(argc, argv);
}
