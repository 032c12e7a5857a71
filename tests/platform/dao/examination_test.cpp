#include "platform/dao/examination.h"
#include "platform/dao/fixture.h"

using namespace daotest;

namespace {

class ExaminationTest : public ItemsTest
{
protected:
    std::vector<dao::ExaminedRow> rows(const QString& table = u"Items"_s) const
    {
        std::vector<dao::ExaminedRow> all;
        dao::examineRows(*open(), table, [&](const dao::ExaminedRow& row) { all.push_back(row); });
        return all;
    }
};

TEST_F(ExaminationTest, rows_areVisitedOnceInInsertionOrder)
{
    constexpr int count = 600; // This is more than two pages.
    sql(u"BEGIN"_s);
    for (int i = 0; i < count; ++i)
        add(count - i, i);
    sql(u"COMMIT"_s);
    const std::vector<dao::ExaminedRow> all = rows(u"items"_s);
    ASSERT_EQ(all.size(), std::size_t{count});
    for (int i = 0; i < count; ++i) {
        const dao::ExaminedRow& row = all[static_cast<std::size_t>(i)];
        ASSERT_EQ(row.values[0].toInt(), count - i);
        ASSERT_EQ(row.values[1].toInt(), i);
        ASSERT_TRUE(row.unreadable.empty());
    }
}

TEST_F(ExaminationTest, storedValuesOfAnotherType_areReportedAsUnreadable)
{
    EMBEDDED_ONLY("a server does not store values of another type");
    sql(u"INSERT INTO Items (Code, Num, Name, Small, Amount, Day, Done, Note) "
        "VALUES (1, 'many', 'longer than ten', 40000, 'wide', '2026-13-01', -1, 'note')"_s);
    sql(u"INSERT INTO Items (Code, Amount, Day, Done) VALUES (2, 1.5, '2026-03-01', 0)"_s);
    const std::vector<dao::ExaminedRow> all = rows();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all[0].unreadable, (std::vector<int>{1, 3, 4, 5}));
    EXPECT_EQ(all[0].values[2], u"longer than ten"_s);
    EXPECT_EQ(all[0].values[6], -1);
    EXPECT_FALSE(all[0].values[1].isValid());
    EXPECT_TRUE(all[1].unreadable.empty());
    EXPECT_EQ(all[1].values[4], 1.5);
    EXPECT_EQ(all[1].values[5], QDate(2026, 3, 1));
    EXPECT_FALSE(all[1].values[1].isValid());
}

TEST_F(ExaminationTest, unknownTable_throwsTableNotFound)
{
    EXPECT_EQ(errorOf([&] { rows(u"Nothing"_s); }), 3078);
}

TEST_F(ExaminationTest, soundStore_hasNoFindings)
{
    add(1, 5);
    EXPECT_EQ(dao::engineFindings(*open()), QStringList());
}

TEST_F(ExaminationTest, indexWithMissingRows_isFound)
{
    EMBEDDED_ONLY("applies only to a store in one file");
    add(1, 5);
    // The definition of the index is changed to another field, but its contents are not.
    sql(u"PRAGMA writable_schema = ON"_s);
    sql(u"UPDATE sqlite_master SET sql = 'CREATE INDEX ByNum ON Items (Name)' "
        "WHERE name = 'ByNum'"_s);
    const QStringList findings = dao::engineFindings(*open());
    ASSERT_FALSE(findings.isEmpty());
    EXPECT_TRUE(findings.join(u'\n').contains(u"ByNum"_s)) << qPrintable(findings.join(u'\n'));
}

} // namespace
