#include "store/line_columns.h"

#include "store/schema.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString fieldAt(int ordinal)
{
    return store::tableSchema(u"Cuts"_s)->fields[std::size_t(ordinal)].name;
}

TEST(LineColumns, NameTheFieldsOfTheOpeningAndTheShutter)
{
    EXPECT_EQ(fieldAt(store::line::openingWidth), u"MyWidth"_s);
    EXPECT_EQ(fieldAt(store::line::openingHeight), u"MYHeight"_s);
    EXPECT_EQ(fieldAt(store::line::windowKind), u"Kind"_s);
    EXPECT_EQ(fieldAt(store::line::firstOfShutter), u"MyWidth_2"_s);
    EXPECT_EQ(fieldAt(store::line::lastOfShutter), u"Shalav_Count"_s);
    EXPECT_EQ(fieldAt(store::line::orderNumber), u"Order_Num"_s);
    EXPECT_EQ(fieldAt(store::line::remark), u"Rem"_s);
    EXPECT_EQ(fieldAt(store::line::boxWidth), u"Argaz_Width"_s);
    EXPECT_EQ(fieldAt(store::line::boxHeight), u"Argaz_Height"_s);
}

TEST(LineColumns, NameTheFiveFieldsOfEachPart)
{
    const QStringList measures{u"Mashkof"_s, u"Kanaf"_s, u"Glass"_s, u"Reshet"_s};
    const QStringList kinds{u"Mashof_Kind"_s, u"Kanaf_Kind"_s, u"Glass_Kind"_s, u"Reshet_Kind"_s};
    const QStringList others{u"Mahkof"_s, u"Kanaf"_s, u"Glass"_s, u"Reshet"_s};
    for (int part = 0; part < store::line::partCount; ++part) {
        EXPECT_EQ(fieldAt(store::line::cutWidth(part)), measures[part] + u"_W"_s);
        EXPECT_EQ(fieldAt(store::line::cutHeight(part)), measures[part] + u"_H"_s);
        EXPECT_EQ(fieldAt(store::line::kind(part)), kinds[part]);
        EXPECT_EQ(fieldAt(store::line::colour(part)), others[part] + u"_Color"_s);
        EXPECT_EQ(fieldAt(store::line::count(part)), others[part] + u"_Count"_s);
    }
}

TEST(LineColumns, MeasuresRunFromTheOpeningWidthToTheMeshHeight)
{
    EXPECT_EQ(store::line::measureIndex(store::line::openingWidth), 0u);
    EXPECT_EQ(store::line::measureIndex(store::line::cutHeight(3)) + 1, store::line::measureCount);
}

TEST(LineColumns, NamedFieldsAreNotReachedByOrdinal)
{
    using store::line::isReachedByOrdinal;
    // Code and Name before the measures; Order_Num and Rem; Order_Date, NUM and Sign at the end.
    for (const int named : {0, 1, 33, 34, 37, 38, 39})
        EXPECT_FALSE(isReachedByOrdinal(named)) << named;
    for (const int fixed : {2, 3, 11, 12, 23, 24, 25, 32, 35, 36})
        EXPECT_TRUE(isReachedByOrdinal(fixed)) << fixed;
}

} // namespace
