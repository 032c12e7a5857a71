#include "platform/dao/database.h"
#include "store/schema.h"
#include "tools/store/old_store/jet3_sample.h"
#include "tools/store/old_store/old_files.h"

using namespace Qt::StringLiterals;
using namespace storetools;
using storetooltest::addLines;
using storetooltest::addOrders;
using storetooltest::addRow;
using storetooltest::bytesOf;
using storetooltest::cohen;
using storetooltest::emptyTables;
using storetooltest::firstLoosePage;
using storetooltest::Jet3Table;
using storetooltest::oldFile;
using storetooltest::OldFileFolder;
using storetooltest::Outcome;
using storetooltest::sliding;
using storetooltest::tableIn;

namespace {

QVariant valueIn(const QString& path, const QString& table, int row, const QString& field)
{
    const auto database = dao::DBEngine::instance().OpenDatabase(path);
    const auto recordset = database->OpenRecordset(table, dao::dbOpenTable);
    if (row > 0)
        recordset->Move(row);
    return recordset->Fields(field).Value();
}

class Jet3Test : public testing::Test
{
protected:
    Jet3Test() { addOrders(tables_); }
    QVariant order(int row, const QString& field) const
    {
        return valueIn(folder_.target(), u"Orders"_s, row, field);
    }
    QVariant line(int row, const QString& field) const
    {
        return valueIn(folder_.target(), u"Cuts"_s, row, field);
    }
    Outcome takeOver(const QStringList& options = {}) const
    {
        folder_.write(storetooltest::jet3File(tables_));
        return folder_.takeOver(options);
    }

    std::vector<Jet3Table> tables_ = emptyTables();
    OldFileFolder folder_;
};

} // namespace

TEST_F(Jet3Test, DecodesHebrewWithItsCodePage)
{
    const Outcome outcome = takeOver();
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(outcome.out.first(), u"table             rows"_s);
    EXPECT_EQ(order(0, u"Order_Date"_s), QDate(1999, 1, 1));
    EXPECT_EQ(order(0, u"Open_Close"_s), -1);
    EXPECT_EQ(order(0, u"CustomerName"_s), u"כהן"_s);
    EXPECT_EQ(order(0, u"CustomerAddress"_s), u"רח' הרצל 5 ת\"א"_s);
    EXPECT_EQ(order(0, u"CustomerTel"_s), u""_s);
    EXPECT_EQ(order(1, u"Number"_s), 2);
    EXPECT_EQ(order(1, u"Open_Close"_s), 0);
    EXPECT_FALSE(order(1, u"CustomerName"_s).isValid());
    EXPECT_EQ(storetooltest::damageIn(folder_.target()), QStringList());
}

TEST_F(Jet3Test, ReadsRowsOfAnyLength)
{
    addLines(tables_);
    const Outcome outcome = takeOver();
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    for (int row = 0; row < 30; ++row) {
        SCOPED_TRACE(row);
        EXPECT_EQ(line(row, u"Code"_s), row + 1);
        EXPECT_EQ(line(row, u"Name"_s), u"הזזה"_s);
        EXPECT_EQ(line(row, u"MyWidth"_s), 48.35);
        EXPECT_FALSE(line(row, u"MYHeight"_s).isValid());
        for (const QString& field : {u"Mashof_Kind"_s, u"Glass_Kind"_s, u"Reshet_Color"_s})
            EXPECT_EQ(line(row, field), QString(row + 1, u'א'));
        EXPECT_EQ(line(row, u"Kanaf_Color"_s), u""_s);
        EXPECT_FALSE(line(row, u"Kind"_s).isValid());
        EXPECT_EQ(line(row, u"Sign"_s), u"d2000"_s);
    }
}

TEST_F(Jet3Test, DecodesWithAnotherGivenCodePage)
{
    ASSERT_EQ(takeOver({u"--code-page"_s, u"1251"_s}).exitStatus, 0);
    EXPECT_EQ(order(0, u"CustomerName"_s), u"лдп"_s);
}

TEST_F(Jet3Test, StopsAtAnInvalidByte)
{
    addRow(tableIn(tables_, "KanafKind"),
           {{u"Code"_s, bytesOf(qint32{4})}, {u"Name"_s, "\xe0\x81"}});
    const Outcome outcome = takeOver();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(outcome.err,
              (QStringList{u"KanafKind, Code 4: Name cannot be read: byte 129 at 2 is no "
                           "character of code page 1255"_s,
                           u"zomrel-store: nothing was imported"_s}));
    EXPECT_EQ(folder_.files(), QStringList{u"old.mdb"_s});
}

TEST_F(Jet3Test, ReportsUnknownTablesByTheirHebrewName)
{
    Jet3Table foreign{"\xe8\xec\xf4\xe5\xf0\xe9\xed", {{u"Who"_s, OldText}}, {}};
    addRow(foreign, {{u"Who"_s, cohen}});
    tables_.insert(tables_.begin(), foreign);
    tableIn(tables_, "Orders").columns.push_back({u"\u00e4\u00f2\u00f8\u00e4"_s, OldText});
    for (OldRow& row : tableIn(tables_, "Orders").rows)
        row.push_back(cohen);
    const Outcome outcome = takeOver();
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(outcome.out.first(2),
              (QStringList{u"טלפונים: not a table of the store, not imported"_s,
                           u"Orders.הערה: not a field of the store, not imported"_s}));
}

TEST_F(Jet3Test, ReadsInlineMemos)
{
    Jet3Table& kinds = tableIn(tables_, "GlassKind");
    kinds.columns[1].type = OldMemo;
    const QByteArray head = bytesOf(quint32{0x80000000 + 3}) + QByteArray(8, '\0');
    addRow(kinds, {{u"Code"_s, bytesOf(qint32{1})}, {u"Name"_s, head + cohen}});
    ASSERT_EQ(takeOver().exitStatus, 0);
    EXPECT_EQ(valueIn(folder_.target(), u"GlassKind"_s, 0, u"Name"_s), u"כהן"_s);
}

TEST_F(Jet3Test, ReadsMemosInOverflowRows)
{
    Jet3Table& kinds = tableIn(tables_, "GlassKind");
    kinds.columns[1].type = OldMemo;
    const auto head = [](quint32 length, quint32 page) {
        return bytesOf(length) + bytesOf(quint32{page << 8U}) + bytesOf(quint32{0});
    };
    constexpr quint32 inOneRow = 0x40000000;
    const auto add = [&](qint32 code, const QByteArray& name) {
        addRow(kinds, {{u"Code"_s, bytesOf(code)}, {u"Name"_s, name}});
    };
    add(1, head(inOneRow | 3, firstLoosePage));
    add(2, head(7, firstLoosePage + 1));
    // The first row refers to the second row, which is the last.
    const std::vector<QByteArray> rows{
        cohen, bytesOf(quint32{(firstLoosePage + 2) << 8U}) + sliding, bytesOf(quint32{0}) + cohen};
    folder_.write(storetooltest::jet3File(tables_, rows));
    const Outcome outcome = folder_.takeOver();
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(valueIn(folder_.target(), u"GlassKind"_s, 0, u"Name"_s), u"כהן"_s);
    EXPECT_EQ(valueIn(folder_.target(), u"GlassKind"_s, 1, u"Name"_s), u"הזזהכהן"_s);
}

TEST_F(Jet3Test, ReportsATruncatedMemo)
{
    Jet3Table& kinds = tableIn(tables_, "GlassKind");
    kinds.columns[1].type = OldMemo;
    const QByteArray head =
        bytesOf(quint32{8}) + bytesOf(quint32{firstLoosePage << 8U}) + bytesOf(quint32{0});
    addRow(kinds, {{u"Code"_s, bytesOf(qint32{1})}, {u"Name"_s, head}});
    folder_.write(storetooltest::jet3File(tables_, {bytesOf(quint32{0}) + cohen}));
    const Outcome outcome = folder_.takeOver();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(
        outcome.err,
        QStringList(u"zomrel-store: '%1' is damaged: a text of GlassKind is not complete"_s.arg(
            folder_.old())));
}

/// A text of 16 million characters whose only piece has one character and refers to itself.
TEST_F(Jet3Test, MemoThatRefersToItself_endsAtOnce)
{
    Jet3Table& kinds = tableIn(tables_, "GlassKind");
    kinds.columns[1].type = OldMemo;
    const quint32 itself = firstLoosePage << 8U;
    const QByteArray head = bytesOf(quint32{16 << 20}) + bytesOf(itself) + bytesOf(quint32{0});
    for (qint32 code = 1; code <= 40; ++code)
        addRow(kinds, {{u"Code"_s, bytesOf(code)}, {u"Name"_s, head}});
    folder_.write(storetooltest::jet3File(tables_, {bytesOf(itself) + "x"}));
    const Outcome outcome = folder_.takeOver();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(
        outcome.err,
        QStringList(u"zomrel-store: '%1' is damaged: its values are longer than the file"_s.arg(
            folder_.old())));
}

/// Many rows that share one long text would be larger than the file by orders of magnitude.
TEST_F(Jet3Test, MemosThatShareTheirText_areDamage)
{
    Jet3Table& kinds = tableIn(tables_, "GlassKind");
    kinds.columns[1].type = OldMemo;
    const QByteArray head = bytesOf(quint32{0x40000000 + 1500}) +
                            bytesOf(quint32{firstLoosePage << 8U}) + bytesOf(quint32{0});
    for (qint32 code = 1; code <= 1000; ++code)
        addRow(kinds, {{u"Code"_s, bytesOf(code)}, {u"Name"_s, head}});
    folder_.write(storetooltest::jet3File(tables_, {QByteArray(1500, 'x')}));
    const Outcome outcome = folder_.takeOver();
    EXPECT_EQ(outcome.exitStatus, 1);
    EXPECT_EQ(
        outcome.err.value(0),
        u"zomrel-store: '%1' is damaged: its values are longer than the file"_s.arg(folder_.old()));
}

/// Each page of an encoded file is encrypted with the file's key combined with the page number.
TEST(EncodedFileTest, IsDecodedAndRead)
{
    constexpr qsizetype pageSize = 4096;
    constexpr quint32 key = 0x12345678;
    constexpr qsizetype keyPlace = 0x3e;
    const OldFileFolder folder;
    const QByteArray plain = storetooltest::contentsOf(oldFile(u"old-store.mdb"_s));
    QByteArray encoded = plain.first(pageSize);
    for (qsizetype i = 0; i < 4; ++i)
        encoded[keyPlace + i] = static_cast<char>(encoded[keyPlace + i] ^ bytesOf(key)[i]);
    for (qsizetype page = 1; page < plain.size() / pageSize; ++page)
        encoded += storetooltest::rc4(plain.mid(page * pageSize, pageSize),
                                      key ^ static_cast<quint32>(page));
    folder.write(encoded);
    const Outcome outcome = folder.takeOver();
    ASSERT_EQ(outcome.exitStatus, 0) << outcome.err.join(u'\n').toStdString();
    EXPECT_EQ(valueIn(folder.target(), u"Orders"_s, 6, u"CustomerName"_s), u"כהן ובניו"_s);
}

/// A password does not encrypt anything. It is a word in the file header that programs ask for.
TEST(EncodedFileTest, IsReadWithoutItsPassword)
{
    constexpr qsizetype passwordPlace = 0x42;
    const OldFileFolder folder;
    QByteArray file = storetooltest::contentsOf(oldFile(u"old-store.mdb"_s));
    for (qsizetype i = 0; i < 12; i += 2)
        file[passwordPlace + i] = static_cast<char>(file[passwordPlace + i] ^ ('a' + i));
    folder.write(file);
    EXPECT_EQ(folder.takeOver().exitStatus, 0);
}
