// The rows that the week leaves in the store, calculated by hand.

#include "journeys/week.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace journeys {

namespace {

constexpr int shutterCount = 10;

struct Line
{
    int order;
    int number;
    QString series;
    QString kind;
    QList<double> opening;
    QList<double> cuts;    ///< Width and height of the frame, the sash, the glass and the mesh.
    QList<double> counts;  ///< Counts of the frame, the sash, the glass and the mesh.
    QList<double> shutter; ///< The fields from MyWidth_2 to Argaz_Height; empty if all are 0.
    QString frameKind;
    QString glassColour;
};

const QString numbers =
    u"MyWidth, MYHeight, Mashkof_W, Mashkof_H, Kanaf_W, Kanaf_H, Glass_W, Glass_H, Reshet_W,"
    " Reshet_H, Mahkof_Count, Kanaf_Count, Glass_Count, Reshet_Count, MyWidth_2, MYHeight_2,"
    " U_Thick, U_Cut, U_Vasa, Shalav_Thick, Shalav_Width, Shalav_Count, Argaz_Width,"
    " Argaz_Height"_s;
const QString texts = u"Name, Kind, Mashof_Kind, Mahkof_Color, Kanaf_Kind, Kanaf_Color, Glass_Kind,"
                      " Glass_Color, Reshet_Kind, Reshet_Color, Rem, Sign"_s;

/// An ordinary window with two sashes. The frame is 1 narrower and 1.5 lower than the opening. The
/// sash takes 4.2 off the width and 7.5 off the height, the glass 13.4 and 16, the mesh 6.3 and
/// 8.25; their widths are divided by the number of sashes.
Line ordinary(int order, int number, double width, double height)
{
    return {order,
            number,
            u"מחלון 9000"_s,
            u"אור"_s,
            {width, height},
            {width - 1, height - 1.5, (width - 4.2) / 2, height - 7.5, (width - 13.4) / 2,
             height - 16, (width - 6.3) / 2, height - 8.25},
            {2, 4, 2, 2},
            {},
            {},
            {}};
}

QList<Line> expectedLines(const Week& week)
{
    const QString window = u"מחלון 9000"_s;
    const QString frame = u"פרופיל כבד"_s;
    const QString glass = u"תכלת"_s;
    return {
        {week.first,
         1,
         window,
         u"אור"_s,
         {120.5, 100.25},
         {119.5, 98.75, 58.15, 92.75, 53.55, 84.25, 57.1, 92},
         {2, 4, 2, 2},
         {},
         frame,
         glass},
        // Subtracting 2.80 from the width and 18 from the height gives 117.7 by 82.25. The shutter
        // has a 6.5 profile, U cuts of 100.25 - 14 and 100.25 - 17.6, and slats of 4.5 with the
        // length 120.5 - 12.7. The slat count is 92.25 / 4.5 = 20.5, rounded half to even.
        {week.first,
         2,
         window,
         u"מונו בלוק : 10"_s,
         {120.5, 100.25},
         {116.7, 80.75, 56.75, 74.75, 52.15, 66.25, 55.7, 74},
         {2, 4, 2, 2},
         {117.7, 82.25, 6.5, 86.25, 82.65, 4.5, 107.8, 20, 120.5, 18},
         frame,
         glass},
        // A door with one sash in a frame of thickness 4; the sash is computed from 82 by 206.
        {week.first,
         3,
         u"דלת 4500"_s,
         u"אור"_s,
         {90, 210},
         {89, 208.5, 77.8, 198.5, 0, 0, 0, 0},
         {2, 1, 1, 1},
         {82, 206, 4, 0, 0, 0, 0, 0, 0, 0},
         frame,
         glass},
        ordinary(week.first, 4, 80, 60),
        // The report renumbers only the first line. The fourth line was added after the third.
        ordinary(week.second, 1, 60.5, 70),
        ordinary(week.second, 3, 200, 150),
        ordinary(week.second, 4, 60, 60),
        ordinary(week.third, 1, 70, 70),
    };
}

void compareNumbers(const QVariantList& seen, const Line& line)
{
    QList<double> expected = line.opening + line.cuts + line.counts;
    expected += line.shutter.isEmpty() ? QList<double>(shutterCount) : line.shutter;
    QCOMPARE(seen.size(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const QString context = u"order %1, line %2, number %3: %4 instead of %5"_s.arg(line.order)
                                    .arg(line.number)
                                    .arg(i)
                                    .arg(seen[i].toString())
                                    .arg(expected[i]);
        QVERIFY2(!seen[i].isNull() && qAbs(seen[i].toDouble() - expected[i]) < 1e-9,
                 qPrintable(context));
    }
}

QString ordersOf(const Week& week)
{
    return u"(%1, %2, %3, %4)"_s.arg(week.first).arg(week.second).arg(week.third).arg(week.next);
}

void compareLines(Program& program, const Week& week, const QStringList& days)
{
    const QString where = u" FROM Cuts WHERE Order_Num IN "_s + ordersOf(week);
    const QList<Line> expected = expectedLines(week);
    QCOMPARE(program.scalar(u"SELECT count(*)"_s + where).toInt(), int(expected.size()));
    for (const Line& line : expected) {
        const QString row =
            where + u" AND Order_Num = %1 AND NUM = %2"_s.arg(line.order).arg(line.number);
        QCOMPARE(program.scalar(u"SELECT count(*)"_s + row).toInt(), 1);
        compareNumbers(program.rows(u"SELECT "_s + numbers + row).value(0), line);
        const QVariantList seen = program.rows(u"SELECT "_s + texts + row).value(0);
        const QVariant nothing = program.scalar(u"SELECT NULL"_s);
        QCOMPARE(seen,
                 QVariantList({line.series, line.kind,
                               line.frameKind.isNull() ? u""_s : line.frameKind, u""_s, u""_s,
                               u""_s, u""_s, line.glassColour.isNull() ? u""_s : line.glassColour,
                               u""_s, u""_s, nothing, nothing}));
        QVERIFY(days.contains(program.scalar(u"SELECT Order_Date"_s + row).toString()));
    }
}

void compareOrders(Program& program, const Week& week, const QStringList& days)
{
    const QVariant nothing = program.scalar(u"SELECT NULL"_s);
    const auto order = [&](int number) {
        return program
            .rows(u"SELECT Open_Close, CustomerName, CustomerAddress, CustomerTel FROM Orders"
                  " WHERE Number = %1"_s.arg(number))
            .value(0);
    };
    QCOMPARE(order(week.first),
             QVariantList({-1, u"אבי כהן"_s, u"הרצל 5, חיפה"_s, u"052-7654321"_s}));
    QCOMPARE(order(week.second), QVariantList({-1, nothing, nothing, nothing}));
    QCOMPARE(order(week.third), QVariantList({-1, u"דנה לוי"_s, nothing, nothing}));
    QCOMPARE(order(week.next), QVariantList({0, nothing, nothing, nothing}));
    for (const QVariantList& row :
         program.rows(u"SELECT Order_Date FROM Orders WHERE Number IN "_s + ordersOf(week)))
        QVERIFY(days.contains(row[0].toString()));
}

void compareCatalogue(Program& program)
{
    const QList<QVariantList> series = program.rows(
        u"SELECT Mashkof_W, Mashkof_H, Kanaf_W, Kanaf_H, Glass_W, Glass_H, Reshet_W, Reshet_H,"
        " Nativ_Num, Kanaf_Num, Rem, ifnull(Sign, '') FROM Serials WHERE Name = 'מחלון 9000'"_s);
    QCOMPARE(series, QList<QVariantList>({QVariantList({-1.0, -1.5, -4.2, -7.5, -13.4, -16.0, -6.3,
                                                        -8.25, 3, 2, u"הזזה"_s, u""_s})}));
    const auto names = [&](const QString& table) {
        QStringList all;
        for (const QVariantList& row :
             program.rows(u"SELECT Name FROM %1 ORDER BY Code"_s.arg(table)))
            all.append(row[0].toString());
        return all;
    };
    // Another station may have added entries after these.
    QCOMPARE(names(u"MashkofKind"_s).count(u"פרופיל כבד"_s), 1);
    QCOMPARE(names(u"GlassColor"_s).count(u"תכלת"_s), 1);
    QCOMPARE(names(u"KanafColor"_s).first(), u"לבן מט"_s);
    QCOMPARE(names(u"ReshetColor"_s).mid(0, 2), QStringList({u"אפור"_s, u"לבן"_s}));
}

} // namespace

void compareWeek(Program& program, const Week& week, const QStringList& days)
{
    compareLines(program, week, days);
    compareOrders(program, week, days);
    compareCatalogue(program);
}

void removeWeek(Program& program, const Week& week)
{
    program.execute(u"DELETE FROM Cuts WHERE Order_Num IN "_s + ordersOf(week));
    program.execute(u"DELETE FROM Orders WHERE Number IN "_s + ordersOf(week));
    program.execute(u"DELETE FROM Serials WHERE Name IN ('מחלון 9000', 'דלת 4500')"_s);
    program.execute(u"DELETE FROM MashkofKind WHERE Name = 'פרופיל כבד'"_s);
    program.execute(u"DELETE FROM GlassColor WHERE Name = 'תכלת'"_s);
    program.execute(u"UPDATE KanafColor SET Name = 'לבן' WHERE Name = 'לבן מט'"_s);
    program.execute(u"INSERT INTO ReshetColor (Code, Name) VALUES (2, 'שחור')"_s);
}

} // namespace journeys
