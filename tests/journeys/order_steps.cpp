#include "journeys/order_steps.h"

#include <QTest>

using namespace Qt::StringLiterals;
namespace names = driving::names;

namespace journeys {

int addSeries(Program& program, const QString& name, int kanafNum, int nativNum,
              const QString& sign)
{
    const QString next = u"(SELECT IFNULL(MAX(AutoNum), 0) + 1 FROM Serials)"_s;
    program.execute(
        u"INSERT INTO Serials (AutoNum, Name, Mashkof_W, Mashkof_H, Kanaf_W, Kanaf_H, Glass_W,"
        " Glass_H, Reshet_W, Reshet_H, Nativ_Num, Kanaf_Num, Sign) VALUES (%1, '%2', -1, -1.5,"
        " -4.2, -7.5, -13.4, -16, -6.3, -8.25, %3, %4, '%5')"_s.arg(next, name)
            .arg(nativNum)
            .arg(kanafNum)
            .arg(sign));
    return program.scalar(u"SELECT MAX(AutoNum) FROM Serials"_s).toInt();
}

void openOrder(Program& program)
{
    program.clickTag(u"Order"_s);
    if (!program.waitForWindow(names::orderForm))
        qFatal("the order form did not open");
}

void openPickerOn(Program& program, const QString& name)
{
    const QString grid = names::picker + u'/' + names::seriesGrid;
    constexpr int column = driving::seriesNameColumn;
    program.click(names::openPicker);
    if (!program.waitForWindow(grid))
        qFatal("the picker did not open");
    for (int row = 0; row < program.gridRowCount(grid); ++row) {
        if (program.gridRow(grid, row).value(column) == name) {
            program.clickCell(grid, row, column);
            return;
        }
    }
    qFatal("no series %s in the picker", qPrintable(name));
}

void tickMonoblock(Program& program)
{
    program.click(names::monoblock);
    // The first type of monoblock proposes a height deduction of 18.
    if (!program.waitForText(names::picker + u'/' + names::measureBox(2), u"18"_s))
        qFatal("the picker proposes no monoblock");
}

void takeSeries(Program& program)
{
    program.click(names::picker + u'/' + names::takeSeries);
}

void chooseSeries(Program& program, const QString& name)
{
    openPickerOn(program, name);
    takeSeries(program);
    if (!program.waitForGone(names::picker) || !program.waitForText(u"LabelSerial"_s, name))
        qFatal("%s was not chosen", qPrintable(name));
}

void typeOpening(Program& program, const driving::Boxes& width, const driving::Boxes& height)
{
    // Clicking the box again would remove its selection, so the click is skipped if it has the
    // focus.
    const QString firstBox = names::measureBox(0);
    if (program.focusName() != firstBox)
        program.click(names::orderForm + u'/' + firstBox);
    for (const driving::Entry& each : driving::measureEntries({width, height, {}, {}, {}})) {
        if (!QTest::qWaitFor([&] { return program.focusName() == each.control; }, patience))
            qFatal("Enter moved the focus not to %s but to %s", qPrintable(each.control),
                   qPrintable(program.focusName()));
        program.type(each.text);
        program.press(Qt::Key_Return);
    }
}

void addLine(Program& program, int linesAfter)
{
    program.click(names::addLine);
    if (!program.waitForRows(names::orderForm + u"/DBGrid1"_s, linesAfter))
        qFatal("the line was not added");
}

QVariantList line(Program& program, int order, int number, const QString& fields)
{
    const QList<QVariantList> rows = program.rows(
        u"SELECT %1 FROM Cuts WHERE Order_Num = %2 AND NUM = %3"_s.arg(fields).arg(order).arg(
            number));
    return rows.size() == 1 ? rows.first() : QVariantList();
}

} // namespace journeys
