#include "journeys/order_steps.h"
#include "journeys/program.h"
#include "support/widgets.h"

#include <QDate>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace journeys;

namespace {

const QString okButton = u"אישור"_s;
const QString cutSizes =
    u"Mashkof_W, Mashkof_H, Kanaf_W, Kanaf_H, Glass_W, Glass_H, Reshet_W, Reshet_H"_s;
const QString counts = u"Mahkof_Count, Kanaf_Count, Glass_Count, Reshet_Count"_s;
const QString shutter =
    u"MyWidth_2, MYHeight_2, U_Thick, U_Cut, U_Vasa, Shalav_Thick, Shalav_Width,"
    " Shalav_Count, Argaz_Width, Argaz_Height"_s;

void compareNumbers(const QVariantList& seen, const QList<double>& expected)
{
    QCOMPARE(seen.size(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        // The tolerance covers the last bits, where different orders of evaluation may differ.
        QVERIFY2(
            qAbs(seen[i].toDouble() - expected[i]) < 1e-9,
            qPrintable(u"%1: %2 instead of %3"_s.arg(i).arg(seen[i].toString()).arg(expected[i])));
    }
}

} // namespace

/// Journeys of the main job: an order is opened, openings are typed, and every line is stored.
class FirstOrderJourney : public QObject
{
    Q_OBJECT

private slots:
    void firstOrder_storesAnOrdinaryLine();
    void monoblock_storesItsLine();
    void door_storesItsLine();
    void doorWithMonoblock_storesItsLine();
    void severalRefusals_areGivenInFixedOrder();
    void restart_continuesTheOpenOrder();
    void newOrderMenu_addsToTheLastOrder();
    void letterInABox_endsTheProgramAndStoresNothing();
};

void FirstOrderJourney::firstOrder_storesAnOrdinaryLine()
{
    Program program;
    addSeries(program, u"בלגי 7000"_s, 2, 2);
    program.start();
    openOrder(program);
    QVERIFY(program.waitForText(u"LabelOrderNum"_s, u"1"_s));
    QCOMPARE(program.scalar(u"SELECT Open_Close FROM Orders WHERE Number = 1"_s).toInt(), 0);

    program.fill(u"TextCustomerName"_s, u"ישראל ישראלי"_s);
    chooseSeries(program, u"בלגי 7000"_s);
    QCOMPARE(program.text(u"LabelKanaf"_s), u"2"_s);
    QCOMPARE(program.text(u"LabelKind"_s), u"רגיל"_s);
    typeOpening(program, {u"120"_s, u"50"_s}, {u"100"_s, u"25"_s});
    const QDate dayBefore = QDate::currentDate();
    addLine(program, 1);
    const QDate dayAfter = QDate::currentDate(); // The next day after midnight.

    compareNumbers(line(program, 1, 1, cutSizes),
                   {119.5, 98.75, 58.15, 92.75, 53.55, 84.25, 57.1, 92});
    compareNumbers(line(program, 1, 1, counts), {2, 4, 2, 2});
    compareNumbers(line(program, 1, 1, shutter), {0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    QCOMPARE(line(program, 1, 1, u"Name, Kind, MyWidth, MYHeight"_s),
             QVariantList({u"בלגי 7000"_s, u"אור"_s, 120.5, 100.25}));
    const QDate stored =
        QDate::fromString(line(program, 1, 1, u"Order_Date"_s).first().toString(), Qt::ISODate);
    QVERIFY(stored == dayBefore || stored == dayAfter);
    QCOMPARE(program.scalar(u"SELECT CustomerName FROM Orders"_s).toString(), u"ישראל ישראלי"_s);
    QVERIFY(program.waitForText(u"LabelLinesInOrder"_s, u"1"_s));
    QVERIFY(program.waitForText(u"FrOrder/TextNum_0"_s, u"0"_s));
    QCOMPARE(program.focusName(), u"TextNum_0"_s);
}

void FirstOrderJourney::monoblock_storesItsLine()
{
    Program program;
    addSeries(program, u"בלגי 7000"_s, 2, 2);
    program.start();
    openOrder(program);
    openPickerOn(program, u"בלגי 7000"_s);
    tickMonoblock(program);
    program.fill(u"FormSelectSerial/TextNum_1"_s, u"50"_s);
    takeSeries(program);
    QVERIFY(program.waitForText(u"LabelKind"_s, u"מונו בלוק : 10"_s));
    typeOpening(program, {u"120"_s, u"50"_s}, {u"100"_s, u"25"_s});
    addLine(program, 1);

    compareNumbers(line(program, 1, 1, cutSizes),
                   {117, 80.75, 56.9, 74.75, 52.3, 66.25, 55.85, 74});
    compareNumbers(line(program, 1, 1, shutter),
                   {118, 82.25, 6.5, 86.25, 82.65, 4.5, 107.8, 20, 120.5, 18});
    QCOMPARE(line(program, 1, 1, u"Kind"_s), QVariantList({u"מונו בלוק : 10"_s}));
}

void FirstOrderJourney::door_storesItsLine()
{
    Program program;
    addSeries(program, u"דלת 4500"_s, 1, 1, u"d2000"_s);
    program.start();
    openOrder(program);
    QVERIFY(!program.isVisible(u"FrameDoorMashkof"_s));
    chooseSeries(program, u"דלת 4500"_s);
    QVERIFY(program.waitForWindow(u"FrameDoorMashkof"_s));
    QCOMPARE(program.focusName(), u"TextNum_4"_s);
    typeOpening(program, {u"90"_s, u"00"_s}, {u"210"_s, u"00"_s});
    addLine(program, 1);

    compareNumbers(line(program, 1, 1, cutSizes), {89, 208.5, 77.8, 198.5, 0, 0, 0, 0});
    compareNumbers(line(program, 1, 1, counts), {2, 1, 1, 1});
    compareNumbers(line(program, 1, 1, shutter), {82, 206, 4, 0, 0, 0, 0, 0, 0, 0});
    QCOMPARE(line(program, 1, 1, u"Kind"_s), QVariantList({u"אור"_s}));
}

void FirstOrderJourney::doorWithMonoblock_storesItsLine()
{
    Program program;
    addSeries(program, u"דלת 4500"_s, 2, 1, u"d2000"_s);
    program.start();
    openOrder(program);
    openPickerOn(program, u"דלת 4500"_s);
    tickMonoblock(program);
    takeSeries(program);
    QVERIFY(program.waitForWindow(u"FrameDoorMashkof"_s));
    typeOpening(program, {u"90"_s, u"00"_s}, {u"210"_s, u"00"_s});
    addLine(program, 1);

    // The frame is computed from the monoblock's opening of 87.2 by 192, the sash from the door's
    // opening of 82 by 206.
    compareNumbers(line(program, 1, 1, cutSizes), {86.2, 190.5, 38.9, 198.5, 0, 0, 0, 0});
    compareNumbers(line(program, 1, 1, counts), {2, 2, 2, 2});
    // The height minus 8 is 202; divided by the slat thickness 4.5 it gives 44.89 slats.
    compareNumbers(line(program, 1, 1, shutter), {82, 206, 4, 196, 192.4, 4.5, 77.3, 45, 90, 18});
    QCOMPARE(line(program, 1, 1, u"Kind"_s), QVariantList({u"מונו בלוק : 10"_s}));
}

void FirstOrderJourney::severalRefusals_areGivenInFixedOrder()
{
    Program program;
    program.start();
    openOrder(program);
    program.click(u"CmdAdd"_s);
    Box box = program.waitForBox();
    QCOMPARE(box.text, u"ערך נומרי 0 !"_s);
    QCOMPARE(box.title, u"ProjZomrel"_s);
    program.answer(okButton);
    QVERIFY(QTest::qWaitFor([&] { return program.focusName() == u"TextNum_0"_s; }, patience));

    program.type(u"120"_s);
    program.click(u"CmdAdd"_s);
    QCOMPARE(program.waitForBox().text, u"ערך נומרי 0 !"_s);
    program.answer(okButton);
    QVERIFY(QTest::qWaitFor([&] { return program.focusName() == u"TextNum_2"_s; }, patience));

    program.type(u"100"_s);
    program.click(u"CmdAdd"_s);
    box = program.waitForBox();
    QCOMPARE(box.text, u"לא בחרת שום סדרה, לחץ על 'בחר סדרה' "_s);
    QCOMPARE(box.title, u"בחירת סדרה"_s);
    program.answer(okButton);
    QCOMPARE(program.scalar(u"SELECT COUNT(*) FROM Cuts"_s).toInt(), 0);
}

void FirstOrderJourney::restart_continuesTheOpenOrder()
{
    Program program;
    addSeries(program, u"בלגי 7000"_s, 1, 2);
    program.start();
    openOrder(program);
    chooseSeries(program, u"בלגי 7000"_s);
    typeOpening(program, {u"80"_s, u"00"_s}, {u"60"_s, u"00"_s});
    addLine(program, 1);
    // This text is typed after the line was added, so it is lost when the program exits.
    program.fill(u"TextCustomerName"_s, u"לא נשמר"_s);
    program.clickTag(u"Exit"_s);
    QCOMPARE(program.exitStatus(), 0);
    QVERIFY(program.scalar(u"SELECT CustomerName FROM Orders"_s).isNull());

    program.start();
    openOrder(program);
    QVERIFY(program.waitForText(u"LabelOrderNum"_s, u"1"_s));
    QVERIFY(program.waitForRows(u"FrOrder/DBGrid1"_s, 1));
    QVERIFY(program.waitForText(u"LabelLinesInOrder"_s, u"1"_s));
    QVERIFY(program.text(u"LabelSerial"_s).isEmpty());
    chooseSeries(program, u"בלגי 7000"_s);
    typeOpening(program, {u"90"_s, u"5"_s}, {u"70"_s, u"00"_s});
    addLine(program, 2);
    // A single digit in the hundredths box means tenths after the box has lost the focus.
    QCOMPARE(line(program, 1, 2, u"MyWidth"_s), QVariantList{QVariant(90.5)});
    QCOMPARE(program.scalar(u"SELECT COUNT(*) FROM Orders"_s).toInt(), 1);
    QVERIFY(program.waitForText(u"LabelLinesInOrder"_s, u"2"_s));
}

void FirstOrderJourney::newOrderMenu_addsToTheLastOrder()
{
    Program program;
    addSeries(program, u"בלגי 7000"_s, 1, 2);
    program.execute(
        u"INSERT INTO Orders (Number, Order_Date, Open_Close) VALUES (1, '2026-01-02', -1)"_s);
    program.start();
    program.clickTag(u"Order"_s);
    QVERIFY(program.waitForText(u"LabelOrderNum"_s, u"2"_s));
    program.clickTag(u"FindOrder"_s);
    QVERIFY(program.waitForWindow(u"FormFindOrder"_s));
    program.clickCell(u"FormFindOrder/DBGrid1"_s, 0, 4);
    program.click(u"FormFindOrder/CmdPic"_s);
    QVERIFY(program.waitForText(u"LabelOrderNum"_s, u"1"_s));

    // The menu command advances the current order, but the form keeps showing the previous one.
    program.clickTag(u"NewOrder"_s);
    chooseSeries(program, u"בלגי 7000"_s);
    QCOMPARE(program.text(u"LabelOrderNum"_s), u"1"_s);
    typeOpening(program, {u"80"_s, u"00"_s}, {u"60"_s, u"00"_s});
    program.click(u"CmdAdd"_s);
    QVERIFY(QTest::qWaitFor(
        [&] { return program.scalar(u"SELECT COUNT(*) FROM Cuts"_s).toInt() == 1; }, patience));
    QCOMPARE(program.scalar(u"SELECT Order_Num FROM Cuts"_s).toInt(), 2);
    QVERIFY(program.waitForRows(u"FrOrder/DBGrid1"_s, 0));
}

void FirstOrderJourney::letterInABox_endsTheProgramAndStoresNothing()
{
    Program program;
    addSeries(program, u"בלגי 7000"_s, 1, 2);
    program.start();
    openOrder(program);
    chooseSeries(program, u"בלגי 7000"_s);
    typeOpening(program, {u"12a"_s, u"00"_s}, {u"60"_s, u"00"_s});
    program.click(u"CmdAdd"_s);
    const Box box = program.waitForBox();
    QCOMPARE(box.text, u"Run-time error '13':\n\nType mismatch"_s);
    QVERIFY2(box.explanation.contains(u"בספרות בלבד"_s), qPrintable(box.explanation));
    program.press(Qt::Key_Return);
    QCOMPARE(program.exitStatus(), 1);
    QCOMPARE(program.scalar(u"SELECT COUNT(*) FROM Cuts"_s).toInt(), 0);
}

ZOMREL_GUILESS_QTEST_MAIN(FirstOrderJourney)
#include "first_order_journey.moc"
