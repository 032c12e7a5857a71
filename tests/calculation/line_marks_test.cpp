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

std::vector<cuts::Size> baysOf(const std::vector<PlannedLine>& order)
{
    std::vector<cuts::Size> bays;
    for (const PlannedLine& each : order)
        bays.push_back(cuts::bayOf(each.opening, *each.series.kanafNum));
    return bays;
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
    line.series.deductions[cuts::Kanaf].width = 42;
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

TEST(LineMarks, TenTimesTheMedianIsMarkedIfThereAreThreeLines)
{
    PlannedLine line = soundWindow();
    line.opening = {900, 100};
    const std::vector<cuts::Size> three{{90, 100}, {90, 100}, {900, 100}};
    EXPECT_EQ(marksOf(line, three).size(), 1);
    EXPECT_EQ(marksOf(line, {{90, 100}, {900, 100}}), QStringList());
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
        const std::vector<cuts::Size> bays = baysOf(order);
        for (std::size_t i = 0; i < order.size(); ++i) {
            const bool isMarked = !marksOf(order[i], bays).isEmpty();
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
