#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"
#include "tools/store/line_figures.h"
#include "tools/store/place.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using storetools::CheckReport;
using storetools::StoredFields;

namespace {

/// A store with one line that follows from its series.
class FiguresTest : public testing::Test
{
protected:
    FiguresTest()
    {
        addSeriesOfLines();
        store_.addOrder(1);
        store_.addLine(1, 1);
    }

    void addSeriesOfLines()
    {
        store_.addSeries(u"סדרה"_s, {-0.6, -0.6, -2.8, -6.5, -19.6, -19.7, -2.4, -6.9}, 2, 2);
    }

    CheckReport report() const
    {
        return storetools::checkReport(storetools::Place(store_.path()),
                                       storetools::Figures::Computed);
    }

    testsupport::TemporaryStore store_;
};

/// The series of all examples below, with this number of sashes.
StoredFields exampleSeries(int sashes, const QString& sign = {})
{
    StoredFields series{{u"Mashkof_W"_s, -1.0}, {u"Mashkof_H"_s, -1.5}, {u"Kanaf_W"_s, -4.2},
                        {u"Kanaf_H"_s, -7.5},   {u"Glass_W"_s, -13.4},  {u"Glass_H"_s, -16.0},
                        {u"Reshet_W"_s, -6.3},  {u"Reshet_H"_s, -8.25}, {u"Kanaf_Num"_s, sashes}};
    if (!sign.isEmpty())
        series.insert(u"Sign"_s, sign);
    return series;
}

QMap<QString, double> figures(const StoredFields& line, const StoredFields& series)
{
    QMap<QString, double> all;
    for (const auto& [field, value] : storetools::figuresOf(line, series))
        all.insert(field, value);
    return all;
}

void expectFigures(const QMap<QString, double>& computed, const QMap<QString, double>& expected)
{
    for (auto each = expected.cbegin(); each != expected.cend(); ++each) {
        EXPECT_TRUE(computed.contains(each.key())) << each.key().toStdString();
        EXPECT_NEAR(computed.value(each.key()), each.value(), 1e-9) << each.key().toStdString();
    }
}

} // namespace

TEST_F(FiguresTest, LineThatFollowsFromItsSeriesIsNoFinding)
{
    EXPECT_EQ(report().findings, QStringList());
    EXPECT_EQ(report().remarks, QStringList());
}

TEST_F(FiguresTest, FlippedBitIsFoundWithTheStoredAndTheComputedFigure)
{
    // 93.5 and 125.5 differ in one bit.
    store_.execute(u"UPDATE Cuts SET Kanaf_H = 125.5"_s);
    EXPECT_EQ(report().findings,
              QStringList{u"Cuts, Code 1 (order 1, line 1): Kanaf_H is 125.5, and its series gives "
                          "93.5"_s});
    EXPECT_EQ(storetools::checkStore(store_.path()), QStringList());
}

TEST_F(FiguresTest, ChangedSeriesIsFound)
{
    store_.execute(u"UPDATE Serials SET Kanaf_Num = 4"_s);
    // Three widths and three counts depend on the number of sashes.
    EXPECT_EQ(report().findings.size(), 6) << report().findings.join(u'\n').toStdString();
}

TEST_F(FiguresTest, LineMayFollowFromAnyOfTheSeriesOfItsName)
{
    store_.execute(u"UPDATE Serials SET Kanaf_H = 0"_s);
    EXPECT_EQ(report().findings.size(), 1);
    addSeriesOfLines();
    EXPECT_EQ(report().findings, QStringList());
}

TEST_F(FiguresTest, LineOfADeletedSeriesIsARemark)
{
    store_.execute(u"DELETE FROM Serials"_s);
    EXPECT_EQ(report().findings, QStringList());
    EXPECT_EQ(report().remarks,
              QStringList{u"Cuts: 1 lines cannot be computed again, there is no series 'סדרה'"_s});
}

TEST_F(FiguresTest, SeriesThatCannotBeComputedIsFound)
{
    store_.execute(u"UPDATE Serials SET Glass_W = NULL"_s);
    EXPECT_TRUE(report().findings.contains(
        u"Cuts, Code 1 (order 1, line 1): its series cannot be computed: Invalid use of Null"_s));
}

TEST_F(FiguresTest, RepeatedLineNumberIsARemark)
{
    store_.addLine(1, 1);
    EXPECT_EQ(report().findings, QStringList());
    EXPECT_EQ(report().remarks, QStringList{u"Cuts: 2 lines of order 1 have the number 1"_s});
}

TEST(LineFiguresTest, OrdinaryWindowWithTwoSashes)
{
    const StoredFields line{{u"MyWidth"_s, 120.5}, {u"MYHeight"_s, 100.25}, {u"Kind"_s, u"אור"_s}};
    expectFigures(figures(line, exampleSeries(2)), {{u"Mashkof_W"_s, 119.5},
                                                    {u"Mashkof_H"_s, 98.75},
                                                    {u"Kanaf_W"_s, 58.15},
                                                    {u"Kanaf_H"_s, 92.75},
                                                    {u"Glass_W"_s, 53.55},
                                                    {u"Glass_H"_s, 84.25},
                                                    {u"Reshet_W"_s, 57.1},
                                                    {u"Reshet_H"_s, 92},
                                                    {u"Kanaf_Count"_s, 4},
                                                    {u"Glass_Count"_s, 2},
                                                    {u"Mahkof_Count"_s, 2},
                                                    {u"U_Thick"_s, 0},
                                                    {u"MyWidth_2"_s, 0},
                                                    {u"Argaz_Width"_s, 0},
                                                    {u"Shalav_Count"_s, 0}});
}

TEST(LineFiguresTest, Monoblock)
{
    const StoredFields line{{u"MyWidth"_s, 120.5},           {u"MYHeight"_s, 100.25},
                            {u"MyWidth_2"_s, 118.0},         {u"Argaz_Height"_s, 18.0},
                            {u"Shalav_Thick"_s, 4.5},        {u"U_Thick"_s, 6.5},
                            {u"Kind"_s, u"מונו בלוק : 10"_s}};
    expectFigures(figures(line, exampleSeries(2)), {{u"Mashkof_W"_s, 117},
                                                    {u"Mashkof_H"_s, 80.75},
                                                    {u"Kanaf_W"_s, 56.9},
                                                    {u"Kanaf_H"_s, 74.75},
                                                    {u"Glass_W"_s, 52.3},
                                                    {u"Glass_H"_s, 66.25},
                                                    {u"Reshet_W"_s, 55.85},
                                                    {u"Reshet_H"_s, 74},
                                                    {u"MYHeight_2"_s, 82.25},
                                                    {u"U_Cut"_s, 86.25},
                                                    {u"U_Vasa"_s, 82.65},
                                                    {u"Shalav_Width"_s, 107.8},
                                                    {u"Shalav_Count"_s, 20},
                                                    {u"Argaz_Width"_s, 120.5},
                                                    {u"Kanaf_Count"_s, 4}});
    StoredFields thin = line;
    thin.insert(u"U_Thick"_s, 5.3);
    expectFigures(figures(thin, exampleSeries(2)), {{u"Shalav_Width"_s, 110.2}});
}

TEST(LineFiguresTest, DoorFrame)
{
    const StoredFields line{
        {u"MyWidth"_s, 90.0}, {u"MYHeight"_s, 210.0}, {u"U_Thick"_s, 4.0}, {u"Kind"_s, u"אור"_s}};
    expectFigures(figures(line, exampleSeries(1, u"d2000"_s)), {{u"Mashkof_W"_s, 89},
                                                                {u"Mashkof_H"_s, 208.5},
                                                                {u"Kanaf_W"_s, 77.8},
                                                                {u"Kanaf_H"_s, 198.5},
                                                                {u"Glass_W"_s, 0},
                                                                {u"Glass_H"_s, 0},
                                                                {u"Reshet_W"_s, 0},
                                                                {u"Reshet_H"_s, 0},
                                                                {u"MyWidth_2"_s, 82},
                                                                {u"MYHeight_2"_s, 206},
                                                                {u"Kanaf_Count"_s, 1},
                                                                {u"Glass_Count"_s, 1}});
}
