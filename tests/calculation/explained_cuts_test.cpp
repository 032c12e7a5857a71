#include "calculation/explained_cuts.h"

#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using cuts::ComputedLine;
using cuts::Side;
using cuts::TodaysSeries;

namespace {

const QString changedSeries = u"הסדרה שונתה אחרי שהשורה נוספה, ולכן אין הסבר למידה."_s;

/// A sliding window with two sashes. It takes 0.6 off the frame, 2.8 and 6.5 off the sash.
TodaysSeries sliding()
{
    return {.series = {.deductions = {{{-0.6, -0.6}, {-2.8, -6.5}, {-19.6, -19.7}, {2.4, 0.0}}},
                       .kanafNum = 2.0}};
}

/// A formula as the tool tip shows it, in left-to-right order.
QString formula(const QString& text)
{
    return u"\u2066"_s + text + u"\u2069"_s;
}

// By hand: (120 - 2.8) / 2 = 58.6, 100 - 6.5 = 93.5, (120 - 19.6) / 2 = 50.2, 100 - 19.7 = 80.3,
// (120 + 2.4) / 2 = 61.2.
ComputedLine window()
{
    ComputedLine line;
    line.opening = {120, 100};
    line.parts = {{{119.4, 99.4}, {58.6, 93.5}, {50.2, 80.3}, {61.2, 100}}};
    line.counts = {2, 4, 2, 2};
    return line;
}

QString widthTip(const ComputedLine& line, cuts::Part part, const TodaysSeries& series)
{
    return explainedSize(line, part, Side::Width, &series);
}

QString heightTip(const ComputedLine& line, cuts::Part part, const TodaysSeries& series)
{
    return explainedSize(line, part, Side::Height, &series);
}

/// A door with one sash. It takes 1 and 1.5 off the frame, 0.8 and 1.2 off the sash.
TodaysSeries entrance()
{
    return {.series = {.deductions = {{{-1.0, -1.5}, {-0.8, -1.2}, {0.0, 0.0}, {0.0, 0.0}}},
                       .kanafNum = 1.0},
            .isDoor = true};
}

/// The stored line of a monoblock door, whose frame is 4 thick. By hand: the monoblock takes off
/// 2.8 and 18; 90 - 2.8 = 87.2, 87.2 - 1 = 86.2; 210 - 18 = 192, 192 - 1.5 = 190.5; the sash is
/// 90 - 2 * 4 - 0.8 = 81.2 and 210 - 4 - 1.2 = 204.8. The stored reduced width is 90 - 2 * 4 = 82.
ComputedLine monoblockDoor()
{
    ComputedLine line;
    line.opening = {90, 210};
    line.isMonoblock = true;
    line.reduced = {82, 192};
    line.doorThickness = 4;
    line.parts = {{{86.2, 190.5}, {81.2, 204.8}, {0, 0}, {0, 0}}};
    line.counts = {2, 1, 1, 1};
    return line;
}

} // namespace

TEST(ExplainedCuts, WidthOfASashShowsOpeningDeductionDivisorAndResult)
{
    EXPECT_EQ(widthTip(window(), cuts::Kanaf, sliding()), formula(u"(120 − 2.8) ÷ 2 = 58.6"_s));
    EXPECT_EQ(heightTip(window(), cuts::Kanaf, sliding()), formula(u"100 − 6.5 = 93.5"_s));
}

TEST(ExplainedCuts, FrameIsNotDivided)
{
    EXPECT_EQ(widthTip(window(), cuts::Mashkof, sliding()), formula(u"120 − 0.6 = 119.4"_s));
}

TEST(ExplainedCuts, AdditionIsShownAsPlus)
{
    EXPECT_EQ(widthTip(window(), cuts::Reshet, sliding()), formula(u"(120 + 2.4) ÷ 2 = 61.2"_s));
}

// By hand: 120.5 - 2.5 = 118, (118 - 2.8) / 2 = 57.6; 100 - 18 = 82, 82 - 6.5 = 75.5.
TEST(ExplainedCuts, MonoblockShowsItsOwnDeductionFirst)
{
    ComputedLine line;
    line.opening = {120.5, 100};
    line.isMonoblock = true;
    line.reduced = {118, 82};
    line.parts[cuts::Kanaf] = {57.6, 75.5};
    EXPECT_EQ(widthTip(line, cuts::Kanaf, sliding()),
              formula(u"((120.5 − 2.5) − 2.8) ÷ 2 = 57.6"_s));
    EXPECT_EQ(heightTip(line, cuts::Kanaf, sliding()), formula(u"(100 − 18) − 6.5 = 75.5"_s));
}

// 160 - 157.2 is 2.8000000000000114 in binary fractions.
TEST(ExplainedCuts, MonoblocksDeductionHasNoNoiseOfTheSubtraction)
{
    ComputedLine line;
    line.opening = {160, 120};
    line.isMonoblock = true;
    line.reduced = {157.2, 102};
    line.parts[cuts::Kanaf] = {77.2, 95.5};
    EXPECT_EQ(widthTip(line, cuts::Kanaf, sliding()), formula(u"((160 − 2.8) − 2.8) ÷ 2 = 77.2"_s));
}

// By hand: 90 - 2 * 4 = 82, 82 - 0.8 = 81.2; 210 - 4 = 206, 206 - 1.2 = 204.8.
TEST(ExplainedCuts, DoorShowsTheThicknessOfItsFrame)
{
    const TodaysSeries door = entrance();
    ComputedLine line;
    line.opening = {90, 210};
    line.doorThickness = 4;
    line.parts = {{{89, 208.5}, {81.2, 204.8}, {0, 0}, {0, 0}}};
    EXPECT_EQ(widthTip(line, cuts::Kanaf, door), formula(u"(90 − 2 × 4) − 0.8 = 81.2"_s));
    EXPECT_EQ(heightTip(line, cuts::Kanaf, door), formula(u"(210 − 4) − 1.2 = 204.8"_s));
    EXPECT_EQ(widthTip(line, cuts::Glass, door), u"0, כי לדלת אין זכוכית ורשת."_s);
    line.parts[cuts::Glass].width = 70;
    EXPECT_EQ(widthTip(line, cuts::Glass, door), changedSeries);
    EXPECT_TRUE(followsFrom(line, door));
}

TEST(ExplainedCuts, SeriesThatWasChangedSinceIsTold)
{
    TodaysSeries changed = sliding();
    changed.series.deductions[cuts::Kanaf].width = -3.8;
    EXPECT_TRUE(followsFrom(window(), sliding()));
    EXPECT_FALSE(followsFrom(window(), changed));
    const QString text = widthTip(window(), cuts::Kanaf, changed);
    EXPECT_TRUE(text.contains(formula(u"(120 − 3.8) ÷ 2 = 58.1"_s))) << text.toStdString();
    EXPECT_TRUE(text.contains(u"הסדרה שונתה"_s) && text.contains(formula(u"58.6"_s)));
}

TEST(ExplainedCuts, SeriesThatCannotBeComputedWasChangedSince)
{
    TodaysSeries broken = sliding();
    broken.series.kanafNum = 0.0;
    EXPECT_EQ(widthTip(window(), cuts::Kanaf, broken), changedSeries);
    broken = sliding();
    broken.series.deductions[cuts::Kanaf].width.reset();
    EXPECT_EQ(widthTip(window(), cuts::Kanaf, broken), changedSeries);
}

TEST(ExplainedCuts, FrameOfAStoredMonoblockDoorTellsThatTheMonoblocksWidthIsNotStored)
{
    EXPECT_EQ(widthTip(monoblockDoor(), cuts::Mashkof, entrance()),
              formula(u"(90 − 2.8) − 1 = 86.2"_s) + u"\nהורדת הרוחב של המונובלוק, "_s +
                  formula(u"2.8"_s) +
                  u", אינה שמורה בשורה של דלת. היא חושבה מהמידה לפי הסדרה של היום."_s);
    EXPECT_EQ(heightTip(monoblockDoor(), cuts::Mashkof, entrance()),
              formula(u"(210 − 18) − 1.5 = 190.5"_s));
    EXPECT_EQ(widthTip(monoblockDoor(), cuts::Kanaf, entrance()),
              formula(u"(90 − 2 × 4) − 0.8 = 81.2"_s));
    EXPECT_TRUE(followsFrom(monoblockDoor(), entrance()));
}

TEST(ExplainedCuts, MonoblockDoorFollowsOnlyFromASeriesThatGivesTheHeightOfItsFrame)
{
    TodaysSeries other = entrance();
    other.series.deductions[cuts::Mashkof].height = -2.5;
    EXPECT_FALSE(followsFrom(monoblockDoor(), other));
}

TEST(ExplainedCuts, FrameOfAMonoblockDoorIsNotExplainedByASeriesThatWasChanged)
{
    TodaysSeries other = entrance();
    other.series.deductions[cuts::Mashkof].height = -2.5;
    EXPECT_EQ(widthTip(monoblockDoor(), cuts::Mashkof, other), changedSeries);
}

// By hand: 90 - 4 = 86 is less than the stored 86.2, so the deduction would be -0.2.
TEST(ExplainedCuts, FrameOfAMonoblockDoorIsNotExplainedByANegativeDeduction)
{
    TodaysSeries other = entrance();
    other.series.deductions[cuts::Mashkof].width = -4;
    EXPECT_EQ(widthTip(monoblockDoor(), cuts::Mashkof, other), changedSeries);
}

TEST(ExplainedCuts, FrameOfAComputedMonoblockDoorShowsBothDeductions)
{
    ComputedLine line = monoblockDoor();
    line.isStored = false;
    line.reduced = {87.2, 192};
    EXPECT_EQ(widthTip(line, cuts::Mashkof, entrance()), formula(u"(90 − 2.8) − 1 = 86.2"_s));
}

TEST(ExplainedCuts, OpeningIsToldToBeEnteredInTheUnitOfTheSeries)
{
    const TodaysSeries series = sliding();
    const QString height = u"גובה הפתח כפי שהוקלד, ביחידת המידה של הורדות הסדרה."_s;
    EXPECT_EQ(explainedOpening(window(), Side::Width, &series),
              u"רוחב הפתח כפי שהוקלד, ביחידת המידה של הורדות הסדרה."_s);
    EXPECT_EQ(explainedOpening(window(), Side::Height, &series), height);
    EXPECT_EQ(explainedOpening(monoblockDoor(), Side::Height, nullptr), height);
}

// By hand: 120.5 - 2.5 = 118, 90 - 2 * 4 = 82, 210 - 4 = 206.
TEST(ExplainedCuts, OpeningOfAMonoblockAndOfADoorShowsWhatIsLeftOfIt)
{
    const auto second = [](const QString& tip) { return tip.section(u'\n', 1); };
    ComputedLine line;
    line.opening = {120.5, 100};
    line.isMonoblock = true;
    line.reduced = {118, 82};
    const TodaysSeries series = sliding();
    const TodaysSeries door = entrance();
    EXPECT_EQ(second(explainedOpening(line, Side::Width, &series)),
              u"הרוחב שנשאר לחלון: "_s + formula(u"120.5 − 2.5 = 118"_s));
    EXPECT_EQ(second(explainedOpening(monoblockDoor(), Side::Width, &door)),
              u"הרוחב שנשאר לכנף הדלת: "_s + formula(u"90 − 2 × 4 = 82"_s));
    EXPECT_EQ(second(explainedOpening(monoblockDoor(), Side::Height, &door)),
              u"הגובה שנשאר לכנף הדלת: "_s + formula(u"210 − 4 = 206"_s));
}

TEST(ExplainedCuts, CountsOfAWindowFollowFromItsSashes)
{
    const TodaysSeries series = sliding();
    EXPECT_EQ(explainedCount(window(), cuts::Mashkof, &series),
              formula(u"2"_s) + u" (מספר קבוע, בכל הסדרות)"_s);
    EXPECT_EQ(explainedCount(window(), cuts::Kanaf, &series),
              formula(u"2 × 2 = 4"_s) + u" (מספר הכנפיים בסדרה כפול 2)"_s);
    EXPECT_EQ(explainedCount(window(), cuts::Glass, &series),
              formula(u"2"_s) + u" (מספר הכנפיים בסדרה)"_s);
    EXPECT_EQ(explainedCount(window(), cuts::Reshet, &series),
              formula(u"2"_s) + u" (מספר הכנפיים בסדרה)"_s);
}

TEST(ExplainedCuts, SashOfADoorIsStoredOnceAndShownTwiceBefore)
{
    const TodaysSeries door = entrance();
    ComputedLine line = monoblockDoor();
    EXPECT_EQ(explainedCount(line, cuts::Kanaf, &door),
              formula(u"1"_s) + u" (מספר הכנפיים בסדרה)"_s);
    line.isStored = false;
    line.counts[cuts::Kanaf] = 2;
    EXPECT_EQ(explainedCount(line, cuts::Kanaf, &door),
              formula(u"1 × 2 = 2"_s) + u" (מספר הכנפיים בסדרה כפול 2)\n"_s +
                  u"בשורה של דלת תישמר הכמות "_s + formula(u"1"_s) + u'.');
}

TEST(ExplainedCuts, CountThatDoesNotFollowFromTheSeriesIsTold)
{
    TodaysSeries changed = sliding();
    changed.series.kanafNum = 3.0;
    EXPECT_EQ(explainedCount(window(), cuts::Kanaf, &changed),
              u"לפי הסדרה של היום: "_s + formula(u"3 × 2 = 6"_s) +
                  u" (מספר הכנפיים בסדרה כפול 2)\nהכמות כאן היא "_s + formula(u"4"_s) +
                  u": הסדרה שונתה אחרי שהשורה נוספה."_s);
    EXPECT_EQ(explainedCount(window(), cuts::Glass, nullptr),
              u"הסדרה כבר אינה בקטלוג, ולכן אין הסבר לכמות."_s);
    ComputedLine line = window();
    line.counts[cuts::Mashkof] = 4;
    EXPECT_EQ(explainedCount(line, cuts::Mashkof, &changed),
              formula(u"2"_s) + u" (מספר קבוע, בכל הסדרות)\nבשורה הזאת כתובה כמות אחרת."_s);
    changed.series.kanafNum.reset();
    EXPECT_EQ(explainedCount(window(), cuts::Kanaf, &changed),
              u"הסדרה שונתה אחרי שהשורה נוספה, ולכן אין הסבר לכמות."_s);
}

// By hand: (100 - 8) / 4 = 23; (100 - 8) / 4.5 is 20.4.
TEST(ExplainedCuts, SlatsAreShownOnlyIfTheirThicknessGivesTheActualNumber)
{
    const cuts::Size opening{120, 100};
    EXPECT_EQ(cuts::explainedSlats(opening, 4, 23), formula(u"(100 − 8) ÷ 4 = 23"_s));
    EXPECT_EQ(cuts::explainedSlats(opening, 4.5, 20), formula(u"(100 − 8) ÷ 4.5 ≈ 20"_s));
    EXPECT_EQ(cuts::explainedSlats(opening, 4.5, 21), QString());
    EXPECT_EQ(cuts::explainedSlats(opening, 0, 23), QString());
}

// By hand: 100 - 17.6 = 82.4.
TEST(ExplainedCuts, DifferenceIsShownOnlyIfItGivesTheActualSize)
{
    EXPECT_EQ(cuts::explainedDifference(100, 17.6, 82.4), formula(u"100 − 17.6 = 82.4"_s));
    EXPECT_EQ(cuts::explainedDifference(100, 17.6, 82.5), QString());
}
