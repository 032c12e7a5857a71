#include "demo/openings.h"

#include <QBuffer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// Reads a table with the correct header line and the given rows.
demo::Openings read(const QString& rows)
{
    QByteArray bytes = (demo::columns().join(u',') + u'\n' + rows).toUtf8();
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    return demo::readOpenings(file);
}

TEST(Openings, ParsesAnOrdinaryWindow)
{
    const demo::Openings openings =
        read(u"בלגי,120.5,100,פרופיל,לבן,כנף,לבן,שקוף,אפור,רשת,שחור,,,,,,\n"_s);
    EXPECT_TRUE(openings.bad.empty());
    ASSERT_EQ(openings.rows.size(), 1u);
    const demo::Opening& opening = openings.rows[0];
    EXPECT_EQ(opening.lineNumber, 2);
    EXPECT_EQ(opening.series, u"בלגי"_s);
    EXPECT_EQ(opening.width.whole, u"120"_s);
    EXPECT_EQ(opening.width.hundredths, u"50"_s);
    EXPECT_EQ(opening.height.hundredths, u"00"_s);
    EXPECT_EQ(opening.kinds[2], u"שקוף"_s);
    EXPECT_EQ(opening.colours[3], u"שחור"_s);
    EXPECT_FALSE(opening.monoblock);
    EXPECT_FALSE(opening.doorThickness);
}

TEST(Openings, ParsesAMonoblockAndADoor)
{
    const demo::Openings openings = read(u"א,120,100,,,,,,,,,3,1.05,20.08,5.3,4.5,\n"
                                         "ב,90,210,,,,,,,,,,,,,,4.25\n"_s);
    EXPECT_TRUE(openings.bad.empty());
    ASSERT_EQ(openings.rows.size(), 2u);
    ASSERT_TRUE(openings.rows[0].monoblock);
    EXPECT_EQ(openings.rows[0].monoblock->type, 2);
    EXPECT_EQ(openings.rows[0].monoblock->widthDeduction.hundredths, u"05"_s);
    EXPECT_EQ(openings.rows[0].monoblock->uThickness, u"5.3"_s);
    EXPECT_EQ(openings.rows[0].monoblock->slatThickness.hundredths, u"50"_s);
    ASSERT_TRUE(openings.rows[1].doorThickness);
    EXPECT_EQ(openings.rows[1].doorThickness->whole, u"4"_s);
}

TEST(Openings, EmptyMonoblockColumnsStayEmpty)
{
    const demo::Openings openings = read(u"א,120,100,,,,,,,,,1,,,,,\n"_s);
    ASSERT_EQ(openings.rows.size(), 1u);
    EXPECT_TRUE(openings.rows[0].monoblock->widthDeduction.whole.isEmpty());
    EXPECT_TRUE(openings.rows[0].monoblock->uThickness.isEmpty());
}

TEST(Openings, InvalidRowIsReportedWithItsLineNumber)
{
    const QStringList bad{
        u",120,100,,,,,,,,,,,,,,"_s,
        u"א,12a,100,,,,,,,,,,,,,,"_s,
        u"א,1200,100,,,,,,,,,,,,,,"_s,
        u"א,120.555,100,,,,,,,,,,,,,,"_s,
        u"א,120,,,,,,,,,,,,,,,"_s,
        u"א,0.5,100,,,,,,,,,,,,,,"_s,
        u"א,-5,100,,,,,,,,,,,,,,"_s,
        u"א,120,100,,,,,,,,,4,,,,,"_s,
        u"א,120,100,,,,,,,,,1,,,7,,"_s,
        u"א,120,100,,,,,,,,,,,,,,four"_s,
        u"א,120,100"_s,
        u"\"א,120,100,,,,,,,,,,,,,,"_s,
    };
    for (const QString& row : bad) {
        const demo::Openings openings =
            read(u"א,120,100,,,,,,,,,,,,,,\n"_s + row + u"\nא,80,60,,,,,,,,,,,,,,\n"_s);
        EXPECT_EQ(openings.rows.size(), 2u) << qPrintable(row);
        ASSERT_EQ(openings.bad.size(), 1u) << qPrintable(row);
        EXPECT_EQ(openings.bad[0].lineNumber, 3) << qPrintable(row);
        EXPECT_FALSE(openings.bad[0].reason.isEmpty()) << qPrintable(row);
    }
}

TEST(Openings, CommaInsideQuotesIsKept)
{
    const demo::Openings openings = read(u"\"א, \"\"ב\"\"\",120,100,,,,,,,,,,,,,,\n"_s);
    ASSERT_EQ(openings.rows.size(), 1u);
    EXPECT_EQ(openings.rows[0].series, u"א, \"ב\""_s);
}

TEST(Openings, QuoteInsideACellIsKept)
{
    const demo::Openings openings = read(u"א,120,100,,,,,זכוכית 5 מ\"מ,,,,,,,,,\n"_s);
    ASSERT_EQ(openings.rows.size(), 1u);
    EXPECT_EQ(openings.rows[0].kinds[2], u"זכוכית 5 מ\"מ"_s);
}

TEST(Openings, MissingHeaderLineIsRefused)
{
    QByteArray bytes("a,b,c\n");
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    const demo::Openings openings = demo::readOpenings(file);
    EXPECT_TRUE(openings.rows.empty());
    ASSERT_EQ(openings.bad.size(), 1u);
    EXPECT_EQ(openings.bad[0].lineNumber, 1);
}

} // namespace
