#include "reliability/ledger.h"

#include "support/printers.h"
#include "support/temporary_store.h"

#include <QDate>

#include <gtest/gtest.h>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;
using reliability::addSeriesOfLines;
using reliability::Ledger;
using reliability::listedName;
using testsupport::TemporaryStore;

namespace {

/// Puts every kind of loss and partial row into a store by hand and expects the ledger to find it.
/// A loss that the ledger misses here would go unnoticed in every test with stations.
class LedgerTest : public testing::Test
{
protected:
    /// Stores and reports order 1 with a line, a series, and a name in the second list.
    void SetUp() override
    {
        addSeriesOfLines(store);
        store.execute(u"INSERT INTO GlassKind (Code, Name) VALUES (1, 'רגילה')"_s);
        ledger = std::make_unique<Ledger>(store);
        store.addOrder(1);
        store.execute(u"UPDATE Orders SET CustomerName = 'לקוח 1'"_s);
        addLine(u"7-1"_s);
        store.addSeries(u"7-1"_s, QList<double>(8, -1.25), 2, 2);
        store.execute(u"UPDATE Serials SET Rem = '1' WHERE Name = '7-1'"_s);
        store.execute(u"INSERT INTO KanafKind (Code, Name) VALUES (5, ?)"_s,
                      {listedName(u"7-2"_s)});
        for (const QString& told :
             {u"ready"_s, u"order 1"_s, u"? line 1 7-1"_s, u"line 1 7-1 1 120 100"_s,
              u"series 7-1 1"_s, u"name 1 7-2 5"_s})
            ledger->tell(told);
        ASSERT_EQ(findings(), QStringList());
    }

    /// Adds an ordinary line of 120.50 by 100.25 for the stations' series.
    void addLine(const QString& tag)
    {
        store.addLine(1, 1, reliability::seriesOfLines());
        store.execute(
            u"UPDATE Cuts SET MyWidth = 120.5, MYHeight = 100.25, Mashkof_W = 119.5,"
            " Mashkof_H = 98.75, Kanaf_W = 58.15, Kanaf_H = 92.75, Glass_W = 53.55,"
            " Glass_H = 84.25, Reshet_W = 57.1, Reshet_H = 92, Mahkof_Count = 2, Kanaf_Count = 4,"
            " Glass_Count = 2, Reshet_Count = 2, Kind = 'אור', MyWidth_2 = 0, MYHeight_2 = 0,"
            " U_Thick = 0, U_Cut = 0, U_Vasa = 0, Shalav_Thick = 0, Shalav_Width = 0,"
            " Shalav_Count = 0, Argaz_Width = 0, Argaz_Height = 0, Mashof_Kind = ?,"
            " Mahkof_Color = ?, Kanaf_Kind = ?, Kanaf_Color = ?, Glass_Kind = ?, Glass_Color = ?,"
            " Reshet_Kind = ?, Reshet_Color = ?, Order_Date = ?"
            " WHERE Code = (SELECT max(Code) FROM Cuts)"_s,
            {tag, tag, tag, tag, tag, tag, tag, tag, QDate::currentDate().toString(Qt::ISODate)});
    }

    QStringList findings() { return ledger->findings(store); }

    TemporaryStore store;
    std::unique_ptr<Ledger> ledger;
};

struct Harm
{
    const char* name;
    QString sql;
    int findings;
};

void PrintTo(const Harm& harm, std::ostream* out)
{
    *out << harm.name;
}

class LedgerOfHarm : public LedgerTest, public testing::WithParamInterface<Harm>
{
};

TEST_P(LedgerOfHarm, FindsTheLoss)
{
    store.execute(GetParam().sql);
    const QStringList found = findings();
    EXPECT_EQ(found.size(), GetParam().findings) << qUtf8Printable(found.join(u'\n'));
}

INSTANTIATE_TEST_SUITE_P(
    Each, LedgerOfHarm,
    testing::Values(
        Harm{"line gone", u"DELETE FROM Cuts"_s, 1},
        Harm{"field empty", u"UPDATE Cuts SET Argaz_Height = NULL"_s, 1},
        Harm{"field wrong", u"UPDATE Cuts SET Reshet_H = 92.5"_s, 1},
        Harm{"kind of another", u"UPDATE Cuts SET Glass_Color = '7-9'"_s, 1},
        Harm{"other number", u"UPDATE Cuts SET NUM = 2"_s, 1},
        Harm{"other order", u"UPDATE Cuts SET Order_Num = 2"_s, 1},
        Harm{"order gone", u"DELETE FROM Orders"_s, 1},
        Harm{"order closed", u"UPDATE Orders SET Open_Close = -1"_s, 1},
        Harm{"order by half", u"UPDATE Orders SET Order_Date = NULL"_s, 1},
        Harm{"customer gone", u"UPDATE Orders SET CustomerName = NULL"_s, 1},
        Harm{"an order too many",
             u"INSERT INTO Orders VALUES (2, '2026-01-02', 0, 'לקוח 2', NULL,"
             " NULL)"_s,
             1},
        Harm{"series gone", u"DELETE FROM Serials WHERE Name = '7-1'"_s, 1},
        Harm{"delivered series gone", u"DELETE FROM Serials WHERE Name <> '7-1'"_s, 1},
        Harm{"series by half", u"UPDATE Serials SET Reshet_H = NULL WHERE Name = '7-1'"_s, 1},
        Harm{"former series",
             u"UPDATE Serials SET Rem = '3', Mashkof_W = -3.25, Mashkof_H = -3.25,"
             " Kanaf_W = -3.25, Kanaf_H = -3.25, Glass_W = -3.25, Glass_H = -3.25,"
             " Reshet_W = -3.25, Reshet_H = -3.25 WHERE Name = '7-1'"_s,
             1},
        Harm{"name gone", u"DELETE FROM KanafKind"_s, 1},
        Harm{"name by half", u"UPDATE KanafKind SET Name = '7-2'"_s, 1},
        Harm{"name empty", u"UPDATE KanafKind SET Name = NULL"_s, 1},
        Harm{"delivered name gone", u"DELETE FROM GlassKind"_s, 1},
        Harm{"delivered name changed", u"UPDATE GlassKind SET Name = 'אחרת'"_s, 1},
        Harm{"a name too many", u"INSERT INTO ReshetColor (Name) VALUES ('חום')"_s, 1},
        Harm{"a name twice", u"INSERT INTO KanafKind (Name) SELECT Name FROM KanafKind"_s, 2}));

TEST_F(LedgerTest, FindsAnUnreportedOrDuplicateLine)
{
    addLine(u"7-9"_s);
    EXPECT_EQ(findings(), QStringList(u"line 7-9 was never added"_s));
    addLine(u"7-1"_s);
    EXPECT_EQ(findings(), QStringList(u"line 7-1 stands there twice"_s));
}

TEST_F(LedgerTest, FindsADeletedRowThatIsStillStored)
{
    for (const QString& told : {u"deleted 7-1"_s, u"seriesdeleted 7-1"_s, u"unnamed 1 5"_s})
        ledger->tell(told);
    EXPECT_EQ(findings().size(), 3);
}

TEST_F(LedgerTest, FindsAMissingChange)
{
    for (const QString& told : {u"closed 1"_s, u"series 7-1 2"_s, u"renamed 1 7-3 5"_s})
        ledger->tell(told);
    EXPECT_GE(findings().size(), 3);
}

/// An unconfirmed change may be stored or not, but only completely, and no other change may be
/// missing.
TEST_F(LedgerTest, AcceptsAnUnconfirmedChangeStoredOrNot)
{
    const std::pair<QString, QString> changes[] = {
        {u"? deleted 7-1"_s, u"DELETE FROM Cuts"_s},
        {u"? closed 1"_s, u"UPDATE Orders SET Open_Close = -1"_s},
        {u"? renamed 1 7-3 5"_s, u"UPDATE KanafKind SET Name = '%1'"_s.arg(listedName(u"7-3"_s))},
        {u"? unnamed 1 5"_s, u"DELETE FROM KanafKind"_s},
        {u"? name 3 7-4"_s,
         u"INSERT INTO ReshetKind (Name) VALUES ('%1')"_s.arg(listedName(u"7-4"_s))},
        {u"? seriesdeleted 7-1"_s, u"DELETE FROM Serials WHERE Name = '7-1'"_s}};
    for (const auto& [told, sql] : changes) {
        ledger->tell(told);
        EXPECT_EQ(findings(), QStringList()) << qUtf8Printable(told);
        ledger->tell(told);
        store.execute(sql);
        EXPECT_EQ(findings(), QStringList()) << qUtf8Printable(told);
    }
}

TEST_F(LedgerTest, FindsAPartlyStoredUnconfirmedChange)
{
    ledger->tell(u"? renamed 1 7-3 5"_s);
    store.execute(u"UPDATE KanafKind SET Name = '7-3'"_s);
    EXPECT_EQ(findings().size(), 1);
    ledger->tell(u"? line 1 7-5"_s);
    addLine(u"7-5"_s);
    store.execute(u"UPDATE Cuts SET Kanaf_Kind = NULL WHERE Mashof_Kind = '7-5'"_s);
    // The text is empty instead of the tag.
    EXPECT_EQ(findings().size(), 2);
    store.execute(u"DELETE FROM Cuts WHERE Mashof_Kind = '7-5'"_s);
    ledger->tell(u"deleted 7-5"_s);
    ledger->tell(u"? series 7-1 4"_s);
    store.execute(u"UPDATE Serials SET Rem = '4', Mashkof_W = -4.25 WHERE Name = '7-1'"_s);
    EXPECT_EQ(findings().size(), 7);
}

} // namespace
