#include "shop/bar_table.h"

#include "platform/dao/database.h"
#include "platform/runtime/run_time_error.h"
#include "support/printers.h"
#include "support/temporary_store.h"
#include "tools/store/checker.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using shop::BarSettings;
using shop::Part;
using shop::SettingsByGroup;
using testsupport::TemporaryStore;

namespace {

SettingsByGroup read(const TemporaryStore& store)
{
    return shop::readBarTable(*dao::DBEngine::instance().OpenDatabase(store.path()));
}

SettingsByGroup twoGroups()
{
    BarSettings frame = shop::defaultSettings(Part::Frame);
    frame.barLength = 650.25;
    frame.angle = 45;
    BarSettings guide = shop::defaultSettings(Part::Guide);
    guide.kerf = 0;
    return {{{Part::Frame, u"רגיל"_s, u"לבן"_s}, frame}, {shop::fixedGroup(Part::Guide), guide}};
}

QString errorOf(const TemporaryStore& store)
{
    try {
        read(store);
    } catch (const runtime::RunTimeError& error) {
        return error.description();
    }
    return {};
}

} // namespace

TEST(BarTableTest, StoreWithoutTheTable_HasDefaultsOnly)
{
    const TemporaryStore store;
    EXPECT_TRUE(read(store).empty());
    const BarSettings frame = shop::settingsOf({}, {Part::Frame, u"רגיל"_s, u"לבן"_s});
    EXPECT_EQ(frame.barLength, 600);
    EXPECT_EQ(frame.kerf, 0.5);
    EXPECT_EQ(frame.trim, 1);
    EXPECT_EQ(frame.angle, 90);
    EXPECT_EQ(frame.offcut, 60);
    EXPECT_EQ(frame.window, (shop::Factors{1, 1}));
    EXPECT_EQ(frame.door, (shop::Factors{0.5, 1}));
    EXPECT_EQ(shop::defaultSettings(Part::Sash).door, (shop::Factors{2, 2}));
    EXPECT_EQ(shop::defaultSettings(Part::Mesh).window, (shop::Factors{2, 2}));
    EXPECT_EQ(shop::defaultSettings(Part::Slat).window, (shop::Factors{1, 1}));
}

TEST(BarTableTest, WrittenSettings_ReadBackAndLeaveTheOthers)
{
    const TemporaryStore store;
    shop::writeBarTable(store.path(), twoGroups());
    EXPECT_EQ(read(store), twoGroups());
    SettingsByGroup change{*twoGroups().begin()};
    change.begin()->second.trim = 2;
    shop::writeBarTable(store.path(), change);
    SettingsByGroup expected = twoGroups();
    expected.begin()->second.trim = 2;
    EXPECT_EQ(read(store), expected);
}

TEST(BarTableTest, Table_IsHiddenFromListingsAndPartOfTheStore)
{
    TemporaryStore store;
    shop::writeBarTable(store.path(), twoGroups());
    const auto database = dao::DBEngine::instance().OpenDatabase(store.path());
    EXPECT_EQ(database->tableDefs().Count(), 11);
    EXPECT_EQ(database->tableDefs()(u"ZOMREL_BARS"_s).Name(), u"zomrel_bars"_s);
    database->Close();
    EXPECT_EQ(storetools::checkStore(store.path()), QStringList());
}

TEST(BarTableTest, TableWithoutAField_IsAnErrorAndAFinding)
{
    TemporaryStore store;
    shop::writeBarTable(store.path(), twoGroups());
    store.execute(u"ALTER TABLE zomrel_bars DROP COLUMN Trim"_s);
    EXPECT_EQ(errorOf(store),
              u"The table zomrel_bars does not have the expected structure: field Trim."_s);
    EXPECT_EQ(storetools::checkStore(store.path()),
              QStringList{u"zomrel_bars.Trim: the field is missing"_s});
    const QByteArray before = store.contents();
    EXPECT_THROW(shop::writeBarTable(store.path(), twoGroups()), runtime::RunTimeError);
    EXPECT_EQ(store.contents(), before);
}

TEST(BarTableTest, InvalidRow_IsAnErrorThatNamesTheField)
{
    TemporaryStore store;
    shop::writeBarTable(store.path(), twoGroups());
    store.execute(u"UPDATE zomrel_bars SET Kerf = NULL WHERE Code = 2"_s);
    EXPECT_EQ(errorOf(store),
              u"The table zomrel_bars contains an invalid value in field Kerf of row 2."_s);
    store.execute(u"UPDATE zomrel_bars SET Kerf = 0, Trim = 300 WHERE Code = 2"_s);
    EXPECT_EQ(errorOf(store),
              u"The table zomrel_bars contains an invalid value in field Trim of row 2."_s);
    store.execute(u"UPDATE zomrel_bars SET Trim = 1, Part = 'glass' WHERE Code = 2"_s);
    EXPECT_EQ(errorOf(store),
              u"The table zomrel_bars contains an invalid value in field Part of row 2."_s);
}

TEST(BarTableTest, TableWithAnotherStructure_IsAnErrorAndAFinding)
{
    struct Case
    {
        QString statement;
        QString named;
        QString finding;
    };
    for (const Case& each :
         std::vector<Case>{{u"ALTER TABLE zomrel_bars ADD COLUMN Extra TEXT"_s, u"field Extra"_s,
                            u"zomrel_bars.Extra: is no field of the store"_s},
                           {u"DROP INDEX \"zomrel_bars.Bars_Key\""_s, u"index Bars_Key"_s,
                            u"zomrel_bars: there is no index on Part, Profile, Colour"_s}}) {
        TemporaryStore store;
        shop::writeBarTable(store.path(), twoGroups());
        store.execute(each.statement);
        EXPECT_EQ(errorOf(store),
                  u"The table zomrel_bars does not have the expected structure: "_s + each.named +
                      u'.');
        EXPECT_TRUE(storetools::checkStore(store.path()).contains(each.finding))
            << qPrintable(storetools::checkStore(store.path()).join(u'\n'));
        EXPECT_THROW(shop::writeBarTable(store.path(), twoGroups()), runtime::RunTimeError);
    }
}

TEST(BarTableTest, FieldThatRefusesNull_IsAnError)
{
    TemporaryStore store;
    shop::writeBarTable(store.path(), {});
    store.execute(u"ALTER TABLE zomrel_bars DROP COLUMN Kerf"_s);
    store.execute(u"ALTER TABLE zomrel_bars ADD COLUMN Kerf DOUBLE NOT NULL DEFAULT 0"_s);
    EXPECT_EQ(errorOf(store),
              u"The table zomrel_bars does not have the expected structure: field Kerf."_s);
}

TEST(BarTableTest, InvalidRows_AreFindingsOfTheStore)
{
    TemporaryStore store;
    shop::writeBarTable(store.path(), twoGroups());
    store.execute(u"UPDATE zomrel_bars SET Kerf = NULL WHERE Code = 1"_s);
    store.execute(u"UPDATE zomrel_bars SET Part = 'door' WHERE Code = 2"_s);
    EXPECT_EQ(storetools::checkStore(store.path()),
              (QStringList{u"zomrel_bars, Code 1: Kerf has no valid value"_s,
                           u"zomrel_bars, Code 2: Part has no valid value"_s}));
    store.execute(u"UPDATE zomrel_bars SET Kerf = 0, Trim = 400 WHERE Code = 1"_s);
    EXPECT_EQ(storetools::checkStore(store.path()).first(),
              u"zomrel_bars, Code 1: Trim has no valid value"_s);
}

TEST(BarTableTest, InvalidSettings_AreRefused)
{
    TemporaryStore store;
    shop::writeBarTable(store.path(), twoGroups());
    const QByteArray before = store.contents();
    SettingsByGroup change{*twoGroups().begin()};
    change.begin()->second.trim = 325.125; // Twice that is the bar of 650.25.
    try {
        shop::writeBarTable(store.path(), change);
        FAIL();
    } catch (const runtime::RunTimeError& error) {
        EXPECT_EQ(error.description(),
                  u"The settings of frame 'רגיל' 'לבן' have an invalid value in field Trim."_s);
    }
    EXPECT_EQ(store.contents(), before);
}

TEST(BarTableTest, WritingOverInvalidRows_RepairsTheTable)
{
    TemporaryStore store;
    shop::writeBarTable(store.path(), twoGroups());
    store.execute(u"UPDATE zomrel_bars SET Trim = 400 WHERE Code = 1"_s);
    store.execute(u"UPDATE zomrel_bars SET Part = 'door' WHERE Code = 2"_s);
    shop::writeBarTable(store.path(), twoGroups());
    EXPECT_EQ(read(store), twoGroups());
}
