#include "driving/opening.h"
#include "orders/desk.h"
#include "output/order_report.h"
#include "platform/controls/db_grid.h"
#include "platform/dao/recordset.h"
#include "platform/report/doors.h"
#include "platform/report/preview_pages.h"

#include <QAction>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;

class PrintingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup();

    void print_fillsInThePageHeader();
    void print_savesTheCustomer();
    void print_withoutLines_savesTheCustomerOnly();
    void print_renumbersOnlyTheFirstRow();
    void print_doesNotRefreshTheGrid();
    void print_keepsTheOrdersState();
    void print_usesCurrentOrderNum();
    void logo_remainsAfterItsFileIsDeleted();
    void unreadableLogo_failsWithInvalidPicture();
    void close_withAFailingPrint_keepsTheOrderClosed();
    void preview_remainsAfterTheFormIsUnloaded();
    void lineDeletedDuringThePreview_isStillShown();
    void longOrder_isShownAsOneSnapshot();

private:
    void openRead(int order, const QList<int>& lineNumbers);
    QString caption(const char* label);
    static QWidget* preview();
    /// Returns the previewed report as exported to a text file.
    static QString exported();
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
    return driving::shownWindow(driving::names::preview);
}

QString PrintingTest::exported()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"report.txt"_s);
    const auto former =
        report::fileDoor().replace([&](const report::FileRequest&) { return path; });
    testsupport::child<QAction>(*preview(), u"ActionExportText"_s)->trigger();
    report::fileDoor().replace(former);
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

void PrintingTest::layUnreadableLogo()
{
    QFile broken(Module1::LogoPath);
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("no picture");
}

void PrintingTest::print_fillsInThePageHeader()
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

void PrintingTest::print_savesTheCustomer()
{
    openRead(1, {1});
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->click("CmdPrint");
    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).toString(), u"שם"_s);
}

void PrintingTest::print_withoutLines_savesTheCustomerOnly()
{
    openRead(1, {});
    desk_->type("TextCustomerName", u"שם"_s);
    desk_->click("CmdPrint");
    QVERIFY(preview() == nullptr);
    QVERIFY(desk_->boxes.shown().empty());
    QCOMPARE(desk_->store.scalar(u"SELECT CustomerName FROM Orders"_s).toString(), u"שם"_s);
}

void PrintingTest::print_renumbersOnlyTheFirstRow()
{
    openRead(1, {1, 2, 5});
    desk_->click("CmdPrint");
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 2, 5}));

    desk_->store.execute(u"DELETE FROM Cuts WHERE NUM = 1"_s);
    desk_->form()->GetOrderAllCuts(1);
    desk_->click("CmdPrint");
    QCOMPARE(desk_->storedLineNumbers(1), (QList<int>{1, 5}));
}

void PrintingTest::print_doesNotRefreshTheGrid()
{
    openRead(1, {3, 4});
    const dao::Recordset* before = &desk_->lines();
    desk_->click("CmdPrint");
    QCOMPARE(&desk_->lines(), before);
    QCOMPARE(desk_->lines().Fields(u"NUM"_s).Value().toInt(), 4);
    QCOMPARE(desk_->on<controls::DataControl>("DataCut")->Recordset().Type(), dao::dbOpenDynaset);
}

void PrintingTest::print_keepsTheOrdersState()
{
    openRead(1, {1});
    desk_->click("CmdPrint");
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), 0);
    desk_->store.execute(u"UPDATE Orders SET Open_Close = -1"_s);
    desk_->click("CmdPrint");
    QCOMPARE(desk_->store.scalar(u"SELECT Open_Close FROM Orders"_s).toInt(), -1);
}

void PrintingTest::print_usesCurrentOrderNum()
{
    desk_->addOrderWithLines(2, {8});
    openRead(1, {4});
    Module1::CurrentOrderNum = 2;
    desk_->click("CmdPrint");

    QCOMPARE(desk_->storedLineNumbers(1), QList<int>{4});
    QCOMPARE(desk_->storedLineNumbers(2), QList<int>{1});
    QCOMPARE(caption("LabelOrder_Num"), u"2"_s);
}

void PrintingTest::logo_remainsAfterItsFileIsDeleted()
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

void PrintingTest::unreadableLogo_failsWithInvalidPicture()
{
    layUnreadableLogo();
    openRead(1, {2});
    desk_->boxes.answer(runtime::vbOK);

    desk_->click("CmdPrint");

    QCOMPARE(desk_->end.exitStatus(), 1);
    QVERIFY(desk_->boxes.shown().front().text.startsWith(u"Run-time error '481':"_s));
    // Saving and numbering happen before printing.
    QCOMPARE(desk_->storedLineNumbers(1), QList<int>{1});
    QVERIFY(preview() == nullptr);
}

/// Changes that closing has made before printing remain if printing fails.
void PrintingTest::close_withAFailingPrint_keepsTheOrderClosed()
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

void PrintingTest::preview_remainsAfterTheFormIsUnloaded()
{
    openRead(1, {1});
    desk_->boxes.answer(runtime::vbYes);
    const QPointer<orders::FrOrder> form(desk_->form());
    desk_->click("CmdCloseOrder");
    QTRY_VERIFY(form.isNull());
    QVERIFY(preview() != nullptr);
    QVERIFY(!preview()->grab().isNull());
}

void PrintingTest::lineDeletedDuringThePreview_isStillShown()
{
    openRead(1, {1, 2, 3, 4, 5, 6, 7, 8, 9});
    desk_->click("CmdPrint");
    auto* grid = desk_->on<controls::DBGrid>("DBGrid1");
    testsupport::clickCell(*grid, 7, 0); // The row is on a page that has not been shown.
    desk_->boxes.answer(runtime::vbYes);
    desk_->click("CmdDel");
    desk_->store.execute(u"UPDATE Cuts SET Name = 'אחר'"_s);
    QCOMPARE(desk_->storedLineNumbers(1).size(), 8);

    auto* pages = testsupport::child<report::PreviewPages>(*preview(), u"PreviewPages"_s);
    pages->setCurrentPage(3);
    QVERIFY(!pages->grab().isNull());
    const QString text = exported();
    QCOMPARE(text.count(u"מס' פריט :"_s), 9);
    for (int line = 1; line <= 9; ++line)
        QCOMPARE(text.count(u"סדרה %1"_s.arg(line)), 1);
    QVERIFY(!text.contains(u"אחר"_s));
}

void PrintingTest::longOrder_isShownAsOneSnapshot()
{
    constexpr int count = 600;
    desk_->store.addOrder(1);
    desk_->store.execute(
        u"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?)"
        " INSERT INTO Cuts (Order_Num, NUM, Name, Order_Date) SELECT 1, i, 'שם', '2026-01-02'"
        " FROM n"_s,
        {count});
    desk_->openOrder(1);
    QTRY_VERIFY(desk_->timerRests());
    desk_->click("CmdPrint");
    desk_->store.execute(u"DELETE FROM Cuts WHERE NUM = 500"_s);
    desk_->store.execute(u"UPDATE Cuts SET Name = 'אחר' WHERE NUM IN (1, 600)"_s);

    const QString text = exported();
    QCOMPARE(text.count(u"מס' פריט :"_s), count - 1);
    QCOMPARE(text.count(u"\tשם\n"_s) + text.count(u"\tאחר\n"_s), count - 1);
    QCOMPARE(text.count(u"אחר"_s), 2); // The first and the last page belong to the same snapshot.
}

ZOMREL_QTEST_MAIN(PrintingTest)
#include "printing_test.moc"
