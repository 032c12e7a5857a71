#include "calculation/form_select_serial.h"
#include "calculation/opening_panel.h"
#include "orders/desk.h"
#include "platform/controls/db_grid.h"
#include "platform/report/font_substitutes.h"

#include <QGroupBox>
#include <QImage>
#include <QScrollBar>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;

/// The order form in windows of different sizes, and what it paints without the focus.
class OrderSizesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void smallestCommonScreen_needsNoScrolling();
    void smallWindow_keepsTheCommandsInView_data();
    void smallWindow_keepsTheCommandsInView();
    void tabInASmallWindow_keepsTheFocusInView();
    void wideWindow_usesItsRoom();
    void choosingASeries_movesNothing();
    void boxWithoutTheFocus_showsNoSelection();

private:
    /// Gives the form this size, as the frame does in a window of that size.
    void resizeForm(const QSize& size) const;
    QRect placeOf(const char* name) const;

    std::unique_ptr<Desk> desk_;
};

namespace {

/// What the form has of a window of 1280 x 680: the main window's title bar, toolbar and status bar
/// and the child window's title bar take the rest.
constexpr QSize formAt1280x680(1272, 530);

bool isInFullView(const QWidget& widget)
{
    return widget.visibleRegion().boundingRect() == widget.rect();
}

const QStringList commandNames{u"CmdAdd"_s,        u"CmdOK"_s,        u"CmdClear1"_s,
                               u"CmdView"_s,       u"CmdDel"_s,       u"CmdDelAll"_s,
                               u"CmdPrint"_s,      u"CmdFindOrder"_s, u"CmdOpenOrder"_s,
                               u"CmdCloseOrder"_s, u"Command2"_s};

} // namespace

/// The fonts of the program, as far as this machine has them. The sizes depend on them.
void OrderSizesTest::initTestCase()
{
    report::substituteFonts();
    QApplication::setFont(QFont(u"Arial"_s, 11));
}

void OrderSizesTest::init()
{
    desk_ = std::make_unique<Desk>();
    desk_->addOrderWithLines(1, {1, 2});
    desk_->openOrder(1);
    desk_->form()->opening().FrameDoorMashkof->show();
    desk_->window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&desk_->window));
}

void OrderSizesTest::cleanup()
{
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    desk_.reset();
}

void OrderSizesTest::resizeForm(const QSize& size) const
{
    desk_->window.resize(desk_->window.size() + size - desk_->form()->size());
    QTRY_COMPARE(desk_->form()->size(), size);
}

QRect OrderSizesTest::placeOf(const char* name) const
{
    const auto* widget = desk_->on<QWidget>(name);
    return {widget->mapTo(desk_->form(), QPoint(0, 0)), widget->size()};
}

void OrderSizesTest::smallestCommonScreen_needsNoScrolling()
{
    resizeForm(formAt1280x680);
    for (const QWidget* each : desk_->form()->findChildren<QWidget*>()) {
        const QString name = each->objectName();
        if (each->isVisible() && !name.isEmpty() && !name.startsWith(u"qt_"_s))
            QVERIFY2(isInFullView(*each), qPrintable(name));
    }
}

void OrderSizesTest::smallWindow_keepsTheCommandsInView_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("1280x680 at 150 %") << QSize(846, 320);
    QTest::newRow("1280x680 at 200 %") << QSize(632, 190);
    QTest::newRow("800x600") << QSize(792, 460);
}

void OrderSizesTest::smallWindow_keepsTheCommandsInView()
{
    QFETCH(QSize, size);
    resizeForm(size);
    for (const QString& name : commandNames) {
        const auto* button = desk_->on<QPushButton>(qPrintable(name));
        QVERIFY2(isInFullView(*button), qPrintable(name));
        QVERIFY2(button->width() >= button->minimumSizeHint().width(), qPrintable(name));
    }
}

void OrderSizesTest::tabInASmallWindow_keepsTheFocusInView()
{
    resizeForm(QSize(632, 190));
    auto* grid = desk_->on<QWidget>("DBGrid1");
    desk_->on<QWidget>("CmdPicSerial")->setFocus();
    for (int i = 0; i < 30; ++i) {
        const QWidget* focused = QApplication::focusWidget();
        // The grid is higher than the visible part, so only a part of it is in view.
        QVERIFY2(focused == grid ? !focused->visibleRegion().isEmpty() : isInFullView(*focused),
                 qPrintable(focused->objectName()));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
}

void OrderSizesTest::wideWindow_usesItsRoom()
{
    resizeForm(QSize(1912, 890));
    QVERIFY(placeOf("DBGrid1").width() <= 1450);
    // No area below the lists is left empty.
    const int gap = placeOf("CmdAdd").top() - placeOf("Frame2").bottom();
    QVERIFY2(gap < 60, qPrintable(QString::number(gap)));
    const int lists = placeOf("Frame2").bottom() - placeOf("DBComboKind_3").bottom();
    QVERIFY2(lists < 120, qPrintable(QString::number(lists)));
}

void OrderSizesTest::choosingASeries_movesNothing()
{
    desk_->form()->opening().FrameDoorMashkof->hide();
    desk_->store.addSeries(QString(50, u'ש'), {0, 0, 0, 0, 0, 0, 0, 0}, 2, 3, u"d2000"_s);
    resizeForm(formAt1280x680);
    QWidgetList all;
    QList<QRect> before;
    for (QWidget* each : desk_->form()->findChildren<QWidget*>()) {
        if (!each->isVisible())
            continue;
        all.append(each);
        before.append(each->geometry());
    }
    desk_->click("CmdPicSerial");
    auto& picker = calculation::formSelectSerial();
    picker.CheckKind->setChecked(true);
    QTest::mouseClick(picker.CmdPic, Qt::LeftButton);
    QTRY_VERIFY(desk_->on<QWidget>("FrameDoorMashkof")->isVisible());
    QVERIFY(!desk_->label("LabelKind").isEmpty());
    desk_->window.layout()->activate();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    for (qsizetype i = 0; i < all.size(); ++i)
        QVERIFY2(all[i]->geometry() == before[i], qPrintable(all[i]->objectName()));
}

/// The toolbar's command selects the text of the first measure box, but the focus is elsewhere.
void OrderSizesTest::boxWithoutTheFocus_showsNoSelection()
{
    auto* box = desk_->on<QLineEdit>("TextNum_0");
    desk_->on<QWidget>("CmdPicSerial")->setFocus();
    const QImage plain = box->grab().toImage();
    box->selectAll();
    QCOMPARE(box->selectedText(), u"0"_s);
    QCOMPARE(box->grab().toImage(), plain);
    box->setFocus();
    QVERIFY(box->grab().toImage() != plain);
}

ZOMREL_QTEST_MAIN(OrderSizesTest)
#include "order_sizes_test.moc"
