#include "shop/workbook.h"

#include "shop/cut_list.h"
#include "shop/shop_lines.h"
#include "support/printers.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

shop::ShopPack packOf(const std::vector<shop::OrderLine>& lines)
{
    shop::ShopPack pack{shop::piecesOf(lines, {}), {}};
    pack.groups = shop::planGroups(pack.pieces.pieces, {});
    return pack;
}

/// Returns the sheets of the workbook as another library reads them.
QJsonArray sheetsOf(const QByteArray& workbook)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"read.xlsx"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(workbook);
    file.close();
    QProcess reader;
    // Debian's interpreter finds the package python3-openpyxl; another one may come first in PATH.
    reader.start(u"/usr/bin/python3"_s, {QStringLiteral(ZOMREL_READ_WORKBOOK), file.fileName()});
    EXPECT_TRUE(reader.waitForFinished(60000)) << qPrintable(reader.errorString());
    EXPECT_EQ(reader.exitCode(), 0) << reader.readAllStandardError().constData();
    return QJsonDocument::fromJson(reader.readAllStandardOutput()).array();
}

/// Returns the cell as the reader prints it. An empty text is a missing cell.
QJsonValue valueOf(const shop::Cell& cell)
{
    if (const auto* text = std::get_if<QString>(&cell))
        return text->isEmpty() ? QJsonValue(QJsonValue::Null) : QJsonValue(*text);
    if (const auto* whole = std::get_if<int>(&cell))
        return *whole;
    return std::get<double>(cell);
}

void expectSheet(const QJsonValue& sheet, const shop::Table& table)
{
    const QJsonArray rows = sheet["rows"_L1].toArray();
    ASSERT_EQ(static_cast<std::size_t>(rows.size()), table.rows.size() + 1);
    EXPECT_EQ(rows[0].toArray(), QJsonArray::fromStringList(table.columns));
    for (std::size_t row = 0; row < table.rows.size(); ++row) {
        const QJsonArray cells = rows[static_cast<qsizetype>(row) + 1].toArray();
        ASSERT_EQ(static_cast<std::size_t>(cells.size()), table.rows[row].size());
        for (std::size_t i = 0; i < table.rows[row].size(); ++i) {
            const QJsonValue wanted = valueOf(table.rows[row][i]);
            const QJsonValue found = cells[static_cast<qsizetype>(i)];
            if (wanted.isDouble()) {
                EXPECT_NEAR(found.toDouble(-1), wanted.toDouble(), 1e-12 * wanted.toDouble());
            } else {
                EXPECT_EQ(found, wanted);
            }
        }
    }
}

std::vector<shop::OrderLine> lines()
{
    shop::OrderLine line = shoptest::window();
    line.frame.kind = u"=1+1"_s;
    line.frame.colour = QString();
    line.glass.width = 58.150000000000006;
    shop::OrderLine second = shoptest::window();
    second.line = 2;
    return {line, second};
}

} // namespace

TEST(WorkbookTest, Sheets_HaveTheRowsOfTheTables)
{
    const shop::ShopPack pack = packOf(lines());
    const QJsonArray sheets = sheetsOf(shop::workbook(pack));
    ASSERT_EQ(sheets.size(), 5);
    QStringList names;
    for (const QJsonValue& each : sheets) {
        names.append(each["name"_L1].toString());
        EXPECT_TRUE(each["rightToLeft"_L1].toBool());
        EXPECT_EQ(each["formulas"_L1].toInt(-1), 0);
    }
    EXPECT_EQ(names, (QStringList{u"חלקים"_s, u"רשימת חיתוך"_s, u"תוכנית מוטות"_s,
                                  u"רשימת זכוכית"_s, u"רשימת רשתות"_s}));
    expectSheet(sheets[0], shop::piecesTable(pack.pieces.pieces, {}));
    expectSheet(sheets[1], shop::cutListTable(pack));
    expectSheet(sheets[2], shop::barPlanTable(pack));
    expectSheet(sheets[3], shop::panesTable(pack.pieces.glass));
    expectSheet(sheets[4], shop::panesTable(pack.pieces.mesh));
}

TEST(WorkbookTest, SamePack_GivesTheSameBytes)
{
    EXPECT_EQ(shop::workbook(packOf(lines())), shop::workbook(packOf(lines())));
}

TEST(WorkbookTest, EmptyPack_HasHeadingsOnly)
{
    const QJsonArray sheets = sheetsOf(shop::workbook({}));
    ASSERT_EQ(sheets.size(), 5);
    for (const QJsonValue& each : sheets)
        EXPECT_EQ(each["rows"_L1].toArray().size(), 1);
}

// "7-1001" and a space are 7 characters, so 4,681 lines take 32,766 of the 32,767 characters of a
// cell.
TEST(WorkbookTest, LinesThatExceedACell_ContinueInFurtherColumns)
{
    std::vector<shop::OrderLine> many(5000, shoptest::window());
    for (std::size_t i = 0; i < many.size(); ++i) {
        many[i].line = static_cast<int>(1001 + i);
        many[i].frame.kind = many[i].sash.kind = many[i].mesh.kind = u"ללא"_s;
    }
    const shop::ShopPack pack = packOf(many);
    const QJsonArray rows = sheetsOf(shop::workbook(pack))[3]["rows"_L1].toArray();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0][7].toString(), u"lines 2"_s);
    const QString first = rows[1][6].toString();
    const QString second = rows[1][7].toString();
    EXPECT_EQ(first.size(), 4681 * 7 - 1);
    EXPECT_TRUE(second.startsWith(u"7-5682 7-5683 "_s));
    EXPECT_TRUE(second.endsWith(u" 7-6000"_s));
    EXPECT_EQ(first + u' ' + second, shop::paneList(pack.pieces.glass).front().lines.join(u' '));
}
