#include "orders/desk.h"
#include "output/order_report.h"
#include "platform/dao/recordset.h"

#include <QFile>
#include <QImage>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;

class PrintingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void headOfThePaper();
    void customerIsSavedFirst();
    void noLinesEndsSilently();
    void onlyTheFirstRowIsRenumbered();
    void gridIsNotRefreshed();
    void stateIsNotTouched();
    void numbersFollowTheSharedNumber();
    void logoStays();
    void unreadableLogoFails();
    void failedPrintOfAClosing();
    void previewOutlivesTheForm();

private:
    void openRead(int order, const QList<int>& lineNumbers);
    QString caption(const char* label);
    static QWidget* preview();
    static void layUnreadableLogo();

    std::unique_ptr<Desk> desk_;
};

void PrintingTest::cleanup()
{
    if (QWidget* window = preview())
        window->close();
    QCOMPARE(desk_->boxes.unexpected(), QStringList());
    desk_.reset();
}

void PrintingTest::openRead(int order, const QList<int>& lineNumbers)
{
    desk_->addOrderWithLines(order, lineNumbers);
    desk_->openOrder(order);
    QTRY_VERIFY(desk_->timerRests());
}

QString PrintingTest::caption(const char* label)
{
    return output::dataReport1().Sections(2).Controls(QString::fromLatin1(label)).Caption();
}

QWidget* PrintingTest::preview()
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->objectName() == u"DataReport1"_s && each->isVisible())
            return each;
    }
    return nullptr;
}

void PrintingTest::layUnreadableLogo()
{
    QFile broken(Module1::LogoPath);
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("no picture");
}

void PrintingTest::headOfThePaper()
{
    openRead(12, {1, 2});
    desk_->type("TextCustomerName", u"דוד כהן"_s);
    desk_->type("TextCustomerAddress", u"הרצל 5"_s);
    desk_->type("TextCustomerTel", QString());

    desk_->click("CmdPrint");

    QVERIFY(preview() != nullptr);
    QCOMPARE(caption("LabelDate"), u"02/01/2026"_s);
    QCOMPARE(caption("LabelOrder_Num"), u"12"_s);
    QCOMPARE(caption("LabelClientName"), u"דוד כהן"_s);
    QCOMPARE(caption("LabelAddress"), u"הרצל 5"_s);
    QCOMPARE(caption("LabelTel"), QString());
    QCOMPARE(Module1::SqlText, u"SELECT * FROM Cuts WHERE ORDER_NUM = 12 ORDER BY NUM ASC"_s);
}

void PrintingTest::customerIsSavedFirst()
{
    openRead(1, {1});
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->click("CmdPrint");
    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).toString(), u"שם"_s);
}

void PrintingTest::noLinesEndsSilently()
{
    openRead(1, {});
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->click("CmdPrint");
    QVERIFY(preview() == nullptr);
    QVERIFY(desk_->boxes.shown().empty());
    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).toString(), u"שם"_s);
}

void PrintingTest::onlyTheFirstRowIsRenumbered()
{
    openRead(1, {1, 2, 5});
    desk_->click("CmdPrint");
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 2, 5}));

    desk_->store.execute(u"DELETE FROM Cuts WHERE NUM = 1"_s);
    desk_->form()->GetOrderAllCuts(1);
    desk_->click("CmdPrint");
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 5}));
}

void PrintingTest::gridIsNotRefreshed()
{
    openRead(1, {3, 4});
    const dao::Recordset* before = &desk_->lines();
    desk_->click("CmdPrint");
    QCOMPARE(&desk_->lines(), before);
    QCOMPARE(desk_->lines().Fields(u"NUM"_s).Value().toInt(), 4);
    QCOMPARE(desk_->on<controls::DataControl>("DataCut")->Recordset().Type(), dao::dbOpenDynaset);
}

void PrintingTest::stateIsNotTouched()
{
    openRead(1, {1});
    desk_->click("CmdPrint");
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), 0);
    desk_->store.execute(u"UPDATE Orders SET Open_Close = -1"_s);
    desk_->click("CmdPrint");
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), -1);
}

void PrintingTest::numbersFollowTheSharedNumber()
{
    desk_->addOrderWithLines(2, {8});
    openRead(1, {4});
    Module1::CurrentOrderNum = 2;
    desk_->click("CmdPrint");

    QCOMPARE(desk_->storedLineNumbers(1), QList<int>{4});
    QCOMPARE(desk_->storedLineNumbers(2), QList<int>{1});
    QCOMPARE(caption("LabelOrder_Num"), u"2"_s);
}

void PrintingTest::logoStays()
{
    const auto logo = [] {
        return output::dataReport1().Sections(2).Controls(u"ImageCompanyLogo"_s).Picture();
    };
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    QVERIFY(picture.save(Module1::LogoPath));
    openRead(1, {1});
    desk_->click("CmdPrint");
    QCOMPARE(logo().size(), QSize(20, 10));

    QVERIFY(QFile::remove(Module1::LogoPath));
    desk_->click("CmdPrint");
    QCOMPARE(logo().size(), QSize(20, 10));
}

void PrintingTest::unreadableLogoFails()
{
    layUnreadableLogo();
    openRead(1, {2});
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdPrint");

    QCOMPARE(desk_->end.exitStatus(), 1);
    QVERIFY(desk_->boxes.shown().front().text.startsWith(u"Run-time error '481':"_s));
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>{1}); // saved and numbered before
    QVERIFY(preview() == nullptr);
}

/// What closing has done by the moment of printing stays when printing fails.
void PrintingTest::failedPrintOfAClosing()
{
    layUnreadableLogo();
    openRead(1, {2});
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->boxes.answer(runtime::vbYes);
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdCloseOrder");

    QCOMPARE(desk_->end.exitStatus(), 1);
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), -1);
    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).toString(), u"שם"_s);
    QVERIFY(desk_->on<QPushButton>("CmdOpenOrder")->isEnabled());
    QVERIFY(!desk_->on<QPushButton>("CmdCloseOrder")->isEnabled());
    QVERIFY(desk_->form()->isVisible());
}

void PrintingTest::previewOutlivesTheForm()
{
    openRead(1, {1});
    desk_->boxes.answer(runtime::vbYes);
    const QPointer<orders::FrOrder> form(desk_->form());
    desk_->click("CmdCloseOrder");
    QTRY_VERIFY(form.isNull());
    QVERIFY(preview() != nullptr);
    QVERIFY(!preview()->grab().isNull());
}

ZOMREL_QTEST_MAIN(PrintingTest)
#include "printing_test.moc"
