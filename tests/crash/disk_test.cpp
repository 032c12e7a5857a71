// Tests of the model of a disk that loses unsynced data.

#include "crash/disk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using crash::Disk;
using crash::Image;
using crash::Loss;
using crash::Step;

namespace {

Step step(Step::Kind kind, crash::FileId file, const std::string& path = {},
          const std::string& newPath = {})
{
    Step made;
    made.kind = kind;
    made.file = file;
    made.path = path;
    made.newPath = newPath;
    return made;
}

Step writing(crash::FileId file, std::int64_t position, const std::string& bytes)
{
    Step made = step(Step::Kind::Write, file);
    made.position = position;
    made.bytes = bytes;
    return made;
}

/// A disk that holds the file "a" with these bytes.
Disk diskWith(const std::string& bytes)
{
    crash::Record record;
    record.entries["a"] = 1;
    record.contents[1] = bytes;
    return Disk(record);
}

Image after(const Disk& disk, Loss loss)
{
    std::mt19937_64 random(1);
    return disk.afterPowerCut(loss, random);
}

/// Returns the states of many random losses.
std::set<Image> randomStatesOf(const Disk& disk)
{
    std::set<Image> states;
    std::mt19937_64 random(1);
    for (int i = 0; i < 300; ++i)
        states.insert(disk.afterPowerCut(Loss::Some, random));
    return states;
}

} // namespace

TEST(DiskTest, UnsyncedWrite_isLostOrKept)
{
    Disk disk = diskWith("old");
    disk.apply(writing(1, 0, "new"));
    EXPECT_EQ(after(disk, Loss::Everything), (Image{{"a", "old"}}));
    EXPECT_EQ(after(disk, Loss::Nothing), (Image{{"a", "new"}}));
    EXPECT_EQ(randomStatesOf(disk), (std::set<Image>{{{"a", "old"}}, {{"a", "new"}}}));
}

TEST(DiskTest, SyncedWrite_stays)
{
    Disk disk = diskWith("old");
    disk.apply(writing(1, 0, "new"));
    disk.apply(step(Step::Kind::SyncFile, 1));
    EXPECT_TRUE(disk.isSettled());
    EXPECT_EQ(after(disk, Loss::Everything), (Image{{"a", "new"}}));
}

TEST(DiskTest, UnsyncedWrites_arriveInAnyOrder)
{
    Disk disk = diskWith(std::string(1024, '.'));
    disk.apply(writing(1, 0, "1"));
    disk.apply(writing(1, 512, "2"));
    std::set<std::string> found;
    for (const Image& image : randomStatesOf(disk))
        found.insert({image.at("a")[0], image.at("a")[512]});
    EXPECT_EQ(found, (std::set<std::string>{"..", "1.", ".2", "12"}));
}

TEST(DiskTest, UnsyncedWrites_inOneSector_arriveInTheirOrder)
{
    Disk disk = diskWith("....");
    disk.apply(writing(1, 0, "1"));
    disk.apply(writing(1, 1, "2"));
    EXPECT_EQ(randomStatesOf(disk),
              (std::set<Image>{{{"a", "...."}}, {{"a", "1..."}}, {{"a", "12.."}}}));
}

TEST(DiskTest, UnsyncedWrite_isTornAtSectors)
{
    Disk disk = diskWith(std::string(1536, '.'));
    disk.apply(writing(1, 0, std::string(1536, 'x')));
    std::set<std::string> found;
    for (const Image& image : randomStatesOf(disk)) {
        const std::string& bytes = image.at("a");
        for (std::size_t i = 0; i < bytes.size(); ++i)
            ASSERT_EQ(bytes[i], bytes[i / 512 * 512]);
        found.insert({bytes[0], bytes[512], bytes[1024]});
    }
    EXPECT_EQ(found.size(), 8U); // each of the three sectors is old or new
}

TEST(DiskTest, UnsyncedGrowth_isLostOrKeptWithoutItsBytes)
{
    Disk disk = diskWith("a");
    disk.apply(writing(1, 512, "b"));
    const std::string grown = "a" + std::string(511, '\0');
    EXPECT_EQ(randomStatesOf(disk),
              (std::set<Image>{{{"a", "a"}}, {{"a", grown + '\0'}}, {{"a", grown + 'b'}}}));
}

TEST(DiskTest, SyncOfANewFile_keepsNoEntry)
{
    Disk disk = diskWith("old");
    disk.apply(step(Step::Kind::AddEntry, 2, "b"));
    disk.apply(writing(2, 0, "new"));
    disk.apply(step(Step::Kind::SyncFile, 2));
    EXPECT_EQ(after(disk, Loss::Everything), (Image{{"a", "old"}}));
    EXPECT_EQ(after(disk, Loss::Contents), (Image{{"a", "old"}}));
    disk.apply(step(Step::Kind::SyncFolder, 0, ""));
    EXPECT_EQ(after(disk, Loss::Everything), (Image{{"a", "old"}, {"b", "new"}}));
}

TEST(DiskTest, EntriesWithoutContents_leaveAnEmptyFile)
{
    Disk disk = diskWith("old");
    disk.apply(step(Step::Kind::AddEntry, 2, "b"));
    disk.apply(writing(2, 0, "new"));
    disk.apply(step(Step::Kind::Rename, 0, "b", "a"));
    EXPECT_EQ(after(disk, Loss::Entries), (Image{{"a", ""}}));
    EXPECT_EQ(after(disk, Loss::Nothing), (Image{{"a", "new"}}));
}

TEST(DiskTest, UnsyncedEntries_areKeptInTheirOrder)
{
    Disk disk = diskWith("old");
    disk.apply(step(Step::Kind::Rename, 0, "a", "b"));
    disk.apply(step(Step::Kind::RemoveEntry, 0, "b"));
    EXPECT_EQ(randomStatesOf(disk), (std::set<Image>{{{"a", "old"}}, {{"b", "old"}}, {}}));
}

TEST(DiskTest, SyncOfAFolder_keepsEarlierEntriesOfOtherFolders)
{
    Disk disk = diskWith("old");
    disk.apply(step(Step::Kind::AddFolder, 0, "inner"));
    disk.apply(step(Step::Kind::Rename, 0, "a", "inner/a"));
    disk.apply(step(Step::Kind::Rename, 0, "inner/a", "inner/b"));
    disk.apply(step(Step::Kind::SyncFolder, 0, ""));
    EXPECT_EQ(after(disk, Loss::Everything), (Image{{"inner/a", "old"}}));
}
