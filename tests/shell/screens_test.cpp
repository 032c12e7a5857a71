// Opens every form on a screen of a given size and scale and checks that nothing is clipped. The
// environment gives the screen: ZOMREL_SCREEN_SIZE, for instance 1280x680, in device pixels, and
// ZOMREL_SCREEN_SCALE, for instance 150, in percent. With the platform "offscreen" the test makes a
// screen of that size; any other platform must provide it. If ZOMREL_SCREEN_PICTURES names a
// folder, a picture of each form is written there.

#include "shell/screen_faults.h"

#include "base/module1.h"
#include "driving/opening.h"
#include "driving/order_form.h"
#include "output/form_view.h"
#include "platform/controls/message_box_window.h"
#include "platform/controls/scroll_part.h"
#include "platform/report/doors.h"
#include "platform/runtime/message_box.h"
#include "shell/appearance.h"
#include "shell/error_explanations.h"
#include "shell/help_window.h"
#include "shell/mdi_zomrel.h"
#include "shop/screens/shop_documents.h"
#include "support/doors.h"
#include "support/temporary_store.h"
#include "support/widgets.h"

#include <QDir>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScreen>
#include <QScrollBar>
#include <QTableView>

#include <cstdlib>

using namespace Qt::StringLiterals;
using driving::inNextModal;

class ScreensTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { shell::setUpAppearance(*qApp); }
    void init();
    void cleanup();

    void screen_hasTheGivenSize();
    void everyForm_fits_data();
    void everyForm_fits();
    void everyDialog_fits_data() { everyForm_fits_data(); }
    void everyDialog_fits();

private:
    void fillStore();
    void openLine();
    /// Compares the faults of the form with none, and writes its picture.
    void check(QWidget& form, const QString& name);

    /// Expects the order form to need no scrolling on a screen of at least 1280 x 680.
    void checkScrolling(const QWidget& order) const;

    std::unique_ptr<testsupport::TemporaryStore> store_;
    std::unique_ptr<testsupport::RecordedBoxes> boxes_;
    std::unique_ptr<testsupport::RecordedEnd> end_;
    std::unique_ptr<shell::MDIZomrel> window_;
};

namespace {

const QString doorSeries = u"דלת כניסה בלגית כבדה 7000 עם סף נמוך ומשקוף רחב"_s;

QSize givenSize()
{
    const QStringList parts = qEnvironmentVariable("ZOMREL_SCREEN_SIZE", u"1280x680"_s).split(u'x');
    return {parts.value(0).toInt(), parts.value(1).toInt()};
}

double givenScale()
{
    return qEnvironmentVariable("ZOMREL_SCREEN_SCALE", u"100"_s).toInt() / 100.0;
}

QWidget* formInFrame(const shell::MDIZomrel& window, const QString& name)
{
    for (const QMdiSubWindow* each : window.findChild<QMdiArea*>()->subWindowList()) {
        if (each->widget()->objectName() == name)
            return each->widget();
    }
    return nullptr;
}

} // namespace

void ScreensTest::init()
{
    store_ = std::make_unique<testsupport::TemporaryStore>(
        testsupport::TemporaryStore::Contents::Delivered);
    boxes_ = std::make_unique<testsupport::RecordedBoxes>();
    end_ = std::make_unique<testsupport::RecordedEnd>();
    fillStore();
    window_ = std::make_unique<shell::MDIZomrel>(store_->folder());
    window_->setGeometry(window_->screen()->availableGeometry());
    window_->showMaximized();
    window_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void ScreensTest::cleanup()
{
    QCOMPARE(boxes_->unexpected(), QStringList());
    if (output::isFormViewLoaded())
        output::formView().Unload();
    window_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    end_.reset();
    boxes_.reset();
    store_.reset();
    QLocale::setDefault(QLocale::c());
}

void ScreensTest::fillStore()
{
    store_->addSeries(doorSeries, {-2.8, -3, -1.5, -2.25, -8.1, -9.2, -1, -2}, 2, 3, u"d2000"_s);
    store_->addOrder(1);
    for (int line = 1; line <= 30; ++line)
        store_->addLine(1, line, line % 2 == 0 ? doorSeries : u"קליל 7000"_s);
    store_->execute(u"UPDATE Cuts SET MyWidth = 999.99, MYHeight = 1234.56 WHERE NUM = 30"_s);
    store_->execute(u"UPDATE Orders SET CustomerName = 'אברהם בן-שושן ובניו אלומיניום בע\"מ', "
                    "CustomerAddress = 'שדרות ירושלים 148, ראשון לציון', "
                    "CustomerTel = '03-1234567, 050-123456'"_s);
}

void ScreensTest::check(QWidget& form, const QString& name)
{
    const QString picture = u"%1-%2x%3-%4-%5.png"_s.arg(name)
                                .arg(givenSize().width())
                                .arg(givenSize().height())
                                .arg(qEnvironmentVariable("ZOMREL_SCREEN_SCALE", u"100"_s))
                                .arg(QString::fromLatin1(QTest::currentDataTag()));
    // A grid widens its columns after it has been painted.
    form.window()->grab();
    QTRY_COMPARE(testsupport::layoutFaults(form).join(u'\n'), QString());
    if (const QString folder = qEnvironmentVariable("ZOMREL_SCREEN_PICTURES"); !folder.isEmpty()) {
        QDir().mkpath(folder);
        form.window()->grab().save(QDir(folder).filePath(picture));
    }
    if (&form == window_.get())
        return; // The empty frame has no control that takes the focus.
    // A tool window counts as active while its main window is, so the focus is waited for.
    form.window()->activateWindow();
    QTRY_VERIFY2(form.isAncestorOf(QApplication::focusWidget()), qPrintable(name));
    QCOMPARE(testsupport::focusFaults(form).join(u'\n'), QString());
}

void ScreensTest::checkScrolling(const QWidget& order) const
{
    const QSize room = window_->screen()->size();
    if (room.width() < 1280 || room.height() < 680)
        return;
    const auto* part = order.findChild<controls::ScrollPart*>();
    QVERIFY(part != nullptr);
    QCOMPARE(part->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(part->verticalScrollBar()->maximum(), 0);
}

void ScreensTest::screen_hasTheGivenSize()
{
    const QSize room = window_->screen()->size();
    const QSize given = givenSize() / givenScale();
    QVERIFY2(std::abs(room.width() - given.width()) <= 1 &&
                 std::abs(room.height() - given.height()) <= 1,
             qPrintable(u"%1x%2"_s.arg(room.width()).arg(room.height())));
}

void ScreensTest::everyForm_fits_data()
{
    QTest::addColumn<QLocale>("locale");
    for (const char* name : {"he_IL", "en_US", "de_DE"})
        QTest::newRow(name) << QLocale(QString::fromLatin1(name));
}

void ScreensTest::everyForm_fits()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    check(*window_, u"main"_s);
    window_->GetOrder(1);
    QWidget* order = formInFrame(*window_, u"FrOrder"_s);
    QVERIFY(order != nullptr);
    QVERIFY(driving::chooseSeries(*order, doorSeries, [this](QWidget& picker) {
        testsupport::child<QAbstractButton>(picker, u"CheckKind"_s)->setChecked(true);
        check(picker, u"picker"_s);
    }));
    // A timer of the form selects the last line, which has the longest figures.
    const auto* lines = testsupport::child<QTableView>(*order, u"DBGrid1"_s);
    QTRY_COMPARE(lines->currentIndex().row(), lines->model()->rowCount() - 1);
    check(*order, u"order"_s);
    checkScrolling(*order);
    inNextModal([this](QDialog& search) { check(search, u"search"_s); });
    testsupport::child<QAbstractButton>(*order, u"CmdFindOrder"_s)->click();
    inNextModal([this](QDialog& view) { check(view, u"view"_s); });
    testsupport::child<QAbstractButton>(*order, u"CmdView"_s)->click();
    window_->GetOrder(2);
    check(*formInFrame(*window_, u"FrSerials"_s), u"series"_s);
    window_->GetOrder(3);
    check(*formInFrame(*window_, u"FrColorKind"_s), u"kinds"_s);
    testsupport::child<QAbstractButton>(*order, u"CmdPrint"_s)->click();
    QWidget* preview = driving::shownWindow(driving::names::preview);
    QVERIFY(preview != nullptr);
    check(*preview, u"preview"_s);
    preview->close();
}

/// The help, the dialogs of the shop documents, and the box of an error that ends the program.
void ScreensTest::everyDialog_fits()
{
    QFETCH(QLocale, locale);
    QLocale::setDefault(locale);
    auto* help = new shell::HelpWindow(window_.get());
    help->show();
    QVERIFY(QTest::qWaitForWindowActive(help));
    check(*help, u"help"_s);
    help->close();
    const report::FurtherDocuments further = shop::screens::documentsOf(store_->path(), 1);
    inNextModal([this](QDialog& bars) { check(bars, u"bars"_s); });
    further.commands.front().run(window_.get());
    // The planning of the bars runs an event loop of its own, and its result is kept.
    QVERIFY(further.documents.front().make(window_.get(), 0).document != nullptr);
    inNextModal([this](QDialog& remake) { check(remake, u"remake"_s); });
    further.documents.back().make(window_.get(), 0);
    controls::installMessageBoxes();
    // The error with the longest explanation.
    const runtime::RunTimeError error(
        runtime::DatabaseFileNotFound,
        u"Could not find file '/srv/aluminium/workshop/stores/%1'."_s.arg(store_->path()));
    inNextModal([this](QDialog& box) { check(box, u"box"_s); });
    runtime::messageBoxDoor()(
        {u"Run-time error '%1':\n\n%2"_s.arg(error.number()).arg(error.description()),
         runtime::vbCritical, runtime::projectName(), shell::explanationOf(error)});
}

int main(int argc, char** argv)
{
    testsupport::beforeApplication();
    QFile screen(
        QDir::temp().filePath(u"zomrel_screen_%1.json"_s.arg(QCoreApplication::applicationPid())));
    if (qEnvironmentVariable("QT_QPA_PLATFORM") == u"offscreen"_s &&
        screen.open(QIODevice::WriteOnly)) {
        screen.write(u"{\"screens\": [{\"name\": \"screen\", \"x\": 0, \"y\": 0, \"width\": %1, "
                     "\"height\": %2, \"logicalDpi\": 96, \"dpr\": 1}]}"_s.arg(givenSize().width())
                         .arg(givenSize().height())
                         .toUtf8());
        screen.close();
        qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + screen.fileName().toUtf8());
    }
    qputenv("QT_SCALE_FACTOR", QByteArray::number(givenScale()));
    int status = 0;
    {
        QApplication application(argc, argv);
        testsupport::afterApplication();
        ScreensTest test;
        status = QTest::qExec(&test, argc, argv);
    }
    screen.remove();
    return testsupport::exitStatus(status);
}
#include "screens_test.moc"
