#include "platform/runtime/run_time_error.h"
#include "support/printers.h"
#include "tools/store/contents.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class ContentsTest : public testing::Test
{
protected:
    void write(const QByteArray& contents)
    {
        QFile file(folder_.filePath(u"GlassKind.tsv"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    storetools::TableContents read() const
    {
        return storetools::readContents(folder_.path(), u"GlassKind"_s);
    }

    int failure() const
    {
        try {
            read();
        } catch (const runtime::RunTimeError& error) {
            return error.number();
        }
        return 0;
    }

    QTemporaryDir folder_;
};

} // namespace

TEST_F(ContentsTest, ReadsHeadingAndRows)
{
    write("Code\tName\n7\tזכוכית 4 מ\"מ\n\tשקוף\n");
    const storetools::TableContents contents = read();
    EXPECT_EQ(contents.table, u"GlassKind"_s);
    EXPECT_EQ(contents.fields, (QStringList{u"Code"_s, u"Name"_s}));
    ASSERT_EQ(contents.rows.size(), 2);
    EXPECT_EQ(contents.rows[0], (QStringList{u"7"_s, u"זכוכית 4 מ\"מ"_s}));
    EXPECT_EQ(contents.rows[1], (QStringList{QString(), u"שקוף"_s}));
}

TEST_F(ContentsTest, AcceptsForeignLineEndsAndAMissingLastOne)
{
    write("Name\r\nA\r\nB");
    EXPECT_EQ(read().rows, (QList<QStringList>{{u"A"_s}, {u"B"_s}}));
}

TEST_F(ContentsTest, MissingFileHasNoRows)
{
    EXPECT_TRUE(read().rows.isEmpty());
    EXPECT_TRUE(read().fields.isEmpty());
}

TEST_F(ContentsTest, RefusesInvalidContents)
{
    write("Name\nA\tB\n");
    EXPECT_EQ(failure(), runtime::DataTypeConversion);
    write("Code\tName\nA\n");
    EXPECT_EQ(failure(), runtime::DataTypeConversion);
    write("Title\nA\n");
    EXPECT_EQ(failure(), runtime::ItemNotFound);
}
