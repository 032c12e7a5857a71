// A week's work in the program, step by step, by key and mouse events.

#include "journeys/week.h"

#include "journeys/order_steps.h"

#include <QTest>

#include <array>

using namespace Qt::StringLiterals;

namespace journeys {

namespace {

const QString yesButton = u"כן"_s;
const QString okButton = u"אישור"_s;
const QString windowSeries = u"מחלון 9000"_s;
const QString doorSeries = u"דלת 4500"_s;
const QString orderGrid = u"FrOrder/DBGrid1"_s;
const QString searchGrid = u"FormFindOrder/DBGrid1"_s;
const QString seriesGrid = u"FrSerials/DBGrid1"_s;

void expect(bool good, const char* what)
{
    if (!good)
        qFatal("unexpected state in the week: %s", what);
}

/// Waits for the message box and answers it.
void answerBox(Program& program, const QString& text, const QString& title, const QString& answer)
{
    const Box box = program.waitForBox();
    if (box.text != text || box.title != title)
        qFatal("expected the box \"%s\" but got \"%s\"", qPrintable(text), qPrintable(box.text));
    program.answer(answer);
}

void waitForFocus(Program& program, const QString& name)
{
    if (!QTest::qWaitFor([&] { return program.focusName() == name; }, patience))
        qFatal("expected the focus on %s but it is on %s", qPrintable(name),
               qPrintable(program.focusName()));
}

/// Returns the row of the grid that has this text in the column, waiting until it appears.
int rowWith(Program& program, const QString& grid, int column, const QString& text)
{
    int found = -1;
    const bool came = QTest::qWaitFor(
        [&] {
            for (int row = 0; found < 0 && row < program.gridRowCount(grid); ++row) {
                if (program.gridRow(grid, row).value(column) == text)
                    found = row;
            }
            return found >= 0;
        },
        10000);
    if (!came)
        qFatal("%s shows no %s", qPrintable(grid), qPrintable(text));
    return found;
}

struct Deduction
{
    QString sign;
    QString whole;
    QString hundredths;
};

void typeSign(Program& program, const QString& sign)
{
    if (sign == u"+")
        program.press(Qt::Key_Plus, Qt::KeypadModifier);
    else
        program.press(Qt::Key_Minus);
}

/// Types the name of a series and its deductions. Tab leaves the name and the lists; Enter leaves
/// the other boxes. The lists keep their first entries.
void typeSeries(Program& program, const std::array<Deduction, 8>& deductions)
{
    waitForFocus(program, u"TextName"_s);
    program.type(windowSeries);
    program.press(Qt::Key_Tab);
    waitForFocus(program, u"ComboLane"_s);
    program.press(Qt::Key_Down);
    program.press(Qt::Key_Down);
    program.press(Qt::Key_Tab);
    waitForFocus(program, u"ComboWing"_s);
    program.press(Qt::Key_Down);
    program.press(Qt::Key_Tab);
    for (int i = 0; i < 8; ++i) {
        waitForFocus(program, u"TextSign_%1"_s.arg(i));
        typeSign(program, deductions[i].sign);
        program.press(Qt::Key_Return);
        waitForFocus(program, u"TextNum_%1"_s.arg(2 * i));
        program.type(deductions[i].whole);
        program.press(Qt::Key_Return);
        waitForFocus(program, u"TextNum_%1"_s.arg(2 * i + 1));
        program.type(deductions[i].hundredths);
        program.press(Qt::Key_Return);
    }
    waitForFocus(program, u"TextRem"_s);
    program.type(u"הזזה"_s);
}

/// Enters a series. Its last deduction gets a plus sign by mistake.
void enterSeries(Program& program)
{
    program.clickTag(u"Serials"_s);
    // The input fields come before CmdNew in tab order, but they are disabled.
    waitForFocus(program, u"CmdNew"_s);
    program.click(u"CmdNew"_s);
    typeSeries(program, {{{u"-"_s, u"1"_s, u"00"_s},
                          {u"-"_s, u"1"_s, u"5"_s},
                          {u"-"_s, u"4"_s, u"20"_s},
                          {u"-"_s, u"7"_s, u"50"_s},
                          {u"-"_s, u"13"_s, u"40"_s},
                          {u"-"_s, u"16"_s, u"00"_s},
                          {u"-"_s, u"6"_s, u"30"_s},
                          {u"+"_s, u"8"_s, u"25"_s}}});
    program.click(u"FrSerials/CmdAdd"_s);
    answerBox(program, u"האם אתה בטוח שברצונך להוסיף את הסדרה הזו??"_s, u"הוספת סדרה"_s, yesButton);
    rowWith(program, seriesGrid, 2, windowSeries);
}

/// Corrects the sign of the last deduction.
void mendSeries(Program& program)
{
    program.clickCell(seriesGrid, rowWith(program, seriesGrid, 2, windowSeries), 2);
    program.click(u"CmdUpdate"_s);
    // The single hundredths digit "5" was stored as fifty hundredths.
    expect(program.waitForText(u"FrSerials/TextNum_3"_s, u"50"_s), "tenths of a deduction");
    expect(program.text(u"TextSign_7"_s) == u"+", "the sign of a deduction");
    expect(!program.isEnabled(u"CmdNew"_s) && !program.isEnabled(seriesGrid), "editing");
    program.click(u"TextSign_7"_s);
    waitForFocus(program, u"TextSign_7"_s);
    // The cursor is behind the sign, so Delete removes nothing.
    program.press(Qt::Key_Delete);
    program.press(Qt::Key_Backspace);
    typeSign(program, u"-"_s);
    expect(program.waitForText(u"TextSign_7"_s, u"-"_s), "another sign");
    program.click(u"CmdUpdate"_s);
    expect(QTest::qWaitFor([&] { return program.isEnabled(u"CmdNew"_s); }, patience),
           "editing has ended");
    program.click(u"CmdEnd"_s);
    expect(program.waitForGone(u"FrSerials"_s), "the series editor is gone");
}

void typeInList(Program& program, int list, int row, const QString& name)
{
    const QString grid = u"DBGridKind_%1"_s.arg(list);
    program.clickCell(grid, row, 1);
    waitForFocus(program, grid);
    program.type(name);
}

/// Adds a frame kind and a glass colour, deletes the second mesh colour, and changes the first sash
/// colour. The last change is written when the form closes.
void enterKinds(Program& program)
{
    program.clickTag(u"ColorKind"_s);
    expect(program.waitForWindow(u"FrColorKind"_s), "kinds and colours");
    for (const auto& [list, name] : {std::pair{0, u"פרופיל כבד"_s}, std::pair{6, u"תכלת"_s}}) {
        const QString grid = u"DBGridKind_%1"_s.arg(list);
        const int blank = program.gridRowCount(grid) - 1;
        typeInList(program, list, blank, name);
        program.press(Qt::Key_Return);
        program.press(Qt::Key_Down);
        expect(program.waitForRows(grid, blank + 2), "another blank row");
    }
    const int colours = program.gridRowCount(u"DBGridKind_7"_s);
    program.clickCell(u"DBGridKind_7"_s, 1, 1);
    waitForFocus(program, u"DBGridKind_7"_s);
    program.press(Qt::Key_Delete);
    expect(program.waitForRows(u"DBGridKind_7"_s, colours - 1), "a row is gone");
    typeInList(program, 5, 0, u"לבן מט"_s);
    program.click(u"FrColorKind/CmdEnd"_s);
    expect(program.waitForGone(u"FrColorKind"_s), "kinds and colours are gone");
}

int openEmptyOrder(Program& program)
{
    openOrder(program);
    expect(program.waitForRows(orderGrid, 0), "an order without lines");
    return program.text(u"LabelOrderNum"_s).toInt();
}

void add(Program& program, const QStringList& opening, int linesAfter)
{
    typeOpening(program, {opening[0], opening[1]}, {opening[2], opening[3]});
    addLine(program, linesAfter);
    // Waits until the timer has moved the grid to the last line.
    expect(program.waitForText(u"LabelLinesInOrder"_s, QString::number(linesAfter)), "lines");
}

void pick(Program& program, const QString& combo, const QString& name)
{
    program.click(combo);
    program.press(Qt::Key_A, Qt::ControlModifier);
    program.type(name);
    program.press(Qt::Key_Tab);
    expect(program.waitForText(combo, name), "a kind or colour");
}

void closeOrder(Program& program)
{
    program.click(u"CmdCloseOrder"_s);
    answerBox(program, u"האם אתה בטוח שברצונך לסגור הזמנה זו?"_s, u"סגירת הזמנה"_s, yesButton);
    expect(program.waitForGone(u"FrOrder"_s), "the order form is gone");
    expect(program.waitForWindow(u"DataReport1"_s), "the report");
}

/// Works on the first order: one line of each kind.
int workOnTheFirst(Program& program)
{
    const int number = openEmptyOrder(program);
    program.fill(u"TextCustomerName"_s, u"אבי כהן"_s);
    program.fill(u"TextCustomerAddress"_s, u"הרצל 5, חיפה"_s);
    program.fill(u"TextCustomerTel"_s, u"04-8123456"_s);
    pick(program, u"FrOrder/DBComboKind_0"_s, u"פרופיל כבד"_s);
    pick(program, u"FrOrder/DBComboColor_2"_s, u"תכלת"_s);
    chooseSeries(program, windowSeries);
    add(program, {u"120"_s, u"50"_s, u"100"_s, u"25"_s}, 1);
    openPickerOn(program, windowSeries);
    tickMonoblock(program);
    takeSeries(program);
    expect(program.waitForText(u"LabelKind"_s, u"מונו בלוק : 10"_s), "the window's kind");
    add(program, {u"120"_s, u"50"_s, u"100"_s, u"25"_s}, 2);
    chooseSeries(program, doorSeries);
    expect(program.waitForWindow(u"FrameDoorMashkof"_s), "the door's frame");
    add(program, {u"90"_s, u"00"_s, u"210"_s, u"00"_s}, 3);
    closeOrder(program);
    return number;
}

/// Works on the second order: adds three lines, deletes the first and adds a fourth. The order has
/// no customer.
int workOnTheSecond(Program& program)
{
    const int number = openEmptyOrder(program);
    chooseSeries(program, windowSeries);
    add(program, {u"100"_s, u"00"_s, u"80"_s, u"00"_s}, 1);
    add(program, {u"60"_s, u"5"_s, u"70"_s, u"00"_s}, 2);
    add(program, {u"200"_s, u"00"_s, u"150"_s, u"00"_s}, 3);
    program.clickCell(orderGrid, 0, 1);
    expect(QTest::qWaitFor([&] { return program.gridCurrentRow(orderGrid) == 0; }, patience),
           "first line");
    program.click(u"CmdDel"_s);
    answerBox(program, u"האם אתה בטוח שברצונך למחוק את ההזמנה הזו??"_s, u"מחיקת הזמנה"_s,
              yesButton);
    expect(program.waitForRows(orderGrid, 2), "two lines");
    expect(program.gridCurrentRow(orderGrid) == 0, "the line in its place");
    add(program, {u"60"_s, u"00"_s, u"60"_s, u"00"_s}, 3);
    closeOrder(program);
    return number;
}

/// Finds the closed order with the search form, changes the telephone number and adds a line.
void changeTheFirst(Program& program, int number)
{
    program.clickTag(u"FindOrder"_s);
    expect(program.waitForWindow(u"FormFindOrder"_s), "the search");
    const int row = rowWith(program, searchGrid, 4, QString::number(number));
    program.clickCell(searchGrid, row, 4);
    expect(program.waitForText(u"FormFindOrder/DBGrid2"_s, u"שורות בהזמנה : %1"_s.arg(number)),
           "the lines' caption");
    expect(program.waitForRows(u"FormFindOrder/DBGrid2"_s, 3), "three lines in the search");
    program.click(u"FormFindOrder/CmdPic"_s);
    expect(program.waitForText(u"LabelOrderNum"_s, QString::number(number)), "the order");
    expect(program.text(u"TextCustomerTel"_s) == u"04-8123456", "its telephone");
    program.fill(u"TextCustomerTel"_s, u"052-7654321"_s);
    chooseSeries(program, windowSeries);
    add(program, {u"80"_s, u"00"_s, u"60"_s, u"00"_s}, 4);
    program.click(u"Command2"_s);
    expect(program.waitForGone(u"FrOrder"_s), "the order form is gone");
}

/// Works on the third order: adds two lines and deletes both. The empty order cannot be closed.
int workOnTheThird(Program& program)
{
    const int number = openEmptyOrder(program);
    program.fill(u"TextCustomerName"_s, u"דנה לוי"_s);
    chooseSeries(program, windowSeries);
    add(program, {u"100"_s, u"00"_s, u"80"_s, u"00"_s}, 1);
    add(program, {u"100"_s, u"00"_s, u"80"_s, u"00"_s}, 2);
    program.click(u"CmdDelAll"_s);
    answerBox(program, u"האם אתה בטוח שברצונך למחוק את  כל הזמנות ??"_s, u"מחיקת הכל"_s, yesButton);
    expect(program.waitForRows(orderGrid, 0), "no line");
    expect(program.waitForText(u"LabelLinesInOrder"_s, u"0"_s), "no line is counted");
    program.click(u"CmdCloseOrder"_s);
    answerBox(program, u"לא ניתן לסגור הזמנה בגלל שאין אף שורה בהזמנה זו!"_s, u"ProjZomrel"_s,
              okButton);
    add(program, {u"70"_s, u"00"_s, u"70"_s, u"00"_s}, 1);
    closeOrder(program);
    return number;
}

} // namespace

Week workAWeek(Program& program, const std::function<void()>& betweenOrders)
{
    // The door mark of a series cannot be set on any screen, so the door series is inserted
    // directly.
    addSeries(program, doorSeries, 1, 1, u"d2000"_s);
    program.start();
    Week week;
    enterSeries(program);
    mendSeries(program);
    enterKinds(program);
    week.first = workOnTheFirst(program);
    week.second = workOnTheSecond(program);
    changeTheFirst(program, week.first);
    betweenOrders();
    week.third = workOnTheThird(program);
    week.next = openEmptyOrder(program);
    program.clickTag(u"Exit"_s);
    expect(program.exitStatus() == 0, "the end");
    return week;
}

} // namespace journeys
