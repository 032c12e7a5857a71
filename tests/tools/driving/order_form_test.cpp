#include "driving/order_form.h"
#include "orders/desk.h"

#include <QCheckBox>
#include <QComboBox>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;

/// Choosing a series and entering an opening on the real order form.
class OrderFormStepsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void chooseSeries_listed_choosesItAndClosesThePicker();
    void chooseSeries_unknown_choosesNothingAndClosesThePicker();
    void chooseSeries_fill_runsOnTheOpenPicker();
    void fillOpening_putsEachTextIntoItsControl();

private:
    std::unique_ptr<Desk> desk_;
    int second_ = 0;
};

void OrderFormStepsTest::init()
{
    desk_ = std::make_unique<Desk>();
    const QList<double> deductions{-1, -1, -1, -1, -1, -1, -1, -1};
    desk_->store.addSeries(u"ראשונה"_s, deductions, 2, 2);
    second_ = desk_->store.addSeries(u"שנייה"_s, deductions, 2, 2);
    desk_->store.addOrder(1);
    desk_->openOrder(1);
}

void OrderFormStepsTest::cleanup()
{
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    desk_.reset();
}

void OrderFormStepsTest::chooseSeries_listed_choosesItAndClosesThePicker()
{
    QVERIFY(driving::chooseSeries(*desk_->form(), u"שנייה"_s));
    QCOMPARE(int(Module1::SelectedSerialNum), second_);
    QCOMPARE(desk_->label("LabelSerial"), u"שנייה"_s);
    QCOMPARE(driving::shownWindow(driving::names::picker), nullptr);
}

void OrderFormStepsTest::chooseSeries_unknown_choosesNothingAndClosesThePicker()
{
    bool filled = false;
    QVERIFY(!driving::chooseSeries(*desk_->form(), u"שלישית"_s,
                                   [&filled](QWidget& /*picker*/) { filled = true; }));
    QVERIFY(!filled);
    QCOMPARE(int(Module1::SelectedSerialNum), 0);
    QCOMPARE(driving::shownWindow(driving::names::picker), nullptr);
}

void OrderFormStepsTest::chooseSeries_fill_runsOnTheOpenPicker()
{
    QVERIFY(driving::chooseSeries(*desk_->form(), u"ראשונה"_s, [](QWidget& picker) {
        driving::control<QCheckBox>(picker, driving::names::monoblock).setChecked(true);
    }));
    // The first monoblock type, with the thickness that the picker proposes.
    QCOMPARE(desk_->label("LabelKind"), u"מונו בלוק : 10"_s);
}

void OrderFormStepsTest::fillOpening_putsEachTextIntoItsControl()
{
    driving::fillOpening(*desk_->form(), {{u"120"_s, u"50"_s},
                                          {u"100"_s, u"25"_s},
                                          {u"k0"_s, u"k1"_s, u"k2"_s, u"k3"_s},
                                          {u"c0"_s, u"c1"_s, u"c2"_s, u"c3"_s},
                                          {}});
    QCOMPARE(desk_->box("TextNum_0"), u"120"_s);
    QCOMPARE(desk_->box("TextNum_1"), u"50"_s);
    QCOMPARE(desk_->box("TextNum_2"), u"100"_s);
    QCOMPARE(desk_->box("TextNum_3"), u"25"_s);
    QCOMPARE(desk_->on<QComboBox>("DBComboKind_0")->currentText(), u"k0"_s);
    QCOMPARE(desk_->on<QComboBox>("DBComboColor_3")->currentText(), u"c3"_s);
}

ZOMREL_QTEST_MAIN(OrderFormStepsTest)
#include "order_form_test.moc"
