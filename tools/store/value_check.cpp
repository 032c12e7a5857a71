#include "tools/store/value_check.h"

#include "platform/dao/examination.h"
#include "platform/runtime/run_time_error.h"
#include "tools/store/number_range.h"
#include "tools/store/shared_texts.h"

#include <QMap>
#include <QMetaType>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace storetools {

namespace {

/// Returns true for a field that the program fills in every row of the table. Returns false for the
/// fields of kinds and colours, which may be Null in a store that was imported from the old format.
bool isAlwaysFilled(const QString& table, const dao::FieldInfo& field)
{
    if (table == "Orders"_L1)
        return field.name == "Number"_L1 || field.name == "Order_Date"_L1;
    if (table == "Cuts"_L1 || table == "Serials"_L1)
        return field.type != dao::dbText || field.name == "Name"_L1 || field.name == "Kind"_L1;
    return false;
}

/// Returns the lowest value that the program writes to an integer field, or nothing if the field
/// has no lowest value.
std::optional<int> lowestOf(const QString& table, const QString& field)
{
    const bool isCounted =
        table == "Serials"_L1 && (field == "Kanaf_Num"_L1 || field == "Nativ_Num"_L1);
    if (isCounted || (table == "Cuts"_L1 && field == "NUM"_L1))
        return lowestNumber;
    return {};
}

/// Checks the rows of one table.
class RowValues
{
public:
    RowValues(const store::TableSchema& expected, const store::TableSchema& found,
              QStringList& findings)
        : expected_(expected), found_(found), findings_(findings),
          key_(found.ordinalOf(expected.indexes.front().fields.front()))
    {
    }

    void take(const dao::ExaminedRow& row)
    {
        ++row_;
        for (const int ordinal : row.mistyped)
            add(row,
                say({u"%1 is stored with another type", u"%1 שמור מסוג אחר"}, nameOf(ordinal)));
        QStringList empty;
        for (const dao::FieldInfo& field : expected_.fields) {
            const int ordinal = found_.ordinalOf(field.name);
            if (ordinal < 0 || std::ranges::count(row.unreadable, ordinal) > 0)
                continue;
            const QVariant& value = row.values[std::size_t(ordinal)];
            if (!value.isValid() && ordinal != key_ && isAlwaysFilled(expected_.name, field))
                empty.append(field.name);
            else if (value.isValid())
                checkValue(row, field, value);
        }
        if (!empty.isEmpty())
            addEmpty(row, empty);
    }

private:
    QString nameOf(int ordinal) const { return found_.fields[std::size_t(ordinal)].name; }

    void add(const dao::ExaminedRow& row, const QString& finding)
    {
        const QVariant key = key_ < 0 ? QVariant() : row.values[std::size_t(key_)];
        const QString name = key.isValid() ? nameOf(key_) + u' ' + key.toString() : QString();
        findings_.append(ofRow(expected_.name, name, row_, finding));
    }

    void addEmpty(const dao::ExaminedRow& row, const QStringList& fields)
    {
        constexpr qsizetype mostNamed = 3;
        const QString names = fields.first(std::min(mostNamed, fields.size())).join(u", "_s);
        const qsizetype others = fields.size() - mostNamed;
        add(row, others > 0 ? say({u"nothing is stored in %1 and %2 more",
                                   u"לא שמור דבר ב-%1 ובעוד %2 שדות"},
                                  names, others)
                            : say({u"nothing is stored in %1", u"לא שמור דבר ב-%1"}, names));
    }

    void checkValue(const dao::ExaminedRow& row, const dao::FieldInfo& field, const QVariant& value)
    {
        if (field.type == dao::dbDate && value.typeId() == QMetaType::QDateTime)
            add(row, say({u"%1 has a time of day", u"ב-%1 שמורה גם שעה"}, field.name));
        const std::optional<int> lowest = lowestOf(expected_.name, field.name);
        if (lowest && (value.toInt() < *lowest || value.toInt() > highestNumber))
            add(row, say(hasToLieBetween, field.name, *lowest, highestNumber));
    }

    const store::TableSchema& expected_;
    const store::TableSchema& found_;
    QStringList& findings_;
    int key_;
    int row_ = 0;
};

/// Finds line numbers that occur several times in one order. Such duplicates may arise if two
/// stations add a line at the same moment, or if a line is added while the order's report is
/// printed.
class LineNumbers
{
public:
    explicit LineNumbers(const store::TableSchema& cuts)
        : order_(cuts.ordinalOf(u"Order_Num"_s)), number_(cuts.ordinalOf(u"NUM"_s))
    {
    }

    void take(const dao::ExaminedRow& row)
    {
        if (order_ < 0 || number_ < 0)
            return;
        const QVariant& order = row.values[std::size_t(order_)];
        const QVariant& number = row.values[std::size_t(number_)];
        if (order.isValid() && number.isValid())
            ++lines_[{order.toInt(), number.toInt()}];
    }

    QStringList remarks() const
    {
        QStringList all;
        for (auto each = lines_.cbegin(); each != lines_.cend(); ++each) {
            if (each.value() > 1)
                all.append(say({u"Cuts: %1 lines of order %2 have the number %3",
                                u"בהזמנה %2 יש %1 שורות עם המספר %3"},
                               each.value(), each.key().first, each.key().second));
        }
        return all;
    }

private:
    int order_;
    int number_;
    QMap<std::pair<int, int>, int> lines_;
};

} // namespace

ValueReport checkValues(dao::Database& database, const Layout& layout)
{
    ValueReport report;
    for (const store::TableSchema& expected : store::schema()) {
        const store::TableSchema* found = tableIn(layout, expected.name);
        if (found == nullptr)
            continue;
        RowValues values(expected, *found, report.findings);
        const bool isCuts = expected.name == "Cuts"_L1;
        LineNumbers numbers(*found);
        try {
            dao::examineRows(database, expected.name, [&](const dao::ExaminedRow& row) {
                values.take(row);
                if (isCuts)
                    numbers.take(row);
            });
        } catch (const runtime::RunTimeError&) {
            continue; // the check of the rows reports a table that cannot be read to its end
        }
        if (isCuts)
            report.remarks = numbers.remarks();
    }
    return report;
}

} // namespace storetools
