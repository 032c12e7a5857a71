#include "tools/store/old_store/intake.h"

#include "platform/runtime/run_time_error.h"
#include "support/printers.h"

#include <QDate>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace storetools;

namespace {

template <typename Number>
QByteArray bytesOf(Number number)
{
    return {reinterpret_cast<const char*>(&number), qsizetype{sizeof number}};
}

OldCell whole(qint32 number)
{
    return bytesOf(number);
}

OldCell text(const QString& text)
{
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
}

class MemorySink : public RowSink
{
public:
    void add(const store::TableSchema& table, const NewRow& row) override
    {
        rows.push_back({table.name, row});
    }
    struct Row
    {
        QString table;
        NewRow values;
    };
    std::vector<Row> rows;
};

/// Returns a table with one column per field of the schema, in the Jet type that matches the field.
OldTable describe(const QString& name)
{
    OldTable table{name, 0, {}, {}};
    for (const dao::FieldInfo& field : store::tableSchema(name)->fields)
        table.columns.push_back({field.name, static_cast<quint8>(field.type)});
    return table;
}

void drop(OldTable& table, const QString& column)
{
    std::erase_if(table.columns, [&](const OldColumn& each) { return each.name == column; });
}

void retype(OldTable& table, const QString& column, quint8 type)
{
    for (OldColumn& each : table.columns) {
        if (each.name == column)
            each.type = type;
    }
}

class IntakeTest : public testing::Test
{
protected:
    IntakeTest() { intake_.opened(OldFormat::Jet4); }

    /// Passes a table with these rows to the importer. The named columns have these bytes, all
    /// others are Null.
    using Cells = std::map<QString, OldCell>;
    void tell(OldTable table, const std::vector<Cells>& rows)
    {
        table.recordedRows = static_cast<qint64>(rows.size());
        intake_.table(table);
        for (const Cells& cells : rows) {
            OldRow row;
            for (const OldColumn& column : table.columns) {
                const auto cell = cells.find(column.name);
                row.push_back(cell == cells.end() ? OldCell() : cell->second);
            }
            intake_.row(row);
        }
        intake_.tableEnd();
    }

    QVariant value(std::size_t row, const QString& field) const
    {
        const MemorySink::Row& taken = sink_.rows.at(row);
        const int ordinal = store::tableSchema(taken.table)->ordinalOf(field);
        return taken.values.at(static_cast<std::size_t>(ordinal));
    }
    QStringList notes() const { return intake_.reports().notes.lines(); }
    QStringList findings() const { return intake_.reports().findings.lines(); }

    TakeOverOptions options_;
    MemorySink sink_;
    Intake intake_{sink_, options_, {}};
};

} // namespace

TEST_F(IntakeTest, KeepsNullApartFromTheEmptyText)
{
    tell(describe(u"KanafKind"_s),
         {{{u"Code"_s, whole(1)}, {u"Name"_s, text({})}}, {{u"Code"_s, whole(2)}}});
    EXPECT_EQ(value(0, u"Name"_s), u""_s);
    EXPECT_TRUE(value(0, u"Name"_s).isValid());
    EXPECT_FALSE(value(1, u"Name"_s).isValid());
    EXPECT_EQ(findings(), QStringList());
    EXPECT_EQ(notes(), QStringList());
}

TEST_F(IntakeTest, ConvertsToTheFieldsType)
{
    OldTable cuts = describe(u"Cuts"_s);
    retype(cuts, u"U_Thick"_s, OldText);
    retype(cuts, u"MyWidth"_s, OldSingle);
    retype(cuts, u"MYHeight"_s, OldCurrency);
    retype(cuts, u"Order_Num"_s, OldInteger);
    retype(cuts, u"Kanaf_Count"_s, OldByte);
    retype(cuts, u"Name"_s, OldMemo);
    retype(cuts, u"Rem"_s, OldLong);
    tell(cuts, {{{u"Code"_s, whole(7)},
                 {u"U_Thick"_s, text(u" 6.5 "_s)},
                 {u"MyWidth"_s, bytesOf(48.35F)},
                 {u"MYHeight"_s, bytesOf(qint64{1205000})},
                 {u"Order_Num"_s, bytesOf(qint16{12})},
                 {u"Kanaf_Count"_s, QByteArray("\4")},
                 {u"Name"_s, text(u"הזזה"_s)},
                 {u"Rem"_s, whole(5)},
                 {u"Order_Date"_s, bytesOf(36161.0)}}});
    EXPECT_EQ(findings(), QStringList());
    EXPECT_EQ(value(0, u"U_Thick"_s), 6.5);
    EXPECT_EQ(value(0, u"MyWidth"_s), 48.35);
    EXPECT_EQ(value(0, u"MYHeight"_s), 120.5);
    EXPECT_EQ(value(0, u"Order_Num"_s), 12);
    EXPECT_EQ(value(0, u"Kanaf_Count"_s), 4);
    EXPECT_EQ(value(0, u"Name"_s), u"הזזה"_s);
    EXPECT_EQ(value(0, u"Rem"_s), u"5"_s);
    EXPECT_EQ(value(0, u"Order_Date"_s), QDate(1999, 1, 1));
    EXPECT_FALSE(value(0, u"NUM"_s).isValid());
}

TEST_F(IntakeTest, RoundsAndReportsDecimalsInCounts)
{
    OldTable cuts = describe(u"Cuts"_s);
    retype(cuts, u"Shalav_Count"_s, OldDouble);
    tell(cuts, {{{u"Code"_s, whole(1)}, {u"Shalav_Count"_s, bytesOf(2.5)}},
                {{u"Code"_s, whole(2)}, {u"Shalav_Count"_s, bytesOf(31.0)}}});
    EXPECT_EQ(value(0, u"Shalav_Count"_s), 2);
    EXPECT_EQ(value(1, u"Shalav_Count"_s), 31);
    EXPECT_EQ(notes(), QStringList(u"Cuts, Code 1: Shalav_Count is 2.5 and becomes 2"_s));
}

TEST_F(IntakeTest, ReportsInvalidValuesWithTheirRow)
{
    OldTable cuts = describe(u"Cuts"_s);
    retype(cuts, u"U_Thick"_s, OldText);
    retype(cuts, u"NUM"_s, OldDouble);
    retype(cuts, u"Rem"_s, 16);
    tell(cuts, {{{u"Code"_s, whole(3)}, {u"U_Thick"_s, text(u"עבה"_s)}},
                {{u"Code"_s, whole(4)}, {u"U_Thick"_s, text({})}},
                {{u"Code"_s, whole(5)}, {u"NUM"_s, bytesOf(4294967296.5)}},
                {{u"Code"_s, whole(6)}, {u"Rem"_s, QByteArray(17, 'x')}},
                {{u"Code"_s, whole(7)}, {u"Order_Date"_s, bytesOf(1e10)}},
                {{u"Code"_s, whole(8)}, {u"Name"_s, QByteArray("\x00\xd8", 2)}}});
    EXPECT_EQ(
        findings(),
        (QStringList{u"Cuts, Code 3: U_Thick cannot take 'עבה': Data type conversion error."_s,
                     u"Cuts, Code 4: U_Thick cannot take '': Data type conversion error."_s,
                     u"Cuts, Code 5: NUM cannot take '4294967296.5': Overflow"_s,
                     u"Cuts, Code 6: Rem cannot be read: its type 16 cannot be imported"_s,
                     u"Cuts, Code 7: Order_Date cannot be read: it is no date"_s,
                     u"Cuts, Code 8: Name cannot be read: it contains half of a character"_s}));
    EXPECT_TRUE(sink_.rows.empty());
}

TEST_F(IntakeTest, ReportsLongTextsAndStopsAdding)
{
    tell(describe(u"KanafKind"_s),
         {{{u"Code"_s, whole(1)}, {u"Name"_s, text(QString(50, u'א'))}},
          {{u"Code"_s, whole(2)}, {u"Name"_s, text(QString(51, u'א'))}},
          {{u"Code"_s, whole(3)}, {u"Name"_s, text(u"קצר"_s)}},
          {{u"Code"_s, whole(4)}, {u"Name"_s, text(QString(300, u'א'))}}});
    EXPECT_EQ(findings(),
              (QStringList{u"KanafKind, Code 2: Name has 51 characters and takes 50"_s,
                           u"KanafKind, Code 4: Name has 300 characters and takes 50"_s}));
    EXPECT_EQ(sink_.rows.size(), 1U);
}

TEST_F(IntakeTest, TruncatesLongTextsIfAllowed)
{
    options_.cutTexts = true;
    QString pairs(49, u'א');
    pairs += u"\U0001F600"_s;
    tell(describe(u"KanafKind"_s), {{{u"Code"_s, whole(1)}, {u"Name"_s, text(QString(51, u'א'))}},
                                    {{u"Code"_s, whole(2)}, {u"Name"_s, text(pairs)}}});
    EXPECT_EQ(findings(), QStringList());
    EXPECT_EQ(notes(),
              (QStringList{u"KanafKind, Code 1: Name has 51 characters and is cut to 50"_s,
                           u"KanafKind, Code 2: Name has 51 characters and is cut to 50"_s}));
    EXPECT_EQ(value(0, u"Name"_s), QString(50, u'א'));
    EXPECT_EQ(value(1, u"Name"_s), QString(49, u'א')); // A surrogate pair is not split.
}

TEST_F(IntakeTest, CountsTheFindingsBeyondAHundred)
{
    std::vector<Cells> rows;
    for (int code = 1; code <= 130; ++code)
        rows.push_back({{u"Code"_s, whole(code)}, {u"Name"_s, text(QString(51, u'א'))}});
    tell(describe(u"KanafKind"_s), rows);
    EXPECT_EQ(findings().size(), 101);
    EXPECT_EQ(findings().last(), u"and 30 more"_s);
}

TEST_F(IntakeTest, ReportsMissingUnreadableAndDuplicateKeys)
{
    OldTable kinds = describe(u"KanafKind"_s);
    tell(kinds, {{{u"Name"_s, text(u"א"_s)}},
                 {{u"Code"_s, QByteArray("x")}},
                 {{u"Code"_s, whole(5)}},
                 {{u"Code"_s, whole(5)}}});
    EXPECT_EQ(findings(),
              (QStringList{u"KanafKind, row 1: has no Code"_s,
                           u"KanafKind, row 2: Code cannot be read: 1 bytes instead of 4"_s,
                           u"KanafKind, Code 5: occurs in several rows"_s}));
}

TEST_F(IntakeTest, FillsFieldsThatAnOlderStoreLacks)
{
    OldTable orders = describe(u"Orders"_s);
    drop(orders, u"Open_Close"_s);
    drop(orders, u"CustomerTel"_s);
    tell(orders, {{{u"Number"_s, whole(9)}}});
    EXPECT_EQ(findings(), QStringList());
    EXPECT_EQ(value(0, u"Open_Close"_s), 0);
    EXPECT_FALSE(value(0, u"CustomerTel"_s).isValid());
    EXPECT_EQ(notes(),
              (QStringList{u"Orders.Open_Close: the field is missing; False in every row"_s,
                           u"Orders.CustomerTel: the field is missing; Null in every row"_s}));
}

TEST_F(IntakeTest, CountsTheRowsOfATableWithoutAKey)
{
    OldTable kinds = describe(u"GlassKind"_s);
    drop(kinds, u"Code"_s);
    tell(kinds, {{{u"Name"_s, text(u"שקוף"_s)}}, {{u"Name"_s, text(u"חלבי"_s)}}});
    EXPECT_EQ(findings(), QStringList());
    EXPECT_EQ(value(0, u"Code"_s), 1);
    EXPECT_EQ(value(1, u"Code"_s), 2);
    EXPECT_EQ(notes(),
              QStringList(u"GlassKind.Code: the field is missing; the rows are numbered from 1"_s));
}

TEST_F(IntakeTest, RequiresTheOtherFields)
{
    OldTable orders = describe(u"Orders"_s);
    drop(orders, u"Number"_s);
    tell(orders, {});
    OldTable cuts = describe(u"Cuts"_s);
    drop(cuts, u"Glass_W"_s);
    drop(cuts, u"Sign"_s);
    tell(cuts, {});
    OldTable series = describe(u"Serials"_s);
    drop(series, u"AutoNum"_s);
    tell(series, {});
    EXPECT_EQ(findings(), (QStringList{u"Orders.Number: the field is missing"_s,
                                       u"Cuts.Glass_W: the field is missing"_s,
                                       u"Serials.AutoNum: the field is missing"_s}));
}

TEST_F(IntakeTest, ReportsUnknownAndMissingTables)
{
    OldTable orders = describe(u"Orders"_s);
    orders.foreignColumns = {{u"Fax"_s, OldText}};
    tell(orders, {});
    tell(describe(u"Cuts"_s), {});
    intake_.foreignTable(u"Phones"_s, false);
    intake_.foreignTable(u"Serials"_s, true);
    for (const store::PartLists& part : store::partLists()) {
        if (part.kindTable != u"GlassKind"_s)
            tell(describe(part.kindTable), {});
        tell(describe(part.colorTable), {});
    }
    intake_.end();
    EXPECT_EQ(notes(), (QStringList{u"Orders.Fax: not a field of the store, not imported"_s,
                                    u"Phones: not a table of the store, not imported"_s,
                                    u"Serials: is a link to another file, not imported"_s,
                                    u"GlassKind: the table is missing; it stays empty"_s}));
    EXPECT_EQ(findings(), QStringList(u"Serials: the table is missing"_s));
}

TEST_F(IntakeTest, ReportsADifferentRowCount)
{
    OldTable kinds = describe(u"KanafKind"_s);
    kinds.recordedRows = 3;
    intake_.table(kinds);
    intake_.row({whole(1), std::nullopt});
    intake_.tableEnd();
    EXPECT_EQ(notes(), QStringList(u"KanafKind: has 1 rows, but its description says 3"_s));
}

TEST_F(IntakeTest, RefusesADuplicateTable)
{
    tell(describe(u"Orders"_s), {});
    EXPECT_THROW(tell(describe(u"Orders"_s), {}), runtime::RunTimeError);
    EXPECT_THROW(tell({u"Phones"_s, 0, {}, {}}, {}), runtime::RunTimeError);
}

TEST_F(IntakeTest, ComputesTheDigestOfAddedRows)
{
    const Cells row{{u"Code"_s, whole(1)}, {u"Name"_s, text(u"א"_s)}};
    tell(describe(u"KanafKind"_s), {row});
    RowDigest same;
    same.add({1, u"א"_s});
    RowDigest other;
    other.add({1, u"ב"_s});
    EXPECT_TRUE(intake_.added(*store::tableSchema(u"KanafKind"_s)) == same);
    EXPECT_FALSE(intake_.added(*store::tableSchema(u"KanafKind"_s)) == other);
    EXPECT_FALSE(intake_.added(*store::tableSchema(u"GlassKind"_s)) == same);
    EXPECT_EQ(intake_.added(*store::tableSchema(u"GlassKind"_s)).rows(), 0);
}
