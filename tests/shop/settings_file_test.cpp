#include "shop/settings_file.h"

#include "shop/bar_table.h"
#include "shop/csv.h"
#include "support/printers.h"
#include "support/temporary_store.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using shop::Part;
using testsupport::TemporaryStore;

namespace {

/// Adds two kinds of frame, a kind that is not made, two colours, and a line with another kind.
void fillCatalogue(TemporaryStore& store)
{
    for (const QString& name : {u"רגיל"_s, u"ללא"_s, u"=סמוי"_s})
        store.execute(u"INSERT INTO MashkofKind (Name) VALUES (?)"_s, {name});
    for (const QString& name : {u"לבן"_s, u"חום"_s})
        store.execute(u"INSERT INTO MashkofColor (Name) VALUES (?)"_s, {name});
    store.addOrder(7);
    store.addLine(7, 1);
}

QList<QStringList> rowsOf(const TemporaryStore& store)
{
    return shop::readCsv(shop::settingsFile(shop::readStoredBars(store.path()))).value();
}

/// Returns the exported file with another text in one cell.
QByteArray fileWith(const TemporaryStore& store, qsizetype row, qsizetype column,
                    const QString& text)
{
    QList<QStringList> rows = rowsOf(store);
    rows[row][column] = text;
    return shop::csvText(rows);
}

QStringList findings(const TemporaryStore& store, const QByteArray& file)
{
    return shop::readSettingsFile(file, shop::readStoredBars(store.path()).groups).findings;
}

} // namespace

TEST(SettingsFileTest, Export_ListsCatalogueAndLinesThenTheFixedParts)
{
    TemporaryStore store;
    fillCatalogue(store);
    const QList<QStringList> rows = rowsOf(store);
    EXPECT_EQ(rows[0],
              (QStringList{u"part"_s, u"profile"_s, u"colour"_s, u"barLength"_s, u"kerf"_s,
                           u"trim"_s, u"angle"_s, u"offcut"_s, u"widthFactor"_s, u"heightFactor"_s,
                           u"doorWidthFactor"_s, u"doorHeightFactor"_s}));
    QStringList groups;
    for (const QStringList& row : rows.mid(1))
        groups.append(row.mid(0, 3).join(u'|'));
    EXPECT_EQ(groups, (QStringList{u"frame|רגיל|לבן"_s, u"frame|רגיל|חום"_s, u"frame|'=סמוי|לבן"_s,
                                   u"frame|'=סמוי|חום"_s, u"frame|משקוף רגיל|לבן"_s,
                                   u"sash|כנף רגילה|ברונזה"_s, u"mesh|רשת פיברגלס|אפור"_s,
                                   u"guide|U|"_s, u"slat|שלב|"_s, u"box|ארגז|"_s}));
    EXPECT_EQ(rows[1].mid(3), (QStringList{u"600"_s, u"0.5"_s, u"1"_s, u"90"_s, u"60"_s, u"1"_s,
                                           u"1"_s, u"0.5"_s, u"1"_s}));
}

TEST(SettingsFileTest, ExportImportExport_GivesTheSameBytes)
{
    TemporaryStore store;
    fillCatalogue(store);
    store.execute(u"INSERT INTO MashkofKind (Name) VALUES (?)"_s, {u"'=x, \"y\""_s});
    shop::BarSettings odd;
    odd.barLength = 600.0 / 7;
    odd.kerf = 0.1;
    shop::writeBarTable(store.path(), {{{Part::Frame, u"=סמוי"_s, u"חום"_s}, odd}});
    const shop::StoredBars before = shop::readStoredBars(store.path());
    const QByteArray file = shop::settingsFile(before);
    const shop::SettingsIntake intake = shop::readSettingsFile(file, before.groups);
    EXPECT_EQ(intake.findings, QStringList());
    EXPECT_EQ(intake.settings.size(), before.groups.size());
    shop::writeBarTable(store.path(), intake.settings);
    EXPECT_EQ(shop::settingsFile(shop::readStoredBars(store.path())), file);
}

TEST(SettingsFileTest, RowsThatTheFileLacks_AreLeftAlone)
{
    TemporaryStore store;
    fillCatalogue(store);
    QList<QStringList> rows = rowsOf(store);
    rows[1][3] = u"650"_s;
    const shop::SettingsIntake intake = shop::readSettingsFile(
        shop::csvText(rows.mid(0, 2)), shop::readStoredBars(store.path()).groups);
    ASSERT_EQ(intake.findings, QStringList());
    ASSERT_EQ(intake.settings.size(), 1U);
    EXPECT_EQ(intake.settings.begin()->second.barLength, 650);
}

TEST(SettingsFileTest, EachBadCell_IsNamedByRowColumnAndValue)
{
    TemporaryStore store;
    fillCatalogue(store);
    struct Case
    {
        qsizetype column;
        QString text;
        QString finding;
    };
    for (const Case& each : std::vector<Case>{
             {0, u"door"_s, u"row 3, part, 'door': unknown part"_s},
             {0, u"glass"_s, u"row 3, part, 'glass': unknown part"_s},
             {1, u"אחר"_s, u"row 3, profile, 'אחר': unknown profile"_s},
             {2, u"אחר"_s, u"row 3, colour, 'אחר': the profile does not exist in this colour"_s},
             {3, u"0"_s, u"row 3, barLength, '0': must be a number greater than 0, up to 100000"_s},
             {3, u"abc"_s,
              u"row 3, barLength, 'abc': must be a number greater than 0, up to 100000"_s},
             {4, u"-0.1"_s, u"row 3, kerf, '-0.1': must be a number from 0 to 100000"_s},
             {4, u"nan"_s, u"row 3, kerf, 'nan': must be a number from 0 to 100000"_s},
             {5, u"3.0e2"_s, u"row 3, trim, '3.0e2': both trims use up the whole bar"_s},
             {5, u"300"_s, u"row 3, trim, '300': both trims use up the whole bar"_s},
             {5, u"1,5"_s, u"row 3, trim, '1,5': must be a number from 0 to 100000"_s},
             {6, u"180.1"_s,
              u"row 3, angle, '180.1': must be a number greater than 0, up to 180"_s},
             {7, u""_s, u"row 3, offcut, '': must be a number from 0 to 100000"_s},
             {11, u"inf"_s, u"row 3, doorHeightFactor, 'inf': must be a number from 0 to 1000"_s}})
        EXPECT_EQ(findings(store, fileWith(store, 2, each.column, each.text)),
                  QStringList{each.finding});
}

TEST(SettingsFileTest, OneBadCell_PreventsAllSettings)
{
    TemporaryStore store;
    fillCatalogue(store);
    QList<QStringList> rows = rowsOf(store);
    rows[1][4] = u"x"_s;
    rows[3][5] = u"y"_s;
    const shop::SettingsIntake intake =
        shop::readSettingsFile(shop::csvText(rows), shop::readStoredBars(store.path()).groups);
    EXPECT_EQ(intake.findings.size(), 2);
    EXPECT_TRUE(intake.settings.empty());
}

TEST(SettingsFileTest, FileOfAnotherShape_IsRefused)
{
    TemporaryStore store;
    fillCatalogue(store);
    EXPECT_EQ(findings(store, "\"").size(), 1);
    EXPECT_EQ(findings(store, "").size(), 1);
    EXPECT_EQ(findings(store, fileWith(store, 0, 3, u"length"_s)).size(), 1);
    QList<QStringList> rows = rowsOf(store);
    rows[4].removeLast();
    rows.append(rows[2]);
    EXPECT_EQ(
        findings(store, shop::csvText(rows)),
        (QStringList{
            u"row 5: has 11 cells instead of 12"_s,
            u"row 12, profile, 'רגיל': another row has the same part, profile and colour"_s}));
}

TEST(SettingsFileTest, KindsWithoutColours_HaveARowEach)
{
    TemporaryStore store;
    store.execute(u"INSERT INTO MashkofKind (Name) VALUES (?)"_s, {u"רגיל"_s});
    const QList<QStringList> rows = rowsOf(store);
    ASSERT_EQ(rows.size(), 5);
    EXPECT_EQ(rows[1].mid(0, 3), (QStringList{u"frame"_s, u"רגיל"_s, QString()}));
    EXPECT_EQ(rows[2].first(), u"guide"_s);
}

TEST(SettingsFileTest, BlankLines_AreIgnoredButCounted)
{
    TemporaryStore store;
    fillCatalogue(store);
    const QByteArray file = shop::settingsFile(shop::readStoredBars(store.path()));
    QByteArray spaced = file;
    spaced.replace("\r\n", "\r\n\r\n").append(",,,,,,,,,,,\r\n");
    const std::vector<shop::GroupKey> groups = shop::readBarGroups(store.path());
    const shop::SettingsIntake intake = shop::readSettingsFile(spaced, groups);
    EXPECT_EQ(intake.findings, QStringList());
    EXPECT_EQ(intake.settings, shop::readSettingsFile(file, groups).settings);
    EXPECT_EQ(intake.settings.size(), groups.size());
    EXPECT_EQ(findings(store, spaced.replace("slat,", "door,")).size(), 1);
    EXPECT_TRUE(findings(store, spaced).first().startsWith(u"row 19, part, 'door'"_s));
}

TEST(SettingsFileTest, Groups_AreReadBesideInvalidSettings)
{
    TemporaryStore store;
    fillCatalogue(store);
    const std::vector<shop::GroupKey> groups = shop::readBarGroups(store.path());
    shop::writeBarTable(store.path(), {{groups.front(), shop::BarSettings()}});
    store.execute(u"UPDATE zomrel_bars SET Trim = 300"_s);
    EXPECT_ANY_THROW(shop::readStoredBars(store.path()));
    EXPECT_EQ(shop::readBarGroups(store.path()), groups);
}
