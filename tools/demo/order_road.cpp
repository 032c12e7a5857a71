#include "demo/order_road.h"

#include "base/module1.h"
#include "calculation/opening_panel.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "platform/report/doors.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "shell/start.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace demo {

namespace {

/// Waiting time in milliseconds before a picture is taken. It is longer than every timer of the
/// forms, so a picture shows the final state.
constexpr int settling = 400;

constexpr QSize smallestScreen(1366, 768);

void settle()
{
    QEventLoop loop;
    QTimer::singleShot(settling, &loop, &QEventLoop::quit);
    loop.exec();
}

template <typename Control>
Control& control(const QWidget& form, const QString& name)
{
    auto* found = form.findChild<Control*>(name);
    if (found == nullptr)
        throw runtime::RunTimeError(runtime::ObjectRequired, u"no control "_s + name);
    return *found;
}

/// Focuses the input box with this index, replaces its text and removes the focus.
void fill(const QWidget& form, int index, const QString& text)
{
    auto& box = control<QLineEdit>(form, u"TextNum_%1"_s.arg(index));
    box.setFocus();
    box.setText(text);
    box.clearFocus();
}

void fillPair(const QWidget& form, int whole, const Boxes& boxes)
{
    if (boxes.whole.isEmpty())
        return;
    fill(form, whole, boxes.whole);
    fill(form, whole + 1, boxes.hundredths);
}

QWidget* topLevel(const QString& name)
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->objectName() == name && each->isVisible())
            return each;
    }
    return nullptr;
}

QWidget& window(const QString& name)
{
    QWidget* found = topLevel(name);
    if (found == nullptr)
        throw runtime::RunTimeError(runtime::ObjectRequired, u"no window "_s + name);
    return *found;
}

/// Index of the picker's last visible column, which holds the name of the series.
constexpr int nameColumn = 2;

void standOnSeries(QTableView& grid, const QString& series)
{
    const QAbstractItemModel& model = *grid.model();
    for (int row = 0; row < model.rowCount(); ++row) {
        grid.setCurrentIndex(model.index(row, nameColumn));
        if (model.index(row, nameColumn).data().toString() == series)
            return;
    }
    throw Refused{u"no such series: "_s + series};
}

/// During its lifetime, answers every message box and remembers the first one. The box of a
/// run-time error is still shown by the previous handler.
class RefusalWatch
{
public:
    RefusalWatch()
        : former_(
              runtime::messageBoxDoor().replace([this](const runtime::MessageBoxRequest& request) {
                  if (runtime::isEnding())
                      return former_(request);
                  if (text_.isEmpty())
                      text_ = request.text;
                  return runtime::vbOK;
              }))
    {
    }
    ~RefusalWatch() { runtime::messageBoxDoor().replace(std::move(former_)); }
    RefusalWatch(const RefusalWatch&) = delete;
    RefusalWatch& operator=(const RefusalWatch&) = delete;

    void raise() const
    {
        if (!text_.isEmpty())
            throw Refused{text_.simplified()};
    }

private:
    QString text_;
    runtime::MessageBoxDoor::Function former_;
};

} // namespace

OrderRoad::OrderRoad(const QString& folder, const QString& out)
    : out_(out), window_(shell::openMainWindow(folder))
{
    // The offscreen platform has a screen that is smaller than the forms, so the window is
    // enlarged.
    if (window_->width() < smallestScreen.width()) {
        window_->showNormal();
        window_->resize(smallestScreen);
    }
    settle();
    picture(*window_, u"frame"_s);
}

OrderRoad::~OrderRoad() = default;

void OrderRoad::openOrder()
{
    for (QAction* each : window_->findChildren<QAction*>()) {
        if (each->data().toString() == u"Order")
            each->trigger();
    }
    settle();
    picture(*window_, u"order-form"_s);
}

void OrderRoad::fillMonoblock(QWidget& picker, const Monoblock& monoblock)
{
    control<QCheckBox>(picker, u"CheckKind"_s).click();
    control<QComboBox>(picker, u"ComboMonoBlock"_s).setCurrentIndex(monoblock.type);
    fillPair(picker, 0, monoblock.widthDeduction);
    fillPair(picker, 2, monoblock.heightDeduction);
    fillPair(picker, 4, monoblock.slatThickness);
    if (!monoblock.uThickness.isEmpty())
        control<QComboBox>(picker, u"Combo_U_Thick"_s).setCurrentText(monoblock.uThickness);
}

void OrderRoad::chooseSeries(const Opening& opening)
{
    orders::frOrder().opening().CmdPicSerial->click();
    QWidget& picker = window(u"FormSelectSerial"_s);
    try {
        standOnSeries(control<QTableView>(picker, u"DBGrid1"_s), opening.series);
    } catch (const Refused&) {
        control<QPushButton>(picker, u"CmdClose"_s).click();
        throw;
    }
    if (opening.monoblock)
        fillMonoblock(picker, *opening.monoblock);
    bool& shown = opening.monoblock ? monoblockShown_ : pickerShown_;
    if (!shown) {
        settle();
        picture(picker, opening.monoblock ? u"series-picker-monoblock"_s : u"series-picker"_s);
        shown = true;
    }
    control<QPushButton>(picker, u"CmdPic"_s).click();
}

void OrderRoad::addOpening(const Opening& opening)
{
    const RefusalWatch watch;
    chooseSeries(opening);
    watch.raise();
    orders::FrOrder& form = orders::frOrder();
    if (opening.doorThickness && !control<QWidget>(form, u"FrameDoorMashkof"_s).isVisible())
        throw Refused{u"a door's thickness, but no door series: "_s + opening.series};
    fillPair(form, 0, opening.width);
    fillPair(form, 2, opening.height);
    if (opening.doorThickness)
        fillPair(form, 4, *opening.doorThickness);
    for (int part = 0; part < 4; ++part) {
        control<QComboBox>(form, u"DBComboKind_%1"_s.arg(part)).setCurrentText(opening.kinds[part]);
        control<QComboBox>(form, u"DBComboColor_%1"_s.arg(part))
            .setCurrentText(opening.colours[part]);
    }
    control<QPushButton>(form, u"CmdAdd"_s).click();
    watch.raise();
}

void OrderRoad::viewLine()
{
    settle();
    picture(*window_, u"order-with-lines"_s);
    // The line view is modal and exec() blocks, so a timer takes the picture inside its event loop.
    QTimer::singleShot(settling, window_.get(), [this] {
        QWidget* view = topLevel(u"FormView"_s);
        if (view == nullptr)
            return;
        picture(*view, u"line-view"_s);
        view->close();
    });
    control<QPushButton>(orders::frOrder(), u"CmdView"_s).click();
}

void OrderRoad::print()
{
    control<QPushButton>(orders::frOrder(), u"CmdPrint"_s).click();
    settle();
    QWidget* preview = topLevel(u"DataReport1"_s);
    if (preview == nullptr)
        // The program does not print an order without lines.
        return;
    picture(*preview, u"report-preview"_s);
    const auto former = report::fileDoor().replace([this](const report::FileRequest& request) {
        return u"%1/order-%2.%3"_s.arg(out_).arg(Module1::CurrentOrderNum).arg(request.suffix);
    });
    for (const QString& command :
         {u"ActionExportPdf"_s, u"ActionExportHtml"_s, u"ActionExportText"_s})
        control<QAction>(*preview, command).trigger();
    report::fileDoor().replace(former);
}

void OrderRoad::picture(QWidget& shown, const QString& name)
{
    const QString file = u"%1/%2-%3.png"_s.arg(out_).arg(++pictures_, 2, 10, QChar(u'0')).arg(name);
    if (!shown.grab().save(file))
        throw runtime::RunTimeError(runtime::PermissionDenied, u"Cannot write "_s + file);
}

} // namespace demo
