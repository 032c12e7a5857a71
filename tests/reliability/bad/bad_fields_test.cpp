#include "calculation/form_select_serial.h"
#include "calculation/opening_panel.h"
#include "orders/desk.h"
#include "output/form_view.h"
#include "platform/runtime/guard.h"

#include <QFile>
#include <QTest>

#include <array>
#include <memory>

using namespace Qt::StringLiterals;
using testsupport::Desk;

/// Fields as no form writes them, brought in from outside: each command shows them as they are or
/// ends the program with its box, and writes nothing half.
class BadFieldsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void series_data();
    void series();
    void line_data();
    void line();
    void order_data();
    void order();
    void orderNumber_data();
    void orderNumber();

private:
    enum class Outcome { Worked, Ended };
    template <typename Work>
    Outcome outcomeOf(Work work);
    Outcome takeByTheSearch();

    std::unique_ptr<Desk> desk_;
};

namespace {

/// Values of a number's field as SQL takes them.
struct BadValue
{
    const char* name;
    const char* sql;
};

const QList<BadValue> badValues{
    {"Null", "NULL"},
    {"zero", "0"},
    {"negative", "-3"},
    {"large", "32768"},
    {"largest whole", "2147483647"},
    {"beyond whole", "3000000000"},
    {"huge", "1e308"},
    {"infinite", "9e999"},
    {"negative infinite", "-9e999"},
    {"text", "'wide'"},
    {"bytes", "x'00ff'"},
    {"true text", "'12'"},
};

const std::array lineNumbers{"MyWidth",      "MYHeight", "Kanaf_W",    "Reshet_H",
                             "Reshet_Count", "NUM",      "Order_Date", "Name"};
const std::array seriesNumbers{"Mashkof_W", "Mashkof_H", "Kanaf_W", "Reshet_H",
                               "Kanaf_Num", "Nativ_Num", "Name",    "Sign"};
const std::array orderFields{"Order_Date", "Open_Close", "CustomerName", "CustomerTel"};

template <std::size_t count>
void combinations(const std::array<const char*, count>& fields)
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("value");
    for (const char* field : fields) {
        for (const BadValue& each : badValues) {
            QTest::addRow("%s %s", field, each.name)
                << QString::fromLatin1(field) << QString::fromLatin1(each.sql);
        }
    }
}

void closeWindow(const char* name)
{
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->objectName() == QLatin1String(name) && each->isVisible())
            each->close();
    }
}

} // namespace

void BadFieldsTest::init()
{
    desk_ = std::make_unique<Desk>();
    Module1::IsMonoblock = false;
    Module1::IsDoorFrame = false;
    desk_->store.addSeries(u"סדרה"_s, {-1, -1.5, -4.2, -7.5, -13.4, -16, -6.3, -8.25}, 2, 2);
    desk_->store.addOrder(1);
}

void BadFieldsTest::cleanup()
{
    for (const char* each : {"FormSelectSerial", "FormView", "DataReport1"})
        closeWindow(each);
    desk_.reset();
}

/// Runs the work; where the program ends, it does so by the run-time system's box alone.
template <typename Work>
BadFieldsTest::Outcome BadFieldsTest::outcomeOf(Work work)
{
    desk_->boxes.clear();
    desk_->end.clear();
    runtime::guarded(work);
    if (!desk_->end.exitStatus())
        return Outcome::Worked;
    [this] {
        QCOMPARE(desk_->end.exitStatus(), std::optional(1));
        QCOMPARE(desk_->boxes.shown().size(), std::size_t{1});
        const QString text = desk_->boxes.shown().front().text;
        bool stated = false;
        for (const int number : {runtime::Overflow, runtime::DivisionByZero, runtime::TypeMismatch,
                                 runtime::InvalidUseOfNull, runtime::DataTypeConversion})
            stated = stated || text.startsWith(u"Run-time error '%1':"_s.arg(number));
        QVERIFY2(stated, qPrintable(text));
    }();
    return Outcome::Ended;
}

void BadFieldsTest::series_data()
{
    combinations(seriesNumbers);
}

/// The picker, then the view and a line of the opening.
void BadFieldsTest::series()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    desk_->openOrder(1);
    desk_->store.execute(u"UPDATE Serials SET %1 = %2"_s.arg(field, value));
    const Outcome picked = outcomeOf([this] {
        desk_->click("CmdPicSerial");
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (each->objectName() == u"FormSelectSerial"_s && each->isVisible())
                testsupport::child<QPushButton>(*each, u"CmdPic"_s)->click();
        }
    });
    closeWindow("FormSelectSerial");
    QVERIFY2(picked == Outcome::Ended || Module1::SelectedSerialNum == 1, "no series was chosen");
    Module1::SelectedSerialNum = 1;
    desk_->type("TextNum_0", u"100"_s);
    desk_->type("TextNum_2", u"100"_s);
    const Outcome viewed = outcomeOf([this] { desk_->click("CmdOK"); });
    const Outcome added = outcomeOf([this] { desk_->click("CmdAdd"); });
    const int lines = desk_->store.scalar(u"SELECT count(*) FROM Cuts"_s).toInt();
    QCOMPARE(lines, added == Outcome::Worked ? 1 : 0);
    QVERIFY(viewed == Outcome::Worked || added == Outcome::Ended);
    if (field != u"Name"_s && field != u"Sign"_s && field != u"Nativ_Num"_s) {
        const bool ends =
            value == u"NULL"_s || value.contains(u"9e999"_s) || value == u"'wide'"_s ||
            value.startsWith(u"x'"_s) ||
            (field == u"Kanaf_Num"_s && (value == u"0"_s || value == u"1e308"_s ||
                                         value == u"3000000000"_s || value == u"2147483647"_s));
        QCOMPARE(added == Outcome::Ended, ends);
    }
}

void BadFieldsTest::line_data()
{
    combinations(lineNumbers);
}

/// A line that is shown, viewed, printed and followed by another one.
void BadFieldsTest::line()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    desk_->store.addLine(1, 1);
    desk_->store.addLine(1, 2);
    desk_->store.execute(u"UPDATE Cuts SET \"%1\" = %2 WHERE NUM = 1"_s.arg(field, value));
    const auto others = [this, &field] {
        // All but what printing renumbers.
        return desk_->store.rows(
            u"SELECT Code, Name, MyWidth, MYHeight, Kanaf_W, Reshet_Count, Order_Date FROM Cuts "
            "ORDER BY Code"_s);
    };
    const auto before = others();
    outcomeOf([this] { desk_->openOrder(1); });
    if (desk_->form() == nullptr)
        return;
    outcomeOf([this] { QTRY_VERIFY(desk_->timerRests() || desk_->end.exitStatus()); });
    outcomeOf([this] { desk_->form()->grab(); });
    outcomeOf([this] {
        QTimer::singleShot(0, qApp, [] { closeWindow("FormView"); });
        desk_->click("CmdView");
        QCoreApplication::sendPostedEvents();
    });
    outcomeOf([this] { desk_->click("CmdPrint"); });
    for (QWidget* each : QApplication::topLevelWidgets()) {
        if (each->objectName() == u"DataReport1"_s && each->isVisible())
            outcomeOf([each] { each->grab(); });
    }
    QCOMPARE(others(), before);
    Module1::SelectedSerialNum = 1;
    desk_->type("TextNum_0", u"100"_s);
    desk_->type("TextNum_2", u"100"_s);
    const Outcome added = outcomeOf([this] { desk_->click("CmdAdd"); });
    const int lines = desk_->store.scalar(u"SELECT count(*) FROM Cuts"_s).toInt();
    QVERIFY(lines == 3 || added == Outcome::Ended);
}

void BadFieldsTest::order_data()
{
    combinations(orderFields);
}

/// The order's own fields: on the form, at a saving and in the search.
void BadFieldsTest::order()
{
    QFETCH(QString, field);
    QFETCH(QString, value);
    desk_->store.addLine(1, 1);
    if (field == u"Open_Close"_s && value == u"NULL"_s)
        QSKIP("the column takes no Null");
    desk_->store.execute(u"UPDATE Orders SET %1 = %2"_s.arg(field, value));
    outcomeOf([this] { desk_->openOrder(1); });
    if (desk_->form() == nullptr)
        return;
    outcomeOf([this] { desk_->click("CmdPrint"); });
    outcomeOf([this] { orders::openOrderLongForm(desk_->dataMDI); });
    takeByTheSearch();
    QCOMPARE(desk_->store.scalar(u"SELECT count(*) FROM Cuts"_s), 1);
}

/// Opens the search, lets its lines come, and takes the order under its cursor.
BadFieldsTest::Outcome BadFieldsTest::takeByTheSearch()
{
    return outcomeOf([this] {
        testsupport::inNextDialog([this](QDialog& search) {
            search.grab();
            const auto* deferred = testsupport::child<QTimer>(search, u"TimerGetOrder"_s);
            QTRY_VERIFY(!deferred->isActive() || desk_->end.exitStatus());
            if (!desk_->end.exitStatus())
                testsupport::child<QPushButton>(search, u"CmdPic"_s)->click();
        });
        orders::findOrder();
    });
}

void BadFieldsTest::orderNumber_data()
{
    combinations(std::array{"Number"});
}

/// The number itself: the search lists whatever stands there; to the order form and to the
/// next number goes what fits 16 bits.
void BadFieldsTest::orderNumber()
{
    QFETCH(QString, value);
    if (value == u"NULL"_s)
        QSKIP("the column takes no Null");
    desk_->openOrder(1);
    desk_->store.execute(u"UPDATE Orders SET Number = %1"_s.arg(value));
    const bool fits = value == u"0"_s || value == u"-3"_s || value == u"'12'"_s;
    const Outcome taken = takeByTheSearch();
    QCOMPARE(taken == Outcome::Worked, fits);
    QCOMPARE(int(Module1::CurrentOrderNum), fits ? value.remove(u'\'').toInt() : 1);
    const Outcome continued = outcomeOf([this] { orders::openOrderLongForm(desk_->dataMDI); });
    QCOMPARE(continued == Outcome::Worked, fits);
    QCOMPARE(desk_->store.scalar(u"SELECT count(*) FROM Orders"_s), 1);
}

ZOMREL_QTEST_MAIN(BadFieldsTest)
#include "bad_fields_test.moc"
