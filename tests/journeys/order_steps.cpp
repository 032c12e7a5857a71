#include "journeys/order_steps.h"

#include <QTest>

using namespace Qt::StringLiterals;

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

void openPickerOn(Program& program, const QString& name)
{
    const QString grid = u"FormSelectSerial/DBGrid1"_s;
    program.click(u"CmdPicSerial"_s);
    if (!program.waitForWindow(grid))
        qFatal("the picker did not open");
    for (int row = 0; row < program.gridRowCount(grid); ++row) {
        if (program.gridRow(grid, row).value(2) == name) {
            program.clickCell(grid, row, 2);
            return;
        }
    }
    qFatal("no series %s in the picker", qPrintable(name));
}

void chooseSeries(Program& program, const QString& name)
{
    openPickerOn(program, name);
    program.click(u"FormSelectSerial/CmdPic"_s);
    if (!program.waitForGone(u"FormSelectSerial"_s) || !program.waitForText(u"LabelSerial"_s, name))
        qFatal("%s was not chosen", qPrintable(name));
}

void typeOpening(Program& program, const QString& width, const QString& widthHundredths,
                 const QString& height, const QString& heightHundredths)
{
    // Clicking the box again would remove its selection, so the click is skipped if it has the
    // focus.
    if (program.focusName() != u"TextNum_0")
        program.click(u"FrOrder/TextNum_0"_s);
    const QStringList texts{width, widthHundredths, height, heightHundredths};
    for (int box = 0; box < texts.size(); ++box) {
        const QString name = u"TextNum_%1"_s.arg(box);
        if (!QTest::qWaitFor([&] { return program.focusName() == name; }))
            qFatal("Enter moved the focus not to %s but to %s", qPrintable(name),
                   qPrintable(program.focusName()));
        program.type(texts[box]);
        program.press(Qt::Key_Return);
    }
}

void addLine(Program& program, int linesAfter)
{
    program.click(u"CmdAdd"_s);
    if (!program.waitForRows(u"FrOrder/DBGrid1"_s, linesAfter))
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
