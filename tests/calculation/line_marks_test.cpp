#include "calculation/line_marks.h"

#include "calculation/planted_lines.h"
#include "support/printers.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using calculationtest::PlannedLine;
using calculationtest::Planner;

namespace {

PlannedLine soundWindow()
{
    PlannedLine line;
    line.series = {{{{-1.0, -1.5}, {-4.2, -7.5}, {-13.4, -16.0}, {-6.3, -8.25}}}, 1.0};
    line.opening = {120, 100};
    return line;
}

PlannedLine soundDoor()
{
    PlannedLine line = soundWindow();
    line.isDoor = true;
    line.opening = {90, 210};
    return line;
}

QStringList marksOf(const PlannedLine& line, const std::vector<cuts::Size>& neighbours = {})
{
    return cuts::marksOf(line.figures(), neighbours);
}

/// Returns the bays of all lines of the order but one.
std::vector<cuts::Size> neighboursOf(const std::vector<PlannedLine>& order, std::size_t line)
{
    std::vector<cuts::Size> bays;
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (i != line)
            bays.push_back(cuts::bayOf(order[i].opening, *order[i].series.kanafNum));
    }
    return bays;
}

PlannedLine opening(const PlannedLine& like, double width, double height)
{
    PlannedLine line = like;
    line.opening = {width, height};
    return line;
}

} // namespace

TEST(LineMarks, SoundLinesHaveNone)
{
    EXPECT_EQ(marksOf(soundWindow()), QStringList());
    EXPECT_EQ(marksOf(soundDoor()), QStringList());
    PlannedLine monoblock = soundWindow();
    monoblock.isMonoblock = true;
    EXPECT_EQ(marksOf(monoblock), QStringList());
}

// By hand: the glass is 12 - 13.4 = -1.4 wide. The minus stays in front of its number.
TEST(LineMarks, NegativeCutNamesThePartAndTheSize)
{
    PlannedLine line = soundWindow();
    line.opening.width = 12;
    EXPECT_TRUE(marksOf(line).contains(u"זכוכית, רוחב: המידה \u2066-1.4\u2069 אינה גדולה מאפס."_s))
        << marksOf(line).join(u'\n').toStdString();
}

// By hand: the mesh is 8.25 - 8.25 = 0 high.
TEST(LineMarks, CutOfZeroIsMarked)
{
    PlannedLine line = soundWindow();
    line.opening.height = 8.25;
    EXPECT_TRUE(marksOf(line).contains(u"רשת, גובה: המידה \u20660\u2069 אינה גדולה מאפס."_s));
}

TEST(LineMarks, SashWiderThanTheOpeningIsMarkedButNotThatOfAPocketWindow)
{
    PlannedLine line = soundWindow();
    line.series.deductions[cuts::Kanaf].width = 4.5;
    EXPECT_EQ(marksOf(line), QStringList());
    line.series.deductions[cuts::Kanaf].width = 5.5;
    EXPECT_EQ(marksOf(line), QStringList{u"הכנף רחבה מהפתח."_s});
}

TEST(LineMarks, DoorWiderThanHighIsMarkedButNotAWideWindow)
{
    PlannedLine door = soundDoor();
    std::swap(door.opening.width, door.opening.height);
    EXPECT_EQ(marksOf(door), QStringList{u"הדלת רחבה יותר מגובהה. האם הרוחב והגובה הוחלפו?"_s});
    PlannedLine window = soundWindow();
    window.opening = {210, 90};
    EXPECT_EQ(marksOf(window), QStringList());
}

TEST(LineMarks, TenfoldMeasureIsMarkedBesideTwoLines)
{
    const PlannedLine line = opening(soundWindow(), 450, 100);
    EXPECT_EQ(marksOf(line, {{45, 100}, {45, 100}}).size(), 1);
    EXPECT_EQ(marksOf(line, {{45, 100}}), QStringList());
}

// By hand: the medians are (45 + 55) / 2 = 50 and (100 + 260) / 2 = 180; 8 * 50 = 400, 180 / 9
// = 20.
TEST(LineMarks, MedianOfAnEvenNumberIsTheMeanOfTheTwoInTheMiddle)
{
    const std::vector<cuts::Size> four{{55, 100}, {300, 100}, {40, 100}, {45, 100}};
    EXPECT_EQ(marksOf(opening(soundWindow(), 399, 100), four), QStringList());
    EXPECT_EQ(marksOf(opening(soundWindow(), 400, 100), four),
              QStringList{u"הרוחב לכל כנף \u2066400\u2069 גדול פי כמה מהמקובל בהזמנה הזאת "
                          "(\u206650\u2069)."_s});
    const std::vector<cuts::Size> two{{100, 100}, {260, 100}};
    EXPECT_EQ(marksOf(opening(soundWindow(), 20, 100), two).filter(u"קטן פי כמה"_s).size(), 1);
    EXPECT_EQ(marksOf(opening(soundWindow(), 21, 100), two).filter(u"קטן פי כמה"_s).size(), 0);
}

TEST(LineMarks, MeasureThatNoWorkshopMakesIsMarkedWithoutNeighbours)
{
    const QString small = u"גובה הפתח \u206614\u2069 קטן מאוד. האם חסרה ספרה?"_s;
    EXPECT_TRUE(marksOf(opening(soundWindow(), 60, 14)).contains(small));
    const QString large = u"הרוחב לכל כנף \u2066500\u2069 גדול מאוד. האם יש ספרה מיותרת?"_s;
    EXPECT_EQ(marksOf(opening(soundWindow(), 500, 100)), QStringList{large});
    EXPECT_EQ(marksOf(opening(soundWindow(), 499, 100)), QStringList());
}

TEST(LineMarks, OpeningsThatDifferMuchInOneOrderAreSound)
{
    EXPECT_EQ(marksOf(opening(soundDoor(), 95, 210), {{50, 50}, {50, 50}, {50, 50}, {50, 50}}),
              QStringList());
    EXPECT_EQ(marksOf(opening(soundWindow(), 300, 220), {{40, 50}, {40, 50}, {40, 50}, {40, 50}}),
              QStringList());
    PlannedLine vent = opening(soundWindow(), 40, 25);
    vent.series = {{{{-0.6, -0.6}, {-0.6, -0.6}, {-5.8, -5.8}, {0.0, 0.0}}}, 1.0};
    EXPECT_EQ(marksOf(vent, {{95, 210}, {95, 210}, {95, 210}, {95, 210}, {95, 210}}),
              QStringList());
}

// By hand: the box leaves 100 - 60 = 40 of 100.
TEST(LineMarks, BoxThatLeavesLessThanHalfOfTheHeightIsMarked)
{
    PlannedLine line = soundWindow();
    line.isMonoblock = true;
    line.heightDeduct = 60;
    EXPECT_EQ(marksOf(line).filter(u"המונובלוק"_s).size(), 1);
    line.heightDeduct = 28;
    EXPECT_EQ(marksOf(line), QStringList());
}

TEST(LineMarks, WideOpeningOfManySashesIsComparedBySash)
{
    PlannedLine line = soundWindow();
    line.opening = {600, 200};
    line.series.kanafNum = 6.0;
    EXPECT_EQ(marksOf(line, {{100, 100}, {90, 100}, {100, 200}}), QStringList());
}

// By hand: the sash is 90 - 2 * 40 - 4.2 = 5.8 wide.
TEST(LineMarks, DoorOfWhichTheFrameLeavesLittleIsMarked)
{
    PlannedLine door = soundDoor();
    door.doorThickness = 40;
    EXPECT_EQ(marksOf(door), QStringList{u"כנף: נשאר חלק קטן מאוד מהפתח."_s});
}

TEST(LineMarks, MonoblockThatLeavesNoWindowIsMarked)
{
    PlannedLine line = soundWindow();
    line.isMonoblock = true;
    line.heightDeduct = 180; // for 18
    EXPECT_TRUE(
        marksOf(line).contains(u"הגובה שנשאר לחלון: המידה \u2066-80\u2069 אינה גדולה מאפס."_s));
}

TEST(LineMarks, FiveHundredPlantedSlipsAreMarkedAndSoundLinesAreNot)
{
    Planner planner(20261122);
    int slips = 0;
    int found = 0;
    int sound = 0;
    int wronglyMarked = 0;
    while (slips < 500) {
        std::vector<PlannedLine> order = planner.order();
        const auto slipped = std::size_t(planner.number(0, int(order.size()) - 1));
        order[slipped] = planner.withSlip(order[slipped]);
        for (std::size_t i = 0; i < order.size(); ++i) {
            const bool isMarked = !marksOf(order[i], neighboursOf(order, i)).isEmpty();
            (i == slipped ? slips : sound) += 1;
            if (isMarked)
                (i == slipped ? found : wronglyMarked) += 1;
        }
    }
    RecordProperty("found", found);
    RecordProperty("sound", sound);
    RecordProperty("wronglyMarked", wronglyMarked);
    EXPECT_GE(found, 475) << "of " << slips;
    EXPECT_LE(wronglyMarked * 100, sound) << wronglyMarked << " of " << sound;
}
