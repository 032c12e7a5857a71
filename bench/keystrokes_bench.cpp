// Counts the keys that are needed to type the 30 openings of a house, all of one series, into the
// order form. The benchmark fails if an opening after the first one needs more than eleven keys.

#include "application.h"

#include "base/module1.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "shell/enter_clicks.h"
#include "support/temporary_store.h"

#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QTest>

#include <algorithm>
#include <array>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int openings = 30;
constexpr int mostKeys = 11;

struct Opening
{
    QString width;
    QString height;
};

/// Returns an opening of a house by index. Four typical openings are repeated: a balcony door, two
/// windows of rooms, and a small window.
Opening openingOf(int index)
{
    static const std::array kinds{Opening{u"240"_s, u"220"_s}, Opening{u"120"_s, u"110"_s},
                                  Opening{u"150"_s, u"110"_s}, Opening{u"60"_s, u"50"_s}};
    return kinds[std::size_t(index) % kinds.size()];
}

/// Types openings into an order form with a chosen series and counts the keys that are pressed.
class Typist
{
public:
    Typist()
    {
        Module1::StorePath = store_.path();
        store_.addOrder(1);
        const int series =
            store_.addSeries(u"הזזה"_s, {-0.6, -0.6, -2.8, -6.5, -19.6, -19.7, -2.4, -6.9}, 2, 2);
        Module1::CurrentOrderNum = 1;
        form_ = std::make_unique<orders::FrOrder>();
        window_.setCentralWidget(form_.get());
        window_.show();
        window_.activateWindow();
        isActive_ = QTest::qWaitForWindowActive(&window_);
        Module1::SelectedSerialNum = static_cast<std::int16_t>(series);
        form_->findChild<QLineEdit*>(u"TextNum_0"_s)->setFocus();
        QApplication::instance()->installEventFilter(&enterClicks_);
    }
    ~Typist() { window_.takeCentralWidget(); }
    Typist(const Typist&) = delete;
    Typist& operator=(const Typist&) = delete;

    bool isActive() const { return isActive_; }

    /// Types the width and height of an opening, adds the order line, and returns the number of
    /// pressed keys.
    int add(const Opening& opening)
    {
        keys_ = 0;
        for (const QString& measure : {opening.width, opening.height}) {
            for (const QChar digit : measure)
                press(Qt::Key(digit.unicode()));
            press(Qt::Key_Return); // to the hundredths
            press(Qt::Key_Return);
        }
        press(Qt::Key_Return); // on the button that adds the line
        return keys_;
    }

    /// Returns true if the store contains exactly the typed openings, in the order of typing.
    bool hasStoredAll()
    {
        const auto rows = store_.rows(u"SELECT MyWidth, MYHeight FROM Cuts ORDER BY NUM"_s);
        bool isEqual = rows.size() == openings;
        for (int i = 0; isEqual && i < openings; ++i)
            isEqual = rows[i][0].toDouble() == openingOf(i).width.toDouble() &&
                      rows[i][1].toDouble() == openingOf(i).height.toDouble();
        return isEqual;
    }

private:
    void press(Qt::Key key)
    {
        QTest::keyClick(QApplication::focusWidget(), key);
        ++keys_;
    }

    testsupport::TemporaryStore store_;
    shell::EnterClicks enterClicks_;
    QMainWindow window_;
    std::unique_ptr<orders::FrOrder> form_;
    bool isActive_ = false;
    int keys_ = 0;
};

void TypeAHouse(benchmark::State& state)
{
    int most = 0;
    int all = 0;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto typist = std::make_unique<Typist>();
        state.ResumeTiming();
        if (!typist->isActive()) {
            state.SkipWithError("the form did not get the focus");
            break;
        }
        all = 0;
        for (int i = 0; i < openings; ++i) {
            const int keys = typist->add(openingOf(i));
            most = std::max(most, i == 0 ? 0 : keys);
            all += keys;
        }
        state.PauseTiming();
        if (!typist->hasStoredAll())
            state.SkipWithError("the store does not hold the typed openings");
        typist.reset();
        state.ResumeTiming();
    }
    state.counters["keys"] = all;
    state.counters["keys_of_a_further_opening"] = most;
    if (most > mostKeys)
        state.SkipWithError("a further opening takes more than eleven keys");
}
BENCHMARK(TypeAHouse)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

int main(int argc, char** argv)
{
    return bench::runInApplication(argc, argv);
}
