#include "calculation/opening_panel.h"
#include "orders/desk.h"
#include "platform/controls/db_grid.h"

#include <QGroupBox>
#include <QHeaderView>
#include <QMdiArea>
#include <QMdiSubWindow>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::child;
using testsupport::Desk;

/// The layout of the order form.
class OrderFormTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void form_opensMaximisedInTheFrame();
    void labels_haveTheirTextsAndFonts_data();
    void labels_haveTheirTextsAndFonts();
    void buttons_haveTheirTextsAndFonts_data();
    void buttons_haveTheirTextsAndFonts();
    void dataControls_areHidden();
    void customerBoxes_haveTheirLimitsAndDirection_data();
    void customerBoxes_haveTheirLimitsAndDirection();
    void grid_hasItsColumns();
    void grid_formatsTheOpening();
    void grid_isReadOnly();
    void load_setsTheFonts();
    void tabKey_visitsTheControlsInOrder();
    void enterAndEscape_pressNoButton();
    void form_fitsCommonScreenSizes_data();
    void form_fitsCommonScreenSizes();
    void form_isASingleInstance();

private:
    std::unique_ptr<Desk> desk_;
};

void OrderFormTest::init()
{
    desk_ = std::make_unique<Desk>();
    desk_->addOrderWithLines(1, {1, 2});
    desk_->openOrder(1);
}

void OrderFormTest::cleanup()
{
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    desk_.reset();
}

void OrderFormTest::form_opensMaximisedInTheFrame()
{
    auto* area = desk_->window.findChild<QMdiArea*>();
    QCOMPARE(area->subWindowList().size(), 1);
    const QMdiSubWindow* frame = area->subWindowList().front();
    QVERIFY(frame->isMaximized());
    QCOMPARE(desk_->form()->objectName(), u"FrOrder"_s);
    QCOMPARE(desk_->form()->windowTitle(), u"הזמנות"_s);
    QCOMPARE(desk_->form()->layoutDirection(), Qt::RightToLeft);
}

void OrderFormTest::labels_haveTheirTextsAndFonts_data()
{
    QTest::addColumn<QString>("caption");

    QTest::newRow("Label1_7") << u"מס' הזמנה :"_s;
    QTest::newRow("Label1_6") << u"תאריך הזמנה :"_s;
    QTest::newRow("Label13") << u"שורות בהזמנה :"_s;
    QTest::newRow("Label14") << u"עבור לקוח :"_s;
    QTest::newRow("Label15") << u"כתובת :"_s;
    QTest::newRow("Label16") << u"מס' טלפון :"_s;
    QTest::newRow("Label1_0") << u"חישוב לפי  סידרה"_s;
    QTest::newRow("Label3") << u"מס. נתיב"_s;
    QTest::newRow("Label4") << u"מס. כנף"_s;
    QTest::newRow("Label12") << u"סוג חלון"_s;
    QTest::newRow("LabelKind") << u"רגיל"_s;
    QTest::newRow("LabelSerial") << QString();
    QTest::newRow("LabelNativ") << QString();
    QTest::newRow("LabelKanaf") << QString();
    QTest::newRow("Label11") << u"עובי משקוף דלת :"_s;
    QTest::newRow("Label5") << u"סוג"_s;
    QTest::newRow("Label10") << u"צבע"_s;
    QTest::newRow("Label6") << u"משקוף :"_s;
    QTest::newRow("Label7") << u"כנף :"_s;
    QTest::newRow("Label8") << u"זכוכית :"_s;
    QTest::newRow("Label9") << u"רשת :"_s;
    QTest::newRow("LabelLinesInOrder") << u"0"_s;
}

void OrderFormTest::labels_haveTheirTextsAndFonts()
{
    QFETCH(QString, caption);
    const auto* label = desk_->on<QLabel>(QTest::currentDataTag());
    QCOMPARE(label->text(), caption);
    QCOMPARE(QByteArray(label->metaObject()->className()), QByteArray("QLabel"));
    const bool counter = label->objectName() == u"LabelLinesInOrder"_s;
    QCOMPARE(label->font().family(), counter ? u"MS Sans Serif"_s : u"David"_s);
}

void OrderFormTest::buttons_haveTheirTextsAndFonts_data()
{
    QTest::addColumn<QString>("caption");

    QTest::newRow("CmdPicSerial") << u"בחר סדרה"_s;
    QTest::newRow("CmdOK") << u"קדם חישוב"_s;
    QTest::newRow("CmdAdd") << u"הוסף להזמנה"_s;
    QTest::newRow("CmdClear1") << u"נקה"_s;
    QTest::newRow("CmdView") << u"הצג שורה"_s;
    QTest::newRow("CmdDel") << u"מחק שורה"_s;
    QTest::newRow("CmdDelAll") << u"מחק הכל"_s;
    QTest::newRow("CmdPrint") << u"הדפס הזמנה"_s;
    QTest::newRow("CmdFindOrder") << u"חפש הזמנה"_s;
    QTest::newRow("CmdOpenOrder") << u"הזמנה חדשה"_s;
    QTest::newRow("CmdCloseOrder") << u"סגור הזמנה"_s;
    QTest::newRow("Command2") << u"סיום"_s;
}

void OrderFormTest::buttons_haveTheirTextsAndFonts()
{
    QFETCH(QString, caption);
    const auto* button = desk_->on<QPushButton>(QTest::currentDataTag());
    QCOMPARE(button->text(), caption);
    QCOMPARE(button->font().family(), u"Arial"_s);
    QCOMPARE(button->isEnabled(), button->objectName() != u"CmdOpenOrder"_s);
    QVERIFY(button->isVisible());
}

void OrderFormTest::dataControls_areHidden()
{
    const auto controls = desk_->form()->findChildren<controls::DataControl*>();
    QCOMPARE(controls.size(), 14);
    for (const controls::DataControl* each : controls)
        QVERIFY2(!each->isVisible(), qPrintable(each->objectName()));
}

void OrderFormTest::customerBoxes_haveTheirLimitsAndDirection_data()
{
    QTest::addColumn<int>("maxLength");
    QTest::newRow("TextCustomerName") << 50;
    QTest::newRow("TextCustomerAddress") << 50;
    QTest::newRow("TextCustomerTel") << 20;
}

void OrderFormTest::customerBoxes_haveTheirLimitsAndDirection()
{
    QFETCH(int, maxLength);
    const auto* box = desk_->on<QLineEdit>(QTest::currentDataTag());
    QCOMPARE(box->maxLength(), maxLength);
    QCOMPARE(box->layoutDirection(), Qt::RightToLeft);
    QVERIFY(box->alignment() & Qt::AlignRight);
    QCOMPARE(box->font().family(), u"David"_s);
}

void OrderFormTest::grid_hasItsColumns()
{
    const auto* grid = desk_->on<controls::DBGrid>("DBGrid1");
    const QStringList shown{u"גובה פתח"_s, u"רוחב פתח"_s, u"שם סדרה"_s, u"סוג חלון"_s, u"מס' "_s};
    const QStringList hidden{
        u"Mashkof_H"_s,   u"Kanaf_W"_s,     u"Kanaf_H"_s,      u"Glass_W"_s,      u"Glass_H"_s,
        u"Reshet_W"_s,    u"Reshet_H"_s,    u"Mashof_Kind"_s,  u"Mahkof_Color"_s, u"Mahkof_Count"_s,
        u"Kanaf_Kind"_s,  u"Kanaf_Color"_s, u"Kanaf_Count"_s,  u"Glass_Kind"_s,   u"Glass_Color"_s,
        u"Glass_Count"_s, u"Reshet_Kind"_s, u"Reshet_Color"_s, u"Reshet_Count"_s};
    QCOMPARE(grid->caption(), u"שורות בהזמנה"_s);
    QCOMPARE(grid->model()->columnCount(), 24);
    for (int column = 0; column < 24; ++column) {
        const bool isShown = column < 5;
        QCOMPARE(grid->isColumnHidden(column), !isShown);
        QCOMPARE(grid->model()->headerData(column, Qt::Horizontal).toString(),
                 isShown ? shown[column] : hidden[column - 5]);
    }
    QVERIFY(grid->horizontalHeader()->isVisible());
    // The first column is at the left edge, although the form is right-to-left.
    QVERIFY(grid->columnViewportPosition(0) < grid->columnViewportPosition(4));
}

void OrderFormTest::grid_formatsTheOpening()
{
    desk_->store.execute(
        u"UPDATE Cuts SET MYHeight = 100.5, MyWidth = 92, Name = 'קליל', Kind = 'אור'"_s);
    desk_->form()->GetOrderAllCuts(1);
    const QAbstractItemModel* model = desk_->on<controls::DBGrid>("DBGrid1")->model();
    const QStringList texts{u"100.50"_s, u"92.00"_s, u"קליל"_s, u"אור"_s, u"1"_s};
    for (int column = 0; column < 5; ++column)
        QTRY_COMPARE(model->index(0, column).data().toString(), texts[column]);
}

void OrderFormTest::grid_isReadOnly()
{
    auto* grid = desk_->on<controls::DBGrid>("DBGrid1");
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(0, 2));
    QTest::keyClicks(grid, u"other"_s);
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 2}));
    QCOMPARE(desk_->store.scalar(u"SELECT COUNT(*) FROM Cuts WHERE Name LIKE '%other%'"_s).toInt(),
             0);
    QVERIFY(desk_->boxes.shown().empty());
}

void OrderFormTest::load_setsTheFonts()
{
    int labels = 0;
    for (const QLabel* label : desk_->form()->findChildren<QLabel*>()) {
        if (label->objectName().isEmpty())
            continue;
        QCOMPARE(label->font().pointSize(), 13);
        ++labels;
    }
    QVERIFY2(labels >= 27, qPrintable(QString::number(labels)));
    for (const char* point : {"Label1_3", "Label1_4", "Label1_5"})
        QCOMPARE(desk_->on<QLabel>(point)->text(), u"."_s);
    const auto* grid = desk_->on<controls::DBGrid>("DBGrid1");
    QCOMPARE(grid->font().pointSize(), 11);
    QCOMPARE(grid->font().family(), u"Arial"_s);
    QCOMPARE(grid->palette().color(QPalette::Text), QColor(Qt::black));
    QCOMPARE(grid->horizontalHeader()->font().family(), u"MS Sans Serif"_s);
    QVERIFY(desk_->on<QGroupBox>("Frame1")->font().pointSize() != 13);
}

void OrderFormTest::tabKey_visitsTheControlsInOrder()
{
    desk_->form()->opening().FrameDoorMashkof->show();
    desk_->on<QPushButton>("CmdOpenOrder")->setEnabled(true);
    QStringList names = testsupport::tabOrderFrom(desk_->on<QPushButton>("CmdPicSerial"));
    names.removeIf([](const QString& name) { return name.startsWith(u"qt_"_s); });
    QCOMPARE(names,
             (QStringList{u"CmdPicSerial"_s,    u"TextNum_0"_s,        u"TextNum_1"_s,
                          u"TextNum_2"_s,       u"TextNum_3"_s,        u"CmdAdd"_s,
                          u"CmdOK"_s,           u"CmdClear1"_s,        u"DBComboKind_0"_s,
                          u"DBComboColor_0"_s,  u"DBComboKind_1"_s,    u"DBComboColor_1"_s,
                          u"DBComboKind_2"_s,   u"DBComboColor_2"_s,   u"DBComboKind_3"_s,
                          u"DBComboColor_3"_s,  u"DBGrid1"_s,          u"CmdView"_s,
                          u"CmdDel"_s,          u"CmdDelAll"_s,        u"CmdPrint"_s,
                          u"CmdFindOrder"_s,    u"CmdOpenOrder"_s,     u"CmdCloseOrder"_s,
                          u"Command2"_s,        u"TextCustomerName"_s, u"TextCustomerAddress"_s,
                          u"TextCustomerTel"_s, u"TextNum_4"_s,        u"TextNum_5"_s}));
    auto* grid = desk_->on<controls::DBGrid>("DBGrid1");
    QVERIFY(QTest::qWaitForWindowActive(&desk_->window));
    grid->setFocus();
    QTest::keyClick(grid, Qt::Key_Tab); // Tab leaves the grid instead of going to the next cell.
    QCOMPARE(QApplication::focusWidget()->objectName(), u"CmdView"_s);
}

void OrderFormTest::enterAndEscape_pressNoButton()
{
    auto* name = desk_->on<QLineEdit>("TextCustomerName");
    name->setFocus();
    QTest::keyClick(name, Qt::Key_Return);
    QTest::keyClick(name, Qt::Key_Escape);
    QVERIFY(desk_->form() != nullptr && desk_->form()->isVisible());
    QVERIFY(desk_->boxes.shown().empty());
}

void OrderFormTest::form_fitsCommonScreenSizes_data()
{
    QTest::addColumn<QSize>("screen");
    QTest::newRow("1024x768") << QSize(1024, 768);
    QTest::newRow("1366x768") << QSize(1366, 768);
    QTest::newRow("1920x1080") << QSize(1920, 1080);
}

void OrderFormTest::form_fitsCommonScreenSizes()
{
    QFETCH(QSize, screen);
    // Height of tool bar, status bar and both title bars in pixels.
    constexpr int aroundTheForm = 140;
    desk_->form()->opening().FrameDoorMashkof->show();
    const QSize room = screen - QSize(0, aroundTheForm);
    const QSize needed = desk_->form()->minimumSizeHint();
    QVERIFY2(needed.width() <= room.width() && needed.height() <= room.height(),
             qPrintable(u"%1x%2"_s.arg(needed.width()).arg(needed.height())));
    desk_->window.resize(room);
    for (const QPushButton* button : desk_->form()->findChildren<QPushButton*>())
        QVERIFY2(button->width() >= button->minimumSizeHint().width(),
                 qPrintable(button->objectName()));
    for (const QLabel* label : desk_->form()->findChildren<QLabel*>())
        QVERIFY2(label->width() >= label->minimumSizeHint().width(),
                 qPrintable(label->objectName()));
}

void OrderFormTest::form_isASingleInstance()
{
    QCOMPARE(&orders::frOrder(), desk_->form());
    QCOMPARE(&calculation::openingPanel(), &desk_->form()->opening());
}

ZOMREL_QTEST_MAIN(OrderFormTest)
#include "order_form_test.moc"
