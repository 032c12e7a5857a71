#include "demo/order_road.h"

#include "base/module1.h"
#include "driving/controls.h"
#include "driving/order_form.h"
#include "orders/fr_order.h"
#include "orders/orders.h"
#include "platform/report/doors.h"
#include "platform/runtime/guard.h"
#include "platform/runtime/message_box.h"
#include "platform/runtime/run_time_error.h"
#include "shell/start.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QTableView>
#include <QTimer>

using namespace Qt::StringLiterals;
using driving::control;

namespace demo {

namespace {

/// The waiting time in milliseconds before a picture of a form is taken. The waiting time is longer
/// than every timer of the forms, so that a picture shows the final state.
constexpr int settling = 400;

constexpr QSize smallestScreen(1366, 768);

void settle()
{
    QEventLoop loop;
    QTimer::singleShot(settling, &loop, &QEventLoop::quit);
    loop.exec();
}

void fillPair(const QWidget& form, int wholeBox, const Boxes& boxes)
{
    for (const driving::Entry& each : driving::measureEntries(wholeBox, boxes))
        driving::enter(form, each.control, each.text);
}

/// While this object exists, it answers every message box with OK and stores the text of the first
/// one. While a run-time error is ending the process, message boxes are shown as usual.
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
    // Enlarges the main window so that the forms inside it fit. On Qt's offscreen platform, it is
    // too small at first.
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
    driving::trigger(*window_, u"Order"_s);
    settle();
    picture(*window_, u"order-form"_s);
    driving::enter(orders::frOrder(), u"TextCustomerName"_s, u"משפחת כהן-לוי"_s);
}

void OrderRoad::fillMonoblock(QWidget& picker, const Monoblock& monoblock)
{
    control<QCheckBox>(picker, driving::names::monoblock).click();
    control<QComboBox>(picker, u"ComboMonoBlock"_s).setCurrentIndex(monoblock.type);
    fillPair(picker, 0, monoblock.widthDeduction);
    fillPair(picker, 2, monoblock.heightDeduction);
    fillPair(picker, 4, monoblock.slatThickness);
    if (!monoblock.uThickness.isEmpty())
        control<QComboBox>(picker, u"Combo_U_Thick"_s).setCurrentText(monoblock.uThickness);
}

void OrderRoad::fillPicker(QWidget& picker, const Opening& opening)
{
    if (opening.monoblock)
        fillMonoblock(picker, *opening.monoblock);
    bool& shown = opening.monoblock ? monoblockShown_ : pickerShown_;
    if (shown)
        return;
    settle();
    picture(picker, opening.monoblock ? u"series-picker-monoblock"_s : u"series-picker"_s);
    shown = true;
}

void OrderRoad::addOpening(const Opening& opening)
{
    const RefusalWatch watch;
    orders::FrOrder& form = orders::frOrder();
    const bool chosen = driving::chooseSeries(
        form, opening.series, [&](QWidget& picker) { fillPicker(picker, opening); });
    watch.raise();
    if (!chosen)
        throw Refused{u"no such series: "_s + opening.series};
    if (opening.doorThickness && !control<QWidget>(form, u"FrameDoorMashkof"_s).isVisible())
        throw Refused{u"a door's thickness, but no door series: "_s + opening.series};
    driving::fillOpening(form, opening);
    driving::click(form, driving::names::addLine);
    watch.raise();
}

void OrderRoad::viewLine()
{
    settle();
    picture(*window_, u"order-with-lines"_s);
    const orders::FrOrder& form = orders::frOrder();
    if (control<QTableView>(form, u"DBGrid1"_s).model()->rowCount() == 0)
        // For an order without lines, the button for viewing a line opens no form, so there is no
        // picture to save.
        return;
    driving::inNextModal([this](QDialog& view) {
        settle();
        picture(view, u"line-view"_s);
        view.close();
    });
    driving::click(form, u"CmdView"_s);
}

void OrderRoad::print()
{
    driving::click(orders::frOrder(), u"CmdPrint"_s);
    settle();
    QWidget* preview = driving::shownWindow(driving::names::preview);
    if (preview == nullptr)
        // For an order without lines, the button for printing opens no print preview, so there is
        // nothing to save.
        return;
    picture(*preview, u"report-preview"_s);
    const auto former = report::fileDoor().replace([this](const report::FileRequest& request) {
        return u"%1/order-%2.%3"_s.arg(out_).arg(Module1::CurrentOrderNum).arg(request.suffix);
    });
    for (const QString& command :
         {u"ActionExportPdf"_s, u"ActionExportHtml"_s, u"ActionExportText"_s})
        control<QAction>(*preview, command).trigger();
    report::fileDoor().replace(former);
    saveShopDocuments(*preview);
}

void OrderRoad::saveShopDocuments(QWidget& preview)
{
    auto& list = control<QComboBox>(preview, u"Documents"_s);
    const auto former = report::fileDoor().replace([this, &list](const report::FileRequest&) {
        return u"%1/order-%2-%3.pdf"_s.arg(out_)
            .arg(Module1::CurrentOrderNum)
            .arg(list.currentIndex());
    });
    for (int index = 1; index < list.count(); ++index) {
        if (index + 1 == list.count()) // The remake slip asks for a part in a dialog.
            driving::inNextModal([this](QDialog& dialog) {
                settle();
                picture(dialog, u"remake"_s);
                dialog.accept();
            });
        list.setCurrentIndex(index);
        emit list.activated(index);
        control<QAction>(preview, u"ActionExportPdf"_s).trigger();
        if (list.currentText() == u"מדבקות"_s) {
            settle();
            picture(preview, u"shop-preview"_s);
        }
    }
    report::fileDoor().replace(former);
    driving::inNextModal([this](QDialog& dialog) {
        settle();
        picture(dialog, u"bar-settings"_s);
        dialog.reject();
    });
    control<QAction>(preview, u"ActionBarSettings"_s).trigger();
}

void OrderRoad::picture(QWidget& shown, const QString& name)
{
    const QString file = u"%1/%2-%3.png"_s.arg(out_).arg(++pictures_, 2, 10, QChar(u'0')).arg(name);
    if (!shown.grab().save(file))
        throw runtime::RunTimeError(runtime::PermissionDenied, u"Cannot write "_s + file);
}

} // namespace demo
